#!/usr/bin/env python3
"""What survives the end of the program, and its kill: the library, the folders, and the choice made by hand, which a
scan keeps and which wins in later runs. Usage: restart.py PROGRAM FOLDER"""

import sys

import sample_list
from journey import Journey, fresh_copy
from main_job import choose_other_copy, fill_library
from sample_list import FILES, MUSIC, TWO_COPIES


def check_what_came_back(user, music, chosen):
    user.screen.wait_for(name=f"Remove {music}")
    assert user.tracks_indexed() == len(FILES), user.tracks_indexed()
    user.paste_list(sample_list.LIST)
    user.match()
    assert user.chosen_file(TWO_COPIES) == chosen, user.chosen_file(TWO_COPIES)
    assert not user.included(TWO_COPIES), "a fresh run includes nothing"


def main(program, folder):
    with Journey(program, folder) as journey:
        music = fresh_copy(MUSIC, journey.folder / "music")
        user = journey.start()
        fill_library(user, music)
        user.paste_list(sample_list.LIST)
        user.match()
        chosen = choose_other_copy(user)
        user.close_results()
        user.scan()
        assert journey.quit() == 0

        user = journey.start()
        check_what_came_back(user, music, chosen)
        journey.kill()

        user = journey.start()
        check_what_came_back(user, music, chosen)


if __name__ == "__main__":
    main(*sys.argv[1:])
