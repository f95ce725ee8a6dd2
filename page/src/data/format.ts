// The data of a page as clist writes it; README.md tells what each part means. The
// only place that knows the names; what is read here is checked nowhere else.

// Columns of one length, one entry a function, in the order of the code.
export interface FunctionColumns {
    name: string[]; // readable
    symbol: string[]; // as the assembler knows it
    file: number[]; // index into UnitHead.files, -1 where unknown
    line: number[]; // of the function's first code, 0 where unknown
    row: number[]; // its first row
    rows: number[];
    instructions: number[];
    inlined: number[]; // how many of these were inlined
}

// Columns of functions that stand nowhere by themselves: all of their code was inlined.
export interface InlinedColumns {
    name: string[]; // readable
    file: number[]; // index into UnitHead.files
    line: number[]; // the first that code comes from
    instructions: number[]; // in all places, with what was inlined in them
}

export interface FileHead {
    path: string; // as the compiler recorded it
    text: string | null; // the chunk with its text
    lines: number;
    system: boolean; // a header or library of the system
    heat_line: number[]; // lines with instructions, each less the one before
    heat_count: number[]; // how many instructions each has
}

// Chunk N/unit: what one compile gave, without its code.
export interface UnitHead {
    format: 1;
    name: string;
    command: string[];
    compiler: string;
    target: string;
    comment: string;
    program: string;
    made: string;
    rows: number;
    instructions: number;
    files: FileHead[];
    functions: FunctionColumns;
    inlined?: InlinedColumns; // pages of earlier versions, which may be joined, have none
}

// Chunk N/rows: what each row of chunk N/code is and where it comes from.
export interface UnitRows {
    kinds: string; // a letter a row, see RowKind
    names: string[]; // of the functions that frames name
    frame_function: number[]; // index into names
    frame_file: number[]; // index into UnitHead.files
    frame_line: number[];
    frame_parent: number[]; // the frame that this one was inlined into, -1 at the outermost
    run_rows: number[]; // rows in a row that share a frame
    run_frame: number[]; // that frame, -1 where the code has no line
    tail_row: number[]; // rows of labels with more on their line than the row shows,
    tail: string[]; // and what that is
    assembly_line: number[]; // line in the compiler's assembly, each less the one before; a row
    // that stands in none repeats the one before
}

// f: a function's label; l: another label; i: an instruction; d: data or a directive;
// c: a comment; b: blank.
export type RowKind = "f" | "l" | "i" | "d" | "c" | "b";

// Chunk "start": only on the start page of a project whose units have a page each.
export interface StartHead {
    title: string;
    pages: string[]; // relative addresses, one a unit
}

// What claims more lines is shown up to here, and what lies behind it is not linked.
export const mostLines = 8_000_000;
