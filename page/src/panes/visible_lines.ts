// Decorations of the lines on the screen, made anew when other lines come into view or
// when what they show has changed.

import { type Extension, type Line, RangeSetBuilder, StateEffect } from "@codemirror/state";
import { Decoration, type DecorationSet, type EditorView, ViewPlugin } from "@codemirror/view";

export type DecorateLine = (line: Line, set: RangeSetBuilder<Decoration>) => void;

// Tells an editor that what its lines show has changed, its text has not.
export const redraw = StateEffect.define<null>();

function decorate(view: EditorView, add: DecorateLine): DecorationSet {
    const set = new RangeSetBuilder<Decoration>();
    for (const { from, to } of view.visibleRanges) {
        for (let at = from; at <= to;) {
            const line = view.state.doc.lineAt(at);
            add(line, set);
            at = line.to + 1;
        }
    }
    return set.finish();
}

// `changing`: the decorations depend on more than the text.
export function decorateVisibleLines(add: DecorateLine, changing = false): Extension {
    return ViewPlugin.define(
        (view) => ({
            decorations: decorate(view, add),
            update(update) {
                if (
                    update.viewportChanged ||
                    update.docChanged ||
                    (changing &&
                        update.transactions.some((tr) => tr.effects.some((e) => e.is(redraw))))
                ) {
                    this.decorations = decorate(update.view, add);
                }
            },
        }),
        { decorations: (plugin) => plugin.decorations },
    );
}

const lineClasses = new Map<string, Decoration>();

export function lineClass(classes: string): Decoration {
    let decoration = lineClasses.get(classes);
    if (!decoration) {
        decoration = Decoration.line({ class: classes });
        lineClasses.set(classes, decoration);
    }
    return decoration;
}
