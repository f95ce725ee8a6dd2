// Pages that clist writes, in the browser: from a compile, from assembly at hand, beside an
// object, of a whole project. What the page shows is compared with the assembly that the
// compiler gives by itself.

import assert from "node:assert/strict";
import { randomBytes } from "node:crypto";
import { readdirSync, statSync } from "node:fs";
import { join } from "node:path";
import { test } from "node:test";
import type { Page } from "playwright-core";
import { seriousFaults } from "./axe.ts";
import {
    code,
    eventually,
    line,
    marked,
    printed,
    ready,
    source,
    useBrowser,
    withPage,
} from "./browser.ts";
import {
    address,
    clist,
    folderOf,
    instructionsOf,
    type Line,
    outputOf,
    run,
    textOf,
    written,
} from "./written_page.ts";

useBrowser();

const clampHeader = `#pragma once
static inline int clamp(int x)
{
    return x < 100 ? x : 100;
}
`;
const sumSource = `#include "clamp.h"

int sum(const int *a, int n)
{
    int total = 0;
    for (int i = 0; i < n; i++)
        total += clamp(a[i] * 3);
    return total;
}

int twice(int x)
{
    return clamp(x) + clamp(x + 1);
}
`;
const where = folderOf({ "clamp.h": clampHeader, "sum.c": sumSource });
const compile = ["gcc", "-O2", "-c", "sum.c"];
const sumPage = written(where, "sum.html", "--html", "-o", "sum.html", ...compile);
outputOf(where, "gcc", "-O2", "-g", "-S", "sum.c", "-o", "sum.s");
const instructions = instructionsOf(textOf(where, "sum.s"));

const squeezed = (text: string): string => text.replace(/\s+/g, " ").trim();
const isOf =
    (file: string, number: number) =>
    (it: Line): boolean =>
        it.file === file && it.line === number;

const told = (page: Page): Promise<string> => page.locator("#status").innerText().then(squeezed);

test("a compile's page: its files, its functions, its code, and how it was made", () =>
    withPage(sumPage, async (page) => {
        assert.equal(await page.title(), "sum.c \u2013 clist");
        assert.equal(await page.locator("#made").innerText(), "gcc -O2 -c sum.c");
        const files = ["clamp.h", "sum.c"].map((name) => ({
            name,
            count: instructions.filter((it) => it.file === name).length,
        }));
        files.sort((a, b) => b.count - a.count);
        assert.deepEqual(
            await page.locator("#files li").allInnerTexts(),
            files.map(({ name, count }) => `${name}\n${count}`),
        );
        // The code is the compiler's, in its order.
        const shown = await code(page)
            .locator(".cm-line")
            .evaluateAll((all) =>
                all.map((e) => {
                    const row = e.cloneNode(true) as HTMLElement;
                    row.querySelectorAll(".inlined-note").forEach((note) => note.remove());
                    return row.textContent;
                }),
            );
        assert.deepEqual(
            shown.filter((text) => text.startsWith("\t")).map(squeezed),
            instructions.map((it) => squeezed(it.text)),
        );
        assert.deepEqual(
            shown.filter((text) => /^[a-z]/.test(text)),
            ["sum:", "twice:"],
        );
    }));

for (const [file, number] of [
    ["sum.c", 6],
    ["sum.c", 13],
    ["clamp.h", 4],
] as [string, number][]) {
    test(`what is marked for ${file}:${number} is what the compiler says of it`, () =>
        withPage(
            sumPage,
            async (page) => {
                const own = instructions.filter(isOf(file, number));
                assert.ok(own.length > 1);
                await eventually(
                    async () =>
                        (await code(page).locator(".cm-line.linked").allInnerTexts())
                            .map((text) => squeezed(text.split("\u21b3")[0]))
                            .filter((text) => !text.endsWith(":")),
                    own.map((it) => squeezed(it.text)),
                );
                assert.match(await told(page), new RegExp(`${file}:${number} ${own.length} instr`));
            },
            { hash: `#${file}:${number}` },
        ));
}

test("pointing at an instruction marks its line, for each of them", () =>
    withPage(sumPage, async (page) => {
        const rows = code(page).locator(".cm-line");
        const count = await rows.count();
        let next = 0;
        for (let i = 0; i < count; ++i) {
            if (!(await rows.nth(i).textContent())!.startsWith("\t")) {
                continue;
            }
            const { file, line: number } = instructions[next++];
            await rows.nth(i).hover({ position: { x: 90, y: 5 } });
            await eventually(
                async () => new RegExp(`${file}:${number}\\b`).test(await told(page)),
                true,
            );
            if (file === "sum.c") {
                await eventually(
                    () => marked(source(page), "linked"),
                    [squeezed(sumSource.split("\n")[number - 1])],
                );
            }
        }
        assert.equal(next, instructions.length);
    }));

for (const file of ["sum.c", "clamp.h"]) {
    test(`the heat of ${file} is what the compiler's assembly counts`, () =>
        withPage(
            sumPage,
            async (page) => {
                const counts = new Map<number, number>();
                for (const it of instructions.filter((any) => any.file === file)) {
                    counts.set(it.line, (counts.get(it.line) ?? 0) + 1);
                }
                const expected = [...counts].sort(([a], [b]) => a - b).map(([, n]) => String(n));
                const cells = source(page).locator("[data-instructions]");
                await eventually(
                    () =>
                        cells.evaluateAll((all) =>
                            all.map((e) => (e as HTMLElement).dataset["instructions"]),
                        ),
                    expected,
                );
                await cells.first().hover();
                await eventually(
                    () => page.locator("#tip").innerText(),
                    `${expected[0]} instruction${expected[0] === "1" ? "" : "s"}`,
                );
            },
            { hash: `#${file}:1` },
        ));
}

test("inlined code says where from and where to, in both directions", () =>
    withPage(sumPage, async (page) => {
        const notes = (await code(page).locator(".inlined-note").allInnerTexts()).map(squeezed);
        assert.ok(notes.includes("\u21b3 clamp inlined at sum.c:7"), String(notes));
        assert.ok(notes.includes("\u21b3 clamp inlined at sum.c:13"), String(notes));
        await line(code(page), "clamp inlined at sum.c:7").hover({ position: { x: 90, y: 5 } });
        await eventually(
            async () => /clamp clamp\.h:4 inlined into sum sum\.c:7/.test(await told(page)),
            true,
        );
        await line(source(page), "total += clamp").hover();
        await eventually(async () => /inlined here.* inlines clamp/.test(await told(page)), true);
        await page.evaluate(() => (location.hash = "#clamp.h:4"));
        await eventually(async () => /inlined at.* sum\.c:7/.test(await told(page)), true);
        // By its name alone, though it stands nowhere by itself.
        await page.evaluate(() => (location.hash = "#clamp"));
        await eventually(async () => /clamp clamp\.h:4 /.test(await told(page)), true);
        await eventually(() => marked(source(page), "linked"), ["return x < 100 ? x : 100;"]);
        assert.match(await told(page), /inlined at.* sum\.c:13/);
    }));

test("printed is the function on the screen, and nothing else", () =>
    withPage(
        sumPage,
        async (page) => {
            const own = instructions.filter((it) => it.symbol === "twice");
            const clamp = "clamp.h:4(inlinedatsum.c:13)|returnx<100?x:100;";
            await eventually(async () => (await printed(page)).includes(clamp), true);
            const text = await printed(page);
            assert.ok(text.startsWith(`twice${own.length}instructions,`), text);
            assert.ok(text.includes("gcc-O2-csum.c"));
            // Its instructions, all and in their order; of the other function none.
            const [, code] = text.split("twice:");
            const rest = own.reduce((left, it) => {
                const at = left.indexOf(it.text.replace(/\s/g, ""));
                assert.ok(at >= 0, it.text);
                return left.slice(at + 1);
            }, code);
            assert.ok(!rest.includes("sum:") && !text.includes("total"), text);
        },
        { hash: "#twice" },
    ));

test("assembly at hand and standard input give the same code", async () => {
    const rows = async (page: Page): Promise<string[]> =>
        code(page).locator(".cm-line").allInnerTexts();
    let expected: string[] = [];
    await withPage(sumPage, async (page) => {
        expected = await rows(page);
    });
    const fromFile = written(where, "file.html", "--html", "-o", "file.html", "sum.s");
    await withPage(fromFile, async (page) => {
        assert.equal(await page.title(), "sum.s \u2013 clist");
        assert.deepEqual(await rows(page), expected);
    });
    outputOf(where, "sh", "-c", `'${clist}' --html - <sum.s >input.html`);
    await withPage(address(where, "input.html"), async (page) => {
        assert.equal(await page.title(), "standard input \u2013 clist");
        assert.deepEqual(await rows(page), expected);
    });
});

test("the switch shows the compiler's assembly, all of it", () =>
    withPage(
        written(where, "file.html", "--html", "-o", "file.html", "sum.s"),
        async (page) => {
            await page.keyboard.press("a");
            const lines = textOf(where, "sum.s").trimEnd().split("\n");
            const all = code(page).locator(".cm-line:not(:has(.inlined-note))");
            await eventually(() => all.first().textContent(), lines[0]);
            for (const text of ["\t.cfi_startproc", "\t.p2align 4"]) {
                assert.ok(
                    (await code(page).locator(".hidden-line", { hasText: text }).count()) > 0,
                );
            }
            await page.keyboard.press("c");
            await page.keyboard.press("Control+End");
            await eventually(
                () => code(page).locator(".cm-activeLine").first().textContent(),
                lines.at(-1)!,
            );
        },
        { viewport: { width: 1280, height: 800 } },
    ));

test("C++: names as people read them, found by letters and by address", () => {
    const folder = folderOf({
        "box.cpp": `#include <vector>
namespace shop {
template <typename T> struct box {
    std::vector<T> all;
    T sum() const;
};
template <typename T> T box<T>::sum() const
{
    T total{};
    for (const T &it : all)
        total += it;
    return total;
}
template struct box<int>;
}
int open(const shop::box<int> &b) { return b.sum() + 1; }
`,
    });
    const page = written(
        folder, "box.html", "--html", "-o", "box.html", "g++", "-O1", "-std=c++20", "-c", "box.cpp",
    ); // prettier-ignore
    return withPage(
        page,
        async (page) => {
            await eventually(
                () => code(page).locator(".cm-activeLine").first().innerText(),
                "shop::box<int>::sum() const:",
            );
            // Code of the library, called so.
            assert.ok(
                (await page.locator("#files .system .file-name").allInnerTexts()).some((name) =>
                    /stl_vector\.h|stl_iterator\.h/.test(name),
                ),
            );
            await page.keyboard.press("f");
            await page.keyboard.type("open");
            await page.keyboard.press("Enter");
            await eventually(
                () => code(page).locator(".cm-activeLine").first().innerText(),
                "open(const shop::box<int> &):",
            );
            await eventually(() => page.evaluate(() => location.hash), "#_Z4openRKN4shop3boxIiEE");
            assert.doesNotMatch((await code(page).innerText()).replace(/\n/g, " "), /_ZN/);
        },
        { hash: "#shop::box<int>::sum() const" },
    );
});

test("what sources, symbols, names and arguments say is text", () => {
    const attack = `</script><img src=x onerror='document.title=1'>`;
    const name = `a "b" 'c' & \u202e<img src=x onerror=alert(1)>.c`;
    const folder = folderOf({
        [name]: `const char *text = "${attack}"; /* ${attack} --> */
int f(int x) __asm__("\\"f<img onerror=alert(2)>\\"");
int f(int x) { return x * 3; /* \u202e\u2066 ${attack} */ }
`,
    });
    const page = written(
        folder, "page.html", "--html", "-o", "page.html", "gcc", "-O1", "-Wno-bidi-chars", `-DX="${attack}"`, "-c", name,
    ); // prettier-ignore
    return withPage(page, async (page) => {
        assert.ok((await page.title()).startsWith(`a "b" 'c' & `));
        assert.doesNotMatch(await page.title(), /\u202e/);
        assert.ok((await source(page).locator(".cm-content").innerText()).includes(attack));
        assert.equal(
            await code(page).locator(".cm-line").first().innerText(),
            "f<img onerror=alert(2)>:",
        );
        assert.ok((await page.locator("#made").innerText()).includes("<img src=x onerror="));
        await line(code(page), "ret").click();
        await eventually(async () => (await marked(source(page), "linked")).length, 1);
        await page.keyboard.press("o");
        await page.getByRole("main", { name: "Overview" }).waitFor();
        // The editor has empty ones of its own.
        assert.equal(await page.locator("img:not(.cm-widgetBuffer)").count(), 0);
    });
});

test("beside an object that the launcher makes stands its page", () => {
    outputOf(where, clist, "--launcher", "--html", ...compile, "-o", "launched.o");
    outputOf(where, "gcc", ...compile.slice(1), "-o", "alone.o");
    assert.equal(run(where, "cmp", "launched.o", "alone.o").status, 0);
    return withPage(address(where, "launched.o.html"), async (page) => {
        assert.equal(await page.locator("#made").innerText(), "gcc -O2 -c sum.c -o launched.o");
        await line(code(page), "twice:").waitFor();
    });
});

const otherSource = `#include "clamp.h"

int limit(int x)
{
    return clamp(x) + 7;
}
`;

// A folder of sources with a compile database beside it.
function projectOf(sources: Record<string, string>): string {
    const folder = folderOf(
        Object.fromEntries(Object.entries(sources).map(([name, text]) => [`shop/${name}`, text])),
    );
    const build = folderOf({
        "compile_commands.json": JSON.stringify(
            Object.keys(sources)
                .filter((name) => name.endsWith(".c"))
                .map((file) => ({
                    directory: join(folder, "shop"),
                    file,
                    arguments: ["gcc", "-O2", "-c", file],
                })),
        ),
    });
    return build;
}

const listProject = (build: string): { status: number | null; stderr: string } =>
    run(build, clist, "-p", build, "--html", "-o", join(build, "out"));

test("a whole project is one page", async () => {
    const sources = { "clamp.h": clampHeader, "sum.c": sumSource, "other.c": otherSource };
    const build = projectOf(sources);
    assert.equal(listProject(build).status, 0);
    assert.deepEqual(
        readdirSync(join(build, "out")).filter((name) => !name.startsWith(".")),
        ["index.html", "other.c.html", "sum.c.html"],
    );
    await withPage(address(build, "out/index.html"), async (page) => {
        assert.equal(await page.title(), "shop \u2013 clist");
        const overview = page.getByRole("main", { name: "Overview" });
        const functions = overview.getByRole("group", { name: "Functions" }).locator("tbody tr");
        assert.deepEqual(
            (await functions.locator("a, button").allInnerTexts()).sort(),
            ["limit", "sum", "twice"],
        ); // prettier-ignore
        await overview.getByRole("searchbox", { name: "Search functions" }).fill("lim");
        await eventually(() => functions.count(), 1);
        await functions.locator("a, button").click();
        await eventually(() => code(page).locator(".cm-activeLine").first().innerText(), "limit:");
        // The header's line has code in both units.
        await page.evaluate(() => (location.hash = "#clamp.h:4"));
        const unit = page.getByRole("combobox", { name: "Unit" });
        const seen = new Set<string>();
        for (let i = 0; i < 12; ++i) {
            await page.keyboard.press("n");
            await page.waitForTimeout(30);
            seen.add(await unit.inputValue());
        }
        assert.equal(seen.size, 2);
    });
    await withPage(address(build, "out/other.c.html"), async (page) => {
        await line(code(page), "limit:").waitFor();
    });
});

test("a project's page is made again only when one of its pages changed", () => {
    const build = projectOf({ "clamp.h": clampHeader, "sum.c": sumSource, "other.c": otherSource });
    const index = join(build, "out/index.html");
    const made = (): number => statSync(index).mtimeMs;
    assert.equal(listProject(build).status, 0);
    const first = made();
    assert.equal(listProject(build).status, 0);
    assert.equal(made(), first);
    // One source less.
    const database = JSON.parse(textOf(build, "compile_commands.json")) as unknown[];
    run(
        build,
        "sh",
        "-c",
        `printf '%s' '${JSON.stringify(database.slice(1))}' >compile_commands.json`,
    );
    assert.equal(listProject(build).status, 0);
    assert.ok(made() > first);
    return withPage(address(build, "out/index.html"), async (page) => {
        await line(code(page), "limit:").waitFor();
        assert.equal(await page.getByRole("combobox", { name: "Unit" }).count(), 0);
    });
});

test("a project that fails in part shows the rest", () => {
    const build = projectOf({ "good.c": "int good(void) { return 1; }\n", "bad.c": "int bad(\n" });
    assert.equal(listProject(build).status, 1);
    return withPage(address(build, "out/index.html"), async (page) => {
        await line(code(page), "good:").waitFor();
    });
});

test("a project past 64 MB is a start page that leads to a page for each source", async () => {
    // Text that does not pack well, in comments, of which no code comes.
    const filler = (): string => {
        const lines = randomBytes(30_000_000)
            .toString("base64")
            .match(/.{120}/g)!;
        return lines.map((text) => `// ${text.replaceAll("\\", "")}\n`).join("");
    };
    const build = projectOf({
        "first.c": `int first(int x) { return x / 3; }\n${filler()}`,
        "second.c": `int second(int x) { return x / 5; }\n${filler()}`,
    });
    assert.equal(listProject(build).status, 0);
    const out = join(build, "out");
    assert.ok(statSync(join(out, "first.c.html")).size > 32_000_000);
    assert.ok(statSync(join(out, "index.html")).size < 300_000);
    await withPage(address(build, "out/index.html"), async (page) => {
        const overview = page.getByRole("main", { name: "Overview" });
        assert.equal(await overview.locator("tbody").first().locator("tr").count(), 2);
        await overview.getByRole("link", { name: "second", exact: true }).click();
        await page.waitForURL(/second\.c\.html/);
        await ready(page);
        await eventually(() => code(page).locator(".cm-activeLine").first().innerText(), "second:");
        await eventually(async () => (await marked(source(page), "linked")).length, 1);
    });
});

for (const place of ["", "#overview"]) {
    test(`axe finds nothing serious in what clist wrote${place && `: ${place}`}`, () =>
        withPage(sumPage, async (page) => assert.deepEqual(await seriousFaults(page), []), {
            hash: place,
        }));
}
