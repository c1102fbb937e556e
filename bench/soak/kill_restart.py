#!/usr/bin/env python3
"""Kills the program at random moments and starts it again. It must always start, with an intact database, no incomplete
playlist, and all choices that were visible while no choices were being replaced.
Usage: kill_restart.py PROGRAM FOLDER [KILLS [SEED]]"""

import collections
import json
import pathlib
import random
import shutil
import signal
import sqlite3
import sys
import threading
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tests/journey"))

import sample_list
from journey import Journey, fresh_copy
from main_job import choose_other_copy
from sample_list import ACCENTS, MUSIC, TWO_COPIES

KEY = "night band last train home"
COPIES_OF_THE_MUSIC = 100  # makes writing the library slow enough to hit


class Evening:
    """The work that the kill interrupts, and the results that are expected at each moment."""

    def __init__(self, journey, music):
        self.journey = journey
        self.music = music
        self.playlist = journey.folder / "wedding.m3u8"
        self.database = journey.data / "orvalen.sqlite"
        self.library = journey.data / "Orvalen/library.orvl"
        self.session = journey.data / "Orvalen/session.orvs"
        self.playlists = set()  # contents of all exported playlists
        self.shown = None  # the visible choice while no choices are being replaced

    def carry_on(self, user):
        while True:
            user.paste_list(sample_list.LIST)
            user.match()
            chosen = choose_other_copy(user)
            self.shown = chosen
            self.export(user, [chosen], [TWO_COPIES])
            self.export(user, [chosen, user.chosen_file(ACCENTS)], [ACCENTS])
            user.close_results()
            self.shown = None
            user.scan()

    def export(self, user, lines, rows):
        for row in rows:
            user.include(row)
        self.playlists.add("\n".join(lines).encode())
        user.export("M3U8", self.playlist)


def changed(path):
    """Returns a function that says whether the file was replaced or written since this call."""
    def state():
        try:
            status = path.stat()
            return status.st_ino, status.st_size, status.st_mtime_ns
        except FileNotFoundError:
            return None
    before = state()
    return lambda: state() != before


def random_moment(evening):
    """Returns the moment of the kill as a name and a condition: a random time, or the start of writing a file."""
    begun = time.monotonic()
    limit = begun + random.uniform(0, 9)
    sights = {
        "any": lambda: False,
        "playlist": lambda: any(evening.playlist.parent.glob(".orvalen-*")),
        "session": changed(evening.session),
        "library": changed(evening.library),
        "database": pathlib.Path(f"{evening.database}-wal").exists,
        "choice": pathlib.Path(f"{evening.database}-journal").exists,
    }
    name = random.choice(["any"] * 5 + list(sights)[1:])
    delay = random.choice([0, 0, random.uniform(0, 0.01)])
    if name != "any":
        limit = begun + 15

    def reached():
        if time.monotonic() > limit:
            return True
        if not sights[name]():
            return False
        time.sleep(delay)
        return True
    return name, reached


def kill_when(reached, journey):
    while not journey.has_ended and not reached():
        time.sleep(0.0002)
    journey.kill()


def rows_of(database, scratch):
    """Returns the rows of the database after the kill. Reads a copy, so that the program has to recover the original."""
    if not database.exists():
        return []
    shutil.rmtree(scratch, ignore_errors=True)
    scratch.mkdir()
    for path in database.parent.glob(database.name + "*"):
        shutil.copy(path, scratch)
    with sqlite3.connect(scratch / database.name) as copy:
        assert copy.execute("PRAGMA integrity_check").fetchall() == [("ok",)], "the database is damaged"
        tables = copy.execute("SELECT name FROM sqlite_master WHERE name = 'preferred_matches'").fetchall()
        return copy.execute("SELECT key, preferred_path FROM preferred_matches").fetchall() if tables else []


def is_whole(path):
    """Returns whether the file is missing or is valid JSON."""
    try:
        json.loads(path.read_text(encoding="utf-8"))
        return True
    except FileNotFoundError:
        return True
    except ValueError:
        return False


def check(evening, tally):
    rows = rows_of(evening.database, evening.journey.folder / "scratch")
    if evening.shown:
        tally["with a choice on show"] += 1
        assert rows == [(KEY, evening.shown)], (rows, evening.shown)
    if evening.playlist.exists():
        assert evening.playlist.read_bytes() in evening.playlists, "half a playlist"
    for path in (evening.library, evening.session, evening.journey.data / "Orvalen/folders.json"):
        if not is_whole(path):
            tally[f"{path.name} caught in its write"] += 1
    for path in evening.playlist.parent.glob(".orvalen-*"):
        tally["temporary file left"] += 1
        path.unlink()


def set_up(journey, music):
    for number in range(COPIES_OF_THE_MUSIC):
        copy = music / f"copy {number}"
        copy.mkdir()
        for path in MUSIC.glob("House/Static Garden*"):  # not in the wanted list
            shutil.copy(path, copy)
    user = journey.start()
    user.add_location(music)
    user.scan()
    journey.kill()


def one_life(evening, tally):
    """Starts the program, lets it work, kills it, and checks its files."""
    evening.shown = None
    begun = time.monotonic()
    user = evening.journey.start()
    tally["slowest start, tenths of a second"] = max(tally["slowest start, tenths of a second"],
                                                     round(10 * (time.monotonic() - begun)))
    if not user.screen.find(name=f"Remove {evening.music}"):
        user.add_location(evening.music)  # the kill damaged the saved list
    if not user.tracks_indexed():
        user.scan()  # the kill damaged the library
    name, reached = random_moment(evening)
    killer = threading.Thread(target=kill_when, args=(reached, evening.journey), daemon=True)
    killer.start()
    try:
        evening.carry_on(user)
    except Exception:
        killer.join(2)  # the failure may be the kill itself
        if killer.is_alive():
            raise
    killer.join(30)
    assert evening.journey.exit_code == -signal.SIGKILL, evening.journey.exit_code
    tally[f"killed: {name}"] += 1
    check(evening, tally)


def main(program, folder, kills="3", seed=None):
    seed = int(seed) if seed else random.randrange(1 << 32)
    random.seed(seed)
    print(f"seed {seed}", flush=True)
    tally = collections.Counter()
    with Journey(program, folder) as journey:
        music = fresh_copy(MUSIC, journey.folder / "music")
        evening = Evening(journey, music)
        set_up(journey, music)
        for life in range(int(kills)):
            one_life(evening, tally)
            if life % 20 == 19:
                print(f"{life + 1} kills", dict(tally), flush=True)
        journey.start()
        print(f"{kills} kills", dict(sorted(tally.items())))


if __name__ == "__main__":
    main(*sys.argv[1:])
