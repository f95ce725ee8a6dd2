// The script that stands in the page as it is: unpacks the page's script, which is half
// of what a small page weighs, and runs it. The security policy knows both by their hashes.

import { takeChunk } from "./data/chunks.ts";

interface Policy {
    createScript(text: string): string;
}

interface PolicyFactory {
    createPolicy(name: string, rules: Policy): Policy;
}

async function load(): Promise<void> {
    const text = await takeChunk("script");
    const script = document.createElement("script");
    const factory = (window as { trustedTypes?: PolicyFactory }).trustedTypes;
    script.text =
        factory?.createPolicy("clist", { createScript: (own) => own }).createScript(text) ?? text;
    document.body.append(script);
}

load().catch((error: unknown) => {
    document.querySelector("#loading")!.textContent =
        `This page needs a browser of 2023 or later (${String(error)}).`;
});
