#!/usr/bin/env python3
"""The main job: adds a music folder and exports a playlist. Usage: main_job.py PROGRAM FOLDER"""

import json
import sys

import sample_list
from journey import Journey, fresh_copy
from sample_list import ACCENTS, COPIES, FILE_OF, FILES, MISSING, MUSIC, OTHER_SCRIPT, TWO_COPIES


def fill_library(user, music):
    user.add_location(music)
    user.scan()


def other_copy(path):
    """Returns the path of the other copy of the same song."""
    return next(str(path).replace(here, there) for here, there in (COPIES, COPIES[::-1]) if str(path).endswith(here))


def choose_other_copy(user):
    """Chooses the candidate that was not proposed. Returns its path."""
    proposed = user.chosen_file(TWO_COPIES)
    wanted = other_copy(proposed)
    for position in (0, 1):
        user.choose(TWO_COPIES, position)
        if user.chosen_file(TWO_COPIES) == wanted:
            return wanted
    raise AssertionError(f"neither entry of the picker is {wanted}")


def carry_out(user, music, playlist, picture=lambda name: None):
    """Does the main job. Returns the expected lines of the playlist."""
    picture("1-empty")
    fill_library(user, music)
    user.paste_list(sample_list.LIST)
    picture("2-list")
    user.match()
    picture("3-results")
    chosen = choose_other_copy(user)
    user.include(TWO_COPIES)
    user.include(ACCENTS)
    user.include(MISSING)
    user.include(OTHER_SCRIPT)
    picture("4-chosen")
    user.export("M3U8", playlist)
    picture("5-exported")
    return [chosen, str(music / FILE_OF[ACCENTS]), str(music / FILE_OF[OTHER_SCRIPT])]


def check_library_file(journey, music):
    """Checks that the tags of the files were read. The journey "restart" checks what the program reads again."""
    library = json.loads((journey.data / "Orvalen/library.orvl").read_text(encoding="utf-8"))
    tempo = {track["path"]: track.get("bpm") for track in library["tracks"]}
    assert tempo[str(music / COPIES[0])] == 123, tempo


def check_console(journey):
    expected = [f"✅ Persistent library saved to {journey.data}/Orvalen/library.orvl",
                "Options for Not In The Library – Nobody At All: []",
                "Exporting format: m3u8"]
    places = [journey.console.index(line) for line in expected]
    assert places == sorted(places), journey.console


def check_rows(user, music):
    for row, name in FILE_OF.items():
        assert user.chosen_file(row) == str(music / name), (row, user.chosen_file(row))
    assert user.chosen_file(MISSING) is None
    assert user.tracks_selected() == 4, user.tracks_selected()


def main(program, folder):
    with Journey(program, folder) as journey:
        music = fresh_copy(MUSIC, journey.folder / "music")
        before = {path: path.read_bytes() for path in music.rglob("*") if path.is_file()}
        playlist = journey.folder / "wedding.m3u8"
        user = journey.start()
        assert user.tracks_indexed() == 0, user.tracks_indexed()

        lines = carry_out(user, music, playlist)
        check_rows(user, music)
        assert playlist.read_bytes() == "\n".join(lines).encode(), playlist.read_bytes()
        check_library_file(journey, music)
        check_console(journey)

        user.close_results()
        assert user.tracks_indexed() == len(FILES), user.tracks_indexed()
        assert journey.quit() == 0
        assert {path: path.read_bytes() for path in music.rglob("*") if path.is_file()} == before, "music was touched"


if __name__ == "__main__":
    main(*sys.argv[1:])
