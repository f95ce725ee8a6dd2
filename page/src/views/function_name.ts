// A function's name where there is one line for it: what it is called first, then all of
// its name, as far as there is room; the tip has the rest.

import { h, visible } from "../dom.ts";
import { briefName } from "../text/names.ts";

// So many letters of a name are told beside a mouse.
const mostTold = 300;

export function toldName(name: string): string {
    return visible(name.length > mostTold ? name.slice(0, mostTold) + "\u2026" : name);
}

export function nameLine(name: string): HTMLElement {
    const brief = briefName(name);
    return h(
        "bdi",
        { class: "name-line", "data-tip": brief === name ? null : toldName(name) },
        visible(brief),
        brief !== name && h("span", { class: "muted" }, " ", visible(name)),
    );
}
