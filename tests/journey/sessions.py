#!/usr/bin/env python3
"""A session saved by hand and loaded in the next run, beside the one that saves itself.
Usage: sessions.py PROGRAM FOLDER"""

import json
import sys

import sample_list
from journey import Journey, fresh_copy
from main_job import choose_other_copy, fill_library
from sample_list import ACCENTS, MUSIC, OTHER_SCRIPT, TWO_COPIES
from waiting import wait_until


def main(program, folder):
    with Journey(program, folder) as journey:
        music = fresh_copy(MUSIC, journey.folder / "music")
        saved = journey.folder / "evening.orvs"
        user = journey.start()
        fill_library(user, music)
        user.paste_list(sample_list.LIST)
        user.match()
        chosen = choose_other_copy(user)
        user.include(TWO_COPIES)
        user.include(OTHER_SCRIPT)
        user.save_session(saved)
        wait_until(saved.exists, "the session file")
        assert user.tracks_selected() == 2, "saving changes nothing"
        user.close_results()
        assert journey.quit() == 0

        session = json.loads(saved.read_text(encoding="utf-8"))
        assert session["matchInput"] == sample_list.LIST
        assert [row["include"] for row in session["matchedTracks"]].count(True) == 2

        user = journey.start()
        user.load_session(saved)
        assert user.tracks_selected() == 2, user.tracks_selected()
        assert user.included(TWO_COPIES) and user.included(OTHER_SCRIPT) and not user.included(ACCENTS)
        assert user.chosen_file(TWO_COPIES) == chosen, user.chosen_file(TWO_COPIES)
        user.close_results()
        assert user.screen.wait_for(name="Wanted list").text == sample_list.LIST

        # The one that saves itself stands as it was after the run, or later by a tick of its clock; never as by hand.
        user.load_last_session()
        assert user.chosen_file(TWO_COPIES) is not None
        user.close_results()

        saved.write_text("#EXTM3U\nno session\n", encoding="utf-8")
        user.open_session(saved)
        wait_until(lambda: any(line.startswith("Failed to load session: ") for line in journey.console),
                   "the line about the session that cannot be read")
        assert journey.quit() == 0


if __name__ == "__main__":
    main(*sys.argv[1:])
