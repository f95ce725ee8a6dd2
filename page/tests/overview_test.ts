// The start page: chart, tables, how the page was made, and projects of many pages.

import assert from "node:assert/strict";
import { test } from "node:test";
import type { Page } from "playwright-core";
import { treemap } from "../src/views/chart.ts";
import {
    code,
    eventually,
    isSeen,
    line,
    marked,
    ready,
    source,
    useBrowser,
    withPage,
} from "./browser.ts";
import { type MadeRow, type MadeUnit, pageOf, startPageOf } from "./made_page.ts";
import { box, long, loop, other, sum } from "./samples.ts";

useBrowser();

const overview = (page: Page): ReturnType<Page["getByRole"]> =>
    page.getByRole("main", { name: "Overview" });
const cells = (page: Page): ReturnType<Page["locator"]> => overview(page).locator(".cell");
const column = async (page: Page, table: string, number: number): Promise<string[]> =>
    page
        .getByRole("group", { name: table, exact: true })
        .locator(`tbody td:nth-child(${number})`)
        .allInnerTexts();

const facts = (page: Page): Promise<string[]> =>
    overview(page)
        .locator(".fact")
        .allInnerTexts()
        .then((all) => all.map((text) => text.replace(/\n/g, " ")));

test("the chart shows functions by size and by inlined share", () =>
    withPage(pageOf(sum), async (page) => {
        await page.keyboard.press("o");
        assert.equal(await cells(page).count(), 2);
        const areas = await cells(page).evaluateAll((rects) =>
            rects.map((rect) => {
                const { width, height } = rect.getBoundingClientRect();
                return width * height;
            }),
        );
        // 11 instructions to 4; the gaps between the rectangles take a little.
        assert.ok(Math.abs(areas[0] / areas[1] - 11 / 4) < 0.1, String(areas));
        assert.deepEqual(
            await cells(page).evaluateAll((all) => all.map((e) => e.getAttribute("aria-label"))),
            [
                "sum, 11 instructions, 27\u202f% inlined, sum.c:8",
                "scale, 4 instructions, 25\u202f% inlined, sum.c:4",
            ],
        );
        const fills = await cells(page).evaluateAll((rects) =>
            rects.map((rect) => getComputedStyle(rect).fill),
        );
        assert.equal(fills[0], fills[1], "27 % and 25 % round to one colour");
    }));

test("more inlined is another colour", () =>
    withPage(
        pageOf(sum, box),
        async (page) => {
            const fills = await cells(page).evaluateAll((rects) =>
                rects.map((rect) => getComputedStyle(rect).fill),
            );
            assert.equal(new Set(fills).size, 2); // 27 % and 25 %, and 50 %
        },
        { hash: "#overview" },
    ));

test("a click on the chart goes to the function, and so does Enter", () =>
    withPage(pageOf(sum), async (page) => {
        await page.keyboard.press("o");
        await cells(page).nth(1).click();
        await eventually(() => code(page).locator(".cm-activeLine").first().innerText(), "scale:");
        await page.keyboard.press("o");
        await cells(page).first().focus();
        await page.keyboard.press("ArrowRight");
        await page.keyboard.press("ArrowLeft");
        await page.keyboard.press("Enter");
        await eventually(() => code(page).locator(".cm-activeLine").first().innerText(), "sum:");
    }));

test("pointing at the chart says what it is", () =>
    withPage(
        pageOf(box),
        async (page) => {
            await cells(page).first().hover();
            await eventually(
                () => page.locator("#tip").innerText(),
                "open\n4 instructions, 50\u202f% inlined\nbox.cpp:6\nopen(shop::box)",
            );
        },
        { hash: "#overview" },
    ));

// As libraries of templates have them.
function named(...names: string[]): MadeUnit {
    const unit = structuredClone(loop);
    unit.functions = names.map((name, i) => ({ ...unit.functions[0], name, symbol: `_Z${i}` }));
    return unit;
}
const arguments_ = "<shop::price<double, shop::currency>, std::allocator<double> >".repeat(20);
const templates = named(
    `bool shop::parser${arguments_}::read(shop::list${arguments_} const&)`,
    `shop::list${arguments_}::list()`,
    "main",
);

for (const width of [1280, 420]) {
    test(`long names leave the figures in sight, ${width} wide`, () =>
        withPage(
            pageOf(templates),
            async (page) => {
                const rows = page
                    .getByRole("group", { name: "Functions", exact: true })
                    .locator("tbody tr");
                assert.equal(await rows.count(), 3);
                for (let i = 0; i < 3; ++i) {
                    const row = rows.nth(i);
                    await row.scrollIntoViewIfNeeded();
                    assert.ok((await row.boundingBox())!.height < 40);
                    assert.ok((await row.locator("td").nth(0).boundingBox())!.width > 150);
                    for (const [cell, text] of [
                        [1, "5"],
                        [2, "40\u202f%"],
                    ] as const) {
                        // prettier-ignore
                        const figure = row.locator("td").nth(cell);
                        assert.equal(await figure.innerText(), text);
                        assert.ok(await isSeen(figure));
                    }
                }
                const names = await column(page, "Functions", 1);
                assert.deepEqual(
                    names.map((name) => name.split(" ")[0]),
                    ["shop::parser::read", "shop::list::list", "main"],
                );
                // Sorted by what is read first.
                await page
                    .getByRole("columnheader", { name: "Function" })
                    .getByRole("button")
                    .click();
                assert.deepEqual(
                    (await column(page, "Functions", 1)).map((name) => name.split(" ")[0]),
                    ["main", "shop::list::list", "shop::parser::read"],
                );
                await rows.nth(2).getByRole("link").hover();
                const told = (): Promise<string> => page.locator("#tip").innerText();
                await eventually(async () => (await told()).slice(0, 12), "bool shop::p");
                assert.ok((await told()).length <= 301);
                // The chart's tip begins with what is short, and does not fill the window.
                await cells(page).first().hover();
                await eventually(
                    async () => (await told()).split("\n").slice(0, 3),
                    ["shop::parser::read", "5 instructions, 40\u202f% inlined", "loop.cpp:3"],
                );
                assert.ok((await page.locator("#tip").boundingBox())!.height < 200);
            },
            { hash: "#overview", viewport: { width, height: 800 } },
        ));
}

test("areas of the chart fill it and do not overlap", () => {
    const areas = [60, 30, 20, 10, 5, 5, 1, 1, 1];
    const boxes = treemap(areas, { x: 0, y: 0, width: 300, height: 200 });
    const total = areas.reduce((a, b) => a + b);
    boxes.forEach((at, i) => {
        assert.ok(Math.abs(at.width * at.height - (areas[i] / total) * 60_000) < 0.01);
        assert.ok(at.x >= 0 && at.y >= 0 && at.x + at.width < 300.01 && at.y + at.height < 200.01);
    });
    boxes.forEach((a, i) =>
        boxes.slice(i + 1).forEach((b) => {
            const wide = Math.min(a.x + a.width, b.x + b.width) - Math.max(a.x, b.x);
            const high = Math.min(a.y + a.height, b.y + b.height) - Math.max(a.y, b.y);
            assert.ok(wide < 0.01 || high < 0.01);
        }),
    );
});

test("a page of one unit opens in the panes, a page of several on the start page", async () => {
    await withPage(pageOf(sum), (page) => code(page).waitFor());
    await withPage(pageOf(sum, other), (page) => overview(page).waitFor());
});

test("the start page lists functions and files with their sizes", () =>
    withPage(pageOf(sum, other), async (page) => {
        assert.deepEqual(await column(page, "Functions", 1), ["sum", "scale", "limit"]);
        assert.deepEqual(await column(page, "Functions", 2), ["11", "4", "2"]);
        assert.deepEqual(await column(page, "Functions", 3), [
            "27\u202f%",
            "25\u202f%",
            "50\u202f%",
        ]);
        assert.deepEqual(await column(page, "Functions", 4), ["sum.c:8", "sum.c:4", "other.c:3"]);
        assert.deepEqual(await column(page, "Functions", 5), ["sum.c", "sum.c", "other.c"]);
        // The header that both units have is one file.
        assert.deepEqual(await column(page, "Source files", 1), ["sum.c", "clamp.h", "other.c"]);
        assert.deepEqual(await column(page, "Source files", 2), ["11", "4", "1"]);
        assert.deepEqual(await column(page, "Source files", 4), ["13", "5", "3"]);
        assert.deepEqual(await facts(page), [
            "2 units",
            "3 functions",
            "17 instructions",
            "29\u202f% of them inlined",
            "3 files",
        ]);
    }));

test("one of a kind is said so", () => {
    const path = "/src/one.c";
    const functions = [{ name: "one", rows: [["\tret", ["one", path, 1]]] as MadeRow[] }];
    return withPage(
        pageOf({ name: "one.c", sources: { [path]: "void one(void) {}\n" }, functions }),
        async (page) =>
            assert.deepEqual(await facts(page), [
                "1 function",
                "1 instruction",
                "0\u202f% of them inlined",
                "1 file",
            ]),
        { hash: "#overview" },
    );
});

test("the tables are sorted by their heads", () =>
    withPage(pageOf(sum, other), async (page) => {
        const functions = page.getByRole("group", { name: "Functions", exact: true });
        const head = (name: string): ReturnType<typeof functions.getByRole> =>
            functions.getByRole("columnheader", { name });
        assert.equal(await head("Instructions").getAttribute("aria-sort"), "descending");
        await head("Instructions").getByRole("button").click();
        assert.equal(await head("Instructions").getAttribute("aria-sort"), "ascending");
        assert.deepEqual(await column(page, "Functions", 1), ["limit", "scale", "sum"]);
        await head("Function").getByRole("button").click();
        assert.deepEqual(await column(page, "Functions", 1), ["limit", "scale", "sum"]);
        await head("Function").getByRole("button").click();
        assert.deepEqual(await column(page, "Functions", 1), ["sum", "scale", "limit"]);
        await head("Inlined").getByRole("button").click();
        assert.deepEqual(await column(page, "Functions", 1), ["limit", "sum", "scale"]);
    }));

test("the tables are searched", () =>
    withPage(pageOf(sum, other), async (page) => {
        const search = overview(page).getByRole("searchbox", { name: "Search functions" });
        await search.fill("OTHER lim");
        assert.deepEqual(await column(page, "Functions", 1), ["limit"]);
        await search.fill("nothing");
        assert.deepEqual(await column(page, "Functions", 1), []);
        await overview(page)
            .getByRole("searchbox", { name: "Search source files" })
            .fill("include/");
        assert.deepEqual(await column(page, "Source files", 1), ["clamp.h"]);
    }));

test("long tables are shown in parts", () =>
    withPage(
        pageOf(long()),
        async (page) => {
            assert.equal((await column(page, "Functions", 1)).length, 200);
            await overview(page).getByText("200 of 1,000 shown").waitFor();
            await overview(page).getByRole("button", { name: "Show more" }).first().click();
            assert.equal((await column(page, "Functions", 1)).length, 1000);
        },
        { hash: "#overview" },
    ));

test("names in the tables lead to their places", () =>
    withPage(pageOf(sum, other), async (page) => {
        await overview(page).getByRole("link", { name: "limit" }).click();
        await eventually(() => code(page).locator(".cm-activeLine").first().innerText(), "limit:");
        await page.keyboard.press("o");
        await overview(page).getByRole("link", { name: "clamp.h" }).click();
        await line(source(page), "#pragma once").waitFor();
    }));

test("the page says how and when it was made", () =>
    withPage(
        pageOf(box),
        async (page) => {
            const made = (await overview(page).locator(".made").innerText()).replace(/\s+/g, " ");
            assert.match(made, /g\+\+ -O2 -std=c\+\+20 '-DNAME=a b' -c box\.cpp/);
            assert.match(
                made,
                /GCC: \(Debian 12\.2\.0-14\+deb12u1\) 12\.2\.0 \u00b7 x86_64-linux-gnu \u00b7 clist 1\.2\.3, 4 May 2026/,
            );
        },
        { hash: "#overview" },
    ));

test("a project of many pages: the start page leads to the page of each unit", () =>
    withPage(startPageOf("demo", [sum, other]), async (page) => {
        assert.equal(await page.title(), "demo \u2013 clist");
        assert.deepEqual(await column(page, "Functions", 1), ["sum", "scale", "limit"]);
        assert.equal(await cells(page).count(), 3);
        await overview(page).getByRole("link", { name: "limit" }).click();
        await ready(page);
        await eventually(() => page.title(), "other.c \u2013 clist");
        await eventually(() => code(page).locator(".cm-activeLine").first().innerText(), "limit:");
        await page.goBack();
        await ready(page);
        await cells(page).nth(1).click();
        await eventually(() => page.title(), "sum.c \u2013 clist");
        await ready(page);
        await eventually(() => code(page).locator(".cm-activeLine").first().innerText(), "scale:");
        await page.goBack();
        await ready(page);
        await overview(page).getByRole("link", { name: "clamp.h" }).click();
        await eventually(() => page.title(), "sum.c \u2013 clist");
        await ready(page);
        await line(source(page), "#pragma once").waitFor();
    }));

test("from the start page a function is found by a few letters", () =>
    withPage(startPageOf("demo", [sum, other]), async (page) => {
        await page.keyboard.press("f");
        await page.keyboard.type("lim");
        await page.keyboard.press("Enter");
        await eventually(() => page.title(), "other.c \u2013 clist");
        await ready(page);
        await eventually(
            () => marked(source(page), "linked"),
            ["int limit(int x) { return clamp(x); }"],
        );
    }));

test("from the start page a function inlined everywhere is found, too", () =>
    withPage(startPageOf("demo", [sum, other]), async (page) => {
        await page.keyboard.press("f");
        await page.keyboard.type("clamp");
        await page.keyboard.press("Enter");
        await eventually(() => page.title(), "sum.c \u2013 clist");
        await ready(page);
        await eventually(() => marked(source(page), "linked"), ["return x < 100 ? x : 100;"]);
    }));

for (const [letters, title, shown] of [
    ["oth", "other.c", "int limit(int x) { return clamp(x); }"],
    ["clamp", "sum.c", "return x < 100 ? x : 100;"],
]) {
    test(`from the start page a file is found by a few letters: ${letters}`, () =>
        withPage(startPageOf("demo", [sum, other]), async (page) => {
            await page.keyboard.press("e");
            await page.keyboard.type(letters);
            await page.keyboard.press("Enter");
            await eventually(() => page.title(), `${title} \u2013 clist`);
            await ready(page);
            await eventually(() => marked(source(page), "linked"), [shown]);
        }));
}

const squeezed = (text: string): string => text.replace(/\s+/g, " ").trim();
for (const [hash, title, shown] of [
    ["#limit", "other.c", "limit:"],
    ["#scale+1", "sum.c", "leal (%rdi,%rdi,2), %eax"],
    ["#other.c:3", "other.c", "cmpl $100, %edi \u21b3 clamp inlined at other.c:3"],
    ["#clamp.h:4", "sum.c", "cmpl $100, %edx \u21b3 clamp inlined at sum.c:4"],
]) {
    test(`an address on the start page opens the page that has the place: ${hash}`, () =>
        withPage(
            startPageOf("demo", [sum, other]),
            async (page) => {
                await eventually(() => page.title(), `${title} \u2013 clist`);
                await ready(page);
                await eventually(
                    () => code(page).locator(".cm-activeLine").first().innerText().then(squeezed),
                    shown,
                );
            },
            { hash },
        ));
}

test("an address typed on the start page opens its page, and Back leads past it", () =>
    withPage(startPageOf("demo", [sum, other]), async (page) => {
        await page.evaluate(() => (location.hash = "#limit"));
        await eventually(() => page.title(), "other.c \u2013 clist");
        await ready(page);
        await page.goBack();
        await eventually(() => page.title(), "demo \u2013 clist");
        await page.waitForTimeout(300);
        assert.equal(await page.title(), "demo \u2013 clist");
    }));
