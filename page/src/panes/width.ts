// How wide texts are, in letters. A pane that knows its widest line keeps its width while
// it is scrolled.

import type { Text } from "@codemirror/state";

export const tabSize = 8;

// What is longer than that may widen the pane when it comes into view.
export const mostWidth = 2_000;

export function widthOf(text: string): number {
    let width = 0;
    for (const c of text) {
        width += c === "\t" ? tabSize - (width % tabSize) : 1;
    }
    return width;
}

// Of all lines of a text.
export function widestOf(text: Text): number {
    let widest = 0;
    for (const line of text.iterLines()) {
        if (line.length * tabSize > widest) {
            widest = Math.max(widest, line.length, line.includes("\t") ? widthOf(line) : 0);
        }
        if (widest >= mostWidth) {
            return mostWidth;
        }
    }
    return widest;
}
