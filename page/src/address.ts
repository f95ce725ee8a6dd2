// The place in the page's address: #FILE:LINE, or #FUNCTION with +N behind it for its
// Nth row. What several units have stands behind its unit's name, where that matters.

import type { CodeFunction, InlinedFunction, Project, SourceFile } from "./data/project.ts";

export type Target =
    | { file: SourceFile; line: number; unit: number }
    | { function: CodeFunction; row: number } // counted from the function's first
    | { inlined: InlinedFunction }
    | "overview";

function encode(text: string): string {
    return encodeURIComponent(text).replace(/%(?:2F|3A|2B|24|40|2C)/gi, decodeURIComponent);
}

// Of a line as a unit shows it, which is told only where another would be shown without.
export function addressOfLine(
    project: Project,
    file: SourceFile,
    line: number,
    unit = file.unitOf(line),
): string {
    const other =
        file.numberIn(unit) >= 0 &&
        (unit !== file.unitOf(line) || project.fileNamed(file.name, null) !== file);
    return `#${encode(`${other ? `${project.unitNames[unit]}:` : ""}${file.name}:${line}`)}`;
}

export function addressOfRow(project: Project, f: CodeFunction, row: number): string {
    const alone = project.bySymbol.get(f.symbol)?.length === 1;
    const name = alone ? f.symbol : `${project.unitNames[f.unit]}:${f.symbol}`;
    return `#${encode(name)}${row > f.row ? `+${row - f.row}` : ""}`;
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
    const found = placeOf(project, text, null);
    if (found) {
        return found;
    }
    const unit = project.unitNames.findLastIndex((name) => text.startsWith(`${name}:`));
    return unit < 0 ? null : placeOf(project, text.slice(project.unitNames[unit].length + 1), unit);
}

// A place of any unit, or of one.
function placeOf(project: Project, text: string, unit: number | null): Target | null {
    const functionNamed = (name: string): CodeFunction | null =>
        unit === null
            ? project.functionNamed(name)
            : (project.bySymbol.get(name)?.find((f) => f.unit === unit) ?? null);
    const place = /^(.+):(\d+)$/.exec(text);
    const file = place && project.fileNamed(place[1], unit);
    if (place && file) {
        const line = Number(place[2]);
        return { file, line, unit: unit ?? file.unitOf(line) };
    }
    const whole = functionNamed(text);
    if (whole) {
        return { function: whole, row: 0 };
    }
    const within = /^(.+)\+(\d+)$/.exec(text);
    const inner = within && functionNamed(within[1]);
    if (within && inner) {
        return { function: inner, row: Math.min(Number(within[2]), inner.rows - 1) };
    }
    const inlined = unit === null ? project.inlinedNamed(text) : null;
    if (inlined) {
        return { inlined };
    }
    const named = project.fileNamed(text, unit);
    return named ? { file: named, line: 1, unit: unit ?? named.unitOf(1) } : null;
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
