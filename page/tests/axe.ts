// axe-core, which knows what people with other senses than eyes need of a page.

import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import type { Page } from "playwright-core";

const axe = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");

interface Finding {
    id: string;
    impact: string;
    nodes: { html: string; failureSummary: string }[];
}

// What axe finds that is serious, or worse.
export async function seriousFaults(page: Page): Promise<string[]> {
    // Run beside the page's own script, whose policy lets nothing else in.
    const session = await page.context().newCDPSession(page);
    const { frameTree } = await session.send("Page.getFrameTree");
    const { executionContextId } = await session.send("Page.createIsolatedWorld", {
        frameId: frameTree.frame.id,
    });
    await session.send("Runtime.evaluate", { expression: axe, contextId: executionContextId });
    const { result } = await session.send("Runtime.evaluate", {
        expression:
            "axe.run(document, { resultTypes: ['violations'] }).then((r) => JSON.stringify(r.violations))",
        contextId: executionContextId,
        awaitPromise: true,
    });
    return (JSON.parse(result.value as string) as Finding[])
        .filter((found) => found.impact === "serious" || found.impact === "critical")
        .map((found) => `${found.id}: ${found.nodes[0].html} ${found.nodes[0].failureSummary}`);
}
