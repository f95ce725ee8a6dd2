// Colours of C and C++, line by line. What a line begins inside (a block comment, a raw
// string) is found out once for the whole file, so that any part of a large file can be
// coloured without looking at what stands before it.

import type { Text } from "@codemirror/state";
import type { Emit, LineColours } from "./colouring.ts";

const keywords = new Set(
    (
        "alignas alignof and and_eq asm auto bitand bitor break case catch class co_await " +
        "co_return co_yield compl concept const const_cast consteval constexpr constinit " +
        "continue decltype default delete do dynamic_cast else enum explicit export extern " +
        "false final for friend goto if inline mutable namespace new noexcept not not_eq " +
        "nullptr operator or or_eq override private protected public register " +
        "reinterpret_cast requires restrict return sizeof static static_assert static_cast " +
        "struct switch template this thread_local throw true try typedef typeid typename " +
        "union using virtual volatile while xor xor_eq NULL _Alignas _Alignof _Atomic " +
        "_Generic _Noreturn _Static_assert _Thread_local __attribute__ __asm__ __inline " +
        "__inline__ __restrict __extension__ __volatile__"
    ).split(" "),
);

const types = new Set(
    (
        "bool char char8_t char16_t char32_t double float int long short signed unsigned void " +
        "wchar_t size_t ssize_t ptrdiff_t intptr_t uintptr_t int8_t int16_t int32_t int64_t " +
        "uint8_t uint16_t uint32_t uint64_t FILE va_list _Bool _Complex __int128"
    ).split(" "),
);

// What a line begins inside. From `rawString` on, the rest is an index into the
// delimiters of raw strings.
const inside = {
    code: 0,
    blockComment: 1,
    lineComment: 2, // spliced by a backslash, as are the next two
    directive: 3,
    string: 4,
    rawString: 5,
};

const token =
    /(?<comment>\/\/|\/\*)|(?<raw>(?:u8|[uUL])?R"(?<delimiter>[^\s()\\]{0,16})\()|(?<string>(?:u8|[uUL])?")|(?<char>(?:u8|[uUL])?'(?:\\.|[^'\\])+')|(?<number>\.?\d(?:[eEpP][+-]|'(?=[0-9a-zA-Z])|[\w.])*)|(?<word>[A-Za-z_$\u0080-\uffff][\w$\u0080-\uffff]*)|(?<directive>^\s*#\s*\w*)/g;
const stringEnd = /(?:[^"\\]|\\.)*(?:"|(\\)?$)/y;
// Longer lines are data; nobody reads their colours.
const longestLine = 20_000;

class CColours implements LineColours {
    private readonly states: Uint16Array;
    private readonly delimiters: string[] = [];

    constructor(text: Text) {
        this.states = new Uint16Array(text.lines + 1);
        let state = inside.code;
        let number = 0;
        for (const line of text.iterLines()) {
            this.states[number++] = state;
            // Most lines begin in code and hold nothing that reaches into the next one.
            if (
                state !== inside.code ||
                line.includes("/*") ||
                line.includes('R"') ||
                line.endsWith("\\")
            ) {
                state = this.line(line, state, () => undefined);
            }
        }
    }

    colour(number: number, line: string, emit: Emit): void {
        this.line(line, this.states[number - 1], emit);
    }

    // Colours a line that begins in `state`; the result is the state of the next one.
    private line(line: string, state: number, emit: Emit): number {
        if (line.length > longestLine) {
            return inside.code;
        }
        const spliced = line.endsWith("\\");
        let at = 0;
        let inDirective = false;
        switch (state) {
            case inside.code:
                break;
            case inside.directive:
                inDirective = true;
                break;
            case inside.lineComment:
                emit(0, line.length, "comment");
                return spliced ? inside.lineComment : inside.code;
            case inside.blockComment: {
                const end = line.indexOf("*/");
                emit(0, end < 0 ? line.length : end + 2, "comment");
                if (end < 0) {
                    return inside.blockComment;
                }
                at = end + 2;
                break;
            }
            case inside.string:
                at = this.string(line, 0, 0, emit);
                if (at < 0) {
                    return inside.string;
                }
                break;
            default: {
                const close = `)${this.delimiters[state - inside.rawString]}"`;
                const end = line.indexOf(close);
                emit(0, end < 0 ? line.length : end + close.length, "string");
                if (end < 0) {
                    return state;
                }
                at = end + close.length;
            }
        }

        token.lastIndex = at;
        for (let match = token.exec(line); match; match = token.exec(line)) {
            const groups = match.groups!;
            const from = match.index;
            const to = token.lastIndex;
            if (groups["word"]) {
                const word = groups["word"];
                const kind = keywords.has(word)
                    ? "keyword"
                    : types.has(word)
                      ? "type"
                      : /^\s*\(/.test(line.slice(to, to + 8))
                        ? "function"
                        : null;
                if (kind) {
                    emit(from, to, kind);
                }
            } else if (groups["comment"] === "//") {
                emit(from, line.length, "comment");
                return spliced ? inside.lineComment : inside.code;
            } else if (groups["comment"]) {
                const end = line.indexOf("*/", to);
                emit(from, end < 0 ? line.length : end + 2, "comment");
                if (end < 0) {
                    return inside.blockComment;
                }
                token.lastIndex = end + 2;
            } else if (groups["raw"]) {
                const close = `)${groups["delimiter"]}"`;
                const end = line.indexOf(close, to);
                emit(from, end < 0 ? line.length : end + close.length, "string");
                if (end < 0) {
                    return this.rawState(groups["delimiter"]);
                }
                token.lastIndex = end + close.length;
            } else if (groups["string"]) {
                const end = this.string(line, from, to, emit);
                if (end < 0) {
                    return inside.string;
                }
                token.lastIndex = end;
            } else if (groups["directive"]) {
                inDirective = true;
                emit(from + groups["directive"].indexOf("#"), to, "directive");
                if (/^\s*#\s*include/.test(line)) {
                    const name = /<[^>]*>/.exec(line);
                    if (name) {
                        emit(name.index, name.index + name[0].length, "string");
                        token.lastIndex = name.index + name[0].length;
                    }
                }
            } else {
                emit(from, to, groups["char"] ? "string" : "number");
            }
        }
        return inDirective && spliced ? inside.directive : inside.code;
    }

    // A string from `from` on whose contents begin at `at`: where it ends, or -1 when the
    // next line goes on with it.
    private string(line: string, from: number, at: number, emit: Emit): number {
        stringEnd.lastIndex = at;
        const match = stringEnd.exec(line);
        const end = match ? stringEnd.lastIndex : line.length;
        emit(from, end, "string");
        return match && match[0].endsWith("\\") ? -1 : end;
    }

    private rawState(delimiter: string): number {
        let index = this.delimiters.indexOf(delimiter);
        if (index < 0) {
            index = this.delimiters.push(delimiter) - 1;
        }
        return inside.rawString + index;
    }
}

export function cColours(text: Text): LineColours {
    return new CColours(text);
}
