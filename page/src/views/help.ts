// The card of keys, and what the colours of the page mean.

import { h } from "../dom.ts";
import { type KeyRow, keyTable } from "../keys.ts";
import { closeButton, openDialog } from "./dialog.ts";

const signs: [string, string][] = [
    ["linked", "belongs to the line that is pointed at"],
    ["inlined-here", "code that was inlined at the line"],
    ["call-site", "a line where the code was inlined"],
];

export function openHelp(): void {
    const keys: readonly KeyRow[] = keyTable;
    const groups = [...new Set(keys.map((row) => row.group))];
    openDialog(
        "Keys",
        "help",
        closeButton(),
        h("h2", null, "Keys"),
        h(
            "div",
            { class: "key-groups" },
            ...groups.map((group) =>
                h(
                    "section",
                    null,
                    h("h3", null, group),
                    h(
                        "dl",
                        null,
                        ...keys
                            .filter((row) => row.group === group)
                            .flatMap((row) => [
                                h(
                                    "dt",
                                    null,
                                    ...row.keys.flatMap((key, i) => [
                                        i > 0 && " ",
                                        h("kbd", null, key),
                                    ]),
                                ),
                                h("dd", null, row.label),
                            ]),
                    ),
                ),
            ),
            h(
                "section",
                null,
                h("h3", null, "Signs"),
                h(
                    "dl",
                    { class: "signs" },
                    ...signs.flatMap(([name, meaning]) => [
                        h("dt", null, h("span", { class: `sample ${name}` }, "line")),
                        h("dd", null, meaning),
                    ]),
                    h("dt", null, h("span", { class: "heat heat-5" }, "12")),
                    h(
                        "dd",
                        null,
                        "instructions of a source line, copies and inlined ones included",
                    ),
                    h("dt", null, h("span", { class: "inlines" }, "\u21b412")),
                    h("dd", null, "so many instructions were inlined at this line"),
                    h("dt", null, h("span", { class: "inlined" }, "\u2197")),
                    h("dd", null, "this line\u2019s code was inlined elsewhere"),
                    h(
                        "dt",
                        null,
                        h("span", { class: "bar bar-1" }),
                        h("span", { class: "bar bar-3" }),
                    ),
                    h("dd", null, "inlined code, a bar for each level, a colour for each function"),
                ),
            ),
        ),
    );
}
