#!/usr/bin/env python3
"""Prints every public class and public operation of C++ headers that has no comment, and fails if there is one.

usage: check_docs.py HEADER_OR_FOLDER ...   (of a folder: its *.h but *_p.h)

What needs a comment: classes, structs and enums at namespace scope or public or protected in a class; free functions; member
functions that are public or protected; signals. What counts as one: a line beginning with "///" directly above the
declaration; "///<" behind it; or either of these at the declaration directly above, with no blank line between: the comment of a
group stands above its first declaration.

What needs none: constructors, destructors, assignment operators, deleted functions, overrides, friends, forward
declarations, macros, and all that is private.
"""

import pathlib
import re
import sys

LABEL = re.compile(r"^(public|protected|private|signals|Q_SIGNALS)(\s+(slots|Q_SLOTS))?$")
TYPE = re.compile(r"^(?:template\s*<.*>\s*)?(class|struct|union)\s+(?:\w+_EXPORT\s+)?(?:alignas\s*\([^)]*\)\s*)?([A-Za-z_]\w*)", re.S)
ENUM = re.compile(r"^enum\b(?:\s+(?:class|struct)\b)?\s*([A-Za-z_]\w*)?")
QT_MACRO = re.compile(r"^\s*Q_[A-Z_]+(\s*\(.*\))?\s*;?\s*$")


class Header:
    """The text of a header without comments, texts and preprocessor lines, and what its lines were."""

    def __init__(self, text):
        lines = text.split("\n")
        self.is_doc = [re.match(r"\s*///(?!/|<)", line) is not None for line in lines]
        self.has_trailing_doc = ["///<" in line for line in lines]
        self.code = self._blank(text)

    @staticmethod
    def _blank(text):
        """Replaces comments, texts, characters and preprocessor lines by blanks; lines keep their numbers."""

        def blanks(match):
            return re.sub(r"[^\n]", " ", match.group(0))

        text = re.sub(r"//[^\n]*|/\*.*?\*/|\"(?:[^\"\\\n]|\\.)*\"|(?<![0-9a-fA-F])'(?:[^'\\\n]|\\.)+'", blanks, text, flags=re.S)
        text = re.sub(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", blanks, text, flags=re.M)
        return "\n".join(re.sub(r"[^\n]", " ", line) if QT_MACRO.match(line) else line for line in text.split("\n"))


class Scope:
    """A namespace, or a class with the access in force."""

    def __init__(self, name="", access="public", is_class=False, hidden=False):
        self.name = name
        self.access = access
        self.is_class = is_class
        self.hidden = hidden  # inside something private
        self.last_line = -2  # where the declaration above ended
        self.last_covered = False

    def is_public(self):
        return not self.hidden and self.access != "private"


class Checker:
    def __init__(self, text):
        self.header = Header(text)
        self.faults = []  # (line, what)

    def run(self):
        code = self.header.code
        scopes = [Scope()]
        head, start = "", None
        position, line = 0, 0
        while position < len(code):
            character = code[position]
            if character == "\n":
                line += 1
            if start is None and not character.isspace() and character not in ";}":
                start = line
            if character == ":" and LABEL.match(head.strip()) and scopes[-1].is_class:
                word = LABEL.match(head.strip()).group(1)
                scopes[-1].access = "public" if word in ("signals", "Q_SIGNALS") else word
                scopes[-1].last_covered = False
                head, start = "", None
            elif character == ";":
                if start is not None:
                    self._declare(head.strip(), start, line, scopes[-1])
                head, start = "", None
            elif character == "}":
                if len(scopes) > 1:
                    closed = scopes.pop()
                    if closed.is_class:
                        scopes[-1].last_line = line
                        scopes[-1].last_covered = False
                head, start = "", None
            elif character == "{":
                scope = self._open(head.strip(), start, line, scopes[-1])
                if scope is not None:
                    scopes.append(scope)
                else:
                    begin = position
                    position = self._skip_braces(code, position)
                    line += code.count("\n", begin, position)
                    scopes[-1].last_line = line
                    rest = re.match(r"[ \t]*;", code[position + 1:])
                    if rest is not None:
                        position += rest.end()
                head, start = "", None
            else:
                head += character
            position += 1
        return self.faults

    @staticmethod
    def _skip_braces(code, position):
        """The position of the brace that closes the one here."""
        depth = 0
        while position < len(code):
            if code[position] == "{":
                depth += 1
            elif code[position] == "}":
                depth -= 1
                if depth == 0:
                    return position
            position += 1
        return position - 1

    def _open(self, head, start, line, scope):
        """What a brace opens: a scope to look into, or None for a body to skip."""
        if re.match(r"(inline\s+)?namespace\b", head) or re.match(r"extern\s*$", head):
            return Scope()
        enum = ENUM.match(head)
        if enum:
            self._check("enum " + (enum.group(1) or ""), start, line, scope)
            return None
        kind = TYPE.match(head)
        if kind and not self._is_function(head):
            self._check(kind.group(1) + " " + kind.group(2), start, line, scope)
            access = "private" if kind.group(1) == "class" else "public"
            return Scope(kind.group(2), access, True, not scope.is_public())
        self._declare(head, start, line, scope)
        return None

    def _declare(self, head, start, line, scope):
        """A declaration, or the head of a definition."""
        name = self._get_function(head)
        if name is None:
            covered = self._is_covered(start, line, scope)
            scope.last_line, scope.last_covered = line, covered
        elif self._is_exempt(head, name, scope):
            scope.last_covered = self._is_covered(start, line, scope)
            scope.last_line = line
        else:
            self._check(name + "()", start, line, scope)

    def _is_function(self, head):
        return self._get_function(head) is not None

    @staticmethod
    def _get_function(head):
        """The name of the function that is declared; None where it is something else."""
        if re.match(r"(using|typedef|static_assert|friend|extern\s+template|Q_[A-Z_]+\s*\()", head):
            return None
        head = re.sub(r"__attribute__\s*\(\(.*?\)\)\s*\)?|\[\[.*?\]\]|alignas\s*\([^)]*\)|noexcept\s*\([^)]*\)", " ", head, flags=re.S)
        operator = re.search(r"\boperator\s*(\(\s*\)|[^\s(]+|[A-Za-z_][\w:<>*& ]*)\s*\(", head)
        if operator:
            return "operator" + operator.group(1)
        depth = 0
        for index, character in enumerate(head):
            if character == "<":
                depth += 1
            elif character == ">":
                depth -= 1
            elif character == "=" and depth == 0:
                return None
            elif character == "(" and depth == 0:
                name = re.search(r"(~?\s*[A-Za-z_]\w*)\s*$", head[:index])
                return name.group(1).replace(" ", "") if name else None
        return None

    @staticmethod
    def _is_exempt(head, name, scope):
        if re.search(r"\b(override|final)\s*(=\s*0)?$", head) or re.search(r"=\s*delete$", head):
            return True
        if name == "operator=" or name.startswith("~"):
            return True
        if scope.is_class and name == scope.name:
            return True
        # A macro that stands for declarations.
        return re.match(r"^[A-Z][A-Z0-9_]*\s*\(", head) is not None

    def _is_covered(self, start, line, scope):
        if start > 0 and self.header.is_doc[start - 1]:
            return True
        if any(self.header.has_trailing_doc[start:line + 1]):
            return True
        return scope.last_covered and scope.last_line == start - 1

    def _check(self, what, start, line, scope):
        covered = self._is_covered(start, line, scope)
        scope.last_line, scope.last_covered = line, covered
        if scope.is_public() and not covered:
            self.faults.append((start + 1, (scope.name + "::" if scope.name else "") + what))


def check_text(text):
    """The faults of a header: pairs of line and what lacks a comment there."""
    return Checker(text).run()


def get_headers(arguments):
    for argument in arguments:
        path = pathlib.Path(argument)
        if path.is_dir():
            yield from sorted(each for each in path.glob("*.h") if not each.name.endswith("_p.h"))
        else:
            yield path


def main(arguments):
    if not arguments:
        print(__doc__, file=sys.stderr)
        return 2
    headers = list(get_headers(arguments))
    if not headers:
        print("no headers found", file=sys.stderr)
        return 2
    count = 0
    for path in headers:
        for line, what in check_text(path.read_text(encoding="utf-8")):
            print(f"{path}:{line}: {what} has no comment")
            count += 1
    print(f"{len(headers)} headers, {count} without a comment where one is due")
    return 1 if count else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
