// Makes pages with clist itself, of sources that real compilers compile, in a folder that
// goes with the test run. The program is the release build's, or what CLIST says.

import assert from "node:assert/strict";
import { type SpawnSyncReturns, spawnSync } from "node:child_process";
import { existsSync, mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { dirname, join, resolve } from "node:path";
import { pathToFileURL } from "node:url";

declare const PAGE_ROOT: string;

export const root = dirname(PAGE_ROOT.replace(/\/$/, ""));
export const clist = process.env["CLIST"] ?? join(root, "build/release/bin/clist");

const folder = mkdtempSync(join(tmpdir(), "clist-written-"));
process.on("exit", () => rmSync(folder, { recursive: true, force: true }));
let folders = 0;

// A new folder with these files in it.
export function folderOf(files: Record<string, string>): string {
    const path = join(folder, `demo${++folders}`);
    mkdirSync(path);
    for (const [name, text] of Object.entries(files)) {
        mkdirSync(dirname(join(path, name)), { recursive: true });
        writeFileSync(join(path, name), text);
    }
    return path;
}

export function run(where: string, program: string, ...words: string[]): SpawnSyncReturns<string> {
    return spawnSync(program, words, { cwd: where, encoding: "utf8", maxBuffer: 1 << 28 });
}

// What a program prints that must succeed and must have nothing to complain about.
export function outputOf(where: string, program: string, ...words: string[]): string {
    const ran = run(where, program, ...words);
    assert.equal(ran.error, undefined);
    assert.equal(ran.stderr, "");
    assert.equal(ran.status, 0);
    return ran.stdout;
}

// Runs clist in a folder, which must be silent, and gives the address of the page there.
export function written(where: string, page: string, ...words: string[]): string {
    assert.ok(existsSync(clist), `${clist} is not built`);
    assert.equal(outputOf(where, clist, ...words), "");
    return address(where, page);
}

export const address = (where: string, page: string): string =>
    pathToFileURL(resolve(where, page)).href;

// What an assembly text itself says of its code, told by directives alone.
export interface Line {
    symbol: string; // of the function
    text: string; // as it stands
    file: string; // "" where it has no line
    line: number;
}

// The instructions of all functions, in order.
export function instructionsOf(assembly: string): Line[] {
    const files = new Map<string, string>();
    const functions = new Set<string>();
    const found: Line[] = [];
    let symbol = "";
    let place = { file: "", line: 0 };
    for (const text of assembly.split("\n")) {
        const file = /^\t\.file (\d+) (?:"[^"]*" )?"([^"]*)"/.exec(text);
        const loc = /^\t\.loc (\d+) (\d+)/.exec(text);
        const type = /^\t\.type\t(.+), @function$/.exec(text);
        const label = /^([^\s#.][^:]*):$/.exec(text);
        if (file) {
            files.set(file[1], file[2]);
        } else if (loc) {
            place = loc[2] === "0" ? { file: "", line: 0 } : { file: loc[1], line: +loc[2] };
        } else if (type) {
            functions.add(type[1]);
        } else if (label) {
            symbol = functions.has(label[1]) ? label[1] : "";
            place = { file: "", line: 0 };
        } else if (symbol !== "" && /^\t[a-z]/.test(text)) {
            found.push({ symbol, text, ...place });
        } else if (/^\t\.section\t\.debug_/.test(text)) {
            break;
        }
    }
    return found.map((it) => ({ ...it, file: files.get(it.file) ?? "" }));
}

export const textOf = (where: string, name: string): string =>
    readFileSync(join(where, name), "utf8");
