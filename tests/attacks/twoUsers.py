#!/usr/bin/env python3
"""twoUsers.py PROGRAM [--tries 200]: as root, lets one ordinary user attack another who runs spannory-scan: files planted
for the start, links beside reports, folders swapped during a scan, and whatever might be read. Prints how many tries hit;
none should."""

import argparse
import ctypes
import os
import random
import shutil
import signal
import sqlite3
import stat
import struct
import subprocess
import sys
import tempfile
from pathlib import Path

VICTIM, ATTACKER = 4711, 4712  # user ids
LONG = 10  # seconds; a run takes some hundredths
PRECIOUS = b"the victim's own file\n"
SECRET = "onlyTheVictimKnows"
EXCHANGE, BIND, PRIVATE, DETACH, NEW_NAMESPACE = 2, 4096, 1 << 18 | 1 << 14, 2, 0x20000
HERE = -100  # AT_FDCWD
system = ctypes.CDLL(None, use_errno=True)


def asUser(user):
    os.setgroups([])
    os.setgid(user)
    os.setuid(user)
    os.umask(0)


class Attack:
    """Another process that repeats a step until the end of the block; errors do not stop it."""

    def __init__(self, step, user=ATTACKER):
        self.child = os.fork()
        if self.child == 0:
            try:
                self.repeat(step, user)
            finally:
                os._exit(1)

    @staticmethod
    def repeat(step, user):
        if user:
            asUser(user)
        while True:
            try:
                step()
            except OSError:
                pass

    def __enter__(self):
        return self

    def __exit__(self, *_):
        os.kill(self.child, signal.SIGKILL)
        assert os.waitstatus_to_exitcode(os.waitpid(self.child, 0)[1]) == -signal.SIGKILL, "the attack ended early"


def attackOnce(step):
    child = os.fork()
    if child == 0:
        asUser(ATTACKER)
        try:
            step()
        except OSError:
            pass
        finally:
            os._exit(0)
    os.waitpid(child, 0)


def replacementName(target, number):
    """What the program calls a file that is to replace the target."""
    digest = 0xCBF29CE484222325
    for byte in target.encode():
        digest = (digest ^ byte) * 0x100000001B3 % 2**64
    return f".spannory-{digest:016x}-{number}.tmp"


def hotJournal(named):
    """An unfinished transaction's journal; after it, the engine removes the file that it names."""
    header = bytes.fromhex("d9d505f920a163d7") + struct.pack(">IIIII", 0, 0, 1, 512, 4096)
    name = os.fsencode(named)
    end = struct.pack(">I", 2**30 // 4096 + 1) + name + struct.pack(">II", len(name), sum(name)) + header[:8]
    return header.ljust(512, b"\0") + end


class Place:
    """The victim's home and tree, a folder that everybody can write to, and one where the attacker keeps what was seen."""

    def __init__(self, folder, program):
        self.program = folder / "program" / program.name
        self.home, self.shared, self.loot = folder / "home", folder / "shared", folder / "loot"
        self.tree, self.app = folder / "tree", folder / "home" / "app"
        self.precious = self.home / "precious"
        self.hangs, self.errors = 0, ""
        shutil.copytree(program.parent, self.program.parent, ignore=lambda _, names:
                        [name for name in names if name not in (program.name, "001.dat")])
        self.make(self.tree, VICTIM, 0o755)
        for number in range(30):
            self.write(self.tree / f"{SECRET}{number}", VICTIM, b"x")
        self.clear()

    def make(self, path, user, mode):
        path.mkdir(parents=True, exist_ok=True)
        os.chown(path, user, user)
        path.chmod(mode)

    def write(self, path, user, content, mode=0o644):
        path.write_bytes(content)
        os.chown(path, user, user)
        path.chmod(mode)

    def clear(self):
        for path, user, mode in ((self.home, VICTIM, 0o755), (self.shared, 0, 0o1777), (self.loot, ATTACKER, 0o700)):
            shutil.rmtree(path, ignore_errors=True)
            self.make(path, user, mode)
        self.make(self.app, VICTIM, 0o755)
        self.make(self.home / "folder", VICTIM, 0o755)
        self.write(self.precious, VICTIM, PRECIOUS)
        self.write(self.home / "empty", VICTIM, b"")

    def run(self, *arguments, app=None, umask=0o022):
        command = [self.program, "--app-folder", app or self.app, "--quiet", *arguments]
        run = subprocess.Popen(command, user=VICTIM, group=VICTIM, extra_groups=[], umask=umask, cwd="/",
                               stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                               env={"HOME": str(self.home), "TMPDIR": str(self.shared), "PATH": os.environ["PATH"]})
        try:
            self.errors = run.communicate(timeout=LONG)[1].decode(errors="replace")
        except subprocess.TimeoutExpired:
            self.hangs += 1
            run.kill()
            self.errors = run.communicate()[1].decode(errors="replace")
        return run.returncode

    def damage(self):
        """Whether a file of the victim's has changed or is new, but for those of the application folder."""
        found = {path.name: path.read_bytes() for path in self.home.iterdir() if path.is_file()}
        return found != {"precious": PRECIOUS, "empty": b""} or any((self.home / "folder").iterdir())

    def take(self, path):
        """For the attacker: notes a file whose contents could be read."""
        handle = os.open(path, os.O_RDONLY | os.O_NONBLOCK | os.O_NOFOLLOW)
        with open(handle, "rb") as file:
            content = file.read() or b""
        if SECRET.encode() in content:
            (self.loot / "read").write_bytes(os.fsencode(path))

    def isRead(self):
        return any(self.loot.iterdir())


# --- the start -------------------------------------------------------------------------------------------

OWN_FILES = ["main.dat", "main.dat.lock", "main-2.dat", "main.dat-journal", "errorLog.txt", "settings.ini"]


def plant(place, folder):
    """For the attacker: one file of the program's, as a link, a pipe, or a file that everybody can write to."""
    name = random.choice(OWN_FILES)
    path = folder / name
    aim = random.choice([place.precious, place.home / "empty", place.home / "new"])
    kind = random.choice(["link", "link", "hard link", "file", "file", "pipe"])
    if os.path.lexists(path):
        raise FileExistsError(path)
    if kind == "link":
        path.symlink_to(aim)
    elif kind == "hard link":
        os.link(aim, path)
    elif kind == "pipe":
        os.mkfifo(path)
    elif name == "settings.ini":
        path.write_text(f"[Application_Settings]\ndatabasePath={aim}\nerrorLogFile={aim}\n[Startup]\n"
                        f"errorLogTextFile={aim}\n")
    elif name == "main.dat-journal":
        path.write_bytes(hotJournal(aim))
    elif name == "main.dat":
        shutil.copy(place.program.parent / "001.dat", path)
        path.chmod(0o666)
    else:
        path.write_bytes(b"")
    return path


def plantFolder(place, app):
    """For the attacker: the application folder itself, or a link in its place."""
    kind = random.choice(["folder", "own link", "victim's link"])
    if kind == "folder":
        app.mkdir()
        for _ in range(4):
            plant(place, app)
    else:
        app.symlink_to(place.home / "folder" if kind == "victim's link" else place.loot)
    return app


def remove(path):
    if path.is_dir() and not path.is_symlink():
        shutil.rmtree(path)
    else:
        path.unlink()


def tryStart(place, isRace, isFolderPlanted):
    place.clear()
    app = place.shared / "app" if isFolderPlanted else place.shared
    make = plantFolder if isFolderPlanted else plant

    def step():
        made = make(place, app)
        for file in OWN_FILES:
            try:
                place.take(app / file)
            except OSError:
                pass
        remove(made)

    def once():
        for _ in range(1 if isFolderPlanted else 3):
            make(place, app)

    if isRace:
        with Attack(step):
            place.run(place.tree, app=app)
    else:
        attackOnce(once)
        place.run(place.tree, app=app)
    files = [file for top in (app, place.loot) if top.is_dir() for file in top.iterdir() if file.is_file()]
    return place.damage() or place.isRead() or any(
        SECRET.encode() in file.read_bytes() and file.stat().st_mode & 0o077 for file in files)


# --- reports ---------------------------------------------------------------------------------------------

ENDS = {"--html": b"</html>", "--text": b"\n", "--xml": b">", "--excel": b"", "--database": b""}


def tryReport(place, report, isReplaced):
    place.clear()
    target = place.shared / "report"
    names = [target] * 16 + [place.shared / replacementName("report", number) for number in range(1, 17)]
    old = b"the older report\n"
    if isReplaced:
        place.write(target, VICTIM, old, 0o600 if report == "--database" else 0o644)

    def step():
        path = random.choice(names)
        kind = random.choice(["link", "new link", "file", "pipe", "rename", "read", "read"])
        if kind in ("link", "new link"):
            path.symlink_to(place.precious if kind == "link" else place.home / "new")
        elif kind == "file":
            path.write_bytes(b"")
            path.chmod(0o666)
        elif kind == "pipe":
            os.mkfifo(path)
            place.take(path)
        elif kind == "rename":
            (place.shared / "other").write_bytes(b"")
            (place.shared / "other").rename(path)
        for other in names[15:]:
            try:
                if report == "--database":
                    place.take(other)
            except OSError:
                pass
        if kind != "read":
            path.unlink()

    with Attack(step):
        status = place.run(place.tree, "--force", report, target)
    hit = place.damage() or place.isRead()
    if isReplaced or status == 0:
        found = target.lstat() if os.path.lexists(target) else None
        isOwn = found is not None and stat.S_ISREG(found.st_mode) and found.st_uid == VICTIM
        content = target.read_bytes() if isOwn else b""
        isWhole = len(content) > 100 and content.rstrip(b"\r\n ").lower().endswith(ENDS[report].strip())
        hit = hit or not (content == old and isReplaced or isWhole)
    return hit


# --- a scan ----------------------------------------------------------------------------------------------


def trySwap(place, isBind):
    """The attacker's folder in the victim's tree becomes the victim's secret one."""
    place.clear()
    tree, secret = place.home / "folder" / "tree", place.home / "folder" / "secret"
    for top, user in ((secret, VICTIM), (tree / "theirs" / "upper", ATTACKER)):
        for number in range(20):
            below = top / f"sub{number}"
            place.make(below, user, 0o755)
            for file in range(5):
                place.write(below / (f"{SECRET}{file}" if user == VICTIM else f"file{file}"), user, b"x")
        place.make(top, user, 0o755)
    secret.chmod(0o700)
    os.chown(tree / "theirs", ATTACKER, ATTACKER)
    upper, link = os.fsencode(tree / "theirs" / "upper"), os.fsencode(tree / "theirs" / "link")
    os.symlink(secret, link)

    def exchange():
        system.renameat2(HERE, upper, HERE, link, EXCHANGE)

    def bind():
        system.mount(os.fsencode(secret), upper, None, BIND, None)
        system.umount2(upper, DETACH)

    copy = place.home / "copy"
    with Attack(bind if isBind else exchange, user=None if isBind else ATTACKER):
        place.run(tree, "--database", copy)
    while isBind and system.umount2(upper, DETACH) == 0:
        pass
    with sqlite3.connect(copy) as database:
        return database.execute(f"select count(*) from details where fileName like '{SECRET}%'").fetchone()[0] > 0


# --- privacy ---------------------------------------------------------------------------------------------


def tryReading(place, isAppMade):
    """Nothing may be read but the reports, though the umask hides nothing."""
    place.clear()
    app = place.app if isAppMade else place.home / "made"
    place.make(place.home / "copies", VICTIM, 0o755)

    def step():
        for top in (app, place.shared, place.home / "copies"):
            try:
                for folder, _, files in os.walk(top):
                    if top == app and not isAppMade:
                        (place.loot / "listed").write_bytes(b"")
                    for file in files:
                        try:
                            place.take(Path(folder) / file)
                        except OSError:
                            pass
            except OSError:
                pass

    with Attack(step):
        status = place.run(place.tree, "--database", place.home / "copies" / "copy", "--excel", place.home / "book",
                           app=app, umask=0)
    attackOnce(step)
    return status != 0 or place.isRead()


def count(place, what, tries, attempt, *arguments):
    place.hangs = 0
    hits = sum(bool(attempt(place, *arguments)) for _ in range(tries))
    print(f"{what}: {hits} of {tries}" + (f", {place.hangs} did not end" if place.hangs else ""), flush=True)
    return hits + place.hangs


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("program", type=lambda path: Path(path).resolve())
    parser.add_argument("--tries", type=int, default=200)
    parser.add_argument("--only", default="", help="the tries whose names contain this")
    options = parser.parse_args()
    if os.geteuid() != 0 or system.unshare(NEW_NAMESPACE) or system.mount(None, b"/", None, PRIVATE, None):
        print("needs root")
        return 77
    tries = []
    for isRace in (False, True):
        when = "during the start" if isRace else "before"
        tries += [(f"start: files planted {when}", tryStart, isRace, False),
                  (f"start: folder planted {when}", tryStart, isRace, True)]
    for report in ENDS:
        tries += [(f"report: {report} {'replaced' if isReplaced else 'new'}", tryReport, report, isReplaced)
                  for isReplaced in (False, True)]
    tries += [("scan: folder swapped for a link", trySwap, False), ("scan: folder swapped for a mount", trySwap, True)]
    tries += [("privacy: new application folder", tryReading, False),
              ("privacy: open application folder", tryReading, True)]
    with tempfile.TemporaryDirectory() as name:
        Path(name).chmod(0o755)
        place = Place(Path(name).resolve(), options.program)
        hits = [count(place, what, options.tries, *attempt) for what, *attempt in tries if options.only in what]
    return 1 if sum(hits) else 0


sys.exit(main())
