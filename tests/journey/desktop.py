"""A private desktop: a virtual display, a window manager, and a session bus with the accessibility service.

When the desktop closes, it ends all processes that it started, by their ids. It does not touch the user's session.
"""

import os
import pathlib
import select
import shutil
import subprocess
import tempfile
import time

SIZE = (1400, 1200)

# Variables that would connect the program to the session that started the test.
FOREIGN = ("DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS", "SESSION_MANAGER",
           "XAUTHORITY", "DESKTOP_SESSION", "GTK_MODULES")
FOREIGN_PREFIXES = ("XDG_", "QT_", "QML")


class VirtualDesktop:
    """Use as a context manager. `environment` has the variables that a program needs to appear on this desktop."""

    def __init__(self, log_folder):
        self.log_folder = pathlib.Path(log_folder)
        self.environment = {}
        self._processes = []
        self._runtime = None

    def __enter__(self):
        self.log_folder.mkdir(parents=True, exist_ok=True)
        # Contains sockets, whose paths must be short; a path in the build folder is too long.
        self._runtime = tempfile.mkdtemp(prefix="orvalen-journey-")
        self.environment = {name: value for name, value in os.environ.items()
                            if name not in FOREIGN and not name.startswith(FOREIGN_PREFIXES)}
        self.environment.update(LANG="C.UTF-8", LC_ALL="C.UTF-8", XDG_RUNTIME_DIR=self._runtime,
                                QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", NO_AT_BRIDGE="0")
        try:
            self._start_display()
            self._start_bus()
            self._start("openbox", "openbox", "--sm-disable")
            self._wait_for_window_manager()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self._processes):
            process.terminate()
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        self._processes.clear()
        shutil.rmtree(self._runtime, ignore_errors=True)

    def screenshot(self, path):
        """Takes a picture of the whole screen when two pictures in a row are equal. Tries again if something blinks."""
        before = None
        for _ in range(12):
            look = self.run("import", "-silent", "-window", "root", "-depth", "8", "rgb:-", capture_output=True).stdout
            if look == before:
                break
            before = look
            time.sleep(0.1)
        self.run("convert", "-size", "{}x{}".format(*SIZE), "-depth", "8", "rgb:-", str(path), input=look)

    def run(self, *command, **options):
        """Runs a command on this desktop and waits for it. Raises an exception if it fails."""
        return subprocess.run(command, env=self.environment, check=True, timeout=30, **options)

    def _start(self, name, *command, **options):
        with open(self.log_folder / f"{name}.log", "wb") as log:
            options.setdefault("stdout", log)
            process = subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL, stderr=log,
                                       cwd=self._runtime, **options)
        self._processes.append(process)
        return process

    def _start_display(self):
        readable, writable = os.pipe()
        self._start("display", "Xvfb", "-displayfd", str(writable), "-screen", "0", "{}x{}x24".format(*SIZE),
                    "-dpi", "96", "-nolisten", "tcp", "-noreset", pass_fds=[writable])
        os.close(writable)
        with os.fdopen(readable, "rb", buffering=0) as pipe:
            number = _line_of(pipe, "the virtual display")
        self.environment["DISPLAY"] = ":" + number

    def _start_bus(self):
        bus = self._start("bus", "dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1",
                          stdout=subprocess.PIPE, bufsize=0)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = _line_of(bus.stdout, "the session bus")

    def _wait_for_window_manager(self):
        # xdotool waits for windows only. The window manager is ready when it reports the desktops.
        from waiting import wait_until
        wait_until(lambda: subprocess.run(["xdotool", "get_num_desktops"], env=self.environment, timeout=30,
                                          stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0,
                   "the window manager")


def _line_of(pipe, what, seconds=30):
    text = b""
    while not text.endswith(b"\n"):
        if not select.select([pipe], [], [], seconds)[0]:
            raise TimeoutError(f"{what} did not start within {seconds} s")
        byte = pipe.read(1)
        if not byte:
            raise RuntimeError(f"{what} did not start")
        text += byte
    return text.decode().strip()
