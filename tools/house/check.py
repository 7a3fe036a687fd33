#!/usr/bin/env python3
"""Checks the house rules of the source tree and prints its worst places.

    tools/house/check.py [--root DIR] CHECK...      one or more of the names below, or "all"

Ends with 1 if a rule is broken. Each check is a function below; its first line is its rule.
"""
import argparse
import os
import re
import subprocess
import sys

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import declarations  # noqa: E402
import handing as handed_on  # noqa: E402
import source  # noqa: E402
import texts as shown_texts  # noqa: E402

SOURCE_LINES = 600
HEADER_LINES = 300
FUNCTION_LINES = 80
CONNECTS = 25
LOGIC_SHARE = 50
TEST_RATIO = 0.6
DOCUMENTED_PORTS = 100  # Per cent.
DOCUMENTED_LOGIC = 60  # Per cent.

# From the bottom up; a folder includes its own floor and those below it.
FLOORS = [["platform"], ["app", "resources"], ["help", "widgets"], ["library", "inspect"], ["scanner", "browser", "tree"],
          ["playback", "editing", "extras", "output"], ["mainwindow"], ["main"]]
FLOOR = {room: number for number, rooms in enumerate(FLOORS) for room in rooms}

# Data, not code: the tables of texts.
TABLES = "src/resources/"


def worst(title, rows, count=5):
    print(f"{title}: " + "; ".join(f"{value} {name}" for value, name in sorted(rows, reverse=True)[:count]))


def sizes(root):
    """Sources have at most 600 lines, headers 300, functions 80 unless a comment says "Long because"."""
    broken = []
    files, spans = [], []
    for path in source.walk(root, ["src", "tests", "bench", "tools"], source.CODE):
        text = source.read(root, path)
        lines = len(text.splitlines())
        limit = HEADER_LINES if path.endswith(".h") else SOURCE_LINES
        if not path.startswith(TABLES):
            files.append((lines, path))
            if lines > limit:
                broken.append(f"{path}: {lines} lines, at most {limit}")
        rows = text.splitlines()
        for function in source.functions(text):
            spans.append((function.lines, f"{path}:{function.first} {function.name}"))
            if function.lines > FUNCTION_LINES:
                above = function.first - 2
                while above >= 0 and rows[above].lstrip().startswith("//"):
                    above -= 1
                comment = " ".join(rows[above + 1:function.first - 1])
                if "Long because" not in comment:
                    broken.append(f"{path}:{function.first}: {function.name} has {function.lines} lines, "
                                  f"at most {FUNCTION_LINES}")
    worst("Longest files", files)
    worst("Longest functions", spans)
    return broken


# Signals that are connected, and commands that are registered under the names of their items.
CONNECTION = re.compile(r"\bconnect\s*\(|\bRegister(?:ForScan|Mark|MarkPair)?\s*\(")


def connects(root):
    """A class makes at most 25 connections of signals and registrations of commands."""
    counts = {}
    for path in source.walk(root, ["src"], source.CODE):
        for function in source.functions(source.read(root, path)):
            calls = len(CONNECTION.findall(function.body))
            owner = function.owner or f"{path} (no class)"
            counts[owner] = counts.get(owner, 0) + calls
    worst("Most connections", [(number, owner) for owner, number in counts.items() if number])
    return [f"{owner}: {number} connections, at most {CONNECTS}" for owner, number in counts.items()
            if number > CONNECTS]


def find_cycles(graph):
    """Groups of nodes that reach each other (Tarjan's components with more than one node, or a self-loop)."""
    index, low, on_stack, stack, found = {}, {}, set(), [], []

    def visit(node):
        index[node] = low[node] = len(index)
        stack.append(node)
        on_stack.add(node)
        for other in graph.get(node, ()):
            if other not in index:
                visit(other)
                low[node] = min(low[node], low[other])
            elif other in on_stack:
                low[node] = min(low[node], index[other])
        if low[node] == index[node]:
            group = []
            while True:
                member = stack.pop()
                on_stack.discard(member)
                group.append(member)
                if member == node:
                    break
            if len(group) > 1 or node in graph.get(node, ()):
                found.append(sorted(group))

    sys.setrecursionlimit(10000)
    for node in graph:
        if node not in index:
            visit(node)
    return found


def cycles(root):
    """No file includes itself over others, no source with its header uses itself over others, and no folder."""
    tree = source.Tree(root)
    files = {path: tree.own_includes(path) for path in tree.files}
    folders, pairs = {}, {}
    for path, others in files.items():
        room, pair = tree.room(path), os.path.splitext(path)[0]
        folders.setdefault(room, set()).update(tree.room(other) for other in others if tree.room(other) != room)
        pairs.setdefault(pair, set()).update({os.path.splitext(other)[0] for other in others} - {pair})
    print(f"Include graph: {len(files)} files, {sum(map(len, files.values()))} includes, {len(folders)} folders")
    circles = find_cycles(files)
    told = [{os.path.splitext(path)[0] for path in group} for group in circles]
    return [f"files include each other: {' '.join(group)}" for group in circles] + [
        f"sources with their headers use each other: {' '.join(group)}" for group in find_cycles(pairs)
        if set(group) not in told] + [
        f"folders depend on each other: {' '.join(group)}" for group in find_cycles(folders)]


def layers(root):
    """Folders include downwards only; adapters include platform and app; the logic sees no library and no system.

    The logic includes nothing but itself and the standard library, no header of POSIX or Linux either. Adapters are seen by programs' own sources (main.cpp and its like), which put the pieces together, and
    adapters/qt by the forms as well.
    """
    tree = source.Tree(root)
    broken = []
    for path in tree.files:
        room, logic = tree.room(path), tree.is_logic(path)
        if path.endswith(".cpp") and path not in tree.targets:
            broken.append(f"{path}: no CMakeLists.txt of its folder compiles it")
        if not tree.is_adapter(path) and room not in FLOOR:
            broken.append(f"{path}: the folder {room} has no floor in the order of folders")
            continue
        for other in tree.own_includes(path):
            other_room = tree.room(other)
            if tree.is_adapter(path):
                if other_room not in (room, "platform", "app"):
                    broken.append(f"{path}: an adapter includes {other}")
            elif tree.is_adapter(other):
                if logic:
                    broken.append(f"{path}: the logic includes the adapter's {other}")
                elif path not in tree.programs and room != "main" and other_room != "adapters/qt":
                    broken.append(f"{path}: a form includes the adapter's {other}")
            elif FLOOR.get(other_room, 0) > FLOOR[room]:
                broken.append(f"{path}: includes {other} from a higher floor")
            elif logic and not tree.is_logic(other):
                broken.append(f"{path}: the logic includes {other}, which uses Qt")
        if logic:
            broken += [f"{path}: the logic includes <{name}>" for name in tree.foreign_includes(path)]
    print(f"Layers: {sum(map(tree.is_logic, tree.files))} files of logic, "
          f"{sum(map(tree.is_adapter, tree.files))} of adapters, {len(tree.files)} in all")
    return broken


def share(root):
    """At least half of the code (aim: 60 %) knows no Qt; the tables of texts do not count."""
    tree = source.Tree(root)
    counted = [path for path in tree.files if not path.startswith(TABLES)]
    lines = {path: len(tree.text[path].splitlines()) for path in counted}
    total = sum(lines.values())
    without_qt = sum(lines[path] for path in counted if not tree.uses_qt(path))
    logic = sum(lines[path] for path in counted if tree.is_logic(path))
    if total == 0:
        return ["there is no code in src"]
    print(f"Share: {100 * without_qt / total:.0f} % of {total} lines know no Qt (logic alone {100 * logic / total:.0f} %)")
    return [f"{100 * without_qt / total:.1f} % of the lines know no Qt, at least {LOGIC_SHARE} %"] \
        if without_qt * 100 < total * LOGIC_SHARE else []


def ratio(root):
    """The tests have at least 0.6 lines (aim: 0.8) for each line of code; the tables do not count."""
    code = sum(source.line_count(root, path) for path in source.walk(root, ["src"], source.CODE)
               if not path.startswith(TABLES))
    tests = sum(source.line_count(root, path) for path in source.walk(root, ["tests"], source.CODE + (".py", ".sh")))
    if code == 0:
        return ["there is no code in src"]
    print(f"Tests: {tests} lines for {code} lines of code, ratio {tests / code:.2f}")
    return [f"ratio of tests to code {tests / code:.2f}, at least {TEST_RATIO}"] if tests < code * TEST_RATIO else []


PLAIN_ENGLISH = (".py", ".sh", ".md", ".txt", ".ui", ".sql", ".xml", ".html", ".supp", "run")

# (folders, endings of files, what, why)
WORDS = [
    (("src", "bench"), (".cpp", ".h", ".txt", ".ui", ".sql"),
     re.compile(r"\b(?:TODO|FIXME|XXX)\b|\b[Nn]ot implemented|\b[Ss]tub\b"), "marks unfinished work"),
    (("tests",), (".cpp", ".h"), re.compile(r"GTEST_SKIP|QSKIP|DISABLED_|EXPECT_TRUE\(true\)|SUCCEED\(\)"),
     "is a test that cannot fail"),
    (("src", "tests", "bench", "tools", "docs", "packaging"),
     source.CODE + (".py", ".sh", ".md", ".txt", ".ui", ".sql"), re.compile(r"\bPart \d+\.\d+\b"),
     "points at something that other readers do not have"),
    (("src",), (".h",), re.compile(r"^using namespace\b"), "opens a namespace for whole files"),
    (("src", "tests", "bench", "fuzz", "tools", "docs", "packaging"), source.CODE + PLAIN_ENGLISH,
     re.compile(r"\b[Aa]new\b|\b[Nn]o UTF-?8\b|\b[Mm]end(?:s|ed|ing)?\b"), "is odd English: again, not UTF-8, fixed"),
]


def words(root):
    """No marks of unfinished work, no tests that cannot fail, no pointers out of the tree, no odd English."""
    broken, seen = [], 0
    for folders, endings, pattern, why in WORDS:
        for path in source.walk(root, folders, endings):
            if path.startswith(("tools/house/", "tests/house/")):
                continue
            seen += 1
            for number, line in enumerate(source.read(root, path).splitlines(), 1):
                hit = pattern.search(line)
                if hit:
                    broken.append(f"{path}:{number}: \"{hit.group(0)}\" {why}")
    print(f"Words: {seen} readings")
    return broken


def handing(root):
    """No text reaches a shell, a format, markup, an address opener or the network."""
    return handed_on.check(root)


def layout(root):
    """Code is laid out by clang-format."""
    files = source.walk(root, ["src", "tests", "bench", "tools"], source.CODE)
    if not files:
        return ["there is no code to look at"]
    run = subprocess.run(["clang-format", "--dry-run", "-Werror", *files], cwd=root, text=True, capture_output=True)
    bad = sorted(set(re.findall(r"^([^\s:]+):\d+:\d+: error", run.stderr, re.M)))
    print(f"Layout: {len(files)} files")
    if run.returncode and not bad:
        return [run.stderr.strip() or "clang-format failed"]
    return [f"{path}: run clang-format -i" for path in bad]


def privates(root):
    """In one folder no two sources give the same name to things of their own: a unity build reads them as one."""
    owners = {}
    for path in source.walk(root, ["src", "tests"], (".cpp",)):
        for name in source.private_names(source.read(root, path)):
            owners.setdefault((os.path.dirname(path), name), []).append(os.path.basename(path))
    print(f"Private names: {len(owners)}")
    # A function may share its name with functions of other types, with nothing else.
    for folder, name in list(owners):
        plain = name.split("(")[0]
        if plain != name and (folder, plain) in owners:
            owners[folder, plain] += owners[folder, name]
    return [f"{folder}: {name} in {', '.join(sorted(set(files)))}" for (folder, name), files in sorted(owners.items())
            if len(set(files)) > 1]


def documented(root):
    """A comment tells about the public declarations of the ports, and about 60 % of those of the rest of the logic."""
    tree = source.Tree(root)
    broken = []
    headers = [path for path in tree.files if path.endswith(".h")]
    ports = [path for path in headers if path.startswith("src/platform/")]
    logic = [path for path in headers if path not in ports and tree.is_logic(path)]
    for what, paths, wanted in (("ports", ports, DOCUMENTED_PORTS), ("rest of the logic", logic, DOCUMENTED_LOGIC)):
        found = [(path, declaration) for path in paths for declaration in declarations.of_header(root, path)]
        silent = [f"{path}:{declaration.line} {declaration.name}" for path, declaration in found
                  if not declaration.documented]
        share = 100 * (len(found) - len(silent)) / len(found) if found else 100
        print(f"Documented: {what} {share:.0f} % of {len(found)}")
        if share < wanted:
            broken.append(f"{what}: {share:.0f} % documented, at least {wanted} %; for example {'; '.join(silent[:5])}")
    return broken


# A colour that is named in a source, a form or a style sheet, or made see-through; a role of the desktop's that is
# too faint for lines.
COLOUR = re.compile(
    r"""\bQColor\s*(?:\w+\s*)?[({]\s*["'\d]"""
    r"""|\bfrom(?:Rgb|Rgba|Rgba64|RgbF|RgbaF|Hsv|HsvF|Hsl|HslF|String)\(\s*["'\d]|\bqRgba?\s*\(|\bsetAlphaF?\s*\("""
    r"""|\bQt::(?:black|white|(?:dark|light)?(?:red|green|blue|cyan|magenta|yellow|gray|Red|Green|Blue|Cyan|Magenta"""
    r"""|Yellow|Gray))\b|\bQPalette::(?:Mid|Midlight|Light|Dark|Shadow)\b|#[0-9a-fA-F]{6}\b""")
COLOURS = {"src/widgets/Colours.cpp": "the table", "src/adapters/qt/PaintedPages.cpp": "ink on paper"}


def colours(root):
    """The program's own colours are in one table, whose contrasts a test computes; nothing else names any."""
    broken, seen = [], 0
    for path in source.walk(root, ["src"], (*source.CODE, ".ui", ".css")):
        if path in COLOURS:
            continue
        seen += 1
        text = source.read(root, path)
        for number, line in enumerate((source.without_comments(text) if path.endswith(source.CODE) else text).splitlines(), 1):
            hit = COLOUR.search(line)
            if hit:
                broken.append(f"{path}:{number}: \"{hit.group(0)}\" is a colour of its own; it belongs into widgets/Colours")
    print(f"Colours: {seen} files")
    return broken


def texts(root):
    """What a user reads is in the string tables, apart from the few literals that texts.py allows."""
    return shown_texts.check(root)


CHECKS = {"sizes": sizes, "connects": connects, "cycles": cycles, "layers": layers, "share": share,
          "ratio": ratio, "words": words, "texts": texts, "colours": colours, "handing": handing, "privates": privates,
          "documented": documented,
          "format": layout}


def main(arguments):
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--root", default=os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
    parser.add_argument("checks", nargs="+", choices=[*CHECKS, "all"])
    options = parser.parse_args(arguments)
    names = list(CHECKS) if "all" in options.checks else options.checks
    broken = []
    for name in names:
        broken += [f"{name}: {line}" for line in CHECKS[name](os.path.normpath(options.root))]
    for line in broken:
        print(f"BROKEN {line}")
    print("House rules kept." if not broken else f"{len(broken)} broken. {CHECKS[names[0]].__doc__.splitlines()[0]}")
    return 1 if broken else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
