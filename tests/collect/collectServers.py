#!/usr/bin/env python3
"""collectServers.py PROGRAM [--times 50] [--quick]: sends made-up scans to three ClickHouse servers of the test's own,
two of them a cluster, and compares what is there with the files; while programs, servers and connections are broken at
random moments, disks are full, and names are hostile. scripts/test-collect runs it."""

import argparse
import os
import random
import shutil
import signal
import socket
import sqlite3
import ssl
import subprocess
import sys
import tempfile
import threading
import time
from collections import Counter
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import asking  # noqa: E402
import servers  # noqa: E402

NAMES = ["plain", "with blank", "quote'", 'double"', "back\\slash", "tab\tin", "line\nend", "\x01\x1b[2J", "é", "日本",
         "'; drop table details --", "%s{0}$(id)`x`", "\ufeff", "\u202eturned", "\uf03f", "-", "a" * 200]
BYTES = [b"\xff\xfe", b"half\xc3", b"\xed\xa0\x80", b"\\0\\N", b"\xee\xbc\x80"]
COLUMNS = ("fullPath drive folder fileName extension description size dateAccessed dateModified owner dateInserted "
           "parentFolder isFolder scanCompleteTime sizeOnDisk fileCount folderCount idx").split()
FAULTS = []


def fault(text):
    FAULTS.append(text)
    print("FAULT:", text, flush=True)


def expect(what, got, wanted):
    if got != wanted:
        fault(f"{what}: {got!r} instead of {wanted!r}"[:2000])


def tell(text):
    print(f"{time.monotonic() - START:6.1f} s  {text}", flush=True)


class Program:
    def __init__(self, path, folder):
        self.path, self.app = path, folder / "app"

    def command(self, *arguments):
        return [self.path, "--app-folder", self.app, "--quiet", *arguments]

    def run(self, *arguments, status=0):
        done = subprocess.run(self.command(*arguments), capture_output=True, timeout=300)
        if done.returncode != status:
            fault(f"status {done.returncode} instead of {status} of {arguments}: {done.stderr}")
        mayRemark = "--database" in arguments  # a scan has its own things to say
        if not mayRemark and done.stderr.count(b"\n") != (1 if status else 0):
            fault(f"more than a line: {done.stderr}")
        return done.stderr.decode(errors="replace")


def makeTree(folder, seed, files):
    """Odd names, links and long paths; each seed makes another tree."""
    chance = random.Random(seed)
    names = [name.encode() for name in NAMES] + BYTES
    folders = [os.fsencode(folder)]
    os.makedirs(folders[0])
    for _ in range(max(3, files // 12)):
        new = os.path.join(chance.choice(folders), chance.choice(names) + b"%d" % chance.randrange(10))
        if len(new) < 3500 and not os.path.exists(new):
            os.mkdir(new)
            folders.append(new)
    for number in range(files):
        name = chance.choice(names) + b"%d." % number + chance.choice([b"txt", b"C", b"c", b"", b"o'", b"\xff", b"jpg"])
        path = os.path.join(chance.choice(folders), name[-255:])
        with open(path, "wb") as file:
            if chance.random() < 0.02:
                file.truncate(chance.randrange(1 << 40))  # takes nothing on the disk
            else:
                file.write(b"x" * chance.randrange(3000))
        moment = chance.choice([0, 1, 86399, 1e9, 1.7e9, 4e9, 4291747199, 4291747200, 9e9, -1e9]) + chance.randrange(9)
        os.utime(path, (moment, moment))
        if os.geteuid() == 0:
            os.lchown(path, chance.choice([0, 1, 65534, 4000000]), -1)


def changeHost(file, host):
    """The scan of another machine of the same name would be the same one; so it gets an id of its own, too."""
    with sqlite3.connect(file) as database:
        database.execute("update scans set host = ?, uniqueId = ?", (host, f"{random.getrandbits(128):032x}"))


def rowsOf(file, order="idx"):
    with sqlite3.connect(file) as database:
        database.text_factory = bytes
        return database.execute(f"select {', '.join(COLUMNS)} from details order by {order}").fetchall()


def contentOf(file, table, columns):
    with sqlite3.connect(file) as database:
        database.text_factory = bytes
        return database.execute(f"select {columns} from {table} order by 1").fetchall()


def varint(data, at):
    length = shift = 0
    while True:
        byte = data[at]
        length |= (byte & 0x7F) << shift
        at, shift = at + 1, shift + 7
        if byte < 0x80:
            return length, at


def literal(text):
    return "'" + text.replace("\\", "\\\\").replace("'", "\\'") + "'"


def onDisk(text):
    """The name on the disk, written down a second time: of internal paths as they are told in ARCHITECTURE.md."""
    if text is None:
        return b""
    result = b""
    for c in text.decode("utf-8", "surrogatepass"):
        code = ord(c)
        if 0xEF80 <= code <= 0xEFFF:
            result += bytes([code - 0xEF00])
        elif 0xF000 < code < 0xF080 and (code - 0xF000 < 0x20 or chr(code - 0xF000) in '\\"|*?<>\x7f'):
            result += bytes([code - 0xF000])
        else:
            result += c.encode("utf-8", "surrogatepass")
    return result


def folderOnDisk(text):
    text = text[1:] if text.startswith(b"/\\") else text
    return onDisk(text.replace(b"\\", b"/"))


def binaryRows(data, texts):
    """Rows of so many texts, then one Int64 each."""
    rows, at = [], 0
    while at < len(data):
        row = []
        for _ in range(texts):
            length, at = varint(data, at)
            row.append(data[at:at + length])
            at += length
        row.append(int.from_bytes(data[at:at + 8], "little", signed=True))
        at += 8
        rows.append(tuple(row))
    return rows


class Sums:
    """What the files say, added up without the program."""

    def __init__(self, files):
        self.owners, self.types, self.hosts, self.folders = Counter(), Counter(), {}, {}
        self.names = []
        for host, file in files.items():
            total = 0
            for row in rowsOf(file):
                row = dict(zip(COLUMNS, row))
                size = int(row["size"])
                if row["isFolder"]:
                    key = (host, folderOnDisk(row["parentFolder"]) + onDisk(row["fileName"][:-1]))
                    self.folders[key] = size
                else:
                    total += size
                    self.owners[host, row["owner"] or b""] += size
                    self.types[host, onDisk(row["extension"])] += size
                name = row["fileName"][:-1] if row["isFolder"] else row["fileName"]
                self.names.append((host.encode(), folderOnDisk(row["parentFolder"]), onDisk(name), size))
            self.hosts[host] = total


def compareSums(server, files):
    sums = Sums(files)
    ask = lambda statement: server.ask(statement + " FORMAT RowBinary", raw=True)
    hosts = ", ".join(literal(host) for host in files)
    text = lambda rows: {tuple(row[:-1]): row[-1] for row in rows}
    keyed = lambda counter: {(host.encode(), key): value for (host, key), value in counter.items()}
    expect("owners", text(binaryRows(ask(f"SELECT host, owner, size FROM spannory.owners WHERE host IN ({hosts})"), 2)),
           keyed(sums.owners))
    expect("types", text(binaryRows(ask(f"SELECT host, extension, size FROM spannory.types WHERE host IN ({hosts})"),
                                    2)), keyed(sums.types))
    expect("folders", text(binaryRows(ask(
        f"SELECT host, fullPath, size FROM spannory.latest WHERE isFolder = 1 AND host IN ({hosts})"), 2)),
           keyed(sums.folders))
    expect("hosts", text(binaryRows(ask(
        f"SELECT host, toInt64(sum(size)) FROM spannory.latest WHERE isFolder = 0 AND host IN ({hosts}) GROUP BY host"),
        1)), {(host.encode(),): size for host, size in sums.hosts.items()})
    expect("names", sorted(binaryRows(ask(
        f"SELECT host, parentFolder, fileName, size FROM spannory.latest WHERE host IN ({hosts})"), 3)),
           sorted(sums.names))


class Proxy:
    """Passes bytes on to a server, and breaks each connection after some of them."""

    def __init__(self, port):
        self.port, self.most, self.passed = port, None, 0
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.here = self.listener.getsockname()[1]
        threading.Thread(target=self.run, daemon=True).start()

    def run(self):
        while True:
            try:
                client, _ = self.listener.accept()
                server = socket.create_connection(("127.0.0.1", self.port))
            except OSError:
                continue
            left = [self.most]
            for one, other in ((client, server), (server, client)):
                threading.Thread(target=self.passOn, args=(one, other, left, client, server), daemon=True).start()

    def passOn(self, one, other, left, *both):
        try:
            while block := one.recv(4096):
                if left[0] is not None:
                    block = block[:left[0]]
                    left[0] -= len(block)
                other.sendall(block)
                self.passed += len(block)
                if left[0] == 0:
                    raise OSError("enough")
            other.shutdown(socket.SHUT_WR)
        except OSError:
            for each in both:
                try:
                    each.shutdown(socket.SHUT_RDWR)
                except OSError:
                    pass


def countOf(server, host):
    """How many scans of the host count, and how many rows of them. The server may still be at what a program has sent
    before it was killed, so this asks until nothing changes between the two questions."""
    before = None
    while True:
        now = tuple(int(server.ask(f"SELECT count() FROM spannory.{view} WHERE host = {literal(host)}"))
                    for view in ("counted", "latest"))
        if now == before:
            return now
        before = now


class Breaking:
    """One way to break the sending of a scan, at random moments."""

    def __init__(self, program, file, rows, server):
        self.program, self.file, self.rows, self.server = program, file, rows, server
        self.counts = Counter()
        self.times = []

    def fresh(self, number):
        host = f"{type(self).__name__}{number}"
        changeHost(self.file, host)
        return host

    def arguments(self, *more):
        return self.program.command("--collect", self.server.url(port=self.port()), "--load", self.file, *more)

    def port(self):
        return None

    def once(self, number, duration):
        host = self.fresh(number)
        self.breakIt(duration)
        scans, rows = countOf(self.server, host)
        self.counts["invisible" if scans == 0 else "there"] += 1
        if (scans, rows) not in ((0, 0), (1, self.rows)):
            fault(f"{host}: {scans} scans and {rows} rows of {self.rows} are visible")
        self.mend()
        self.program.run("--collect", self.server.url(), "--load", self.file)
        self.program.run("--collect", self.server.url(), "--load", self.file)
        expect(f"{host} after sending again", countOf(self.server, host), (1, self.rows))

    def mend(self):
        pass

    def ended(self, run):
        """Of a run that ends by itself."""
        errors = run.communicate(timeout=200)[1]
        if run.returncode not in (0, 1) or errors.count(b"\n") != run.returncode:
            fault(f"status {run.returncode} and {errors}")
        self.counts[f"status {run.returncode}"] += 1

    def start(self, *more):
        return subprocess.Popen(self.arguments(*more), stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)

    def all(self, times):
        duration = []
        for number in range(3):
            self.fresh(f"Measured{number}")
            begin = time.monotonic()
            self.program.run("--collect", self.server.url(), "--load", self.file)
            duration.append(time.monotonic() - begin)
        for number in range(times):
            self.once(number, max(duration))
        tell(f"{type(self).__name__}: {times} times ({max(duration) * 1000:.0f} ms): " +
             ", ".join(f"{count} {what}" for what, count in self.counts.items()))


class KilledProgram(Breaking):
    signal = signal.SIGKILL

    def breakIt(self, duration):
        run = self.start()
        time.sleep(random.uniform(0, duration))
        run.send_signal(self.signal)
        errors = run.communicate()[1]
        self.counts[f"status {run.returncode}"] += 1
        if errors and run.returncode < 0:
            fault(f"killed, and said {errors}")
        return run.returncode, errors


class InterruptedProgram(KilledProgram):
    signal = signal.SIGINT

    def breakIt(self, duration):
        status, errors = super().breakIt(duration)
        # Before it watches for Ctrl-C, it ends by it.
        if status not in (0, 130, -signal.SIGINT) or errors.count(b"\n") != (status == 130):
            fault(f"status {status} and {errors}")


class BrokenConnection(Breaking):
    def all(self, times):
        self.proxy = Proxy(self.server.http)
        self.fresh("Counted")
        self.program.run("--collect", self.server.url(port=self.proxy.here), "--load", self.file)
        self.bytes = self.proxy.passed
        super().all(times)

    def port(self):
        return self.proxy.here

    def breakIt(self, _):
        self.proxy.most = random.randrange(1, self.bytes)
        self.ended(self.start("--collect-patience", "0"))


class KilledServer(Breaking):
    """The one that is asked, or (every other time) the other shard."""

    def __init__(self, *arguments, killed):
        super().__init__(*arguments)
        self.killed, self.number = killed, 0

    def breakIt(self, duration):
        self.number += 1
        server = self.killed[self.number % len(self.killed)]
        run = self.start("--collect-patience", "0")
        time.sleep(random.uniform(0, duration))
        server.kill()
        self.ended(run)
        server.start()


class RestartedServer(KilledServer):
    """Patience outlasts it."""

    def breakIt(self, duration):
        self.number += 1
        server = self.killed[self.number % len(self.killed)]
        run = self.start("--collect-patience", "60")
        time.sleep(random.uniform(0, duration))
        server.kill()
        server.start()
        errors = run.communicate(timeout=200)[1]
        if run.returncode != 0:
            fault(f"status {run.returncode} and {errors}")


def multiply(file, rows):
    """Gives the scan so many rows, with other names."""
    with sqlite3.connect(file) as database:
        names = [name for name in COLUMNS if name not in ("idx", "fileName", "fullPath")]
        while (there := database.execute("select count(*) from details").fetchone()[0]) < rows:
            database.execute(f"insert into details (fileName, fullPath, {', '.join(names)}) select fileName || {there}, "
                             f"fullPath || {there}, {', '.join(names)} from details where isFolder = 0 "
                             f"limit {rows - there}")


def twentyHosts(program, folder, cluster, files):
    saved = {}
    for number in range(20):
        host = f"host {number} {NAMES[number % len(NAMES)]}"[:200]
        tree, file = folder / f"tree{number}", folder / f"saved{number}.mdb"
        makeTree(tree, number, files)
        more = ["--full-sizes"] if number % 2 else []
        program.run("--owners", *more, "--database", file, tree)
        shutil.rmtree(tree)
        changeHost(file, host)
        program.run("--collect", cluster[number % 2].url(), "--load", file)
        saved[host] = file
    for server in cluster:
        compareSums(server, saved)
        hosts = int(server.ask("SELECT uniq(host) FROM spannory.details_local"))
        tell(f"{hosts} of 20 hosts lie on one shard")
        if not 0 < hosts < 20:
            fault("the hosts lie on one shard")
    for number, file in enumerate(saved.values()):  # sent again, to the other server, and nothing is doubled
        program.run("--collect", cluster[(number + 1) % 2].url(), "--load", file)
    compareSums(cluster[0], saved)
    return saved


def fullDisk(program, folder, file, rows, times):
    """A server with its data on a small disk."""
    disk = folder / "disk"
    disk.mkdir()
    if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=24m", "none", disk], capture_output=True).returncode != 0:
        tell("a full disk: skipped, because nothing can be mounted here")
        return
    server = servers.Server(folder / "small", servers.freePorts(3), [], data=disk / "data")
    counts = Counter()
    try:
        server.start()
        program.run("--collect-setup", server.url())
        for number in range(times):
            host = f"Full{number}"
            changeHost(file, host)
            room = os.statvfs(disk).f_bavail * os.statvfs(disk).f_frsize
            with open(disk / "filler", "wb") as filler:
                filler.write(b"x" * max(0, room - random.randrange(1 << 19)))
            run = subprocess.run(program.command("--collect", server.url(), "--collect-patience", "0", "--load", file),
                                 capture_output=True, timeout=200)
            counts[f"status {run.returncode}"] += 1
            if run.returncode not in (0, 1) or run.stderr.count(b"\n") != run.returncode:
                fault(f"full disk: status {run.returncode} and {run.stderr}")
            (disk / "filler").unlink()
            scans, there = countOf(server, host)
            if (scans, there) not in ((0, 0), (1, rows)):
                fault(f"{host}: {scans} scans and {there} rows of {rows} are visible")
            program.run("--collect", server.url(), "--load", file)
            expect(f"{host} after sending again", countOf(server, host), (1, rows))
            server.ask("DROP TABLE spannory.details")
            server.ask("DROP TABLE spannory.scans")
            program.run("--collect-setup", server.url())
        tell(f"full disk: {times} times: " + ", ".join(f"{count} {what}" for what, count in counts.items()))
    finally:
        server.end()
        subprocess.run(["umount", disk], check=True)


def certificates(program, folder):
    """Nothing is said to a server that only says who it is."""
    key, certificate = folder / "key.pem", folder / "certificate.pem"
    made = subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj",
                           "/CN=127.0.0.1", "-addext", "subjectAltName=IP:127.0.0.1", "-keyout", key, "-out",
                           certificate], capture_output=True)
    if made.returncode != 0:
        tell("certificates: skipped, because openssl makes none here")
        return
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(certificate, key)
    listener = socket.create_server(("127.0.0.1", 0))
    heard = []

    def serve():
        while True:
            try:
                with context.wrap_socket(listener.accept()[0], server_side=True) as connection:
                    heard.append(connection.recv(65536))
            except OSError:
                pass

    threading.Thread(target=serve, daemon=True).start()
    begin = time.monotonic()
    url = f"https://127.0.0.1:{listener.getsockname()[1]}/spannory"
    for arguments in (["--collect-setup", url], ["--collect", url, str(Path(__file__).parent)]):
        expect("names the certificate", "certificate" in program.run(*arguments, status=1), True)
    expect("heard", heard, [])
    if time.monotonic() - begin > 20:
        fault("a certificate that does not get better was waited for")


def versions(program, server):
    """A database of another version is left alone, and one without the tables is told."""
    error = program.run("--collect", server.url("nothing"), str(Path(__file__).parent), status=1)
    expect("says what to do", "--collect-setup" in error, True)
    server.ask("CREATE DATABASE later")
    server.ask("CREATE VIEW later.schemaVersion AS SELECT toInt32(2) AS version")
    for arguments in (["--collect-setup", server.url("later")],
                      ["--collect", server.url("later"), str(Path(__file__).parent)]):
        expect("names the versions", "version 2" in program.run(*arguments, status=1), True)
    expect("left alone", server.ask("SHOW TABLES FROM later"), "schemaVersion\n")
    before = server.ask("SELECT name, metadata_modification_time FROM system.tables WHERE database = 'spannory'")
    time.sleep(1.1)
    program.run("--collect-setup", server.url())
    expect("set up again", server.ask(
        "SELECT name, metadata_modification_time FROM system.tables WHERE database = 'spannory'"), before)
    program.run("--collect-setup", server.url("other"), "--cluster", "nowhere", status=1)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("program", type=lambda path: Path(path).resolve())
    parser.add_argument("--times", type=int, default=50, help="for each way to break something")
    parser.add_argument("--quick", action="store_true", help="a few of each")
    parser.add_argument("--rows", type=int, default=0, help="at least, of the scan whose sending is broken; the server "
                        "stores 131,072 at a time")
    options = parser.parse_args()
    times, files = (4, 60) if options.quick else (options.times, 400)
    random.seed(20261122)
    signal.signal(signal.SIGINT, signal.default_int_handler)  # what was started in the background ignores it
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        program = Program(options.program, folder)
        three = servers.startThree(folder)
        try:
            tell("three servers run")
            cluster, apart = three[:2], three[2]
            for server in cluster:
                program.run("--collect-setup", server.url(), "--cluster", servers.CLUSTER)
            program.run("--collect-setup", apart.url())
            versions(program, apart)
            certificates(program, folder)
            saved = twentyHosts(program, folder, cluster, files)
            tell("20 hosts are as in their files")
            asking.asked(program, saved, Sums(saved), cluster[1], folder, expect)
            tell("what is told of them adds up")
            for server in cluster:
                asking.broughtBack(program, saved, server, folder, ", ".join(COLUMNS[-1:] + COLUMNS[:-1]), contentOf,
                                   expect)
            asking.mayNotBeBrought(program, cluster[0])
            tell("20 hosts are brought back as they were")
            many = folder / "many.mdb"
            makeTree(folder / "many", 99, 1500)
            program.run("--database", many, folder / "many")
            multiply(many, options.rows)
            rows = len(rowsOf(many))
            for server in (apart, cluster[0]):
                for kind in (KilledProgram, InterruptedProgram, BrokenConnection):
                    kind(program, many, rows, server).all(times)
            for kind in (KilledServer, RestartedServer):
                kind(program, many, rows, cluster[0], killed=cluster).all(max(2, times // (1 if kind is KilledServer
                                                                                            else 5)))
            if options.rows == 0:  # a small disk
                fullDisk(program, folder, many, rows, times)
            compareSums(cluster[1], saved)
        finally:
            servers.endAll(three)
    print("faults:", len(FAULTS))
    return 1 if FAULTS else 0


START = time.monotonic()
if __name__ == "__main__":
    sys.exit(main())
