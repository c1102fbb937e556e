#!/usr/bin/env python3
"""Checks what is restored after the program was closed or killed: library, music folders, preferred match and session.
Usage: restart.py PROGRAM FOLDER"""

import sys

import sample_list
from journey import Journey, fresh_copy
from main_job import choose_other_copy, fill_library
from sample_list import ACCENTS, FILES, MUSIC, OTHER_SCRIPT, TWO_COPIES
from waiting import wait_until


def check_library_and_choice(user, music, chosen):
    user.screen.wait_for(name=f"Remove {music}")
    assert user.tracks_indexed() == len(FILES), user.tracks_indexed()
    user.paste_list(sample_list.LIST)
    user.match()
    assert user.chosen_file(TWO_COPIES) == chosen, user.chosen_file(TWO_COPIES)
    assert not user.included(TWO_COPIES), "a new run includes nothing"
    user.close_results()


def check_session(user, saved, chosen):
    user.paste_list("something else")
    user.load_session(saved)
    assert user.tracks_selected() == 2, user.tracks_selected()
    assert user.included(TWO_COPIES) and user.included(OTHER_SCRIPT) and not user.included(ACCENTS)
    assert user.chosen_file(TWO_COPIES) == chosen, user.chosen_file(TWO_COPIES)
    user.close_results()
    assert user.screen.wait_for(name="Wanted list").text == sample_list.LIST


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
        user.close_results()
        user.scan()
        assert journey.quit() == 0

        user = journey.start()
        check_library_and_choice(user, music, chosen)
        check_session(user, saved, chosen)
        journey.kill()

        user = journey.start()
        check_library_and_choice(user, music, chosen)
        user.load_last_session()
        assert user.chosen_file(TWO_COPIES) == chosen, "the session that is saved by itself"


if __name__ == "__main__":
    main(*sys.argv[1:])
