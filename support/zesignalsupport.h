// The last words of a tool that dies: a report of what happened, and a fixed text that
// asks the user to report the defect.
#pragma once

// The support text that follows the report of an internal failure: twelve lines, the
// last one empty, each with its newline. A constant; the caller does not free it.
const char* support_message_text();
