#!/usr/bin/env python3
"""Draws the cursors: for each a bitmap and a mask, 32 by 32, of one bit per pixel.

A pixel of the cursor is black where bitmap and mask are black, white where only the mask is, and lets the screen through
elsewhere. The outputs, cursors/*.png, are part of the sources: the build runs none of this.

Usage: make_cursors.py
"""
import math
import os
import struct
import zlib

FOLDER = os.path.dirname(os.path.abspath(__file__))
SIZE = 32


def circle(x, y, radius):
    return {
        (i, j) for i in range(SIZE) for j in range(SIZE) if math.hypot(i - x, j - y) <= radius
    }


def ring(x, y, outer, inner):
    return circle(x, y, outer) - circle(x, y, inner)


def box(left, top, right, bottom):
    return {(i, j) for i in range(left, right + 1) for j in range(top, bottom + 1)}


def polygon(*corners):
    """All pixels whose centre lies in the polygon or on its edge."""
    pixels = set()
    for j in range(SIZE):
        for i in range(SIZE):
            inside = on_edge = False
            for (x1, y1), (x2, y2) in zip(corners, corners[1:] + corners[:1]):
                cross = (x2 - x1) * (j - y1) - (y2 - y1) * (i - x1)
                within = min(x1, x2) <= i <= max(x1, x2) and min(y1, y2) <= j <= max(y1, y2)
                on_edge |= cross == 0 and within
                if (y1 > j) != (y2 > j) and i < (x2 - x1) * (j - y1) / (y2 - y1) + x1:
                    inside = not inside
            if inside or on_edge:
                pixels.add((i, j))
    return pixels


def line(x1, y1, x2, y2, width):
    """A line with round ends."""
    length = math.hypot(x2 - x1, y2 - y1) or 1
    pixels = set()
    for i in range(SIZE):
        for j in range(SIZE):
            along = max(0, min(length, ((i - x1) * (x2 - x1) + (j - y1) * (y2 - y1)) / length))
            x, y = x1 + (x2 - x1) * along / length, y1 + (y2 - y1) * along / length
            if math.hypot(i - x, j - y) <= width / 2:
                pixels.add((i, j))
    return pixels


def grown(pixels):
    """The pixels and all their neighbours."""
    return {
        (i + di, j + dj)
        for i, j in pixels
        for di in (-1, 0, 1)
        for dj in (-1, 0, 1)
        if 0 <= i + di < SIZE and 0 <= j + dj < SIZE
    }


def outlined(shape):
    """A white shape with a black edge: (black, mask)."""
    inner = {
        (i, j)
        for i, j in shape
        if all((i + di, j + dj) in shape for di, dj in ((-1, 0), (1, 0), (0, -1), (0, 1)))
    }
    return shape - inner, shape


def haloed(ink):
    """A black drawing with a white rim: (black, mask)."""
    return ink, grown(ink)


def together(*parts):
    """Parts one over the other, the last one on top."""
    black, mask = set(), set()
    for part_black, part_mask in parts:
        black = (black - part_mask) | part_black
        mask |= part_mask
    return black, mask


def arrow(x, y):
    """The usual pointer with its tip at (x, y)."""
    corners = [(0, 0), (0, 16), (4, 12), (7, 18), (10, 17), (7, 11), (12, 11)]
    return outlined(polygon(*[(x + i, y + j) for i, j in corners]))


def lens(sign, glass):
    """A magnifying glass with the centre of its lens at (11, 11); `glass` is the white area behind the sign."""
    black, mask = haloed(ring(11, 11, 9.2, 7.4) | line(18, 18, 28, 28, 4.2))
    return black | sign, mask | sign | glass


def forbidden(x, y, outer, width):
    slash = outer * math.sqrt(0.5) - 0.5
    black, mask = haloed(ring(x, y, outer, outer - width) | line(x - slash, y - slash, x + slash, y + slash, width))
    return black, mask | circle(x, y, outer)


def clock_wave(x, y):
    ink = set()
    for i1, j1, i2, j2 in ((0, 8, 3, 8), (3, 0, 3, 8), (3, 0, 8, 0), (8, 0, 8, 8), (8, 8, 13, 8), (13, 0, 13, 8), (13, 0, 15, 0)):
        ink |= box(x + i1, y + j1, x + i2, y + j2)
        ink |= box(x + i1, y + j1, min(x + i2 + (i1 == i2), 31), y + j2)
    return haloed(ink)


def region(x, y):
    edge = (box(x, y, x + 14, y + 11) - box(x + 1, y + 1, x + 13, y + 10))
    dashes = {(i, j) for i, j in edge if (i - x + j - y) % 4 != 3}
    plus = box(x + 4, y + 5, x + 10, y + 6) | box(x + 7, y + 2, x + 7, y + 9) | box(x + 6, y + 2, x + 8, y + 9)
    black, mask = haloed(dashes | plus)
    return black, mask | box(x, y, x + 14, y + 11)


def move(x, y):
    """Arrows to the four sides around (x, y)."""
    ink = box(x - 1, y - 6, x + 1, y + 6) | box(x - 6, y - 1, x + 6, y + 1)
    for tip in ((0, -8), (0, 8), (-8, 0), (8, 0)):
        side = (tip[1] != 0) * 1, (tip[0] != 0) * 1
        base = tip[0] * 5 // 8 if tip[0] >= 0 else -(-tip[0] * 5 // 8), tip[1] * 5 // 8 if tip[1] >= 0 else -(-tip[1] * 5 // 8)
        ink |= polygon(
            (x + tip[0], y + tip[1]),
            (x + base[0] + 4 * side[0], y + base[1] + 4 * side[1]),
            (x + base[0] - 4 * side[0], y + base[1] - 4 * side[1]),
        )
    return haloed(ink)


PLUS = box(7, 10, 15, 12) | box(10, 7, 12, 15)
MINUS = box(7, 10, 15, 12)
DOT = box(10, 10, 12, 12)

CURSORS = {
    "tolv_zoomin_cur": lens(PLUS, circle(11, 11, 8)),
    "tolv_zoomout_cur": lens(MINUS, circle(11, 11, 8)),
    "tolv_clock_assignment_cursor": together(arrow(0, 0), clock_wave(14, 18)),
    "tolv_create_region": together(arrow(0, 0), region(14, 17)),
    "tolv_move_cursor": move(8, 8),
    "tolv_arrow_cursor": arrow(8, 6),
    "tolv_forbidden_cursor": forbidden(15, 15, 11.3, 3.2),
    "tolv_arrow_forbidden_cursor": together(arrow(4, 2), forbidden(22, 22, 7.3, 2.6)),
    "tolv_magnifying_cur": lens(DOT, grown(DOT)),
}


def write_bitmap(path, black):
    """A PNG file of one bit per pixel: 0 is black."""
    rows = b""
    for j in range(SIZE):
        bits = "".join("0" if (i, j) in black else "1" for i in range(SIZE))
        rows += b"\0" + int(bits, 2).to_bytes(SIZE // 8, "big")

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    with open(path, "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n")
        file.write(chunk(b"IHDR", struct.pack(">IIBBBBB", SIZE, SIZE, 1, 0, 0, 0, 0)))
        file.write(chunk(b"IDAT", zlib.compress(rows, 9)))
        file.write(chunk(b"IEND", b""))


def main():
    folder = os.path.join(FOLDER, "cursors")
    os.makedirs(folder, exist_ok=True)
    for name, (black, mask) in CURSORS.items():
        write_bitmap(os.path.join(folder, f"{name}.png"), black)
        write_bitmap(os.path.join(folder, f"{name}_mask.png"), mask)


if __name__ == "__main__":
    main()
