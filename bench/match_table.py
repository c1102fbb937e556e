#!/usr/bin/env python3
"""Measures matching, searching and saving, and prints a table in Markdown.

Usage: match_table.py ORVALEN_BENCH. Takes about three minutes. Times are processor times of one thread.
"""

import json
import os
import subprocess
import sys

LINES = 200
SIZES = [10_000, 60_000, 1_000_000]
ROWS = [  # description, benchmark, milliseconds from its counters
    ("Match 200 lines, first time", "match", lambda run: run["ms_catalog"] + LINES * run["ms_per_line"]),
    ("Match 200 lines again", "match", lambda run: LINES * run["ms_per_line"]),
    ("Prepare the search: Orvalen", "match", lambda run: run["ms_catalog"]),
    ("Prepare the search: normalise for a plain loop", "match_plain", lambda run: run["ms_table"]),
    ("Prepare the search: SQLite FTS5, trigrams", "search_fts5", lambda run: run["ms_table"]),
    ("Search for 200 lines: Orvalen", "search", lambda run: LINES * run["ms_per_line"]),
    ("Search for 200 lines: plain loop", "match_plain", lambda run: LINES * run["ms_per_line"]),
    ("Search for 200 lines: SQLite FTS5, trigrams", "search_fts5", lambda run: LINES * run["ms_per_line"]),
    ("Find in library, per key: Orvalen", "find", lambda run: run["ms_keystroke"]),
    ("Find in library, per key: SQLite FTS5, trigrams", "find_fts5", lambda run: run["ms_keystroke"]),
]


def time(milliseconds):
    if milliseconds >= 10_000:
        return f"{milliseconds / 1e3:.0f} s"
    if milliseconds >= 1_000:
        return f"{milliseconds / 1e3:.1f} s"
    return f"{milliseconds:.0f} ms" if milliseconds >= 10 else f"{milliseconds:.1f} ms"


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    names = "|".join(dict.fromkeys(name for _, name, _ in ROWS))
    sizes = "|".join(str(tracks) for tracks in SIZES)
    output = subprocess.run(
        [sys.argv[1], f"--benchmark_filter=^({names})/tracks:({sizes})(/|$)|^autosave/", "--benchmark_format=json"],
        check=True, stdout=subprocess.PIPE).stdout
    runs = {"/".join(run["name"].split("/")[:2]): run for run in json.loads(output)["benchmarks"]}
    for run in runs.values():
        if run.get("error_occurred"):
            sys.exit(f"{run['name']}: {run['error_message']}")
    for tracks in SIZES:
        if runs[f"search/tracks:{tracks}"]["found_per_line"] != runs[f"match_plain/tracks:{tracks}"]["found_per_line"]:
            sys.exit(f"Orvalen and the plain loop do not find the same among {tracks} tracks")
    print("|", " | ".join(["What"] + [f"{tracks:,} tracks" for tracks in SIZES]), "|")
    print("|---" * (len(SIZES) + 1) + "|")
    for description, name, milliseconds in ROWS:
        print("|", " | ".join([description] + [time(milliseconds(runs[f"{name}/tracks:{tracks}"])) for tracks in SIZES]),
              "|")
    for rows in (200, 10_000):
        print(f"\nAuto-save of {rows:,} rows: {time(runs[f'autosave/rows:{rows}']['cpu_time'])}")
    print(f"\nLoad average: {os.getloadavg()[0]:.1f}")


if __name__ == "__main__":
    main()
