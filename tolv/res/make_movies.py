#!/usr/bin/env python3
"""Draws the movies: a busy spinner and a turning wheel.

The outputs, movies/*.gif, are part of the sources: the build runs none of this.

Usage: make_movies.py
"""
import math
import os
import struct

from svg_parts import ACCENTS, FOLDER

TRANSPARENT = 0
HUNDREDTHS_PER_FRAME = 8


def rgb(color):
    return tuple(int(color[i : i + 2], 16) for i in (1, 3, 5))


def blend(first, second, part):
    return tuple(round(a + (b - a) * part) for a, b in zip(first, second))


class BIT_WRITER:
    """Collects codes of varying length, lowest bit first."""

    def __init__(self):
        self.bytes = bytearray()
        self.value = self.count = 0

    def add(self, code, length):
        self.value |= code << self.count
        self.count += length
        while self.count >= 8:
            self.bytes.append(self.value & 255)
            self.value >>= 8
            self.count -= 8

    def finish(self):
        if self.count:
            self.bytes.append(self.value & 255)
        return bytes(self.bytes)


def compress(pixels, bits):
    """The LZW compression of GIF."""
    clear, end = 1 << bits, (1 << bits) + 1
    out = BIT_WRITER()

    def new_table():
        return {(i,): i for i in range(clear)}, end + 1, bits + 1

    table, following, length = new_table()
    out.add(clear, length)
    run = ()
    for pixel in pixels:
        if run + (pixel,) in table:
            run += (pixel,)
            continue
        out.add(table[run], length)
        table[run + (pixel,)] = following
        following += 1
        if following > 1 << length:
            length += 1
        if following == 4095:
            out.add(clear, length)
            table, following, length = new_table()
        run = (pixel,)
    out.add(table[run], length)
    out.add(end, length)
    return out.finish()


def write_gif(path, size, palette, frames):
    """An endless movie of square frames, each a list of indices into the palette; index 0 is transparent."""
    bits = max(2, (len(palette) - 1).bit_length())
    colors = b"".join(bytes(color) for color in palette).ljust(3 << bits, b"\0")
    out = b"GIF89a" + struct.pack("<HHBBB", size, size, 0x80 | 0x70 | bits - 1, 0, 0) + colors
    out += b"!\xff\x0bNETSCAPE2.0\x03\x01\0\0\0"
    for frame in frames:
        # Each frame replaces the one before: what it shows is cleared behind it.
        out += b"!\xf9\x04" + struct.pack("<BHBB", 0x09, HUNDREDTHS_PER_FRAME, TRANSPARENT, 0)
        out += b"," + struct.pack("<HHHHB", 0, 0, size, size, 0) + bytes([bits])
        data = compress(frame, bits)
        for i in range(0, len(data), 255):
            out += bytes([len(data[i : i + 255])]) + data[i : i + 255]
        out += b"\0"
    with open(path, "wb") as file:
        file.write(out + b";")


def spinner():
    """Twelve dots on a circle; a head runs round, and its tail grows pale and small."""
    size, dots = 32, 12
    head, tail = rgb(ACCENTS["b"][0]), rgb(ACCENTS["l"][0])
    palette = [(255, 255, 255)] + [blend(tail, head, (i / (dots - 1)) ** 1.6) for i in range(dots)]
    frames = []
    for frame in range(dots):
        pixels = [TRANSPARENT] * (size * size)
        for dot in range(dots):
            angle = 2 * math.pi * dot / dots
            x, y = 15.5 + 12 * math.sin(angle), 15.5 - 12 * math.cos(angle)
            age = (frame - dot) % dots
            radius = 3.3 - 0.17 * age
            for j in range(size):
                for i in range(size):
                    if math.hypot(i - x, j - y) <= radius:
                        pixels[j * size + i] = dots - age
        frames.append(pixels)
    return size, palette, frames


def wheel():
    """A toothed wheel that turns by one tooth in the length of the movie."""
    size, teeth, steps = 48, 8, 12
    area, edge, tint = (rgb(color) for color in ACCENTS["p"])
    palette = [(255, 255, 255), area, edge, tint, rgb(ACCENTS["y"][0])]
    frames = []
    for frame in range(steps):
        turn = 2 * math.pi / teeth * frame / steps
        pixels = []
        for j in range(size):
            for i in range(size):
                x, y = i - 23.5, j - 23.5
                radius, angle = math.hypot(x, y), math.atan2(y, x) - turn
                wave = math.cos(angle * teeth)
                rim = 19.5 + 3.5 * max(-1, min(1, 2.2 * wave))
                spoke = abs(math.sin(angle * teeth / 2))
                if radius > rim or radius < 4:
                    pixel = TRANSPARENT
                elif radius > rim - 1.6 or radius < 5.4:
                    pixel = 2
                elif radius < 8.5:
                    pixel = 4
                elif 10 < radius < 14 and spoke < 0.75:
                    pixel = 3
                else:
                    pixel = 1
                pixels.append(pixel)
        frames.append(pixels)
    return size, palette, frames


def main():
    folder = os.path.join(FOLDER, "movies")
    os.makedirs(folder, exist_ok=True)
    write_gif(os.path.join(folder, "tolv_busy_spinner.gif"), *spinner())
    write_gif(os.path.join(folder, "tolv_ip_rgenwheel.gif"), *wheel())


if __name__ == "__main__":
    main()
