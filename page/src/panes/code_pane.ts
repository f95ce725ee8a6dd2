// The right pane: the code of one unit. Shows its rows, or all of the compiler's
// assembly with the rows among it.

import { Text } from "@codemirror/state";
import { Decoration, gutter, GutterMarker, WidgetType } from "@codemirror/view";
import { describeSteps, ownStep, stepsOf } from "../data/chain.ts";
import { linesOf, takeChunk } from "../data/chunks.ts";
import type { Link } from "../data/link.ts";
import type { Project } from "../data/project.ts";
import type { Unit } from "../data/unit.ts";
import { h } from "../dom.ts";
import { cutName } from "../text/names.ts";
import { assemblyColours } from "../text/assembly_colours.ts";
import { colouring } from "../text/colouring.ts";
import { Pane, type PaneEvents } from "./pane.ts";
import type { StripMark } from "./strip.ts";
import { decorateVisibleLines, lineClass, redraw } from "./visible_lines.ts";
import { mostWidth, tabSize, widthOf } from "./width.ts";

// Where the rows stand in the text that is shown. Rows and lines count from 0 and 1.
interface Placement {
    text: Text;
    rowOf(line: number): number; // -1 where the line is no row
    lineOf(row: number): number;
}

function onlyRows(unit: Unit): Placement {
    return { text: unit.code, rowOf: (line) => line - 1, lineOf: (row) => row + 1 };
}

// The lines that the rows leave out, put back where they stood.
async function allLines(unit: Unit): Promise<Placement> {
    const text = await hiddenText(unit);
    const hidden = text === "" ? [] : linesOf(text);
    const rows = unit.code;
    const count = unit.head.rows;
    const lineOfRow = new Int32Array(count);
    let lines = hidden.length;
    let line = 0;
    unit.rows.assembly_line.forEach((step, row) => {
        line += step;
        lineOfRow[row] = step === 0 ? 0 : line;
        lines += step === 0 ? 0 : 1;
    });
    const rowOfLine = new Int32Array(lines + 1).fill(-1);
    for (let row = 0; row < count; ++row) {
        if (lineOfRow[row] > 0) {
            rowOfLine[lineOfRow[row]] = row;
        }
    }
    const all = new Array<string>(Math.max(lines, 1)).fill(""); // a text has a line at least
    const code = [...rows.iterLines()];
    unit.rows.tail_row.forEach((row, i) => (code[row] += unit.rows.tail[i]));
    for (let at = 1, next = 0; at <= lines; ++at) {
        const row = rowOfLine[at];
        all[at - 1] = row < 0 ? hidden[next++] : code[row];
    }
    // A row that stands in no line of the assembly shows where the row before it does.
    for (let row = 0, last = 1; row < count; ++row) {
        last = lineOfRow[row] ||= last;
    }
    return {
        text: Text.of(all),
        rowOf: (at) => rowOfLine[at] ?? -1,
        lineOf: (row) => lineOfRow[row],
    };
}

const hiddenTexts = new WeakMap<Unit, Promise<string>>();

function hiddenText(unit: Unit): Promise<string> {
    let text = hiddenTexts.get(unit);
    if (!text) {
        text = takeChunk(`${unit.number}/hidden`);
        hiddenTexts.set(unit, text);
    }
    return text;
}

class SourceLine extends GutterMarker {
    constructor(
        private readonly line: string,
        private readonly classes: string,
        private readonly place = "",
    ) {
        super();
    }

    override eq(other: SourceLine): boolean {
        return other.place === this.place && other.classes === this.classes;
    }

    override toDOM(): Node {
        return h("div", { class: this.classes, "data-tip": this.place || null }, this.line);
    }
}

// A bar for each time that the row was inlined, coloured by what was.
class InlineBars extends GutterMarker {
    constructor(private readonly colours: string) {
        super();
    }

    override eq(other: InlineBars): boolean {
        return other.colours === this.colours;
    }

    override toDOM(): Node {
        const bars = [...this.colours].map((colour) => h("span", { class: `bar bar-${colour}` }));
        return h("div", { class: "bars" }, ...bars);
    }
}

// Behind the first row of inlined code: what it is and where it was inlined. Where the pane
// has little room the note begins farther left, and the name is cut rather than the place.
class InlinedNote extends WidgetType {
    constructor(
        private readonly what: string,
        private readonly where: string,
        private readonly width: number, // of the row's text, in letters
        private readonly chain: string,
    ) {
        super();
    }

    override eq(other: InlinedNote): boolean {
        return other.what === this.what && other.chain === this.chain && other.width === this.width;
    }

    override toDOM(): HTMLElement {
        const note = h(
            "span",
            { class: "inlined-note" },
            " ",
            h(
                "span",
                { "data-tip": this.chain },
                h("span", { class: "what" }, "\u21b3 ", h("b", null, this.what)),
                h("span", { class: "words" }, h("span", null, " "), h("span", null, "inlined at ")),
                h("span", { class: "where" }, this.where),
            ),
        );
        note.style.setProperty("--width", `${this.width}ch`);
        return note;
    }

    override ignoreEvent(): boolean {
        return false;
    }
}

// So many letters are kept for a note behind its row, as style.css knows, too.
const noteRoom = 26;
const longestNoted = 24;

const mostBars = 4;
const barColours = 6;

export class CodePane extends Pane {
    unit: Unit | null = null;
    all = false;
    private placement: Placement | null = null;
    private link: Link | null = null;
    private readonly linked = { rows: new Set<number>(), inlined: new Set<number>() };
    private place = { start: -1, end: -1 };

    constructor(
        element: HTMLElement,
        private readonly project: Project,
        events: PaneEvents,
    ) {
        super(element, events);
    }

    async setUnit(unit: Unit, all = this.all): Promise<void> {
        if (this.unit === unit && this.all === all && this.placement) {
            return;
        }
        const placement = all ? await allLines(unit) : onlyRows(unit);
        this.unit = unit;
        this.all = all;
        this.placement = placement;
        this.show(placement.text, "Instructions", this.widest(unit, placement), [
            this.sourceColumn(unit),
            this.barColumn(unit),
            decorateVisibleLines((line, set) => {
                const row = this.rowOf(line.number);
                const classes = row < 0 ? "hidden-line" : this.classesOf(unit, row);
                if (classes) {
                    set.add(line.from, line.from, lineClass(classes));
                }
            }, true),
            decorateVisibleLines((line, set) => {
                const note = this.note(unit, this.rowOf(line.number), line.text);
                if (note) {
                    set.add(line.to, line.to, Decoration.widget({ widget: note, side: 1 }));
                }
            }),
            colouring(assemblyColours(unit.head.comment)),
        ]);
        this.mark(this.link?.unit === unit ? this.link : null);
    }

    rowOf(line: number): number {
        return this.placement?.rowOf(line) ?? -1;
    }

    // The row at the line, or the nearest one above it.
    rowNear(line: number): number {
        let at = line;
        while (at > 1 && this.rowOf(at) < 0) {
            --at;
        }
        return this.rowOf(at);
    }

    get cursorRow(): number {
        return this.rowNear(this.cursorLine);
    }

    goToRow(row: number, where: "center" | "start" = "center"): void {
        this.goTo(this.placement?.lineOf(row) ?? 1, where);
    }

    mark(link: Link | null): void {
        this.link = link;
        this.linked.rows.clear();
        this.linked.inlined.clear();
        const marks: StripMark[] = [];
        const add = (ranges: Link["rows"], rows: Set<number>, style: StripMark["style"]): void => {
            for (const { start, end } of ranges) {
                for (let row = start; row < end; ++row) {
                    rows.add(row);
                }
                const line = this.placement?.lineOf(start) ?? 1;
                const last = this.placement?.lineOf(end - 1) ?? 1;
                marks.push({ line, lines: last - line + 1, style });
            }
        };
        if (link) {
            add(link.inlinedRows, this.linked.inlined, "inlined-here");
            add(link.rows, this.linked.rows, "linked");
        }
        this.place = { start: -1, end: -1 };
        this.redraw(marks);
    }

    // Which of the link's places the reader is at.
    setPlace(place: { start: number; end: number }): void {
        this.place = place;
        this.view.dispatch({ effects: redraw.of(null) });
    }

    private classesOf(unit: Unit, row: number): string | null {
        const classes = [];
        if (this.linked.rows.has(row)) {
            classes.push("linked");
        } else if (this.linked.inlined.has(row)) {
            classes.push("inlined-here");
        }
        if (row >= this.place.start && row < this.place.end) {
            classes.push("current-place");
        }
        if (unit.rows.kinds[row] === "f") {
            classes.push("function-label");
        }
        if ((unit.depth[unit.frameOfRow[row]] ?? 0) > 0) {
            classes.push("inlined-row");
        }
        return classes.length > 0 ? classes.join(" ") : null;
    }

    // The instruction before a row that says which code the row goes on with, -1 at the
    // beginning of a function.
    private frameBefore(unit: Unit, row: number): number {
        for (
            let at = row - 1;
            at >= 0 && unit.functionOfRow[at] === unit.functionOfRow[row];
            --at
        ) {
            if (unit.instruction[at]) {
                return unit.frameOfRow[at];
            }
        }
        return -1;
    }

    private sourceColumn(unit: Unit): ReturnType<typeof gutter> {
        const spacer = String(Math.max(1000, ...unit.head.files.map((file) => file.lines)));
        return gutter({
            class: "source-column",
            lineMarker: (view, block) => {
                const row = this.rowOf(view.state.doc.lineAt(block.from).number);
                const frame = unit.frameOfRow[row] ?? -1;
                if (frame < 0) {
                    return null;
                }
                const before = this.frameBefore(unit, row);
                const { file, line } = unit.frame(frame);
                if (before >= 0) {
                    const last = unit.frame(before);
                    if (last.file === file && last.line === line) {
                        return null;
                    }
                }
                return new SourceLine(
                    String(line),
                    unit.depth[frame] > 0 ? "source-line from-inlined" : "source-line",
                    this.project.placeOf(unit.number, { file, line }),
                );
            },
            initialSpacer: () => new SourceLine(spacer, "source-line"),
        });
    }

    private barColumn(unit: Unit): ReturnType<typeof gutter> {
        return gutter({
            class: "bar-column",
            lineMarker: (view, block) => {
                const row = this.rowOf(view.state.doc.lineAt(block.from).number);
                const colours = this.barsOf(unit, row);
                return colours ? new InlineBars(colours.slice(0, mostBars)) : null;
            },
            initialSpacer: () => new InlineBars("0".repeat(mostBars)),
        });
    }

    // The colour of each function that the row was inlined through, the outermost first.
    // What is no instruction, such as a label, has what the code around it has in common.
    private barsOf(unit: Unit, row: number): string {
        const frame = unit.frameOfRow[row] ?? -1;
        if (frame < 0 && unit.rows.kinds[row] === "l") {
            const before = this.barsOf(unit, row - 1);
            const after = this.barsOf(unit, row + 1);
            let same = 0;
            while (same < before.length && before[same] === after[same]) {
                ++same;
            }
            return before.slice(0, same);
        }
        let colours = "";
        for (let at = frame; at >= 0; at = unit.rows.frame_parent[at]) {
            if (unit.depth[at] > 0) {
                colours = String(unit.rows.frame_function[at] % barColours) + colours;
            }
        }
        return colours;
    }

    // For the first row of code that was inlined at one place.
    private note(unit: Unit, row: number, text: string): InlinedNote | null {
        const frame = unit.frameOfRow[row] ?? -1;
        const parents = unit.rows.frame_parent;
        if (frame < 0 || parents[frame] < 0 || !unit.instruction[row]) {
            return null;
        }
        const functions = unit.rows.frame_function;
        for (let at = this.frameBefore(unit, row); at >= 0; at = parents[at]) {
            if (parents[at] === parents[frame] && functions[at] === functions[frame]) {
                return null; // the same goes on, or comes back from what was inlined in it
            }
        }
        const steps = stepsOf(this.project, unit, frame);
        const site = steps[ownStep(steps, 1)];
        const what = cutName(steps[0].name, longestNoted);
        return new InlinedNote(what, site.place, widthOf(text), describeSteps(steps));
    }

    // Of the rows, with room behind those that may have a note.
    private widest(unit: Unit, placement: Placement): number {
        let widest = 0;
        let line = 0;
        for (const text of placement.text.iterLines()) {
            const row = placement.rowOf(++line);
            const room = (unit.depth[unit.frameOfRow[row]] ?? 0) > 0 ? noteRoom : 0;
            if (text.length * tabSize + room > widest) {
                widest = Math.max(widest, widthOf(text) + room);
            }
        }
        return Math.min(widest, mostWidth);
    }
}
