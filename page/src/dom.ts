// Makes elements. What is shown is always set as text or as an attribute's value, never
// as markup.

type Child = Node | string | null | undefined | false;

export interface Props {
    [name: string]: string | number | boolean | null | undefined | ((event: never) => void);
}

function fill<E extends Element>(element: E, props: Props | null, children: Child[]): E {
    for (const [name, value] of Object.entries(props ?? {})) {
        if (typeof value === "function") {
            element.addEventListener(name, value as unknown as EventListener);
        } else if (value === true) {
            element.setAttribute(name, "");
        } else if (value !== false && value !== null && value !== undefined) {
            element.setAttribute(name, String(value));
        }
    }
    for (const child of children) {
        if (child) {
            element.append(child);
        }
    }
    return element;
}

// A property that is a function listens to the event of its name.
export function h<K extends keyof HTMLElementTagNameMap>(
    tag: K,
    props: Props | null = null,
    ...children: Child[]
): HTMLElementTagNameMap[K] {
    return fill(document.createElement(tag), props, children);
}

export function svg<K extends keyof SVGElementTagNameMap>(
    tag: K,
    props: Props | null = null,
    ...children: Child[]
): SVGElementTagNameMap[K] {
    return fill(document.createElementNS("http://www.w3.org/2000/svg", tag), props, children);
}

// A name from a source or a file system, which may hold characters that change the
// direction of what stands around it: isolated, and such characters made visible.
export function visible(name: string): string {
    return name.replace(
        /[\p{Cc}\u061c\u200b-\u200f\u2028-\u202e\u2060-\u2069\ufeff]/gu,
        (c) => `\u27e8U+${c.codePointAt(0)!.toString(16).toUpperCase().padStart(4, "0")}\u27e9`,
    );
}

const numbers = new Intl.NumberFormat("en");

export function count(n: number, one: string, many = one + "s"): string {
    return `${numbers.format(n)} ${n === 1 ? one : many}`;
}

export function number(n: number): string {
    return numbers.format(n);
}

export function percent(part: number, whole: number): string {
    return whole === 0 ? "0\u202f%" : `${Math.round((100 * part) / whole)}\u202f%`;
}

// Runs `action` once a frame at most, with the arguments of the last call.
export function perFrame<A extends unknown[]>(action: (...args: A) => void): (...args: A) => void {
    let last: A | null = null;
    return (...args) => {
        if (!last) {
            requestAnimationFrame(() => {
                const now = last!;
                last = null;
                action(...now);
            });
        }
        last = args;
    };
}
