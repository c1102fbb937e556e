"""The visible program: finds elements by role and name in the accessibility tree, and clicks and types through the
display. Never calls the program directly."""

import os
import subprocess
import time

from waiting import wait_until


class Element:
    """An element of the accessibility tree. After it disappeared, it has no name, role, state or children."""

    def __init__(self, accessible):
        self._accessible = accessible

    def _read(self, function, otherwise):
        from gi.repository import GLib
        try:
            value = function(self._accessible)
        except GLib.Error:
            return otherwise
        return otherwise if value is None else value

    @property
    def name(self):
        return self._read(lambda it: it.get_name(), "")

    @property
    def role(self):
        return self._read(lambda it: it.get_role_name(), "")

    @property
    def states(self):
        return self._read(lambda it: {state.value_nick for state in it.get_state_set().get_states()}, set())

    @property
    def rectangle(self):
        from gi.repository import Atspi
        rectangle = self._read(lambda it: it.get_extents(Atspi.CoordType.SCREEN), None)
        return (rectangle.x, rectangle.y, rectangle.width, rectangle.height) if rectangle else (0, 0, 0, 0)

    @property
    def text(self):
        """Returns the text of an editor or field, with line feeds between its lines."""
        from gi.repository import Atspi
        text = self._read(lambda it: Atspi.Text.get_text(it, 0, Atspi.Text.get_character_count(it)), "")
        return text.replace("\u2029", "\n").replace("\u2028", "\n")

    @property
    def children(self):
        count = self._read(lambda it: it.get_child_count(), 0)
        found = (self._read(lambda it, index=index: it.get_child_at_index(index), None) for index in range(count))
        return [Element(child) for child in found if child is not None]

    def walk(self):
        """Yields this element and all its descendants, from the top down."""
        yield self
        for child in self.children:
            yield from child.walk()

    @property
    def visible(self):
        """Returns whether the element is shown. It may be scrolled out of view."""
        return "visible" in self.states

    @property
    def on_screen(self):
        _, _, width, height = self.rectangle
        return width > 0 and height > 0 and {"showing", "visible"} <= self.states

    @property
    def enabled(self):
        return "enabled" in self.states

    @property
    def checked(self):
        return "checked" in self.states

    def tree(self, depth=0):
        line = "{}{} {!r} {} {}".format("  " * depth, self.role, self.name, self.rectangle,
                                        " ".join(sorted(self.states - {"sensitive", "focusable", "visible"})))
        return "\n".join([line] + [child.tree(depth + 1) for child in self.children])


class Screen:
    """The windows of a running program."""

    def __init__(self, desktop, process):
        self._desktop = desktop
        self._process = process
        # The accessibility library reads these variables when it is loaded.
        os.environ.update(desktop.environment)
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi
        self._atspi = Atspi

    @property
    def application(self):
        """Returns the program's tree, or None if it has none yet. Raises an exception if the program has ended."""
        if self._process.poll() is not None:
            raise RuntimeError(f"the program has ended with code {self._process.returncode}")
        registry = Element(self._atspi.get_desktop(0))
        for candidate in registry.children:
            if candidate._read(lambda it: it.get_process_id(), 0) == self._process.pid:
                # Disables caching, because no event loop runs here that would receive changes.
                candidate._accessible.set_cache_mask(self._atspi.Cache.NONE)
                return candidate
        return None

    def tree(self):
        application = self.application
        return application.tree() if application else "(no accessibility tree)"

    def seen(self, role=None, name=None, within=None):
        """Yields all such elements on the screen, from the top down."""
        root = within or self.application
        return (it for it in (root.walk() if root else ())
                if name in (None, it.name) and role in (None, it.role) and it.on_screen)

    def find(self, role=None, name=None, within=None):
        """Returns the first such element on the screen, or None."""
        return next(self.seen(role, name, within), None)

    def wait_for(self, role=None, name=None, within=None, seconds=30):
        return wait_until(lambda: self.find(role, name, within), f"{role or 'element'} {name!r}", seconds)

    def wait_until_gone(self, role=None, name=None, seconds=30):
        wait_until(lambda: not self.find(role, name), f"{role or 'element'} {name!r} to go", seconds)

    def click(self, element):
        """Waits until the element is enabled and does not move, and clicks its centre."""
        places = [None]

        def rested():
            places.append(element.rectangle)
            return element.on_screen and element.enabled and places[-1] == places[-2]
        wait_until(rested, f"{element.role} {element.name!r} to be enabled and at rest")
        x, y, width, height = places[-1]
        self._xdotool("mousemove", str(x + width // 2), str(y + height // 2), "click", "1")

    def click_on(self, name, role=None, within=None, seconds=30):
        """Waits until the element exists and can be clicked, and clicks it."""
        def ready():
            element = self.find(role, name, within)
            return element if element and element.enabled else None
        self.click(wait_until(ready, f"{role or 'element'} {name!r} to be enabled", seconds))

    def press(self, *keys):
        self._xdotool("key", "--clearmodifiers", *keys)

    def _paste(self, text):
        # xclip keeps running to serve the clipboard until another program owns it, and may return before it serves.
        def xclip(way, given=None):
            return subprocess.run(["xclip", "-selection", "clipboard", way], input=given, timeout=30,
                                  env=self._desktop.environment, stderr=subprocess.DEVNULL,
                                  stdout=subprocess.PIPE if way == "-out" else subprocess.DEVNULL).stdout
        xclip("-in", text.encode())
        wait_until(lambda: xclip("-out") == text.encode(), "the clipboard to hold what is pasted")
        self.press("ctrl+v")

    def replace_text(self, field, text):
        """Replaces the text as a user does: clicks the field, selects all, pastes."""
        self.click(field)
        wait_until(lambda: "focused" in field.states, f"{field.name!r} to take the keys")
        self.press("ctrl+a")
        self._paste(text)
        wait_until(lambda: field.text == text, f"{field.name!r} to hold what was pasted")

    def scroll_into(self, area, find, seconds=60):
        """Scrolls the list until the result of find() is completely visible. Returns it. A list creates only rows near the
        visible ones, so this searches downwards first, then upwards."""
        x, y, width, height = area.rectangle
        self._xdotool("mousemove", str(x + width // 2), str(y + height // 2))
        limit = time.monotonic() + seconds
        down, before = True, None
        while time.monotonic() < limit:
            rows = self._rows_at_rest(area)
            element = find()
            place = element.rectangle if element else None
            if place and place[1] >= y and place[1] + place[3] <= y + height:
                return element
            if place:
                down = place[1] >= y
            elif rows == before:
                down = not down  # reached the end of the list
            before = rows
            self._xdotool("click", "--repeat", "1" if place else "5", "--delay", "5", "5" if down else "4")
        raise TimeoutError(f"waited {seconds} s for an element to come into view")

    def _rows_at_rest(self, area):
        """Waits until the list stops scrolling. Returns the positions of its rows."""
        looks = [None]

        def rested():
            looks.append([it.rectangle for it in area.children])
            return looks[-1] == looks[-2]
        wait_until(rested, "the list to come to rest")
        return looks[-1]

    def _xdotool(self, *arguments):
        self._desktop.run("xdotool", *arguments)
