#!/usr/bin/env python3
"""A drive stops answering at the start, at Play and during a file dialog. The window must continue to work.
Usage: stalled_drive.py PROGRAM FOLDER SLOW_DRIVE_LIBRARY"""

import pathlib
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tests/journey"))

import sample_list
from journey import Journey, fresh_copy
from main_job import fill_library
from sample_list import FILES, M4A, MUSIC
from waiting import wait_until

NO_ANSWER = "Playback error: The drive does not answer"


class Drive:
    """A folder whose drive can be stalled. slow_drive.cpp describes the ways."""

    def __init__(self, journey):
        self.folder = fresh_copy(MUSIC, journey.folder / "drive")
        self._switch = journey.folder / "stalled"
        self.environment = {"ORVALEN_SLOW_FOLDER": str(self.folder), "ORVALEN_SLOW_SWITCH": str(self._switch)}

    def stall(self, way):
        self._switch.write_text(way)

    def answer(self):
        self._switch.unlink()


def play_in_vain(journey, user):
    """Presses Play. Returns the seconds until the error line."""
    before = journey.console.count(NO_ANSWER)
    begun = time.monotonic()
    user.press_play(M4A)
    wait_until(lambda: journey.console.count(NO_ANSWER) == before + 1, "the error line")
    return time.monotonic() - begun


def cancel_file_dialog(user):
    user.screen.click_on("Add Music Folder(s)")
    user.screen.wait_for("text", "File name:")
    user.screen.press("Escape")
    user.screen.wait_until_gone("text", "File name:")
    user.paste_list("the window takes text")


def main(program, folder, library):
    with Journey(program, folder) as journey:
        drive = Drive(journey)
        journey.environment.update(drive.environment, LD_PRELOAD=str(pathlib.Path(library).resolve(strict=True)))
        user = journey.start()
        fill_library(user, drive.folder / "House")
        user.add_location(drive.folder / "Wedding")
        user.scan()
        user.paste_list(sample_list.LIST)
        user.match()
        user.close_results()
        drive.stall("threads")
        cancel_file_dialog(user)
        drive.answer()
        assert journey.quit() == 0

        drive.stall("all")
        begun = time.monotonic()
        user = journey.start()
        user.screen.wait_for(name=f"Remove {drive.folder}/House")
        user.screen.wait_for(name=f"Remove {drive.folder}/Wedding")
        print(f"start: {time.monotonic() - begun:.1f} s")
        assert user.tracks_indexed() == len(FILES), user.tracks_indexed()
        user.load_last_session()
        print(f"play: {play_in_vain(journey, user):.1f} s")
        print(f"again: {play_in_vain(journey, user):.1f} s")
        drive.answer()
        drive.stall("reads")
        print(f"play, opened but not read: {play_in_vain(journey, user):.1f} s")
        drive.answer()
        user.play(M4A)
        drive.stall("all")
        user.close_results()
        cancel_file_dialog(user)  # the last dialog showed a folder of this drive
        assert journey.quit() == 0


if __name__ == "__main__":
    main(*sys.argv[1:])
