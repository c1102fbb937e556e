#!/usr/bin/env python3
"""Repeats the whole job: match, review, preview, export, load, scan. Memory, open files and threads must not grow after
the first loops, and the program must not listen for connections.
Usage: load.py PROGRAM FOLDER [LOOPS]"""

import pathlib
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tests/journey"))

import sample_list
from journey import Journey, fresh_copy
from main_job import choose_other_copy, fill_library
from sample_list import ACCENTS, MUSIC, OTHER_SCRIPT, TWO_COPIES

WARM_UP = 10  # loops; half of the loops in a shorter run


def figures(pid):
    """Returns the resident kilobytes, open files and threads."""
    status = dict(line.split(":", 1) for line in pathlib.Path(f"/proc/{pid}/status").read_text().splitlines())
    return {"kB": int(status["VmRSS"].split()[0]), "files": len(list(pathlib.Path(f"/proc/{pid}/fd").iterdir())),
            "threads": int(status["Threads"])}


def listened_on(pid):
    """Returns the program's sockets that listen for connections."""
    sockets = set()
    for descriptor in pathlib.Path(f"/proc/{pid}/fd").iterdir():
        try:
            sockets.add(str(descriptor.readlink()))
        except FileNotFoundError:
            pass  # closed in the meantime
    found = []
    for table, state, listens, inode in (("tcp", 3, "0A", 9), ("tcp6", 3, "0A", 9), ("unix", 3, "00010000", 6)):
        for line in pathlib.Path(f"/proc/{pid}/net/{table}").read_text().splitlines()[1:]:
            fields = line.split()
            if fields[state] == listens and f"socket:[{fields[inode]}]" in sockets:
                found.append(f"{table}: {line}")
    return found


def settled(pid):
    """Returns the figures after idle threads have ended. Thread pools keep threads for some time."""
    looks = [figures(pid)]
    for _ in range(100):
        time.sleep(0.1)
        looks.append(figures(pid))
        if len(looks) > 5 and len({(look["files"], look["threads"]) for look in looks[-5:]}) == 1:
            break
    return looks[-1]


def one_loop(user, playlist, session):
    user.paste_list(sample_list.LIST)
    user.match()
    choose_other_copy(user)
    user.include(TWO_COPIES)
    user.include(OTHER_SCRIPT)
    user.play(ACCENTS)
    user.export("M3U8", playlist)
    user.close_results()
    user.load_last_session()
    user.close_results()
    if not session.exists():
        user.load_last_session()
        user.save_session(session)
        user.close_results()
    user.load_session(session)
    user.close_results()
    user.scan()


def check(looks, warm_up):
    """Checks that nothing grows. Some later loops must have no more files and threads than an early one, because pools end
    idle threads at any time. In long runs, memory must grow by less than 10 %."""
    late = looks[len(looks) // 2:]
    for what in ("files", "threads"):
        most_before = max(look[what] for look in looks[:warm_up])
        least_late = min(look[what] for look in late)
        assert least_late <= most_before, f"{what} grew from {most_before} to {least_late}: {looks}"
    if len(looks) < 4 * warm_up:
        return  # too short to distinguish a trend from chance
    rest = looks[warm_up:]
    quarter = len(rest) // 4
    early, late = (sum(look["kB"] for look in part) / quarter for part in (rest[:quarter], rest[-quarter:]))
    assert late < early * 1.1, f"memory grew from {early:.0f} to {late:.0f} kB"


def main(program, folder, loops="4"):
    loops = int(loops)
    warm_up = min(WARM_UP, loops // 2)
    with Journey(program, folder) as journey:
        music = fresh_copy(MUSIC, journey.folder / "music")
        user = journey.start()
        fill_library(user, music)
        looks = []
        for loop in range(1, loops + 1):
            one_loop(user, journey.folder / "wedding.m3u8", journey.folder / "evening.orvs")
            looks.append(settled(journey.pid))
            print(loop, *(f"{value} {what}" for what, value in looks[-1].items()), flush=True)
        check(looks, warm_up)
        assert not listened_on(journey.pid), listened_on(journey.pid)
        assert journey.quit() == 0


if __name__ == "__main__":
    main(*sys.argv[1:])
