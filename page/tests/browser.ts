// Opens pages in Debian's Chromium. Whatever a test does, the console must stay silent
// and no request may leave the page.

import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { after, before } from "node:test";
import { type Browser, type BrowserContextOptions, chromium, type Page } from "playwright-core";

let browser: Browser;

// Called once in each file of tests.
export function useBrowser(): void {
    before(async () => {
        browser = await chromium.launch({
            executablePath: process.env["CHROMIUM"] ?? "/usr/bin/chromium",
            args: [
                "--no-sandbox",
                "--disable-gpu",
                "--disable-quic",
                "--no-first-run",
                "--disable-background-networking",
                "--disable-component-update",
                "--disable-sync",
            ],
        });
    });
    after(() => browser.close());
}

export interface Options extends BrowserContextOptions {
    hash?: string;
    complaints?: RegExp; // what the console must say, and nothing else; silence if left out
}

// Opens a page, waits until it can be used, runs the test, and looks at what it said.
export async function withPage(
    address: string,
    test: (page: Page) => Promise<void>,
    { hash = "", complaints, ...options }: Options = {},
): Promise<void> {
    const context = await browser.newContext({
        viewport: { width: 1280, height: 800 },
        colorScheme: "light",
        ...options,
    });
    const said: string[] = [];
    context.on("console", (message) => said.push(`${message.type()}: ${message.text()}`));
    context.on("weberror", (error) => said.push(String(error.error())));
    const folder = address.slice(0, address.lastIndexOf("/") + 1);
    context.on("request", (request) => {
        // The pages themselves; a start page leads from one to another.
        if (!(request.isNavigationRequest() && request.url().startsWith(folder))) {
            said.push(`request: ${request.url()}`);
        }
    });
    try {
        const page = await context.newPage();
        page.setDefaultTimeout(10_000);
        await page.goto(address + hash);
        await ready(page);
        await test(page);
        const unexpected = said.filter((text) => !complaints?.test(text));
        assert.deepEqual(unexpected, []);
        assert.ok(!complaints || said.length > 0, "the console must complain");
    } catch (error) {
        if (said.length > 0 && !complaints) {
            throw new Error(`the page said: ${said.join("; ")}`, { cause: error });
        }
        throw error;
    } finally {
        await context.close();
    }
}

export async function ready(page: Page): Promise<void> {
    await page.locator('html[data-ready="true"]').waitFor({ state: "attached" });
}

export function source(page: Page): ReturnType<Page["getByRole"]> {
    return page.getByRole("region", { name: "Source" });
}

export function code(page: Page): ReturnType<Page["getByRole"]> {
    return page.getByRole("region", { name: "Code" });
}

// The line of a pane that has this text.
export function line(
    pane: ReturnType<Page["getByRole"]>,
    text: string,
): ReturnType<Page["locator"]> {
    return pane.locator(".cm-line", { hasText: text }).first();
}

// The texts of the lines with a class, in order.
export async function marked(pane: ReturnType<Page["getByRole"]>, name: string): Promise<string[]> {
    const texts = await pane.locator(`.cm-line.${name}`).allInnerTexts();
    return texts.map((text) => text.replace(/\s+/g, " ").trim());
}

// Whether all of an element can be seen: nothing cuts it, and nothing lies on it.
export const isSeen = (element: ReturnType<Page["locator"]>): Promise<boolean> =>
    element.evaluate((e) => {
        const box = e.getBoundingClientRect();
        const middle = (box.top + box.bottom) / 2;
        return [box.left + 2, box.right - 2].every((x) =>
            e.contains(document.elementFromPoint(x, middle)),
        );
    });

// The text on the sheets that a printer gets, without its spaces.
export async function printed(page: Page): Promise<string> {
    const input = await page.pdf();
    const { status, stdout } = spawnSync("pdftotext", ["-layout", "-", "-"], {
        input,
        encoding: "utf8",
    });
    assert.equal(status, 0, "pdftotext");
    return stdout.replace(/\s/g, "");
}

// Waits until `get` gives what is expected.
export async function eventually<T>(get: () => Promise<T>, expected: T, what = ""): Promise<void> {
    for (let tries = 0; ; ++tries) {
        const now = await get();
        try {
            assert.deepEqual(now, expected);
            return;
        } catch (error) {
            if (tries === 60) {
                throw what === "" ? error : new Error(what, { cause: error });
            }
            await new Promise((resolve) => setTimeout(resolve, 50));
        }
    }
}
