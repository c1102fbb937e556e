"""One journey: the real program on its own desktop with its own home. On failure, prints the accessibility tree and the
console and takes a picture of the screen."""

import os
import pathlib
import shutil
import signal
import subprocess

from desktop import VirtualDesktop
from orvalen import Orvalen
from screen import Screen
from waiting import wait_until


class Journey:
    """Use as a context manager. `home` contains all files of the program. It is empty at first."""

    def __init__(self, program, folder):
        self.program = pathlib.Path(program).resolve(strict=True)
        self.folder = pathlib.Path(folder).resolve()
        self.home = self.folder / "home"
        self.data = self.home / "data"
        self.screen = None
        self.environment = {}  # variables of the program, in addition to those of the desktop
        self._desktop = VirtualDesktop(self.folder / "logs")
        self._process = None
        self._starts = 0

    def __enter__(self):
        shutil.rmtree(self.folder, ignore_errors=True)
        self.home.mkdir(parents=True)
        self._desktop.__enter__()
        return self

    def __exit__(self, kind, error, traceback):
        try:
            if error is not None:
                self._tell_where_it_stood()
        finally:
            if self._process and self._process.poll() is None:
                self._process.kill()
                self._process.wait()
            self._desktop.__exit__()

    def start(self):
        """Starts the program, waits for its window, and returns its user."""
        self._starts += 1
        self._desktop.environment.update(
            HOME=str(self.home), XDG_DATA_HOME=str(self.data), XDG_CONFIG_HOME=str(self.home / "config"),
            XDG_CACHE_HOME=str(self.home / "cache"))
        with open(self._console_file(), "wb") as console, open(self.folder / "logs/program.log", "ab") as log:
            self._process = subprocess.Popen([self.program], env=self._desktop.environment | self.environment,
                                             cwd=self.home,
                                             stdin=subprocess.DEVNULL, stdout=console, stderr=log)
        self.screen = Screen(self._desktop, self._process)
        wait_until(lambda: self.screen.application, "the program's accessibility tree", 60)
        return Orvalen(self.screen)

    def quit(self):
        """Closes the window with a key. Returns the exit code."""
        self.screen.press("alt+F4")
        return self._process.wait(30)

    def kill(self):
        self._process.send_signal(signal.SIGKILL)
        self._process.wait()

    @property
    def has_ended(self):
        return self._process.returncode is not None

    @property
    def pid(self):
        return self._process.pid

    @property
    def exit_code(self):
        """Returns the exit code, or the negated number of the signal that ended the program."""
        return self._process.wait(10)

    @property
    def console(self):
        """Returns the lines of standard output since the last start."""
        return self._console_file().read_text(encoding="utf-8").splitlines()

    def screenshot(self, name):
        """Takes a picture of the screen. Returns its path."""
        path = self.folder / f"{name}.png"
        self._desktop.screenshot(path)
        return path

    def _console_file(self):
        return self.folder / "logs" / f"console-{self._starts}.txt"

    def _tell_where_it_stood(self):
        print("--- the journey failed; what the program showed:")
        try:
            print(self.screen.tree() if self.screen else "(nothing: it was not started)")
            print("--- screen:", self.screenshot("failure"))
        except Exception as second:  # the first failure is reported
            print("(could not look:", repr(second) + ")")
        print("--- logs:")
        for log in sorted((self.folder / "logs").iterdir()):
            print(f"[{log.name}]")
            print(log.read_text(encoding="utf-8", errors="replace")[-4000:])
        print("--- end", flush=True)


def fresh_copy(source, destination):
    """Copies a folder of samples, so that a journey cannot damage the originals."""
    shutil.copytree(source, destination)
    return pathlib.Path(os.path.realpath(destination))
