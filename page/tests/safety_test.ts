// Text from sources, names and files is data. Whatever it says, the page shows it and
// does nothing else; it runs its own script, keeps its own style and fetches nothing.

import assert from "node:assert/strict";
import { createHash } from "node:crypto";
import { readFileSync } from "node:fs";
import { createServer } from "node:http";
import type { AddressInfo } from "node:net";
import { test } from "node:test";
import { fileURLToPath } from "node:url";
import { code, eventually, line, marked, source, useBrowser, withPage } from "./browser.ts";
import { type MadeUnit, pageOf } from "./made_page.ts";
import { sum } from "./samples.ts";

useBrowser();

const attack = `</script><script>document.title="owned"</script><img src=x onerror='document.title="owned"'>`;

// A source, a path, a function and a command that try to be markup.
function hostile(text: string): MadeUnit {
    const path = `/src/${text}/a "quoted" & 'single' ${text}.c`;
    return {
        name: `${text}.c`,
        command: ["gcc", `-D${text}`, text],
        sources: { [path]: `int f(void) { return 1; } // ${text}\n${text}\n` },
        functions: [
            {
                name: `f<${text}>`,
                symbol: `f${text}`,
                rows: [
                    [`\tmovl\t$1, %eax # ${text}`, [`g${text}`, path, 2], [`f${text}`, path, 1]],
                    [`\tcall\t${text}`, [`f${text}`, path, 1]],
                ],
            },
        ],
    };
}

const texts: [name: string, text: string][] = [
    ["a script's end", attack],
    ["a symbol with an image", "<img src=x onerror=alert(1)>"],
    ["quotes", `"'\`\${alert(1)}`],
    ["a comment's end", "--><svg onload=alert(1)>"],
    ["entities", "&lt;b&gt;&#60;b&#62;&quot;"],
    ["template text", "$& $1 $$ @DATA@ {{x}}"],
    ["a link", "javascript:alert(1)"],
    ["surrogates and a letter beyond the plane", "\ud83d\ude00 \u{10ffff} a\u0301"],
];
for (const [name, text] of texts) {
    test(`${name}: shown as it stands, everywhere`, () =>
        withPage(pageOf(hostile(text)), async (page) => {
            const shows = async (selector: string, what = text): Promise<void> => {
                const all = (await page.locator(selector).allTextContents()).join("\n");
                assert.ok(all.includes(what), `${selector}: ${all}`);
            };
            const lastPart = text.split("/").at(-1)!; // what a file goes by

            await shows("#source .cm-content");
            await shows("#code .cm-content");
            await shows("#title");
            if (!text.includes("'")) {
                await shows("#made"); // quotes are quoted there, as for a shell
            }
            await shows("#files", lastPart);
            await shows("#source .pane-head", lastPart);
            await shows("#code .pane-head");
            await line(code(page), "movl").click();
            await shows("#status", lastPart);
            await eventually(async () => (await marked(source(page), "linked")).length, 1);
            for (const key of ["f", "e"]) {
                await page.keyboard.press(key);
                await shows("dialog", lastPart);
                await page.keyboard.press("Escape");
            }
            await page.keyboard.press("F");
            await page.keyboard.type("int f");
            await page.getByRole("option").first().waitFor();
            await shows("dialog");
            await page.keyboard.press("Escape");
            await page.keyboard.press("o");
            await shows("#overview");
            await page.locator(".cell").first().hover();
            await shows("#tip");
            await page.emulateMedia({ media: "print" });
            assert.equal(
                await page.locator("img:not(.cm-widgetBuffer), svg:not(.chart-area > svg)").count(),
                0,
            );
            assert.equal(await page.title(), `${text}.c \u2013 clist`);
            assert.ok(!page.url().includes("<"));
        }));
}

test("characters that turn the text around are made visible", () =>
    withPage(pageOf(hostile("\u202egnp.\u2066exe\u2069\u200b")), async (page) => {
        const title = await page.locator("#title").innerText();
        assert.equal(
            title,
            "\u27e8U+202E\u27e9gnp.\u27e8U+2066\u27e9exe\u27e8U+2069\u27e9\u27e8U+200B\u27e9.c",
        );
        for (const place of ["#files", "#made", "#source .pane-head", "#code .pane-head"]) {
            const text = (await page.locator(place).allInnerTexts()).join("");
            assert.doesNotMatch(text, /[\u202a-\u202e\u2066-\u2069]/u);
        }
        // The editor puts a sign in place of each.
        assert.ok((await source(page).locator(".cm-specialChar").count()) >= 4);
    }));

test("bytes that are no text are shown, too", () => {
    const unit = structuredClone(sum);
    unit.sources["/src/demo/sum.c"] = unit.sources["/src/demo/sum.c"]!.replace(
        "at nothing",
        "\u0000\u0001\u001b[31m\u007f\ufffd\f\v",
    );
    return withPage(pageOf(unit), async (page) => {
        await line(code(page), "testl").click();
        await eventually(() => marked(source(page), "linked"), ["for (int i = 0; i < n; i++)"]);
        assert.ok((await source(page).locator(".cm-specialChar").count()) >= 5);
    });
});

test("lines end as they end in the file: CR LF is one end, the last newline ends a line", () => {
    const unit = structuredClone(sum);
    unit.sources["/src/demo/sum.c"] = unit.sources["/src/demo/sum.c"]!.replaceAll("\n", "\r\n");
    return withPage(pageOf(unit), async (page) => {
        assert.equal(await source(page).locator(".cm-line").count(), 13);
        await line(code(page), "testl").click();
        await eventually(() => marked(source(page), "linked"), ["for (int i = 0; i < n; i++)"]);
    });
});

test("a very long line does not hold the page up", () => {
    const unit = structuredClone(sum);
    unit.sources["/src/demo/sum.c"] += `int x[] = {${"1, ".repeat(1_000_000)}};\n`;
    return withPage(pageOf(unit), async (page) => {
        await page.evaluate(() => (location.hash = "#sum.c:14"));
        await line(source(page), "int x[]").waitFor();
    });
});

test("a unit without code, without files, without functions", () =>
    withPage(pageOf({ name: "empty.c", sources: {}, functions: [] }), async (page) => {
        assert.equal(await page.locator("#title").innerText(), "empty.c");
        for (const key of ["s", "Enter", "n", "p", "i", "]", "a", "o", "f"]) {
            await page.keyboard.press(key);
        }
    }));

test("deep inlining is no trouble", () => {
    const unit = structuredClone(sum);
    const chain = Array.from({ length: 2_000 }, (_, i): [string, string, number] => [
        `f${i}`,
        "/src/demo/sum.c",
        4,
    ]);
    unit.functions[0].rows.push(["\tnop", ...chain]);
    return withPage(pageOf(unit), async (page) => {
        await line(code(page), "nop").click();
        await eventually(() => marked(source(page), "linked"), ["return clamp(x * 3);"]);
    });
});

const pageFile = (address: string): string => readFileSync(fileURLToPath(address), "utf8");

test("the policy lets in the page's own script and style by their hashes, and nothing else", () => {
    const text = pageFile(pageOf(sum));
    const policy = /http-equiv="Content-Security-Policy" content="([^"]*)"/.exec(text)![1];
    const hash = (content: string): string =>
        `'sha256-${createHash("sha256").update(content).digest("base64")}'`;
    const rules = new Map(
        policy.split("; ").map((rule): [string, string[]] => {
            const [name, ...values] = rule.split(" ");
            return [name, values];
        }),
    );
    assert.deepEqual(rules.get("default-src"), ["'none'"]);
    assert.deepEqual(rules.get("base-uri"), ["'none'"]);
    assert.deepEqual(rules.get("form-action"), ["'none'"]);
    assert.deepEqual(rules.get("require-trusted-types-for"), ["'script'"]);
    assert.deepEqual(rules.get("style-src"), [hash(/<style>([^]*?)<\/style>/.exec(text)![1])]);
    const scripts = [...text.matchAll(/<script>([^]*?)<\/script>/g)].map((m) => m[1]);
    assert.equal(scripts.length, 1, "the script that unpacks the other");
    assert.equal(rules.get("script-src")!.length, 2);
    assert.equal(rules.get("script-src")![0], hash(scripts[0]));
    // The policy stands in front of all that it rules.
    assert.ok(text.indexOf("Content-Security-Policy") < text.indexOf("<style>"));
    assert.doesNotMatch(policy, /unsafe|https?:|\*/);
});

test("what the page did not bring is stopped", () =>
    withPage(
        pageOf(sum),
        async (page) => {
            const stopped = await page.evaluate(async () => {
                const events: string[] = [];
                document.addEventListener("securitypolicyviolation", (event) =>
                    events.push(event.effectiveDirective),
                );
                const style = document.createElement("style");
                style.textContent = "body { display: none }";
                document.head.append(style);
                const image = document.createElement("img");
                image.src = "https://example.invalid/x.png";
                document.body.append(image);
                const failed: string[] = [];
                const tries: [string, () => void][] = [
                    ["markup", () => (document.body.innerHTML = "<b>x</b>")],
                    ["script", () => (document.createElement("script").text = "1")],
                ];
                for (const [name, act] of tries) {
                    try {
                        act();
                    } catch {
                        failed.push(name);
                    }
                }
                await fetch("https://example.invalid/").catch(() => failed.push("fetch"));
                const elsewhere = "https://example.invalid/x.js";
                await import(elsewhere).catch(() => failed.push("import"));
                await new Promise((resolve) => setTimeout(resolve, 100));
                return { events: [...new Set(events)].sort(), failed };
            });
            assert.deepEqual(stopped.failed, ["markup", "script", "fetch", "import"]);
            for (const rule of [
                "connect-src",
                "img-src",
                "script-src-elem",
                "style-src-elem",
                "require-trusted-types-for",
            ]) {
                assert.ok(stopped.events.includes(rule), `${rule} in ${stopped.events.join(", ")}`);
            }
        },
        // The browser reports each of these, which is otherwise silent; requests before it
        // stops them.
        {
            complaints:
                /Content Security Policy|This document requires 'Trusted|^request: https:\/\/example\.invalid\//,
        },
    ));

test("nothing in the page names another place to load from", () => {
    const text = pageFile(pageOf(sum)).replace(/^<!--[^]*?-->/m, "");
    assert.doesNotMatch(text, /<(?:link|iframe|object|embed|base|form)\b/);
    assert.doesNotMatch(text, /\b(?:src|href)=/);
    assert.doesNotMatch(text, /@import|url\(/);
});

test("the page works from a server, too, and asks it for nothing but itself", async () => {
    const text = pageFile(pageOf(sum));
    const asked: string[] = [];
    const server = createServer((request, response) => {
        asked.push(request.url!);
        response.setHeader("Content-Type", "text/html; charset=utf-8");
        response.end(text);
    });
    await new Promise<void>((resolve) => server.listen(0, "127.0.0.1", resolve));
    try {
        const { port } = server.address() as AddressInfo;
        await withPage(`http://127.0.0.1:${port}/demo.html`, async (page) => {
            await line(source(page), "for (int i").click();
            await eventually(async () => (await marked(code(page), "linked")).length, 4);
            await eventually(() => page.evaluate(() => location.hash), "#sum.c:10");
        });
        assert.deepEqual(
            asked.filter((url) => url !== "/favicon.ico"),
            ["/demo.html"],
        );
    } finally {
        server.close();
    }
});
