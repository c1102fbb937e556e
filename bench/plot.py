#!/usr/bin/env python3
"""Draws the benchmarks over the size of the library.

Usage: plot.py RESULTS.json PICTURE.svg. RESULTS.json is the output of orvalen_bench --benchmark_format=json.
"""

import json
import math
import re
import sys

LINES = [  # benchmark, counter, label
    ("restore", "cpu_time", "restore, ms"),
    ("save", "cpu_time", "save, ms"),
    ("index_build", "cpu_time", "index made, ms"),
    ("match", "ms_catalog", "catalog made, ms"),
    ("count_under_five_folders", "cpu_time", "five folders counted, ms"),
    ("match_plain", "ms_per_line", "a line by a plain loop, ms"),
    ("match_short", "ms_per_line", "a line, short artists, ms"),
    ("match", "ms_per_line", "a line, ms"),
    ("match_accents", "ms_per_line", "a line, accents, ms"),
]
COLOURS = ["#1b6ca8", "#d1495b", "#2e933c", "#8e5ea2", "#c58b00", "#555555", "#e07a1f", "#0b8f8c", "#9a4b2f"]
LEFT, TOP, WIDTH, HEIGHT, LABELS = 70, 30, 560, 460, 230
TRACKS = (1e4, 1e6)
TIMES = (1e-3, 1e4)


def x(tracks):
    return LEFT + WIDTH * math.log(tracks / TRACKS[0]) / math.log(TRACKS[1] / TRACKS[0])


def y(time):
    return TOP + HEIGHT * (1 - math.log(time / TIMES[0]) / math.log(TIMES[1] / TIMES[0]))


def points(benchmarks, name, value):
    found = []
    for run in benchmarks:
        match = re.match(rf"{name}/tracks:(\d+)(/|$)", run["name"])
        if match and value in run:
            found.append((int(match[1]), run[value]))
    return sorted(found)


def text(at_x, at_y, words, extra=""):
    return f'<text x="{at_x:.1f}" y="{at_y:.1f}" {extra}>{words}</text>'


def grid():
    parts = []
    for tracks, words in ((1e4, "10,000"), (1e5, "100,000"), (1e6, "1,000,000 tracks")):
        parts.append(f'<path d="M{x(tracks):.1f} {TOP}v{HEIGHT}" stroke="#ddd"/>')
        parts.append(text(x(tracks), TOP + HEIGHT + 20, words, 'text-anchor="middle"'))
    time = TIMES[0]
    while time <= TIMES[1] * 1.01:
        parts.append(f'<path d="M{LEFT} {y(time):.1f}h{WIDTH}" stroke="#ddd"/>')
        parts.append(text(LEFT - 8, y(time) + 4, f"{time:g} ms", 'text-anchor="end"'))
        time *= 10
    # Guide lines with the slope of times that grow in proportion to the library.
    parts.extend(
        f'<path d="M{x(1e4):.1f} {y(start):.1f}L{x(1e6):.1f} {y(start * 100):.1f}" stroke="#bbb" stroke-dasharray="2 5"/>'
        for start in (1e-3, 1e-2, 1e-1, 1, 10, 100)
    )
    return parts


def main(results, picture):
    with open(results, encoding="utf-8") as file:
        benchmarks = json.load(file)["benchmarks"]
    parts = grid()
    label = TOP
    drawn = [(points(benchmarks, name, value), words) for name, value, words in LINES]
    for (line, words), colour in sorted(zip(drawn, COLOURS), key=lambda each: -each[0][0][-1][1]):
        if len(line) < 3:
            sys.exit(f"fewer than three sizes of: {words}")
        path = "L".join(f"{x(tracks):.1f} {y(time):.1f}" for tracks, time in line)
        parts.append(f'<path d="M{path}" fill="none" stroke="{colour}" stroke-width="2"/>')
        parts.extend(f'<circle cx="{x(t):.1f}" cy="{y(v):.1f}" r="3" fill="{colour}"/>' for t, v in line)
        label = max(label + 16, y(line[-1][1]) + 4)
        parts.append(text(LEFT + WIDTH + 10, label, words, f'fill="{colour}"'))
    with open(picture, "w", encoding="utf-8") as file:
        file.write(
            f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {LEFT + WIDTH + LABELS} {TOP + HEIGHT + 40}" '
            'font-family="sans-serif" font-size="12"><rect width="100%" height="100%" fill="white"/>'
            + "\n".join(parts)
            + "</svg>\n"
        )


if __name__ == "__main__":
    main(*sys.argv[1:])
