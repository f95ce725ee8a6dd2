// The strip beside the scroll bar: the whole text at one glance, with the marked lines
// and, for a source, where most code comes from. A click goes there.

import type { EditorView } from "@codemirror/view";
import { h } from "../dom.ts";

export interface StripMark {
    line: number; // counted from 1
    lines: number;
    style: "linked" | "inlined-here" | "call-site";
}

export class Strip {
    readonly canvas: HTMLCanvasElement = h("canvas", { class: "strip", "aria-hidden": "true" });
    private marks: StripMark[] = [];
    private heat: Uint32Array | null = null;

    constructor(
        private readonly view: EditorView,
        go: (fraction: number) => void,
    ) {
        const goTo = (event: PointerEvent): void =>
            go(event.offsetY / Math.max(this.canvas.clientHeight, 1));
        this.canvas.addEventListener("pointerdown", (event) => {
            this.canvas.setPointerCapture(event.pointerId);
            goTo(event);
        });
        this.canvas.addEventListener("pointermove", (event) => {
            if (this.canvas.hasPointerCapture(event.pointerId)) {
                goTo(event);
            }
        });
        new ResizeObserver(() => this.draw()).observe(this.canvas);
    }

    set(marks: StripMark[]): void {
        this.marks = marks;
        this.draw();
    }

    // Instructions by line, counted from 1.
    setHeat(heat: Uint32Array | null): void {
        this.heat = heat;
    }

    draw(): void {
        const ratio = window.devicePixelRatio || 1;
        const width = Math.round(this.canvas.clientWidth * ratio);
        const height = Math.round(this.canvas.clientHeight * ratio);
        if (width === 0 || height === 0) {
            return;
        }
        if (this.canvas.width !== width || this.canvas.height !== height) {
            this.canvas.width = width;
            this.canvas.height = height;
        }
        const context = this.canvas.getContext("2d")!;
        context.clearRect(0, 0, width, height);
        const colours = getComputedStyle(this.canvas);
        // A text shorter than the pane does not fill the strip.
        const filled = Math.round(Math.min(height, this.view.contentHeight * ratio));
        const scale = filled / Math.max(this.view.state.doc.lines, 1);
        this.drawHeat(context, width, filled, colours.getPropertyValue("--strip-heat"));
        for (const mark of this.marks) {
            context.fillStyle = colours.getPropertyValue(`--strip-${mark.style}`);
            const top = Math.floor((mark.line - 1) * scale);
            context.fillRect(0, top, width, Math.max(Math.ceil(mark.lines * scale), 2 * ratio));
        }
    }

    private drawHeat(
        context: CanvasRenderingContext2D,
        width: number,
        height: number,
        colour: string,
    ): void {
        const heat = this.heat;
        if (!heat) {
            return;
        }
        const lines = this.view.state.doc.lines;
        const sums = new Float64Array(height);
        for (let line = 1; line < heat.length; ++line) {
            const at = Math.floor(((line - 1) / lines) * height);
            sums[Math.min(at, height - 1)] += heat[line];
        }
        const most = Math.log1p(Math.max(...sums));
        context.fillStyle = colour;
        // A line taller than a pixel fills all of its pixels.
        const size = Math.max(1, Math.ceil(height / lines));
        sums.forEach((sum, y) => {
            if (sum > 0) {
                context.globalAlpha = 0.15 + (0.6 * Math.log1p(sum)) / most;
                context.fillRect(width / 2, y, width / 2, size);
            }
        });
        context.globalAlpha = 1;
    }
}
