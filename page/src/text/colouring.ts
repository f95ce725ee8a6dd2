// Colours the lines that are on the screen, and only those.

import type { Extension, Text } from "@codemirror/state";
import { Decoration } from "@codemirror/view";
import { decorateVisibleLines } from "../panes/visible_lines.ts";
import { assemblyColours } from "./assembly_colours.ts";
import { cColours } from "./c_colours.ts";

export type Kind =
    | "keyword"
    | "type"
    | "function"
    | "string"
    | "number"
    | "comment"
    | "directive"
    | "label"
    | "register";

export type Emit = (from: number, to: number, kind: Kind) => void;

export interface LineColours {
    // Tells the coloured parts of a line, from left to right.
    colour(number: number, line: string, emit: Emit): void;
}

const marks = new Map<Kind, Decoration>();

function markOf(kind: Kind): Decoration {
    let mark = marks.get(kind);
    if (!mark) {
        mark = Decoration.mark({ class: `c-${kind}` });
        marks.set(kind, mark);
    }
    return mark;
}

export function colouring(colours: LineColours): Extension {
    return decorateVisibleLines((line, set) => {
        let done = 0;
        colours.colour(line.number, line.text, (start, end, kind) => {
            if (start >= done && end > start) {
                set.add(line.from + start, line.from + end, markOf(kind));
                done = end;
            }
        });
    });
}

// The colours that suit a file of this name.
export function coloursOf(path: string, text: Text): LineColours {
    return /\.(?:s|S|asm|sx)$/.test(path) ? assemblyColours("#") : cColours(text);
}
