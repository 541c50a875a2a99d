"""Drives the viewer as a person does: on an X server without a screen, by the pointer and the keys.

    with Screen() as screen, Viewer(screen, program, ["Models/pavilion.obj"]) as viewer:
        viewer.wait_for_title("pavilion.obj")
        viewer.click(400, 300)
        print(viewer.wait_for_lines(1))
"""

import json
import os
import shutil
import signal
import struct
import subprocess
import tempfile
import time


class Failure(Exception):
    """Something did not happen in time, or went wrong."""


def wait_until(what, condition, seconds=60):
    """The first true result of `condition`."""
    end = time.monotonic() + seconds
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise Failure(f"in vain after {seconds} s: {what}")
        time.sleep(0.02)


class Screen:
    """An X server of its own, without a window manager."""

    def __init__(self, width=1280, height=800, words=()):
        self.size = f"{width}x{height}x24"
        self.words = words

    def __enter__(self):
        read, write = os.pipe()
        self.folder = tempfile.mkdtemp(prefix="tolvanite-screen-")
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", self.size, "-nolisten", "tcp",
             "-noreset", "-fbdir", self.folder, *self.words],
            pass_fds=[write], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as answer:
            number = answer.readline().strip()
        if not number:
            raise Failure("the X server did not start")
        self.display = ":" + number
        return self

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def picture(self, width, height):
        """Rows of red, green and blue of the left top corner of the screen."""
        # The head of the dump: 25 numbers, then a name, then the table of colours.
        with open(os.path.join(self.folder, "Xvfb_screen0"), "rb") as dump:
            data = dump.read()
        head = struct.unpack(">25I", data[:100])
        begin, stride = head[0] + 12 * head[19], head[12]
        rows = []
        for y in range(height):
            row = data[begin + y * stride:begin + y * stride + 4 * width]
            colors = bytearray(3 * width)
            colors[0::3], colors[1::3], colors[2::3] = row[2::4], row[1::4], row[0::4]
            rows.append(bytes(colors))
        return rows

    def act(self, *words):
        """One call of xdotool; its output."""
        done = subprocess.run(["xdotool", *map(str, words)], stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, text=True, check=False,
                              env={**os.environ, "DISPLAY": self.display})
        return done.stdout if done.returncode == 0 else ""


class Viewer:
    """A viewer with settings of its own, in the left top corner of the screen."""

    def __init__(self, screen, program, words=(), size=(1280, 720), settings=None, folder=None):
        self.screen = screen
        self.folder = folder or tempfile.mkdtemp(prefix="tolvanite-viewer-")
        self.owns_folder = folder is None
        self.report = os.path.join(self.folder, "report.jsonl")
        self.log = os.path.join(self.folder, "log.txt")
        self.words = [program, *words, "--size", f"{size[0]}x{size[1]}", "--report", self.report]
        self.environment = {
            **os.environ, "DISPLAY": screen.display, "LC_ALL": "C.UTF-8",
            "XDG_CONFIG_HOME": os.path.join(self.folder, "config"),
            "XDG_STATE_HOME": os.path.join(self.folder, "state")}
        self.environment.pop("WAYLAND_DISPLAY", None)
        if settings is not None:
            folder = os.path.join(self.folder, "config", "tolvanite")
            os.makedirs(folder, exist_ok=True)
            with open(os.path.join(folder, "viewer.json"), "w", encoding="utf-8") as out:
                json.dump(settings, out)

    def __enter__(self):
        with open(self.log, "w", encoding="utf-8") as log:
            self.process = subprocess.Popen(self.words, env=self.environment, stdout=log,
                                            stderr=log, cwd=self.folder)
        self.window = wait_until("a window", self._find_window).split()[-1]
        self.screen.act("windowfocus", "--sync", self.window)
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        if self.owns_folder:
            shutil.rmtree(self.folder, ignore_errors=True)

    def _find_window(self):
        if self.process.poll() is not None:
            raise Failure(f"the viewer ended with {self.process.returncode}: {self.log_text()}")
        return self.screen.act("search", "--onlyvisible", "--name", "Tolvanite")

    # --- looking ---

    def log_text(self):
        with open(self.log, encoding="utf-8", errors="replace") as log:
            return log.read()

    def title(self):
        return self.screen.act("getwindowname", self.window).strip()

    def wait_for_title(self, part):
        return wait_until(f"the title {part}", lambda: part in self.title())

    def lines(self):
        """The whole lines of the report."""
        if not os.path.exists(self.report):
            return []
        with open(self.report, encoding="utf-8") as report:
            text = report.read()
        return [json.loads(line) for line in text[:text.rfind("\n") + 1].splitlines()]

    def wait_for_lines(self, count):
        return wait_until(f"{count} lines of the report",
                          lambda: len(self.lines()) >= count and self.lines())

    def cpu_seconds(self):
        with open(f"/proc/{self.process.pid}/stat", encoding="utf-8") as stat:
            fields = stat.read().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def resident_bytes(self):
        with open(f"/proc/{self.process.pid}/statm", encoding="utf-8") as statm:
            return int(statm.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")

    # --- acting; the viewer gets time for a frame, as a hand gives it ---

    def act(self, *words):
        self.screen.act(*words)
        time.sleep(0.03)

    def move(self, x, y):
        self.act("mousemove", x, y)

    def click(self, x, y, button=1, keys=()):
        self.move(x, y)
        for key in keys:
            self.act("keydown", key)
        self.act("click", button)
        for key in keys:
            self.act("keyup", key)

    def drag(self, *places, button=1):
        """Presses at the first of the places, goes to the others, and lets go at the last."""
        self.move(*places[0])
        self.act("mousedown", button)
        for place in places[1:]:
            self.move(*place)
        self.act("mouseup", button)

    def key(self, *keys):
        for key in keys:
            self.act("key", key)

    def type(self, text):
        self.act("type", "--delay", "20", text)

    # --- ending ---

    def wait_for_end(self, seconds=60):
        """The exit status."""
        try:
            return self.process.wait(seconds)
        except subprocess.TimeoutExpired as error:
            raise Failure("the viewer does not end") from error

    def quit(self):
        """Without saving."""
        self.key("ctrl+q")
        end = time.monotonic() + 60
        while self.process.poll() is None and time.monotonic() < end:
            time.sleep(0.5)
            if self.process.poll() is None:
                self.key("Delete")  # discards changes, if it is asked
        return self.wait_for_end()

    def interrupt(self):
        self.process.send_signal(signal.SIGTERM)
        return self.wait_for_end()
