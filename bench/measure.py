"""Shared by the comparisons: runs commands and prints a table of their times and memory."""

import os
import statistics
import subprocess
import sys
import time
from pathlib import Path

PROGRAM = Path(__file__).resolve().parent.parent / "build/release/bin/spannory-scan"


def run(command):
    """Runs the command, discards its output and returns (seconds, peak memory in MiB)."""
    start = time.perf_counter()
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    seconds = time.perf_counter() - start
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit(f"status {process.returncode}: {' '.join(map(str, command))}")
    return seconds, usage.ru_maxrss / 1024


def in_turn(commands, rounds, before=lambda: None):
    """Runs all commands (name: command) once to warm the caches, then each once per round, alternating, so that other
    activity on the machine affects all of them alike. Returns name: list of (seconds, MiB)."""
    results = {name: [] for name in commands}
    for turn in range(rounds + 1):
        for name, command in commands.items():
            before()
            result = run(command)
            if turn > 0:
                results[name].append(result)
    return results


def print_table(results, base, base_label):
    """Prints medians, ranges, and ratios to the median of the result named base."""
    floor = run(["true"])[1]  # a new process starts with this one's memory counted
    base_median = statistics.median(seconds for seconds, _ in results[base])
    width = max(map(len, results))
    print(f"{'':{width}}  {'median':>9}  {'range':>17}  {base_label:>8}  {'peak':>11}")
    for name, measured in results.items():
        seconds = [one for one, _ in measured]
        median = statistics.median(seconds)
        peak = max(mebibytes for _, mebibytes in measured)
        peak_text = f"{peak:.0f} MiB" if peak > floor * 1.1 else f"< {floor:.0f} MiB"
        print(
            f"{name:{width}}  {median:7.3f} s  {min(seconds):7.3f} - {max(seconds):7.3f}"
            f"  {median / base_median:8.2f}  {peak_text:>11}"
        )
