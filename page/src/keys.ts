// The keys of the page. The card of keys shows the same table.

export interface KeyRow {
    keys: readonly string[]; // as shown: "Ctrl+F", "n", "?"
    group: string;
    label: string;
    action: string | null; // null: the editor or the browser does it
}

const link = "Source and code";
const find = "Go and find";
const view = "View";

export const keyTable = [
    { keys: ["Enter"], group: link, label: "Go to the other side", action: null },
    { keys: ["n"], group: link, label: "Next place of the line\u2019s code", action: "nextPlace" },
    { keys: ["p"], group: link, label: "Previous place", action: "previousPlace" },
    { keys: ["i"], group: link, label: "Where the code was inlined", action: "callSite" },
    { keys: ["s"], group: link, label: "To the source pane", action: "source" },
    { keys: ["c"], group: link, label: "To the code pane", action: "code" },
    { keys: ["]"], group: link, label: "Next function", action: "nextFunction" },
    { keys: ["["], group: link, label: "Previous function", action: "previousFunction" },
    { keys: ["f", "Ctrl+P"], group: find, label: "Go to a function", action: "function" },
    { keys: ["e"], group: find, label: "Go to a file", action: "file" },
    { keys: ["/", "Ctrl+F"], group: find, label: "Find in the pane", action: "find" },
    { keys: ["F3", "Ctrl+G"], group: find, label: "Next match", action: "nextMatch" },
    {
        keys: ["Shift+F3", "Ctrl+Shift+G"],
        group: find,
        label: "Previous match",
        action: "previousMatch",
    },
    {
        keys: ["F", "Ctrl+Shift+F"],
        group: find,
        label: "Find in all files and all code",
        action: "everywhere",
    },
    { keys: ["Alt+\u2190"], group: find, label: "Back", action: null },
    { keys: ["o"], group: view, label: "Overview: chart, functions, files", action: "overview" },
    { keys: ["a"], group: view, label: "All of the assembly", action: "all" },
    { keys: ["b"], group: view, label: "List of files", action: "files" },
    { keys: ["t"], group: view, label: "Light or dark", action: "theme" },
    {
        keys: ["Ctrl+Enter"],
        group: view,
        label: "Print the function (the browser\u2019s print key does, too)",
        action: "print",
    },
    { keys: ["Escape"], group: view, label: "Close what is in front", action: null },
    { keys: ["?"], group: view, label: "This card", action: "help" },
] as const satisfies readonly KeyRow[];

type Action = Exclude<(typeof keyTable)[number]["action"], null>;
export type Actions = Record<Action, () => void>;

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

export function startKeys(actions: Actions): void {
    const runs = new Map<string, () => void>();
    for (const { keys, action } of keyTable) {
        if (action !== null) {
            keys.forEach((key) => runs.set(key, actions[action]));
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
            const action = runs.get(name);
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
