#!/usr/bin/env python3
"""Makes Glass.mp3, the chime that is played at the end of a scan: four partials that fade out.

Usage: make-chime.py [FOLDER]. Needs ffmpeg.
"""

import subprocess
import sys
from pathlib import Path

FOLDER = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent)
# For each partial: frequency in hertz, loudness, seconds until it has faded to a third, start in seconds.
PARTIALS = [(1318.5, 0.22, 0.35, 0.0), (2637.0, 0.08, 0.18, 0.0), (1975.5, 0.18, 0.40, 0.09), (5274.0, 0.02, 0.06, 0.0)]

voices = "+".join(
    f"{loudness}*gte(t,{start})*sin(2*PI*{frequency}*t)*exp(-(t-{start})/{decay})*min(1,(t-{start})*200)"
    for frequency, loudness, decay, start in PARTIALS).replace(",", r"\,")
subprocess.run(
    ["ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i", f"aevalsrc={voices}:d=1.6:s=44100,afade=t=out:st=1.2:d=0.4",
     "-ac", "1", "-b:a", "96k", "-map_metadata", "-1", "-bitexact", "-id3v2_version", "0", str(FOLDER / "Glass.mp3")],
    check=True)
