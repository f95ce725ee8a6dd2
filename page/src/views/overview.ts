// The start page: how the page was made, the chart of functions, and the tables of
// functions, files and units.

import type { CodeFunction, Project, SourceFile } from "../data/project.ts";
import { count, h, number, percent, visible } from "../dom.ts";
import { addressOfLine, addressOfRow } from "../address.ts";
import { briefName } from "../text/names.ts";
import { drawChart, legend } from "./chart.ts";
import { nameLine } from "./function_name.ts";
import { table } from "./table.ts";

// A command as one would type it.
export function commandLine(command: string[]): string {
    return command
        .map((word) =>
            /^[\w@%+=:,./-]+$/.test(word) ? word : `'${word.replaceAll("'", "'\\''")}'`,
        )
        .join(" ");
}

export function madeAt(iso: string): string {
    const date = new Date(iso);
    return Number.isNaN(date.getTime())
        ? iso
        : date.toLocaleString("en-GB", { dateStyle: "medium", timeStyle: "short" });
}

function fact(value: string, name: string): HTMLElement {
    return h("div", { class: "fact" }, h("b", null, value), h("span", { class: "muted" }, name));
}

function counted(n: number, one: string): HTMLElement {
    return fact(number(n), n === 1 ? one : `${one}s`);
}

export class Overview {
    private drawn = false;
    private readonly chart = h("div", { class: "chart-area" });

    constructor(
        private readonly element: HTMLElement,
        private readonly project: Project,
        private readonly choose: (f: CodeFunction) => void,
    ) {
        new ResizeObserver(() => {
            if (this.drawn && !this.element.hidden) {
                this.drawChart();
            }
        }).observe(this.chart);
    }

    show(): void {
        if (!this.drawn) {
            this.drawn = true;
            this.element.append(
                this.facts(),
                this.chartSection(),
                this.functions(),
                this.files(),
                this.made(),
            );
        }
        this.drawChart();
    }

    private drawChart(): void {
        drawChart(this.chart, this.project.functions, this.choose);
    }

    // A place on this page, or on the page of its unit.
    private hrefOf(f: CodeFunction): string {
        const page = this.project.pageOf(f.unit);
        return page === null
            ? addressOfRow(this.project, f, f.row)
            : `${encodeURI(page)}#${encodeURIComponent(f.symbol)}`;
    }

    private hrefOfFile(file: SourceFile): string {
        const page = this.project.pageOf(file.units[0]?.unit ?? 0);
        return page === null
            ? addressOfLine(this.project, file, 1)
            : `${encodeURI(page)}${addressOfLine(this.project, file, 1)}`;
    }

    private facts(): HTMLElement {
        const { project } = this;
        const inlined = project.functions.reduce((sum, f) => sum + f.inlined, 0);
        return h(
            "section",
            { class: "facts", "aria-label": "In short" },
            project.heads.length > 1 && counted(project.heads.length, "unit"),
            counted(project.functions.length, "function"),
            counted(project.instructions, "instruction"),
            fact(percent(inlined, project.instructions), "of them inlined"),
            counted(project.files.length, "file"),
        );
    }

    private chartSection(): HTMLElement {
        return h(
            "section",
            { class: "chart", "aria-label": "Chart of functions" },
            h("header", null, h("h2", null, "Where the instructions are"), legend()),
            this.chart,
        );
    }

    private functions(): HTMLElement {
        const many = this.project.heads.length > 1;
        return table<CodeFunction>(
            "Functions",
            this.project.functions,
            [
                {
                    head: "Function",
                    key: (f) => `${briefName(f.name)} ${f.name}`,
                    cell: (f) => h("a", { href: this.hrefOf(f) }, nameLine(f.name)),
                },
                { head: "Instructions", key: (f) => f.instructions },
                {
                    head: "Inlined",
                    key: (f) => (f.instructions > 0 ? f.inlined / f.instructions : 0),
                    cell: (f) => percent(f.inlined, f.instructions),
                },
                {
                    head: "Place",
                    key: (f) => `${f.file?.name ?? ""}:${String(f.line).padStart(8, "0")}`,
                    cell: (f) => (f.file ? `${visible(f.file.name)}:${f.line}` : "\u2013"),
                    roomy: true,
                },
                ...(many
                    ? [
                          {
                              head: "Unit",
                              key: (f: CodeFunction) => visible(this.project.unitLabels[f.unit]),
                          },
                      ]
                    : []),
            ],
            (f) => `${f.name} ${f.symbol} ${f.file?.name ?? ""} ${this.project.unitLabels[f.unit]}`,
        );
    }

    private files(): HTMLElement {
        const total = this.project.instructions;
        return table<SourceFile>(
            "Source files",
            this.project.files,
            [
                {
                    head: "File",
                    key: (file) => file.name,
                    cell: (file) =>
                        h(
                            "a",
                            { href: this.hrefOfFile(file), title: visible(file.path) },
                            h("bdi", null, visible(file.name)),
                        ),
                },
                { head: "Instructions", key: (file) => file.instructions },
                {
                    head: "Share",
                    key: (file) => (total > 0 ? file.instructions / total : 0),
                    cell: (file) => percent(file.instructions, total),
                },
                { head: "Lines", key: (file) => file.lines },
            ],
            (file) => file.path,
        );
    }

    private made(): HTMLElement {
        const shown = this.project.heads.slice(0, 500);
        return h(
            "section",
            { class: "made" },
            h("h2", null, "How it was made"),
            h(
                "ul",
                null,
                ...shown.map((head) =>
                    h(
                        "li",
                        null,
                        h(
                            "code",
                            null,
                            visible(
                                head.command.length > 0 ? commandLine(head.command) : head.name,
                            ),
                        ),
                        h(
                            "span",
                            { class: "muted" },
                            [head.compiler, head.target, `${head.program}, ${madeAt(head.made)}`]
                                .filter(Boolean)
                                .map(visible)
                                .join(" \u00b7 "),
                        ),
                    ),
                ),
                this.project.heads.length > shown.length &&
                    h(
                        "li",
                        null,
                        `and ${count(this.project.heads.length - shown.length, "more unit")}`,
                    ),
            ),
        );
    }
}
