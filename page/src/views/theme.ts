// Light or dark: as the system says, until the reader chooses.

const key = "clist-theme";
const dark = matchMedia("(prefers-color-scheme: dark)");

// Pages opened from files may have no storage.
function stored(): string | null {
    try {
        return localStorage.getItem(key);
    } catch {
        return null;
    }
}

export function currentTheme(): "light" | "dark" {
    return document.documentElement.dataset["theme"] === "dark" ? "dark" : "light";
}

// `changed` is called after each change.
export function startTheme(changed: () => void): void {
    let chosen = stored();
    const apply = (): void => {
        document.documentElement.dataset["theme"] = chosen ?? (dark.matches ? "dark" : "light");
        changed();
    };
    dark.addEventListener("change", apply);
    apply();
    toggle = () => {
        chosen = currentTheme() === "dark" ? "light" : "dark";
        try {
            localStorage.setItem(key, chosen);
        } catch {
            // It holds for this visit.
        }
        apply();
    };
}

let toggle = (): void => undefined;

export function toggleTheme(): void {
    toggle();
}
