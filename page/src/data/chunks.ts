// Takes the chunks out of the page: each is a script element of a type that no browser
// runs, its text the base64 of a gzip stream. A chunk is unpacked when it is first asked
// for, and its element is emptied then: nobody needs the packed form again.

const elements = new Map<string, HTMLElement>();
for (const element of document.querySelectorAll<HTMLElement>("script[data-chunk]")) {
    elements.set(element.dataset["chunk"]!, element);
}

export function hasChunk(name: string): boolean {
    return elements.has(name);
}

export function chunkNames(): string[] {
    return [...elements.keys()];
}

function bytesOfBase64(text: string): Uint8Array<ArrayBuffer> {
    const decode = (
        Uint8Array as unknown as { fromBase64?: (s: string) => Uint8Array<ArrayBuffer> }
    ).fromBase64;
    if (decode) {
        return decode(text);
    }
    const binary = atob(text);
    const bytes = new Uint8Array(binary.length);
    for (let i = 0; i < binary.length; ++i) {
        bytes[i] = binary.charCodeAt(i);
    }
    return bytes;
}

const taken = new Map<string, Promise<string>>();

// The chunk's text; bytes that are not UTF-8 become U+FFFD. The caller keeps what it
// wants to keep: a chunk can be taken again only while another caller still waits for it.
export function takeChunk(name: string): Promise<string> {
    const waiting = taken.get(name);
    if (waiting) {
        return waiting;
    }
    const element = elements.get(name);
    if (!element) {
        return Promise.reject(new Error(`the page has no chunk ${name}`));
    }
    const packed = new Blob([bytesOfBase64(element.textContent.trim())]);
    element.remove();
    elements.delete(name);
    const text = new Response(packed.stream().pipeThrough(new DecompressionStream("gzip"))).text();
    taken.set(name, text);
    void text.finally(() => taken.delete(name));
    return text;
}

export async function takeJson<T>(name: string): Promise<T> {
    return JSON.parse(await takeChunk(name)) as T;
}

// The lines of a text. CR LF ends one, as LF does; the last line need not end.
export function linesOf(text: string): string[] {
    const lines = text.split("\n");
    // A newline ends a line; it does not begin another one.
    if (lines.length > 1 && lines.at(-1) === "") {
        lines.pop();
    }
    return text.includes("\r")
        ? lines.map((line) => (line.endsWith("\r") ? line.slice(0, -1) : line))
        : lines;
}
