#!/usr/bin/env python3
"""Makes the font family "Korvex Clear" from Open Sans.

usage: make_fonts.py SOURCE_FOLDER TARGET_FOLDER

Open Sans comes under the Apache License 2.0, which allows changed copies that say so. Only the names are changed, and
the signature, which no longer fits, is left out; glyphs, metrics, hints and the notices of copyright, trademark and
licence stay as they are.
"""

import os
import sys

from fontTools.ttLib import TTFont, sfnt

FAMILY = "Korvex Clear"

# target file, source file, style. The first four styles are those that every tool knows; the others have a
# family of their own for old programs, and are styles of the one family for all others.
FONTS = [
    ("KorvexClear_Bd.ttf", "OpenSans-Bold.ttf", "Bold"),
    ("KorvexClear_BdIt.ttf", "OpenSans-BoldItalic.ttf", "Bold Italic"),
    ("KorvexClear_It.ttf", "OpenSans-Italic.ttf", "Italic"),
    ("KorvexClear_Rg.ttf", "OpenSans-Regular.ttf", "Regular"),
    ("korvex-clear-headline.woff", "OpenSans-Semibold.ttf", "Headline"),
    ("korvex-clear-latin-bold.woff", "OpenSans-Bold.ttf", "Bold"),
    ("korvex-clear-latin-lite.woff", "OpenSans-Light.ttf", "Lite"),
    ("korvex-clear-latin.woff", "OpenSans-Regular.ttf", "Regular"),
]
BASIC_STYLES = {"Regular", "Bold", "Italic", "Bold Italic"}

NAME_FAMILY, NAME_STYLE, NAME_ID, NAME_FULL, NAME_POSTSCRIPT, NAME_DESCRIPTION = 1, 2, 3, 4, 6, 10
NAME_WHOLE_FAMILY, NAME_WHOLE_STYLE = 16, 17
OTHER_NAMES_OF_THE_FONT = (16, 17, 18, 20, 21, 22, 25)


def names_of(style):
    is_basic = style in BASIC_STYLES
    names = {
        NAME_FAMILY: FAMILY if is_basic else f"{FAMILY} {style}",
        NAME_STYLE: style if is_basic else "Regular",
        NAME_ID: f"{FAMILY} {style}; names changed",
        NAME_FULL: f"{FAMILY} {style}",
        NAME_POSTSCRIPT: f"{FAMILY}-{style}".replace(" ", ""),
        NAME_DESCRIPTION: "Open Sans under another name. Glyphs and metrics are unchanged.",
    }
    if not is_basic:
        names[NAME_WHOLE_FAMILY] = FAMILY
        names[NAME_WHOLE_STYLE] = style
    return names


def rename(font, style):
    table = font["name"]
    places = {(record.platformID, record.platEncID, record.langID) for record in table.names}
    names = names_of(style)
    gone = set(names) | set(OTHER_NAMES_OF_THE_FONT)
    table.names = [record for record in table.names if record.nameID not in gone]
    for place in sorted(places):
        for name_id, text in names.items():
            table.setName(text, name_id, *place)


def main(source_folder, target_folder):
    os.makedirs(target_folder, exist_ok=True)
    # A .woff whose tables are packed is unpacked whole when a tool starts, 1.3 ms each; tables that would not shrink
    # stand in it as they are.
    sfnt.ZLIB_COMPRESSION_LEVEL = 0
    for target, source, style in FONTS:
        font = TTFont(os.path.join(source_folder, source), recalcTimestamp=False)
        rename(font, style)
        if "DSIG" in font:
            del font["DSIG"]
        if target.endswith(".woff"):
            font.flavor = "woff"
        font.save(os.path.join(target_folder, target))


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2])
