// Whether the line that the page marks for an instruction is the one that the object's own
// line table has for it, on real programs: random instructions of each, as many as
// INSTRUCTIONS says. SOURCE names another program, and
// FLAGS how it is compiled ("gcc -O1" if not given).

import assert from "node:assert/strict";
import { join, resolve } from "node:path";
import { test } from "node:test";
import { gunzipSync } from "node:zlib";
import type { Page } from "playwright-core";
import type { UnitHead, UnitRows } from "../src/data/format.ts";
import { eventually, useBrowser, withPage } from "./browser.ts";
import { folderOf, outputOf, root, textOf, written } from "./written_page.ts";

useBrowser();

interface Place {
    file: string; // its last part
    line: number; // 0: none
}

// The rows of the line table by address; of several at one address the last holds, and the
// end of a stretch of code only where nothing follows.
function lineTable(listing: string): (address: number) => Place {
    const rows = new Map<number, Place>();
    for (const row of listing.split("\n")) {
        const match = /^(\S+)\s+(\d+|-)\s+0x([0-9a-f]+)/.exec(row);
        const at = match ? parseInt(match[3], 16) : 0;
        if (match && match[2] !== "-") {
            rows.set(at, { file: match[1], line: Number(match[2]) });
        } else if (match && !rows.has(at)) {
            rows.set(at, { file: "", line: 0 });
        }
    }
    const addresses = [...rows.keys()].sort((a, b) => a - b);
    return (address) => {
        let low = 0;
        let high = addresses.length;
        while (low < high) {
            const middle = (low + high) >> 1;
            [low, high] = addresses[middle] <= address ? [middle + 1, high] : [low, middle];
        }
        return rows.get(addresses[low - 1]) ?? { file: "", line: 0 };
    };
}

// By symbol, the addresses of a function's instructions, in order.
function addressesOf(disassembly: string): Map<string, number[]> {
    const functions = new Map<string, number[]>();
    let current: number[] = [];
    for (const row of disassembly.split("\n")) {
        const head = /^[0-9a-f]+ <(.+)>:$/.exec(row);
        const instruction = /^\s+([0-9a-f]+):\t(\S.*)$/.exec(row);
        if (head) {
            functions.set(head[1], (current = []));
        } else if (instruction) {
            current.push(parseInt(instruction[1], 16));
        }
    }
    return functions;
}

// What the page has packed under a name.
function unpacked<T>(page: string, name: string): T {
    const begin = page.indexOf('">', page.indexOf(`data-chunk="${name}"`)) + 2;
    const packed = Buffer.from(page.slice(begin, page.indexOf("<", begin)), "base64");
    return JSON.parse(gunzipSync(packed).toString()) as T;
}

// Every instruction of the page's functions, as the address that shows it, and which of its
// function's it is.
function instructionsOf(page: string): { symbol: string; row: number; index: number }[] {
    const { functions } = unpacked<UnitHead>(page, "0/unit");
    const { kinds } = unpacked<UnitRows>(page, "0/rows");
    return functions.symbol.flatMap((symbol, f) => {
        let index = 0;
        return [...kinds.slice(functions.row[f], functions.row[f] + functions.rows[f])].flatMap(
            (kind, row) => (kind === "i" ? [{ symbol, row, index: index++ }] : []),
        );
    });
}

// The file that is shown and the number beside the one line that is marked in it.
const markedPlace = (page: Page, hash: string): Promise<Place> =>
    page.evaluate(async (to) => {
        const drawn = (): Promise<void> =>
            new Promise((done) => requestAnimationFrame(() => setTimeout(done)));
        location.hash = to;
        await drawn();
        await drawn();
        const linked = [...document.querySelectorAll("#source .cm-line.linked")];
        if (linked.length !== 1) {
            return { file: "", line: 0 };
        }
        const { top } = linked[0].getBoundingClientRect();
        const numbers = document.querySelectorAll<HTMLElement>(
            "#source .cm-lineNumbers .cm-gutterElement",
        );
        const number = [...numbers].find(
            (e) => e.offsetHeight > 0 && Math.abs(e.getBoundingClientRect().top - top) < 3,
        );
        return {
            file: document
                .querySelector("#source .pane-head .name")!
                .textContent.split("/")
                .at(-1)!,
            line: Number(number?.textContent ?? 0),
        };
    }, hash);

// Numbers that repeat from run to run.
function randomNumbers(): (below: number) => number {
    let seed = 12345;
    return (below) => {
        seed = (Math.imul(seed, 1103515245) + 12345) >>> 0;
        return (seed >>> 8) % below;
    };
}

const other = process.env["SOURCE"];
const programs: [source: string, flags: string[]][] = other
    ? [[other, process.env["FLAGS"]?.split(" ") ?? ["gcc", "-O1"]]]
    : [
          ["examples/matrix.c", ["gcc", "-O3"]],
          ["gas2interlist/options.cpp", ["g++", "-std=c++20", "-O2"]],
      ];
const sample = Number(process.env["INSTRUCTIONS"] ?? 50);

for (const [program, [compiler, ...flags]] of programs) {
    test(`marked lines of ${program} are those of the line table`, async () => {
        const where = folderOf({});
        const source = resolve(root, program);
        // Linked, so that addresses are told apart, and without the padding in the middle
        // of code that assemblers make instructions of.
        const words = [...flags, `-I${root}`, "-fPIC", "-fno-align-loops", "-fno-align-jumps"];
        words.push("-fno-align-labels", source);
        outputOf(root, compiler, "-g", "-shared", "-o", join(where, "linked"), ...words);
        const page = written(
            root, join(where, "page.html"), "--html", "-o", join(where, "page.html"),
            compiler, ...words, "-c",
        ); // prettier-ignore
        const lineOf = lineTable(outputOf(where, "objdump", "-w", "--dwarf=decodedline", "linked"));
        const addresses = addressesOf(
            outputOf(where, "objdump", "-d", "--no-show-raw-insn", "linked"),
        );
        // Of names for one function, objdump tells one.
        const each = instructionsOf(textOf(where, "page.html"));
        const all = each.filter(({ symbol }) => addresses.has(symbol));
        assert.ok(all.length > 0.8 * each.length);
        const random = randomNumbers();
        await withPage(page, async (shown) => {
            for (let i = 0; i < sample; ++i) {
                const { symbol, row, index } = all[random(all.length)];
                const expected = lineOf(addresses.get(symbol)![index]);
                await eventually(
                    () => markedPlace(shown, `${encodeURIComponent(symbol)}+${row}`),
                    expected.line === 0 ? { file: "", line: 0 } : expected,
                    `${symbol}, instruction ${index}`,
                );
            }
        });
    });
}
