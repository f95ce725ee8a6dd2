// Goes to a function by a few letters of its name, or to a file.

import type { CodeFunction, InlinedFunction, Project, SourceFile } from "../data/project.ts";
import { count, h, visible } from "../dom.ts";
import { fit, shortName } from "../text/names.ts";
import { type Choice, openChooser } from "./chooser.ts";
import { nameLine } from "./function_name.ts";

const mostShown = 60;

// The best of `items` by how well `text` fits their names; all of them, in their order,
// when there is no text.
function best<T>(
    items: T[],
    text: string,
    nameOf: (item: T) => string,
    shortOf: (item: T) => string,
): T[] {
    if (!text) {
        return items.slice(0, mostShown);
    }
    return items
        .map((item) => ({ item, score: fit(text, nameOf(item), shortOf(item)) }))
        .filter((entry) => entry.score >= 0)
        .sort((a, b) => b.score - a.score)
        .slice(0, mostShown)
        .map((entry) => entry.item);
}

// Functions that stand nowhere by themselves come behind others that fit as well.
export function openFunctionJump(
    project: Project,
    choose: (f: CodeFunction) => void,
    chooseInlined: (f: InlinedFunction) => void,
): void {
    const more = (a: { instructions: number }, b: { instructions: number }): number =>
        b.instructions - a.instructions;
    const candidates = [
        ...project.functions.toSorted(more).map((f) => ({
            name: f.name,
            where: f.file ? `${visible(f.file.name)}:${f.line} \u00b7 ` : "",
            instructions: f.instructions,
            choose: () => choose(f),
        })),
        ...project.inlined.toSorted(more).map((f) => ({
            name: f.name,
            where: `inlined, ${visible(f.file.name)}:${f.line} \u00b7 `,
            instructions: f.instructions,
            choose: () => chooseInlined(f),
        })),
    ];
    openChooser({
        label: "Go to a function",
        placeholder: "Function: a few letters of its name",
        name: "function-jump",
        find(text, show) {
            const found = best(
                candidates,
                text.trim(),
                (f) => f.name,
                (f) => shortName(f.name),
            );
            show(
                found.map((f): Choice => ({
                    label: nameLine(f.name),
                    detail: f.where + count(f.instructions, "instruction"),
                    choose: f.choose,
                })),
                found.length === 0 ? "No function fits." : "",
            );
        },
    });
}

export function openFileJump(project: Project, choose: (file: SourceFile) => void): void {
    openChooser({
        label: "Go to a file",
        placeholder: "File: a few letters of its name",
        name: "file-jump",
        find(text, show) {
            const found = best(
                project.files,
                text.trim(),
                (file) => file.path,
                (file) => file.path.slice(file.path.lastIndexOf("/") + 1),
            );
            show(
                found.map((file): Choice => ({
                    label: h("bdi", null, visible(file.name)),
                    detail: `${visible(file.path)} \u00b7 ${count(file.instructions, "instruction")}`,
                    choose: () => choose(file),
                })),
                found.length === 0 ? "No file fits." : "",
            );
        },
    });
}
