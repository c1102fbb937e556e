"""The wanted list of the journeys, and the tracks that it finds in the sample music."""

import pathlib

MUSIC = pathlib.Path(__file__).resolve().parents[2] / "samples" / "music"
FILES = sorted(path for path in MUSIC.rglob("*") if path.is_file())

# Typical dashes, case and accents; one line that is left out, and one line without a candidate.
LIST = """Night Band – Last Train Home
zoe & les etoiles — CREME BRULEE
Velvet Circuit - Midnight Arcade

a line without a dash
Nobody At All – Not In The Library
  Νίκη Αλεξίου – Καλοκαίρι  
Marlow Quay – Paper Boats
The Lanterns – First Dance
"""

TWO_COPIES = "Night Band – Last Train Home"
ACCENTS = "zoe & les etoiles – CREME BRULEE"
LONGER_TITLE = "Velvet Circuit – Midnight Arcade"
MISSING = "Nobody At All – Not In The Library"
OTHER_SCRIPT = "Νίκη Αλεξίου – Καλοκαίρι"
M4A = "Marlow Quay – Paper Boats"
WAV = "The Lanterns – First Dance"

# The selected track of each row with one candidate, as a path below the copied music folder.
FILE_OF = {
    ACCENTS: "Wedding/Zoé & les Étoiles - Crème Brûlée.mp3",
    LONGER_TITLE: "House/Velvet Circuit - Midnight Arcade (Extended Mix).mp3",
    OTHER_SCRIPT: "Wedding/Νίκη Αλεξίου - Καλοκαίρι.mp3",
    M4A: "Wedding/Marlow Quay - Paper Boats.m4a",
    WAV: "Wedding/The Lanterns - First Dance.wav",
}
COPIES = ("House/Night Band - Last Train Home.mp3", "Wedding/Night Band - Last Train Home.mp3")
