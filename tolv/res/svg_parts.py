"""Reads the drawings of glyphs.txt, marks.txt and badges.txt and turns them into pieces of SVG.

Only what QtSvg draws is used: paths, circles, rectangles and groups with a transformation, no style sheets.
"""
import math
import os
import re

FOLDER = os.path.dirname(os.path.abspath(__file__))

# letter: area, dark edge, tint. Middle tones, so that an icon stands out from light and dark grounds alike.
ACCENTS = {
    "b": ("#2f82d6", "#1c5c9f", "#c4defa"),
    "g": ("#2fa35a", "#1d7340", "#c4ecd2"),
    "r": ("#dc483c", "#a02e25", "#fad0cb"),
    "o": ("#e58c1e", "#a9640f", "#fde0b6"),
    "p": ("#8f61c9", "#643a9b", "#e0d2f5"),
    "t": ("#189e9e", "#0c7071", "#bce8e7"),
    "y": ("#e2b21f", "#a07e10", "#fbecb4"),
    "k": ("#808c99", "#56626f", "#dde3e9"),
    "l": ("#aab3bd", "#8d98a3", "#e6eaee"),
    "m": ("#cd5494", "#963668", "#f6d0e3"),
}
NEUTRAL = "#74808e"
PAPER = "#f8fafc"

LINE_WIDTHS = {"f": 1, "n": 1.3, "s": 0.9, "a": 1.5, "e": 1, "t": 1.1, "d": 1.2, "w": 1.2}


def read_drawings(name):
    """The drawings of a file: name -> (the words behind it, [(accent or None, style, width or None, shape)])."""
    drawings = {}
    current = None
    with open(os.path.join(FOLDER, name), encoding="ascii") as file:
        for number, line in enumerate(file, 1):
            line = line.rstrip("\n")
            if not line or line.startswith("#"):
                continue
            if line.startswith("@"):
                words = line[1:].split()
                if words[0] in drawings:
                    raise SystemExit(f"{name}:{number}: {words[0]} stands twice")
                current = drawings[words[0]] = (words[1:], [])
                continue
            match = re.fullmatch(r"(?:([a-z]):)?([a-zA-Z])([.\d]*) (.+)", line)
            if match is None:
                raise SystemExit(f"{name}:{number}: not understood: {line}")
            current[1].append((match[1], match[2], float(match[3]) if match[3] else None, match[4]))
    return drawings


def number(value):
    text = f"{value:.2f}".rstrip("0").rstrip(".")
    if text.startswith("0."):
        return text[1:]
    return text.replace("-0.", "-.") if text != "-0" else "0"


def shape_element(shape, attributes):
    words = shape.split()
    if words[0] == "o":
        return f'<circle cx="{words[1]}" cy="{words[2]}" r="{words[3]}" {attributes}/>'
    if words[0] == "r":
        radius = f' rx="{words[5]}"' if len(words) > 5 else ""
        return f'<rect x="{words[1]}" y="{words[2]}" width="{words[3]}" height="{words[4]}"{radius} {attributes}/>'
    return f'<path d="{shape}" {attributes}/>'


def stroke(color, width):
    return f'stroke="{color}" stroke-width="{number(width)}"'


def glyph_element(accent, line):
    """One line of a drawing in the styles of glyphs.txt."""
    own_accent, style, width, shape = line
    area, edge, tint = ACCENTS[own_accent or accent]
    width = width or LINE_WIDTHS.get(style, 1)
    attributes = {
        "f": lambda: f'fill="{PAPER}" ' + stroke(NEUTRAL, width),
        "n": lambda: stroke(NEUTRAL, width),
        "s": lambda: stroke(NEUTRAL, width),
        "N": lambda: f'fill="{NEUTRAL}"',
        "a": lambda: stroke(area, width),
        "A": lambda: f'fill="{area}"',
        "e": lambda: f'fill="{area}" ' + stroke(edge, width),
        "t": lambda: f'fill="{tint}" ' + stroke(area, width),
        "T": lambda: f'fill="{tint}"',
        "d": lambda: stroke(edge, width),
        "D": lambda: f'fill="{edge}"',
        "w": lambda: stroke("#fff", width),
        "W": lambda: f'fill="{PAPER}"',
    }[style]()
    return shape_element(shape, attributes)


def halo_element(line):
    """The pale rim of one line of a badge."""
    style, width, shape = line[1], line[2], line[3]
    filled = style in "fNAetTDW"
    line_width = (width or LINE_WIDTHS.get(style, 0)) if style in LINE_WIDTHS else 0
    return shape_element(shape, ('fill="#fff" ' if filled else "") + stroke("#fff", line_width + 1.5))


def group(content, x, y, scale=1.0):
    transform = f"translate({number(x)} {number(y)})" + (f" scale({number(scale)})" if scale != 1 else "")
    return f'<g transform="{transform}">{content}</g>'


class PARTS:
    """All drawings, and how they are put together."""

    def __init__(self):
        self.glyphs = read_drawings("glyphs.txt")
        self.marks = read_drawings("marks.txt")
        self.badges = read_drawings("badges.txt")

    def mark(self, name, color, ground, x, y, scale, width):
        """A mark of one colour; `width` is that of its lines in the icon."""
        out = []
        for _, style, own_width, shape in self.marks[name][1]:
            line = stroke(color if style == "s" else ground, (own_width or width) / scale)
            fill = f'fill="{color if style == "F" else ground}"'
            out.append(shape_element(shape, line if style in "sh" else fill))
        return group("".join(out), x, y, scale)

    def badge(self, name, accent, corner):
        words, lines = self.badges[name]
        if words[0] == "disc":
            area, edge, _ = ACCENTS[accent or words[1]]
            content = (
                '<circle cx="4" cy="4" r="4.5" fill="#fff"/>'
                + f'<circle cx="4" cy="4" r="3.5" fill="{area}" {stroke(edge, 0.6)}/>'
                + self.mark(words[2], "#fff", area, 1.72, 1.72, 0.57, 1.15)
            )
        else:
            content = "".join(map(halo_element, lines))
            content += "".join(glyph_element(accent or words[0], line) for line in lines)
        x = 7.7 if corner.endswith("r") else 0.3
        y = 7.7 if corner.startswith("b") else 0.3
        return group(content, x, y)

    def glyph(self, name, accent, mark):
        words, lines = self.glyphs[name]
        accent = accent or words[0]
        out = "".join(glyph_element(accent, line) for line in lines)
        if mark:
            out += self.mark_in_glyph(name, accent, mark)
        return out

    def mark_in_glyph(self, name, accent, mark):
        area, edge, _ = ACCENTS[accent]
        is_letters = mark in ("v", "vh", "sv", "edif")
        if name == "doc":
            return self.mark(mark, NEUTRAL if mark == "lines" else area, PAPER, 4.3, 6, 0.94, 1.15)
        if name == "unit":
            if is_letters:
                return self.mark(mark, "#fff", area, 2, 7.9, 1, 1.25)
            return self.mark(mark, "#fff", area, 5.4, 7.9, 0.65, 1.05)
        if name == "radix":
            return self.mark(mark, edge, PAPER, 4.2, 4, 1, 1.4)
        if name == "alu":
            return self.mark(mark, edge, PAPER, 6.8, 5.5, 0.62, 1.5)
        if name == "zoom_lens":
            return self.mark(mark, area, PAPER, 3.5, 3.5, 0.75, 1.4)
        if name == "status":
            return self.mark(mark, "#fff", area, 4.2, 4.2, 0.95, 1.8)
        if name == "flat":
            return self.mark(mark, "#fff", area, 3, 3, 1.25, 1.5)
        if name == "progress":
            return self.pie(int(mark), area)
        if name == "overlay":
            return self.badge(mark, None, "br")
        raise SystemExit(f"{name} takes no mark")

    @staticmethod
    def pie(quarters, color):
        if quarters == 0:
            return ""
        if quarters == 4:
            return f'<circle cx="8" cy="8" r="5" fill="{color}"/>'
        angle = math.pi / 2 * quarters
        x, y = 8 + 5 * math.sin(angle), 8 - 5 * math.cos(angle)
        large = int(quarters > 2)
        return f'<path d="M8 8V3A5 5 0 {large} 1 {number(x)} {number(y)}Z" fill="{color}"/>'

    def picture(self, recipe):
        """The content of an icon from its recipe: glyph[.accent][/mark][.accent] and badges."""
        out = ""
        for word in recipe:
            if word.startswith("+"):
                match = re.fullmatch(r"\+(\w+)(?:\.(\w))?(?:@(\w\w))?", word)
                out += self.badge(match[1], match[2], match[3] or "br")
            else:
                match = re.fullmatch(r"(\w+)(?:\.(\w))?(?:/(\w+))?(?:\.(\w))?", word)
                out += self.glyph(match[1], match[2] or match[4], match[3])
        return out


def svg_file(content, size=16):
    return (
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{size}" height="{size}" viewBox="0 0 16 16">'
        f'<g fill="none" stroke-linecap="round" stroke-linejoin="round">{content}</g></svg>\n'
    )
