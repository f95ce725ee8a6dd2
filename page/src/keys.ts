// The keys of the page. The card of keys shows the same table.

export interface KeyRow {
    keys: string[]; // as shown: "Ctrl+F", "n", "?"
    group: string;
    label: string;
    run: (() => void) | null; // null: the editor or the browser does it
}

function nameOf(event: KeyboardEvent): string {
    const control = event.ctrlKey || event.metaKey ? "Ctrl+" : "";
    const alt = event.altKey ? "Alt+" : "";
    const shift = event.shiftKey && (control || alt || event.key.length > 1) ? "Shift+" : "";
    const key = event.key.length === 1 && (control || alt) ? event.key.toUpperCase() : event.key;
    return control + alt + shift + key;
}

function typing(target: EventTarget | null): boolean {
    return target instanceof HTMLElement && target.matches("input, select, textarea");
}

export function startKeys(rows: KeyRow[]): void {
    const actions = new Map<string, () => void>();
    for (const row of rows) {
        for (const key of row.keys) {
            if (row.run) {
                actions.set(key, row.run);
            }
        }
    }
    document.addEventListener(
        "keydown",
        (event) => {
            if (
                event.defaultPrevented ||
                event.isComposing ||
                document.querySelector("dialog[open]")
            ) {
                return;
            }
            const name = nameOf(event);
            const action = actions.get(name);
            if (
                action &&
                !(typing(event.target) && event.key.length === 1 && !name.startsWith("Ctrl+"))
            ) {
                event.preventDefault();
                action();
            }
        },
        // Before the editor: its own search key opens only its own panel.
        { capture: true },
    );
}
