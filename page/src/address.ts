// The place in the page's address: #FILE:LINE, or #FUNCTION with +N behind it for its
// Nth row. A function's symbol that several units have stands behind its unit's file.

import type { CodeFunction, InlinedFunction, Project, SourceFile } from "./data/project.ts";

export type Target =
    | { file: SourceFile; line: number }
    | { function: CodeFunction; row: number } // counted from the function's first
    | { inlined: InlinedFunction }
    | "overview";

function encode(text: string): string {
    return encodeURIComponent(text).replace(/%(?:2F|3A|2B|24|40|2C)/gi, decodeURIComponent);
}

export function addressOfLine(file: SourceFile, line: number): string {
    return `#${encode(file.name)}:${line}`;
}

export function addressOfRow(project: Project, f: CodeFunction, row: number): string {
    const alone = project.bySymbol.get(f.symbol)?.length === 1;
    const name = alone ? f.symbol : `${project.heads[f.unit].name}:${f.symbol}`;
    return `#${encode(name)}${row > f.row ? `+${row - f.row}` : ""}`;
}

function functionOf(project: Project, name: string): CodeFunction | null {
    const found = project.functionNamed(name);
    const colon = name.indexOf(":");
    if (found || colon < 0) {
        return found;
    }
    const unit = project.heads.findIndex((head) => head.name === name.slice(0, colon));
    const symbol = name.slice(colon + 1);
    return project.bySymbol.get(symbol)?.find((f) => f.unit === unit) ?? null;
}

export function addressText(hash: string): string {
    const text = hash.replace(/^#/, "");
    try {
        return decodeURIComponent(text);
    } catch {
        return text;
    }
}

// What an address shows; null when it names nothing on this page.
export function targetOf(project: Project, hash: string): Target | null {
    const text = addressText(hash);
    if (text === "") {
        return null;
    }
    if (text === "overview") {
        return "overview";
    }
    const place = /^(.+):(\d+)$/.exec(text);
    const file = place && project.fileNamed(place[1]);
    if (place && file) {
        return { file, line: Number(place[2]) };
    }
    const whole = functionOf(project, text);
    if (whole) {
        return { function: whole, row: 0 };
    }
    const within = /^(.+)\+(\d+)$/.exec(text);
    const inner = within && functionOf(project, within[1]);
    if (within && inner) {
        return { function: inner, row: Math.min(Number(within[2]), inner.rows - 1) };
    }
    const inlined = project.inlinedNamed(text);
    if (inlined) {
        return { inlined };
    }
    const named = project.fileNamed(text);
    return named ? { file: named, line: 1 } : null;
}

// `far` makes a step that the browser's Back takes back.
export function setAddress(hash: string, far: boolean): void {
    if (location.hash === hash) {
        return;
    }
    if (far) {
        history.pushState(null, "", hash);
    } else {
        history.replaceState(null, "", hash);
    }
}
