// The line at the bottom: what is marked, how much code that is and where, and the chain
// of call sites, each of which can be gone to.

import { describeSteps, ownStep, stepsOf } from "../data/chain.ts";
import type { Link } from "../data/link.ts";
import type { Project, SourceFile } from "../data/project.ts";
import { count, h, number, visible } from "../dom.ts";
import { briefName, shortName } from "../text/names.ts";

export interface StatusActions {
    walk(step: 1 | -1): void;
    line(file: SourceFile, line: number): void;
}

// So many functions or places stand in the line,
const mostNamed = 4;
// and so many steps of inlining before the project's own one, and behind it.
const mostSteps = 8;

export class Status {
    private readonly summary = h("p", { class: "summary", role: "status" });
    private readonly chain = h("p", { class: "chain" });
    private readonly place = h("span", { class: "place-number" });
    private readonly walker: HTMLElement;

    constructor(
        element: HTMLElement,
        private readonly project: Project,
        private readonly actions: StatusActions,
    ) {
        const step = (sign: string, label: string, by: 1 | -1): HTMLElement =>
            h(
                "button",
                {
                    type: "button",
                    "aria-label": label,
                    "data-tip": label,
                    click: () => actions.walk(by),
                },
                sign,
            );
        this.walker = h(
            "span",
            { class: "walker" },
            step("\u2039", "Previous place (p)", -1),
            this.place,
            step("\u203a", "Next place (n)", 1),
        );
        element.append(this.walker, this.summary, this.chain);
    }

    show(link: Link | null, place: number): void {
        const places = link?.places.length ?? 0;
        this.walker.classList.toggle("idle", places === 0);
        this.place.textContent =
            place < 0 ? count(places, "place") : `${place + 1} of ${number(places)}`;
        this.summary.replaceChildren(...this.describe(link));
        delete this.chain.dataset["tip"];
        this.chain.replaceChildren(...(link ? this.chainOf(link) : []));
    }

    // Until something is marked.
    tell(text: string): void {
        this.summary.replaceChildren(text);
    }

    private describe(link: Link | null): (Node | string)[] {
        if (!link) {
            return ["Point at a line to see what belongs to it; ? shows the keys."];
        }
        if (!link.file) {
            return ["no line"];
        }
        const name = link.inlined === null ? "" : `${visible(briefName(link.inlined))} `;
        const place = h("b", null, `${name}${visible(link.file.name)}:${link.line}`);
        const all = link.file.heatByLine()[link.line] ?? 0;
        const more = link.inlined === null && all > link.instructions ? all : 0;
        if (link.places.length === 0) {
            return [
                place,
                link.frame >= 0 || link.line > link.file.lines
                    ? ", which the file does not have"
                    : more > 0
                      ? ` has no code in this unit, ${count(all, "instruction")} in others`
                      : " has no code here",
            ];
        }
        const parts = [];
        if (link.instructions > 0) {
            parts.push(count(link.instructions, "instruction"));
        }
        if (link.inlinedInstructions > 0) {
            parts.push(`${count(link.inlinedInstructions, "instruction")} inlined here`);
        }
        const of = more > 0 ? ` in this unit, ${number(all)} in all` : "";
        return [place, ` ${parts.join(", ")} in ${count(link.places.length, "place")}${of}`];
    }

    private site(file: SourceFile, line: number, text: string): HTMLElement {
        return h(
            "button",
            {
                type: "button",
                class: "site",
                "data-tip": `${visible(file.path)}:${line}`,
                click: () => this.actions.line(file, line),
            },
            text,
        );
    }

    private chainOf(link: Link): HTMLElement[] {
        if (link.frame >= 0) {
            return this.stepsOf(link);
        }
        return [
            ...this.sitesOf(
                "inlines",
                "steps",
                link.inlinedFunctions.map((f) => ({ ...f, text: visible(shortName(f.name)) })),
            ),
            ...this.sitesOf(
                "inlined at",
                "own",
                link.callSites
                    .toSorted((a, b) => Number(a.file.system) - Number(b.file.system))
                    .map((at) => ({ ...at, text: `${visible(at.file.name)}:${at.line}` })),
            ),
        ];
    }

    // From the innermost step outwards. Where the line has no room for all of them, the one
    // in the project's own source is seen all the same.
    private stepsOf(link: Link): HTMLElement[] {
        const steps = stepsOf(this.project, link.unit, link.frame);
        const own = ownStep(steps);
        if (steps.length > 1) {
            this.chain.dataset["tip"] = describeSteps(steps);
        }
        const part = (name: string, from: number, to: number): HTMLElement =>
            h(
                "span",
                { class: name },
                ...steps
                    .slice(from, to)
                    .flatMap((step, i) => [
                        from + i === 0 ? "" : i === 0 ? "inlined into " : " inlined into ",
                        h("span", { class: "function-name" }, step.name),
                        ...(steps.length === 1
                            ? []
                            : [
                                  " ",
                                  step.file
                                      ? this.site(step.file, step.line, step.place)
                                      : step.place,
                              ]),
                    ]),
            );
        return [
            part("steps", 0, Math.min(own, mostSteps)),
            part("own", own, own + 1),
            part("steps", own + 1, Math.min(steps.length, own + 1 + mostSteps)),
        ].filter((made) => made.hasChildNodes());
    }

    private sitesOf(
        title: string,
        name: string,
        sites: { file: SourceFile; line: number; text: string }[],
    ): HTMLElement[] {
        if (sites.length === 0) {
            return [];
        }
        const rest = sites.length - mostNamed;
        return [
            h(
                "span",
                { class: name },
                title,
                ...sites
                    .slice(0, mostNamed)
                    .flatMap(({ file, line, text }) => [" ", this.site(file, line, text)]),
                rest > 0 ? ` and ${rest} more` : "",
            ),
        ];
    }
}
