"""The actions of a user. Each returns when its effect is visible."""

import pathlib
import re

from waiting import wait_until


class Orvalen:
    """The running program, as a user operates it."""

    def __init__(self, screen):
        self.screen = screen
        screen.wait_for(name="Match Playlist", seconds=60)

    # The main page

    def tracks_indexed(self):
        """Returns the number beside "Tracks Indexed: ", or None if it is not visible."""
        return self._number(r"Tracks Indexed: (\d+)")

    def add_location(self, path):
        self.screen.click_on("Add Music Folder(s)")
        self._answer_file_dialog("Add Music Folders or Audio Files", path)
        self.screen.wait_for(name="Remove " + str(path))

    def scan(self):
        self.screen.click_on("Refresh Library" if self.screen.find(name="Refresh Library") else "Scan Library")
        self.screen.wait_for(name="Library Refreshed")
        self.screen.click_on("OK")
        self.screen.wait_until_gone(name="Library Refreshed")

    def paste_list(self, text):
        self.screen.replace_text(self.screen.wait_for(name="Wanted list"), text)

    def match(self):
        self.screen.click_on("Match Playlist")
        self.screen.wait_for(name="Playlist Results", seconds=60)

    def load_session(self, path):
        self.screen.click_on("Load Session")
        self._answer_file_dialog("Open", path)
        self.screen.wait_for(name="Playlist Results")

    def load_last_session(self):
        self.screen.click_on("Load Last Session")
        self.screen.wait_for(name="Playlist Results")

    # The results page

    def tracks_selected(self):
        return self._number(r"(\d+) tracks? selected")

    def choose(self, row, position):
        """Chooses the entry at the position, counted from 0, in the row's picker."""
        self.screen.click(self._in_row(row, "Choose match"))
        entries = wait_until(lambda: self._picker_entries(), "the picker's list")
        self.screen.click(entries[position])
        wait_until(lambda: not self._picker_entries(), "the picker's list to close")

    def chosen_file(self, row):
        """Returns the path of the row's selected track, or None."""
        names = (it.name for it in self._row(row).walk() if it.name.startswith("File: ") and it.visible)
        return next((name.removeprefix("File: ") for name in names), None)

    def included(self, row):
        return self._in_row(row, "Include in playlist").checked

    def include(self, row):
        box = self._in_row(row, "Include in playlist")
        before = box.checked
        self.screen.click(box)
        wait_until(lambda: self._in_row(row, "Include in playlist").checked != before, f"the box of {row!r} to turn")

    def export(self, choice, path):
        """Exports with the labelled choice to the path, which may exist already. Waits for the playlist:
        the banner disappears after two seconds, which a busy machine can miss."""
        self.screen.click_on(choice)
        self.screen.click_on("Export Playlist")
        field = self.screen.wait_for("text", "File name:")
        there = pathlib.Path(path).exists()
        self.screen.replace_text(field, str(path))
        self.screen.press("Return")
        if there:
            self.screen.wait_for("push button", "Yes")
            self.screen.press("alt+y")
        self.screen.wait_until_gone("text", "File name:")
        wait_until(pathlib.Path(path).exists, f"the playlist {path}")

    def press_play(self, row):
        """Presses the play button of the row. Does not wait for the preview."""
        self.screen.click(self._in_row(row, "Play"))

    def play(self, row):
        """Starts the preview of the row and waits for it."""
        self.press_play(row)
        wait_until(lambda: self._in_row(row, "Pause"), "the preview to play")

    def save_session(self, path):
        self.screen.click_on("Save Session")
        self._answer_file_dialog("Save", path)

    def close_results(self):
        self.screen.click_on("Close")
        self.screen.wait_until_gone(name="Playlist Results")

    # Inside

    def _number(self, pattern):
        matches = (re.fullmatch(pattern, it.name) for it in self.screen.seen())
        return next((int(match[1]) for match in matches if match), None)

    def _picker_entries(self):
        opened = self.screen.find("list", "Choose match")
        return [it for it in opened.children if it.name and it.on_screen] if opened else []

    def _row(self, label):
        """Returns the row's group, scrolled so that its include box is visible."""
        self._in_row(label, "Include in playlist")
        return self._find_row(self.screen.wait_for("list", "Results"), label)

    def _find_row(self, rows, label):
        """Returns the row, or None if the list has not created it yet."""
        return next((it for it in rows.children if it.name == label), None)

    def _in_row(self, label, name):
        """Returns the row's control with this name, scrolled into view."""
        rows = self.screen.wait_for("list", "Results")

        def control():
            row = self._find_row(rows, label)
            return next((it for it in row.walk() if it.name == name), None) if row else None
        return self.screen.scroll_into(rows, control)

    def _answer_file_dialog(self, button, path):
        """Types the path into the file dialog and confirms it."""
        field = wait_until(lambda: self.screen.find("text", "File name:") or self.screen.find("text", "Directory:"),
                           "the file dialog")
        self.screen.replace_text(field, str(path))

        def confirmed():
            # The first click may only close the list of completions below the field.
            accept = self.screen.find("push button", button)
            if accept and accept.enabled:
                self.screen.click(accept)
            try:
                wait_until(lambda: not self.screen.find("push button", button), "the file dialog to close", 2)
            except TimeoutError:
                return False
            return True
        wait_until(confirmed, f"the file dialog to take {path}")
