#!/usr/bin/env python3
"""readBack.py SPANNORY-SCAN: scans a folder whose names are hard to write, and reads the reports back with Python's
readers. Exact reports must give each name as it is on the disk; the others all that their form can carry."""
import csv
import html.parser
import io
import os
import re
import shutil
import subprocess
import sys
import tempfile
import zipfile
from xml.etree import ElementTree

import browser

NAMES = [b'Who?', b'a"b', b'"', b'"",', b',"x', b'a,b', b'<x>', b'<b>bold', b'<td>', b'a\\b', b'a&amp;b',
         b'&lt;', b'R&D', b'a*b|c', b'\\101', b'_x0041_', b' blank ', b'caf\xe9', b'caf\xc3\xa9', b'\xff\xfe',
         b'\xef\x80\x81', b'\xef\x80\xbf', b'\xee\xbe\x80', b'\xef\xbf\xbe', b'\xef\xb7\x90', b'\xc2\x85', b']]>',
         b'two\nlines', b'two\r\nlines', b'\ttab', "o'brien".encode(), b'#1[2]', b'--', b'=1+1', b'w' * 80 + b'<>']
NAMES += [b'n%c.T%c' % (c, c) for c in range(1, 256) if c != ord('/')]
TITLE = re.compile(r'^(/.* - )?Spannory - Detail Report \(\d\d/\d\d/\d\d \d\d:\d\d [AP]M\) ?$', re.DOTALL)


def on_disk(text):
    """The bytes of a name in a document that holds no control characters, or only valid text."""
    def moved_back(match):
        code = ord(match[0])
        return bytes([code - 0xEF00 if code < 0xF000 else code - 0xF000])
    parts = re.split('([\uEF80-\uEFFF\uF001-\uF01F\uF07F])', text)
    return b''.join(moved_back(re.match('.', p, re.DOTALL)) if i % 2 else p.encode() for i, p in enumerate(parts))


class Cells(html.parser.HTMLParser):
    """The rows of a table, and the page's title."""

    def __init__(self):
        super().__init__(convert_charrefs=True)
        self.rows, self.title, self.into = [], '', None

    def handle_starttag(self, tag, attributes):
        if tag == 'tr':
            self.rows.append([])
        elif tag == 'td':
            self.rows[-1].append('')
        self.into = tag if tag in ('td', 'title') else self.into if tag == 'br' else None

    def handle_endtag(self, tag):
        self.into = None

    def handle_data(self, data):
        if self.into == 'td':
            self.rows[-1][-1] += data
        elif self.into == 'title':
            self.title += data


def html_names(data, exact):
    page = Cells()
    page.feed(data.decode('utf-8', 'strict' if exact else 'surrogateescape'))
    page.close()
    check(TITLE.match(page.title), f'title {page.title!r}')
    rows = [row for row in page.rows if len(row) == 7 and row[6] in ('File', 'Folder')]
    return [on_disk(row[0]) if exact else os.fsencode(row[0]) for row in rows]


def csv_names(data, exact):
    text = data.decode('utf-8', 'surrogateescape')
    rows = list(csv.reader(io.StringIO(text, newline=''), strict=True))
    check(all(len(row) == 7 for row in rows), 'seven fields a row')
    check(not exact or data.endswith(b'"\r\n') and data.startswith(b'"Path",'), 'RFC 4180')
    return [os.fsencode(row[0]) for row in rows[1:]]


def xml_names(data, exact):
    names = []

    def visit(element, parent):
        path = element.findtext('pathName')
        same = str if exact else str.lower  # A to Z is the same as a to z unless it is to be exact
        check(parent is None or same(path).startswith(same(parent)), f'{path!r} stands in {parent!r}')
        check([child.tag for child in element if child.tag in ('owner', 'dateModified')] ==
              ['dateModified', 'owner' if exact else 'dateModified'], 'the element of the owner')
        names.append(on_disk(path).rstrip(b'/'))
        for child in element.findall('path'):
            visit(child, path)
        return path
    tops = [visit(top, None) for top in ElementTree.fromstring(data).findall('path')]
    check(len(tops) == 1, f'one folder is at the top, not {len(tops)}')
    return names


def excel_cells(data):
    book = zipfile.ZipFile(io.BytesIO(data))
    sheet = ElementTree.fromstring(book.read('xl/worksheets/sheet1.xml'))
    space = {'m': sheet.tag[1:sheet.tag.index('}')]}
    return {c.get('r'): c.findtext('m:is/m:t', None, space) for c in sheet.iterfind('.//m:c', space)}


def unescaped(text):
    """A code such as _x000D_ is one character, and _x005F_ the underscore that begins such a text."""
    return re.sub('_x([0-9A-F]{4})_', lambda m: chr(int(m[1], 16)), text)


def excel_names(data, exact):
    texts = [text for place, text in excel_cells(data).items() if re.match('A[0-9]', place)]
    check(texts[0 if exact else 1] == 'Path', 'the headers')
    title = zipfile.ZipFile(io.BytesIO(data)).read('docProps/core.xml')
    check(not exact or b'Spannory - Detail Report' in title, 'the title')
    return [on_disk(unescaped(text)) for text in texts[1 if exact else 2:]]


READERS = {'html': html_names, 'text': csv_names, 'xml': xml_names, 'excel': excel_names}


def check(condition, what):
    if not condition:
        failures.append(what)
        print('FAILED:', what)


def make_tree(folder):
    paths = [folder]
    for name in NAMES:
        below = os.path.join(folder, b'd' + name)
        os.makedirs(os.path.join(below, name))
        paths += [below, os.path.join(below, name), os.path.join(below, b'file')]
        with open(paths[-1], 'wb') as file:
            file.write(b'x')
    return paths


def try_reports(program, folder, exact):
    top = os.path.join(folder, b'tree')
    command = [program, '--quiet', '--force', '--owners', '--app-folder', os.path.join(folder, b'app'), top]
    files = {kind: os.path.join(folder, b'report.' + kind.encode()) for kind in READERS}
    for kind, file in files.items():
        command += ['--' + kind, file]
    subprocess.run(command + (['--exact'] if exact else []), check=True)
    for kind, reader in READERS.items():
        with open(files[kind], 'rb') as file:
            read = [name.rstrip(b'/') for name in reader(file.read(), exact)]
        wanted = set(paths)
        if kind == 'xml':  # the folders
            wanted = {path for path in paths if os.path.isdir(path)}
        if kind == 'html' and not exact:  # & stands as it is, and may make an entity
            readable = lambda path: html.unescape(os.fsdecode(path)) == os.fsdecode(path)
            wanted, read = set(filter(readable, paths)), [p for p in read if p in wanted and readable(p)]
        check(len(read) == len(set(read)), f'{kind}: every path once')
        check(set(read) == wanted, f'{kind}, exact {exact}: missing {sorted(wanted - set(read))[:9]}, '
                                   f'odd {sorted(set(read) - wanted)[:9]}')
    if exact and shutil.which('tidy'):
        tidy = subprocess.run(['tidy', '-e', '-q', '-utf8', files['html']], capture_output=True)
        check(tidy.returncode == 0, f'tidy: {tidy.stderr.decode()[:2000]}')


def try_comparison(program, folder):
    """Reports of what has changed: each path once, in every form."""
    tree = os.path.join(folder, b'tree')
    command = [program, '--quiet', '--force', '--app-folder', os.path.join(folder, b'app'), tree]
    saved = os.path.join(folder, b'before.mdb')
    subprocess.run(command + ['--database', saved], check=True)
    wanted = {tree: b'grown'}
    for name in NAMES:
        below = os.path.join(tree, b'd' + name)
        wanted[below] = b'grown'
        wanted[os.path.join(below, b'+' + name)] = b'new'
        with open(os.path.join(below, b'+' + name), 'wb') as file:
            file.write(b'xyz')
    files = {kind: os.path.join(folder, b'changes.' + kind.encode()) for kind in READERS}
    for kind, file in files.items():
        command += ['--' + kind, file]
    subprocess.run(command + ['--compare', saved], check=True)
    for kind, file in files.items():
        with open(file, 'rb') as opened:
            data = opened.read()
        if kind == 'html':
            page = Cells()
            page.feed(data.decode())
            page.close()
            rows = [(on_disk(row[0]), row[2]) for row in page.rows if row]
        elif kind == 'text':
            rows = [(os.fsencode(row[0]), row[2]) for row in
                    list(csv.reader(io.StringIO(data.decode('utf-8', 'surrogateescape'), newline=''), strict=True))[1:]]
        elif kind == 'xml':
            rows = [(on_disk(row.findtext('path')), row.findtext('state')) for row in
                    ElementTree.fromstring(data).findall('row')]
        else:
            cells = excel_cells(data)
            rows = [(on_disk(unescaped(cells[f'A{row}'])), cells[f'C{row}']) for row in range(4, 4 + len(wanted))]
            check(cells['A3'] == 'Path' and f'A{4 + len(wanted)}' not in cells, 'the rows of the workbook')
        check(len(rows) == len(wanted), f'changes as {kind}: {len(rows)} rows')
        check({path.rstrip(b'/'): state.encode() for path, state in rows} == wanted, f'changes as {kind}')


SORTED = """(function (table, column) {
  document.querySelectorAll('table')[table].tHead.rows[0].cells[column].querySelector('button').click();
  return Array.from(document.querySelectorAll('table')[table].tBodies[0].rows).map(
    function (row) { return row.cells[column].dataset.v || row.cells[column].textContent; });
})"""


def try_overview(program, folder):
    """The page in a browser: it asks for nothing, complains of nothing, shows names as texts, and sorts."""
    page = os.path.join(folder, b'overview.html')
    tree = os.path.join(folder, b'tree')
    subprocess.run([program, '--quiet', '--force', '--owners', '--app-folder', os.path.join(folder, b'app'),
                    '--overview', page, tree], check=True)
    check(os.path.getsize(page) <= 1 << 20, 'an overview is small')
    if not browser.program():
        print('skipped: no browser')
        return
    with tempfile.TemporaryDirectory(prefix='spannory-browser-', ignore_cleanup_errors=True) as profile:
        with browser.Browser(profile) as window:
            window.open(os.fsdecode(page))
            tables = window.value('document.querySelectorAll("table").length')
            check(tables == 5, f'{tables} tables')
            for table, column in ((0, 1), (0, 3), (2, 1), (3, 2)):
                rows = [[float(v) for v in window.value(f'{SORTED}({table}, {column})')] for _ in range(2)]
                check(rows[0] == sorted(rows[0], reverse=True) and rows[1] == sorted(rows[1]) and rows[0],
                      f'table {table} is sorted by {column}')
            names = [window.value(f'{SORTED}(2, 0)') for _ in range(2)]
            check(names[0] == names[1][::-1] and len(set(names[0])) == 50, 'names are sorted both ways')
            window.value('location.hash = document.querySelector(".band a").getAttribute("href")')
            opened = window.value('new Promise(done => setTimeout(() => done('
                                  'document.querySelector("details").open), 200))', wait=True)
            check(opened, 'a link opens the folder')
            odd = window.value('document.querySelectorAll("[style], [onclick], img, b, td td, iframe").length')
            check(odd == 0, f'{odd} elements made of names')
            window.call('Emulation.setDeviceMetricsOverride', width=400, height=800, deviceScaleFactor=1, mobile=False)
            wide = window.value('document.documentElement.scrollWidth')
            check(wide <= 400, f'the page is {wide} wide in a narrow window')
            check(window.complaints() == [], f'the browser complains: {window.complaints()[:3]}')
            check(len(window.requests()) == 1, f'requests: {window.requests()}')
            window.value('document.body.appendChild(document.createElement("style")).textContent = "b{}"')
            window.value('document.body.appendChild(new Image()).src = "file:///etc/hostname"')
            check(window.complaints() != [], 'the policy is in force')


failures = []
with tempfile.TemporaryDirectory(prefix='spannory-readers-') as scratch:
    scratch = os.fsencode(scratch)
    os.mkdir(os.path.join(scratch, b'app'))
    paths = make_tree(os.path.join(scratch, b'tree'))
    for exact in (False, True):
        try_reports(sys.argv[1], scratch, exact)
    try_overview(sys.argv[1], scratch)
    try_comparison(sys.argv[1], scratch)
sys.exit(1 if failures else 0)
