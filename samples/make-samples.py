#!/usr/bin/env python3
"""Generates the sample music: ffmpeg makes the tones, mutagen writes the tags.

Usage: make-samples.py [FOLDER]. Needs ffmpeg and python3-mutagen.
"""

import subprocess
import sys
from pathlib import Path

from mutagen.aiff import AIFF
from mutagen.id3 import APIC, ID3, TBPM, TCON, TIT2, TPE1, Encoding
from mutagen.mp4 import MP4
from mutagen.wave import WAVE

FOLDER = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).parent / "music")
COMPRESSED = ["-ar", "44100", "-b:a", "64k"]
PLAIN = ["-ar", "16000"]


def tone(name, frequency, seconds=2.0, options=COMPRESSED):
    """Writes a mono chord on this frequency that fades out. Returns the path of the file."""
    path = FOLDER / name
    path.parent.mkdir(parents=True, exist_ok=True)
    chord = "+".join(f"0.2*sin(2*PI*{frequency * ratio:.3f}*t)" for ratio in (1, 1.25, 1.5))
    source = f"aevalsrc={chord}:d={seconds}:s=44100,afade=t=out:st={seconds / 2}:d={seconds / 2}"
    untagged = ["-id3v2_version", "0"] if path.suffix == ".mp3" else []
    subprocess.run(
        ["ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i", source, "-ac", "1", *options, "-vn",
         "-map_metadata", "-1", "-bitexact", *untagged, str(path)],
        check=True)
    return path


def frames(title=None, artist=None, tempo=None, encoding=Encoding.UTF8):
    texts = [(TIT2, title), (TPE1, artist), (TBPM, tempo)]
    return [kind(encoding=encoding, text=[text]) for kind, text in texts if text is not None]


def tag_mp3(path, version, *tags):
    id3 = ID3()
    for frame in tags:
        id3.add(frame)
    id3.save(path, v1=0, v2_version=version)


def tag_chunk(file, *tags):
    file.add_tags()
    for frame in tags:
        file.tags.add(frame)
    file.save()


def cover():
    """Adds a small cover picture, as most bought files have."""
    picture = subprocess.run(
        ["ffmpeg", "-v", "error", "-f", "lavfi", "-i", "gradients=s=160x160:d=1:x0=0:y0=0:x1=160:y1=160:n=2:c0=0x20304a:c1=0xd08a3c:speed=0.00001:seed=1",
         "-frames:v", "1", "-f", "image2pipe", "-c:v", "mjpeg", "-bitexact", "-"],
        check=True, capture_output=True).stdout
    return APIC(encoding=Encoding.LATIN1, mime="image/jpeg", type=3, desc="", data=picture)


def make_mp3():
    night = frames("Last Train Home", "Night Band", "123", Encoding.LATIN1)
    tag_mp3(tone("House/Night Band - Last Train Home.mp3", 220), 3, *night)
    tag_mp3(tone("Wedding/Night Band - Last Train Home.mp3", 220, 1.5), 4, *night)
    tag_mp3(tone("House/Velvet Circuit - Midnight Arcade (Extended Mix).mp3", 262), 4, cover(),
            *frames("Midnight Arcade (Extended Mix)", "Velvet Circuit", "126"))
    tag_mp3(tone("Wedding/Zoé & les Étoiles - Crème Brûlée.mp3", 294), 3,
            *frames("Crème Brûlée", "Zoé & les Étoiles", "96", Encoding.UTF16))
    tag_mp3(tone("House/Static Garden - Undertow.mp3", 196), 3,
            *frames("Undertow", "Static Garden", "128.50", Encoding.LATIN1))
    tag_mp3(tone("Wedding/Νίκη Αλεξίου - Καλοκαίρι.mp3", 330), 4, *frames("Καλοκαίρι", "Νίκη Αλεξίου"))
    # mutagen omits empty frames. The terminator alone is an empty text that is kept.
    tag_mp3(tone("House/Static Garden - Track 03.mp3", 247), 4, *frames("\0", "Static Garden"),
            TCON(encoding=Encoding.UTF8, text=["House"]))
    tone("Wedding/Speech Intro.mp3", 175, 1.0)
    whole = tone("House/Velvet Circuit - Neon Rain.mp3", 208)
    tag_mp3(whole, 3, *frames("Neon Rain", "Velvet Circuit", "124", Encoding.LATIN1))
    # An incomplete download: only the first letters of the tag's second text.
    data = whole.read_bytes()
    whole.write_bytes(data[:data.index(b"Velvet Circuit") + 4])


def make_others():
    m4a = MP4(tone("Wedding/Marlow Quay - Paper Boats.m4a", 349))
    m4a["\xa9nam"] = "Paper Boats"
    m4a["\xa9ART"] = "Marlow Quay"
    m4a["tmpo"] = [92]
    m4a.save()
    mp4 = MP4(tone("Wedding/Marlow Quay - Harbour Lights.mp4", 311))
    mp4["\xa9nam"] = "Harbour Lights"
    mp4["\xa9ART"] = "Marlow Quay"
    mp4.save()
    tag_chunk(WAVE(tone("Wedding/The Lanterns - First Dance.wav", 262, 1.0, PLAIN)),
              *frames("First Dance", "The Lanterns", "84"))
    tag_chunk(AIFF(tone("House/Static Garden - Bloom.aiff", 233, 1.0, PLAIN)),
              *frames("Bloom", "Static Garden", "120"))
    tone("House/Static Garden - Bloom (Dub).aif", 233, 1.0, PLAIN)


make_mp3()
make_others()
