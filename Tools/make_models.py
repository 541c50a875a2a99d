#!/usr/bin/env python3
"""Makes the models under Models/: geometry, material library and textures.

    make_models.py [FOLDER]

Every run makes the same bytes. The pavilion has the size of a building for people, in metres with y
upwards. The centre of the floor is the origin. There is a door of 1.2 m in the front wall (+z), a
terrace one step below the floor, and stairs to a gallery, so that one can walk through it.
"""
import math
import pathlib
import struct
import sys
import zlib


# --- geometry -----------------------------------------------------------------------------------

class Obj:
    """Collects faces by material; equal positions, coordinates and normals are written once."""

    def __init__(self):
        self.tables = {"v": {}, "vt": {}, "vn": {}}
        self.runs = []

    def use(self, part, material):
        self.runs.append((part, material, []))

    def index(self, kind, values):
        if values is None:
            return ""
        key = tuple(round(x, 4) + 0.0 for x in values)
        return self.tables[kind].setdefault(key, len(self.tables[kind]) + 1)

    def face(self, corners):
        """Corners are (position, texture coordinate or None, normal), counter-clockwise."""
        self.runs[-1][2].append([(self.index("v", p), self.index("vt", t), self.index("vn", n))
                                 for p, t, n in corners])

    def text(self, title, library, script="Tools/make_models.py"):
        lines = [f"# {title}; made by {script}", f"mtllib {library}"]
        for kind, table in self.tables.items():
            lines += [f"{kind} " + " ".join(f"{x:.4f}".rstrip("0").rstrip(".") for x in values)
                      for values in table]
        for part, material, faces in self.runs:
            lines += [f"g {part}", f"usemtl {material}"]
            lines += ["f " + " ".join("/".join(str(i) for i in corner) for corner in face)
                      for face in faces]
        return "\n".join(lines) + "\n"


def sub(a, b):
    return tuple(x - y for x, y in zip(a, b))


def add(*vectors):
    return tuple(sum(parts) for parts in zip(*vectors))


def scaled(a, s):
    return tuple(x * s for x in a)


def unit(a):
    length = math.sqrt(sum(x * x for x in a))
    return tuple(x / length for x in a)


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def rectangle(obj, corner, u, v, tile=1.0, cells=(1, 1)):
    """A rectangle spanned by u and v. Its front is where u x v points. A texture covers `tile` m."""
    normal = unit(cross(u, v))
    across, up = math.hypot(*u) / tile, math.hypot(*v) / tile

    def at(i, j):
        s, t = i / cells[0], j / cells[1]
        return (add(corner, scaled(u, s), scaled(v, t)), (s * across, t * up), normal)

    for j in range(cells[1]):
        for i in range(cells[0]):
            obj.face([at(i, j), at(i + 1, j), at(i + 1, j + 1), at(i, j + 1)])


def box(obj, low, high, tile=1.0):
    x, y, z = sub(high, low)
    (x0, y0, z0), (x1, y1, z1) = low, high
    rectangle(obj, (x0, y0, z1), (x, 0, 0), (0, y, 0), tile)
    rectangle(obj, (x1, y0, z0), (-x, 0, 0), (0, y, 0), tile)
    rectangle(obj, (x1, y0, z1), (0, 0, -z), (0, y, 0), tile)
    rectangle(obj, (x0, y0, z0), (0, 0, z), (0, y, 0), tile)
    rectangle(obj, (x0, y1, z1), (x, 0, 0), (0, 0, -z), tile)
    rectangle(obj, (x0, y0, z0), (x, 0, 0), (0, 0, z), tile)


def lathe(obj, centre, profile, sides, textured=False):
    """Turns a profile of (radius, height), from the bottom up, about a vertical axis. An end with a
    radius above 0 is closed by one polygon."""
    def slope(k):
        (r0, h0), (r1, h1) = profile[max(k - 1, 0)], profile[min(k + 1, len(profile) - 1)]
        return h1 - h0, r0 - r1

    def corner(k, i):
        angle = 2 * math.pi * (i % sides) / sides
        radius, height = profile[k]
        out, up = slope(k)
        normal = unit((math.cos(angle) * out, up, math.sin(angle) * out))
        point = add(centre, (radius * math.cos(angle), height, radius * math.sin(angle)))
        coordinate = (i / sides, k / (len(profile) - 1)) if textured else None
        return point, coordinate, normal

    for k in range(len(profile) - 1):
        for i in range(sides):
            ring = [corner(k, i), corner(k + 1, i), corner(k + 1, i + 1), corner(k, i + 1)]
            if profile[k][0] == 0:
                del ring[0]
            elif profile[k + 1][0] == 0:
                del ring[2]
            obj.face(ring)
    for k, normal, order in ((0, (0, -1, 0), range(sides)),
                             (len(profile) - 1, (0, 1, 0), range(sides - 1, -1, -1))):
        if profile[k][0] > 0:
            obj.face([(corner(k, i)[0], (0.5, 0.5) if textured else None, normal) for i in order])


# --- the pavilion -------------------------------------------------------------------------------

HALF_X, HALF_Z, HEIGHT, WALL = 5.0, 4.0, 3.4, 0.2


def floors(obj):
    obj.use("floor", "tiles")
    rectangle(obj, (-HALF_X, 0, HALF_Z), (2 * HALF_X, 0, 0), (0, 0, -2 * HALF_Z), cells=(20, 16))
    obj.use("terrace", "stone")
    box(obj, (-8, -0.45, -7), (8, -0.15, 7))
    box(obj, (-HALF_X - WALL, -0.15, -HALF_Z - WALL), (HALF_X + WALL, -0.001, HALF_Z + WALL))


def walls(obj):
    """A closed back wall, a front wall with a door, two side walls with two windows each."""
    obj.use("walls", "plaster")
    x, z = HALF_X, HALF_Z
    box(obj, (-x - WALL, 0, -z - WALL), (x + WALL, HEIGHT, -z))
    box(obj, (-x - WALL, 0, z), (-0.6, HEIGHT, z + WALL))
    box(obj, (0.6, 0, z), (x + WALL, HEIGHT, z + WALL))
    box(obj, (-0.6, 2.2, z), (0.6, HEIGHT, z + WALL))
    for low, high in ((-x - WALL, -x), (x, x + WALL)):
        box(obj, (low, 0, -z), (high, 0.9, z))
        box(obj, (low, 2.3, -z), (high, HEIGHT, z))
        for begin, end in ((-z, -2.8), (-1.0, 1.0), (2.8, z)):
            box(obj, (low, 0.9, begin), (high, 2.3, end))


def windows(obj):
    obj.use("windows", "glass")
    for x in (-HALF_X - WALL / 2, HALF_X + WALL / 2):
        for z in (-2.8, 1.0):
            rectangle(obj, (x, 0.9, z), (0, 0, 1.8), (0, 1.4, 0))
    obj.use("frames", "wood")
    for x in (-HALF_X - WALL / 2, HALF_X + WALL / 2):
        for z in (-2.8, 1.0):
            box(obj, (x - 0.03, 0.9, z + 0.86), (x + 0.03, 2.3, z + 0.94), 0.5)
            box(obj, (x - 0.03, 1.56, z), (x + 0.03, 1.64, z + 1.8), 0.5)


def roof(obj):
    obj.use("roof", "wood")
    box(obj, (-7, HEIGHT, -6), (7, HEIGHT + 0.15, 6), 2.0)
    for x in range(-6, 7, 2):
        box(obj, (x - 0.08, HEIGHT - 0.2, -HALF_Z), (x + 0.08, HEIGHT, HALF_Z), 0.5)


def columns(obj):
    profile = [(0.32, 0), (0.32, 0.15), (0.24, 0.25), (0.26, 1.4), (0.22, 2.9), (0.22, 3.15),
               (0.32, 3.3), (0.32, HEIGHT + 0.15)]
    for number, (x, z) in enumerate((x, z) for z in (-5.4, 5.4) for x in (-6.4, -2.2, 2.2, 6.4)):
        obj.use(f"column{number + 1}", "marble")
        lathe(obj, (x, -0.15, z), profile, 24)


def gallery(obj):
    """A platform along the back wall at 0.9 m, five steps up to it, a rail with a lattice."""
    obj.use("gallery", "wood")
    box(obj, (-HALF_X, 0.8, -HALF_Z), (HALF_X, 0.9, -2.4), 2.0)
    obj.use("stairs", "stone")
    for step in range(5):
        box(obj, (3.4, 0, -2.4 + 0.3 * step), (4.8, 0.9 - 0.18 * step, -2.1 + 0.3 * step))
    obj.use("rail", "wood")
    box(obj, (-HALF_X, 1.75, -2.46), (3.3, 1.83, -2.38), 0.5)
    for x in (-4.9, -2.9, -0.9, 1.1, 3.2):
        box(obj, (x - 0.04, 0.9, -2.46), (x + 0.04, 1.75, -2.38), 0.5)
    obj.use("lattice", "lattice")
    rectangle(obj, (-HALF_X, 0.95, -2.42), (8.2, 0, 0), (0, 0.75, 0), 0.25)


def table(obj):
    obj.use("table", "wood")
    box(obj, (-1.1, 0.72, -0.5), (1.1, 0.78, 0.5), 0.8)
    leg = [(0.03, 0), (0.04, 0.06), (0.025, 0.12), (0.045, 0.4), (0.03, 0.62), (0.05, 0.72)]
    for x in (-0.95, 0.95):
        for z in (-0.38, 0.38):
            lathe(obj, (x, 0, z), leg, 12, textured=True)
    for z in (-1.0, 1.0):
        obj.use("bench" + ("1" if z < 0 else "2"), "fabric")
        box(obj, (-1.0, 0.4, z - 0.2), (1.0, 0.48, z + 0.2), 0.4)
        obj.use("bench" + ("1" if z < 0 else "2") + "legs", "iron")
        for x in (-0.85, 0.85):
            box(obj, (x - 0.03, 0, z - 0.15), (x + 0.03, 0.4, z + 0.15))
    obj.use("bowl", "marble")
    bowl = [(0.08, 0), (0.1, 0.02), (0.2, 0.08), (0.26, 0.16), (0.262, 0.17), (0.25, 0.168),
            (0.18, 0.09), (0.08, 0.04), (0, 0.035)]
    lathe(obj, (0, 0.78, 0), bowl, 32)
    obj.use("fruit", "fruit")
    ball = [(0.07 * math.sin(math.pi * k / 8), 0.07 - 0.07 * math.cos(math.pi * k / 8))
            for k in range(9)]
    ball[0], ball[-1] = (0, 0), (0, 0.14)
    for x, y, z in ((0.09, 0.06, 0.02), (-0.06, 0.06, 0.07), (-0.03, 0.06, -0.09), (0, 0.16, 0)):
        lathe(obj, (x, 0.78 + y, z), ball, 16)


def pavilion():
    obj = Obj()
    for part in (floors, walls, windows, roof, columns, gallery, table):
        part(obj)
    return obj.text("A pavilion to look at and to walk through", "pavilion.mtl")


# What stands behind newmtl in a material library.
MATERIALS = {
    "tiles": """\
Ka 0.2 0.2 0.2
Kd 0.9 0.9 0.9
Ks 0.3 0.3 0.3
Ns 40
map_Kd textures/tiles.png
""",
    "stone": """\
Ka 0.18 0.18 0.17
Kd 0.62 0.6 0.56
Ks 0.05 0.05 0.05
Ns 5
""",
    "plaster": """\
Ka 0.2 0.2 0.2
Kd 0.95 0.93 0.88
Ks 0 0 0
Ns 1
map_Kd textures/plaster.tga
""",
    "glass": """\
Ka 0.05 0.05 0.05
Kd 0.7 0.85 0.9
Ks 0.9 0.9 0.9
Ns 90
d 0.3
""",
    "wood": """\
Ka 0.15 0.12 0.1
Kd 0.7 0.55 0.4
Ks 0.15 0.15 0.15
Ns 20
map_Kd textures/wood.png
""",
    "marble": """\
Ka 0.2 0.2 0.2
Kd 0.88 0.87 0.85
Ks 0.6 0.6 0.6
Ns 60
""",
    "lattice": """\
Ka 0.2 0.2 0.2
Kd 0.4 0.3 0.2
Ks 0 0 0
Ns 1
map_Kd textures/lattice.png
""",
    "fabric": """\
Ka 0.2 0.1 0.1
Kd 0.7 0.2 0.2
Ks 0 0 0
Ns 1
map_Kd textures/fabric.bmp
""",
    "iron": """\
Ka 0.05 0.05 0.05
Kd 0.12 0.12 0.13
Ks 0.4 0.4 0.4
Ns 30
""",
    "grass": """\
Ka 0.1 0.15 0.08
Kd 0.42 0.55 0.3
Ks 0 0 0
Ns 1
""",
    "fruit": """\
Ka 0.2 0.1 0
Kd 0.95 0.55 0.1
Ks 0.3 0.3 0.3
Ns 25
""",
}


def material_library(title, names):
    """The text of a library with these of MATERIALS."""
    return "".join([f"# {title}\n"] + [f"\nnewmtl {name}\n{MATERIALS[name]}" for name in names])


def write_models(files):
    """Writes {name: bytes} into the folder that the command line names, else into Models."""
    default = pathlib.Path(__file__).resolve().parent.parent / "Models"
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else default
    for name, content in files.items():
        path = folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
        print(f"{len(content):8} {path.name}")


# --- images -------------------------------------------------------------------------------------

class Noise:
    """A linear congruential generator, so that the bytes do not depend on Python's version."""

    def __init__(self, seed):
        self.state = seed

    def __call__(self, amount):
        self.state = (self.state * 1664525 + 1013904223) % 2 ** 32
        return int((self.state >> 8) * amount // 2 ** 24) - amount // 2


def image(size, colour):
    """Rows of the pixels colour(x, y), from the top down, clamped to bytes."""
    return [[tuple(max(0, min(255, int(c))) for c in colour(x, y)) for x in range(size)]
            for y in range(size)]


def tiles(size=64):
    noise = Noise(1)

    def colour(x, y):
        joint = x % 32 == 0 or y % 32 == 0
        base = 110 if joint else (205 if (x // 32 + y // 32) % 2 else 180)
        grain = noise(12)
        return base + grain, base - 6 + grain, base - 18 + grain
    return image(size, colour)


def plaster(size=32):
    noise = Noise(2)

    def colour(_x, _y):
        grain = noise(14)
        return 236 + grain, 230 + grain, 216 + grain
    return image(size, colour)


def wood(size=64):
    noise = Noise(3)

    def colour(x, y):
        ring = math.sin(y * 2 * math.pi / 16 + 0.8 * math.sin(x * 2 * math.pi / size))
        board = -30 if y % 32 == 0 else 0
        light = 14 * ring + board + noise(8)
        return 168 + light, 118 + light, 74 + light
    return image(size, colour)


def fabric(size=32):
    return image(size, lambda x, y: (170, 40, 48) if (x // 2 + y // 2) % 2 else (138, 28, 40))


def lattice(size=32):
    """A lattice of opaque bars with transparent holes."""
    def colour(x, y):
        bar = (x + y) % 16 < 4 or (x - y) % 16 < 4
        return (112, 78, 48, 255) if bar else (112, 78, 48, 0)
    return image(size, colour)


def png(rows):
    channels = len(rows[0][0])

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

    head = struct.pack(">IIBBBBB", len(rows[0]), len(rows), 8, {3: 2, 4: 6}[channels], 0, 0, 0)
    pixels = b"".join(b"\0" + bytes(c for pixel in row for c in pixel) for row in rows)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", zlib.compress(pixels, 9))
            + chunk(b"IEND", b""))


def tga(rows):
    """24 bits, not compressed, rows from the top down."""
    head = struct.pack("<BBBHHBHHHHBB", 0, 0, 2, 0, 0, 0, 0, 0, len(rows[0]), len(rows), 24, 0x20)
    return head + bytes(c for row in rows for pixel in row for c in reversed(pixel))


def bmp(rows):
    """24 bits, rows from the bottom up; the width has to be a multiple of four."""
    pixels = bytes(c for row in reversed(rows) for pixel in row for c in reversed(pixel))
    info = struct.pack("<IiiHHIIiiII", 40, len(rows[0]), len(rows), 1, 24, 0, len(pixels),
                       2835, 2835, 0, 0)
    return struct.pack("<2sIHHI", b"BM", 54 + len(pixels), 0, 0, 54) + info + pixels


def main():
    write_models({
        "pavilion.obj": pavilion().encode(),
        "pavilion.mtl": material_library("Materials of pavilion.obj; made by Tools/make_models.py",
                                         [name for name in MATERIALS if name != "grass"]).encode(),
        "textures/tiles.png": png(tiles()),
        "textures/plaster.tga": tga(plaster()),
        "textures/wood.png": png(wood()),
        "textures/fabric.bmp": bmp(fabric()),
        "textures/lattice.png": png(lattice()),
    })


if __name__ == "__main__":
    main()
