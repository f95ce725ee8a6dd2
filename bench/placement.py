#!/usr/bin/env python3
"""Measures on real programs how well the C lines of a listing fit their code.

Six code bases of Debian's are compiled, gas2interlist places the directives, and the
listing that interlist makes is held against the compiler's own `.loc` directives:

  missing  lines that a function has code of, at -O2, but that its listing leaves out
  above    instructions, at -O0 and -O2, that stand above their own line
  right    instructions, at -O2, that stand right below the C lines with their own

A line is a function's own when code has it in that function's text compiled at -O0, where
nothing is inlined; code that was inlined from elsewhere is not counted.

  bench/placement.py [BUILD [PACKAGE...]]      BUILD is build/bench if not given

Needs gcc, g++, and a deb-src line in apt's sources, for `apt-get source`. Sources and
assembly are kept in CACHE, a folder below the user's cache if not set.
"""

import bisect
import os
import pathlib
import re
import subprocess
import sys

# name, compiler with its arguments, what to compile and what of it not
PACKAGES = {
    "zlib": ("gcc -DHAVE_UNISTD_H", ["*.c"], []),
    "bzip2": ("gcc -D_FILE_OFFSET_BITS=64", ["*.c"], ["dlltest.c", "mk251.c", "spewG.c", "unzcrash.c"]),
    "lz4": ("gcc -Ilib -Iprograms", ["lib/*.c", "programs/*.c"], []),
    "libzstd": (
        "gcc -Ilib -Ilib/common -DZSTD_MULTITHREAD",
        ["lib/common/*.c", "lib/compress/*.c", "lib/decompress/*.c", "lib/dictBuilder/*.c"],
        [],
    ),
    "lua5.4": ("gcc -Iinclude -DLUA_USE_POSIX -DLUA_COMPAT_5_3", ["src/*.c"], []),
    "re2": ("g++ -std=c++17 -I.", ["re2/*.cc", "util/rune.cc", "util/strutil.cc"], []),
}
# Headers that only a configured package has.
MADE_HEADERS = {
    "lua5.4": ("include/lua5.4-deb-multiarch.h", '#define DEB_HOST_MULTIARCH "linux"\n'),
}
# No function is inlined, whatever its attributes ask for.
OWN = ["-O0", "-Dalways_inline=noinline"]

LOC = re.compile(r"\t\.loc (\d+) (\d+)")
FILE = re.compile(r'\t\.file (\d+) "([^"]*)"(?: "([^"]*)")?')


class Code:
    """The instructions of an assembly text: for each the number of its line in the text, its
    function, its source and its line there; and the lines of the text."""

    def __init__(self, name):
        self.lines = name.read_text(encoding="latin1").split("\n")
        self.instructions = []
        files, functions, positions = {}, set(), {}
        section, function = ".text", None
        for number, line in enumerate(self.lines):
            if line.startswith("\t."):
                if found := LOC.match(line):
                    positions[section] = (files.get(int(found[1])), int(found[2]))
                elif found := FILE.match(line):
                    files[int(found[1])] = os.path.normpath(os.path.join(*filter(None, found.groups()[1:])))
                elif line.startswith("\t.type\t") and "function" in line:
                    functions.add(line[7:].split(",")[0])
                elif line.startswith("\t.size\t") and line[7:].split(",")[0] == function:
                    function = None
                elif line.startswith("\t.text"):
                    section = ".text"
                elif line.startswith("\t.section\t"):
                    section = line.split("\t")[2].split(",")[0]
            elif line.endswith(":") and line[:-1] in functions:
                function = line[:-1]
            elif re.match(r"\t[a-z]", line) and function is not None:
                source, at = positions.get(section, (None, 0))
                self.instructions.append((number, function, source, at))


def base(function):
    """The function that a copy was made of."""
    return function.split(".")[0]


def listed_lines(asm, listing):
    """By the number of a line of the assembly: the C lines that are listed before it."""
    sources, number = {}, 0
    for line in asm.read_text(encoding="latin1").split("\n"):
        if line.startswith("\t.ifile\t"):
            sources.setdefault(number, []).append(os.path.normpath(line[8:].strip('"')))
        elif not line.startswith(("\t.ifunc\t", "\t.iline\t", "\t.iendfunc\t")):
            number += 1
    listed, source, number = {}, None, 0
    for line in listing.read_text(encoding="latin1").split("\n"):
        if found := re.match(r"; *(\d+) \| ", line):
            source = sources[number][-1] if number in sources else source
            listed.setdefault(number, []).append((source, int(found[1])))
        elif not line.startswith((";-", ";     |")):
            source = sources[number][-1] if number in sources else source
            number += 1
    return listed


def compare(own, code, listed):
    """Counts: own lines with code, those that are missing, own instructions, those above,
    those right below."""
    counts = [0, 0, 0, 0, 0]
    places = sorted(listed)
    by_function = {}
    for instruction in code.instructions:
        by_function.setdefault(instruction[1], []).append(instruction)
    begin = 0
    for function, instructions in by_function.items():
        seen, wanted, block = set(), set(), ()
        place = bisect.bisect_left(places, begin)
        for number, _, source, line in instructions:
            while place < len(places) and places[place] <= number:
                block = listed[places[place]]
                seen.update(block)
                place += 1
            if (source, line) in own.get(base(function), ()):
                wanted.add((source, line))
                counts[2] += 1
                counts[3] += (source, line) not in seen
                counts[4] += (source, line) in block
        begin = instructions[-1][0] + 1
        counts[0] += len(wanted)
        counts[1] += len(wanted - seen)
        for source, line in sorted(wanted - seen):
            print(f"  {function}: {source}:{line} is missing", file=sys.stderr)
    return counts


def run(command, folder):
    subprocess.run(command, cwd=folder, check=True, stdout=subprocess.DEVNULL)


def measure(package, build, cache):
    compiler, patterns, left_out = PACKAGES[package]
    if not list(cache.glob(f"{package}-*/")):
        run(["apt-get", "source", "-qq", package], cache)
    (folder,) = [it for it in cache.glob(f"{package}-*/") if it.is_dir()]
    if package in MADE_HEADERS:
        header = folder / MADE_HEADERS[package][0]
        header.parent.mkdir(exist_ok=True)
        header.write_text(MADE_HEADERS[package][1])
    work = cache / f"{package}.out"
    work.mkdir(exist_ok=True)
    totals = {level: [0, 0, 0, 0, 0] for level in ("-O0", "-O2")}
    for source in sorted(it for pattern in patterns for it in folder.glob(pattern)):
        if source.name in left_out:
            continue
        name = str(source.relative_to(folder))
        stem = work / name.replace("/", "_")

        def assembly(mark, options):
            result = stem.with_name(f"{stem.name}.{mark}.s")
            if not result.exists():
                run([*compiler.split(), "-S", "-g", "-w", *options, name, "-o", str(result)], folder)
            return result

        own = {}
        for _, function, place, line in Code(assembly("own", OWN)).instructions:
            if place is not None and not place.startswith("/") and line != 0:
                own.setdefault(base(function), set()).add((place, line))
        for level, total in totals.items():
            text = assembly(level[1:], [level])
            asm, listing = text.with_suffix(".asm"), text.with_suffix(".cl")
            run([str(build / "bin/gas2interlist"), str(text), "-o", str(asm)], folder)
            run([str(build / "bin/interlist"), str(asm), str(listing)], folder)
            for i, count in enumerate(compare(own, Code(text), listed_lines(asm, listing))):
                total[i] += count
    return totals


def share(part, whole):
    return f"{100 * part / max(whole, 1):6.2f} %"


def main():
    build = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "build/bench").resolve()
    cache = pathlib.Path(
        os.environ.get("CACHE") or pathlib.Path.home() / ".cache/interlist-placement"
    )
    cache.mkdir(parents=True, exist_ok=True)
    print("package   lines with code, missing at -O2  above at -O0  above at -O2  right at -O2")
    for package in sys.argv[2:] or PACKAGES:
        totals = measure(package, build, cache)
        plain, optimised = totals["-O0"], totals["-O2"]
        print(
            f"{package:9} {optimised[0]:15} {optimised[1]:16}"
            f"      {share(plain[3], plain[2])}      {share(optimised[3], optimised[2])}"
            f"      {share(optimised[4], optimised[2])}",
            flush=True,
        )


main()
