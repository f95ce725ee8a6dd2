// Finds text in all files and in all code, and goes to what is chosen.

import type { Project, SourceFile } from "../data/project.ts";
import { count, h, number, visible } from "../dom.ts";
import { type Choice, openChooser } from "./chooser.ts";

const mostFound = 1_000;
const longestShown = 160;
const linesAtOnce = 20_000;

export interface FoundActions {
    line(file: SourceFile, line: number): void;
    row(unit: number, row: number): void;
}

// The line with what was found in it set off, cut where it is long.
function excerpt(line: string, at: number, length: number): HTMLElement {
    const from = at > longestShown / 2 ? at - longestShown / 4 : 0;
    const before = line.slice(from, at).trimStart();
    const end = Math.max(at + length, from + longestShown);
    return h(
        "code",
        null,
        (from > 0 ? "\u2026" : "") + before,
        h("mark", null, line.slice(at, at + length)),
        line.slice(at + length, end),
    );
}

// Lower case where the text has no capital: then capitals do not matter.
function foldOf(text: string): (line: string) => string {
    return text === text.toLowerCase() ? (line) => line.toLowerCase() : (line) => line;
}

// `current` is the file on the screen, `text` what to begin with.
export function openFindEverywhere(
    project: Project,
    current: SourceFile | null,
    text: string,
    actions: FoundActions,
): void {
    openChooser({
        label: "Find in all files and all code",
        placeholder: "Find in all files and all code",
        name: "find-everywhere",
        text,
        find(query, show, signal) {
            show([], "");
            if (query.length > 0) {
                void findAll(project, query, current, actions, show, signal);
            }
        },
    });
}

async function findAll(
    project: Project,
    query: string,
    current: SourceFile | null,
    actions: FoundActions,
    show: (choices: Choice[], note: string) => void,
    signal: AbortSignal,
): Promise<void> {
    const fold = foldOf(query);
    const found: Choice[] = [];
    const search = async (
        name: string,
        lines: Iterable<string>,
        go: (line: number) => void,
    ): Promise<void> => {
        let line = 0;
        for (const text of lines) {
            const here = ++line;
            const at = fold(text).indexOf(query);
            if (at >= 0 && found.length < mostFound) {
                found.push({
                    label: excerpt(text, at, query.length),
                    detail: `${name}:${here}`,
                    choose: () => go(here),
                });
            }
            if (line % linesAtOnce === 0) {
                // Lets the reader type on.
                await new Promise((resolve) => setTimeout(resolve));
                if (signal.aborted) {
                    return;
                }
            }
        }
    };

    // What is on the screen first, and the project's own files before the system's.
    const rank = (file: SourceFile): number => (file === current ? 0 : file.system ? 2 : 1);
    for (const file of project.files.toSorted((a, b) => rank(a) - rank(b))) {
        if (!file.missing && !signal.aborted && found.length < mostFound) {
            const text = await file.load();
            await search(visible(file.name), text.iterLines(), (line) => actions.line(file, line));
            show(found, `${count(found.length, "line")} so far\u2026`);
        }
    }
    for (let unit = 0; unit < project.heads.length; ++unit) {
        if (!signal.aborted && found.length < mostFound && project.pageOf(unit) === null) {
            const { code } = await project.unit(unit);
            await search(`code of ${visible(project.unitLabels[unit])}`, code.iterLines(), (line) =>
                actions.row(unit, line - 1),
            );
            show(found, `${count(found.length, "line")} so far\u2026`);
        }
    }
    show(
        found,
        found.length === mostFound
            ? `The first ${number(mostFound)} lines.`
            : `${count(found.length, "line")} found.`,
    );
}
