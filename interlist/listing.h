// The listing pass: copies the assembly file into the listing, acts on the interlist
// directives and leaves them out.
#pragma once

// Runs the pass from ASSY's position to its end.
void process_assy();
