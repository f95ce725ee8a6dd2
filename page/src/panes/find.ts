// Finding in one pane: the editor's own search under a bar of the page's.

import {
    closeSearchPanel,
    findNext,
    findPrevious,
    getSearchQuery,
    openSearchPanel,
    search,
    SearchQuery,
    setSearchQuery,
} from "@codemirror/search";
import { EditorSelection, type Extension } from "@codemirror/state";
import { EditorView, type Panel, type ViewUpdate } from "@codemirror/view";
import { h, number } from "../dom.ts";

// Counting stops here; a query that finds more needs more letters.
const mostCounted = 9_999;

class FindBar implements Panel {
    readonly dom: HTMLElement;
    readonly top = true;
    private readonly text: HTMLInputElement;
    private readonly options: {
        button: HTMLButtonElement;
        name: "caseSensitive" | "regexp" | "wholeWord";
    }[];
    private readonly told: HTMLElement;
    private counting = 0;
    private following = false; // what is found is yet to be brought into view

    constructor(private readonly view: EditorView) {
        this.text = h("input", {
            type: "text",
            "aria-label": "Find",
            placeholder: "Find",
            "main-field": "true",
            spellcheck: "false",
            autocomplete: "off",
            input: () => this.commit(),
            keydown: (event: KeyboardEvent) => this.key(event),
        });
        const option = (
            name: FindBar["options"][number]["name"],
            label: string,
            sign: string,
        ): FindBar["options"][number] => {
            const button = h(
                "button",
                {
                    type: "button",
                    class: "toggle",
                    "aria-pressed": "false",
                    "data-tip": label,
                    "aria-label": label,
                },
                sign,
            );
            button.addEventListener("click", () => {
                const on = button.getAttribute("aria-pressed") !== "true";
                button.setAttribute("aria-pressed", String(on));
                this.commit();
            });
            return { button, name };
        };
        this.options = [
            option("caseSensitive", "Match case", "Aa"),
            option("wholeWord", "Whole words", "W"),
            option("regexp", "Regular expression", ".*"),
        ];
        this.told = h("span", { class: "found", role: "status" });
        const action = (
            label: string,
            sign: string,
            run: (view: EditorView) => boolean,
        ): HTMLElement =>
            h(
                "button",
                { type: "button", "aria-label": label, "data-tip": label, click: () => run(view) },
                sign,
            );
        this.dom = h(
            "div",
            { class: "find-bar", role: "search" },
            this.text,
            ...this.options.map((entry) => entry.button),
            this.told,
            action("Previous match", "\u2191", findPrevious),
            action("Next match", "\u2193", findNext),
            action("Close", "\u00d7", (at) => {
                const closed = closeSearchPanel(at);
                at.focus();
                return closed;
            }),
        );
        this.read();
    }

    mount(): void {
        this.text.select();
    }

    update(update: ViewUpdate): void {
        const changed = update.transactions.some((tr) =>
            tr.effects.some((e) => e.is(setSearchQuery)),
        );
        if (changed) {
            this.read();
        } else if (update.selectionSet) {
            this.count();
        }
    }

    private read(): void {
        const query = getSearchQuery(this.view.state);
        if (query.search !== this.text.value) {
            this.text.value = query.search;
        }
        for (const { button, name } of this.options) {
            button.setAttribute("aria-pressed", String(query[name]));
        }
        this.count();
    }

    private commit(): void {
        const set = Object.fromEntries(
            this.options.map(({ button, name }) => [
                name,
                button.getAttribute("aria-pressed") === "true",
            ]),
        );
        const query = new SearchQuery({ search: this.text.value, literal: true, ...set });
        if (!query.eq(getSearchQuery(this.view.state))) {
            this.following = true;
            this.view.dispatch({ effects: setSearchQuery.of(query) });
        }
    }

    private key(event: KeyboardEvent): void {
        if (event.key === "Enter") {
            event.preventDefault();
            this.commit();
            (event.shiftKey ? findPrevious : findNext)(this.view);
        } else if (event.key === "Escape") {
            event.preventDefault();
            event.stopPropagation();
            closeSearchPanel(this.view);
            this.view.focus();
        }
    }

    // Brings the first match behind the cursor into view, or else the first of all; the
    // cursor stays, so that a search that goes on typing begins where it began.
    private follow(query: SearchQuery, from: number): void {
        const { state } = this.view;
        const next = query.getCursor(state, from).next();
        const found = next.done ? query.getCursor(state).next() : next;
        if (!found.done) {
            const range = EditorSelection.range(found.value.from, found.value.to);
            this.view.dispatch({
                effects: EditorView.scrollIntoView(range, { y: "nearest", yMargin: 60 }),
            });
        }
    }

    // Says which of how many matches the selection is.
    private count(): void {
        clearTimeout(this.counting);
        this.counting = window.setTimeout(() => {
            const query = getSearchQuery(this.view.state);
            if (!query.search) {
                this.told.textContent = "";
                return;
            }
            if (!query.valid) {
                this.told.textContent = "not an expression";
                return;
            }
            const { from, to } = this.view.state.selection.main;
            if (this.following) {
                this.following = false;
                this.follow(query, from);
            }
            const cursor = query.getCursor(this.view.state);
            let total = 0;
            let current = 0;
            for (let at = cursor.next(); !at.done && total < mostCounted; at = cursor.next()) {
                ++total;
                if (at.value.from === from && at.value.to === to) {
                    current = total;
                }
            }
            const many = total === mostCounted ? `${number(total)}+` : number(total);
            this.told.textContent =
                total === 0 ? "none" : current ? `${number(current)} of ${many}` : many;
        }, 120);
    }
}

export const findExtension: Extension = search({
    top: true,
    createPanel: (view) => new FindBar(view),
});

export { findNext, findPrevious, openSearchPanel };
