#!/usr/bin/env python3
"""Writes the resource collection tolv_qrc.qrc: all pictures under icons/, pixmaps/, cursors/ and movies/.

Usage: make_collection.py
"""
import os

from svg_parts import FOLDER


def main():
    paths = []
    for folder in ("cursors", "icons", "movies", "pixmaps"):
        for place, _, names in os.walk(os.path.join(FOLDER, folder)):
            paths += (os.path.relpath(os.path.join(place, name), FOLDER) for name in names)
    lines = "".join(f"    <file>{path}</file>\n" for path in sorted(paths))
    with open(os.path.join(FOLDER, "tolv_qrc.qrc"), "w", encoding="ascii") as file:
        file.write(f'<RCC>\n  <qresource prefix="/">\n{lines}  </qresource>\n</RCC>\n')


if __name__ == "__main__":
    main()
