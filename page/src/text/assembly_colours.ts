// Colours of GNU-style assembly of any target: labels, mnemonics, registers, numbers,
// strings, directives and comments. Every line stands for itself.

import type { LineColours } from "./colouring.ts";

function tokenOf(comment: string): RegExp {
    const escaped = comment.replace(/[.*+?^${}()|[\]\\/]/g, "\\$&");
    return new RegExp(
        [
            `(?<comment>${escaped}.*|/\\*.*?\\*/)`,
            `(?<string>"(?:\\\\.|[^"\\\\])*"?)`,
            `(?<register>%[a-z]\\w*(?:\\(\\d\\))?)`,
            `(?<number>[$#]?-?\\b(?:0[xX][0-9a-fA-F]+|\\d+)\\b)`,
            `(?<local>\\.L[\\w.$]*)`,
            `(?<symbol>[A-Za-z_$\\u0080-\\uffff][\\w$.:~<>\\u0080-\\uffff]*)`,
        ].join("|"),
        "g",
    );
}

// Registers of targets that write them bare: AArch64, ARM, RISC-V, x86 in Intel's syntax.
const bareRegister =
    /^(?:[wxrvdsqbh]\d{1,2}|sp|wsp|lr|pc|fp|ip|xzr|wzr|zero|ra|gp|tp|[ats]\d{1,2}|f[ats]\d{1,2}|[er]?(?:ax|bx|cx|dx|si|di|bp|sp)|r\d{1,2}[dwb]?|[abcd][lh]|[sd]il|[sb]pl|[xyz]mm\d{1,2}|k[0-7])$/;

export function assemblyColours(comment: string): LineColours {
    const token = tokenOf(comment || "#");
    return {
        colour(_number, line, emit) {
            const label = /^(?:"[^"]*"|[^\s"#;][^\n]*?):(?=\s*(?:$|[#;@/]))/.exec(line);
            if (label && !/^\s/.test(line)) {
                emit(0, label[0].length, "label");
                return;
            }
            const word = /^\s*(\.?[A-Za-z_][\w.]*)/.exec(line);
            let at = 0;
            if (word) {
                at = word[0].length;
                const mnemonic = word[1];
                emit(at - mnemonic.length, at, mnemonic.startsWith(".") ? "directive" : "keyword");
            }
            token.lastIndex = at;
            for (let match = token.exec(line); match; match = token.exec(line)) {
                const groups = match.groups!;
                const kind = groups["comment"]
                    ? "comment"
                    : groups["string"]
                      ? "string"
                      : groups["register"]
                        ? "register"
                        : groups["number"]
                          ? "number"
                          : groups["local"]
                            ? "label"
                            : bareRegister.test(match[0])
                              ? "register"
                              : "function";
                emit(match.index, token.lastIndex, kind);
            }
        },
    };
}
