// Narrow windows, zoom, screen readers, printing.

import assert from "node:assert/strict";
import { test } from "node:test";
import type { Page } from "playwright-core";
import { seriousFaults } from "./axe.ts";
import { code, eventually, line, printed, source, useBrowser, withPage } from "./browser.ts";
import { pageOf } from "./made_page.ts";
import { box, other, sum } from "./samples.ts";

useBrowser();

const views: [name: string, act: (page: Page) => Promise<void>][] = [
    ["the panes", async (page) => line(source(page), "total += scale").click()],
    ["another place", async (page) => line(code(page), "cmovg").click()],
    ["all assembly", (page) => page.keyboard.press("a")],
    [
        "finding in a pane",
        async (page) => {
            await page.keyboard.press("s");
            await page.keyboard.press("/");
            await page.keyboard.type("int");
            await page.keyboard.press("Enter");
        },
    ],
    [
        "finding everywhere",
        async (page) => {
            await page.keyboard.press("F");
            await page.keyboard.type("int");
            await page.getByRole("option").first().waitFor();
        },
    ],
    ["the list of functions", (page) => page.keyboard.press("f")],
    ["the card of keys", (page) => page.keyboard.press("?")],
    ["the overview", (page) => page.keyboard.press("o")],
];
for (const scheme of ["light", "dark"] as const) {
    for (const [name, act] of views) {
        test(`axe finds nothing serious: ${name}, ${scheme}`, () =>
            withPage(
                pageOf(sum),
                async (page) => {
                    await act(page);
                    await page.waitForTimeout(200);
                    assert.deepEqual(await seriousFaults(page), []);
                },
                { colorScheme: scheme },
            ));
    }
    test(`axe finds nothing serious: a project, ${scheme}`, () =>
        withPage(
            pageOf(sum, other, box),
            async (page) => assert.deepEqual(await seriousFaults(page), []),
            { colorScheme: scheme },
        ));
    test(`axe finds nothing serious: a narrow window, ${scheme}`, () =>
        withPage(
            pageOf(box),
            async (page) => {
                assert.deepEqual(await seriousFaults(page), []);
                await page.keyboard.press("o");
                await page.getByRole("main", { name: "Overview" }).waitFor();
                assert.deepEqual(await seriousFaults(page), []);
            },
            { colorScheme: scheme, viewport: { width: 360, height: 700 } },
        ));
}

test("screen readers are told what is marked", () =>
    withPage(pageOf(sum), async (page) => {
        await line(source(page), "for (int i").click();
        const told = page.locator("#status").getByRole("status");
        await eventually(() => told.innerText(), "sum.c:10 4 instructions in 2 places");
    }));

test("texts and columns have names", () =>
    withPage(pageOf(sum), async (page) => {
        const texts = await page
            .getByRole("textbox")
            .evaluateAll((all) =>
                all.map((e) => [e.getAttribute("aria-label"), e.getAttribute("aria-readonly")]),
            );
        assert.deepEqual(texts, [
            ["sum.c", "true"],
            ["Instructions", "true"],
        ]);
    }));

// Zooming by a factor leaves the page that much less room.
for (const [what, width, height] of [
    ["a phone", 360, 700],
    ["a tablet", 768, 1000],
    ["zoom of 200 %", 640, 400],
    ["zoom of 400 %", 320, 256],
] as const) {
    test(`nothing sticks out: ${what}`, () =>
        withPage(
            pageOf(sum),
            async (page) => {
                for (const view of ["reader", "overview"]) {
                    const sizes = await page.evaluate(() => [
                        document.documentElement.scrollWidth,
                        document.documentElement.clientWidth,
                    ]);
                    assert.ok(sizes[0] <= sizes[1], `${view}: ${sizes.join(" in ")}`);
                    const outside = await page
                        .locator(".masthead button:visible")
                        .evaluateAll((all) =>
                            all
                                .filter((e) => {
                                    const at = e.getBoundingClientRect();
                                    return at.left < 0 || at.right > innerWidth + 1 || at.top < 0;
                                })
                                .map((e) => e.getAttribute("aria-label")),
                        );
                    assert.deepEqual(outside, []);
                    await page.keyboard.press("o");
                }
            },
            { viewport: { width, height } },
        ));
}

test("in a narrow window the panes stand one above the other, and all works", () =>
    withPage(
        pageOf(sum),
        async (page) => {
            const top = (await source(page).boundingBox())!;
            const bottom = (await code(page).boundingBox())!;
            assert.ok(top.y + top.height <= bottom.y);
            assert.ok(top.width > 350 && bottom.width > 350);
            assert.equal(await page.getByRole("navigation", { name: "Files" }).isVisible(), false);
            // The list covers the panes; Escape closes it.
            await page.getByRole("button", { name: "Files" }).click();
            await page.getByRole("navigation", { name: "Files" }).waitFor();
            await page.keyboard.press("Escape");
            await page.getByRole("navigation", { name: "Files" }).waitFor({ state: "hidden" });
            await page.getByRole("button", { name: "Files" }).click();
            await page
                .getByRole("navigation", { name: "Files" })
                .getByRole("button", { name: "clamp.h" })
                .click();
            await line(source(page), "static inline int clamp").waitFor();
            await line(code(page), "testl").click({ position: { x: 80, y: 8 } });
            await line(source(page), "for (int i").waitFor();
        },
        { viewport: { width: 360, height: 700 } },
    ));

test("the divider is moved by keys and by the mouse", () =>
    withPage(pageOf(sum), async (page) => {
        const divider = page.getByRole("separator", { name: "Width of the panes" });
        const width = async (): Promise<number> => (await source(page).boundingBox())!.width;
        const before = await width();
        await divider.focus();
        await page.keyboard.press("ArrowLeft");
        assert.ok((await width()) < before);
        assert.equal(await divider.getAttribute("aria-valuenow"), "48");
        const box = (await divider.boundingBox())!;
        await page.mouse.move(box.x + 2, box.y + 100);
        await page.mouse.down();
        await page.mouse.move(box.x + 202, box.y + 100);
        await page.mouse.up();
        assert.ok((await width()) > before + 100);
    }));

test("printed is the function on the screen, its code under its lines", () =>
    withPage(
        pageOf(sum),
        async (page) => {
            await page.emulateMedia({ media: "print" });
            const print = page.locator("#print");
            await eventually(
                () => print.getByRole("heading", { includeHidden: true }).innerText(),
                "scale",
            );
            assert.equal(await page.getByRole("main").isVisible(), false);
            assert.equal(
                await print.locator("pre").innerText(),
                [
                    "scale:",
                    "sum.c:4 |     return clamp(x * 3);",
                    "\tleal\t(%rdi,%rdi,2), %eax",
                    "clamp.h:4 (inlined at sum.c:4) |     return x < 100 ? x : 100;",
                    "\tcmpl\t$100, %eax",
                    "sum.c:5 | }",
                    "\tret",
                    "\tnop",
                ].join("\n"),
            );
            assert.match(
                await print.locator("p").innerText(),
                /4 instructions, 25\u202f% inlined\. gcc -O2 -c sum\.c/,
            );
            // And as a printer gets it: that and nothing else, once.
            const texts = await print.locator("h1, p, pre").allInnerTexts();
            assert.equal(await printed(page), texts.join("").replace(/\s/g, ""));
            assert.equal(await print.textContent(), "", "nothing of it stays");
        },
        { hash: "#scale" },
    ));
