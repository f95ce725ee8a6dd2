// The left pane: one source file, with the heat of its lines and what was inlined at
// them and from them.

import { RangeSet } from "@codemirror/state";
import { gutter, GutterMarker, lineNumbers } from "@codemirror/view";
import type { Link } from "../data/link.ts";
import type { Project, SourceFile } from "../data/project.ts";
import type { Unit } from "../data/unit.ts";
import { count, h, number, visible } from "../dom.ts";
import { colouring, coloursOf } from "../text/colouring.ts";
import { Pane, type PaneEvents } from "./pane.ts";
import type { StripMark } from "./strip.ts";
import { decorateVisibleLines, lineClass, redraw } from "./visible_lines.ts";
import { widestOf } from "./width.ts";

const heatSteps = 9;

const shortNumber = (n: number): string => (n < 10_000 ? String(n) : `${Math.round(n / 1000)}k`);

class HeatCell extends GutterMarker {
    constructor(
        private readonly instructions: number,
        private readonly step: number,
        private readonly ofAll: string,
    ) {
        super();
    }

    override eq(other: HeatCell): boolean {
        return other.instructions === this.instructions && other.step === this.step;
    }

    override toDOM(): Node {
        return h(
            "div",
            {
                class: `heat heat-${this.step}`,
                "data-instructions": this.instructions,
                "data-tip": count(this.instructions, "instruction") + this.ofAll,
            },
            shortNumber(this.instructions),
        );
    }
}

class HeatSpace extends GutterMarker {
    override toDOM(): Node {
        return h("div", { class: "heat" }, "0000");
    }
}

// Says that code was inlined at a line, and how much, or the line's code elsewhere.
class InlinedSign extends GutterMarker {
    constructor(
        private readonly instructions: number, // that were inlined at the line
        private readonly here: string,
        private readonly elsewhere: string,
    ) {
        super();
    }

    override eq(other: InlinedSign): boolean {
        return other.here === this.here && other.elsewhere === this.elsewhere;
    }

    override toDOM(): Node {
        return h(
            "div",
            {
                class: "inlined-sign",
                "data-tip": [this.here, this.elsewhere].filter(Boolean).join("\n"),
            },
            this.here && h("span", { class: "inlines" }, `\u21b4${shortNumber(this.instructions)}`),
            this.elsewhere && h("span", { class: "inlined" }, "\u2197"),
        );
    }
}

class InlinedSpace extends GutterMarker {
    override toDOM(): Node {
        return h("div", { class: "inlined-sign" }, "\u21b40000\u2197");
    }
}

// So many names stand in a tip.
const mostNamed = 8;

// "N instructions of A\n..." for the functions with most instructions.
function listed(title: string, sums: Map<string, number>): string {
    if (sums.size === 0) {
        return "";
    }
    const rows = [...sums].sort((a, b) => b[1] - a[1]);
    const shown = rows
        .slice(0, mostNamed)
        .map(([name, instructions]) => `  ${visible(name)}: ${number(instructions)}`);
    const rest = rows.length - shown.length;
    return [title, ...shown, ...(rest > 0 ? [`  and ${count(rest, "more", "more")}`] : [])].join(
        "\n",
    );
}

export class SourcePane extends Pane {
    file: SourceFile | null = null;
    private wanted: SourceFile | null = null;
    private unit: Unit | null = null;
    private link: Link | null = null;
    private linkedSites = new Set<number>();

    constructor(
        element: HTMLElement,
        private readonly project: Project,
        events: PaneEvents,
    ) {
        super(element, events);
    }

    async setFile(file: SourceFile): Promise<void> {
        this.wanted = file;
        if (this.file === file) {
            return;
        }
        const text = await file.load();
        if (this.wanted !== file || this.file === file) {
            return; // another one was asked for meanwhile
        }
        this.file = file;
        this.strip.setHeat(file.heatByLine());
        this.show(text, visible(file.name), widestOf(text), [
            this.heatColumn(file),
            this.inlinedColumn(),
            lineNumbers(),
            decorateVisibleLines((line, set) => {
                const classes = this.classesOf(line.number);
                if (classes) {
                    set.add(line.from, line.from, lineClass(classes));
                }
            }, true),
            file.missing ? [] : colouring(coloursOf(file.path, text)),
        ]);
        this.mark(this.link);
    }

    // What the signs of inlining speak of.
    setUnit(unit: Unit): void {
        this.unit = unit;
        this.view.dispatch({ effects: redraw.of(null) });
    }

    mark(link: Link | null): void {
        this.link = link;
        const sites = link?.callSites.filter((site) => site.file === this.file) ?? [];
        this.linkedSites = new Set(sites.map((site) => site.line));
        const marks: StripMark[] = sites.map(({ line }) => ({
            line,
            lines: 1,
            style: "call-site",
        }));
        if (link?.file && link.file === this.file && link.places.length > 0) {
            marks.push({ line: link.line, lines: 1, style: "linked" });
        }
        this.redraw(marks);
    }

    private classesOf(line: number): string | null {
        const link = this.link;
        if (link?.file === this.file && link?.line === line) {
            return link.instructions > 0 || link.inlinedInstructions > 0 ? "linked" : null;
        }
        return this.linkedSites.has(line) ? "call-site" : null;
    }

    private heatColumn(file: SourceFile): ReturnType<typeof gutter> {
        const heat = file.heatByLine();
        const scale = (heatSteps - 1) / Math.log(Math.max(64, ...[mostOf(heat)]));
        return gutter({
            class: "heat-column",
            markers: () => RangeSet.empty,
            lineMarker: (view, block) => {
                const instructions = heat[view.state.doc.lineAt(block.from).number];
                return instructions
                    ? new HeatCell(
                          instructions,
                          1 + Math.round(Math.log(instructions) * scale),
                          file.ofAll,
                      )
                    : null;
            },
            initialSpacer: () => new HeatSpace(),
        });
    }

    private inlinedColumn(): ReturnType<typeof gutter> {
        return gutter({
            class: "inlined-column",
            lineMarker: (view, block) => this.inlinedSign(view.state.doc.lineAt(block.from).number),
            lineMarkerChange: (update) =>
                update.transactions.some((tr) => tr.effects.some((e) => e.is(redraw))),
            initialSpacer: () => new InlinedSpace(),
        });
    }

    private inlinedSign(line: number): GutterMarker | null {
        const unit = this.unit;
        const file = unit && this.file ? this.file.numberIn(unit.number) : -1;
        if (!unit || file < 0) {
            return null;
        }
        const within = this.file!.units.length > 1 ? " in this unit" : "";
        const here = new Map<string, number>();
        const elsewhere = new Map<string, number>();
        const add = (sums: Map<string, number>, name: string, instructions: number): void => {
            if (instructions > 0) {
                sums.set(name, (sums.get(name) ?? 0) + instructions);
            }
        };
        for (const frame of unit.framesAt(file, line)) {
            for (const child of unit.childrenOf(frame)) {
                add(
                    here,
                    unit.frame(child).function,
                    unit.instructionsOfFrame[child] + unit.instructionsBelow(child),
                );
            }
            if (unit.depth[frame] > 0) {
                const into = unit.frame(unit.outermost(frame));
                const name = `${into.function} (${this.project.placeOf(unit.number, into)})`;
                add(elsewhere, name, unit.instructionsOfFrame[frame]);
            }
        }
        return here.size + elsewhere.size > 0
            ? new InlinedSign(
                  [...here.values()].reduce((sum, n) => sum + n, 0),
                  listed(`Inlined here${within}, with instructions:`, here),
                  listed(`Inlined${within} into, with instructions:`, elsewhere),
              )
            : null;
    }
}

function mostOf(heat: Uint32Array): number {
    let most = 0;
    for (const instructions of heat) {
        most = Math.max(most, instructions);
    }
    return most;
}
