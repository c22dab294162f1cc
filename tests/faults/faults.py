#!/usr/bin/env python3
"""Lets one call of the system fail at a time, the first, the second and so on, until a run has passed without: over a
scan, each report, a copy of the database, a load and a comparison. Whatever fails, the program ends with a status and a
line that says why, older files are whole, nothing is left beside them, and the next start works."""

import os
import shutil
import signal
import subprocess
import sys
import tempfile
from pathlib import Path

PROGRAM, LIBRARY = Path(sys.argv[1]), sys.argv[2]
# With the growth of the call's number from one run to the next. Memory (only with --memory) is asked for thousands of
# times: all of the first, then fewer and fewer.
CALLS = {"write": 1.0, "read": 1.0, "sync": 1.0, "rename": 1.0, "resize": 1.0, "open": 1.0, "stat": 1.0}
if "--memory" in sys.argv:
    CALLS = {"malloc": 1.03}
REPORTS = ["--html", "--text", "--xml", "--excel", "--database"]
OLD = b"the older file\n"


class Case:
    """A way to use the program: its arguments, and the file that it replaces, if any."""

    def __init__(self, folder, name, arguments, target):
        self.name = name
        self.app = folder / "app"
        self.output = folder / "output"
        self.mark = folder / "failed"
        self.target = self.output / target if target else None
        # The calls come in the same order each time only if one thread makes them all.
        self.arguments = [PROGRAM, "--readers", "0", "--app-folder", self.app, "--force", *arguments]
        if target:
            self.arguments += [name, self.target]

    def prepare(self):
        for made in (self.output, self.app):
            shutil.rmtree(made, ignore_errors=True)
            made.mkdir()
        if self.target:
            self.target.write_bytes(OLD)
        self.mark.unlink(missing_ok=True)

    def run(self, **variables):
        return subprocess.run(self.arguments, env={**os.environ, **variables}, stdin=subprocess.DEVNULL,
                              capture_output=True, timeout=60)

    def isReplaced(self):
        return not self.target or self.target.read_bytes() != OLD


def figures(run):
    return [line for line in run.stdout.splitlines() if not line.startswith(b"Finished in")]


def complaints(case, run, whole, wholeSize):
    """What is wrong after a call has failed."""
    errors = run.stderr.decode(errors="replace")
    # The library that writes workbooks does not look whether it was given memory.
    isLibrarys = case.name == "--excel" and run.returncode == -signal.SIGSEGV and not case.isReplaced()
    if run.returncode not in (0, 1) and not isLibrarys:
        yield f"ended with {run.returncode}: {errors}"
    if run.returncode == 1 and not errors.strip():
        yield "did not say why"
    if run.returncode == 0 and not errors and figures(run) != figures(whole):
        yield "printed other figures without a word"
    if run.returncode == 0 and not case.isReplaced():
        yield "wrote nothing without a word"
    if case.target:
        beside = {file.name for file in case.output.iterdir()} - {case.target.name}
        if beside:
            yield f"left {beside}"
        size = case.target.stat().st_size
        # Without a word, only a date or an owner may be missing, which the system did not tell.
        if case.isReplaced() and size < 0.95 * wholeSize and not errors:
            yield f"left {size} bytes of {wholeSize}"
    again = case.run()
    if again.returncode != 0 or not case.isReplaced():
        yield f"the next start ended with {again.returncode}: {again.stderr.decode(errors='replace')}"


def tryAll(case):
    case.prepare()
    whole = case.run()
    assert whole.returncode == 0, case.name
    wholeSize = case.target.stat().st_size if case.target else 0
    faults, runs = 0, 0
    for call, growth in CALLS.items():
        at, number = 1, 1.0
        while True:
            case.prepare()
            run = case.run(LD_PRELOAD=LIBRARY, SPANNORY_FAIL_CALL=call, SPANNORY_FAIL_AT=str(at),
                           SPANNORY_FAIL_FILE=str(case.mark))
            if not case.mark.exists():
                break
            runs += 1
            for complaint in complaints(case, run, whole, wholeSize):
                print(f"{case.name}: {call} number {at} failed: {complaint}")
                faults += 1
            number = max(number * growth, number + 1)
            at = int(number)
    print(f"{case.name}: {runs} calls failed, {faults} faults")
    return faults


with tempfile.TemporaryDirectory() as name:
    folder = Path(name)
    for file in ("a/one.txt", "a/two.txt", "b/c/three", "four"):
        (folder / "tree" / file).parent.mkdir(parents=True, exist_ok=True)
        (folder / "tree" / file).write_bytes(b"x" * 1000)
    saved = folder / "saved.mdb"
    subprocess.run([PROGRAM, "--quiet", "--app-folder", folder / "first", "--database", saved, folder / "tree"],
                   check=True)
    (folder / "tree/a/one.txt").write_bytes(b"y" * 3000)
    (folder / "tree/new").write_bytes(b"new")
    cases = [Case(folder, "scan", [folder / "tree"], None), Case(folder, "load", ["--load", saved], None),
             Case(folder, "compare", ["--compare", saved, folder / "tree"], None)]
    cases += [Case(folder, report, ["--quiet", folder / "tree"], "out") for report in REPORTS]
    sys.exit(1 if sum([tryAll(case) for case in cases]) else 0)
