#!/usr/bin/env python3
"""Draws the pixmaps: splash screen, banners, watermarks and illustrations, and the tile behind the windows of a beta.

Writes each as a vector file to sources/ and renders it to pixmaps/ (the tile to icons/). The outputs are part of the
sources: the build runs none of this.

Usage: make_pictures.py IMAGE_TOOL
"""
import math
import os
import random
import subprocess
import sys

from svg_parts import ACCENTS, FOLDER, PARTS

NAVY, DEEP, BLUE, SKY, TEAL, SUN = "#0a2540", "#0f3a66", "#2f82d6", "#8cc4ff", "#25b0a8", "#f2c230"
PARTS_OF_ICONS = PARTS()

# Letters of the word marks as lines on a grid 10 wide and 14 high.
LETTERS = {
    "A": "M0 14L5 0L10 14M2 9H8",
    "B": "M0 0V14H5C9.5 14 9.5 7 5 7H0M0 0H4.5C8.5 0 8.5 7 4.5 7",
    "D": "M0 0V14H3.5C11.5 14 11.5 0 3.5 0Z",
    "E": "M9 0H0V14H9M0 7H7.5",
    "F": "M9 0H0V14M0 7H7.5",
    "I": "M5 0V14",
    "K": "M0 0V14M9.5 0L0 8M3.5 5.4L10 14",
    "N": "M0 14V0L10 14V0",
    "O": "M5 0C11.5 0 11.5 14 5 14C-1.5 14 -1.5 0 5 0Z",
    "P": "M0 14V0H5C10.5 0 10.5 8 5 8H0",
    "R": "M0 14V0H5C10.5 0 10.5 7.5 5 7.5H0M5 7.5L10 14",
    "T": "M0 0H10M5 0V14",
    "U": "M0 0V9C0 15.6 10 15.6 10 9V0",
    "V": "M0 0L5 14L10 0",
    "W": "M-1 0L2 14L5 3L8 14L11 0",
    "X": "M0 0L10 14M10 0L0 14",
}


def word(text, x, y, height, color, width=2.0, gap=5.5, opacity=1.0):
    """A word of LETTERS with its top left corner at (x, y)."""
    scale = height / 14
    out = ""
    for i, letter in enumerate(text):
        if letter != " ":
            out += f'<path transform="translate({i * (10 + gap):g} 0)" d="{LETTERS[letter]}"/>'
    return (
        f'<g transform="translate({x:g} {y:g}) scale({scale:.3f})" fill="none" stroke="{color}" '
        f'stroke-width="{width}" stroke-opacity="{opacity}" stroke-linecap="round" stroke-linejoin="round">{out}</g>'
    )


def word_width(text, height, gap=5.5):
    return (len(text) * (10 + gap) - gap) * height / 14


def text(content, x, y, size, color, weight="normal", anchor="start", opacity=1.0):
    return (
        f'<text x="{x:g}" y="{y:g}" font-family="DejaVu Sans" font-size="{size:g}" font-weight="{weight}" '
        f'text-anchor="{anchor}" fill="{color}" fill-opacity="{opacity}">{content}</text>'
    )


def gradient(name, first, second, vertical=False):
    x2, y2 = (0, 1) if vertical else (1, 1)
    return (
        f'<defs><linearGradient id="{name}" x1="0" y1="0" x2="{x2}" y2="{y2}"><stop offset="0" stop-color="{first}"/>'
        f'<stop offset="1" stop-color="{second}"/></linearGradient></defs>'
    )


def rect(x, y, w, h, fill, radius=0, stroke=None, width=1, opacity=1.0):
    edge = f' stroke="{stroke}" stroke-width="{width:g}"' if stroke else ""
    return (
        f'<rect x="{x:g}" y="{y:g}" width="{w:g}" height="{h:g}" rx="{radius:g}" fill="{fill}" '
        f'fill-opacity="{opacity:g}"{edge}/>'
    )


def path(d, fill="none", stroke=None, width=1, opacity=1.0):
    edge = f' stroke="{stroke}" stroke-width="{width:g}" stroke-opacity="{opacity:g}"' if stroke else ""
    return f'<path d="{d}" fill="{fill}" fill-opacity="{opacity:g}" stroke-linecap="round" stroke-linejoin="round"{edge}/>'


def dot(x, y, r, fill, opacity=1.0):
    return f'<circle cx="{x:g}" cy="{y:g}" r="{r:g}" fill="{fill}" fill-opacity="{opacity:g}"/>'


def icon(recipe, x, y, size, opacity=1.0):
    content = PARTS_OF_ICONS.picture(recipe.split())
    return (
        f'<g transform="translate({x:g} {y:g}) scale({size / 16:.4f})" opacity="{opacity:g}" fill="none" '
        f'stroke-linecap="round" stroke-linejoin="round">{content}</g>'
    )


def traces(seed, left, top, width, height, color, opacity, count, pads=SUN):
    """Conductors of a board: runs along a grid of 12 with corners of 45 degrees, and pads at their ends."""
    source = random.Random(seed)
    columns, rows = int(width // 12), int(height // 12)
    used, out = set(), ""
    for _ in range(count):
        column, row = source.randrange(columns), source.randrange(rows)
        points = [(column, row)]
        slope = 0
        for _ in range(source.randrange(6, 16)):
            slope = source.choice((0, 0, 0, 1, -1)) if slope == 0 else source.choice((0, slope))
            step = (points[-1][0] + 1, points[-1][1] + slope)
            if step in used or not (0 <= step[0] <= columns and 0 <= step[1] <= rows):
                break
            points.append(step)
        if len(points) < 4 or used.intersection(points):
            continue
        used.update(points)
        at = [(left + 12 * i, top + 12 * j) for i, j in points]
        out += path("M" + "L".join(f"{x:g} {y:g}" for x, y in at), stroke=color, width=1.6, opacity=opacity)
        for x, y in (at[0], at[-1]):
            out += dot(x, y, 3, color, opacity) + dot(x, y, 1.3, pads, min(1, opacity * 1.6))
    return out


def hexagon(x, y, radius):
    corners = [(x + radius * math.sin(i * math.pi / 3), y - radius * math.cos(i * math.pi / 3)) for i in range(6)]
    return "M" + "L".join(f"{i:.1f} {j:.1f}" for i, j in corners) + "Z"


def emblem(x, y, radius, opacity=1.0, plain=None):
    """The sign of the suite: an N of conductors in a hexagon. `plain` draws it in one colour."""
    scale = radius / 16
    line = plain or "#ffffff"
    out = "" if plain else path(hexagon(x, y, radius), fill="url(#emblem)", opacity=opacity)
    out += path(hexagon(x, y, radius * 0.9), stroke=plain or SKY, width=1.2 * scale, opacity=opacity * (0.8 if plain else 0.6))
    left, right, top, bottom = x - 6 * scale, x + 6 * scale, y - 7 * scale, y + 7 * scale
    d = f"M{left:.1f} {bottom:.1f}V{top:.1f}L{right:.1f} {bottom:.1f}V{top:.1f}"
    out += path(d, stroke=line, width=3 * scale, opacity=opacity)
    for i, j in ((left, bottom), (right, top)):
        out += dot(i, j, 2.8 * scale, plain or SUN, opacity) + dot(i, j, 1.1 * scale, DEEP, 0 if plain else opacity)
    return out


EMBLEM_DEFS = gradient("emblem", "#3b93ea", "#12508f")


def ground(width, height, first=NAVY, second="#14558f"):
    return gradient("ground", first, second) + EMBLEM_DEFS + rect(0, 0, width, height, "url(#ground)")


def splash(width, height):
    out = ground(width, height)
    out += traces(7, 0, 0, width, height, SKY, 0.22, 150)
    out += rect(0, height - 92, width, 92, NAVY, opacity=0.55)
    out += emblem(120, 150, 74)
    out += word("NORVANE", 228, 112, 46, "#ffffff", 2.1)
    out += text("Design suite for programmable logic", 228, 196, 17, "#cfe5fb")
    out += path("M228 212H560", stroke=SUN, width=2)
    for i, name in enumerate(("synthesis", "fitter", "stopwatch", "waves", "programmer", "cubes")):
        x = 38 + i * 98
        out += rect(x, height - 74, 56, 56, "#ffffff", 10, opacity=0.94) + icon(name, x + 10, height - 64, 36)
        if i < 5:
            out += path(f"M{x + 64} {height - 46}H{x + 86}M{x + 80} {height - 51}L{x + 87} {height - 46}L{x + 80} {height - 41}", stroke=SKY, width=2)
    return out


def about_banner(width, height):
    out = ground(width, height) + traces(3, 150, 0, width - 150, height, SKY, 0.2, 60)
    out += emblem(64, height / 2, 44)
    out += word("NORVANE", 132, 36, 32, "#ffffff", 2.2)
    return out + text("Design suite for programmable logic", 132, 94, 13, "#cfe5fb")


def banner(recipe, title, seed, first=NAVY, second="#14558f"):
    def draw(width, height):
        out = ground(width, height, first, second)
        out += traces(seed, 210, 0, width - 320, height, SKY, 0.25, 40)
        out += text(title, 20, height / 2 + 6.5, 18, "#ffffff", "bold")
        out += rect(width - 62, 8, 48, 48, "#ffffff", 9, opacity=0.94)
        return out + icon(recipe, width - 56, 14, 36)

    return draw


def wizard_watermark(width, height):
    out = gradient("ground", DEEP, "#071a2e", True) + EMBLEM_DEFS + rect(0, 0, width, height, "url(#ground)")
    out += traces(12, 0, 130, width, height - 130, SKY, 0.3, 60)
    out += emblem(width / 2, 78, 46)
    return out + icon("wand", width / 2 - 28, height - 86, 56)


def link_picture(recipe, title, line):
    def draw(width, height):
        out = rect(1, 1, width - 2, height - 2, "#ffffff", 10, opacity=0.92)
        out += rect(1, 1, width - 2, height - 2, "none", 10, stroke=BLUE, width=1.5)
        out += icon(recipe, 14, height / 2 - 20, 40)
        out += text(title, 68, height / 2 - 3, 15, DEEP, "bold")
        out += text(line, 68, height / 2 + 16, 11, "#56626f")
        return out + path(f"M{width - 22} {height / 2 - 7}L{width - 15} {height / 2}L{width - 22} {height / 2 + 7}", stroke=BLUE, width=2.4)

    return draw


def mdi_watermark(width, height):
    out = emblem(width / 2, 130, 112, 0.3, "#ffffff")
    return out + word("NORVANE", (width - word_width("NORVANE", 44)) / 2, 272, 44, "#ffffff", 2, opacity=0.3)


def stamp(label, color):
    """A word in a frame, slanted, for laying over other pictures."""

    def draw(width, height):
        letters = min(34, (width - 110) / word_width(label, 1))
        x, y = (width - word_width(label, letters)) / 2, (height - letters) / 2
        out = f'<g transform="rotate(-9 {width / 2} {height / 2})">'
        out += path(f"M28 {y - 20}H{width - 28}V{y + letters + 20}H28Z", stroke=color, width=5, opacity=0.5)
        out += word(label, x, y, letters, color, 2.6, opacity=0.5)
        return out + "</g>"

    return draw


def card(x, y, width, height, recipe, title, line):
    out = rect(x, y, width, height, "#ffffff", 12, opacity=0.96)
    out += icon(recipe, x + width / 2 - 26, y + 20, 52)
    out += text(title, x + width / 2, y + 98, 15, DEEP, "bold", "middle")
    return out + text(line, x + width / 2, y + 120, 11, "#56626f", "normal", "middle")


def welcome(width, height):
    out = ground(width, height) + traces(21, 0, 0, width, height, SKY, 0.16, 200)
    out += emblem(74, 84, 44) + word("NORVANE", 142, 62, 34, "#ffffff", 2.2)
    out += text("Welcome. What would you like to do?", 144, 126, 15, "#cfe5fb")
    cards = (
        ("project +plus", "New project", "Start from the wizard"),
        ("folder_open", "Open project", "Continue your work"),
        ("flask", "Example designs", "Ready to compile"),
        ("books", "Documentation", "Guides and reference"),
        ("graduation_cap", "Training", "Short lessons"),
        ("globe +headset", "Support", "Ask and search"),
    )
    for i, (recipe, title, line) in enumerate(cards):
        recipe = "book +star" if recipe == "graduation_cap" else recipe
        out += card(44 + i % 3 * 246, 170 + i // 3 * 164, 222, 144, recipe, title, line)
    return out


def web_welcome(width, height):
    out = ground(width, height, "#f4f8fc", "#d6e6f6") + traces(5, 0, 0, width, height, BLUE, 0.14, 220)
    out += rect(0, 0, width, 120, DEEP) + emblem(66, 60, 38) + word("NORVANE", 124, 42, 30, "#ffffff", 2.2)
    out += text("On the web", width - 40, 68, 16, "#cfe5fb", "normal", "end")
    rows = (
        ("globe", "Community", "Questions and answers of other designers"),
        ("download", "Downloads", "New releases, devices and components"),
        ("bell", "News", "What has changed, and what is coming"),
        ("cubes", "Components", "Blocks to build on"),
    )
    for i, (recipe, title, line) in enumerate(rows):
        y = 150 + i * 84
        out += rect(60, y, width - 120, 70, "#ffffff", 10, stroke="#b9d3ec") + icon(recipe, 80, y + 13, 44)
        out += text(title, 146, y + 31, 16, DEEP, "bold") + text(line, 146, y + 52, 12, "#56626f")
    return out


def block(x, y, width, height, accent, title):
    area, edge, tint = ACCENTS[accent]
    out = rect(x, y, width, height, tint, 6, stroke=area, width=2)
    return out + text(title, x + width / 2, y + height / 2 + 5, 13, edge, "bold", "middle")


def arrow(x1, y1, x2, y2, color):
    angle = math.atan2(y2 - y1, x2 - x1)
    out = path(f"M{x1:g} {y1:g}L{x2 - 8 * math.cos(angle):.1f} {y2 - 8 * math.sin(angle):.1f}", stroke=color, width=2.4)
    corners = [(x2, y2)] + [
        (x2 - 11 * math.cos(angle + side), y2 - 11 * math.sin(angle + side)) for side in (0.45, -0.45)
    ]
    return out + path("M" + "L".join(f"{x:.1f} {y:.1f}" for x, y in corners) + "Z", fill=color)


def mwpim_cec(width, height):
    """Two netlists that are checked for being equivalent."""
    out = rect(1, 1, width - 2, height - 2, "#f8fafc", 8, stroke="#b9c5d1")
    out += block(28, 34, 124, 46, "b", "Reference") + block(28, height - 80, 124, 46, "o", "Revised")
    out += block(210, height / 2 - 34, 112, 68, "p", "Compare")
    out += arrow(152, 57, 210, height / 2 - 14, "#74808e") + arrow(152, height - 57, 210, height / 2 + 14, "#74808e")
    out += arrow(322, height / 2, 380, height / 2, "#74808e")
    return out + icon("ok", 388, height / 2 - 32, 64)


def mwpim_config(width, height):
    """A device that is configured from a host over a memory."""
    out = rect(1, 1, width - 2, height - 2, "#f8fafc", 8, stroke="#b9c5d1")
    for x, recipe, title in ((34, "terminal", "Host"), (200, "flash", "Memory"), (366, "chip", "Device")):
        out += icon(recipe, x, 44, 80) + text(title, x + 40, height - 30, 13, DEEP, "bold", "middle")
    return out + arrow(124, 84, 190, 84, BLUE) + arrow(290, 84, 356, 84, BLUE)


def empty_list(width, height):
    out = ""
    for i, opacity in enumerate((0.9, 0.6, 0.35)):
        y = 24 + i * 38
        out += rect(30, y, width - 60, 28, "#dde3e9", 6, opacity=opacity)
        out += dot(48, y + 14, 7, "#aab3bd", opacity) + rect(64, y + 10, width - 136 - i * 24, 8, "#aab3bd", 4, opacity=opacity)
    return out + icon("zoom", width - 96, height - 92, 72)


def error_indicator(width, height):
    return icon("error", 0, 0, width)


def ip_upgrade(width, height):
    """A window with components, some of which wait for an upgrade."""
    out = rect(1, 1, width - 2, height - 2, "#ffffff", 6, stroke="#74808e") + rect(1, 1, width - 2, 30, BLUE, 6)
    out += rect(1, 16, width - 2, 15, BLUE) + text("Upgrade components", 14, 21, 13, "#ffffff", "bold")
    out += rect(14, 42, width - 28, 24, "#e6eaee")
    for x, title in ((48, "Component"), (236, "Version"), (328, "Status")):
        out += text(title, x, 58, 11, "#56626f", "bold")
    rows = (
        ("cube_ip +warning", "clock_manager", "3.1", "Upgrade required", "o"),
        ("cube_ip +check", "fifo_controller", "4.0", "Up to date", "g"),
        ("cube_ip +warning", "serial_bridge", "2.7", "Upgrade required", "o"),
        ("cube_ip +up", "memory_port", "3.9", "Upgrade optional", "b"),
    )
    for i, (recipe, name, version, status, accent) in enumerate(rows):
        y = 70 + i * 34
        out += rect(14, y, width - 28, 32, "#f8fafc" if i % 2 else "#ffffff") + icon(recipe, 20, y + 5, 22)
        out += text(name, 48, y + 21, 12, "#2c3640") + text(version, 236, y + 21, 12, "#2c3640")
        out += text(status, 328, y + 21, 12, ACCENTS[accent][1])
    out += rect(width - 214, height - 46, 96, 30, "#e6eaee", 5, stroke="#aab3bd") + text("Close", width - 166, height - 26, 12, "#2c3640", "normal", "middle")
    out += rect(width - 110, height - 46, 96, 30, BLUE, 5) + text("Upgrade all", width - 62, height - 26, 12, "#ffffff", "bold", "middle")
    return out


def korvex_logo(width, height):
    """Word mark alone, its letters as lines, so that it needs no font."""
    out = path("M8 40L30 10L52 40L30 70Z", fill=BLUE) + path("M22 40L30 29L38 40L30 51Z", fill="#ffffff")
    out += path("M30 10V29M52 40H38", stroke=SUN, width=4)
    return out + word("KORVEX", 76, 22, 36, BLUE, 2.6)


def beta_tile(width, height):
    """Repeats without a seam in both directions."""
    out = rect(0, 0, width, height, "#2b6cb0")
    for i in range(-2, 4):
        x = i * width / 2
        out += path(f"M{x} {height}L{x + width} 0", stroke="#3a7cc2", width=26)
    for x, y in ((30, 36), (30 + width / 2, 36 + height / 2)):
        for dx in (-width, 0, width):
            for dy in (-height, 0, height):
                out += f'<g transform="rotate(-45 {x + dx + 30} {y + dy + 8})">'
                out += word("BETA", x + dx, y + dy, 15, "#9cc8f2", 2.2, opacity=0.75) + "</g>"
    return out


BANNERS = {
    "tolv_wizard_banner": ("wand", "Wizard", 2),
    "tolv_new_project_banner": ("project +plus", "New project", 31),
    "tolv_device_banner": ("chip", "Device", 32),
    "tolv_programmer_banner": ("programmer", "Programmer", 33),
    "tolv_simulation_banner": ("waves", "Simulation", 34),
    "tolv_ip_catalog_banner": ("cubes", "Component catalogue", 35),
}

PICTURES = {
    "tolv_splash_screen": (splash, 640, 400),
    "tolv_about_banner": (about_banner, 480, 120),
    "tolv_wizard_watermark": (wizard_watermark, 164, 340),
    "tolv_documentation_url": (link_picture("books", "Documentation", "Guides and reference"), 260, 68),
    "tolv_notification_center": (link_picture("bell", "Notifications", "News for your design"), 260, 68),
    "tolv_mdi_watermark": (mdi_watermark, 420, 340),
    "tolv_welcome_screen": (welcome, 800, 520),
    "tolv_out_of_date_watermark": (stamp("OUT OF DATE", "#c0392b"), 460, 170),
    "tolv_mwpim_cec": (mwpim_cec, 480, 200),
    "tolv_mwpim_config": (mwpim_config, 480, 200),
    "tolv_web_welcome_screen": (web_welcome, 800, 520),
    "tolv_empty_list": (empty_list, 260, 180),
    "tolv_preview_watermark": (stamp("PREVIEW", "#2f82d6"), 460, 170),
    "tolv_tedq_error_indicator": (error_indicator, 24, 24),
    "tolv_ip_upgrade_screenshot": (ip_upgrade, 480, 264),
    "tolv_korvex_logo": (korvex_logo, 320, 80),
    "tolv_beta": (beta_tile, 160, 160),
}
PICTURES.update({name: (banner(*what), 520, 64) for name, what in BANNERS.items()})


def main():
    if len(sys.argv) != 2:
        raise SystemExit(__doc__)
    for folder in ("sources", "pixmaps"):
        os.makedirs(os.path.join(FOLDER, folder), exist_ok=True)
    commands = ""
    for name, (draw, width, height) in PICTURES.items():
        content = draw(width, height)
        is_vector = name == "tolv_korvex_logo"
        source = os.path.join(FOLDER, "pixmaps" if is_vector else "sources", f"{name}.svg")
        with open(source, "w", encoding="ascii") as file:
            file.write(
                f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
                f'viewBox="0 0 {width} {height}">{content}</svg>\n'
            )
        if not is_vector:
            target = os.path.join(FOLDER, "icons" if name == "tolv_beta" else "pixmaps", f"{name}.png")
            commands += f"{source} {target} {width} {height}\n"
    subprocess.run([sys.argv[1], "render"], input=commands, text=True, check=True)


if __name__ == "__main__":
    main()
