// Makes pages for the tests from a description of their code: the same file that clist
// writes, in a folder that goes with the test run.

import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { pathToFileURL } from "node:url";
import { gzipSync } from "node:zlib";
import type { FileHead, StartHead, UnitHead, UnitRows } from "../src/data/format.ts";

declare const PAGE_ROOT: string;

// A place in a source: function, file, line; no file and line 0 where nobody knows.
export type Place = [string, string, number];

// A row of a function: its text, and where it comes from, the innermost place first.
export type MadeRow = [text: string, ...chain: Place[]];

export interface MadeFunction {
    name: string;
    symbol?: string; // the name if left out
    tail?: string; // behind its label in the assembly
    rows: MadeRow[]; // behind the label; those without a tab in front are labels
}

export interface MadeUnit {
    name: string;
    command?: string[];
    sources: Record<string, string | null>; // by path; null: not found
    system?: string[]; // paths of system headers
    functions: MadeFunction[];
    hidden?: string[]; // lines of the assembly that stand in front of each function
    comment?: string;
}

export interface Chunks {
    [name: string]: string | Uint8Array;
}

const folder = mkdtempSync(join(tmpdir(), "clist-page-"));
process.on("exit", () => rmSync(folder, { recursive: true, force: true }));

class Index {
    readonly names: string[] = [];
    private readonly numbers = new Map<string, number>();

    of(name: string): number {
        let number = this.numbers.get(name);
        if (number === undefined) {
            number = this.names.push(name) - 1;
            this.numbers.set(name, number);
        }
        return number;
    }
}

const differences = (values: number[]): number[] => values.map((v, i) => v - (values[i - 1] ?? 0));

const linesIn = (text: string): number => text.split("\n").length - (text.endsWith("\n") ? 1 : 0);

export function chunksOf(unit: MadeUnit, number = 0): Chunks {
    const files = new Index();
    const names = new Index();
    const frames = new Index(); // by "function file line parent"
    const code: string[] = [];
    const hidden: string[] = [];
    const assemblyLine: number[] = [];
    const frameOfRow: number[] = [];
    const tails: { row: number; text: string }[] = [];
    let kinds = "";
    let line = 0;
    Object.keys(unit.sources).forEach((path) => files.of(path));

    const add = (text: string, kind: string, frame: number, inAssembly = true): void => {
        code.push(text);
        kinds += kind;
        frameOfRow.push(frame);
        assemblyLine.push(inAssembly ? ++line : line);
    };
    const frameOf = (chain: Place[]): number =>
        chain.reduceRight(
            (parent, [f, file, at]) =>
                frames.of(`${names.of(f)} ${file === "" ? -1 : files.of(file)} ${at} ${parent}`),
            -1,
        );

    const functions: UnitHead["functions"] = {
        name: [], symbol: [], file: [], line: [], row: [], rows: [], instructions: [], inlined: [],
    }; // prettier-ignore
    for (const f of unit.functions) {
        if (code.length > 0) {
            add("", "b", -1, false);
        }
        for (const text of unit.hidden ?? []) {
            hidden.push(text);
            ++line;
        }
        const first = code.length;
        if (f.tail !== undefined) {
            tails.push({ row: first, text: f.tail });
        }
        add(`${f.name}:`, "f", -1);
        for (const [text, ...chain] of f.rows) {
            add(text, text.startsWith("\t") ? "i" : "l", frameOf(chain));
        }
        const outermost = f.rows.find((row) => row.length > 1)?.at(-1) as Place | undefined;
        functions.name.push(f.name);
        functions.symbol.push(f.symbol ?? f.name);
        functions.file.push(outermost ? files.of(outermost[1]) : -1);
        functions.line.push(outermost ? outermost[2] : 0);
        functions.row.push(first);
        functions.rows.push(code.length - first);
        functions.instructions.push(f.rows.filter(([text]) => text.startsWith("\t")).length);
        functions.inlined.push(f.rows.filter((row) => row.length > 2).length);
    }

    const frame = frames.names.map((name) => name.split(" ").map(Number));
    const heat = files.names.map(() => new Map<number, number>());
    frameOfRow.forEach((at, row) => {
        if (at >= 0 && kinds[row] === "i") {
            const [, file, of] = frame[at];
            heat[file].set(of, (heat[file].get(of) ?? 0) + 1);
        }
    });
    const chunks: Chunks = {};
    const fileHeads = files.names.map((path, i): FileHead => {
        const text = unit.sources[path] ?? null;
        const lines = [...heat[i].keys()].sort((a, b) => a - b);
        const name = `text/${Buffer.from(`${path}\n${text}`).toString("hex").slice(-64)}`;
        if (text !== null) {
            chunks[name] = text;
        }
        return {
            path,
            text: text === null ? null : name,
            lines: text === null ? (lines.at(-1) ?? 0) : linesIn(text),
            system: unit.system?.includes(path) ?? false,
            heat_line: differences(lines),
            heat_count: lines.map((at) => heat[i].get(at)!),
        };
    });

    // Functions whose frames all stand below others.
    const standing = new Set(frame.filter((at) => at[3] < 0).map((at) => at[0]));
    const inlined = names.names.flatMap((name, f) => {
        const own = frame.filter((at) => at[0] === f && at[1] >= 0);
        const within = (at: number): boolean =>
            at >= 0 && (frame[at][0] === f || within(frame[at][3]));
        return own.length === 0 || standing.has(f)
            ? []
            : [
                  {
                      name,
                      file: own[0][1],
                      line: Math.min(...own.map((at) => at[2])),
                      instructions: frameOfRow.filter((at, i) => kinds[i] === "i" && within(at))
                          .length,
                  },
              ];
    });

    const runs: { rows: number; frame: number }[] = [];
    for (const at of frameOfRow) {
        if (runs.at(-1)?.frame === at) {
            ++runs.at(-1)!.rows;
        } else {
            runs.push({ rows: 1, frame: at });
        }
    }
    const head: UnitHead = {
        format: 1,
        name: unit.name,
        command: unit.command ?? ["gcc", "-O2", "-c", unit.name],
        compiler: "GCC: (Debian 12.2.0-14+deb12u1) 12.2.0",
        target: "x86_64-linux-gnu",
        comment: unit.comment ?? "#",
        program: "clist 1.2.3",
        made: "2026-05-04T10:20:00Z",
        rows: code.length,
        instructions: functions.instructions.reduce((a, b) => a + b, 0),
        files: fileHeads,
        functions,
        inlined: {
            name: inlined.map((f) => f.name),
            file: inlined.map((f) => f.file),
            line: inlined.map((f) => f.line),
            instructions: inlined.map((f) => f.instructions),
        },
    };
    const rows: UnitRows = {
        kinds,
        names: names.names,
        frame_function: frame.map((f) => f[0]),
        frame_file: frame.map((f) => f[1]),
        frame_line: frame.map((f) => f[2]),
        frame_parent: frame.map((f) => f[3]),
        run_rows: runs.map((run) => run.rows),
        run_frame: runs.map((run) => run.frame),
        tail_row: tails.map((tail) => tail.row),
        tail: tails.map((tail) => tail.text),
        assembly_line: differences(assemblyLine),
    };
    chunks[`${number}/unit`] = JSON.stringify(head);
    chunks[`${number}/rows`] = JSON.stringify(rows);
    chunks[`${number}/code`] = code.join("\n");
    chunks[`${number}/hidden`] = hidden.map((text) => text + "\n").join("");
    return chunks;
}

let pages = 0;

// Writes a page and gives its address.
export function writePage(chunks: Chunks, name = `page${++pages}.html`): string {
    const data = Object.entries(chunks)
        .map(
            ([chunk, content]) =>
                `<script type="application/gzip" data-chunk="${chunk}">${gzipSync(content).toString("base64")}</script>\n`,
        )
        .join("");
    const path = join(folder, name);
    const page = readFileSync(join(PAGE_ROOT, "dist/page.html"), "utf8");
    writeFileSync(
        path,
        page.replace("@DATA@\n", () => data),
    );
    return pathToFileURL(path).href;
}

export function pageOf(...units: MadeUnit[]): string {
    return writePage(Object.assign({}, ...units.map((unit, i) => chunksOf(unit, i))) as Chunks);
}

// A project whose units have pages of their own: the start page's address.
export function startPageOf(title: string, units: MadeUnit[]): string {
    const set = ++pages;
    const names = units.map((_, i) => `unit${set}-${i}.html`);
    units.forEach((unit, i) => writePage(chunksOf(unit), names[i]));
    const start: StartHead = { title, pages: names };
    const heads = units.map((unit, i): [string, string] => [
        `${i}/unit`,
        chunksOf(unit, i)[`${i}/unit`] as string,
    ]);
    return writePage({ start: JSON.stringify(start), ...Object.fromEntries(heads) });
}
