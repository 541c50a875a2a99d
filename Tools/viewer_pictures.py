#!/usr/bin/env python3
"""Makes pictures of the viewer's window with its panels, on an X server without a screen.

    viewer_pictures.py PROGRAM MODELS_FOLDER OUT_FOLDER
"""
import os
import struct
import sys
import time
import zlib

from viewer_driver import Screen, Viewer

SIZE = (1000, 640)
LOOK_AT_THE_BUILDING = """tolvanite-events 1
camera perspective 60
from -3.4 1.65 -3.3
at 0 1.65 -3.3
up 0 1 0
motion-factor 1
rotation-angle 0.05
click-center off
no-intersect off
"""


def write_png(path, rows, width):
    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data +
                struct.pack(">I", zlib.crc32(kind + data)))

    head = struct.pack(">IIBBBBB", width, len(rows), 8, 2, 0, 0, 0)
    packed = zlib.compress(b"".join(b"\0" + row for row in rows), 9)
    with open(path, "wb") as out:
        out.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", packed) +
                  chunk(b"IEND", b""))


def save(viewer, out):
    time.sleep(1.5)  # until ways of the camera have ended
    write_png(out, viewer.screen.picture(*SIZE), SIZE[0])


def show_selection(screen, program, models, out):
    """Parts that a band has touched."""
    with Viewer(screen, program, [os.path.join(models, "pavilion.obj")], SIZE) as viewer:
        viewer.wait_for_title("pavilion.obj")
        viewer.key("shift+b")
        viewer.drag((560, 420), (540, 400), (520, 380))
        viewer.move(100, 600)
        save(viewer, os.path.join(out, "viewer-selection.png"))


def show_edges(screen, program, models, out):
    """Edges over shading, without perspective and in light colours."""
    with Viewer(screen, program, [os.path.join(models, "plant.osb")], SIZE,
                settings={"dark": False, "up": "y"}) as viewer:
        viewer.wait_for_title("plant.osb")
        viewer.key("e")
        viewer.key("p")
        viewer.click(500, 330)
        viewer.move(100, 600)
        save(viewer, os.path.join(out, "viewer-edges.png"))


def show_walk(screen, program, models, out):
    """A person in a building, with the walk console."""
    events = os.path.join(out, "viewer-walk.events")
    with open(events, "w", encoding="utf-8") as text:
        text.write(LOOK_AT_THE_BUILDING)
    with Viewer(screen, program, [os.path.join(models, "building.obj"), "--play", events],
                SIZE) as viewer:
        viewer.wait_for_title("building.obj")
        time.sleep(0.5)
        viewer.key("shift+s", "shift+t", "shift+w", "F12")
        viewer.key("ctrl+m", "ctrl+w")
        viewer.act("keydown", "w")
        time.sleep(1.2)
        viewer.act("keyup", "w")
        viewer.key("ctrl+m", "ctrl+w")
        viewer.move(980, 600)
        save(viewer, os.path.join(out, "viewer-walk.png"))
    os.unlink(events)


def main():
    program, models, out = (os.path.abspath(word) for word in sys.argv[1:4])
    for show in (show_selection, show_edges, show_walk):
        with Screen(*SIZE) as screen:
            show(screen, program, models, out)


if __name__ == "__main__":
    main()
