// One compile: its code as rows, the frames that rows come from, and the indexes that
// answer "which rows does this line have" and "where was this line inlined".

import { Text } from "@codemirror/state";
import { linesOf, takeChunk, takeJson } from "./chunks.ts";
import { mostLines, type UnitHead, type UnitRows } from "./format.ts";

// Rows from `start` on, `end` not included.
export interface RowRange {
    start: number;
    end: number;
}

// One step of a chain of inlining: a place in `function`.
export interface Frame {
    function: string;
    file: number; // of the unit; -1 where the debugging data do not tell
    line: number;
}

// Lists of numbers, one a key, laid out one after the other.
class Lists {
    private readonly start: Int32Array;
    private readonly items: Int32Array;

    // `keyOf(i)` is the list that item i of `count` goes to, or -1.
    constructor(keys: number, count: number, keyOf: (item: number) => number) {
        this.start = new Int32Array(keys + 2);
        for (let i = 0; i < count; ++i) {
            const key = keyOf(i);
            if (key >= 0) {
                ++this.start[key + 2];
            }
        }
        for (let k = 2; k < this.start.length; ++k) {
            this.start[k] += this.start[k - 1];
        }
        this.items = new Int32Array(this.start[keys + 1]);
        for (let i = 0; i < count; ++i) {
            const key = keyOf(i);
            if (key >= 0) {
                this.items[this.start[key + 1]++] = i;
            }
        }
    }

    of(key: number): Int32Array {
        return this.items.subarray(this.start[key], this.start[key + 1]);
    }
}

export class Unit {
    readonly instruction: Uint8Array; // 1 where a row is an instruction
    readonly frameOfRow: Int32Array; // -1 where a row has no line
    readonly functionOfRow: Int32Array; // index into head.functions, -1 between functions
    readonly depth: Uint16Array; // of a frame: how often inlined
    readonly instructionsOfFrame: Int32Array; // of the frame itself
    private readonly runStart: Int32Array;
    private readonly runsOfFrame: Lists;
    private readonly children: Lists;
    private readonly lineBase: Int32Array; // of a file: where its lines begin in framesOfLine
    private readonly framesOfLine: Lists;

    constructor(
        readonly number: number,
        readonly head: UnitHead,
        readonly rows: UnitRows,
        readonly code: Text,
    ) {
        const count = head.rows;
        this.instruction = new Uint8Array(count);
        for (let row = 0; row < count; ++row) {
            this.instruction[row] = rows.kinds[row] === "i" ? 1 : 0;
        }

        const frames = rows.frame_line.length;
        this.frameOfRow = new Int32Array(count).fill(-1);
        this.instructionsOfFrame = new Int32Array(frames);
        this.runStart = new Int32Array(rows.run_rows.length + 1);
        for (let run = 0, row = 0; run < rows.run_rows.length; ++run) {
            const frame = rows.run_frame[run];
            for (const end = row + rows.run_rows[run]; row < end; ++row) {
                this.frameOfRow[row] = frame;
                if (frame >= 0) {
                    this.instructionsOfFrame[frame] += this.instruction[row];
                }
            }
            this.runStart[run + 1] = row;
        }

        this.functionOfRow = new Int32Array(count).fill(-1);
        const functions = head.functions;
        for (let f = 0; f < functions.row.length; ++f) {
            this.functionOfRow.fill(f, functions.row[f], functions.row[f] + functions.rows[f]);
        }

        this.depth = new Uint16Array(frames);
        for (let frame = 0; frame < frames; ++frame) {
            // A frame stands behind the one that it was inlined into.
            const parent = rows.frame_parent[frame];
            this.depth[frame] = parent < 0 ? 0 : this.depth[parent] + 1;
        }

        this.runsOfFrame = new Lists(frames, rows.run_frame.length, (run) => rows.run_frame[run]);
        this.children = new Lists(frames, frames, (frame) => rows.frame_parent[frame]);

        this.lineBase = new Int32Array(head.files.length + 1);
        head.files.forEach((file, i) => {
            this.lineBase[i + 1] = this.lineBase[i] + Math.min(file.lines, mostLines) + 1;
        });
        this.framesOfLine = new Lists(this.lineBase[head.files.length], frames, (frame) =>
            this.keyOf(rows.frame_file[frame], rows.frame_line[frame]),
        );
    }

    // Where a line's frames are listed; -1 for a line behind the end of its file.
    private keyOf(file: number, line: number): number {
        const key = file < 0 ? -1 : this.lineBase[file] + line;
        return key < this.lineBase[file + 1] ? key : -1;
    }

    frame(frame: number): Frame {
        return {
            function: this.rows.names[this.rows.frame_function[frame]],
            file: this.rows.frame_file[frame],
            line: this.rows.frame_line[frame],
        };
    }

    // The frames from the innermost to the function itself.
    chain(frame: number): Frame[] {
        const frames = [];
        for (let at = frame; at >= 0; at = this.rows.frame_parent[at]) {
            frames.push(this.frame(at));
        }
        return frames;
    }

    // The frame of the function itself that a frame was inlined into.
    outermost(frame: number): number {
        let at = frame;
        while (this.rows.frame_parent[at] >= 0) {
            at = this.rows.frame_parent[at];
        }
        return at;
    }

    // Every frame that is at this line.
    framesAt(file: number, line: number): Int32Array {
        const key = this.keyOf(file, line);
        return key < 0 ? new Int32Array(0) : this.framesOfLine.of(key);
    }

    childrenOf(frame: number): Int32Array {
        return this.children.of(frame);
    }

    // The instructions that were inlined at a frame's line, at any depth.
    instructionsBelow(frame: number): number {
        let sum = 0;
        for (const child of this.children.of(frame)) {
            sum += this.instructionsOfFrame[child] + this.instructionsBelow(child);
        }
        return sum;
    }

    // The rows of frames, in order, neighbours joined.
    rowsOf(frames: Iterable<number>): RowRange[] {
        const runs: number[] = [];
        for (const frame of frames) {
            for (const run of this.runsOfFrame.of(frame)) {
                runs.push(run);
            }
        }
        runs.sort((a, b) => a - b);
        const ranges: RowRange[] = [];
        for (const run of runs) {
            const last = ranges.at(-1);
            if (last?.end === this.runStart[run]) {
                last.end = this.runStart[run + 1];
            } else {
                ranges.push({ start: this.runStart[run], end: this.runStart[run + 1] });
            }
        }
        return ranges;
    }

    // The rows that were inlined at the lines of frames.
    rowsBelow(frames: Iterable<number>): RowRange[] {
        const below: number[] = [];
        const add = (frame: number): void => {
            for (const child of this.children.of(frame)) {
                below.push(child);
                add(child);
            }
        };
        for (const frame of frames) {
            add(frame);
        }
        return this.rowsOf(new Set(below));
    }
}

export async function loadUnit(number: number, head: UnitHead): Promise<Unit> {
    const [rows, code] = await Promise.all([
        takeJson<UnitRows>(`${number}/rows`),
        takeChunk(`${number}/code`),
    ]);
    return new Unit(number, head, rows, Text.of(linesOf(code)));
}
