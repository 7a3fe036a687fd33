"""Reads a tree of C++ the way the house rules look at it: files, includes, CMake targets, functions.

Good enough for code that clang-format has laid out; it is no compiler.
"""
import os
import re
from dataclasses import dataclass, field

CODE = (".cpp", ".h")
LEFT_OUT = {".git", ".cache", "out", "__pycache__"}

# Adapters: one folder for each library that they wrap.
ADAPTERS = {"sqlite", "id3v2", "vorbis", "mpv", "posix", "qt"}

QT_INCLUDE = re.compile(r"^(Q[A-Z]\w*|Qt\w*/.*|ui_.*\.h)$")

# The headers of the standard library of C++20, and those of C in their C++ form. Whatever else stands in angle
# brackets belongs to a library or to the system (POSIX, Linux).
STANDARD = set("""
    algorithm any array atomic barrier bit bitset charconv chrono codecvt compare complex concepts condition_variable
    coroutine deque exception execution filesystem format forward_list fstream functional future initializer_list iomanip
    ios iosfwd iostream istream iterator latch limits list locale map memory memory_resource mutex new numbers numeric
    optional ostream queue random ranges ratio regex scoped_allocator semaphore set shared_mutex source_location span
    sstream stack stdexcept stop_token streambuf string string_view syncstream system_error thread tuple type_traits
    typeindex typeinfo unordered_map unordered_set utility valarray variant vector version
    cassert cctype cerrno cfenv cfloat cinttypes climits clocale cmath csetjmp csignal cstdarg cstddef cstdint cstdio
    cstdlib cstring ctime cuchar cwchar cwctype
""".split())


def walk(root, folders, endings):
    """Paths below the named folders, relative to the root, sorted."""
    found = []
    for folder in folders:
        for base, names, files in os.walk(os.path.join(root, folder)):
            names[:] = [n for n in names if n not in LEFT_OUT and not n.startswith("build")]
            found += [os.path.relpath(os.path.join(base, f), root) for f in files if f.endswith(endings)]
    return sorted(found)


def read(root, path):
    with open(os.path.join(root, path), encoding="utf-8", errors="replace") as file:
        return file.read()


def line_count(root, path):
    return len(read(root, path).splitlines())


_INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.M)


def includes(text):
    """(name, quoted) of each include line."""
    return [(m.group(2), m.group(1) == '"') for m in _INCLUDE.finditer(text)]


_BLANKED = re.compile(
    r'R"(?P<tag>[^\s()\\]{0,16})\(.*?\)(?P=tag)"'
    r"|//(?:[^\n\\]|\\.)*"
    r"|/\*.*?\*/"
    r'|"(?:[^"\\\n]|\\.)*"'
    r"|(?<![0-9a-fA-F])'(?:[^'\\\n]|\\.)+'",
    re.S,
)


def without_texts(text):
    """The text with comments and literals blanked out; line numbers stay."""
    blanked = _BLANKED.sub(lambda m: re.sub(r"[^\n]", " ", m.group(0)), text)
    return re.sub(r"^\s*#(?:[^\n\\]|\\\n|\\.)*", lambda m: re.sub(r"[^\n]", " ", m.group(0)), blanked, flags=re.M)


def without_comments(text):
    """The text with comments blanked out and literals as they are; line numbers stay."""
    return _BLANKED.sub(lambda m: re.sub(r"[^\n]", " ", m.group(0)) if m.group(0).startswith("/") else m.group(0), text)


@dataclass
class Function:
    name: str        # as it is in the file, with its class if that is written there
    first: int       # line of its head, from 1
    last: int        # line of its closing brace
    body: str
    classes: list = field(default_factory=list)

    @property
    def lines(self):
        return self.last - self.first + 1

    @property
    def owner(self):
        parts = self.name.split("::")
        return parts[-2] if len(parts) > 1 else (self.classes[-1] if self.classes else "")


_SCOPE = re.compile(r"\b(namespace|class|struct|union|enum|extern)\b([^;(){}]*)$")
_HEAD_NAME = re.compile(r"((?:[~\w]+(?:<[^<>]*>)?::)*(?:operator\s*[^\s(]{1,3}|operator\(\)|~?\w+))\s*\(")


def functions(text):
    """Bodies of functions in namespaces and classes; lambdas count to the function around them."""
    plain = without_texts(text)
    found = []
    classes = []
    stack = []   # one entry an open brace: ("scope", name) or ("function", head start, name) or ("other",)
    start = 0    # where the text since the last boundary begins
    depth_in_function = 0
    parens = 0
    for position, char in enumerate(plain):
        if char == "(":
            parens += 1
        elif char == ")":
            parens -= 1
        elif char == "{":
            head = plain[start:position]
            if depth_in_function:
                depth_in_function += 1
                stack.append(("other",))
                continue
            scope = _SCOPE.search(head.split(";")[-1])
            name = _HEAD_NAME.search(head)
            member_value = re.search(r"\)\s*(noexcept\s*)?:(?!:)", head) and re.search(r"\w$", head)
            if parens > 0 or member_value:
                stack.append(("other",))
            elif name and not re.search(r"=\s*$", head):
                depth_in_function = 1
                lead = len(head) - len(head.lstrip())
                stack.append(("function", start + lead, name.group(1), position))
            elif scope:
                words = re.findall(r"\w+", scope.group(2).split(":")[0])
                is_class = scope.group(1) in ("class", "struct", "union") and words
                stack.append(("scope", words[-1] if is_class else None))
                if is_class:
                    classes.append(words[-1])
                start = position + 1
            else:
                stack.append(("other",))
        elif char == "}":
            if not stack:
                continue
            top = stack.pop()
            if depth_in_function:
                depth_in_function -= 1
            if top[0] == "function":
                first = plain.count("\n", 0, top[1]) + 1
                last = plain.count("\n", 0, position) + 1
                found.append(Function(top[2], first, last, plain[top[3]:position + 1], list(classes)))
                start = position + 1
            elif top[0] == "scope":
                if top[1]:
                    classes.pop()
                start = position + 1
        elif char == ";" and not depth_in_function and parens == 0:
            start = position + 1
        elif char == ":" and not depth_in_function and re.search(r"\b(public|private|protected)\s*$|slots\s*$|"
                                                                 r"signals\s*$", plain[start:position]):
            start = position + 1
    return found


_TARGET_SOURCES = re.compile(r"(target_sources|add_executable|add_library)\s*\(\s*(\w+)([^)]*)\)", re.S)


def target_of_sources(root):
    """source path -> CMake target that compiles it, and the paths of programs' own sources, read from the
    folders' CMakeLists.txt."""
    result, programs = {}, set()
    for path in walk(root, ["src"], ("CMakeLists.txt",)):
        folder = os.path.dirname(path)
        text = re.sub(r"#[^\n]*", "", read(root, path))
        for match in _TARGET_SOURCES.finditer(text):
            for word in match.group(3).split():
                if word.endswith(".cpp"):
                    source = os.path.normpath(os.path.join(folder, word))
                    result[source] = match.group(2)
                    if match.group(1) == "add_executable":
                        programs.add(source)
    return result, programs


class Tree:
    """src/ with what the rules ask of it."""

    def __init__(self, root):
        self.root = root
        self.files = walk(root, ["src"], CODE)
        self.text = {path: read(root, path) for path in self.files}
        self.targets, self.programs = target_of_sources(root)

    def room(self, path):
        """Folder of a file: "scanner", "adapters/sqlite"; "main" for what is in src itself."""
        parts = path.split("/")[1:-1]
        if not parts:
            return "main"
        if parts[0] == "adapters" and len(parts) > 1:
            return "adapters/" + parts[1]
        return parts[0]

    def is_adapter(self, path):
        return self.room(path).startswith("adapters/")

    def _own(self, path, name):
        """The file of src/ that a name in an include of `path` means, or nothing."""
        for candidate in ("src/" + name, os.path.normpath(os.path.join(os.path.dirname(path), name))):
            if candidate in self.text:
                return candidate
        return None

    def own_includes(self, path):
        """Included files of src/, as paths from the root."""
        return [own for own in (self._own(path, name) for name, _quoted in includes(self.text[path])) if own]

    def includes_of(self, path, pattern):
        """Included names that match the pattern."""
        return [name for name, _quoted in includes(self.text[path]) if pattern.match(name)]

    def foreign_includes(self, path):
        """Included names that are neither files of src/ nor headers of the standard library."""
        return [name for name, quoted in includes(self.text[path])
                if name not in STANDARD and not (quoted and self._own(path, name))]

    def is_logic(self, path):
        """Compiled into the logic's target; a header goes with its source, or else by what it includes."""
        if self.is_adapter(path) or self.room(path) == "main":
            return False
        source = os.path.splitext(path)[0] + ".cpp"
        if source in self.targets:
            return self.targets[source] == "quavernet_logic"
        return not self.uses_qt(path)

    def uses_qt(self, path, seen=None):
        seen = seen if seen is not None else set()
        if path in seen:
            return False
        seen.add(path)
        source = os.path.splitext(path)[0] + ".cpp"
        if self.targets.get(source) in ("quavernet_forms", "quavernet_qt", "quavernet"):
            return True
        return bool(self.includes_of(path, QT_INCLUDE)) or any(
            self.uses_qt(other, seen) for other in self.own_includes(path))


TYPE_HEAD = re.compile(r"^\s*(?:template\s*<[^{;]*>\s*)?(?:struct|class|union|enum(?:\s+class|\s+struct)?)\s+(\w+)"
                           r"|^\s*using\s+(\w+)\s*=", re.S)
_PRIVATE_VALUE = re.compile(r"(\w+)\s*(?:\[[^\]]*\]\s*)*(?:=|$)")


def _types(parameters):
    """The types of a list of parameters, which tell functions of one name apart: the text without names."""
    depth, items = 0, [""]
    for char in parameters:
        if char == ")" and depth == 0:
            break
        depth += (char in "(<[{") - (char in ")>]}")
        if char == "," and depth == 0:
            items.append("")
        else:
            items[-1] += char
    named = re.compile(r"(?<=[\s&*>])\w+\s*$")
    return ", ".join(" ".join(named.sub("", item.split("=")[0].strip()).split()) for item in items)


def declared_name(head):
    """The name that a declaration gives, up to its body or semicolon, a function's with its types; None for what is
    no declaration."""
    type_name = TYPE_HEAD.match(head)
    if type_name:
        return type_name.group(1) or type_name.group(2)
    if re.match(r"\s*(?:using|namespace|static_assert|extern)\b", head):
        return None
    head = head.split("=")[0] if "(" not in head.split("=")[0] else head
    plain = re.sub(r"\b(?:decltype|alignas|noexcept)\s*\([^()]*\)", "", head)
    function = _HEAD_NAME.search(plain)
    if function:
        return None if "::" in function.group(1) else f"{function.group(1)}({_types(plain[function.end():])})"
    value = _PRIVATE_VALUE.search(head.strip())
    return value.group(1) if value and re.search(r"\w\W+\w", head) else None


def private_names(text):
    """Names directly in unnamed namespaces: types, functions, values."""
    plain = without_texts(text)
    names = set()
    for opening in re.finditer(r"\bnamespace\s*\{", plain):
        depth, parens, start = 1, 0, opening.end()
        for position in range(opening.end(), len(plain)):
            char = plain[position]
            parens += (char == "(") - (char == ")")
            if char == "{":
                if depth == 1 and parens == 0:
                    names.add(declared_name(plain[start:position]))
                depth += 1
            elif char == "}":
                depth -= 1
                if depth == 0:
                    break
                if depth == 1 and parens == 0:
                    start = position + 1
            elif char == ";" and depth == 1 and parens == 0:
                names.add(declared_name(plain[start:position]))
                start = position + 1
    return names - {None}
