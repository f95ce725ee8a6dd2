// Readable names of functions, shortened where there is little room.

const operatorName =
    /^operator ?(?:\(\)|\[\]|->\*?|<=>|<<=?|>>=?|&&|\|\||\+\+|--|[-+*/%^&|~!=<>]=?|,|""\s?\w*|(?:new|delete)(?: ?\[\])?(?!\w)|co_await(?!\w))/;
// Parts in brackets that belong to a name: namespaces and functions without one, tags.
const bracketed = /^(?:<unnamed>|\(anonymous namespace\)|\{[^{}]*\}|\[lambda.*?\)\]|\[abi:\w+\])/;

// The name without return type, parameters and template arguments. Nothing is lost of a
// C function's name.
export function shortName(name: string): string {
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

// How well `query`'s letters, in order, fit a name: higher is better, -1 is not at all.
// Letters that stand together, begin a word or begin the name count more.
export function fit(query: string, name: string): number {
    const letters = query.toLowerCase();
    const lower = name.toLowerCase();
    const whole = lower.indexOf(letters);
    if (whole >= 0) {
        const begins = whole === 0 || !/[a-z0-9]/.test(lower[whole - 1]) ? 200 : 0;
        const exact = lower.length === letters.length ? 500 : 0;
        return 1000 + begins + exact + (whole === 0 ? 100 : 0) - Math.min(name.length, 99);
    }
    let score = 0;
    let at = -1;
    for (const letter of letters) {
        if (letter === " ") {
            continue;
        }
        const next = lower.indexOf(letter, at + 1);
        if (next < 0) {
            return -1;
        }
        const wordStart =
            next === 0 ||
            /[^a-z0-9]/.test(lower[next - 1]) ||
            (name[next] !== lower[next] && name[next - 1] === lower[next - 1]);
        score += next === at + 1 ? 8 : wordStart ? 10 : -Math.min(next - at, 5);
        at = next;
    }
    return Math.max(0, 300 + score - Math.min(name.length, 99));
}
