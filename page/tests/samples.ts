// Code that the tests show. Small enough to know by heart.

import type { MadeUnit, Place } from "./made_page.ts";

// sum() has the code of its loop in two places, and scale() inlined in between; scale()
// also stands by itself. The header's clamp() was inlined into scale(), both times.
const sumSource = `#include "clamp.h"

static int scale(int x) {
    return clamp(x * 3);
}

int sum(const int *a, int n) {
    int total = 0; /* starts
    at nothing */
    for (int i = 0; i < n; i++)
        total += scale(a[i]);
    return total;
}
`;

const clampHeader = `#pragma once
/* Keeps x below the limit. */
static inline int clamp(int x) {
    return x < 100 ? x : 100;
}
`;

const sumC = "/src/demo/sum.c";
const clampH = "/src/demo/include/clamp.h";

export const sum: MadeUnit = {
    name: "sum.c",
    command: ["gcc", "-O2", "-c", "sum.c"],
    sources: { [clampH]: clampHeader, [sumC]: sumSource },
    hidden: ["\t.p2align 4", "\t.globl\tsomething"],
    functions: [
        {
            name: "sum",
            rows: [
                ["\tmovl\t$0, %eax", ["sum", sumC, 8]],
                ["\ttestl\t%esi, %esi", ["sum", sumC, 10]],
                ["\tjle\t.L1", ["sum", sumC, 10]],
                [".L3:"],
                ["\tmovl\t(%rdi), %edx", ["sum", sumC, 11]],
                ["\tleal\t(%rdx,%rdx,2), %edx", ["scale", sumC, 4], ["sum", sumC, 11]],
                ["\tcmpl\t$100, %edx", ["clamp", clampH, 4], ["scale", sumC, 4], ["sum", sumC, 11]],
                [
                    "\tcmovg\t%ecx, %edx",
                    ["clamp", clampH, 4],
                    ["scale", sumC, 4],
                    ["sum", sumC, 11],
                ],
                ["\taddl\t%edx, %eax", ["sum", sumC, 11]],
                ["\taddq\t$4, %rdi", ["sum", sumC, 10]],
                ["\tjne\t.L3", ["sum", sumC, 10]],
                [".L1:"],
                ["\tret", ["sum", sumC, 13]],
            ],
        },
        {
            name: "scale",
            rows: [
                ["\tleal\t(%rdi,%rdi,2), %eax", ["scale", sumC, 4]],
                ["\tcmpl\t$100, %eax", ["clamp", clampH, 4], ["scale", sumC, 4]],
                ["\tret", ["scale", sumC, 5]],
                ["\tnop"],
            ],
        },
    ],
};

// C++ with names that are long in every way, and a system header.
const boxSource = `#include <vector>
const char *text = R"x(
  /* no comment */ return
)x";
namespace shop { struct box { int get() const { return 41; } }; }
int open(shop::box b) { return b.get() + 1; } // one more
`;

const vectorHeader = "// nothing\nint vector_size() { return 0; }\n";

export const box: MadeUnit = {
    name: "box.cpp",
    command: ["g++", "-O2", "-std=c++20", "-DNAME=a b", "-c", "box.cpp"],
    sources: { "/src/demo/box.cpp": boxSource, "/usr/include/c++/12/vector": vectorHeader },
    system: ["/usr/include/c++/12/vector"],
    functions: [
        {
            name: "open(shop::box)",
            symbol: "_Z4openN4shop3boxE",
            rows: [
                [
                    "\tmovl\t$41, %eax",
                    ["shop::box::get() const", "/src/demo/box.cpp", 5],
                    ["open(shop::box)", "/src/demo/box.cpp", 6],
                ],
                ["\taddl\t$1, %eax", ["open(shop::box)", "/src/demo/box.cpp", 6]],
                [
                    "\tcall\tstd::vector<int, std::allocator<int> >::size() const",
                    ["std::vector<int>::size() const", "/usr/include/c++/12/vector", 2],
                    ["open(shop::box)", "/src/demo/box.cpp", 6],
                ],
                ["\tret", ["open(shop::box)", "/src/demo/box.cpp", 6]],
            ],
        },
    ],
};

// A second unit with code from the header of the first one.
export const other: MadeUnit = {
    name: "other.c",
    sources: {
        [clampH]: clampHeader,
        "/src/demo/other.c": '#include "clamp.h"\n\nint limit(int x) { return clamp(x); }\n',
    },
    functions: [
        {
            name: "limit",
            rows: [
                ["\tcmpl\t$100, %edi", ["clamp", clampH, 4], ["limit", "/src/demo/other.c", 3]],
                ["\tret", ["limit", "/src/demo/other.c", 3]],
            ],
        },
    ],
};

// A loop over a container, inlined through the library's own functions, whose names are as
// long as such names are. The last of them stands by itself, too.
const loopCpp = "/src/shop/loop.cpp";
const listH = "/usr/include/c++/12/bits/list_of_shop.h";
const of = "<shop::price<double, shop::currency>, std::allocator<shop::price<double> > >";
const layers = ["_M_finish", "_M_next", "operator++", "begin", "advance", "at", "value"].map(
    (name, i): Place => [`shop::library::list_of${of}::${name}() const`, listH, 3 * i + 2],
);
const loopFunction = `shop::total(shop::library::list_of${of} const&)`;

export const loop: MadeUnit = {
    name: "loop.cpp",
    command: ["g++", "-O2", "-c", "loop.cpp"],
    sources: {
        [loopCpp]: `#include "list_of_shop.h"
double shop::total(const list &all) {
    double sum = 0;
    for (const auto &it : all)
        sum += it.value();
    return sum;
}
`,
        [listH]: Array.from({ length: 30 }, (_, i) => `// line ${i + 1}\n`).join(""),
    },
    system: [listH],
    functions: [
        {
            name: loopFunction,
            symbol: "_ZN4shop5totalE",
            rows: [
                ["\tmovsd\t.LC0(%rip), %xmm1", [loopFunction, loopCpp, 3]],
                ["\tmovq\t8(%rsp), %rax", ...layers, [loopFunction, loopCpp, 5]],
                ["\taddsd\t(%rax), %xmm0", [loopFunction, loopCpp, 5]],
                ["\tcmpq\t%rax, %rdx", ...layers.slice(2), [loopFunction, loopCpp, 4]],
                ["\tret", [loopFunction, loopCpp, 6]],
            ],
        },
        {
            name: layers[6][0],
            symbol: "_ZNK4shop5value",
            rows: [
                ["\tmovsd\t(%rdi), %xmm0", layers[6]],
                ["\tret", layers[6]],
            ],
        },
    ],
};

// So many lines and functions that only a part of them is ever in the document.
export function long(lines = 20_000): MadeUnit {
    const text = Array.from({ length: lines }, (_, i) => `int line_${i + 1}(void);`);
    const path = "/src/long.c";
    return {
        name: "long.c",
        sources: { [path]: text.join("\n") + "\n" },
        functions: Array.from({ length: lines / 20 }, (_, i) => ({
            name: `function_${i}`,
            rows: Array.from({ length: 10 }, (_unused, k): [string, [string, string, number]] => [
                `\tmovl\t$${i * 10 + k}, %eax`,
                [`function_${i}`, path, i * 20 + k * 2 + 1],
            ]),
        })),
    };
}
