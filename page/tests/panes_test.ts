// What the two panes show.

import assert from "node:assert/strict";
import { test } from "node:test";
import { code, eventually, line, marked, source, useBrowser, withPage } from "./browser.ts";
import { pageOf } from "./made_page.ts";
import { box, long, sum } from "./samples.ts";

useBrowser();

const sumPage = pageOf(sum);
const boxPage = pageOf(box);

test("the page says when it can be used, and what it shows", () =>
    withPage(sumPage, async (page) => {
        assert.equal(await page.locator("html").getAttribute("data-ready"), "true");
        assert.equal(await page.title(), "sum.c \u2013 clist");
        assert.equal(await page.getByRole("heading", { level: 1 }).innerText(), "sum.c");
        assert.match(await page.locator("#made").innerText(), /gcc -O2 -c sum\.c/);
    }));

test("source on the left, code on the right", () =>
    withPage(sumPage, async (page) => {
        const left = (await source(page).boundingBox())!;
        const right = (await code(page).boundingBox())!;
        assert.ok(left.x + left.width <= right.x);
        await line(source(page), "int sum(const int *a, int n) {").waitFor();
        await line(code(page), "sum:").waitFor();
        assert.equal(await code(page).locator(".cm-line").count(), 20);
    }));

test("files with most code first, headers included", () =>
    withPage(sumPage, async (page) => {
        const files = page.getByRole("navigation", { name: "Files" }).getByRole("button");
        assert.deepEqual(await files.locator(".file-name").allInnerTexts(), ["sum.c", "clamp.h"]);
        assert.deepEqual(await files.locator(".file-count").allInnerTexts(), ["11", "3"]);
        assert.equal(await files.nth(0).getAttribute("aria-current"), "true");
        await files.nth(1).click();
        await line(source(page), "static inline int clamp(int x) {").waitFor();
        assert.equal(await files.nth(1).getAttribute("aria-current"), "true");
    }));

test("a page opens at the project's own code, not at the system's", () =>
    withPage(boxPage, async (page) => {
        await line(source(page), "int open(shop::box b)").waitFor();
    }));

test("symbols are demangled", () =>
    withPage(boxPage, async (page) => {
        await line(code(page), "open(shop::box):").waitFor();
        await line(code(page), "std::vector<int, std::allocator<int> >::size() const").waitFor();
    }));

test("lines are numbered", () =>
    withPage(sumPage, async (page) => {
        const numbers = await source(page)
            .locator(".cm-lineNumbers .cm-gutterElement")
            .allInnerTexts();
        const shown = numbers.filter((text, i) => i > 0 && text !== ""); // the first keeps the width
        assert.deepEqual(
            shown,
            Array.from({ length: 13 }, (_, i) => String(i + 1)),
        );
    }));

test("no font draws other signs than the letters that stand there", () =>
    withPage(sumPage, async (page) => {
        for (const pane of [source(page), code(page)]) {
            const drawn = await pane
                .locator(".cm-line")
                .first()
                .evaluate((e) => getComputedStyle(e).fontVariantLigatures);
            assert.equal(drawn, "none");
        }
    }));

test("the code tells the line of each stretch", () =>
    withPage(sumPage, async (page) => {
        const lines = await code(page).locator(".source-column .source-line").allInnerTexts();
        assert.deepEqual(lines.slice(1, 9), ["8", "10", "11", "4", "4", "11", "10", "13"]);
    }));

test("noise is hidden until the switch shows all", () =>
    withPage(sumPage, async (page) => {
        assert.equal(await line(code(page), ".p2align").count(), 0);
        const all = page.getByRole("button", { name: "All assembly" });
        assert.equal(await all.getAttribute("aria-pressed"), "false");
        await all.click();
        await eventually(
            () => marked(code(page), "hidden-line"),
            [".p2align 4", ".globl something", ".p2align 4", ".globl something"],
        );
        assert.equal(await all.getAttribute("aria-pressed"), "true");
        // Every line in the order of the assembly, the rows among them.
        const texts = await code(page).locator(".cm-line").allInnerTexts();
        assert.deepEqual(
            texts.slice(0, 4).map((text) => text.trim().split(/\s/)[0]),
            [".p2align", ".globl", "sum:", "movl"],
        );
        // Links hold here, too.
        await line(code(page), "movl\t$0, %eax").hover();
        await eventually(() => marked(source(page), "linked"), ["int total = 0; /* starts"]);
        await page.keyboard.press("a");
        await eventually(() => code(page).locator(".hidden-line").count(), 0);
    }));

test("what stands behind a label belongs to all of the assembly", () => {
    const unit = structuredClone(sum);
    unit.functions[1].tail = "    # @scale";
    return withPage(pageOf(unit), async (page) => {
        assert.equal(await line(code(page), "scale:").innerText(), "scale:");
        await page.keyboard.press("a");
        await eventually(() => line(code(page), "scale:").innerText(), "scale:    # @scale");
    });
});

// The class that a word on a line has.
async function kindOf(
    page: Parameters<typeof source>[0],
    at: string,
    word: string,
): Promise<string[]> {
    const spans = page.locator(".cm-line", { hasText: at }).locator(".cm-line span, span");
    const found: string[] = [];
    for (const span of await spans.all()) {
        if ((await span.innerText()).trim() === word) {
            found.push((await span.getAttribute("class")) ?? "");
        }
    }
    return found;
}

const colours: [page: string, line: string, word: string, kind: string][] = [
    [sumPage, '#include "clamp.h"', "#include", "c-directive"],
    [sumPage, '#include "clamp.h"', '"clamp.h"', "c-string"],
    [sumPage, "static int scale", "static", "c-keyword"],
    [sumPage, "static int scale", "int", "c-type"],
    [sumPage, "static int scale", "scale", "c-function"],
    [sumPage, "clamp(x * 3)", "3", "c-number"],
    [sumPage, "int total = 0", "/* starts", "c-comment"],
    [sumPage, "at nothing", "at nothing */", "c-comment"],
    [boxPage, "#include <vector>", "<vector>", "c-string"],
    [boxPage, "no comment", "/* no comment */ return", "c-string"],
    [boxPage, "namespace shop", "namespace", "c-keyword"],
    [boxPage, "one more", "// one more", "c-comment"],
    [sumPage, "sum:", "sum:", "c-label"],
    [sumPage, ".L3:", ".L3:", "c-label"],
    [sumPage, "testl", "testl", "c-keyword"],
    [sumPage, "testl", "%esi", "c-register"],
    [sumPage, "$100, %edx", "$100", "c-number"],
];
for (const [language, address] of [
    ["C", sumPage],
    ["C++", boxPage],
]) {
    test(`words are coloured after what they are: ${language}`, () =>
        withPage(address, async (page) => {
            for (const [, at, word, kind] of colours.filter(([of]) => of === address)) {
                const kinds = await kindOf(page, at, word);
                assert.ok(
                    kinds.some((name) => name.includes(kind)),
                    `${word} in ${at} is ${kinds.join(", ")}, not ${kind}`,
                );
            }
        }));
}

for (const scheme of ["light", "dark"] as const) {
    test(`${scheme} after the system's setting, and the switch changes it`, () =>
        withPage(
            sumPage,
            async (page) => {
                const brightness = (): Promise<boolean> =>
                    page.evaluate(() => {
                        const rgb = getComputedStyle(document.body).backgroundColor.match(/\d+/g)!;
                        return Number(rgb[0]) > 128;
                    });
                assert.equal(await brightness(), scheme === "light");
                await page.getByRole("button", { name: "Theme" }).click();
                assert.equal(await brightness(), scheme !== "light");
                await page.reload();
                await page.locator('html[data-ready="true"]').waitFor({ state: "attached" });
                assert.equal(await brightness(), scheme !== "light", "the choice is kept");
            },
            { colorScheme: scheme },
        ));
}

test("a source that was not found is said to be missing; its lines still link", () => {
    const missing = { ...sum, sources: { ...sum.sources, "/src/demo/sum.c": null } };
    return withPage(pageOf(missing), async (page) => {
        await source(page).getByText("source not found").waitFor();
        await line(code(page), "testl").click();
        await eventually(() => source(page).locator(".cm-line.linked").count(), 1);
        assert.match(await page.locator("#status").innerText(), /sum\.c:10 4 instructions/);
    });
});

test("a long text is in the document only where it is seen", () =>
    withPage(pageOf(long()), async (page) => {
        assert.ok((await source(page).locator(".cm-line").count()) < 300);
        await page.evaluate(() => (location.hash = "#long.c:19001"));
        await eventually(() => marked(source(page), "linked"), ["int line_19001(void);"]);
        await eventually(() => marked(code(page), "linked"), ["movl $9500, %eax"]);
    }));
