// What belongs together: for a line of a source or a row of the code, the rows and lines
// to mark on both sides, and the places that "next" and "previous" go through.

import type { InlinedFunction, Project, SourceFile } from "./project.ts";
import type { RowRange, Unit } from "./unit.ts";

export interface Link {
    origin: "source" | "code";
    unit: Unit;
    file: SourceFile | null; // null: the row has no line
    line: number;
    row: number; // the row pointed at, -1 from a source line
    frame: number; // its frame, -1 where there is none
    rows: RowRange[]; // code of the line
    inlinedRows: RowRange[]; // code that was inlined at the line
    inlinedFunctions: { name: string; file: SourceFile; line: number }[]; // whose code that is
    callSites: { file: SourceFile; line: number }[]; // lines where the line's code was inlined
    inlined: string | null; // the function, where the link is of all of its inlined code
    places: RowRange[]; // both kinds of rows, in order
    instructions: number; // in rows
    inlinedInstructions: number; // in inlinedRows
}

export function linkOfLine(project: Project, unit: Unit, file: SourceFile, line: number): Link {
    const number = file.numberIn(unit.number);
    const frames = number < 0 ? [] : [...unit.framesAt(number, line)];
    return makeLink(project, unit, "source", file, line, frames);
}

// Of a function's inlined code, wherever it was inlined.
export function linkOfInlined(project: Project, unit: Unit, f: InlinedFunction): Link {
    const { frame_function, frame_parent } = unit.rows;
    const name = unit.rows.names.indexOf(f.name);
    const frames = Array.from(frame_function.keys()).filter(
        (frame) => frame_function[frame] === name && frame_parent[frame] >= 0,
    );
    return { ...makeLink(project, unit, "source", f.file, f.line, frames), inlined: f.name };
}

export function linkOfRow(project: Project, unit: Unit, row: number): Link {
    const frame = unit.frameOfRow[row] ?? -1;
    if (frame < 0) {
        return { ...makeLink(project, unit, "code", null, 0, []), row };
    }
    const { file, line } = unit.frame(frame);
    const sourceFile = project.fileOf(unit.number, file);
    const frames = [...unit.framesAt(file, line)];
    return {
        ...makeLink(project, unit, "code", sourceFile, line, frames),
        row,
        frame,
        callSites: sites(project, unit, [frame]),
    };
}

function makeLink(
    project: Project,
    unit: Unit,
    origin: Link["origin"],
    file: SourceFile | null,
    line: number,
    frames: number[],
): Link {
    const rows = unit.rowsOf(frames);
    const inlinedRows = unit.rowsBelow(frames);
    return {
        origin,
        unit,
        file,
        line,
        row: -1,
        frame: -1,
        rows,
        inlinedRows,
        inlinedFunctions: inlined(project, unit, frames),
        callSites: sites(project, unit, frames),
        inlined: null,
        places: joined(unit, [...rows, ...inlinedRows]),
        instructions: instructions(unit, rows),
        inlinedInstructions: instructions(unit, inlinedRows),
    };
}

// The functions that were inlined at frames, each once, at its first line that has code.
function inlined(project: Project, unit: Unit, frames: number[]): Link["inlinedFunctions"] {
    const found = new Map<string, Link["inlinedFunctions"][number]>();
    for (const frame of frames) {
        for (const child of unit.childrenOf(frame)) {
            const { function: name, file, line } = unit.frame(child);
            const known = found.get(name);
            const sourceFile = project.fileOf(unit.number, file);
            if (sourceFile && (!known || line < known.line)) {
                found.set(name, { name, file: sourceFile, line });
            }
        }
    }
    return [...found.values()];
}

// The lines that frames were inlined at, each once.
function sites(project: Project, unit: Unit, frames: number[]): Link["callSites"] {
    const seen = new Set<number>();
    const found = new Map<string, Link["callSites"][number]>();
    for (const frame of frames) {
        let at = unit.rows.frame_parent[frame];
        while (at >= 0 && !seen.has(at)) {
            seen.add(at);
            const { file, line } = unit.frame(at);
            const sourceFile = project.fileOf(unit.number, file);
            if (sourceFile) {
                found.set(`${file}:${line}`, { file: sourceFile, line });
            }
            at = unit.rows.frame_parent[at];
        }
    }
    return [...found.values()];
}

function instructions(unit: Unit, ranges: RowRange[]): number {
    let sum = 0;
    for (const { start, end } of ranges) {
        for (let row = start; row < end; ++row) {
            sum += unit.instruction[row];
        }
    }
    return sum;
}

// Ranges in order; those with no other instruction between them are one place.
function joined(unit: Unit, ranges: RowRange[]): RowRange[] {
    const places: RowRange[] = [];
    for (const range of ranges.sort((a, b) => a.start - b.start)) {
        const last = places.at(-1);
        if (last && unit.instruction.subarray(last.end, range.start).every((is) => is === 0)) {
            last.end = Math.max(last.end, range.end);
        } else {
            places.push({ ...range });
        }
    }
    return places;
}
