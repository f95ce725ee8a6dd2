// Readable names, shortened and searched.

import assert from "node:assert/strict";
import { test } from "node:test";
import { visible } from "../src/dom.ts";
import { cutName, fit, shortName } from "../src/text/names.ts";

const names: [name: string, short: string][] = [
    ["main", "main"],
    ["sqlite3_step.part.0", "sqlite3_step.part.0"],
    ["open(shop::box)", "open"],
    ["shop::box::get() const", "shop::box::get"],
    ["std::vector<int, std::allocator<int> >::size() const", "std::vector::size"],
    ["void std::sort<int*>(int*, int*)", "std::sort"],
    ["std::vector<int>& f<3>(int)", "f"],
    ["operator new(unsigned long)", "operator new"],
    ["operator delete[](void*)", "operator delete[]"],
    ["vec2::operator+(vec2) const", "vec2::operator+"],
    ["bool operator< <char>(std::string const&)", "operator<"],
    ["std::ostream& std::operator<< <int>(std::ostream&, int)", "std::operator<<"],
    ["a::operator()(int) const", "a::operator()"],
    ["a::operator->() const", "a::operator->"],
    ["a::operator<=>(a const&) const", "a::operator<=>"],
    ["a::operator[](int)", "a::operator[]"],
    ["(anonymous namespace)::f(int)", "(anonymous)::f"],
    ["main::{lambda(int)#1}::operator()(int) const", "main::{lambda(int)#1}::operator()"],
    ["f(int) [clone .cold]", "f"],
    ["vec2::operator +(vec2) const", "vec2::operator +"],
    [
        "std::basic_ostream<char, T1> & std::operator << <std::char_traits<char>>(std::basic_ostream<char, T1> &, const char *)",
        "std::operator <<",
    ],
    ["bool operator < <char>(const std::string &)", "operator <"],
    ["a::operator ()(int)", "a::operator ()"],
    ["a::operator [](int)", "a::operator []"],
    ["a::operator ->()", "a::operator ->"],
    ["a::operator <=>(const a &)", "a::operator <=>"],
    ["operator new (unsigned long)", "operator new"],
    ["a::operator delete[] (void *)", "a::operator delete[]"],
    ["a::operator bool() const", "a::operator bool"],
    ["a::operator T1<int>()", "a::operator T1"],
    ['operator ""_s(const char *, unsigned long)', 'operator ""_s'],
    ["operator new_thing()", "operator new_thing"],
    ["<unnamed>::f(int)", "<unnamed>::f"],
    ["int <unnamed>::f<2>(int)", "<unnamed>::f"],
    [
        "main::[lambda(int) (instance 1)]::operator ()(int) const",
        "main::[lambda(int) (instance 1)]::operator ()",
    ],
    ["world::describe[abi:cxx11]() const", "world::describe[abi:cxx11]"],
    ["my_operator(int)", "my_operator"],
    ["", ""],
    ["<<<>>>", "<<<>>>"],
];
for (const [name, short] of names) {
    test(`${name} is ${short} for short`, () => assert.equal(shortName(name), short));
}

const cut: [name: string, letters: number, text: string][] = [
    ["a::b::c", 7, "a::b::c"],
    ["a::b::c", 6, "b::c"],
    ["a::b::c", 3, "c"],
    ["long_name", 5, "long\u2026"],
    ["a::long_name", 5, "long\u2026"],
];
for (const [name, letters, text] of cut) {
    test(`${name} cut to ${letters} letters`, () => assert.equal(cutName(name, letters), text));
}

const all = [
    "sqlite3BtreeInsert",
    "sqlite3VdbeExec",
    "btreeInit",
    "insertCell",
    "Insert",
    "sqlite3Insert",
    "windowInit",
];
// From the best to the worst: what is called so, what begins so, what has a word that does,
// what has it inside, what has it only in its arguments, what has its letters here and there.
const sorts = [
    "void std::sort<int *, shop::order>(int *, int *, shop::order)",
    "shop::sorted(int)",
    "shop::sort_tag::get() const",
    "void std::__insertion_sort<int *>(int *, int *)",
    "shop::resort()",
    "f(shop::sort_tag)",
    "shop::several_orders_there()",
    "void std::vector<bool, std::allocator<bool>>::push_back(bool)",
];
const order: [names: string[], letters: string, best: string[]][] = [
    [all, "insert", ["Insert", "insertCell", "sqlite3Insert", "sqlite3BtreeInsert"]],
    [all, "vdbe", ["sqlite3VdbeExec"]],
    [all, "bti", ["btreeInit", "sqlite3BtreeInsert"]],
    [all, "s3ve", ["sqlite3VdbeExec"]],
    [all, "zzz", []],
    [sorts, "sort", sorts.slice(0, 7)],
    [sorts, "std::sort", [sorts[0], sorts[3]]],
    [sorts, sorts[5], [sorts[5]]],
    [sorts, "tag get", [sorts[2]]],
    [sorts, "bool push", [sorts[7]]],
];
for (const [names, letters, best] of order) {
    test(`${letters} finds ${best.join(", ") || "nothing"}`, () => {
        const found = names
            .map((name) => ({ name, score: fit(letters, name, shortName(name)) }))
            .filter((entry) => entry.score >= 0)
            .sort((a, b) => b.score - a.score)
            .map((entry) => entry.name);
        assert.deepEqual(found, best);
    });
}

test("control characters and marks of direction are spelled out", () => {
    assert.equal(
        visible("a\u202eb\u0007c\u200d"),
        "a\u27e8U+202E\u27e9b\u27e8U+0007\u27e9c\u27e8U+200D\u27e9",
    );
    assert.equal(visible("gr\u00fc\u00dfe \u4f60\u597d"), "gr\u00fc\u00dfe \u4f60\u597d");
});
