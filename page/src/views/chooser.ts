// A dialog with a line to type in and a list of what fits, chosen by keyboard or mouse.

import { h } from "../dom.ts";
import { openDialog } from "./dialog.ts";

export interface Choice {
    label: Node | string;
    detail: string;
    choose: () => void;
}

export interface ChooserOptions {
    label: string; // of the dialog
    placeholder: string;
    name: string; // class of the dialog
    text?: string; // to begin with
    // What fits; `show` may be called again as more is found. The signal ends a search
    // that nobody waits for.
    find(text: string, show: (choices: Choice[], note: string) => void, signal: AbortSignal): void;
}

export function openChooser(options: ChooserOptions): void {
    let choices: Choice[] = [];
    let selected = 0;
    let search = new AbortController();

    const list = h("ul", { role: "listbox", id: "choices", "aria-label": options.label });
    const note = h("p", { class: "muted", role: "status" });
    const input = h("input", {
        type: "text",
        role: "combobox",
        "aria-expanded": "true",
        "aria-controls": "choices",
        "aria-autocomplete": "list",
        "aria-label": options.placeholder,
        placeholder: options.placeholder,
        spellcheck: "false",
        autocomplete: "off",
        value: options.text ?? "",
    });
    const dialog = openDialog(options.label, `chooser ${options.name}`, input, list, note);

    const select = (index: number): void => {
        list.children[selected]?.setAttribute("aria-selected", "false");
        selected = Math.min(Math.max(index, 0), choices.length - 1);
        const item = list.children[selected];
        if (item) {
            item.setAttribute("aria-selected", "true");
            item.scrollIntoView({ block: "nearest" });
            input.setAttribute("aria-activedescendant", item.id);
        } else {
            input.removeAttribute("aria-activedescendant");
        }
    };
    const choose = (index: number): void => {
        const choice = choices[index];
        if (choice) {
            dialog.close();
            choice.choose();
        }
    };
    const show = (found: Choice[], text: string): void => {
        // What is there already stays: the list only grows while a search goes on.
        const kept = found.length >= choices.length && choices.every((c, i) => c === found[i]);
        const from = kept ? choices.length : 0;
        if (!kept) {
            list.replaceChildren();
        }
        choices = found.slice();
        list.append(
            ...found.slice(from).map((choice, i) =>
                h(
                    "li",
                    {
                        role: "option",
                        id: `choice-${from + i}`,
                        "aria-selected": "false",
                        click: () => choose(from + i),
                    },
                    h("span", { class: "choice-label" }, choice.label),
                    h("span", { class: "muted" }, choice.detail),
                ),
            ),
        );
        select(kept ? selected : 0);
        note.textContent = text;
    };
    const find = (): void => {
        search.abort();
        search = new AbortController();
        const { signal } = search;
        options.find(
            input.value,
            (found, text) => {
                if (!signal.aborted) {
                    show(found, text);
                }
            },
            signal,
        );
    };

    input.addEventListener("input", find);
    input.addEventListener("keydown", (event) => {
        const page = 8;
        const steps: Record<string, number> = {
            ArrowDown: 1,
            ArrowUp: -1,
            PageDown: page,
            PageUp: -page,
        };
        const step = steps[event.key];
        if (step !== undefined) {
            event.preventDefault();
            select(selected + step);
        } else if (event.key === "Enter") {
            event.preventDefault();
            choose(selected);
        }
    });
    dialog.addEventListener("close", () => search.abort());
    input.focus();
    input.select();
    find();
}
