#!/usr/bin/env python3
"""Compares the page that tells of the base services' names with their headers, and fails where the two differ.

usage: check_porting.py PAGE HEADER_FOLDER

Every class, function, public member function, type and constant of the folder's *.h (but *_p.h) must be named on the page. Every
declaration in the first column of a table there, below a heading that names headers, must stand in one of these headers
word by word.
"""

import pathlib
import re
import sys

KEYWORDS = {"if", "return", "sizeof", "static_assert", "operator", "defined", "memcmp", "decltype", "alignas", "static_cast"}


def get_code(text):
    """A header without comments, texts, preprocessor lines, attributes and what is private."""
    text = re.sub(r"//[^\n]*|\"(?:[^\"\\\n]|\\.)*\"", " ", text)
    text = re.sub(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", " ", text, flags=re.M)
    text = re.sub(r"__attribute__\s*\(\(.*?\)\)\)", " ", text)
    return re.sub(r"^private:.*?^};", "};", text, flags=re.M | re.S)


def get_names(code):
    """The names that a header's code declares."""
    names = set(re.findall(r"\b(?:class|struct|enum)\s+(?:TOLV_BASE_EXPORT\s+)?([A-Za-z_]\w*)\s*(?:final\s*)?[:{\n]", code))
    names |= set(re.findall(r"\busing\s+(\w+)\s*=", code))
    names |= set(re.findall(r"\b(?:constexpr|extern const)\s[^;=({]*?\b(\w+)\s*(?:=|;)", code))
    functions = re.findall(r"(~?)\b([A-Za-z_]\w*)\s*\(", re.sub(r"\{[^{}]*\breturn\b[^{}]*\}", ";", code))
    names |= {name for tilde, name in functions if not tilde and name not in KEYWORDS}
    return names - {"TOLV_BASE_EXPORT"}


def normalize(text):
    text = re.sub(r"//[^\n]*", " ", text)
    return re.sub(r"\s+", " ", text.replace("TOLV_BASE_EXPORT ", ""))


def main():
    page = pathlib.Path(sys.argv[1]).read_text()
    headers = {path.name: path.read_text() for path in sorted(pathlib.Path(sys.argv[2]).glob("*.h"))
               if not path.name.endswith("_p.h") and path.name != "base_export.h"}
    faults = []
    words = set(re.findall(r"[A-Za-z_]\w*", " ".join(re.findall(r"`([^`]*)`", page))))
    for name, text in headers.items():
        if f"`{name}`" not in page:
            faults.append(f"{name} is not on the page")
        faults += [f"{name}: {missing} is not on the page" for missing in sorted(get_names(get_code(text)) - words)]

    for section in re.split(r"^### ", page, flags=re.M)[1:]:
        heading, _, body = section.partition("\n")
        named = re.findall(r"`(\w+\.h)`", heading)
        declared = " ".join(normalize(headers.get(name, "")) for name in named)
        rows = re.findall(r"^\| `([^`]*)` \|", body, flags=re.M)
        if not rows:
            faults.append(f"no declaration below the heading '{heading}'")
        faults += [f"{', '.join(named)} have no '{row}'" for row in rows if normalize(row) not in declared]
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
