#!/usr/bin/env python3
"""The main job on the sample music, with screenshots. ./run starts it if there is no display.
Usage: tour.py PROGRAM FOLDER"""

import sys

from journey import Journey
from main_job import carry_out
from sample_list import MUSIC


def main(program, folder):
    pictures = []
    with Journey(program, folder) as journey:
        playlist = journey.folder / "wedding.m3u8"
        user = journey.start()
        carry_out(user, MUSIC, playlist, lambda name: pictures.append(journey.screenshot(name)))
    print("screenshots:")
    for picture in pictures:
        print("   ", picture)
    print("playlist:", playlist)
    print(playlist.read_text(encoding="utf-8"))


if __name__ == "__main__":
    main(*sys.argv[1:])
