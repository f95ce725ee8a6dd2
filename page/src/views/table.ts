// A table that can be sorted by its heads and narrowed by a few letters.

import { h, number as formatted } from "../dom.ts";

export interface Column<T> {
    head: string;
    key: (row: T) => string | number; // sorts by it; numbers begin with the largest
    cell?: (row: T) => Node | string; // the key itself if left out
    roomy?: boolean; // only where a window has room for it
}

const rowsAtOnce = 200;

export function table<T>(
    label: string,
    rows: T[],
    columns: Column<T>[],
    textOf: (row: T) => string, // what a search looks at
): HTMLElement {
    let sorted = 0;
    let ascending = true;
    let limit = rowsAtOnce;
    const isNumber = columns.map(
        (column) => rows.length > 0 && typeof column.key(rows[0]) === "number",
    );

    const classOf = (i: number): string | null =>
        isNumber[i] ? "number" : columns[i].roomy ? "roomy" : null;
    const heads = columns.map((column, i) => {
        const button = h("button", { type: "button" }, column.head);
        button.addEventListener("click", () => sortBy(i));
        return h("th", { scope: "col", class: classOf(i) }, button);
    });
    const body = h("tbody");
    const told = h("p", { class: "muted", role: "status" });
    const more = h("button", { type: "button", class: "more" }, "Show more");
    const search = h("input", {
        type: "search",
        "aria-label": `Search ${label.toLowerCase()}`,
        placeholder: `Search ${label.toLowerCase()}`,
        spellcheck: "false",
    });

    const show = (): void => {
        const words = search.value.toLowerCase().split(/\s+/).filter(Boolean);
        const found = rows.filter((row) => {
            const text = textOf(row).toLowerCase();
            return words.every((word) => text.includes(word));
        });
        const { key } = columns[sorted];
        const sign = ascending ? 1 : -1;
        found.sort((a, b) => {
            const x = key(a);
            const y = key(b);
            return sign * (x < y ? -1 : x > y ? 1 : 0);
        });
        body.replaceChildren(
            ...found.slice(0, limit).map((row) =>
                h(
                    "tr",
                    null,
                    ...columns.map((column, i) => {
                        const value = column.cell?.(row) ?? column.key(row);
                        return h(
                            "td",
                            { class: classOf(i) },
                            typeof value === "number" ? formatted(value) : value,
                        );
                    }),
                ),
            ),
        );
        heads.forEach((head, i) => {
            if (i === sorted) {
                head.setAttribute("aria-sort", ascending ? "ascending" : "descending");
            } else {
                head.removeAttribute("aria-sort");
            }
        });
        told.textContent =
            found.length > limit
                ? `${formatted(limit)} of ${formatted(found.length)} shown`
                : formatted(found.length);
        more.hidden = found.length <= limit;
    };
    const sortBy = (column: number): void => {
        ascending = column === sorted ? !ascending : !isNumber[column];
        sorted = column;
        show();
    };

    search.addEventListener("input", () => {
        limit = rowsAtOnce;
        show();
    });
    more.addEventListener("click", () => {
        limit += 5 * rowsAtOnce;
        show();
    });
    const firstNumber = isNumber.indexOf(true);
    sorted = Math.max(firstNumber, 0);
    ascending = firstNumber < 0;
    show();
    return h(
        "section",
        { class: "table" },
        h("header", null, h("h2", null, label), told, search),
        h(
            "div",
            { class: "table-body", tabindex: "0", role: "group", "aria-label": label },
            h("table", null, h("thead", null, h("tr", null, ...heads)), body),
            more,
        ),
    );
}
