// Dialogs: one at a time, closed by Escape, by their button or by a click beside them.

import { h } from "../dom.ts";

export function openDialog(
    label: string,
    name: string,
    ...content: (Node | string)[]
): HTMLDialogElement {
    document.querySelector("dialog[open]")?.remove();
    const before = document.activeElement as HTMLElement | null;
    const dialog = h(
        "dialog",
        { class: name, "aria-label": label },
        h("div", { class: "dialog-body" }, ...content),
    );
    dialog.addEventListener("mousedown", (event) => {
        if (event.target === dialog) {
            dialog.close();
        }
    });
    dialog.addEventListener("close", () => {
        dialog.remove();
        if (document.activeElement === document.body) {
            before?.focus();
        }
    });
    document.body.append(dialog);
    dialog.showModal();
    return dialog;
}

export function closeButton(): HTMLElement {
    return h(
        "button",
        {
            type: "button",
            class: "close",
            "aria-label": "Close",
            click: (event: Event) => (event.target as Element).closest("dialog")?.close(),
        },
        "\u00d7",
    );
}
