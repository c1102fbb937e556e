#!/usr/bin/env python3
"""Measures scans of the same audio files by Orvalen, mpd and beets, and prints a table in Markdown.

Usage: scan_table.py ORVALEN_GAPS [TRACKS...]. Needs the Debian packages mpd and beets; leaves out a program that is
not installed. Makes the files in the temporary folder (TMPDIR), which should be on a disk: 72 kB per track for up to
60,000 tracks. Above that, further tracks are hard links. With ORVALEN_DROP_CACHES=1, root also drops cached folders.
"""

import os
import pathlib
import re
import shutil
import socket
import sqlite3
import subprocess
import sys
import tempfile
import time

MOST_FILES = 60_000
MOST_BEETS = 10_000
MPD_LIMIT = 150  # seconds
UNCACHED, CACHED, REFRESH = "First scan, not cached", "First scan, cached", "Refresh, nothing changed"
MPD_CONFIGURATION = """
music_directory "{music}"
db_file "{home}/database"
bind_to_address "{home}/socket"
log_level "error"
audio_output {{
    type "null"
    name "none"
}}
"""


class Mpd:
    """A server of its own, which listens on a socket in its folder only."""

    def __init__(self, music, home):
        configuration = home / "mpd.conf"
        configuration.write_text(MPD_CONFIGURATION.format(music=music, home=home))
        self.process = subprocess.Popen(["mpd", "--no-daemon", "--stderr", configuration], stderr=subprocess.DEVNULL)
        self.socket = socket.socket(socket.AF_UNIX)
        while True:
            try:
                self.socket.connect(str(home / "socket"))
                break
            except OSError:
                if self.process.poll() is not None:
                    raise RuntimeError("mpd has ended") from None
                time.sleep(0.005)
        self.answers = self.socket.makefile("r", encoding="utf-8")
        self.answers.readline()  # its version

    def ask(self, command):
        self.socket.sendall(command.encode() + b"\n")
        answer = {}
        for line in self.answers:
            if line.startswith("ACK"):
                raise RuntimeError(line)
            if line == "OK\n":
                return answer
            name, value = line.rstrip("\n").split(": ", 1)
            answer[name] = value
        raise RuntimeError("mpd has closed the connection")

    def wait_for_update(self):
        """Returns the number of tracks, or None if the update takes too long."""
        end = time.monotonic() + MPD_LIMIT
        while "updating_db" in self.ask("status"):
            if time.monotonic() > end:
                return None
            time.sleep(0.01)
        return int(self.ask("stats")["songs"])

    def processor_seconds(self):
        fields = pathlib.Path(f"/proc/{self.process.pid}/stat").read_text(encoding="utf-8").rpartition(")")[2].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def end(self):
        self.process.terminate()
        self.process.wait()


class Table:
    def __init__(self, title):
        self.title = title
        self.cells = {}  # by row and column

    def add(self, row, column, text):
        self.cells[row, column] = text
        print(f"{row}, {column}: {text}", file=sys.stderr)

    def print(self):
        columns = list(dict.fromkeys(column for _, column in self.cells))
        print("|", " | ".join([self.title] + columns), "|")
        print("|---" * (len(columns) + 1) + "|")
        for row in dict.fromkeys(row for row, _ in self.cells):
            print("|", " | ".join([row] + [self.cells.get((row, column), "not measured") for column in columns]), "|")
        print()


TIMES = Table("Elapsed time / processor time")
PHASES = Table("Phase of Orvalen's scan, ms")


def add_time(row, tracks, elapsed, processor):
    TIMES.add(row, f"{tracks:,} tracks", " / ".join(f"{time:.2f} s" for time in (elapsed, processor)))


def make_music(gaps, music, tracks):
    real = min(tracks, MOST_FILES)
    subprocess.run([gaps, "make", music / "0", str(real)], check=True)
    files = [path.relative_to(music / "0") for path in (music / "0").rglob("*.mp3")]
    for i in range(real, tracks):
        link = music / str(i // real) / files[i % real]
        link.parent.mkdir(parents=True, exist_ok=True)
        os.link(music / "0" / files[i % real], link)
    os.sync()


def drop(gaps, music):
    """Returns whether nothing of the files is cached. Then reads the other programs again."""
    if subprocess.run([gaps, "drop", music], check=False).returncode != 0:
        return False
    for program in (["mpd", "--version"], ["beet", "version"], [gaps]):
        if shutil.which(program[0]):
            subprocess.run(program, check=False, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return True


def expect(tracks, found, program):
    if found != tracks:
        raise RuntimeError(f"{program} found {found} of {tracks} tracks")


def scan(gaps, music, home, tracks, name):
    """Starts Orvalen and scans. Returns the seconds of the start."""
    output = subprocess.run([gaps, "scan", music, home], check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                            text=True).stdout
    start = re.search(r"^library after ([0-9.]+) ms", output, re.MULTILINE)
    found, phases = re.search(r"^scan first, (\d+) tracks: \| (.*)", output, re.MULTILINE).groups()
    expect(tracks, int(found), "Orvalen")
    times = {phase: float(time) for phase, time in (text.rsplit(" ", 1) for text in phases.split(" | "))}
    add_time(f"{name}: Orvalen", tracks, times["total"] / 1e3, times["processor"] / 1e3)
    for phase, time in times.items():
        PHASES.add(phase, f"{name}, {tracks:,}", f"{time:.0f}")
    return float(start[1]) / 1e3


def measure_orvalen(gaps, music, tracks, name):
    with tempfile.TemporaryDirectory() as home:
        scan(gaps, music, home, tracks, name)
        if name == CACHED:
            start = scan(gaps, music, home, tracks, REFRESH)
            TIMES.add("Start with this library: Orvalen", f"{tracks:,} tracks", f"{start:.2f} s")


def measure_mpd(music, tracks, name):
    with tempfile.TemporaryDirectory() as folder:
        begin = time.monotonic()
        mpd = Mpd(music, pathlib.Path(folder))  # without a database, it scans at once
        try:
            found = mpd.wait_for_update()
            if found is None:
                TIMES.add(f"{name}: mpd", f"{tracks:,} tracks", f"over {MPD_LIMIT} s")
                return
            expect(tracks, found, "mpd")
            before = mpd.processor_seconds()
            add_time(f"{name}: mpd", tracks, time.monotonic() - begin, before)
            if name == CACHED:
                begin = time.monotonic()
                mpd.ask("update")
                mpd.wait_for_update()
                add_time(f"{REFRESH}: mpd", tracks, time.monotonic() - begin, mpd.processor_seconds() - before)
        finally:
            mpd.end()


def measure_beets(music, tracks, name):
    with tempfile.TemporaryDirectory() as home:
        pathlib.Path(home, "config.yaml").write_text(f"directory: {music}\n", encoding="utf-8")

        def beet(name, *arguments):
            begin, before = time.monotonic(), os.times()
            subprocess.run(["beet", *arguments], check=True, env={**os.environ, "BEETSDIR": home},
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            after = os.times()
            processor = after.children_user - before.children_user + after.children_system - before.children_system
            add_time(f"{name}: beets", tracks, time.monotonic() - begin, processor)

        beet(name, "import", "--quiet", "--noautotag", "--nocopy", "--nowrite", music)
        with sqlite3.connect(f"{home}/library.db") as connection:
            expect(tracks, connection.execute("SELECT COUNT(*) FROM items").fetchone()[0], "beets")
        if name == CACHED:
            beet(REFRESH, "update", "--nomove")


def programs(gaps, music, tracks):
    """Returns the functions that measure the installed programs. They take the name of the row."""
    result = [lambda name: measure_orvalen(gaps, music, tracks, name)]
    if shutil.which("mpd"):
        result.append(lambda name: measure_mpd(music, tracks, name))
    if shutil.which("beet") and tracks <= MOST_BEETS:
        result.append(lambda name: measure_beets(music, tracks, name))
    return result


def measure(gaps, tracks):
    with tempfile.TemporaryDirectory() as folder:
        music = pathlib.Path(folder) / "music"
        make_music(gaps, music, tracks)
        for program in programs(gaps, music, tracks) if tracks <= MOST_FILES else []:
            if not drop(gaps, music):
                break
            program(UNCACHED)
        for path in (music / "0").rglob("*.mp3"):
            path.read_bytes()
        for program in programs(gaps, music, tracks):
            program(CACHED)


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    for program in ("mpd", "beet"):
        if not shutil.which(program):
            print(f"{program} is not installed and is left out", file=sys.stderr)
    gaps = os.path.abspath(sys.argv[1])
    try:
        for tracks in [int(text) for text in sys.argv[2:]] or [10_000, 60_000, 1_000_000]:
            measure(gaps, tracks)
    finally:
        TIMES.print()
        PHASES.print()
        print(f"Load average: {os.getloadavg()[0]:.1f}")


if __name__ == "__main__":
    main()
