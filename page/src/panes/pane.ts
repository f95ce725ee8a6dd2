// What both panes share: a text that can be read but not changed, with a cursor, and
// word of where the reader points, moves and goes.

import { defaultKeymap } from "@codemirror/commands";
import {
    Annotation,
    EditorSelection,
    EditorState,
    type Extension,
    type Text,
} from "@codemirror/state";
import {
    drawSelection,
    EditorView,
    highlightActiveLine,
    highlightActiveLineGutter,
    highlightSpecialChars,
    keymap,
} from "@codemirror/view";
import { perFrame } from "../dom.ts";
import { findExtension } from "./find.ts";
import { Strip, type StripMark } from "./strip.ts";
import { redraw } from "./visible_lines.ts";
import { tabSize } from "./width.ts";

// Lines are those of the text shown, counted from 1.
export interface PaneEvents {
    point(line: number | null): void; // the mouse is on a line, or has left
    move(line: number): void; // the cursor has come to a line
    go(line: number, by: "key" | "click"): void; // the reader wants to see the other side
    scroll(topLine: number): void;
}

// Marks the moves that the page itself makes.
const ownMove = Annotation.define<true>();

// A mouse that moved farther was dragging.
const mostMoved = 5;

export class Pane {
    readonly view: EditorView;
    readonly strip: Strip;
    private pointed: number | null = null;
    private isNew = false; // the text is not drawn yet, and its heights are guesses
    private pressed: { event: MouseEvent; line: number | null; gutter: boolean } | null = null;

    constructor(
        readonly element: HTMLElement,
        private readonly events: PaneEvents,
    ) {
        const body = element.querySelector<HTMLElement>(".pane-body")!;
        this.view = new EditorView({ parent: body, state: EditorState.create() });
        this.strip = new Strip(this.view, (fraction) =>
            this.goTo(Math.max(1, Math.round(fraction * this.view.state.doc.lines))),
        );
        body.append(this.strip.canvas);

        const point = perFrame((y: number) => this.point(this.lineAtHeight(y)));
        this.view.dom.addEventListener("mousemove", (event) => point(event.clientY));
        this.view.dom.addEventListener("mouseleave", () => this.point(null));
        // Not the browser's clicks: it sends none when what was under the mouse has been
        // drawn anew between the button's going down and up.
        this.view.scrollDOM.addEventListener("mousedown", (event) => {
            const line = this.lineAtHeight(event.clientY);
            const gutter = (event.target as Element).closest(".cm-gutters") !== null;
            this.pressed = { event, line, gutter };
        });
        this.view.scrollDOM.addEventListener("mouseup", (event) => this.release(event));
        this.view.scrollDOM.addEventListener(
            "scroll",
            perFrame(() => this.events.scroll(this.topLine)),
        );
    }

    private point(line: number | null): void {
        if (line !== this.pointed) {
            this.pointed = line;
            this.events.point(line);
        }
    }

    private release(event: MouseEvent): void {
        const pressed = this.pressed;
        this.pressed = null;
        const plain = !event.ctrlKey && !event.metaKey && !event.shiftKey && !event.altKey;
        const selecting = !pressed?.gutter && !this.view.state.selection.main.empty;
        if (pressed?.line && event.button === 0 && plain && !selecting) {
            const moved = Math.hypot(
                event.clientX - pressed.event.clientX,
                event.clientY - pressed.event.clientY,
            );
            if (moved < mostMoved) {
                if (pressed.gutter) {
                    this.moveTo(pressed.line); // as the editor does for its text
                }
                this.events.go(pressed.line, "click");
            }
        }
    }

    private moveTo(line: number): void {
        const { doc } = this.view.state;
        this.view.focus();
        this.view.dispatch({ selection: EditorSelection.cursor(doc.line(line).from) });
    }

    private lineAtHeight(clientY: number): number | null {
        const y = clientY - this.view.documentTop;
        if (y < 0 || y > this.view.contentHeight) {
            return null;
        }
        return this.view.state.doc.lineAt(this.view.lineBlockAtHeight(y).from).number;
    }

    get topLine(): number {
        const y = this.view.scrollDOM.getBoundingClientRect().top - this.view.documentTop;
        return this.view.state.doc.lineAt(this.view.lineBlockAtHeight(Math.max(y, 0) + 1).from)
            .number;
    }

    // `width`: of the widest line, in letters.
    protected show(text: Text, label: string, width: number, extensions: Extension): void {
        this.view.setState(
            EditorState.create({
                doc: text,
                extensions: [
                    EditorState.readOnly.of(true),
                    EditorView.editable.of(false),
                    EditorView.contentAttributes.of({
                        tabindex: "0",
                        "aria-label": label,
                        style: `min-width: ${width + 2}ch`,
                    }),
                    EditorState.tabSize.of(tabSize),
                    drawSelection(),
                    highlightActiveLine(),
                    highlightActiveLineGutter(),
                    highlightSpecialChars({ addSpecialChars: /[\u202a-\u202e\u2066-\u2069]/ }),
                    findExtension,
                    keymap.of([
                        {
                            key: "Enter",
                            run: () => {
                                this.events.go(this.cursorLine, "key");
                                return true;
                            },
                        },
                        ...defaultKeymap,
                    ]),
                    EditorView.updateListener.of((update) => {
                        const moved = update.transactions.some(
                            (tr) => tr.selection && tr.annotation(ownMove) === undefined,
                        );
                        if (moved) {
                            this.events.move(this.cursorLine);
                        }
                        if (update.geometryChanged) {
                            this.measureGutters();
                            this.strip.draw();
                        }
                    }),
                    extensions,
                ],
            }),
        );
        this.pointed = null;
        this.isNew = true;
        this.view.requestMeasure({ read: () => (this.isNew = false) });
    }

    // For what is laid out by the room that the columns leave.
    private measureGutters(): void {
        this.view.requestMeasure({
            key: this,
            read: (view) => view.contentDOM.offsetLeft,
            write: (width, view) => view.dom.style.setProperty("--gutters", `${width}px`),
        });
    }

    get cursorLine(): number {
        return this.view.state.doc.lineAt(this.view.state.selection.main.head).number;
    }

    // Puts the cursor on a line and brings that into the middle, unless it can be seen; or
    // to the top.
    goTo(line: number, where: "center" | "start" = "center"): void {
        const doc = this.view.state.doc;
        const at = doc.line(Math.min(Math.max(line, 1), doc.lines)).from;
        const block = this.view.lineBlockAt(at);
        const top = this.view.scrollDOM.getBoundingClientRect().top - this.view.documentTop;
        const bottom = top + this.view.scrollDOM.clientHeight;
        const margin = 3 * this.view.defaultLineHeight;
        const seen =
            !this.isNew &&
            where === "center" &&
            block.top >= top + margin &&
            block.bottom <= bottom - margin;
        this.view.dispatch({
            selection: EditorSelection.cursor(at),
            annotations: ownMove.of(true),
            effects: seen ? [] : EditorView.scrollIntoView(at, { y: where, x: "start" }),
        });
    }

    focus(): void {
        this.view.focus();
    }

    get focused(): boolean {
        return this.element.contains(document.activeElement);
    }

    redraw(marks: StripMark[]): void {
        this.view.dispatch({ effects: redraw.of(null) });
        this.strip.set(marks);
    }
}
