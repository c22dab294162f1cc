#!/usr/bin/env python3
"""Mounts volumes that do not answer, or stop answering, and lets the programs work beside, above and on them, in a
namespace of its own: deadVolumes.py SERVER PROGRAM [WINDOW_TESTS]. Status 77 (skipped) where that is not allowed."""

import os
import resource
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

LONG = 20  # seconds; nothing here takes more than a few, but the machine may be busy
SKIPPED, INTERRUPTED = 77, 130
SERVER, PROGRAM = sys.argv[1:3]
WINDOW_TESTS = sys.argv[3] if len(sys.argv) > 3 else None
SILENT = "The volume is not answering"

failures = []


class Volume:
    """A mounted volume with a server in the given mode (see deadVolume.cpp)."""

    def __init__(self, folder, mode):
        self.folder = folder
        self.server = subprocess.Popen([SERVER, folder, str(mode)], stdout=subprocess.PIPE)
        if not self.server.stdout.readline():
            print("no volume can be mounted here")
            sys.exit(SKIPPED)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.server.kill()
        self.server.wait()
        subprocess.run(["umount", "--lazy", self.folder], check=True)


def scan(app, *arguments, interruptAfter=None, files=None):
    """The program's status, output and errors; its status is None if it had to be killed. `files` it may open."""
    def limit():
        if files is not None:
            resource.setrlimit(resource.RLIMIT_NOFILE, (files, files))
    run = subprocess.Popen([PROGRAM, "--app-folder", app, *map(str, arguments)], stdin=subprocess.DEVNULL,
                           stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, preexec_fn=limit)
    try:
        if interruptAfter is not None:
            time.sleep(interruptAfter)
            run.send_signal(signal.SIGINT)
        output, errors = run.communicate(timeout=LONG)
        return run.returncode, output, errors
    except subprocess.TimeoutExpired:
        run.kill()
        return None, "", "it did not end"


def check(what, result, status, *texts):
    """Compares the status, and looks for the texts in output and errors."""
    seen = result[1] + result[2]
    if result[0] != status or any(text not in seen for text in texts):
        failures.append(f"{what}: status {result[0]} instead of {status}\n{seen}")


def processesLeft():
    """The names of the program's processes that are still there, when they have had time to end."""
    for _ in range(10 * LONG):
        left = []
        for process in Path("/proc").glob("[0-9]*"):
            try:
                if (process / "exe").resolve() == Path(PROGRAM).resolve():
                    left.append((process / "comm").read_text().strip())
            except OSError:  # it has ended meanwhile, or is another user's
                pass
        if not left:
            break
        time.sleep(0.1)
    return left


def tryConsole(folder):
    tree, app = folder / "tree", folder / "app"
    mount = tree / "volume"
    (tree / "beside").mkdir(parents=True)
    mount.mkdir()
    app.mkdir()
    (tree / "beside" / "file").write_bytes(b"12345")
    link = folder / "link"
    link.symlink_to(mount)
    for mode in ("unread", "unanswered", 1, 2):
        with Volume(mount, mode):
            check(f"{mode}, above", scan(app, tree, "--unreadable"), 0, "5 bytes", "Another volume is mounted here")
            check(f"{mode}, beside", scan(app, tree / "beside"), 0, "5 bytes")
            # Two paths wait no longer than one: what is silent is not asked again.
            check(f"{mode}, on it", scan(app, mount, mount / "1000", tree / "beside"), 1, SILENT, "5 bytes")
            check(f"{mode}, through a link", scan(app, link), 1, SILENT)
            check(f"{mode}, Ctrl-C", scan(app, mount, interruptAfter=0.5), INTERRUPTED, "The scan was cancelled.")
    with Volume(mount, 1_000_000):
        check("a sound volume", scan(app, mount, "--quiet"), 0)
        check("a sound volume", scan(app, mount), 0, "58.6 Kb", "800 items")
        check("through a link", scan(app, link), 0, "58.6 Kb", "800 items")
        few = scan(app, mount, "--readers", 32, "--unreadable", files=14)
        if "has invalid vptr" not in few[2]:  # a sanitizer opens files, too
            check("few open files", few, 0, "58.6 Kb", "All folders were read.")
    with Volume(mount, 1000):
        check("falls silent, Ctrl-C", scan(app, mount, interruptAfter=2), INTERRUPTED, "The scan was cancelled.",
              "300 bytes")
    with Volume(mount, 1_000_000) as volume:
        volume.server.send_signal(signal.SIGSTOP)
        check("stopped server", scan(app, mount), 1, SILENT)
        check("stopped server, above", scan(app, tree), 0, "5 bytes")
        volume.server.send_signal(signal.SIGCONT)
        check("resumed server", scan(app, mount), 0, "800 items")
    left = processesLeft()
    if left:
        failures.append(f"processes left: {left}")
    return mount


def tryWindow(mount):
    for mode in ("unread", "unanswered", 1_000_000):
        with Volume(mount, mode) as volume:
            if mode == 1_000_000:
                volume.server.send_signal(signal.SIGSTOP)
            variables = {**os.environ, "SPANNORY_DEAD_VOLUME": str(mount), "QT_QPA_PLATFORM": "offscreen"}
            run = subprocess.run([WINDOW_TESTS, "--gtest_filter=DeadVolume.*"], env=variables, capture_output=True,
                                 text=True, timeout=10 * LONG)
            if run.returncode != 0 or "SKIPPED" in run.stdout or "OK ] DeadVolume" not in run.stdout:
                failures.append(f"window, {mode}:\n{run.stdout}{run.stderr}")


def main():
    if "SPANNORY_IN_NAMESPACE" not in os.environ:
        os.environ["SPANNORY_IN_NAMESPACE"] = "1"
        if subprocess.run(["unshare", "--user", "--map-root-user", "--mount", "true"], capture_output=True).returncode:
            print("no namespace can be made here")
            return SKIPPED
        os.execvp("unshare", ["unshare", "--user", "--map-root-user", "--mount", sys.executable, *sys.argv])
    with tempfile.TemporaryDirectory() as name:
        mount = tryConsole(Path(name).resolve())
        if WINDOW_TESTS:
            tryWindow(mount)
    print("\n".join(failures))
    return 1 if failures else 0


sys.exit(main())
