// The line between the panes: moved by the mouse or by arrow keys. Where the panes stand
// one above the other it moves up and down.

export function startDivider(divider: HTMLElement, container: HTMLElement): void {
    const stacked = matchMedia("(max-width: 760px)");
    let share = 50;
    const set = (percent: number): void => {
        share = Math.min(Math.max(percent, 10), 90);
        container.style.setProperty("--first", `${share}fr`);
        container.style.setProperty("--second", `${100 - share}fr`);
        divider.setAttribute("aria-valuenow", String(Math.round(share)));
    };
    const orient = (): void =>
        divider.setAttribute("aria-orientation", stacked.matches ? "horizontal" : "vertical");
    stacked.addEventListener("change", orient);
    orient();

    divider.addEventListener("pointerdown", (event) => {
        divider.setPointerCapture(event.pointerId);
        event.preventDefault();
    });
    divider.addEventListener("pointermove", (event) => {
        if (divider.hasPointerCapture(event.pointerId)) {
            const first = divider.previousElementSibling!.getBoundingClientRect();
            const second = divider.nextElementSibling!.getBoundingClientRect();
            set(
                stacked.matches
                    ? (100 * (event.clientY - first.top)) / (second.bottom - first.top)
                    : (100 * (event.clientX - first.left)) / (second.right - first.left),
            );
        }
    });
    divider.addEventListener("dblclick", () => set(50));
    divider.addEventListener("keydown", (event) => {
        const steps: Record<string, number> = {
            ArrowLeft: -2,
            ArrowUp: -2,
            ArrowRight: 2,
            ArrowDown: 2,
        };
        const step = steps[event.key];
        if (step !== undefined) {
            event.preventDefault();
            event.stopPropagation();
            set(share + step);
        }
    });
}
