#!/usr/bin/env python3
"""Makes the recordings of input under Models/, one per navigation engine and a second one for the
trackball on an orthographic camera.

    make_recordings.py [FOLDER]

Every run makes the same bytes. The recordings are for a view of the pavilion with 640 by 480 pixels
and use everything that each engine can do. Docs/recordings.md describes the format.
"""
import pathlib
import sys

LEFT, MIDDLE, RIGHT, NEARER, FARTHER = range(5)
KEY_DOWN, KEY_UP, VIRTUAL = 0x08, 0x10, 0x20
ARROW_UP, ARROW_DOWN, RETURN, SPACE = 38, 40, 13, 32
ESCAPE, SHIFT, CTRL, F3 = 27, 16, 17, 114
A, C, D, E, Q, S, W = (ord(letter) for letter in "ACDEQSW")


class Recording:
    """Lines of events. The clock ticks 60 times a second; a pause is a quarter of a second."""

    def __init__(self, title, camera, pose, motion, angle, center="off", no_intersect="off",
                 version=1):
        self.lines = [f"# {title}; made by Tools/make_recordings.py, for 640x480",
                      f"tolvanite-events {version}", f"camera {camera}",
                      *(f"{name} {point}" for name, point in zip(("from", "at", "up"), pose)),
                      f"motion-factor {motion}", f"rotation-angle {angle}",
                      f"click-center {center}", f"no-intersect {no_intersect}"]
        self.ticks = 0
        self.place = (320, 240)

    def event(self, text, ticks=1):
        self.lines.append(f"{self.ticks / 60:.3f} {text}")
        self.ticks += ticks

    def at(self, x, y):
        self.place = (x, y)
        return self

    def here(self):
        return "{} {}".format(*self.place)

    def pause(self):
        self.ticks += 15

    def click(self, button):
        self.event(f"press {button} {self.here()}")
        self.event(f"release {button} {self.here()}", 6)

    def wheel(self, button, steps=1):
        for _ in range(steps):
            self.event(f"press {button} {self.here()}", 6)

    def key(self, code, modifiers=0):
        self.event(f"key {code} {modifiers} {self.here()}")

    def virtual_key(self, code):
        self.key(code, KEY_DOWN | VIRTUAL)
        self.key(code, KEY_UP | VIRTUAL)

    def path(self, word, x, y, steps):
        """Moves on a straight line to (x, y)."""
        x0, y0 = self.place
        for step in range(1, steps + 1):
            self.at(x0 + round((x - x0) * step / steps), y0 + round((y - y0) * step / steps))
            self.event(f"{word} {self.here()}")

    def drag(self, button, x, y, steps):
        self.event(f"press {button} {self.here()}")
        self.path("move", x, y, steps)
        self.event(f"release {button} {self.here()}")
        self.pause()

    def tick(self, count, button=-1):
        for _ in range(count):
            self.event(f"idle {button} {self.here()}")

    def walk(self, keys, frames):
        """Frames of a recording of the second version with a millisecond clock, `keys` down."""
        for key in keys:
            self.event(f"down {key}", 0)
        for _ in range(frames):
            self.event(f"idle -1 {self.here()}", 0)
            self.event(f"frame {self.ticks * 1000 // 60}")
        for key in keys:
            self.event(f"up {key}", 0)

    def text(self):
        return "\n".join(self.lines) + "\n"


FRONT = ("8 5 14", "0 1 0", "0 1 0")


def orbit(recording):
    """Uses everything that the trackball can do: turn, pan, zoom in three ways, click to centre."""
    recording.at(360, 260).drag(LEFT, 520, 220, 12)
    recording.at(320, 300).drag(MIDDLE, 250, 260, 8)
    recording.at(300, 200).drag(RIGHT, 300, 260, 6)
    recording.wheel(NEARER, 3)
    recording.virtual_key(ARROW_UP)
    recording.key(3)
    recording.at(350, 280).click(LEFT)
    recording.drag(LEFT, 180, 330, 12)
    recording.at(600, 20).drag(LEFT, 500, 60, 4)
    recording.wheel(FARTHER, 2)
    recording.at(120, 90).drag(MIDDLE, 420, 330, 10)
    return recording


def cad():
    return orbit(Recording("An orbit about the pavilion", "perspective 45", FRONT, 0.1, 0.05,
                           center="on"))


def cad_orthographic():
    return orbit(Recording("The same orbit, without perspective", "orthographic 12", FRONT, 0.1,
                           0.05, center="on"))


def fly():
    recording = Recording("A flight through the pavilion's door", "perspective 60",
                          ("1.2 1.7 13", "-0.8 1.7 0", "0 1 0"), 0.15, 0.05)
    recording.at(320, 240).drag(LEFT, 338, 246, 30)
    recording.key(0)
    recording.key(1)
    recording.key(2)
    recording.key(4)
    recording.key(5)
    recording.drag(LEFT, 320, 240, 40)
    recording.wheel(NEARER, 4)
    recording.drag(MIDDLE, 470, 200, 10)
    recording.drag(LEFT, 440, 240, 20)
    recording.drag(RIGHT, 420, 240, 10)
    recording.wheel(FARTHER, 2)
    recording.key(3)
    return recording


def copter():
    recording = Recording("A helicopter about the pavilion", "perspective 60",
                          ("0 2 16", "0 1.5 0", "0 1 0"), 1.2, 0.05)
    # Flight towards the pointer: the left button starts it, any button stops it, the right one flies
    # back.
    recording.at(320, 240).click(LEFT)
    recording.path("hover", 420, 200, 4)
    recording.tick(30)
    recording.click(LEFT)
    recording.click(RIGHT)
    recording.path("hover", 300, 260, 2)
    recording.tick(12)
    recording.wheel(NEARER, 2)
    recording.tick(6)
    recording.click(RIGHT)
    # Flight on a sphere around the visible part of the scene.
    recording.virtual_key(SPACE)
    recording.key(ord("+"))
    recording.click(LEFT)
    recording.path("hover", 380, 230, 3)
    recording.tick(40)
    recording.click(LEFT)
    # Turns on the spot in each mode, then flight sideways, upwards and ahead.
    for _ in range(2):
        recording.virtual_key(SPACE)
        for _ in range(4):
            recording.at(420, 180).click(LEFT)
            recording.tick(10)
            recording.click(LEFT)
            recording.virtual_key(RETURN)
    recording.key(ord("-"))
    recording.at(320, 240).click(RIGHT)
    recording.path("hover", 320, 100, 2)
    recording.tick(10)
    recording.event("blur")
    recording.tick(5)
    recording.click(RIGHT)
    return recording


def walk():
    """From the terrace through the door, past the table and up the stairs to the gallery."""
    recording = Recording("a walk", "perspective 45", ("0 1.5 6.6", "0 1.5 0", "0 1 0"), 1, 0.05,
                          version=2)
    recording.lines.append("clock 1000")
    recording.event("hover 320 240")
    recording.walk([W], 110)  # in, as far as the bench
    recording.walk([D], 125)  # to the side, in front of the stairs
    recording.event("focus off")
    recording.walk([W], 5)  # without the focus nothing moves; the time counts afterwards
    recording.event("focus on")
    recording.walk([W, SHIFT], 25)
    recording.walk([S, CTRL], 20)
    # The pointer looks around: in game mode, where it is put back when it leaves the view, and
    # while a key is down.
    recording.virtual_key(F3)
    recording.path("hover", 400, 250, 6)
    recording.walk([], 4)
    recording.path("hover", 660, 250, 4)
    recording.at(320, 240).walk([], 2)
    recording.virtual_key(ESCAPE)
    recording.walk([Q], 30)
    recording.at(300, 200).walk([E], 20)
    recording.walk([C], 60)
    # Slower by the wheel, faster by a character, then a jump against the wall.
    recording.wheel(NEARER, 3)
    recording.key(ord("+"), KEY_DOWN)
    recording.walk([ARROW_UP], 30)
    recording.virtual_key(SPACE)
    recording.walk([A], 10)
    recording.event("blur")
    recording.walk([], 3)
    return recording


def main():
    default = pathlib.Path(__file__).resolve().parent.parent / "Models"
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else default
    for name, recording in {"cad": cad(), "cad-orthographic": cad_orthographic(), "fly": fly(),
                            "copter": copter(), "walk": walk()}.items():
        content = recording.text().encode()
        (folder / f"{name}.events").write_bytes(content)
        print(f"{len(content):8} {name}.events")


if __name__ == "__main__":
    main()
