#!/usr/bin/env python3
"""Measures scans of the same audio files by Orvalen, mpd and beets, and prints a table in Markdown.

Usage: scan_table.py ORVALEN_GAPS MUSIC [TRACKS...]. Needs the Debian packages mpd and beets, and leaves out a program
that is not installed. If the folder MUSIC does not exist, makes it with 60,000 files of 42 kB, or fewer if no size needs
so many. Keeps it. A smaller size uses hard links in the folder that contains MUSIC, which should be on a disk. A larger
size uses hard links in memory, below /dev/shm. With ORVALEN_DROP_CACHES=1, root also drops cached folders.
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
PHASES = Table("Phases of Orvalen's scan, ms")


def add_time(row, tracks, elapsed, processor):
    TIMES.add(row, f"{tracks:,} tracks", " / ".join(f"{time:.2f} s" for time in (elapsed, processor)))


def link_music(source, folder, tracks):
    """Fills the folder with hard links of the files in `source`, in as many copies of its tree as necessary."""
    files = [path.relative_to(source) for path in source.rglob("*.mp3")]
    known = set()
    for i in range(tracks):
        copy, file = divmod(i, len(files))
        link = folder / str(copy) / files[file]
        if link.parent not in known:
            link.parent.mkdir(parents=True)
            known.add(link.parent)
        os.link(source / files[file], link)


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
        PHASES.add(f"{name}, {tracks:,} tracks", phase, f"{time:.0f}")
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


def measure_disk(gaps, music, tracks):
    for program in programs(gaps, music, tracks):
        if not drop(gaps, music):
            break
        program(UNCACHED)
    measure_cached(gaps, music, tracks)


def measure_cached(gaps, music, tracks):
    for path in music.rglob("*.mp3"):
        path.read_bytes()
    for program in programs(gaps, music, tracks):
        program(CACHED)


def measure(gaps, music, tracks):
    if tracks == MOST_FILES:
        measure_disk(gaps, music, tracks)
        return
    with tempfile.TemporaryDirectory(dir=music.parent if tracks < MOST_FILES else "/dev/shm") as name:
        folder = pathlib.Path(name)
        if tracks < MOST_FILES:
            link_music(music, folder, tracks)
            os.sync()
            measure_disk(gaps, folder, tracks)
        else:
            subprocess.run([gaps, "make", folder / "0", str(MOST_FILES)], check=True)
            link_music(folder / "0", folder / "links", tracks - MOST_FILES)
            measure_cached(gaps, folder, tracks)


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    for program in ("mpd", "beet"):
        if not shutil.which(program):
            print(f"{program} is not installed and is left out", file=sys.stderr)
    gaps, music = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2]).resolve()
    sizes = [int(text) for text in sys.argv[3:]] or [1_000, 10_000, 60_000, 1_000_000]
    if not music.exists():
        subprocess.run([gaps, "make", music, str(min(MOST_FILES, max(sizes)))], check=True)
    try:
        for tracks in sizes:
            measure(gaps, music, tracks)
    finally:
        TIMES.print()
        PHASES.print()
        print(f"Load average: {os.getloadavg()[0]:.1f}")


if __name__ == "__main__":
    main()
