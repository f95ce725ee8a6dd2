// The way of inlined code, from the line that it comes from out to the function that it
// stands in, as people read it.

import { visible } from "../dom.ts";
import { cutName, shortName } from "../text/names.ts";
import type { Project, SourceFile } from "./project.ts";
import type { Unit } from "./unit.ts";

export interface Step {
    name: string; // of the function, short
    file: SourceFile | null; // null where nobody knows
    line: number;
    place: string;
}

const longestName = 32;

// The innermost step first, the function itself last.
export function stepsOf(project: Project, unit: Unit, frame: number): Step[] {
    return unit.chain(frame).map((at) => ({
        name: visible(cutName(shortName(at.function), longestName)),
        file: project.fileOf(unit.number, at.file),
        line: at.line,
        place: project.placeOf(unit.number, at),
    }));
}

// The first step from `from` on that is in the project's own source, or else in the
// function itself.
export function ownStep(steps: Step[], from = 0): number {
    const own = steps.findIndex(({ file }, i) => i >= from && file !== null && !file.system);
    return own < 0 ? steps.length - 1 : own;
}

// What is deeper than that is told by its ends.
const mostTold = 20;

// A step a line.
export function describeSteps(steps: Step[]): string {
    const lines = steps.map(
        ({ name, place }, i) => `${i === 0 ? "" : "  inlined into "}${name} ${place}`,
    );
    if (lines.length > mostTold) {
        lines.splice(mostTold / 2, lines.length - mostTold, "  \u2026");
    }
    return lines.join("\n");
}
