#!/usr/bin/env python3
"""compare-scans.py LINUX-DATABASE WINDOWS-DATABASE FOLDER

Compares two scans of one folder, row by row, in a form that is independent of the system: paths with "/", without a
drive and with mapped characters mapped back; without owners, access times and the time of the scan; and without links,
whose sizes differ between the two systems (they are subtracted from the folders' totals too). Prints the number of rows
that differ, and the first of them."""

import os
import sqlite3
import sys

MOST_SHOWN = 20


def plain(text, drive):
    """An internal path or name as a Linux path."""
    if text is None:
        return None
    if drive and text.startswith(drive):
        text = "/" + text[len(drive):]
    result = []
    for letter in text.replace("\\", "/"):
        code = ord(letter)
        if 0xF000 <= code <= 0xF0FF:
            letter = chr(code - 0xF000)
        result.append(letter)
    return "".join(result)


def rows_of(database, folder):
    """The rows by path, with folder totals that do not include links."""
    connection = sqlite3.connect(f"file:{database}?mode=ro", uri=True)
    connection.create_collation("nocase", lambda left, right: (left > right) - (left < right))
    connection.text_factory = lambda data: data.decode("utf-8", "surrogateescape")
    found = {}
    links = {}
    for row in connection.execute(
            "select drive, fullPath, folder, fileName, extension, description, size, dateModified, parentFolder,"
            " isFolder, scanCompleteTime is null, dateInserted is null from details"):
        drive = row[0]
        parent = plain(row[8], drive)
        name = plain(row[3], "")
        path = parent + name
        if os.path.islink(path.rstrip("/")):
            links[path] = row[6]
            continue
        cells = ["/", plain(row[1], ""), plain(row[2], drive), name, plain(row[4], ""), row[5], row[6], row[7],
                 parent, *row[9:]]
        found.setdefault(path, []).append(cells)
    for path, size in links.items():
        above = os.path.dirname(path.rstrip("/"))
        while len(above) >= len(folder.rstrip("/")) and above != "":
            for cells in found.get(above + "/", []):
                cells[6] -= size
            if above == "/":
                break
            above = os.path.dirname(above)
    return found, len(links)


def main():
    linux, linux_links = rows_of(sys.argv[1], sys.argv[3])
    windows, windows_links = rows_of(sys.argv[2], sys.argv[3])
    differing = [path for path in sorted(linux.keys() | windows.keys())
                 if sorted(map(repr, linux.get(path, []))) != sorted(map(repr, windows.get(path, [])))]
    for path in differing[:MOST_SHOWN]:
        print(f"{path!a}\n  Linux:   {linux.get(path)!a}\n  Windows: {windows.get(path)!a}")
    count = sum(map(len, linux.values()))
    print(f"{sys.argv[3]}: {count} rows compared ({linux_links} and {windows_links} links left out), "
          f"{len(differing)} rows differ")
    return 0 if not differing and count > 0 else 1


if __name__ == "__main__":
    sys.exit(main())
