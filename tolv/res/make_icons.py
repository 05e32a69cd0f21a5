#!/usr/bin/env python3
"""Draws the icons of the suite.

Reads icons.txt (what each icon is composed of) and the drawings of glyphs.txt, marks.txt and badges.txt. Writes the
files under icons/ and h/tolv_icon_table.def. The outputs are part of the sources: the build runs none of this.

Usage: make_icons.py IMAGE_TOOL
IMAGE_TOOL is the program that the build target tolv_image_tool makes; it turns vector files into bitmaps.
"""
import os
import re
import shutil
import subprocess
import sys

from svg_parts import FOLDER, PARTS, svg_file

ROOT = os.path.dirname(os.path.dirname(FOLDER))
ICONS = os.path.join(FOLDER, "icons")
BITMAP_SIZE = 64

TABLE_HEAD = """\
// The icons of the suite: TOLV_ICON_ROW(enumerator, form, first file, second file), in ASCII order of the enumerators.
// Written by tolv/res/make_icons.py from tolv/res/icons.txt. The form tells how the files make up the icon:
//   ONE          the first file alone
//   OFF_ON       the first file for the state off, the second one for the state on
//   SIZES_32_48  the first file for the size 32 by 32, the second one for 48 by 48
"""

# The icons with two files: name -> form, then file and recipe of each.
TWO_FILES = {
    "pushpin": ("OFF_ON", ("pushpin_up", "pushpin_up"), ("pushpin_down", "pushpin_down")),
    "pushpin_dockwidget": (
        "OFF_ON",
        ("pushpin_up_dockwidget", "pushpin_up_dockwidget"),
        ("pushpin_down_dockwidget", "pushpin_down_dockwidget"),
    ),
    "flat_project_open": (
        "SIZES_32_48",
        ("flat_project_open_32", "flat.b/folder"),
        ("flat_project_open_48", "flat.b/folder"),
    ),
}


def read_list():
    """The rows (name, name of the drawn icon, recipe) and the further bitmaps (name, recipe, size)."""
    rows, files = [], []
    with open(os.path.join(FOLDER, "icons.txt"), encoding="ascii") as file:
        for line in file:
            line = line.strip()
            if not line or line.startswith("#"):
                continue
            match = re.fullmatch(r"(file )?(\w+)(?:: (.+)| = (\w+))", line)
            if match is None:
                raise SystemExit(f"icons.txt: not understood: {line}")
            if match[1]:
                words = match[3].split()
                files.append((match[2], words[:-1], int(words[-1])))
            elif match[4]:
                rows.append((match[2], match[4], None))
            else:
                rows.append((match[2], match[2], match[3].split()))
    return rows, files


def resource_path(name, kind):
    # Both forms of a resource path are in use.
    root = ":icons" if name.startswith(("overlay_", "led_")) or name.endswith("_dockwidget") else ":/icons"
    return f"{root}/{'' if kind == 'png' else kind + '/'}tolv_{name}.{'png' if kind == 'png' else 'svg'}"


def kind_of(recipe):
    return recipe[-1] if recipe[-1] in ("png", "flat") else "svg"


def table_row(name, drawn, recipes):
    enumerator = f"TOLV_{name.upper()}_ICON"
    if name in TWO_FILES:
        form, first, second = TWO_FILES[name]
        kind, ending = ("flat", "png") if form == "SIZES_32_48" else ("svg", "svg")
        root = resource_path(name, kind).split("/tolv_")[0].replace(":icons", ":/icons")
        paths = [f"{root}/tolv_{file}.{ending}" for file, _ in (first, second)]
    else:
        form, paths = "ONE", [resource_path(drawn, kind_of(recipes[drawn])), ""]
    return enumerator, f'TOLV_ICON_ROW({enumerator}, {form}, "{paths[0]}", "{paths[1]}")'


def write_table(rows):
    recipes = {name: recipe for name, _, recipe in rows if recipe}
    lines = sorted(table_row(name, drawn, recipes) for name, drawn, _ in rows)
    for first, second in zip(lines, lines[1:]):
        if first[0] == second[0]:
            raise SystemExit(f"{first[0]} stands twice")
    with open(os.path.join(ROOT, "h", "tolv_icon_table.def"), "w", encoding="ascii") as file:
        file.write(TABLE_HEAD + "".join(line + "\n" for _, line in lines))


class BITMAPS:
    """Vector pictures on their way to bitmaps, rendered by one run of the image tool."""

    def __init__(self, tool):
        self.tool = tool
        self.commands = []
        self.folder = os.path.join(FOLDER, "bitmaps.tmp")
        os.makedirs(self.folder, exist_ok=True)

    def add(self, content, path, size):
        source = os.path.join(self.folder, f"{len(self.commands)}.svg")
        with open(source, "w", encoding="ascii") as file:
            file.write(content)
        self.commands.append(f"{source} {path} {size} {size}\n")

    def render(self):
        subprocess.run([self.tool, "render"], input="".join(self.commands), text=True, check=True)
        shutil.rmtree(self.folder)


def main():
    if len(sys.argv) != 2:
        raise SystemExit(__doc__)
    parts = PARTS()
    rows, files = read_list()
    for folder in ("svg", "flat"):
        shutil.rmtree(os.path.join(ICONS, folder), ignore_errors=True)
        os.makedirs(os.path.join(ICONS, folder))
    bitmaps = BITMAPS(sys.argv[1])

    def write_svg(folder, name, recipe):
        with open(os.path.join(ICONS, folder, f"tolv_{name}.svg"), "w", encoding="ascii") as file:
            file.write(svg_file(parts.picture(recipe)))

    for name, _, recipe in rows:
        if name in TWO_FILES:
            form, *pictures = TWO_FILES[name]
            for file, picture in pictures:
                if form == "OFF_ON":
                    write_svg("svg", file, [picture])
                else:
                    size = int(file[-2:])
                    path = os.path.join(ICONS, "flat", f"tolv_{file}.png")
                    bitmaps.add(svg_file(parts.picture([picture])), path, size)
        elif recipe and kind_of(recipe) == "png":
            path = os.path.join(ICONS, f"tolv_{name}.png")
            bitmaps.add(svg_file(parts.picture(recipe[:-1])), path, BITMAP_SIZE)
        elif recipe:
            kind = kind_of(recipe)
            write_svg(kind, name, recipe[:-1] if kind == "flat" else recipe)
    for name, recipe, size in files:
        bitmaps.add(svg_file(parts.picture(recipe)), os.path.join(ICONS, f"tolv_{name}.png"), size)
    bitmaps.render()
    write_table(rows)


if __name__ == "__main__":
    main()
