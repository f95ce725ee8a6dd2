// What is printed: the function that is on the screen, its code under the source lines
// that it comes from. The panes hold only what can be seen, so this is written out when
// printing begins and removed afterwards.

import type { Text } from "@codemirror/state";
import type { CodeFunction, Project } from "../data/project.ts";
import { count, h, percent, visible } from "../dom.ts";
import { commandLine, madeAt } from "./overview.ts";
import type { Unit } from "../data/unit.ts";

// Texts that are at hand when printing begins; it does not wait.
const texts = new Map<number, Text>();

export async function preparePrint(project: Project, unit: Unit, f: CodeFunction): Promise<void> {
    const files = new Set<number>();
    for (let row = f.row; row < f.row + f.rows; ++row) {
        const frame = unit.frameOfRow[row];
        if (frame >= 0) {
            files.add(unit.rows.frame_file[frame]);
        }
    }
    await Promise.all(
        [...files].map(async (number) => {
            const file = project.fileOf(unit.number, number);
            if (file && !file.missing) {
                texts.set(file.number, await file.load());
            }
        }),
    );
}

function lines(project: Project, unit: Unit, f: CodeFunction): HTMLElement[] {
    const out: HTMLElement[] = [];
    let last = "";
    for (let row = f.row; row < f.row + f.rows; ++row) {
        const frame = unit.frameOfRow[row];
        if (frame >= 0 && unit.instruction[row]) {
            const chain = unit.chain(frame);
            const { file: number, line } = chain[0];
            const file = project.fileOf(unit.number, number);
            const place = project.placeOf(unit.number, chain[0]);
            const key = `${frame}`;
            if (key !== last) {
                last = key;
                const text = texts.get(file?.number ?? -1);
                const source = text && line <= text.lines ? text.line(line).text : "";
                const into = chain
                    .slice(1)
                    .map((at) => project.placeOf(unit.number, at))
                    .join(", ");
                out.push(
                    h(
                        "div",
                        { class: "print-source" },
                        h("span", null, place + (into ? ` (inlined at ${into})` : "")),
                        source.trim() === "" ? "" : ` | ${source}`,
                    ),
                );
            }
        }
        out.push(h("div", { class: "print-code" }, unit.code.line(row + 1).text));
    }
    return out;
}

export function startPrint(
    project: Project,
    shown: () => { unit: Unit; function: CodeFunction } | null,
): void {
    const element = document.querySelector<HTMLElement>("#print")!;
    const write = (): void => {
        const now = shown();
        if (!now) {
            element.replaceChildren();
            return;
        }
        const { unit, function: f } = now;
        const { head } = unit;
        element.replaceChildren(
            h("h1", null, visible(f.name)),
            h(
                "p",
                null,
                `${count(f.instructions, "instruction")}, ${percent(f.inlined, f.instructions)} inlined. `,
                visible(head.command.length > 0 ? commandLine(head.command) : head.name),
                ` (${visible([head.compiler, head.program, madeAt(head.made)].filter(Boolean).join(", "))})`,
            ),
            h("pre", null, ...lines(project, unit, f)),
        );
    };
    addEventListener("beforeprint", write);
    addEventListener("afterprint", () => element.replaceChildren());
    matchMedia("print").addEventListener("change", (event) => {
        if (event.matches) {
            write();
        }
    });
}
