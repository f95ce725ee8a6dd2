#!/usr/bin/env python3
"""Measures the listings of clist on a large real program, as ratios against cat copying the
same assembly file in the same run: with every line (--all), and without noise. Beside them
stand objdump -dl and -dS, which write lines and source among an object's code.

  bench/clist_listing.py [BUILD]     BUILD is build/bench if not given

For each the best time of RUNS runs that take turns (15 if not set), the processor's time in
the best one, which other work on the machine hardly changes, and the most memory. The program
is the C file that an npm package ships; it is fetched into CACHE (a folder below the user's
cache if not set) the first time.
"""

import os
import pathlib
import subprocess
import sys
import time

PACKAGE = "better-sqlite3@11.5.0"
CACHE = pathlib.Path(
    os.environ.get("CACHE")
    or pathlib.Path(os.environ.get("XDG_CACHE_HOME") or pathlib.Path.home() / ".cache")
    / "interlist-bench"
)


def prepare():
    CACHE.mkdir(parents=True, exist_ok=True)
    os.chdir(CACHE)
    if not os.path.exists("sqlite3.c"):
        subprocess.run(["npm", "pack", "--silent", PACKAGE], check=True, stdout=subprocess.DEVNULL)
        (archive,) = CACHE.glob("better-sqlite3-*.tgz")
        member = "package/deps/sqlite3/sqlite3.c"
        subprocess.run(["tar", "-xzf", archive, "--strip-components=3", member], check=True)
        archive.unlink()
    if not os.path.exists("sqlite3.s"):
        subprocess.run("gcc -S -g -O1 sqlite3.c -o sqlite3.s".split(), check=True)
    if not os.path.exists("sqlite3.o"):
        subprocess.run("gcc -c sqlite3.s -o sqlite3.o".split(), check=True)


def run(command):
    """Seconds by the clock, seconds of the processor, bytes of memory."""
    with open("output", "wb") as output:
        started = time.monotonic()
        child = subprocess.Popen(command, stdout=output)
        _, status, used = os.wait4(child.pid, 0)
        took = time.monotonic() - started
    if status != 0:
        sys.exit(f"{' '.join(command)}: status {status}")
    return took, used.ru_utime + used.ru_stime, used.ru_maxrss * 1024


def main():
    build = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "build/bench").resolve()
    runs = int(os.environ.get("RUNS", "15"))
    prepare()
    clist = str(build / "bin/clist")
    commands = {
        "cat": ["cat", "sqlite3.s"],
        "clist --all": [clist, "--all", "sqlite3.s"],
        "clist": [clist, "sqlite3.s"],
    }
    best = {name: run(command) for name, command in commands.items()}
    for _ in range(runs - 1):
        for name, command in commands.items():
            best[name] = tuple(map(min, best[name], run(command)))
    for option in ("-dl", "-dS"):
        best[f"objdump {option}"] = run(["objdump", option, "sqlite3.o"])
    size = os.path.getsize("sqlite3.s")
    clock, work, _ = best["cat"]
    print(f"{size} bytes of assembly")
    for name, (took, worked, memory) in best.items():
        print(
            f"{name:12} {took * 1e3:9.1f} ms {took / clock:7.2f} times cat;"
            f" processor {worked * 1e3:9.1f} ms {worked / work:7.2f} times cat;"
            f" memory {memory / size:6.2f} times the assembly"
        )


main()
