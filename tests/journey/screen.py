"""The program as a person sees it: elements found by role and name in its accessibility tree, clicked and typed into
through the display. Nothing here calls into the program: every click and key is a real one."""

import os
import subprocess
import time

from waiting import wait_until


class Element:
    """One element of the tree. One that has vanished reads as an element without name, role, state or children."""

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
        """What stands in an editor or a field, with line feeds between its lines."""
        from gi.repository import Atspi
        text = self._read(lambda it: Atspi.Text.get_text(it, 0, Atspi.Text.get_character_count(it)), "")
        return text.replace("\u2029", "\n").replace("\u2028", "\n")

    @property
    def children(self):
        count = self._read(lambda it: it.get_child_count(), 0)
        found = (self._read(lambda it, index=index: it.get_child_at_index(index), None) for index in range(count))
        return [Element(child) for child in found if child is not None]

    def walk(self):
        """This element and all below it, from the top down."""
        yield self
        for child in self.children:
            yield from child.walk()

    @property
    def visible(self):
        """Shown, but perhaps scrolled out of view."""
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

    def matches(self, role, name):
        return (name is None or self.name == name) and (role is None or self.role == role)

    def tree(self, depth=0):
        line = "{}{} {!r} {} {}".format("  " * depth, self.role, self.name, self.rectangle,
                                        " ".join(sorted(self.states - {"sensitive", "focusable", "visible"})))
        return "\n".join([line] + [child.tree(depth + 1) for child in self.children])


class Screen:
    """The windows of one running program."""

    def __init__(self, desktop, process):
        self._desktop = desktop
        self._process = process
        # The accessibility library reads these when it is loaded.
        os.environ.update(desktop.environment)
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi
        self._atspi = Atspi

    @property
    def application(self):
        """The program's tree; None before it has one. Raises when the program has ended."""
        if self._process.poll() is not None:
            raise RuntimeError(f"the program has ended with code {self._process.returncode}")
        registry = Element(self._atspi.get_desktop(0))
        for candidate in registry.children:
            if candidate._read(lambda it: it.get_process_id(), 0) == self._process.pid:
                # Nothing may be remembered: we run no event loop that would be told of changes.
                candidate._accessible.set_cache_mask(self._atspi.Cache.NONE)
                return candidate
        return None

    def tree(self):
        application = self.application
        return application.tree() if application else "(no accessibility tree)"

    def seen(self, role=None, name=None, within=None):
        """Every such element on screen, from the top down."""
        root = within or self.application
        return (it for it in root.walk() if it.matches(role, name) and it.on_screen) if root else iter(())

    def find(self, role=None, name=None, within=None):
        """The first such element on screen, or None."""
        return next(self.seen(role, name, within), None)

    def wait_for(self, role=None, name=None, within=None, seconds=30):
        return wait_until(lambda: self.find(role, name, within), f"{role or 'element'} {name!r}", seconds)

    def wait_until_gone(self, role=None, name=None, seconds=30):
        wait_until(lambda: not self.find(role, name), f"{role or 'element'} {name!r} to go", seconds)

    def click(self, element, button=1):
        """Clicks in its middle, once it is enabled and has come to rest."""
        x, y, width, height = self._resting_place(element)
        self.click_at(x + width // 2, y + height // 2, button)

    def click_at(self, x, y, button=1):
        self._xdotool("mousemove", str(x), str(y), "click", str(button))

    def click_on(self, name, role=None, within=None, seconds=30):
        """Finds it, waits until it can be clicked, clicks it."""
        def ready():
            element = self.find(role, name, within)
            return element if element and element.enabled else None
        self.click(wait_until(ready, f"{role or 'element'} {name!r} to be enabled", seconds))

    def press(self, *keys):
        self._xdotool("key", "--clearmodifiers", *keys)

    def paste(self, text):
        """Through the clipboard: any text."""
        # xclip stays behind to serve the clipboard until another program takes it over; it may return before it does so.
        def xclip(way, given=None):
            return subprocess.run(["xclip", "-selection", "clipboard", way], input=given, timeout=30,
                                  env=self._desktop.environment, stderr=subprocess.DEVNULL,
                                  stdout=subprocess.PIPE if way == "-out" else subprocess.DEVNULL).stdout
        xclip("-in", text.encode())
        wait_until(lambda: xclip("-out") == text.encode(), "the clipboard to hold what is pasted")
        self.press("ctrl+v")

    def replace_text(self, field, text):
        """What a person does: into the field, everything marked, the new text pasted over it."""
        self.click(field)
        wait_until(lambda: "focused" in field.states, f"{field.name!r} to take the keys")
        self.press("ctrl+a")
        self.paste(text)
        wait_until(lambda: field.text == text, f"{field.name!r} to hold what was pasted")

    def scroll_into(self, area, find, seconds=60):
        """Turns the wheel over the list until what find() gives lies wholly inside it; returns that. A list makes only
        the rows near what it shows, so what find() does not give is looked for downwards, then upwards."""
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
                down = not down  # the end of the list
            before = rows
            self._xdotool("click", "--repeat", "1" if place else "5", "--delay", "5", "5" if down else "4")
        raise TimeoutError(f"waited {seconds} s for an element to come into view")

    def _rows_at_rest(self, area):
        """The places of the rows, once they stand still: a list rolls on after the wheel."""
        looks = [None]

        def rested():
            looks.append([it.rectangle for it in area.children])
            return looks[-1] == looks[-2]
        wait_until(rested, "the list to come to rest")
        return looks[-1]

    def _resting_place(self, element):
        places = [None]

        def rested():
            places.append(element.rectangle)
            return element.on_screen and element.enabled and places[-1] == places[-2]
        wait_until(rested, f"{element.role} {element.name!r} to be enabled and at rest")
        return places[-1]

    def _xdotool(self, *arguments):
        self._desktop.run("xdotool", *arguments)
