#!/usr/bin/env python3
"""Makes Models/building.obj and its material library: a house to walk in.

    make_building.py [FOLDER]

Every run makes the same bytes. Metres, y upwards, the ground floor at y = 0 with its centre in the
origin, the upper floor at y = 3. What a person of 1.75 m meets:

- a stair of 16 steps along the back wall, which rises towards +x into the upper floor;
- a ramp at the right, up to a platform of 0.7 m; the platform's left edge is a step too high;
- a partition at the left with a doorway of 1.6 m, too low to pass upright;
- a hole in the upper floor, 3 m above the hall.

Like the textures, the helpers are those of make_models.py.
"""
from make_models import Obj, box, material_library, rectangle, write_models

HALF_X, HALF_Z, WALL = 6.0, 4.0, 0.2
STOREY, SLAB = 3.0, 0.2
ROOF = 2 * STOREY - SLAB

STAIR_BEGIN, STAIR_WIDTH, STEPS, GOING = -2.5, 1.4, 16, 0.28
STAIR_END = STAIR_BEGIN + STEPS * GOING
RISER = STOREY / STEPS

PLATFORM = 0.7
RAMP_LEFT, RAMP_RIGHT, RAMP_BEGIN, RAMP_END = 4.2, 5.8, 3.2, -0.8
PLATFORM_LEFT, PLATFORM_BACK = 3.0, -2.4

PARTITION, DOORWAY, LINTEL = -3.6, (1.0, 2.0), 1.6
HOLE_X, HOLE_Z = (0.6, 1.8), (0.4, 1.6)


def pierced(obj, low, high, openings, along):
    """A box with rectangular openings, as boxes around them. An opening is (begin, end, bottom, top)
    on the axis `along` (0 or 2) and in height; openings are in order and do not overlap."""
    def part(begin, end, bottom, top):
        if begin < end and bottom < top:
            corners = [list(low), list(high)]
            corners[0][along], corners[1][along] = begin, end
            corners[0][1], corners[1][1] = bottom, top
            box(obj, tuple(corners[0]), tuple(corners[1]))

    here = low[along]
    for begin, end, bottom, top in openings:
        part(here, begin, low[1], high[1])
        part(begin, end, low[1], bottom)
        part(begin, end, top, high[1])
        here = end
    part(here, high[along], low[1], high[1])


def ground(obj):
    obj.use("ground", "grass")
    rectangle(obj, (-12, -0.05, 10), (24, 0, 0), (0, 0, -20), cells=(6, 5))
    obj.use("floor", "tiles")
    rectangle(obj, (-HALF_X, 0, HALF_Z), (2 * HALF_X, 0, 0), (0, 0, -2 * HALF_Z), cells=(12, 8))
    obj.use("doorstep", "stone")
    box(obj, (-1.0, -0.05, HALF_Z), (1.0, 0, HALF_Z + 0.8))


def walls(obj):
    obj.use("walls", "plaster")
    x, z = HALF_X, HALF_Z
    windows = [(1.0, 2.2), (STOREY + 1.0, STOREY + 2.2)]
    for storey, (sill, top) in enumerate(windows):
        low, high = (0, STOREY) if storey == 0 else (STOREY, ROOF)
        middle = (-0.6, 0.6, low, low + 2.2) if storey == 0 else (-0.6, 0.6, sill, top)
        pierced(obj, (-x - WALL, low, z), (x + WALL, high, z + WALL),
                [(-4.5, -3.0, sill, top), middle, (3.0, 4.5, sill, top)], 0)
        pierced(obj, (-x - WALL, low, -z - WALL), (x + WALL, high, -z), [], 0)
        for left, right in ((-x - WALL, -x), (x, x + WALL)):
            pierced(obj, (left, low, -z), (right, high, z), [(-0.7, 0.7, sill, top)], 2)
    obj.use("partition", "plaster")
    pierced(obj, (PARTITION - WALL, 0, -HALF_Z + STAIR_WIDTH), (PARTITION, STOREY - SLAB, HALF_Z),
            [(*DOORWAY, 0, LINTEL)], 2)


def stair(obj):
    obj.use("stair", "stone")
    for step in range(STEPS):
        left = STAIR_BEGIN + step * GOING
        box(obj, (left, 0, -HALF_Z), (left + GOING, (step + 1) * RISER, -HALF_Z + STAIR_WIDTH))


def upper_floor(obj):
    """A slab around the stairwell and the hole, and a rail along the stairwell."""
    bottom, top = STOREY - SLAB, STOREY
    well = -HALF_Z + STAIR_WIDTH
    obj.use("upper floor", "wood")
    box(obj, (-HALF_X, bottom, -HALF_Z), (STAIR_BEGIN, top, well))
    box(obj, (STAIR_END, bottom, -HALF_Z), (HALF_X, top, well))
    box(obj, (-HALF_X, bottom, well), (HALF_X, top, HOLE_Z[0]))
    box(obj, (-HALF_X, bottom, HOLE_Z[0]), (HOLE_X[0], top, HOLE_Z[1]))
    box(obj, (HOLE_X[1], bottom, HOLE_Z[0]), (HALF_X, top, HOLE_Z[1]))
    box(obj, (-HALF_X, bottom, HOLE_Z[1]), (HALF_X, top, HALF_Z))
    obj.use("rail", "iron")
    box(obj, (STAIR_BEGIN, top + 0.95, well), (STAIR_END, top + 1.0, well + 0.05))
    for post in range(6):
        x = STAIR_BEGIN + post * (STAIR_END - STAIR_BEGIN - 0.05) / 5
        box(obj, (x, top, well), (x + 0.05, top + 0.95, well + 0.05))


def ramp(obj):
    obj.use("ramp", "stone")
    length, width = RAMP_BEGIN - RAMP_END, RAMP_RIGHT - RAMP_LEFT
    rectangle(obj, (RAMP_LEFT, 0, RAMP_BEGIN), (width, 0, 0), (0, PLATFORM, -length))
    for x, outwards in ((RAMP_LEFT, -1), (RAMP_RIGHT, 1)):
        corners = [(x, 0, RAMP_BEGIN), (x, 0, RAMP_END), (x, PLATFORM, RAMP_END)]
        normal = (outwards, 0, 0)
        face = [(corner, (corner[2], corner[1]), normal) for corner in corners]
        obj.face(face if outwards > 0 else face[::-1])
    obj.use("platform", "stone")
    box(obj, (PLATFORM_LEFT, 0, PLATFORM_BACK), (HALF_X, PLATFORM, RAMP_END))


def roof(obj):
    obj.use("roof", "wood")
    box(obj, (-HALF_X - 0.6, ROOF, -HALF_Z - 0.6), (HALF_X + 0.6, ROOF + 0.2, HALF_Z + 0.6), 2.0)


def building():
    obj = Obj()
    for part in (ground, walls, stair, upper_floor, ramp, roof):
        part(obj)
    return obj.text("A house to walk in", "building.mtl", "Tools/make_building.py")


def main():
    materials = material_library("Materials of building.obj; made by Tools/make_building.py",
                                 ("grass", "tiles", "stone", "plaster", "wood", "iron"))
    write_models({"building.obj": building().encode(), "building.mtl": materials.encode()})


if __name__ == "__main__":
    main()
