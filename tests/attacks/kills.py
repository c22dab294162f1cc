#!/usr/bin/env python3
"""kills.py PROGRAM [--kills 500]: kills spannory-scan at random moments of each kind of run. Whatever it was about to
replace is the old or the new file, whole; at most one file is left beside it, and gone after the next run."""

import argparse
import html.parser
import random
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import time
import zipfile
from pathlib import Path
from xml.etree import ElementTree

OLD = b"the older file\n" * 1000
FILES, FOLDERS = 40, 60
REPORTS = ["--html", "--text", "--xml", "--excel", "--database"]


def isDatabase(file):
    with sqlite3.connect(f"file:{file}?mode=ro&immutable=1", uri=True) as database:
        rows = database.execute("select count(*) from details").fetchone()[0]
        return database.execute("pragma integrity_check").fetchone()[0] == "ok" and rows > FILES * FOLDERS


def isPage(file):
    text = file.read_text()
    html.parser.HTMLParser().feed(text)
    return text.rstrip().lower().endswith("</html>")


def isWorkbook(file):
    with zipfile.ZipFile(file) as book:
        return book.testzip() is None


def isText(file):
    return file.read_bytes().endswith(b"\n") and file.read_bytes().count(b"\n") > FILES * FOLDERS


def isXml(file):
    return len(list(ElementTree.parse(file).iter("path"))) > FOLDERS


READERS = {"--html": isPage, "--text": isText, "--xml": isXml, "--excel": isWorkbook, "--database": isDatabase}


class Case:
    """A way to use the program: its arguments, and the file that it replaces, if any."""

    def __init__(self, program, folder, name, arguments, report):
        self.name, self.report = name, report
        self.app, self.output, self.temporary = folder / "app", folder / "output", folder / "temporary"
        self.target = self.output / "target"
        self.arguments = [program, "--app-folder", self.app, "--force", "--quiet", *arguments]
        if report:
            self.arguments += [report, self.target]
        self.counts = {"kills": 0, "old": 0, "new": 0, "ended": 0, "leftovers": 0, "faults": 0}

    def start(self):
        return subprocess.Popen(self.arguments, env={"TMPDIR": str(self.temporary)}, stdin=subprocess.DEVNULL,
                                stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)

    def prepare(self):
        for made in (self.output, self.temporary):
            shutil.rmtree(made, ignore_errors=True)
            made.mkdir()
        self.target.write_bytes(OLD)

    def measure(self):
        times = []
        for _ in range(5):
            self.prepare()
            begin = time.monotonic()
            run = self.start()
            errors = run.communicate()[1]
            times.append(time.monotonic() - begin)
            assert run.returncode == 0, errors
        return max(times)

    def leftovers(self):
        return [path for path in self.output.iterdir() if path != self.target] + list(self.temporary.iterdir())

    def fault(self, what):
        self.counts["faults"] += 1
        print(f"{self.name}: {what}")

    def isWhole(self):
        try:
            return READERS[self.report](self.target)
        except Exception as error:
            print(error)
            return False

    def killOnce(self, duration):
        self.prepare()
        run = self.start()
        time.sleep(random.uniform(0, duration))
        run.kill()
        run.communicate()
        self.counts["kills" if run.returncode < 0 else "ended"] += 1
        if self.target.read_bytes() == OLD:
            self.counts["old"] += 1
        elif self.report and self.isWhole():
            self.counts["new"] += 1
        else:
            self.fault("the file is neither old nor new")
        beside = [path for path in self.output.iterdir() if path != self.target]
        self.counts["leftovers"] += len(self.leftovers())
        if len(beside) > 1:
            self.fault(f"left {beside}")

    def next(self):
        run = self.start()
        errors = run.communicate()[1].decode(errors="replace")
        if run.returncode != 0 or self.report and not self.isWhole():
            self.fault(f"the next run ended with {run.returncode}: {errors}")
        if self.leftovers():
            self.fault(f"after the next run, {self.leftovers()} are there")
        beside = sorted(file.name for file in self.app.iterdir())
        if len(beside) > 4:
            self.fault(f"the application folder holds {beside}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("program", type=lambda path: Path(path).resolve())
    parser.add_argument("--kills", type=int, default=500, help="for each kind of run")
    options = parser.parse_args()
    faults = 0
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        for number in range(FILES * FOLDERS):
            file = folder / "tree" / f"folder {number // FILES}" / f"file {number}.txt"
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_bytes(b"x" * number)
        (folder / "app").mkdir()
        saved = folder / "saved.mdb"
        subprocess.run([options.program, "--quiet", "--app-folder", folder / "first", "--database", saved,
                        folder / "tree"], check=True)
        cases = [("scan", [folder / "tree"], None), ("load", ["--load", saved], None)]
        cases += [(report, [folder / "tree"], report) for report in REPORTS]
        cases += [(f"load {report}", ["--load", saved], report) for report in ("--html", "--database")]
        for case in [Case(options.program, folder, *each) for each in cases]:
            duration = case.measure()
            for _ in range(options.kills):
                case.killOnce(duration)
                case.next()
            print(f"{case.name} ({duration * 1000:.0f} ms):",
                  ", ".join(f"{count} {what}" for what, count in case.counts.items()), flush=True)
            faults += case.counts["faults"]
    return 1 if faults else 0


sys.exit(main())
