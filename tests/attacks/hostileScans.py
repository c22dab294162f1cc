#!/usr/bin/env python3
"""hostileScans.py PROGRAM FOLDER [--seconds 1] [--mebibytes 100]: loads every file of a folder of saved scans that
somebody made to do harm, with each report, plain, exact, and compared with itself. Each is refused with one line or
loaded, within the limits; nothing in a report runs: no script in HTML, no formula in text or workbook. With a program
built under a sanitizer, give larger limits."""

import argparse
import csv
import html.parser
import io
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
import zipfile
from pathlib import Path
from xml.etree import ElementTree

REPORTS = ["html", "text", "xml", "excel", "overview"]
ELEMENTS = {"html", "head", "title", "meta", "style", "body", "table", "thead", "tbody", "tr", "td", "th", "br", "font",
            "b", "strong", "caption", "h1", "h2", "h3", "p", "hr", "center", "col", "colgroup"}
OVERVIEW = {"script", "header", "footer", "nav", "section", "ul", "li", "a", "bdi", "dl", "dt", "dd", "div", "span", "svg",
            "rect", "g", "details", "summary"}
LONGEST = 60  # seconds, after which a run is killed


class Page(html.parser.HTMLParser):
    """What a page holds that a report does not."""

    def __init__(self):
        super().__init__()
        self.odd = set()

    def handle_starttag(self, tag, attributes):
        if tag not in ELEMENTS:
            self.odd.add(tag)
        self.odd |= {name for name, value in attributes
                     if name.startswith("on") or re.match(r"\s*(javascript|data):", value or "", re.IGNORECASE)}


def oddInHtml(data):
    page = Page()
    page.feed(data.decode("utf-8", "replace"))
    page.close()
    return page.odd


def oddInOverview(data):
    scripts = re.findall(b"<script.*?</script>", data, re.DOTALL)
    odd = {"large"} if len(data) > 1 << 20 else set()
    return odd | (oddInHtml(data) - OVERVIEW) | ({f"{len(scripts)} scripts"} if len(scripts) != 1 else set())


def oddInText(data):
    records = list(csv.reader(io.StringIO(data.decode("utf-8", "replace"), newline=""), strict=True))
    lengths = {len(record) for record in records if record}
    cells = [cell for record in records for cell in record]
    odd = {cell[:40] for cell in cells if re.match(r"\s*[=+@\t]|\s*-(?!\d+(\.\d+)?$)", cell)}
    return odd | ({f"records of {lengths} fields"} if len(lengths) > 1 else set())


def oddInXml(data):
    ElementTree.fromstring(data)
    return {"a document type"} if re.search(b"<!(DOCTYPE|ENTITY)", data) else set()


def oddInWorkbook(data):
    book = zipfile.ZipFile(io.BytesIO(data))
    parts = {name: book.read(name) for name in book.namelist()}
    odd = {name for name, part in parts.items() if re.search(rb"vba|externalLink|oleObject|<hyperlink", part)}
    return odd | {"a formula" for part in parts.values() if re.search(rb"<f[ >]", part)}


READERS = {"html": oddInHtml, "text": oddInText, "xml": oddInXml, "excel": oddInWorkbook, "overview": oddInOverview}
ENDINGS = {"html": "html", "text": "csv", "xml": "xml", "excel": "xlsx", "overview": "overview.html"}


def officeFormulas(files, folder):
    """The reports in which a spreadsheet program finds formulas; one that has a formula is converted with them."""
    control = folder / "control.csv"
    control.write_text('"=1+1"\r\n"text"\r\n')
    found = set()
    for suffix in (".csv", ".xlsx"):
        of = [file for file in [*files, control] if file.suffix == suffix]
        target = folder / f"office{suffix}"
        subprocess.run(["soffice", f"-env:UserInstallation=file://{folder}/profile", "--headless", "--convert-to",
                        "fods", "--outdir", target, *of], check=True, capture_output=True, timeout=300)
        assert len(list(target.iterdir())) == len(of), "not all reports were read"
        found |= {file.stem + suffix for file in target.iterdir() if b"table:formula=" in file.read_bytes()}
    assert control.name in found, "the spreadsheet program takes no text for a formula"
    return found - {control.name}


def options(mode, saved):
    return {"plain": [], "exact": ["--exact"], "compared": ["--compare", saved, "--all"]}[mode]


def reportFile(saved, folder, mode, report):
    return folder / f"{saved.stem}-{mode}.{ENDINGS[report]}"


def load(program, saved, folder, reports, mode):
    """The status, the errors, the seconds and the mebibytes of a run."""
    arguments = [program, "--force", "--app-folder", folder / "app", "--load", saved] + options(mode, saved)
    for report in reports:
        arguments += [f"--{report}", reportFile(saved, folder, mode, report)]
    with open(folder / "errors", "w+b") as errors:
        begin = time.monotonic()
        child = subprocess.Popen(arguments, stdin=subprocess.DEVNULL,
                                 stdout=subprocess.DEVNULL, stderr=errors)
        while True:
            done, status, usage = os.wait4(child.pid, os.WNOHANG)
            if done:
                break
            if time.monotonic() - begin > LONGEST:
                child.kill()
            time.sleep(0.002)
        child.returncode = os.waitstatus_to_exitcode(status)
        seconds = time.monotonic() - begin
        errors.seek(0)
        return child.returncode, errors.read().decode(errors="replace"), seconds, usage.ru_maxrss / 1024


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("program", type=lambda path: Path(path).resolve())
    parser.add_argument("folder", type=Path)
    parser.add_argument("--seconds", type=float, default=1)
    parser.add_argument("--mebibytes", type=float, default=100)
    given = parser.parse_args()
    faults = 0
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name).resolve()
        (folder / "app").mkdir()
        for saved in sorted(file for file in given.folder.iterdir() if file.suffix not in (".md", ".txt")):
            for mode in ("plain", "exact", "compared"):
                status, errors, seconds, mebibytes = load(given.program, saved, folder, REPORTS, mode)
                found = {}
                for report in REPORTS:
                    file = reportFile(saved, folder, mode, report)
                    if file.exists():
                        found[report] = READERS[report](file.read_bytes())
                odd = {report: what for report, what in found.items() if what}
                lines = len(errors.strip().splitlines())
                isFault = (status not in (0, 1) or lines != status or odd or seconds > given.seconds or
                           mebibytes > given.mebibytes or (status == 0 and len(found) < len(REPORTS)))
                faults += bool(isFault)
                print(f"{saved.name} {mode}: status {status}, {seconds:.2f} s, {mebibytes:.0f} MiB,",
                      f"{len(found)} reports", odd or "", errors.strip()[:200], "FAULT" if isFault else "", flush=True)
        formulas = set()
        if shutil.which("soffice"):
            tables = [file for file in folder.iterdir() if file.suffix in (".csv", ".xlsx")]
            formulas = officeFormulas(tables, folder)
            print(f"{len(tables)} reports in the spreadsheet program, formulas in: {formulas or 'none'}")
    return 1 if faults or formulas else 0


sys.exit(main())
