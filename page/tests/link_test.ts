// Source and code linked both ways.

import assert from "node:assert/strict";
import { test } from "node:test";
import type { Page } from "playwright-core";
import { code, eventually, isSeen, line, marked, source, useBrowser, withPage } from "./browser.ts";
import { type MadeUnit, pageOf } from "./made_page.ts";
import { long, loop, other, sum } from "./samples.ts";

useBrowser();

const sumPage = pageOf(sum);
const squeezed = (text: string): string => text.replace(/\s+/g, " ").trim();
const status = (page: Page): Promise<string> => page.locator("#status").innerText().then(squeezed);

test("pointing at a source line marks its code, wherever it lies", () =>
    withPage(sumPage, async (page) => {
        await line(source(page), "for (int i").hover();
        await eventually(
            () => marked(code(page), "linked"),
            ["testl %esi, %esi", "jle .L1", "addq $4, %rdi", "jne .L3"],
        );
        assert.match(await status(page), /sum\.c:10 4 instructions in 2 places/);
    }));

test("pointing at code marks its line, and the line's other code", () =>
    withPage(sumPage, async (page) => {
        await line(code(page), "jne").hover();
        await eventually(() => marked(source(page), "linked"), ["for (int i = 0; i < n; i++)"]);
        assert.equal((await marked(code(page), "linked")).length, 4);
    }));

test("a line without code marks nothing, and says so", () =>
    withPage(sumPage, async (page) => {
        await line(source(page), "#include").hover();
        await eventually(() => marked(source(page), "linked"), []);
        assert.deepEqual(await marked(code(page), "linked"), []);
        assert.match(await status(page), /sum\.c:1 has no code here/);
    }));

test("code without a line marks nothing, and says so", () =>
    withPage(sumPage, async (page) => {
        await line(code(page), "nop").hover();
        await eventually(() => marked(source(page), "linked"), []);
        await eventually(() => status(page), "no line");
    }));

test("keys move in the text as soon as the page is there", () =>
    withPage(sumPage, async (page) => {
        await page.keyboard.press("Control+Home");
        for (let i = 0; i < 9; ++i) {
            await page.keyboard.press("ArrowDown");
        }
        await eventually(async () => (await marked(code(page), "linked")).length, 4);
    }));

test("moving the cursor marks as pointing does, in both directions", () =>
    withPage(sumPage, async (page) => {
        await page.mouse.move(0, 0);
        await page.keyboard.press("s");
        await page.keyboard.press("Control+Home");
        for (let i = 0; i < 9; ++i) {
            await page.keyboard.press("ArrowDown");
        }
        await eventually(async () => (await marked(code(page), "linked")).length, 4);
        await page.keyboard.press("c");
        await page.keyboard.press("Control+Home");
        await page.keyboard.press("ArrowDown");
        await eventually(() => marked(source(page), "linked"), ["int total = 0; /* starts"]);
    }));

test("when the mouse leaves, what the cursor is at is marked again", () =>
    withPage(sumPage, async (page) => {
        await line(source(page), "for (int i").click();
        await line(source(page), "return total").hover();
        await eventually(() => marked(code(page), "linked"), []);
        await page.mouse.move(5, 5);
        await eventually(async () => (await marked(code(page), "linked")).length, 4);
    }));

async function cursorLine(page: Page, pane: "Source" | "Code"): Promise<string> {
    const text = await page
        .getByRole("region", { name: pane })
        .locator(".cm-activeLine")
        .first()
        .innerText();
    return text.replace(/\s+/g, " ").trim();
}

test("a click goes to the other side", () =>
    withPage(sumPage, async (page) => {
        await line(source(page), "for (int i").click();
        await eventually(() => cursorLine(page, "Code"), "testl %esi, %esi");
        await line(code(page), "ret").first().click();
        await eventually(() => cursorLine(page, "Source"), "}");
    }));

// A row of a column beside a pane's text, at the height of the line with `text`.
async function clickBeside(
    page: Page,
    pane: "Source" | "Code",
    column: string,
    text: string,
): Promise<void> {
    const region = page.getByRole("region", { name: pane });
    const row = (await line(region, text).boundingBox())!;
    const beside = (await region.locator(`.cm-gutter${column}`).boundingBox())!;
    await page.mouse.click(beside.x + beside.width / 2, row.y + row.height / 2);
}

for (const column of [".heat-column", ".cm-lineNumbers", ".inlined-column"]) {
    test(`a click on the source's ${column} is one on the line, with text selected, too`, () =>
        withPage(
            sumPage,
            async (page) => {
                await clickBeside(page, "Source", column, "for (int i");
                await eventually(() => cursorLine(page, "Code"), "testl %esi, %esi");
                assert.equal(await cursorLine(page, "Source"), "for (int i = 0; i < n; i++)");
                await eventually(() => page.evaluate(() => location.hash), "#sum.c:10");
                await page.keyboard.press("Control+a");
                await clickBeside(page, "Source", column, "return total");
                await eventually(() => cursorLine(page, "Source"), "return total;");
                await clickBeside(page, "Source", column, "int total");
                await eventually(() => cursorLine(page, "Code"), "movl $0, %eax");
                await eventually(() => page.evaluate(() => location.hash), "#sum.c:8");
            },
            { hash: "#sum.c:13" },
        ));
}

for (const column of [".source-column", ".bar-column"]) {
    test(`a click on the code's ${column} is one on the row, with text selected, too`, () =>
        withPage(sumPage, async (page) => {
            await clickBeside(page, "Code", column, "testl");
            await eventually(() => cursorLine(page, "Source"), "for (int i = 0; i < n; i++)");
            assert.equal(await cursorLine(page, "Code"), "testl %esi, %esi");
            await eventually(() => page.evaluate(() => location.hash), "#sum+2");
            await page.keyboard.press("Control+a");
            await clickBeside(page, "Code", column, "cmovg");
            await eventually(() => marked(source(page), "linked"), ["return x < 100 ? x : 100;"]);
            await eventually(() => page.evaluate(() => location.hash), "#sum+8");
        }));
}

test("a click goes to another file where the code comes from there", () =>
    withPage(sumPage, async (page) => {
        await line(code(page), "cmovg").click();
        await eventually(() => marked(source(page), "linked"), ["return x < 100 ? x : 100;"]);
    }));

test("Enter goes to the other side, and the keys are then there", () =>
    withPage(sumPage, async (page) => {
        await line(source(page), "for (int i").click();
        await page.keyboard.press("Enter");
        assert.ok(
            await code(page)
                .locator(".cm-content")
                .evaluate((e) => e === document.activeElement),
        );
        assert.equal(await cursorLine(page, "Code"), "testl %esi, %esi");
        for (let i = 0; i < 3; ++i) {
            await page.keyboard.press("ArrowDown"); // jle, .L3:, movl
        }
        await page.keyboard.press("Enter");
        assert.ok(
            await source(page)
                .locator(".cm-content")
                .evaluate((e) => e === document.activeElement),
        );
        assert.equal(await cursorLine(page, "Source"), "total += scale(a[i]);");
    }));

test("a far jump brings both sides into view", () =>
    withPage(pageOf(long()), async (page) => {
        await page.keyboard.press("s");
        await page.keyboard.press("Control+End");
        await page.keyboard.press("ArrowUp");
        // Line 19,999 has the last code.
        await page.keyboard.press("Enter");
        await eventually(() => marked(code(page), "linked"), ["movl $9999, %eax"]);
        assert.ok(await code(page).locator(".cm-line.linked").isVisible());
    }));

test("a page that opens at a place shows it", () =>
    withPage(
        pageOf(long()),
        async (page) => {
            for (const pane of [source(page), code(page)]) {
                const box = (await pane.locator(".cm-scroller").boundingBox())!;
                const marked = (await pane.locator(".linked").first().boundingBox())!;
                assert.ok(marked.y >= box.y && marked.y + marked.height <= box.y + box.height);
            }
        },
        { hash: "#long.c:41" },
    ));

test("keys go through the places, and around", () =>
    withPage(sumPage, async (page) => {
        const place = page.locator(".place-number");
        await line(source(page), "for (int i").hover();
        await eventually(() => place.innerText(), "2 places");
        await line(source(page), "int total").hover();
        await eventually(() => place.innerText(), "1 place");
        await line(source(page), "for (int i").click();
        await eventually(() => place.innerText(), "1 of 2");
        await page.keyboard.press("n");
        await eventually(() => place.innerText(), "2 of 2");
        await eventually(() => marked(code(page), "current-place"), ["addq $4, %rdi", "jne .L3"]);
        assert.equal((await marked(code(page), "linked")).length, 4, "all stay marked");
        await page.keyboard.press("n");
        await eventually(() => place.innerText(), "1 of 2");
        await page.keyboard.press("p");
        await eventually(() => place.innerText(), "2 of 2");
        await page.getByRole("button", { name: /^Previous place/ }).click();
        await eventually(() => place.innerText(), "1 of 2");
        await page.getByRole("button", { name: /^Next place/ }).click();
        await eventually(() => place.innerText(), "2 of 2");
    }));

test("clicking the same line again goes to its next place", () =>
    withPage(sumPage, async (page) => {
        await line(source(page), "for (int i").click();
        await eventually(() => cursorLine(page, "Code"), "testl %esi, %esi");
        await page.waitForTimeout(600); // two clicks, not a double one
        await line(source(page), "for (int i").click();
        await eventually(() => cursorLine(page, "Code"), "addq $4, %rdi");
    }));

// What the strip of a pane shows from top to bottom, at its left edge, where only marks are:
// the colours, each with the tenths of the strip that have it.
async function stripMarks(page: Page, pane: "Source" | "Code"): Promise<Record<string, number[]>> {
    return page
        .getByRole("region", { name: pane })
        .locator("canvas.strip")
        .evaluate((element) => {
            const canvas = element as HTMLCanvasElement;
            const copy = document.createElement("canvas");
            copy.height = canvas.height;
            const context = copy.getContext("2d", { willReadFrequently: true })!;
            context.drawImage(canvas, 0, 0);
            const { data } = context.getImageData(2, 0, 1, canvas.height);
            const found: Record<string, number[]> = {};
            for (let y = 0; y < canvas.height; ++y) {
                const [r, g, b, alpha] = data.slice(4 * y, 4 * y + 4);
                const tenths = alpha === 0 ? [] : (found[`${r},${g},${b},${alpha}`] ??= []);
                const tenth = Math.floor((10 * y) / canvas.height);
                if (tenths.at(-1) !== tenth) {
                    tenths.push(tenth);
                }
            }
            return found;
        });
}

// As style.css has them.
const strip = {
    light: { linked: "217,154,0,255", inlined: "124,92,219,255" },
    dark: { linked: "240,192,64,255", inlined: "164,139,255,255" },
};

// A long text; line 1 has code in the first and in the last function, where line 9,102 has
// code that was inlined at line 15,502.
function scattered(): MadeUnit {
    const unit = long();
    const path = "/src/long.c";
    unit.functions
        .at(-1)!
        .rows.push(
            ["\tret", ["function_0", path, 1]],
            ["\tnop", ["inner", path, 9_102], ["function_999", path, 15_502]],
        );
    return unit;
}

for (const scheme of ["light", "dark"] as const) {
    test(`the strip shows where in the whole text the marked code lies, ${scheme}`, () =>
        withPage(
            pageOf(scattered()),
            async (page) => {
                const { linked, inlined } = strip[scheme];
                await line(source(page), "line_1(void)").hover();
                await eventually(() => stripMarks(page, "Code"), { [linked]: [0, 9] });
                await eventually(() => stripMarks(page, "Source"), { [linked]: [0] });
                // A line whose code was inlined, and the line that it was inlined at.
                await page.evaluate(() => (location.hash = "#long.c:9102"));
                await eventually(() => stripMarks(page, "Source"), { [linked]: [4], [inlined]: [7] }); // prettier-ignore
                await eventually(() => stripMarks(page, "Code"), { [linked]: [9] });
                await page.evaluate(() => (location.hash = "#long.c:15502"));
                await eventually(() => stripMarks(page, "Source"), { [linked]: [7] });
                await eventually(() => stripMarks(page, "Code"), { [inlined]: [9] });
                // Drawn anew when the colours change.
                await page.keyboard.press("t");
                const other = strip[scheme === "light" ? "dark" : "light"];
                await eventually(() => stripMarks(page, "Code"), { [other.inlined]: [9] });
            },
            { colorScheme: scheme },
        ));
}

test("the strip shows which lines of a source have code, the more the stronger", () =>
    withPage(
        sumPage,
        async (page) => {
            const orange = await source(page)
                .locator("canvas.strip")
                .evaluate((element) => {
                    const canvas = element as HTMLCanvasElement;
                    const row = document.querySelector("#source .cm-line")!.clientHeight;
                    const copy = document.createElement("canvas");
                    copy.height = canvas.height;
                    const context = copy.getContext("2d", { willReadFrequently: true })!;
                    context.drawImage(canvas, 0, 0);
                    return Array.from({ length: 13 }, (_, i) => {
                        const y = Math.round((i + 0.5) * row * devicePixelRatio);
                        const [r, g, b, alpha] = context.getImageData(
                            canvas.width - 3,
                            y,
                            1,
                            1,
                        ).data;
                        return { isOrange: r > 240 && g > 80 && g < 160 && b < 60, alpha };
                    });
                });
            const lines = orange.flatMap(({ alpha }, i) => (alpha > 0 ? [i + 1] : []));
            assert.deepEqual(lines, [4, 5, 8, 10, 11, 13]);
            assert.ok(lines.every((at) => orange[at - 1].isOrange));
            assert.ok(orange[9].alpha > orange[3].alpha && orange[3].alpha > orange[4].alpha);
        },
        { hash: "#sum.c:1" },
    ));

test("a click on the strip goes there", () =>
    withPage(pageOf(long()), async (page) => {
        const strip = source(page).locator("canvas.strip");
        const box = (await strip.boundingBox())!;
        await strip.click({ position: { x: 5, y: box.height / 2 } });
        await line(source(page), "line_10000(void)").waitFor();
    }));

test("inlined code says what it is and where it was inlined", () =>
    withPage(sumPage, async (page) => {
        const notes = await code(page).locator(".inlined-note").allInnerTexts();
        assert.deepEqual(notes.map(squeezed), [
            "\u21b3 scale inlined at sum.c:11",
            "\u21b3 clamp inlined at sum.c:4",
            "\u21b3 clamp inlined at sum.c:4",
        ]);
        assert.deepEqual(await marked(code(page), "inlined-row"), [
            "leal (%rdx,%rdx,2), %edx \u21b3 scale inlined at sum.c:11",
            "cmpl $100, %edx \u21b3 clamp inlined at sum.c:4",
            "cmovg %ecx, %edx",
            "cmpl $100, %eax \u21b3 clamp inlined at sum.c:4",
        ]);
        await line(code(page), "cmovg").hover();
        await eventually(
            async () =>
                /clamp clamp\.h:4 inlined into scale sum\.c:4 inlined into sum sum\.c:11/.test(
                    await status(page),
                ),
            true,
        );
    }));

for (const width of [1280, 1000, 420]) {
    test(`deep inlining shows the project's own place, ${width} wide`, () =>
        withPage(
            pageOf(loop),
            async (page) => {
                // Behind each row, whatever the room.
                const places = code(page).locator(".inlined-note .where");
                assert.deepEqual(await places.allInnerTexts(), ["loop.cpp:5", "loop.cpp:4"]);
                assert.deepEqual([await isSeen(places.nth(0)), await isSeen(places.nth(1))], [true, true]); // prettier-ignore
                // In the line below, where the chain has eight steps.
                await line(code(page), "8(%rsp)").click({ position: { x: 70, y: 8 } });
                const sites = page.locator("#status .site");
                await eventually(async () => (await sites.allInnerTexts()).length, 8);
                const own = sites.filter({ hasText: "loop.cpp:5" });
                await eventually(() => isSeen(own), true);
                assert.equal(
                    await page.locator("#status .chain").getAttribute("data-tip"),
                    [
                        "library::list_of::_M_finish list_of_shop.h:2",
                        "shop::library::list_of::_M_next list_of_shop.h:5",
                        "library::list_of::operator++ list_of_shop.h:8",
                        "shop::library::list_of::begin list_of_shop.h:11",
                        "shop::library::list_of::advance list_of_shop.h:14",
                        "shop::library::list_of::at list_of_shop.h:17",
                        "shop::library::list_of::value list_of_shop.h:20",
                        "shop::total loop.cpp:5",
                    ].join("\n  inlined into "),
                );
                await own.click();
                await eventually(() => marked(source(page), "linked"), ["sum += it.value();"]);
            },
            { viewport: { width, height: 800 } },
        ));
}

test("a note beside inlined code tells all of the way when pointed at", () =>
    withPage(pageOf(loop), async (page) => {
        const note = code(page).locator(".inlined-note .where").nth(1);
        await note.hover();
        await eventually(
            async () => (await page.locator("#tip").innerText()).split("\n  inlined into ").length,
            6,
        );
        assert.match(
            await page.locator("#tip").innerText(),
            /^library::list_of::operator\+\+ .*shop::total loop\.cpp:4$/s,
        );
        // And the numbers beside it which file they are of.
        await code(page).locator(".source-line", { hasText: "8" }).hover();
        await eventually(() => page.locator("#tip").innerText(), "list_of_shop.h:8");
    }));

test("beside a source line stands how much was inlined at it", () =>
    withPage(pageOf(loop), async (page) => {
        const signs = source(page).locator(".inlines");
        assert.deepEqual(await signs.allInnerTexts(), ["\u21b41", "\u21b41"]);
        await withPage(sumPage, async (of) => {
            assert.deepEqual(await source(of).locator(".inlines").allInnerTexts(), [
                "\u21b43",
                "\u21b43",
            ]);
        });
    }));

test("bars beside the code show how deep it was inlined", () =>
    withPage(sumPage, async (page) => {
        const bars = code(page).locator(".bar-column .bars");
        const depths = await bars.evaluateAll((all) => all.map((e) => e.childElementCount));
        assert.deepEqual(depths.slice(1), [1, 2, 2, 1]);
    }));

test("code inlined at a line is marked apart from the line's own", () =>
    withPage(sumPage, async (page) => {
        await line(source(page), "total += scale").hover();
        await eventually(
            () => marked(code(page), "linked"),
            ["movl (%rdi), %edx", "addl %edx, %eax"],
        );
        assert.deepEqual(
            (await marked(code(page), "inlined-here")).map((text) => text.split(" ")[0]),
            ["leal", "cmpl", "cmovg"],
        );
        assert.match(
            await status(page),
            /sum\.c:11 2 instructions, 3 instructions inlined here in 1 place.*inlines scale/,
        );
    }));

test("a line whose code was inlined says where", () =>
    withPage(sumPage, async (page) => {
        await line(source(page), "return clamp(x * 3)").hover();
        await eventually(
            async () =>
                /sum\.c:4 2 instructions, 3 instructions inlined here.*inlined at sum\.c:11/.test(
                    await status(page),
                ),
            true,
        );
        await eventually(() => marked(source(page), "call-site"), ["total += scale(a[i]);"]);
    }));

test("signs beside the source tell of inlining, in both directions", () =>
    withPage(sumPage, async (page) => {
        const sign = (mark: string): Promise<string | null> =>
            source(page).locator(`.inlined-sign:has(${mark})`).last().getAttribute("data-tip");
        assert.equal(await sign(".inlines"), "Inlined here, with instructions:\n  scale: 3");
        await page.evaluate(() => (location.hash = "#clamp.h:4"));
        await eventually(
            () => sign(".inlined"),
            "Inlined into, with instructions:\n  sum (sum.c:11): 2\n  scale (sum.c:4): 1",
        );
    }));

test("the chain of call sites leads to each of them", () =>
    withPage(sumPage, async (page) => {
        await line(code(page), "cmovg").click();
        await eventually(() => marked(source(page), "linked"), ["return x < 100 ? x : 100;"]);
        await page.locator("#status").getByRole("button", { name: "sum.c:11" }).click();
        await eventually(() => marked(source(page), "linked"), ["total += scale(a[i]);"]);
        // And by key, one step up.
        await line(code(page), "cmovg").click();
        await page.keyboard.press("i");
        await eventually(() => marked(source(page), "linked"), ["return clamp(x * 3);"]);
    }));

test("the file of what is pointed at is marked in the list", () =>
    withPage(sumPage, async (page) => {
        await line(code(page), "cmovg").hover();
        await eventually(
            () => page.locator("#files .linked-file .file-name").allInnerTexts(),
            ["clamp.h"],
        );
    }));

test("the heat column tells the instructions of each line, copies and inlined ones included", () =>
    withPage(sumPage, async (page) => {
        const cells = source(page).locator("[data-instructions]");
        const told = (): Promise<(string | null)[]> =>
            cells.evaluateAll((all) => all.map((e) => e.getAttribute("data-instructions")));
        // Lines 4, 5, 8, 10, 11, 13.
        assert.deepEqual(await told(), ["2", "1", "1", "4", "2", "1"]);
        await cells.nth(3).hover();
        await eventually(() => page.locator("#tip").innerText(), "4 instructions");
        // The more, the hotter: orange leaves less and less green.
        const green = await cells.evaluateAll((all) =>
            [1, 3].map((i) => {
                const colour = getComputedStyle(all[i]).backgroundColor;
                return Number(/srgb [\d.]+ ([\d.]+)/.exec(colour)![1]);
            }),
        );
        assert.ok(green[1] < green[0], String(green));
        await page.evaluate(() => (location.hash = "#clamp.h:4"));
        await eventually(told, ["3"]);
    }));

test("in a project the heat counts all units, and places go on in the next one", () =>
    withPage(
        pageOf(sum, other),
        async (page) => {
            await eventually(
                () => source(page).locator("[data-instructions]").getAttribute("data-instructions"),
                "4",
            );
            const unit = page.getByRole("combobox", { name: "Unit" });
            const place = page.locator(".place-number");
            assert.equal(await unit.inputValue(), "0");
            await eventually(() => place.innerText(), "1 of 2");
            // Which of the two each number counts is said.
            assert.match(
                await status(page),
                /clamp\.h:4 3 instructions in 2 places in this unit, 4 in all /,
            );
            await source(page).getByText("4 instructions in all units").waitFor();
            await source(page).locator("[data-instructions]").hover();
            await eventually(() => page.locator("#tip").innerText(), "4 instructions in all units");
            await page.keyboard.press("n");
            await eventually(() => place.innerText(), "2 of 2");
            await page.keyboard.press("n");
            await eventually(() => unit.inputValue(), "1");
            await eventually(() => marked(code(page), "linked").then((rows) => rows.length), 1);
            assert.match(
                await status(page),
                /clamp\.h:4 1 instruction in 1 place in this unit, 4 in all /,
            );
            await line(source(page), "static inline").hover();
            await eventually(
                async () => /clamp\.h:3 has no code here$/.test(await status(page)),
                true,
            );
            await page.keyboard.press("n");
            await eventually(() => unit.inputValue(), "0");
        },
        { hash: "#clamp.h:4" },
    ));

test("a line whose code is all in other units says so", () => {
    const unit = structuredClone(other);
    unit.functions[0].rows[0][1][2] = 3;
    return withPage(
        pageOf(sum, unit),
        async (page) => {
            await line(code(page), "cmpl").click();
            await line(source(page), "return x < 100").hover();
            await eventually(
                async () => /clamp\.h:4 has no code in this unit, 3 instructions in others$/.test(await status(page)), // prettier-ignore
                true,
            );
        },
        { hash: "#limit" },
    );
});

test("a call site that nobody knows is said to be unknown; the others still lead on", () => {
    const unit = structuredClone(sum);
    unit.functions[1].rows.push([
        "\tint3",
        ["clamp", "/src/demo/include/clamp.h", 4],
        ["lost", "", 0],
        ["scale", "/src/demo/sum.c", 5],
    ]);
    return withPage(pageOf(unit), async (page) => {
        await line(code(page), "int3").click();
        await eventually(() => marked(source(page), "linked"), ["return x < 100 ? x : 100;"]);
        assert.match(
            await status(page),
            /clamp clamp\.h:4 inlined into lost an unknown place inlined into scale sum\.c:5/,
        );
    });
});

for (const at of [14, 1_000_000, 4_294_967_295]) {
    test(`line ${at}, which the source does not have, is told and not linked`, () => {
        const unit = structuredClone(sum);
        unit.functions[1].rows.push(["\tint3", ["scale", "/src/demo/sum.c", at]]);
        return withPage(pageOf(unit), async (page) => {
            await line(code(page), "int3").click();
            await eventually(() => marked(source(page), "linked"), []);
            assert.match(
                await status(page),
                new RegExp(`sum\\.c:${at}, which the file does not have`),
            );
            assert.equal(await source(page).locator(".cm-line").count(), 13);
        });
    });
}

test("a source that was not found may claim any number of lines", () => {
    const unit = structuredClone(sum);
    unit.sources["/src/demo/sum.c"] = null;
    unit.functions[1].rows.push(["\tint3", ["scale", "/src/demo/sum.c", 4_294_967_295]]);
    return withPage(pageOf(unit), async (page) => {
        await line(code(page), "testl").click();
        await eventually(async () => (await marked(code(page), "linked")).length, 4);
    });
});
