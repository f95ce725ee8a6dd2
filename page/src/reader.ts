// The two panes and what joins them: marks what belongs to the line that is pointed at,
// goes to the other side, and walks the places of a line's code.

import { type Link, linkOfInlined, linkOfLine, linkOfRow } from "./data/link.ts";
import type { CodeFunction, InlinedFunction, Project, SourceFile } from "./data/project.ts";
import { CodePane } from "./panes/code_pane.ts";
import { SourcePane } from "./panes/source_pane.ts";

export type Place =
    | { side: "source"; file: SourceFile; line: number }
    | { side: "code"; unit: number; row: number };

export interface ReaderEvents {
    linked(link: Link | null, place: number): void; // what is marked now, and which place is shown
    shown(file: SourceFile | null, unit: number, topFunction: CodeFunction | null): void;
    moved(place: Place, far: boolean): void; // far: worth a step in the history
}

export class Reader {
    readonly source: SourcePane;
    readonly code: CodePane;
    private link: Link | null = null; // of the cursor, or of the last jump
    private pointed: Link | null = null; // of the mouse
    private place = -1; // index into link.places
    private topFunction: CodeFunction | null = null;
    private readonly functionsOfUnit: CodeFunction[][] = [];

    constructor(
        private readonly project: Project,
        sourceElement: HTMLElement,
        codeElement: HTMLElement,
        private readonly events: ReaderEvents,
    ) {
        for (const f of project.functions) {
            (this.functionsOfUnit[f.unit] ??= [])[f.index] = f;
        }
        this.source = new SourcePane(sourceElement, project, {
            point: (line) => this.point(line === null ? null : this.linkOfSource(line)),
            move: (line) => {
                const link = this.linkOfSource(line);
                this.setLink(link, this.sameLine(link) ? this.place : -1);
                this.tellMove("source", false);
            },
            go: (line, by) => void this.goFromSource(line, by),
            scroll: () => undefined,
        });
        this.code = new CodePane(codeElement, project, {
            point: (line) => this.point(line === null ? null : this.linkOfCode(line)),
            move: (line) => {
                this.setLink(this.linkOfCode(line));
                this.tellMove("code", false);
            },
            go: (line, by) => void this.goFromCode(line, by),
            scroll: (top) => this.tellTop(top),
        });
    }

    private linkOfSource(line: number): Link | null {
        const { unit } = this.code;
        const { file } = this.source;
        return unit && file ? linkOfLine(this.project, unit, file, line) : null;
    }

    // Whether the link is of the source line that the last one is of.
    private sameLine(link: Link | null): boolean {
        const last = this.link;
        return (
            last?.origin === "source" &&
            link?.origin === "source" &&
            last.file === link.file &&
            last.line === link.line
        );
    }

    private linkOfCode(line: number): Link | null {
        const { unit } = this.code;
        const row = this.code.rowOf(line);
        return unit && row >= 0 ? linkOfRow(this.project, unit, row) : null;
    }

    private point(link: Link | null): void {
        // What is marked already keeps its place.
        this.pointed = this.sameLine(link) ? null : link;
        this.mark();
    }

    private setLink(link: Link | null, place = -1): void {
        this.link = link;
        this.place = place;
        this.pointed = null;
        this.mark();
    }

    private mark(): void {
        const link = this.pointed ?? this.link;
        this.source.mark(link);
        this.code.mark(link);
        const place = link === this.link ? this.place : -1;
        if (link && place >= 0) {
            this.code.setPlace(link.places[place]);
        }
        this.events.linked(link, place);
    }

    private tellMove(side: Place["side"], far: boolean): void {
        const { file } = this.source;
        const { unit } = this.code;
        if (side === "source" && file) {
            this.events.moved({ side, file, line: this.source.cursorLine }, far);
        } else if (side === "code" && unit) {
            this.events.moved({ side, unit: unit.number, row: this.code.cursorRow }, far);
        }
    }

    private tellTop(line: number): void {
        const { unit } = this.code;
        if (!unit) {
            return;
        }
        // The blank row above a function is on its way out.
        const row = this.code.rowNear(line);
        const top = this.functionAt(unit.number, row) ?? this.functionAt(unit.number, row + 1);
        if (top !== this.topFunction) {
            this.topFunction = top;
            this.tellShown();
        }
    }

    private tellShown(): void {
        this.events.shown(this.source.file, this.code.unit?.number ?? 0, this.topFunction);
    }

    functionAt(unit: number, row: number): CodeFunction | null {
        const index = this.code.unit?.functionOfRow[row] ?? -1;
        return index < 0 ? null : this.functionsOfUnit[unit][index];
    }

    // The function at the cursor, or the one on the screen.
    get currentFunction(): CodeFunction | null {
        return (
            this.functionAt(this.code.unit?.number ?? 0, this.code.cursorRow) ?? this.topFunction
        );
    }

    async showUnit(unit: number): Promise<void> {
        const loaded = await this.project.unit(unit);
        await this.code.setUnit(loaded);
        this.source.setUnit(loaded);
        this.tellTop(this.code.topLine);
        this.tellShown();
    }

    async showFile(file: SourceFile): Promise<void> {
        await this.source.setFile(file);
        if (this.code.unit) {
            this.source.setUnit(this.code.unit);
        }
        this.tellShown();
    }

    // Shows a line of a source, and the first of its code where it has some.
    // Without a unit, the one that is shown already if it has the file.
    async showLine(file: SourceFile, line: number, far = true, unit?: number): Promise<void> {
        const shown = this.code.unit?.number ?? -1;
        await this.showUnit(unit ?? (file.numberIn(shown) >= 0 ? shown : file.unitOf(line)));
        await this.showFile(file);
        this.source.goTo(line);
        const link = this.linkOfSource(line);
        if (link) {
            this.goToPlace(link, 0);
        }
        this.tellMove("source", far);
    }

    // Shows a row of the code, and the line that it comes from; a function's where the row
    // is its label.
    async showRow(unit: number, row: number, far = true): Promise<void> {
        await this.showUnit(unit);
        const f = this.functionAt(unit, row);
        if (f?.row === row) {
            return this.showFunction(f, far);
        }
        const link = linkOfRow(this.project, this.code.unit!, row);
        const place = link.file || this.source.file ? link : f;
        if (place?.file) {
            await this.showFile(place.file);
            this.source.goTo(place.line);
        }
        this.code.goToRow(row);
        this.setLink(link, placeOf(link, row));
        this.tellMove("code", far);
    }

    async showFunction(f: CodeFunction, far = true): Promise<void> {
        await this.showUnit(f.unit);
        if (f.file) {
            await this.showFile(f.file);
            this.source.goTo(f.line);
        }
        this.code.goToRow(f.row, "start");
        this.setLink(f.file ? this.linkOfSource(f.line) : null);
        this.tellMove("code", far);
    }

    // Shows the first line of a function that stands nowhere by itself, and the first place
    // where its code was inlined.
    async showInlined(f: InlinedFunction, far = true): Promise<void> {
        const { unit } = this.code;
        if (!unit || !f.units.includes(unit.number)) {
            await this.showUnit(f.units[0]);
        }
        await this.showFile(f.file);
        this.source.goTo(f.line);
        this.goToPlace(linkOfInlined(this.project, this.code.unit!, f), 0);
        this.tellMove("source", far);
    }

    // Where a page opens that has no place in its address.
    async showFirst(f: CodeFunction): Promise<void> {
        await this.showUnit(f.unit);
        this.code.goToRow(f.row, "start");
        if (f.file) {
            await this.showFile(f.file);
            this.source.goTo(f.line);
            this.setLink(this.linkOfSource(f.line));
        }
        this.tellTop(this.code.topLine);
    }

    private async goFromSource(line: number, by: "key" | "click"): Promise<void> {
        const link = this.linkOfSource(line);
        if (!link || link.places.length === 0) {
            return this.goToOtherUnit(link, by);
        }
        // A second click on the line goes to its next place.
        const shown = this.sameLine(link) ? this.place : -1;
        const place = by === "click" ? (shown + 1) % link.places.length : Math.max(shown, 0);
        this.code.goToRow(link.places[place].start);
        this.setLink(link, place);
        if (by === "key") {
            this.code.focus();
        }
        this.tellMove("source", by === "key");
    }

    // A header's line may have its code in another unit than the one that is shown.
    private async goToOtherUnit(link: Link | null, by: "key" | "click"): Promise<void> {
        const unit = link?.file ? this.unitWith(link.file, link.line, link.unit.number) : -1;
        if (link?.file && unit >= 0 && unit !== link.unit.number) {
            await this.showUnit(unit);
            const there = this.linkOfSource(link.line);
            if (there && there.places.length > 0) {
                await this.goFromSource(link.line, by);
            }
        }
    }

    private async goFromCode(line: number, by: "key" | "click"): Promise<void> {
        const link = this.linkOfCode(line);
        if (!link?.file) {
            return;
        }
        await this.showFile(link.file);
        this.source.goTo(link.line);
        this.setLink(link, placeOf(link, link.row));
        if (by === "key") {
            this.source.focus();
        }
        this.tellMove("code", by === "key");
    }

    // The unit after `from` that has code of the line; -1 when none has.
    private unitWith(file: SourceFile, line: number, from: number, step = 1): number {
        const numbers = file.unitsWith(line);
        if (numbers.length === 0) {
            return -1;
        }
        return step > 0
            ? (numbers.find((unit) => unit > from) ?? numbers[0])
            : (numbers.findLast((unit) => unit < from) ?? numbers.at(-1)!);
    }

    // The next or the previous place of the marked line's code; past the last one, the
    // next unit that has code of it.
    async walk(step: 1 | -1): Promise<void> {
        const link = this.link;
        if (!link || link.places.length === 0) {
            return this.goToOtherUnit(link, "click");
        }
        let place = this.place + step;
        if (this.place < 0) {
            place = step > 0 ? 0 : link.places.length - 1;
        }
        if (place >= 0 && place < link.places.length) {
            this.goToPlace(link, place);
            this.tellMove("code", false);
            return;
        }
        const unit = link.file ? this.unitWith(link.file, link.line, link.unit.number, step) : -1;
        if (unit >= 0 && unit !== link.unit.number && link.file) {
            await this.showUnit(unit);
            const there = linkOfLine(this.project, this.code.unit!, link.file, link.line);
            this.goToPlace(there, step > 0 ? 0 : there.places.length - 1);
        } else {
            this.goToPlace(link, (place + link.places.length) % link.places.length);
        }
        this.tellMove("code", false);
    }

    private goToPlace(link: Link, place: number): void {
        const at = link.places.at(place);
        if (at) {
            this.code.goToRow(at.start);
        }
        this.setLink(link, at ? place : -1);
    }

    // From inlined code to the line that it was inlined at.
    async goToCallSite(): Promise<void> {
        const link = this.pointed ?? this.link;
        const site = link?.callSites[0];
        if (site) {
            await this.showLine(site.file, site.line);
        }
    }

    // The next or the previous function in the code.
    async walkFunctions(step: 1 | -1): Promise<void> {
        const { unit } = this.code;
        if (!unit) {
            return;
        }
        const functions = this.functionsOfUnit[unit.number] ?? [];
        const row = this.code.cursorRow;
        const next =
            step > 0 ? functions.find((f) => f.row > row) : functions.findLast((f) => f.row < row);
        if (next) {
            await this.showFunction(next);
        }
    }

    async showAll(all: boolean): Promise<void> {
        const { unit } = this.code;
        if (unit) {
            const row = this.code.cursorRow;
            await this.code.setUnit(unit, all);
            this.code.goToRow(Math.max(row, 0));
            this.mark();
        }
    }
}

function placeOf(link: Link, row: number): number {
    return link.places.findIndex((place) => place.start <= row && row < place.end);
}
