"""What --collected tells and --load brings back, compared with the files that were sent."""

import csv
from collections import Counter


def rowsOf(file):
    with open(file, newline="", encoding="utf-8", errors="surrogateescape") as text:
        return list(csv.DictReader(text))


def asked(program, saved, sums, server, folder, expect):
    """The figures of all machines, of one, and of one folder of it."""
    file = folder / "asked.csv"
    ask = lambda *arguments: (program.run("--collected", server.url(), "--top", "0", "--force", "--text", file,
                                          *arguments), rowsOf(file))[1]

    def table(rows, name):
        return [row for row in rows if row["Table"] == name]

    def totals(rows):
        return {name: sum(int(row["Size (Bytes)"]) for row in table(rows, name))
                for name in ("Machines", "Owners", "File Types")}

    rows = ask()
    everything = sum(sums.hosts.values())
    expect("asked of all", totals(rows), dict.fromkeys(("Machines", "Owners", "File Types"), everything))
    expect("machines", len(table(rows, "Machines")), len(saved))
    owners = Counter()
    for (_, owner), size in sums.owners.items():
        owners[owner.decode(errors="surrogateescape")] += size
    expect("asked of owners", {row["Name"]: int(row["Size (Bytes)"]) for row in table(rows, "Owners")}, dict(owners))
    expect("largest folders, without those that scans began with",
           Counter(int(row["Size (Bytes)"]) for row in table(rows, "Largest Folders")),
           Counter(sums.folders.values()) - Counter(sums.hosts.values()))
    for host, total in list(sums.hosts.items())[:5]:
        expect(f"asked of {host!r}", totals(ask("--host", host)),
               dict.fromkeys(("Machines", "Owners", "File Types"), total))
    (host, path), size = max(((key, size) for key, size in sums.folders.items() if plain(key[1])),
                             key=lambda item: item[1])
    expect(f"asked of {path!r}", totals(ask("--host", host, path.decode())),
           dict.fromkeys(("Machines", "Owners", "File Types"), size))


def plain(path):
    return all(0x20 < byte < 0x7F and byte not in b"\\" for byte in path)


def broughtBack(program, saved, server, folder, columns, contentOf, expect):
    """Every column of every row, and the rows of table `scans`."""
    back = folder / "back.mdb"
    for host, file in saved.items():
        program.run("--load", server.url(), "--host", host, "--force", "--database", back)
        expect(f"scan of {host!r}", contentOf(back, "scans", "*"), contentOf(file, "scans", "*"))
        expect(f"rows of {host!r}", contentOf(back, "details", columns), contentOf(file, "details", columns))


def mayNotBeBrought(program, server):
    for arguments in (["--host", "nobody"], ["--host", "nobody' or '1' = '1"]):
        program.run("--load", server.url(), *arguments, status=1)
