#!/usr/bin/env python3
"""Plants faults in the sources, one at a time, and tells which of them the tests let through.

    scripts/plant_faults.py [options] FILE|FOLDER...

A fault is one small change: a comparison, an arithmetic or logical operator, a constant, a
character, a text or a condition that is another one, or a call or an assignment that is
missing. For each the script rebuilds what is needed in a copy of the tree and runs the tests
that belong to the folder, the quickest first, until one fails. A fault that no test notices
survives, and is reported as FILE:LINE with the line and the change. What does not compile, or
gives the same programs, is no fault and is not counted.

It takes hours for a whole folder and is run by hand, not by the gate: after new code, or before
a release. It needs python3 beside what the build needs. Copies, builds and results lie in
build/faults (--work); a run that was stopped goes on where it was, faults on lines that have not
changed keep their result, and those that survived are tried again when a test has changed. The
same sources give the same faults in the same order.

    --list         lists the faults and ends
    --every N      only every Nth fault of all, for a first impression
    --seed S       begin with another fault for --every (0 if not given)
    --lines A-B    only the faults on these lines (of one FILE)
    --tests REGEX  the tests to run, by their names in ctest (see `suites` below)
    --jobs J       so many at a time (2)
    --fresh        forget what earlier runs found
    --work DIR     where to work (build/faults)

Faults that cannot show, because the program does the same with them, stand with the reason in
scripts/plant_faults.skip: FILE, the line without the blanks around it, the change as it is
reported and the reason, with tabs between; they are left out.

Ends with status 0 when nothing survives, 1 when something does, 2 when it cannot run.
"""

import argparse
import concurrent.futures
import hashlib
import json
import os
import pathlib
import queue
import re
import resource
import shutil
import subprocess
import sys
import threading
import time

# The tests for a folder; the longest that a file's name begins with counts.
suites = {
    "assembly/": "^test_(assembly|gas2interlist|round_trip|clist)",
    "clist/": "^test_clist",
    "demangle/": "^scheme[01]_",
    "demangle/scheme0/": "^scheme0_",
    "demangle/scheme1/": "^scheme1_",
    "gas2interlist/": "^test_(gas2interlist|round_trip|faults_gas2interlist)",
    "interlist/": "^test_(interlist|round_trip)",
    "support/": "^test_(buildid|filename|safealloc|zesignalsupport|library_guide)",
    "symdecode/": "^test_symdecode",
}

root = pathlib.Path(__file__).resolve().parent.parent

# --- The faults of a file ---

# What is no code, kept apart so that faults in texts and characters can be told.
TOKENS = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<directive>^[ \t]*\#(?:\\\n|[^\n])*)
      | (?P<raw>R"(?P<mark>[^()\\\s]{0,16})\(.*?\)(?P=mark)")
      | (?P<text>"(?:\\.|[^"\\\n])*")
      | (?P<character>'(?:\\.[0-7x0-9a-fA-F]*|[^'\\\n])')
      | (?P<attribute>\[\[.*?\]\]|\b(?:static_assert|alignas|asm)\b\s*\([^;]*?\)\s*;)
      | (?P<number>\b(?:0[xX][0-9a-fA-F']+|[0-9][0-9']*)(?P<suffix>[uUlLzZ]*)\b(?!\.))
      | (?P<word>\b(?:true|false)\b)
      | (?P<operator>(?<=[ ])(?:==|!=|<=|>=|<|>|&&|\|\||[-+*/%&|]|<<|>>|[-+*/|&]=)(?=[ \n])
                   | \+\+|--|!(?=[\w(*:]))
    """,
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)
OPERATORS = {
    "==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">",
    "&&": "||", "||": "&&", "!": "",
    "+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "&": "|", "|": "&",
    "<<": ">>", ">>": "<<",
    "+=": "-=", "-=": "+=", "*=": "/=", "/=": "*=", "|=": "&=", "&=": "|=",
    "++": "--", "--": "++",
}  # fmt: skip
# A statement that only calls or assigns, whole lines of it.
STATEMENT = re.compile(
    r"^[ ]+((?:[\w:.>*\[\]()]|-(?=>))*\w[^;={}\"'\n]*?"
    r"(?:\((?:[^;{}\"']|\"(?:\\.|[^\"\\\n])*\"|'(?:\\.|[^'\\\n])')*\)"
    r"|[ ](?:[-+|&]?=)[ ](?:[^;{}\"']|\"(?:\\.|[^\"\\\n])*\"|'(?:\\.|[^'\\\n])')*));$",
    re.MULTILINE,
)
# Declarations look alike: a type in front of a name, or a word that begins a statement.
NO_STATEMENT = re.compile(
    r"\s*(?:return|throw|using|typedef|static|const|constexpr|auto|extern|else|if|for|while|do|case"
    r"|default|goto|delete|new|struct|enum|class|template|namespace|inline|thread_local|friend"
    r"|virtual|operator|co_\w+)\b|[\w:<>,*&\s]*[\w>*&]\s+[*&]*\w+\s*(?:[({=\[]|$)"
)
CONDITION = re.compile(r"\b(?:if|while)\s*\(")


def negated_conditions(code):
    """Conditions that hold no operator of their own, with their places."""
    for found in CONDITION.finditer(code):
        start = at = found.end()
        depth = 1
        while depth and at < len(code):
            depth += {"(": 1, ")": -1}.get(code[at], 0)
            at += 1
        condition = code[start : at - 1]
        if not re.search(r" (?:==|!=|<|>|<=|>=|&&|\|\||=) |[;!]", condition):
            yield start, at - 1


def changed_character(body):
    """Another character of one unit, for the inside of a character literal."""
    if body.startswith("\\"):
        return "\\1" if body == "\\0" else "~"
    return "~" if body in "'\\}" else chr(ord(body) + 1) if chr(ord(body) + 1) not in "'\\" else "~"


def changes(text):
    """All faults of a source text: (start, end, replacement, what the change is called)."""
    blanked = list(text)  # code alone, at the same places
    found = []
    for token in TOKENS.finditer(text):
        kind, start, end = token.lastgroup, token.start(), token.end()
        kind = next(k for k in ("comment", "directive", "raw", "text", "character", "attribute",
                                "number", "word", "operator") if token.group(k) is not None)  # fmt: skip
        old = token.group(0)
        if kind in ("comment", "directive", "attribute"):
            for at in range(start, end):
                if text[at] != "\n":
                    blanked[at] = " "
        elif kind == "text":
            body = old[1:-1]
            if not body:
                found.append((start, end, '"~"'))
            elif re.search(r"\\[0-7xuU][0-9a-fA-F]*$|\\.$", body):
                found.append((start, end, '"~' + (re.sub(r"^\\[0-7]+|^\\.|^.", "", body)) + '"'))
            else:
                found.append((start, end, '"' + body[:-1] + changed_character(body[-1]) + '"'))
        elif kind == "character":
            found.append((start, end, "'" + changed_character(old[1:-1]) + "'"))
        elif kind == "number":
            digits = old[: len(old) - len(token.group("suffix"))].replace("'", "")
            value = int(digits, 16 if digits[:2] in ("0x", "0X") else 10) + 1
            shown = hex(value) if digits[:2] in ("0x", "0X") else str(value)
            found.append((start, end, shown + token.group("suffix")))
        elif kind == "word":
            found.append((start, end, "false" if old == "true" else "true"))
        elif kind == "operator":
            found.append((start, end, OPERATORS[old]))
    code = "".join(blanked)
    for start, end in negated_conditions(code):
        found.append((start, end, "!(" + text[start:end] + ")"))
    for statement in STATEMENT.finditer(code):
        if not NO_STATEMENT.match(statement.group(1)):
            found.append((statement.start(1), statement.end(1), ""))
    return sorted(found)


class Fault:
    def __init__(self, file, text, start, end, new, counts):
        self.file, self.start, self.end, self.new = file, start, end, new
        self.line = text.count("\n", 0, start) + 1
        self.source = text.split("\n")[self.line - 1].strip()
        old = " ".join(text[start:end].split())
        self.change = f"{old} -> {new}" if new and len(old) < 60 else f"without {old}"
        if new.startswith("!("):
            self.change = f"negated {old}"
        same = (file, self.source, self.change)
        counts[same] = counts.get(same, 0) + 1
        if counts[same] > 1:
            self.change += f" #{counts[same]}"
        self.key = "\t".join((file, self.source, self.change))


def faults_of(file):
    text = (root / file).read_text()
    counts = {}
    return [Fault(file, text, *change, counts) for change in changes(text)]


# --- Copies, builds and tests ---


def tracked():
    listed = subprocess.run(
        ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        cwd=root, capture_output=True, check=True, text=True)  # fmt: skip
    return [name for name in listed.stdout.split("\0") if name and (root / name).is_file()]


def tests_digest():
    digest = hashlib.sha256()
    for name in tracked():
        if name.startswith("tests/"):
            digest.update(name.encode() + b"\0" + (root / name).read_bytes())
    return digest.hexdigest()[:16]


def limit():
    os.nice(10)
    memory = 8 << 30  # a fault that asks for ever more ends
    resource.setrlimit(resource.RLIMIT_AS, (memory, memory))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


class Copy:
    """One copy of the tree with its build."""

    def __init__(self, folder):
        self.tree = folder / "tree"
        self.build = folder / "build"
        self.suites = {}
        names = set(tracked())
        for name in names:
            source, target = root / name, self.tree / name
            if not target.exists() or target.read_bytes() != source.read_bytes():
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, target)
        for path in list(self.tree.rglob("*")):
            if path.is_file() and str(path.relative_to(self.tree)) not in names:
                path.unlink()
        # Warnings about what a fault leaves unused are of no interest; speed of building is, as
        # far as the bounds on stacks hold.
        self.run("cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja",
                 "-DCMAKE_BUILD_TYPE=", "-DCMAKE_CXX_FLAGS=-O2 -w", "-DCMAKE_C_FLAGS=-w",
                 check=True)  # fmt: skip

    def run(self, *words, check=False):
        words = [str(word) for word in words]
        done = subprocess.run(words, capture_output=True, text=True, errors="replace",
                              preexec_fn=lambda: os.nice(10))  # fmt: skip
        if check and done.returncode:
            sys.exit(f"{' '.join(words)}\n{done.stdout}{done.stderr}")
        return done.returncode == 0

    def make(self, target, check=False):
        return self.run("ninja", "-C", self.build, "-j", 1 if not check else 2, target, check=check)

    def show(self, pattern):
        shown = subprocess.run(
            ["ctest", "--show-only=json-v1", "-R", pattern],
            cwd=self.build, capture_output=True, check=True, text=True)  # fmt: skip
        return json.loads(shown.stdout)["tests"]

    def tests(self, pattern):
        """Name, command and folder of the tests, built; those that are no program are left out."""
        targets = subprocess.run(["ninja", "-C", self.build, "-t", "targets", "all"],
                                 capture_output=True, check=True, text=True).stdout  # fmt: skip
        targets = {line.split(":")[0] for line in targets.splitlines()}
        for test in self.show(pattern):
            if test["name"] in targets:
                self.make(test["name"], check=True)
        for test in self.show(pattern):
            if test["name"] in targets:
                properties = {entry["name"]: entry["value"] for entry in test["properties"]}
                yield test["name"], test["command"], properties["WORKING_DIRECTORY"]

    def passes(self, command, folder, seconds):
        environment = dict(os.environ, GTEST_FAIL_FAST="1", GTEST_BRIEF="1")
        process = subprocess.Popen(
            command, cwd=folder, env=environment, stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            preexec_fn=limit, start_new_session=True)  # fmt: skip
        try:
            return process.wait(timeout=seconds) == 0
        except subprocess.TimeoutExpired:
            return False
        finally:
            try:
                os.killpg(process.pid, 9)  # its own session: what it started and left
            except ProcessLookupError:
                pass
            process.wait()


class Test:
    """A test as it is without a fault: how it is run, what runs, and how long it takes."""

    def __init__(self, copy, name, command, folder):
        self.copy, self.name, self.command, self.folder = copy, name, command, folder
        self.digest = self.built()
        started = time.monotonic()
        if not copy.passes(command, folder, 1200):
            sys.exit(f"{name} fails without a fault")
        self.seconds = time.monotonic() - started

    def built(self):
        """Stands for the test's program and the programs that it may run."""
        digest = hashlib.sha256(pathlib.Path(self.command[0]).read_bytes())
        for program in sorted((self.copy.build / "bin").glob("*")):
            digest.update(program.read_bytes())
        return digest.digest()

    def notices(self):
        return not self.copy.passes(self.command, self.folder, 30 + 10 * self.seconds)


def suite(copy, pattern):
    """The tests that the pattern names, the quickest first."""
    if pattern not in copy.suites:
        tests = [Test(copy, *row) for row in copy.tests(pattern)]
        if not tests:
            sys.exit(f"no tests match {pattern}")
        copy.suites[pattern] = sorted(tests, key=lambda test: test.seconds)
    return copy.suites[pattern]


def try_fault(copy, pattern, fault):
    """'survived', 'no fault', or the name of the test that noticed."""
    tests = suite(copy, pattern)
    path = copy.tree / fault.file
    text = path.read_text()
    path.write_text(text[: fault.start] + fault.new + text[fault.end :])
    result = "no fault"
    try:
        for test in tests:
            if not copy.make(test.name):
                return "no fault"
            if test.built() != test.digest:
                if test.notices():
                    return test.name
                result = "survived"
        return result
    finally:
        path.write_text(text)


# --- The run ---


def suite_of(file, given):
    if given:
        return given
    prefixes = [prefix for prefix in suites if file.startswith(prefix)]
    if not prefixes:
        sys.exit(f"{file}: give --tests")
    return suites[max(prefixes, key=len)]


def sources(words):
    names = [name for name in tracked() if name.endswith((".cpp", ".h"))]
    for word in words:
        word = os.path.relpath(os.path.abspath(word), root)
        matching = sorted(n for n in names if n == word or n.startswith(word + "/"))
        if not matching:
            sys.exit(f"{word}: no sources")
        yield from matching


def skipped():
    path = root / "scripts" / "plant_faults.skip"
    if not path.exists():
        return set()
    rows = (line.split("\t") for line in path.read_text().splitlines() if line[:1] not in ("", "#"))
    return {"\t".join(row[:3]) for row in rows}


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("words", nargs="+")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--every", type=int, default=1)
    parser.add_argument("--seed", type=int, default=0)
    parser.add_argument("--lines")
    parser.add_argument("--tests")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--fresh", action="store_true")
    parser.add_argument("--work", type=pathlib.Path, default=root / "build" / "faults")
    options = parser.parse_args()

    left_out = skipped()
    faults = [fault for file in sources(options.words) for fault in faults_of(file)]
    faults = [fault for fault in faults if fault.key not in left_out]
    if options.lines:
        first, last = map(int, options.lines.split("-"))
        faults = [fault for fault in faults if first <= fault.line <= last]
    faults = faults[options.seed % options.every :: options.every]
    if options.list:
        for fault in faults:
            print(f"{fault.file}:{fault.line}: {fault.change}: {fault.source}")
        return 0

    options.work.mkdir(parents=True, exist_ok=True)
    results_file = options.work / "results.jsonl"
    if options.fresh:
        results_file.unlink(missing_ok=True)
    digest = tests_digest()
    results = {}
    if results_file.exists():
        for line in results_file.read_text().splitlines():
            row = json.loads(line)
            if row["result"] == "survived" and row["tests"] != digest:
                results.pop(row["key"], None)
            else:
                results[row["key"]] = row["result"]
    todo = [fault for fault in faults if fault.key not in results]
    print(f"{len(faults)} faults, {len(todo)} to try", file=sys.stderr, flush=True)

    if todo:
        free = queue.Queue()
        for i in range(options.jobs):
            free.put(Copy(options.work / str(i)))
            for pattern in sorted({suite_of(fault.file, options.tests) for fault in todo}):
                suite(free.queue[-1], pattern)
        lock = threading.Lock()

        def work(numbered):
            number, fault = numbered
            pattern = suite_of(fault.file, options.tests)
            copy = free.get()
            try:
                result = try_fault(copy, pattern, fault)
            finally:
                free.put(copy)
            with lock:
                results[fault.key] = result
                with results_file.open("a") as out:
                    row = {"key": fault.key, "result": result, "tests": digest}
                    out.write(json.dumps(row) + "\n")
                if result == "survived" or number % 50 == 0:
                    print(f"[{number}/{len(todo)}] {fault.file}:{fault.line}: {result}: "
                          f"{fault.change}", file=sys.stderr, flush=True)  # fmt: skip

        with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
            try:
                list(pool.map(work, enumerate(todo, 1)))
            except KeyboardInterrupt:
                pool.shutdown(wait=True, cancel_futures=True)
                raise

    real = [fault for fault in faults if results.get(fault.key) not in ("no fault", None)]
    survivors = [fault for fault in real if results[fault.key] == "survived"]
    for fault in survivors:
        print(f"{fault.file}:{fault.line}: {fault.change}\n    {fault.source}")
    share = 100 * len(survivors) / len(real) if real else 0
    print(f"{len(real)} faults, {len(survivors)} survived: {share:.1f} %")
    return 1 if survivors else 0


if __name__ == "__main__":
    sys.exit(main())
