// Says what `data-tip` of the element under the mouse holds, beside the mouse.

export function startTips(): void {
    const tip = document.querySelector<HTMLElement>("#tip")!;
    const hide = (): void => {
        tip.hidden = true;
    };
    document.addEventListener("mouseover", (event) => {
        const text = (event.target as Element).closest<HTMLElement>("[data-tip]")?.dataset["tip"];
        if (!text) {
            hide();
            return;
        }
        tip.textContent = text;
        tip.hidden = false;
        const box = tip.getBoundingClientRect();
        const left = Math.min(event.clientX + 14, innerWidth - box.width - 8);
        const below = event.clientY + 18;
        const top = below + box.height < innerHeight ? below : event.clientY - box.height - 10;
        tip.style.left = `${Math.max(left, 4)}px`;
        tip.style.top = `${Math.max(top, 4)}px`;
    });
    document.addEventListener("mousedown", hide);
    document.addEventListener("keydown", hide);
    document.addEventListener("mouseleave", hide);
    addEventListener("blur", hide);
}
