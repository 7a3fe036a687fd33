"""What the commands on the tree, the details and the covers do to the library, told statement by statement and without
SQL: a second, slow answer that a killed library is held against. A command is a generator that changes the state and
yields after each statement that writes one of the tables Categories, FileCategories, Files and Covers."""
import copy
import os
import re

PAGES = 6


class Entry:
    def __init__(self, file, category, position, parent, name):
        self.file, self.category, self.position, self.parent, self.name = file, category, position, parent, name

    def fields(self):
        return (self.file, self.category, self.position, self.parent, self.name)


class State:
    """Keys are never given out twice."""

    def __init__(self, lines):
        self.categories, self.entries, self.files, self.covers = {}, {}, {}, {}
        for mark, *fields in (line.split("\t") for line in lines):
            if mark == "category":
                self.categories[int(fields[0])] = fields[1]
            elif mark == "entry":
                key, file, category, position, parent, name = fields
                self.entries[int(key)] = Entry(int(file), int(category), int(position), parent, name)
            elif mark == "file":
                self.files[int(fields[0])] = tuple(fields[1:])
            elif mark == "cover":
                self.covers[tuple(fields[:2])] = tuple(fields[2:])
        self.last_category = max(self.categories, default=0)
        self.last_entry = max(self.entries, default=0)
        self.last_file = max(self.files, default=0)

    def told(self):
        return (dict(self.categories), {key: entry.fields() for key, entry in self.entries.items()},
                {key: fields[1] for key, fields in self.files.items()})

    def texts(self):
        return {fields[1]: fields for fields in self.files.values()}, dict(self.covers)

    # What the commands look up.
    def file_of(self, path):
        return next((key for key, fields in sorted(self.files.items()) if fields[1] == path), None)

    def category_of(self, name):
        return next((key for key, text in sorted(self.categories.items()) if text == name), None)

    def children(self, category):
        return [key for key, entry in self.entries.items() if entry.category == category]

    def node(self, key):
        """Of an entry its id and the entry; of a category its id and nothing."""
        found = re.fullmatch(r"file(\d+)pos(-?\d+)", key)
        if found:
            return int(found[1]), self.entries[int(found[1])]
        return self.category_of(key[4:]), None

    def shown(self, entry):
        return self.files[entry.file][0]

    def home(self, entry):
        """The name of the category that shows the entry: the entry itself may name another one."""
        return self.categories[entry.category]

    def named(self, entry):
        """The first entry at the place of this one that was given the name that this one shows."""
        return next((key for key, other in sorted(self.entries.items()) if other.parent == self.home(entry) and
                     other.position == entry.position and other.name == self.shown(entry)), None)

    def is_bare(self, category):
        """Whether the tree shows the name alone, since no entry has a length for it."""
        return all(entry.parent != self.categories[category] for entry in self.entries.values())

    # Statements.
    def add_category(self, name):
        self.last_category += 1
        self.categories[self.last_category] = name
        return self.last_category

    def add_entry(self, file, category, position, parent, name):
        self.last_entry += 1
        self.entries[self.last_entry] = Entry(file, category, position, parent, name)

    def shift(self, by, chosen):
        for entry in self.entries.values():
            if chosen(entry):
                entry.position += by

    def add_unknown(self, path):
        """A file joins the library if it is not there yet."""
        if self.file_of(path) is None:
            self.last_file += 1
            self.files[self.last_file] = (os.path.basename(path), path)
            yield

    # Drops.
    def files_command(self, target, *paths):
        key, entry = self.node(target)
        position = entry.position if entry else len(self.children(key)) + 1
        parent = self.home(entry) if entry else self.categories[key]
        category = self.category_of(parent)
        for path in paths:
            if entry:
                self.shift(len(paths), lambda e: e.position >= position and e.parent == parent)
                yield
            yield from self.add_unknown(path)
            file = self.file_of(path)
            self.add_entry(file, category, position, parent, self.files[file][0])
            yield
            position += 1

    def rows_command(self, target, *paths):
        key, entry = self.node(target)
        position = entry.position if entry else len(self.children(key)) + 1
        parent = self.home(entry) if entry else self.categories[key]
        if entry:
            self.shift(len(paths), lambda e: e.position >= position and e.parent == parent)
            yield
        for number, path in enumerate(paths):
            file = self.file_of(path)
            self.add_entry(file, self.category_of(parent), position + number, parent, self.files[file][0])
            yield

    def entry_command(self, source, target, control):
        source_id, moved = self.node(source)
        key, onto = self.node(target)
        if onto is None:
            yield from (self.copy_to_category if control == "1" else self.move_to_category)(source_id, moved, key)
            return
        if self.shown(moved) == self.shown(onto):
            return
        first_target, first_source = self.named(onto), self.named(moved)
        if first_target is None or first_source is None:
            return
        category, position, parent = self.entries[first_target].category, onto.position, self.home(onto)
        if control == "1":
            file = self.entries[first_source].file
            self.shift(1, lambda e: e.position >= position and e.parent == parent)
            yield
            self.add_entry(file, category, position, parent, self.shown(moved))
            yield
        elif category == self.entries[first_source].category:
            yield from self.move_inside(moved, position, parent)
        else:
            yield from self.move_to_other(moved, category, position, parent)

    def move_inside(self, moved, to, parent):
        start, is_here = moved.position, moved.parent == parent
        if is_here:
            moved.position = 0
        yield
        if start <= to:
            self.shift(-1, lambda e: start < e.position <= to and e.parent == parent and e.position != 0)
        else:
            self.shift(1, lambda e: to <= e.position < start and e.parent == parent and e.position != 0)
        yield
        if is_here:
            moved.position = to
        yield

    def move_to_other(self, moved, category, to, parent):
        start, source = moved.position, self.home(moved)
        self.shift(1, lambda e: e.position >= to and e.parent == parent)
        yield
        self.shift(-1, lambda e: e.position > start and e.parent == source)
        yield
        if moved.parent == source and moved.name == self.shown(moved) and moved.position == start:
            moved.position, moved.category, moved.parent = to, category, parent
        yield

    def move_to_category(self, _, moved, category):
        start, source = moved.position, self.home(moved)
        if source == self.categories[category] and self.is_bare(category):
            return
        to = len(self.children(category)) + 1
        if moved.parent == source and moved.name == self.shown(moved):
            moved.position, moved.category, moved.parent = to, category, self.categories[category]
        yield
        self.shift(-1, lambda e: e.position > start and e.parent == source)
        yield

    def copy_to_category(self, _, copied, category):
        parent = self.categories[category]
        first = min((key for key, e in self.entries.items()
                     if e.parent == self.home(copied) and e.position == copied.position), default=None)
        if first is None:
            return
        highest = max((e.position for e in self.entries.values() if e.parent == parent), default=0)
        self.add_entry(self.entries[first].file, category, highest + 1, parent, self.shown(copied))
        yield

    def category_command(self, source, target, control):
        """A dragged category has no place that a statement could tell."""
        yield from ()

    def playlist_command(self, path):
        base = os.path.basename(path)[:-4]
        name, number = base, 0
        while self.category_of(name) is not None:
            number += 1
            name = base + str(number)
        category = self.add_category(name)
        yield
        position = 0
        with open(path, encoding="ascii") as file:
            lines = file.read().splitlines()
        for line in lines:
            if line.startswith("#") or not os.path.exists(line):
                continue
            yield from self.add_unknown(line)
            position += 1
            known = self.file_of(line)
            self.add_entry(known, category, position, base, self.files[known][0])
            yield

    # Commands of the tree's menu and dialogs.
    def delete_command(self, target):
        key, entry = self.node(target)
        if entry is None:
            yield from self.delete_category(key, 2)
            return
        first = self.named(entry)
        if first is None:
            return
        file, category, position = self.entries[first].file, entry.category, entry.position
        self.entries = {k: e for k, e in self.entries.items()
                        if (e.file, e.category, e.position) != (file, category, position)}
        yield
        self.shift(-1, lambda e: e.position > position and e.category == category)
        yield

    def delete_category(self, category, times):
        self.entries = {k: e for k, e in self.entries.items() if e.category != category}
        yield
        del self.categories[category]
        for _ in range(times):
            yield

    def clear_command(self, key):
        """The entries of a category that shows its length are not found. Those of another one name another category."""
        category = self.category_of(key[4:])
        if self.is_bare(category):
            shown = sorted((self.entries[key].position, key) for key in self.children(category))
            for name in [self.shown(self.entries[key]) for _, key in shown]:
                self.entries = {key: e for key, e in self.entries.items()
                                if (e.name, e.parent) != (name, self.categories[category])}
                yield

    def delete_all_command(self):
        self.entries = {}
        yield
        self.categories = {}
        yield

    def new_command(self, name):
        self.add_category(name)
        yield

    def rename_category_command(self, name):
        """Always the last one of the list."""
        last = max(self.categories)
        old = self.categories[last]
        for entry in self.entries.values():
            entry.parent = name if entry.parent == old else entry.parent
        yield
        self.categories[last] = name
        yield

    def delete_category_command(self, name):
        yield from self.delete_category(self.category_of(name), 1)

    def named_command(self, name, *paths):
        category = self.add_category(name)
        yield
        for number, path in enumerate(paths, 1):
            file = self.file_of(path)
            if file is not None:
                self.add_entry(file, category, number, name, self.files[file][0])
                yield

    def import_command(self, path):
        made, suffix, section = [], 0, ""
        with open(path, encoding="ascii") as file:
            lines = file.read().splitlines()
        for line in lines:
            if line.startswith("#"):
                section = line
            elif section == "#Categories":
                name = line + (str(suffix) if suffix else "")
                while self.category_of(name) is not None:
                    suffix += 1
                    name = line + str(suffix)
                made.append((self.add_category(name), name))
                yield
            else:
                position, parent, name, path = line.split(",")
                category, text = next((one for one in made if parent in one[1]), made[-1])
                if os.path.exists(path):
                    yield from self.add_unknown(path)
                file = self.file_of(path)
                if file is not None:
                    self.add_entry(file, category, int(position), text, name)
                    yield

    # Details and covers. A file: name, path, title, performer, album, genre.
    def save_command(self, path, text):
        if not path.endswith(".ogg"):
            key = self.file_of(path)
            self.files[key] = (*self.files[key][:2], text, text, text, "17")
            yield

    def rename_file_command(self, old, new):
        key = self.file_of(old)
        self.files[key] = (os.path.basename(new), new, *self.files[key][2:])
        yield

    def cover_command(self, album, page, path=""):
        """An image is the path of a file that is there: all are shown again when the album is selected."""
        key = tuple(album.split(" - ", 1))
        pages = list(self.covers.get(key, [""] * PAGES))
        pages[int(page)] = path
        self.covers[key] = tuple(pages)
        yield


COMMANDS = {"files": State.files_command, "rows": State.rows_command, "entry": State.entry_command,
            "playlist": State.playlist_command, "category": State.category_command,
            "clear": State.clear_command, "delete": State.delete_command, "delete all": State.delete_all_command,
            "new": State.new_command, "rename category": State.rename_category_command,
            "delete category": State.delete_category_command, "named": State.named_command,
            "import": State.import_command, "save": State.save_command, "rename": State.rename_file_command,
            "cover": State.cover_command}
WRITES = re.compile(r"(insert into|update|delete from) (categories|filecategories|files|covers)\b", re.I)


class Told:
    """A journal: commands with their statements, and how many statements a commit has brought to the file."""

    def __init__(self, path):
        self.commands, self.statements, self.committed = [], 0, 0
        with open(path, encoding="utf-8") as file:
            lines = [line for line in file.read().split("\n")[:-1]]
        for line in lines:
            mark, *fields = line.split("\t")
            if mark == "op":
                self.commands.append({"name": fields[0], "fields": fields[1:], "statements": 0, "over": False})
            elif mark == "sql" and WRITES.match(fields[0]):
                self.statements += 1
                self.commands[-1]["statements"] += 1
            elif mark == "committed":
                self.committed = self.statements
            elif mark == "done":
                self.commands[-1]["over"] = True


def states_of(start, told, view):
    """What the library may hold after the kill: pairs of the number of statements and the view of the state, from the last
    known commit on. Fails if a command that is over has sent other statements than the rules tell."""
    state, number, seen = copy.deepcopy(start), 0, []
    if told.committed == 0:
        seen.append((0, view(state), False))
    for command in told.commands:
        count = 0
        before = number
        for _ in COMMANDS[command["name"]](state, *[field for field in command["fields"]]):
            if not command["over"] and count == command["statements"]:
                break
            count += 1
            number += 1
            if number >= told.committed:
                seen.append((number, view(state), False))
        if count != command["statements"]:
            raise AssertionError(f"{command}: the rules tell {count} statements")
        if command["over"] and seen and number > before:
            seen[-1] = (*seen[-1][:2], True)  # No command is half done here.
    return seen
