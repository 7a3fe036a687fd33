"""Which public declarations of a header a comment tells something about.

Like source.py good enough for code that clang-format has laid out.
"""
import os
import re
from dataclasses import dataclass

import source


@dataclass
class Declaration:
    name: str
    line: int
    documented: bool  # a comment above it or the run of lines that it is in, or after it on its own lines


_CLASS_HEAD = re.compile(r"^\s*(?:template\s*<[^{;]*>\s*)?(class|struct|union)\s+(\w+)[^;()]*$", re.S)
_UNCOUNTED = re.compile(r"\b(?:override|friend|using|static_assert|namespace|extern|operator)\b|=\s*(?:default|delete)\s*$|~")


def _declaration(text, plain, start, end, owner):
    """The declaration between two boundaries; None for what does not count, see public_declarations."""
    head = plain[start:end]
    begin = start + len(head) - len(head.lstrip())
    head = re.sub(r"\[\[[^\]]*\]\]", "", head)
    if not head.strip() or _UNCOUNTED.search(head):
        return None
    name = source.declared_name(head)
    if name is None or name == owner or name.startswith(f"{owner}(") or (owner and "(" not in name
                                                                         and not source.TYPE_HEAD.match(head)):
        return None
    first = text.count("\n", 0, begin)
    if re.match(r"\s*enum\b", head):
        end = max(end, plain.find("}", end))  # What its values are, is told of it.
    last = text.count("\n", 0, end)
    lines = text.splitlines()
    own = " ".join(lines[first:last + 1])
    return Declaration(name, first + 1, _told_above(lines, first) or "//" in re.sub(r'"[^"]*"', "", own))


_ONE_LINE = re.compile(r"^\s*(?:inline |constexpr |virtual |static |const )*[\w:<>,&* ]+[\w)\]=. ]*;$|^\s*[^/]*\)[^/]*(?:;|\{.*\})$")


def _told_above(lines, first):
    """Whether a comment is above a line, or above the run of declarations of one line each that it ends."""
    above = first - 1
    while above >= 0 and _ONE_LINE.match(lines[above]):
        above -= 1
    if above >= 0 and re.match(r"namespace \w+ \{", lines[above]):
        above -= 1
    return above >= 0 and lines[above].strip().startswith("//")


def public_declarations(text):
    """What a header offers: types, functions and constants in namespaces, types and functions in public parts of
    classes. Constructors, operators, overrides, fields and forward declarations tell nothing of their own."""
    plain = source.without_texts(text)
    plain = re.sub(r"\b(?:public|protected|private)\s*:", lambda m: m.group(0)[:-1] + ";", plain)
    found = []
    stack = []  # [owner's name or None for a namespace, public] for each open scope
    start = position = parens = 0

    def body_end(at):
        depth = 0
        for index in range(at, len(plain)):
            depth += (plain[index] == "{") - (plain[index] == "}")
            if depth == 0:
                return index
        return len(plain) - 1

    def keep(end):
        if all(public for _, public in stack):
            found.append(_declaration(text, plain, start, end, stack[-1][0] if stack else None))

    while position < len(plain):
        char = plain[position]
        parens += (char == "(") - (char == ")")
        head = plain[start:position]
        if parens == 0 and char == "{":
            if re.search(r"\bnamespace\b[^;]*$", head):
                stack.append([None, bool(re.search(r"namespace\s+\w", head))])
                start = position + 1
            elif _CLASS_HEAD.match(head) and "=" not in head:
                keep(position)
                stack.append([_CLASS_HEAD.match(head).group(2), _CLASS_HEAD.match(head).group(1) != "class"])
                start = position + 1
            else:  # a function's body, an enumeration, or a value in braces
                keep(position)
                position = body_end(position)
                while position + 1 < len(plain) and plain[position + 1] in " \n;":
                    position += 1
                start = position + 1
        elif parens == 0 and char == "}":
            if stack:
                stack.pop()
            start = position + 1
        elif parens == 0 and char == ";":
            access = re.fullmatch(r"\s*(public|protected|private)\s*", head)
            if access and stack:
                stack[-1][1] = access.group(1) == "public"
            elif not re.fullmatch(r"\s*(?:class|struct|enum(?:\s+class)?)\s+\w+\s*", head):
                keep(position)
            start = position + 1
        position += 1
    return [declaration for declaration in found if declaration]


def of_header(root, path):
    """The public declarations of a header; its opening comment tells about what has the file's name."""
    text = source.read(root, path)
    stem = os.path.basename(path)[:-len(".h")]
    found = public_declarations(text)
    for declaration in found:
        if text.startswith("//") and declaration.name.split("(")[0] == stem:
            declaration.documented = True
    return found
