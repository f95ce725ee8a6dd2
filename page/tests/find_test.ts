// Finding and going: in both panes, over everything, by function, by key, by address.

import assert from "node:assert/strict";
import { test } from "node:test";
import type { Page } from "playwright-core";
import { code, eventually, line, marked, ready, source, useBrowser, withPage } from "./browser.ts";
import { pageOf } from "./made_page.ts";
import { keyTable } from "../src/keys.ts";
import { box, long, loop, other, sum } from "./samples.ts";

useBrowser();

const sumPage = pageOf(sum);
const boxPage = pageOf(box);

for (const [pane, key, text, found] of [
    ["Source", "s", "total", "1 of 3"],
    ["Code", "c", "%edx", "1 of 5"],
] as const) {
    test(`find in the ${pane} pane`, () =>
        withPage(sumPage, async (page) => {
            await page.keyboard.press(key);
            await page.keyboard.press("Control+Home");
            await page.keyboard.press("/");
            await page.keyboard.type(text);
            const bar = page.getByRole("region", { name: pane }).getByRole("search");
            await page.keyboard.press("Enter");
            await eventually(() => bar.getByRole("status").innerText(), found);
            await page.keyboard.press("Enter");
            await eventually(() => bar.getByRole("status").innerText(), found.replace("1", "2"));
            await page.keyboard.press("Shift+Enter");
            await eventually(() => bar.getByRole("status").innerText(), found);
            await bar.getByRole("button", { name: "Next match" }).click();
            await eventually(() => bar.getByRole("status").innerText(), found.replace("1", "2"));
            await bar.getByRole("textbox").press("Escape");
            await eventually(() => bar.count(), 0);
        }));
}

test("the browser's own find key finds here, too; capitals, words and expressions count when asked", () =>
    withPage(sumPage, async (page) => {
        await page.keyboard.press("Control+f");
        const bar = page.getByRole("search");
        await bar.getByRole("textbox").fill("INT");
        const told = (): Promise<string> => bar.getByRole("status").innerText();
        await eventually(told, "7");
        await bar.getByRole("button", { name: "Match case" }).click();
        await eventually(told, "none");
        await bar.getByRole("button", { name: "Match case" }).click();
        await bar.getByRole("textbox").fill("s");
        await bar.getByRole("button", { name: "Whole words" }).click();
        await eventually(told, "none");
        await bar.getByRole("button", { name: "Whole words" }).click();
        await bar.getByRole("button", { name: "Regular expression" }).click();
        await bar.getByRole("textbox").fill("int (sum|total)");
        await eventually(told, "2");
        await bar.getByRole("textbox").fill("(");
        await eventually(told, "not an expression");
    }));

test("what is found in a pane links as if one had moved there", () =>
    withPage(sumPage, async (page) => {
        await page.keyboard.press("s");
        await page.keyboard.press("/");
        await page.keyboard.type("int i = 0");
        await page.keyboard.press("Enter");
        await eventually(async () => (await marked(code(page), "linked")).length, 4);
    }));

const choices = (page: Page): Promise<string[]> =>
    page.getByRole("dialog").getByRole("option").locator(".choice-label").allInnerTexts();

test("find over all files and all code", () =>
    withPage(pageOf(sum, other), async (page) => {
        await page.keyboard.press("Control+Shift+f");
        await page.keyboard.type("clamp");
        await eventually(
            async () => (await choices(page)).map((text) => text.trim()).sort(),
            [
                '#include "clamp.h"',
                '#include "clamp.h"',
                "int limit(int x) { return clamp(x); }",
                "return clamp(x * 3);",
                "static inline int clamp(int x) {",
            ],
        );
        await page.getByRole("combobox", { name: /all files/ }).fill("edi,%edi");
        await eventually(() => choices(page), []);
        await page.getByRole("combobox", { name: /all files/ }).fill("100, %edi");
        await eventually(() => choices(page), ["cmpl\t$100, %edi"]);
        await page.keyboard.press("Enter");
        await eventually(() => marked(source(page), "linked"), ["return x < 100 ? x : 100;"]);
        assert.equal(await page.getByRole("combobox", { name: "Unit" }).inputValue(), "1");
    }));

test("small letters find capitals, capitals only capitals", () =>
    withPage(sumPage, async (page) => {
        await page.keyboard.press("F");
        await page.keyboard.type("keeps x");
        await eventually(async () => (await choices(page)).length, 1);
        await page.getByRole("combobox").fill("KEEPS X");
        await eventually(async () => (await choices(page)).length, 0);
    }));

for (const [letters, name] of [
    ["scale", "scale"],
    ["sca", "scale"],
    ["sl", "scale"],
    ["um", "sum"],
]) {
    test(`the letters ${letters} go to the function ${name}`, () =>
        withPage(sumPage, async (page) => {
            await page.keyboard.press("f");
            await page.keyboard.type(letters);
            await page.keyboard.press("Enter");
            await eventually(
                () => code(page).locator(".cm-activeLine").first().innerText(),
                `${name}:`,
            );
        }));
}

test("the list of functions is chosen from with arrows or the mouse, and closed with Escape", () =>
    withPage(sumPage, async (page) => {
        await page.getByRole("button", { name: "Function" }).click();
        await eventually(() => choices(page), ["sum", "scale", "clamp"]);
        await page.keyboard.press("ArrowDown");
        assert.equal(
            await page.getByRole("option", { name: "scale" }).getAttribute("aria-selected"),
            "true",
        );
        await page.keyboard.press("ArrowUp");
        await page.keyboard.press("Escape");
        await eventually(() => page.getByRole("dialog").count(), 0);
        await page.keyboard.press("Control+p");
        await page.getByRole("option", { name: "scale" }).click();
        await eventually(() => code(page).locator(".cm-activeLine").first().innerText(), "scale:");
    }));

test("the list of functions tells what each is called before all of its name", () =>
    withPage(pageOf(loop), async (page) => {
        // And so does the head of the pane.
        const head = code(page).locator(".pane-head .name");
        assert.equal(await head.innerText(), `shop::total ${loop.functions[0].name}`);
        await page.keyboard.press("f");
        // Fits the beginning of one, and the other only by its arguments.
        await page.keyboard.type("total");
        const names = page.getByRole("option").locator(".choice-label");
        await eventually(() => names.allInnerTexts(), [`shop::total ${loop.functions[0].name}`]);
        await page.getByRole("combobox").fill("val");
        await eventually(
            async () => (await names.allInnerTexts())[0],
            `shop::library::list_of::value ${loop.functions[1].name}`,
        );
        await names.first().hover();
        await eventually(() => page.locator("#tip").innerText(), loop.functions[1].name);
    }));

test("a file is gone to by a few letters", () =>
    withPage(sumPage, async (page) => {
        await page.keyboard.press("e");
        await page.keyboard.type("clh");
        await page.keyboard.press("Enter");
        await line(source(page), "static inline int clamp").waitFor();
    }));

const everyKey = keyTable.flatMap((row): readonly string[] => row.keys);

test("the card of keys opens with ? and names every key that the page takes", () =>
    withPage(sumPage, async (page) => {
        await page.keyboard.press("?");
        const card = page.getByRole("dialog", { name: "Keys" });
        await card.waitFor();
        const named = await card.locator("kbd").allInnerTexts();
        assert.deepEqual(named.sort(), [...everyKey].sort());
        await page.keyboard.press("Escape");
        await eventually(() => card.count(), 0);
    }));

// What each key does, one after the other on one page.
type Deed = (page: Page, press: () => Promise<void>) => Promise<void>;
const cursorIs = (page: Page, pane: typeof source, text: string): Promise<void> =>
    eventually(
        async () => (await pane(page).locator(".cm-activeLine").first().innerText()).split("\t").join(" ").trim(), // prettier-ignore
        text,
    );
const opens =
    (dialog: string): Deed =>
    async (page, press) => {
        await press();
        await page.getByRole("dialog", { name: dialog, exact: true }).waitFor();
        await page.keyboard.press("Escape");
        await eventually(() => page.getByRole("dialog").count(), 0);
    };
const focuses =
    (pane: typeof source): Deed =>
    async (page, press) => {
        await press();
        await eventually(
            () =>
                pane(page)
                    .locator(".cm-content")
                    .evaluate((e) => e === document.activeElement),
            true,
        );
    };
const walks =
    (place: string): Deed =>
    async (page, press) => {
        await press();
        await eventually(() => page.locator(".place-number").innerText(), place);
    };
const shows =
    (label: string): Deed =>
    async (page, press) => {
        await press();
        await cursorIs(page, code, label);
    };
const toggles =
    (what: (page: Page) => Promise<unknown>): Deed =>
    async (page, press) => {
        const before = await what(page);
        await press();
        await eventually(async () => (await what(page)) !== before, true);
        await press();
        await eventually(async () => (await what(page)) === before, true);
    };
const finds: Deed = async (page, press) => {
    await press();
    await page.getByRole("search").waitFor();
    await page.keyboard.press("Escape");
    await eventually(() => page.getByRole("search").count(), 0);
};
const matches =
    (expected: string): Deed =>
    async (page, press) => {
        await page.keyboard.press("s");
        await page.keyboard.press("/");
        await page.keyboard.type("total");
        await page.keyboard.press("Enter");
        const told = page.getByRole("search").getByRole("status");
        await eventually(() => told.innerText(), "1 of 3");
        await press();
        await eventually(() => told.innerText(), expected);
        await page.keyboard.press("Escape");
        await page.keyboard.press("Control+Home");
    };
const deeds: Record<string, Deed> = {
    n: async (page, press) => {
        await line(source(page), "for (int i").click();
        await walks("2 of 2")(page, press);
    },
    p: walks("1 of 2"),
    Enter: focuses(code),
    i: async (page, press) => {
        await line(code(page), "cmovg").click();
        await press();
        await eventually(() => marked(source(page), "linked"), ["return clamp(x * 3);"]);
    },
    s: focuses(source),
    c: focuses(code),
    "[": shows("sum:"),
    "]": shows("scale:"),
    f: opens("Go to a function"),
    "Ctrl+P": opens("Go to a function"),
    e: opens("Go to a file"),
    "/": finds,
    "Ctrl+F": finds,
    F3: matches("2 of 3"),
    "Ctrl+G": matches("2 of 3"),
    "Shift+F3": matches("3 of 3"),
    "Ctrl+Shift+G": matches("3 of 3"),
    F: opens("Find in all files and all code"),
    "Ctrl+Shift+F": opens("Find in all files and all code"),
    // The browser's own, which cannot be pressed here.
    "Alt+\u2190": async (page) => {
        await page.keyboard.press("[");
        await page.keyboard.press("]");
        await cursorIs(page, code, "scale:");
        await page.goBack();
        await cursorIs(page, code, "sum:");
    },
    o: toggles((page) => page.getByRole("main", { name: "Overview" }).isVisible()),
    a: toggles((page) => code(page).locator(".hidden-line").count()),
    b: toggles((page) => page.getByRole("navigation", { name: "Files" }).isVisible()),
    t: toggles((page) => page.locator("html").getAttribute("data-theme")),
    "Ctrl+Enter": async (page, press) => {
        await page.evaluate(() => (window.print = () => (document.title = "printed")));
        await press();
        await eventually(() => page.title(), "printed");
    },
    "?": opens("Keys"),
    Escape: async (page, press) => {
        await page.keyboard.press("e");
        await page.getByRole("dialog").waitFor();
        await press();
        await eventually(() => page.getByRole("dialog").count(), 0);
    },
};

test("every key of the card does what the card says", () =>
    withPage(sumPage, async (page) => {
        assert.deepEqual(Object.keys(deeds).sort(), [...everyKey].sort());
        for (const [key, deed] of Object.entries(deeds)) {
            const pressed = key
                .replace("Ctrl+", "Control+")
                .replace("\u2190", "ArrowLeft")
                .replace(/\+([A-Z])$/, (letter) => letter.toLowerCase());
            await deed(page, () => page.keyboard.press(pressed)).catch((error: unknown) => {
                throw new Error(key, { cause: error });
            });
        }
    }));

test("keys of the panes do nothing on the overview", () =>
    withPage(
        sumPage,
        async (page) => {
            for (const key of ["b", "a", "s", "n", "/"]) {
                await page.keyboard.press(key);
            }
            await page.keyboard.press("o");
            await page.getByRole("navigation", { name: "Files" }).waitFor();
            assert.equal(await code(page).locator(".hidden-line").count(), 0);
            assert.equal(await page.getByRole("search").count(), 0);
        },
        { hash: "#overview" },
    ));

test("find brings the first match into view while one types, from the cursor on", () =>
    withPage(pageOf(long()), async (page) => {
        const shown = (text: string): Promise<void> => line(source(page), text).waitFor();
        await page.keyboard.press("s");
        await page.keyboard.press("/");
        await page.keyboard.type("line_777");
        await shown("int line_777(void);");
        await page.keyboard.type("7(");
        await shown("int line_7777(void);");
        // The cursor has not moved; Enter goes there.
        assert.equal(await hashOf(page), "");
        await page.keyboard.press("Enter");
        await eventually(() => marked(source(page), "linked"), ["int line_7777(void);"]);
        // What lies before the cursor is found when nothing lies behind it.
        await page.getByRole("search").getByRole("textbox").fill("line_12(");
        await shown("int line_12(void);");
    }));

test("everything can be reached with the Tab key", () =>
    withPage(sumPage, async (page) => {
        const reached = new Set<string>();
        for (let i = 0; i < 30; ++i) {
            await page.keyboard.press("Tab");
            reached.add(
                await page.evaluate(() => {
                    const at = document.activeElement!;
                    return at.getAttribute("aria-label") ?? at.textContent.trim().slice(0, 40);
                }),
            );
        }
        for (const name of [
            "Overview",
            "Files",
            "Function",
            "Find",
            "All assembly",
            "Theme",
            "Keys",
            "sum.c11",
            "sum.c",
            "Width of the panes",
            "Instructions",
        ]) {
            assert.ok(reached.has(name), `${name} in ${[...reached].join(", ")}`);
        }
    }));

const addresses: [hash: string, marks: string[], cursor: string][] = [
    ["#sum.c:10", ["for (int i = 0; i < n; i++)"], "testl %esi, %esi"],
    ["#/src/demo/sum.c:10", ["for (int i = 0; i < n; i++)"], "testl %esi, %esi"],
    ["#demo/sum.c:10", ["for (int i = 0; i < n; i++)"], "testl %esi, %esi"],
    ["#clamp.h:4", ["return x < 100 ? x : 100;"], "cmpl $100, %edx"],
    ["#clamp", ["return x < 100 ? x : 100;"], "cmpl $100, %edx"],
    ["#scale", ["return clamp(x * 3);"], "scale:"],
    ["#scale+1", ["return clamp(x * 3);"], "leal (%rdi,%rdi,2), %eax"],
];
for (const [hash, marks, cursor] of addresses) {
    test(`the address ${hash} shows its place`, () =>
        withPage(
            sumPage,
            async (page) => {
                await eventually(() => marked(source(page), "linked"), marks);
                const at = await code(page).locator(".cm-activeLine").first().innerText();
                assert.ok(at.replace(/\s+/g, " ").trim().startsWith(cursor), at);
            },
            { hash },
        ));
}

test("a row that a function does not have is its last, and the address says so", () =>
    withPage(
        sumPage,
        async (page) => {
            const at = await code(page).locator(".cm-activeLine").first().innerText();
            assert.equal(at.trim(), "ret");
            await eventually(() => hashOf(page), "#sum+13");
        },
        { hash: "#sum+9999" },
    ));

test("what an address names and the page has not is said", () =>
    withPage(
        sumPage,
        async (page) => {
            const told = page.locator("#status").getByRole("status");
            await eventually(() => told.innerText(), "sum.c:9999, which the file does not have");
            assert.equal(
                await source(page).locator(".cm-activeLine").first().innerText(),
                "}",
                "the last line",
            );
            for (const name of ["no_such_function", "nothing.c:7", "<b>x</b>"]) {
                await page.evaluate((to) => (location.hash = to), name);
                await eventually(() => told.innerText(), `Nothing here is called ${name}.`);
            }
        },
        { hash: "#sum.c:9999" },
    ));

test("a function inlined everywhere is found: its line, and where it was inlined", () =>
    withPage(sumPage, async (page) => {
        await page.keyboard.press("f");
        await page.keyboard.type("clamp");
        await page.getByText("inlined, clamp.h:4 \u00b7 3 instructions").waitFor();
        await page.keyboard.press("Enter");
        await eventually(() => marked(source(page), "linked"), ["return x < 100 ? x : 100;"]);
        assert.deepEqual(
            (await marked(code(page), "linked")).map((text) => text.split(" ")[0]),
            ["cmpl", "cmovg", "cmpl"],
        );
        await eventually(
            async () => (await page.locator("#status").innerText()).replace(/\s+/g, " "),
            "\u2039 1 of 2 \u203a clamp clamp.h:4 3 instructions in 2 places inlined at sum.c:4 sum.c:11",
        );
        await eventually(() => hashOf(page), "#clamp.h:4");
    }));

test("an address of code without a line shows the function's source all the same", () =>
    withPage(
        sumPage,
        async (page) => {
            await line(source(page), "return clamp(x * 3);").waitFor();
            assert.deepEqual(await marked(source(page), "linked"), []);
        },
        { hash: "#scale+4" },
    ));

// Opens a page anew at each of these places.
async function atEach(
    page: Page,
    address: string,
    hashes: string[],
    test: (hash: string) => Promise<void>,
): Promise<void> {
    for (const hash of hashes) {
        await page.goto("about:blank");
        await page.goto(address + hash);
        await ready(page);
        await test(hash);
    }
}

test("a function is known by its symbol and its name", () =>
    withPage(boxPage, (page) => {
        const hashes = [
            "#_Z4openN4shop3boxE",
            "#open(shop::box)",
            "#open%28shop%3A%3Abox%29",
            "#open",
        ];
        return atEach(page, boxPage, hashes, async (hash) => {
            const at = await code(page).locator(".cm-activeLine").first().innerText();
            assert.equal(at, "open(shop::box):", hash);
        });
    }));

test("an address that names nothing here opens the page all the same", () =>
    withPage(sumPage, (page) => {
        const hashes = [
            "#",
            "#nothing.c:7",
            "#%E0%A4%A",
            "#no_such_function",
            "#sum.c:99999999999",
            "#:",
            "#+1",
        ];
        return atEach(page, sumPage, hashes, () => line(code(page), "sum:").waitFor());
    }));

const hashOf = (page: Page): Promise<string> => page.evaluate(() => location.hash);

test("the address follows the moves, and leads back when it is sent to someone", () =>
    withPage(sumPage, async (page) => {
        await line(source(page), "total += scale").click();
        await eventually(() => hashOf(page), "#sum.c:11");
        await page.keyboard.press("ArrowUp");
        await eventually(() => hashOf(page), "#sum.c:10");
        await line(code(page), "scale:").click();
        await eventually(() => hashOf(page), "#scale");
        await page.keyboard.press("ArrowDown");
        await eventually(() => hashOf(page), "#scale+1");
        await page.reload();
        await ready(page);
        await eventually(() => marked(source(page), "linked"), ["return clamp(x * 3);"]);
    }));

test("Back returns from a jump", () =>
    withPage(pageOf(long()), async (page) => {
        await line(source(page), "line_3(void)").click();
        await eventually(() => hashOf(page), "#long.c:3");
        await page.keyboard.press("f");
        await page.keyboard.type("function_900");
        await page.keyboard.press("Enter");
        await eventually(() => hashOf(page), "#function_900");
        await page.goBack();
        await eventually(() => marked(source(page), "linked"), ["int line_3(void);"]);
    }));

test("one source compiled two ways is two units, told apart by name, label and address", () => {
    const [first, second] = ["-O1", "-O3"].map((level) => ({
        ...other,
        command: ["gcc", level, "-c", "other.c"],
    }));
    return withPage(
        pageOf(first, second),
        async (page) => {
            const unit = page.getByRole("combobox", { name: "Unit" });
            assert.deepEqual(await unit.locator("option").allInnerTexts(), [
                "other.c: -O1",
                "other.c (2): -O3",
            ]);
            assert.equal(await unit.inputValue(), "1");
            await line(code(page), "cmpl").click();
            await eventually(() => hashOf(page), "#other.c%20(2):limit+1");
            // Lines, too, of the source itself and of its header.
            await line(source(page), "return x < 100").click();
            await eventually(() => hashOf(page), "#other.c%20(2):clamp.h:4");
            await page.reload();
            await ready(page);
            assert.equal(await unit.inputValue(), "1");
            await eventually(() => marked(source(page), "linked"), ["return x < 100 ? x : 100;"]);
            for (const [hash, value] of [
                ["#other.c:3", "0"],
                ["#other.c (2):other.c:3", "1"],
                ["#other.c:limit", "0"],
                ["#other.c (2):limit", "1"],
                ["#clamp.h:4", "0"],
            ]) {
                await page.evaluate((to) => (location.hash = to), hash);
                await eventually(() => unit.inputValue(), value, hash);
            }
            await page.keyboard.press("o");
            const column = page
                .getByRole("group", { name: "Functions", exact: true })
                .locator("tbody td:nth-child(5)");
            assert.deepEqual(await column.allInnerTexts(), ["other.c: -O1", "other.c (2): -O3"]);
        },
        { hash: "#other.c%20(2):limit" },
    );
});

test("a function that several units have is told apart in the address", () => {
    const first = { ...other, name: "a.c" };
    const second = { ...other, name: "b.c" };
    return withPage(
        pageOf(first, second),
        async (page) => {
            const unit = page.getByRole("combobox", { name: "Unit" });
            assert.equal(await unit.inputValue(), "1");
            await line(code(page), "ret").click();
            await eventually(() => hashOf(page), "#b.c:limit+2");
        },
        { hash: "#b.c:limit" },
    );
});
