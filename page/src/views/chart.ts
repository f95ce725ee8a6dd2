// The chart of functions: a rectangle for each, its area by instructions, its colour by
// the share of them that was inlined. Drawn as SVG of our own: a treemap is one page of
// code, and a library of charts would be larger than the rest of the page.

import type { CodeFunction } from "../data/project.ts";
import { count, h, number, percent, svg, visible } from "../dom.ts";
import { briefName, cutName, shortName } from "../text/names.ts";
import { toldName } from "./function_name.ts";

interface Box {
    x: number;
    y: number;
    width: number;
    height: number;
}

// More rectangles than these could not be told apart.
const mostShown = 1_500;

// Lays out areas, largest first, in rows along the shorter side of what is left, each row
// as long as its rectangles get squarer by it.
export function treemap(areas: number[], box: Box): Box[] {
    const total = areas.reduce((sum, area) => sum + area, 0);
    const scale = total > 0 ? (box.width * box.height) / total : 0;
    const boxes: Box[] = [];
    const left = { ...box };
    for (let first = 0; first < areas.length;) {
        const side = Math.min(left.width, left.height);
        let last = first;
        let sum = 0;
        let worst = Infinity;
        while (last < areas.length) {
            const next = sum + areas[last] * scale;
            const thick = next / side;
            const ratio = (area: number): number => {
                const long = (area * scale) / thick;
                return Math.max(long / thick, thick / long);
            };
            const worse = Math.max(ratio(areas[first]), ratio(areas[last]));
            if (worse > worst) {
                break;
            }
            worst = worse;
            sum = next;
            ++last;
        }
        const thick = side > 0 ? sum / side : 0;
        let at = 0;
        for (let i = first; i < last; ++i) {
            const long = thick > 0 ? (areas[i] * scale) / thick : 0;
            boxes.push(
                left.width >= left.height
                    ? { x: left.x, y: left.y + at, width: thick, height: long }
                    : { x: left.x + at, y: left.y, width: long, height: thick },
            );
            at += long;
        }
        if (left.width >= left.height) {
            left.x += thick;
            left.width -= thick;
        } else {
            left.y += thick;
            left.height -= thick;
        }
        first = last;
    }
    return boxes;
}

// What is short first: a name may be longer than all of the rest.
function describe(f: CodeFunction): string {
    const brief = briefName(f.name);
    return (
        `${visible(brief)}\n${count(f.instructions, "instruction")}, ` +
        `${percent(f.inlined, f.instructions)} inlined` +
        (f.file ? `\n${visible(f.file.name)}:${f.line}` : "") +
        (brief === f.name ? "" : `\n${toldName(f.name)}`)
    );
}

function shareClass(f: CodeFunction): string {
    return `share-${f.instructions > 0 ? Math.round((10 * f.inlined) / f.instructions) : 0}`;
}

function cell(f: CodeFunction, box: Box, choose: (f: CodeFunction) => void): SVGElement {
    return svg("rect", {
        class: `cell ${shareClass(f)}`,
        role: "button",
        tabindex: "-1",
        "aria-label": describe(f).replaceAll("\n", ", "),
        "data-tip": describe(f),
        click: () => choose(f),
        x: box.x,
        y: box.y,
        width: Math.max(box.width - 1, 0.5),
        height: Math.max(box.height - 1, 0.5),
        rx: Math.min(3, box.width / 4, box.height / 4),
    });
}

// What is written on a cell, as far as there is room. Screen readers have the cell itself.
function cellText(f: CodeFunction, box: Box): SVGElement | null {
    const letters = Math.floor((box.width - 8) / 6.4);
    if (letters < 3 || box.height < 16) {
        return null;
    }
    const room = box.height >= 32 && box.width >= 40;
    return svg(
        "g",
        { class: `cell-text ${shareClass(f)}` },
        svg("text", { x: box.x + 5, y: box.y + 13 }, cutName(visible(shortName(f.name)), letters)),
        room &&
            svg("text", { x: box.x + 5, y: box.y + 27, class: "figure" }, number(f.instructions)),
    );
}

// One stop for the Tab key; arrows go through the functions by size.
function arrows(chart: SVGElement, choose: (index: number) => void): void {
    const cells = [...chart.querySelectorAll<SVGElement>(".cell")];
    let at = 0;
    cells[0]?.setAttribute("tabindex", "0");
    chart.addEventListener("keydown", (event) => {
        const steps: Record<string, number> = {
            ArrowRight: 1,
            ArrowDown: 1,
            ArrowLeft: -1,
            ArrowUp: -1,
        };
        const step = steps[event.key];
        if (step !== undefined || event.key === "Home" || event.key === "End") {
            event.preventDefault();
            cells[at]?.setAttribute("tabindex", "-1");
            at =
                event.key === "Home"
                    ? 0
                    : event.key === "End"
                      ? cells.length - 1
                      : Math.min(Math.max(at + step, 0), cells.length - 1);
            cells[at]?.setAttribute("tabindex", "0");
            cells[at]?.focus();
        } else if (event.key === "Enter" || event.key === " ") {
            event.preventDefault();
            choose(at);
        }
    });
}

export function drawChart(
    element: HTMLElement,
    functions: CodeFunction[],
    choose: (f: CodeFunction) => void,
): void {
    const sorted = functions
        .filter((f) => f.instructions > 0)
        .sort((a, b) => b.instructions - a.instructions);
    const shown = sorted.slice(0, mostShown);
    const width = Math.max(element.clientWidth, 200);
    const height = Math.max(element.clientHeight, 160);
    const boxes = treemap(
        shown.map((f) => f.instructions),
        { x: 0, y: 0, width, height },
    );
    const chart = svg("svg", {
        viewBox: `0 0 ${width} ${height}`,
        role: "group",
        "aria-label": "Functions by size and by inlined share",
    });
    chart.append(
        ...shown.map((f, i) => cell(f, boxes[i], choose)),
        svg("g", { "aria-hidden": "true" }, ...shown.map((f, i) => cellText(f, boxes[i]))),
    );
    arrows(chart, (index) => choose(shown[index]));
    element.replaceChildren(chart);
}

export function legend(): HTMLElement {
    return h(
        "p",
        { class: "legend muted" },
        "Area: instructions. Inlined: 0\u202f% ",
        ...Array.from({ length: 11 }, (_, step) => h("span", { class: `swatch share-${step}` })),
        " 100\u202f%",
    );
}
