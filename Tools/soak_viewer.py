#!/usr/bin/env python3
"""Uses the viewer at random and watches over it.

    soak_viewer.py PROGRAM MODEL [--seconds N] [--seed N]

Fails if the viewer ends, if its log tells of an error of OpenGL, if it does not end when it is asked
to, or if its memory still grows by more than the bound when the first quarter of the time, in which
caches fill, is over. Nothing outside of a folder of its own is written: the menu of files and its
keys are left out.
"""
import argparse
import os
import random
import shutil
import sys
import tempfile
import time

from viewer_driver import Failure, Screen, Viewer

SIZE = (1000, 700)
MOST_BYTES_PER_MINUTE = 2 << 20
# Every key that a command or an engine may have, without those that end or that name files.
KEYS = (list("abcdefghijklmnopqrstuvwxyz0123456789") +
        ["F1", "F2", "F3", "F4", "F5", "F6", "F7", "F8", "F9", "F10", "F11", "F12", "Escape",
         "space", "Home", "Left", "Right", "Up", "Down", "Prior", "Next", "Delete", "plus", "minus"])
MODIFIERS = ["", "", "", "shift+", "alt+", "ctrl+"]
FORBIDDEN = {"ctrl+q", "ctrl+s", "ctrl+o"}
MENU_OF_FILES = (60, 24)  # its right bottom corner, in pixels


class Hand:
    """Somebody who presses anything."""

    def __init__(self, viewer, chance):
        self.viewer = viewer
        self.chance = chance

    def place(self):
        while True:
            x, y = self.chance.randrange(SIZE[0]), self.chance.randrange(SIZE[1])
            if x > MENU_OF_FILES[0] or y > MENU_OF_FILES[1]:
                return x, y

    def drag(self):
        places = [self.place() for _ in range(self.chance.randrange(2, 8))]
        self.viewer.drag(*places, button=self.chance.choice([1, 1, 1, 2, 3]))

    def key(self):
        key = self.chance.choice(MODIFIERS) + self.chance.choice(KEYS)
        if key not in FORBIDDEN:
            self.viewer.key(key)

    def hold(self):
        key = self.chance.choice(["w", "a", "s", "d", "q", "e", "x", "y"])
        self.viewer.act("keydown", key)
        self.viewer.act("sleep", 0.1)
        self.viewer.act("keyup", key)

    def wheel(self):
        self.viewer.click(*self.place(), button=self.chance.choice([4, 5]))

    def engine(self):
        self.viewer.key(self.chance.choice(["F9", "F10", "F11", "F12"]))

    def size(self):
        width, height = self.chance.randrange(1, SIZE[0]), self.chance.randrange(1, SIZE[1])
        self.viewer.act("windowsize", self.viewer.window, width, height)
        self.viewer.act("windowsize", self.viewer.window, *SIZE)

    def focus(self):
        self.viewer.act("mousedown", 1)
        self.viewer.act("windowfocus", 1)
        self.viewer.act("mouseup", 1)
        self.viewer.act("windowfocus", self.viewer.window)

    def again(self):
        self.viewer.key("F5", "Escape")

    def do_something(self):
        self.chance.choices(
            [lambda: self.viewer.click(*self.place()), lambda: self.viewer.move(*self.place()),
             self.drag, self.key, self.hold, self.wheel, self.engine, self.size, self.focus,
             self.again],
            [20, 20, 15, 15, 5, 10, 2, 1, 1, 1])[0]()


def growth(samples):
    """Bytes per minute by the line of least squares through (seconds, bytes)."""
    count = len(samples)
    mean_time = sum(time for time, _ in samples) / count
    mean_size = sum(size for _, size in samples) / count
    spread = sum((time - mean_time) ** 2 for time, _ in samples)
    if spread == 0:
        return 0.0
    return 60 * sum((time - mean_time) * (size - mean_size) for time, size in samples) / spread


def check(viewer):
    status = viewer.process.poll()
    if status is not None:
        raise Failure(f"the viewer ended with {status}: {viewer.log_text()[-2000:]}")
    log = viewer.log_text()
    if "OpenGL:" in log:
        raise Failure("an error of OpenGL: " + log[log.index("OpenGL:"):][:200])


def soak(viewer, chance, seconds):
    hand = Hand(viewer, chance)
    begin = time.monotonic()
    samples = []
    events = 0
    while time.monotonic() - begin < seconds:
        hand.do_something()
        events += 1
        if events % 50 == 0:
            check(viewer)
            samples.append((time.monotonic() - begin, viewer.resident_bytes()))
    settled = [sample for sample in samples if sample[0] > seconds / 4]
    grown = growth(settled) if len(settled) > 1 else 0.0
    print(f"{events} events, {samples[-1][1] / 2**20:.1f} MiB at the end, growth "
          f"{grown:.0f} bytes per minute (bound {MOST_BYTES_PER_MINUTE})")
    if grown > MOST_BYTES_PER_MINUTE:
        raise Failure("the memory keeps growing")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("program")
    parser.add_argument("model")
    parser.add_argument("--seconds", type=float, default=600)
    parser.add_argument("--seed", type=int, default=int(time.time()))
    options = parser.parse_args()
    print(f"seed {options.seed}", flush=True)
    program = os.path.abspath(options.program)
    with tempfile.TemporaryDirectory() as folder:
        model = shutil.copy(options.model, folder)
        with Screen() as screen, Viewer(screen, program, [model, "--verbose"], SIZE,
                                        folder=folder) as viewer:
            try:
                viewer.wait_for_title(os.path.basename(model))
                soak(viewer, random.Random(options.seed), options.seconds)
                check(viewer)
                viewer.act("keyup", "shift", "keyup", "ctrl", "keyup", "alt")
                viewer.key("Escape", "Escape", "F9")
                status = viewer.quit()
                if status != 0:
                    raise Failure(f"exit status {status}")
            except Failure as failure:
                print(f"soak: {failure}", file=sys.stderr)
                sys.exit(1)


if __name__ == "__main__":
    main()
