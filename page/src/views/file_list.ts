// The list of files, those with most code first, with a bar for how much each has.

import type { Project, SourceFile } from "../data/project.ts";
import { count, h, number, visible } from "../dom.ts";

// A list that is longer can be narrowed.
const longList = 12;

export class FileList {
    private readonly items = new Map<SourceFile, HTMLElement>();

    constructor(element: HTMLElement, project: Project, choose: (file: SourceFile) => void) {
        const most = Math.max(1, project.files[0]?.instructions ?? 1);
        const list = h("ul");
        for (const file of project.files) {
            const item = h(
                "button",
                {
                    type: "button",
                    class: file.system ? "system" : null,
                    "data-tip": `${visible(file.path)}\n${count(file.instructions, "instruction")}${file.ofAll}${file.missing ? "\nthe source was not found" : ""}`,
                    click: () => choose(file),
                },
                h("bdi", { class: "file-name" }, visible(file.name)),
                h("span", { class: "file-count" }, number(file.instructions)),
                h("span", { class: "file-bar" }),
            );
            item.style.setProperty("--share", String(file.instructions / most));
            this.items.set(file, item);
            list.append(h("li", null, item));
        }
        element.append(
            h("h2", null, "Files ", h("span", { class: "muted" }, number(project.files.length))),
        );
        if (project.files.length > longList) {
            const search = h("input", {
                type: "search",
                "aria-label": "Narrow the list of files",
                placeholder: "Narrow",
                spellcheck: "false",
            });
            search.addEventListener("input", () => {
                const text = search.value.toLowerCase();
                for (const [file, item] of this.items) {
                    item.parentElement!.hidden = !file.path.toLowerCase().includes(text);
                }
            });
            element.append(search);
        }
        element.append(list);
    }

    setCurrent(file: SourceFile | null): void {
        for (const [other, item] of this.items) {
            if (other === file) {
                item.setAttribute("aria-current", "true");
                item.scrollIntoView({ block: "nearest" });
            } else {
                item.removeAttribute("aria-current");
            }
        }
    }

    // Marks the file of what is pointed at.
    setLinked(file: SourceFile | null): void {
        for (const [other, item] of this.items) {
            item.classList.toggle("linked-file", other === file);
        }
    }
}
