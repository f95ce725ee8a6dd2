// Everything on the page: the units, their files with equal ones taken together, and
// their functions. Texts and code are unpacked when they are first shown.

import { Text } from "@codemirror/state";
import { chunkNames, hasChunk, linesOf, takeChunk, takeJson } from "./chunks.ts";
import type { StartHead, UnitHead } from "./format.ts";
import { mostLines } from "./format.ts";
import { loadUnit, type Unit } from "./unit.ts";
import { visible } from "../dom.ts";

// A source file, with what all units together have from it.
export class SourceFile {
    name = ""; // the shortest end of the path that no other file has
    instructions = 0;
    readonly units: { unit: number; file: number }[] = []; // and its number there
    private text: Promise<Text> | null = null;
    private heat: Uint32Array | null = null;

    constructor(
        private readonly heads: UnitHead[],
        readonly number: number,
        readonly path: string,
        readonly textChunk: string | null,
        public lines: number,
        readonly system: boolean,
    ) {}

    // A source that was not found has as many empty lines as code comes from.
    get missing(): boolean {
        return this.textChunk === null;
    }

    load(): Promise<Text> {
        this.text ??= this.textChunk
            ? takeChunk(this.textChunk).then((text) => Text.of(linesOf(text)))
            : Promise.resolve(Text.of(new Array<string>(Math.max(this.lines, 1)).fill("")));
        return this.text;
    }

    numberIn(unit: number): number {
        return this.units.find((entry) => entry.unit === unit)?.file ?? -1;
    }

    // The numbers of the units that have code of a line, in order.
    unitsWith(line: number): number[] {
        return this.units
            .filter(({ unit, file }) => {
                let at = 0;
                return this.heads[unit].files[file].heat_line.some((less) => (at += less) === line);
            })
            .map(({ unit }) => unit)
            .sort((a, b) => a - b);
    }

    // The unit to show a line with, where none is asked for.
    unitOf(line: number): number {
        return this.unitsWith(line)[0] ?? this.units[0]?.unit ?? 0;
    }

    // What counts of its lines are of, where that is not plain.
    get ofAll(): string {
        return this.units.length > 1 ? " in all units" : "";
    }

    // By line, how many instructions it has in all units; lines count from 1.
    heatByLine(): Uint32Array {
        if (!this.heat) {
            const heat = new Uint32Array(this.lines + 1);
            for (const { unit, file } of this.units) {
                const head = this.heads[unit].files[file];
                let line = 0;
                head.heat_line.forEach((step, i) => {
                    line += step;
                    if (line < heat.length) {
                        heat[line] += head.heat_count[i];
                    }
                });
            }
            this.heat = heat;
        }
        return this.heat;
    }
}

export interface CodeFunction {
    unit: number;
    index: number; // in the unit's function columns
    name: string;
    symbol: string;
    file: SourceFile | null;
    line: number;
    row: number;
    rows: number;
    instructions: number;
    inlined: number;
}

// A function whose code stands only where it was inlined.
export interface InlinedFunction {
    units: number[];
    name: string;
    file: SourceFile;
    line: number;
    instructions: number; // in all units
}

export class Project {
    readonly files: SourceFile[] = []; // those with most code first
    readonly functions: CodeFunction[] = [];
    readonly inlined: InlinedFunction[] = []; // none that stands by itself in another unit
    readonly instructions: number;
    readonly unitNames: string[]; // each another
    readonly unitLabels: string[]; // with what tells units of one source apart
    readonly bySymbol = new Map<string, CodeFunction[]>();
    private readonly fileOfUnit: SourceFile[][] = [];
    private readonly units = new Map<number, Promise<Unit>>();

    constructor(
        readonly heads: UnitHead[],
        readonly start: StartHead | null,
    ) {
        this.instructions = heads.reduce((sum, head) => sum + head.instructions, 0);
        this.unitNames = unitNames(heads);
        this.unitLabels = heads.map((head, unit) => {
            const words = ownWords(head, heads);
            return this.unitNames[unit] + (words === "" ? "" : `: ${words}`);
        });
        this.addFiles();
        heads.forEach((head, unit) => this.addFunctions(head, unit));
        this.addInlined();
    }

    private addFiles(): void {
        const byKey = new Map<string, SourceFile>();
        this.heads.forEach((head, unit) => {
            this.fileOfUnit[unit] = head.files.map((entry, index) => {
                const key = JSON.stringify([entry.path, entry.text]);
                let file = byKey.get(key);
                if (!file) {
                    file = new SourceFile(
                        this.heads,
                        byKey.size,
                        entry.path,
                        entry.text,
                        Math.min(entry.lines, mostLines),
                        entry.system,
                    );
                    byKey.set(key, file);
                    this.files.push(file);
                }
                file.lines = Math.min(Math.max(file.lines, entry.lines), mostLines);
                file.instructions += entry.heat_count.reduce((sum, count) => sum + count, 0);
                file.units.push({ unit, file: index });
                return file;
            });
        });
        nameFiles(this.files);
        this.files.sort((a, b) => b.instructions - a.instructions || compare(a.name, b.name));
    }

    private addFunctions(head: UnitHead, unit: number): void {
        const columns = head.functions;
        for (let i = 0; i < columns.row.length; ++i) {
            const added: CodeFunction = {
                unit,
                index: i,
                name: columns.name[i],
                symbol: columns.symbol[i],
                file: this.fileOfUnit[unit][columns.file[i]] ?? null,
                line: columns.line[i],
                row: columns.row[i],
                rows: columns.rows[i],
                instructions: columns.instructions[i],
                inlined: columns.inlined[i],
            };
            this.functions.push(added);
            const same = this.bySymbol.get(added.symbol);
            if (same) {
                same.push(added);
            } else {
                this.bySymbol.set(added.symbol, [added]);
            }
        }
    }

    private addInlined(): void {
        const names = new Set(this.functions.map((f) => f.name));
        const known = new Map<string, InlinedFunction>();
        this.heads.forEach(({ inlined }, unit) =>
            inlined?.name.forEach((name, i) => {
                const file = this.fileOf(unit, inlined.file[i]);
                if (!file || names.has(name)) {
                    return;
                }
                const line = inlined.line[i];
                const key = `${file.number}:${name}`;
                const at = known.get(key) ?? { units: [], name, file, line, instructions: 0 };
                at.units.push(unit);
                at.line = Math.min(at.line, line);
                at.instructions += inlined.instructions[i];
                known.set(key, at);
            }),
        );
        this.inlined.push(...known.values());
    }

    fileOf(unit: number, file: number): SourceFile | null {
        return this.fileOfUnit[unit][file] ?? null;
    }

    // A line of a unit's file, as people read it.
    placeOf(unit: number, { file, line }: { file: number; line: number }): string {
        const name = this.fileOf(unit, file)?.name;
        return name === undefined ? "an unknown place" : `${visible(name)}:${line}`;
    }

    unit(number: number): Promise<Unit> {
        let unit = this.units.get(number);
        if (!unit) {
            unit = loadUnit(number, this.heads[number]);
            this.units.set(number, unit);
        }
        return unit;
    }

    // The page that shows a unit, where this one only lists it.
    pageOf(unit: number): string | null {
        return hasChunk(`${unit}/code`) || this.units.has(unit)
            ? null
            : (this.start?.pages[unit] ?? null);
    }

    // The file that a name in an address stands for: its name, its path or an end of it.
    // Of any unit, or of one.
    fileNamed(name: string, unit: number | null): SourceFile | null {
        const files =
            unit === null ? this.files : this.files.filter((file) => file.numberIn(unit) >= 0);
        return (
            files.find((file) => file.name === name || file.path === name) ??
            files.find((file) => file.path.endsWith("/" + name)) ??
            null
        );
    }

    functionNamed(name: string): CodeFunction | null {
        return this.bySymbol.get(name)?.[0] ?? named(this.functions, name);
    }

    inlinedNamed(name: string): InlinedFunction | null {
        return named(this.inlined, name);
    }
}

// A source may be compiled more than once: "util.c", "util.c (2)".
function unitNames(heads: UnitHead[]): string[] {
    const seen = new Map<string, number>();
    return heads.map(({ name }) => {
        const nth = (seen.get(name) ?? 0) + 1;
        seen.set(name, nth);
        return nth === 1 ? name : `${name} (${nth})`;
    });
}

// The arguments of a compile that not all of the same source have.
function ownWords(head: UnitHead, heads: UnitHead[]): string {
    const others = heads.filter((other) => other !== head && other.name === head.name);
    return head.command
        .filter((word) => others.some((other) => !other.command.includes(word)))
        .join(" ");
}

function named<T extends { name: string }>(functions: T[], name: string): T | null {
    return (
        functions.find((f) => f.name === name) ??
        functions.find((f) => f.name.startsWith(name + "(")) ??
        null
    );
}

export function compare(a: string, b: string): number {
    return a < b ? -1 : a > b ? 1 : 0;
}

// Gives each file the shortest end of its path that is its alone. Files of one path but
// different texts share a name.
function nameFiles(files: SourceFile[]): void {
    let open = files;
    for (let parts = 1; open.length > 0; ++parts) {
        const taken = new Map<string, Set<string>>();
        for (const file of open) {
            file.name = file.path.split("/").slice(-parts).join("/") || file.path;
            const paths = taken.get(file.name) ?? new Set();
            taken.set(file.name, paths.add(file.path));
        }
        open = open.filter((file) => taken.get(file.name)!.size > 1 && file.name !== file.path);
    }
}

export async function loadProject(): Promise<Project> {
    const heads: Promise<UnitHead>[] = [];
    for (const name of chunkNames()) {
        const unit = /^(\d+)\/unit$/.exec(name);
        if (unit) {
            heads[Number(unit[1])] = takeJson<UnitHead>(name);
        }
    }
    const start = hasChunk("start") ? await takeJson<StartHead>("start") : null;
    return new Project(await Promise.all(heads), start);
}
