// Readable names of functions, shortened where there is little room.

const operatorName =
    /^operator ?(?:\(\)|\[\]|->\*?|<=>|<<=?|>>=?|&&|\|\||\+\+|--|[-+*/%^&|~!=<>]=?|,|""\s?\w*|(?:new|delete)(?: ?\[\])?(?!\w)|co_await(?!\w))/;
// Parts in brackets that belong to a name: namespaces and functions without one, tags.
const bracketed = /^(?:<unnamed>|\(anonymous namespace\)|\{[^{}]*\}|\[lambda.*?\)\]|\[abi:\w+\])/;

// The name without return type, parameters and template arguments. Nothing is lost of a
// C function's name.
export function shortName(name: string): string {
    if (/^[\w$.]*$/.test(name)) {
        return name;
    }
    let short = "";
    let angles = 0; // how deep in template arguments, which are left out
    for (let i = 0; i < name.length; ++i) {
        const c = name[i];
        if (angles === 0) {
            const rest = name.slice(i, i + 200);
            const part =
                (/[\w$]$/.test(short) ? null : operatorName.exec(rest)) ?? bracketed.exec(rest);
            if (part) {
                short += part[0].replace(" namespace)", ")");
                i += part[0].length - 1;
                continue;
            }
            if (c === "(") {
                break;
            }
            if (c === " ") {
                // What stands before a name is the return type; what stands before
                // arguments or a mark is the name, and so is what a type is converted to.
                const next = name[i + 1];
                if (short.endsWith("operator")) {
                    short += c;
                } else if (next === "(" || next === "[") {
                    break;
                } else if (next !== "<" || name.startsWith("<unnamed>", i + 1)) {
                    short = "";
                }
                continue;
            }
        }
        angles += c === "<" ? 1 : 0;
        if (angles === 0) {
            short += c;
        }
        angles -= c === ">" && angles > 0 ? 1 : 0;
    }
    return short || name;
}

// A short name cut to so many letters: its qualifiers go first.
export function cutName(name: string, letters: number): string {
    let rest = name;
    while (rest.length > letters && rest.includes("::")) {
        rest = rest.slice(rest.indexOf("::") + 2);
    }
    return rest.length > letters ? rest.slice(0, Math.max(letters - 1, 0)) + "\u2026" : rest;
}

const longestBrief = 40;
const briefNames = new Map<string, string>();

// What a function goes by in lists.
export function briefName(name: string): string {
    let brief = briefNames.get(name);
    if (brief === undefined) {
        brief = cutName(shortName(name), longestBrief);
        briefNames.set(name, brief);
    }
    return brief;
}

function beginsWord(name: string, at: number): boolean {
    return (
        at === 0 ||
        !/[A-Za-z0-9]/.test(name[at - 1]) ||
        (/[A-Z]/.test(name[at]) && !/[A-Z]/.test(name[at - 1]))
    );
}

// What a name has of a query, from the worst to the best.
enum Fit {
    none,
    scattered, // its letters, in order
    elsewhere, // all of its words, in the part that the short name leaves out
    inside,
    word, // at the beginning of one
    beginning,
    exact,
}

// How well a query fits a name: higher is better, -1 is not at all. `short` is the part of
// the name that people say; its last component is what they say most.
export function fit(query: string, name: string, short = name): number {
    const letters = query.toLowerCase();
    const lower = short.toLowerCase();
    const last = lower.slice(Math.max(lower.lastIndexOf("::") + 2, lower.lastIndexOf("/") + 1, 0));
    const kind = (): Fit => {
        if ([last, lower, name.toLowerCase()].includes(letters)) {
            return Fit.exact;
        }
        if (last.startsWith(letters) || lower.startsWith(letters)) {
            return Fit.beginning;
        }
        let best = Fit.none;
        for (let at = lower.indexOf(letters); at >= 0; at = lower.indexOf(letters, at + 1)) {
            if (beginsWord(short, at)) {
                return Fit.word;
            }
            best = Fit.inside;
        }
        const words = letters.split(/\s+/);
        if (best === Fit.none && words.every((word) => name.toLowerCase().includes(word))) {
            return Fit.elsewhere;
        }
        return best;
    };
    const found = kind();
    const score = found === Fit.none ? scattered(letters, short) : 500;
    return score < 0
        ? -1
        : 1000 * (found === Fit.none ? Fit.scattered : found) + score - Math.min(short.length, 99);
}

// Letters that stand together or begin a word count more; -1 if one is missing.
function scattered(letters: string, name: string): number {
    const lower = name.toLowerCase();
    let score = 300;
    let at = -1;
    for (const letter of letters) {
        if (letter === " ") {
            continue;
        }
        const next = lower.indexOf(letter, at + 1);
        if (next < 0) {
            return -1;
        }
        score += next === at + 1 ? 8 : beginsWord(name, next) ? 10 : -Math.min(next - at, 5);
        at = next;
    }
    return Math.min(Math.max(score, 100), 800);
}
