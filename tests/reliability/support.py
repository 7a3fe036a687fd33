"""What the checks share: the helper program, the content of a library as it tells it, and the settings file."""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import urllib.parse

sys.path.insert(0, os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "e2e"))

HELPER = os.path.join(os.environ["QUAVERNET_HELPERS"], "reliability_helper")
SCAN_LOG = os.path.join(os.environ["QUAVERNET_HELPERS"], "reliability_scan_log")
CLIPBOARD = os.path.join(os.environ["QUAVERNET_HELPERS"], "reliability_clipboard")
COPY_NAME = re.compile(r"\.quavernet-[A-Za-z0-9]{6}")
ROW_FIELDS = ("path", "name", "size", "date", "length", "genre", "hits", "title", "performer", "album", "quality",
              "drive", "format")


class Content:
    """A library's rows (path to a tuple of the other fields, all bytes) and what is wrong with it."""

    def __init__(self, database):
        """Reads a copy: the program itself shall be the next to open what a killed run left."""
        with tempfile.TemporaryDirectory(prefix="quavernet-check-") as folder:
            for ending in ("", "-wal", "-shm", "-journal"):
                if os.path.exists(database + ending):
                    shutil.copy(database + ending, os.path.join(folder, "copy.db" + ending))
            told = subprocess.run([HELPER, "check", os.path.join(folder, "copy.db")], capture_output=True)
        if told.returncode != 0:
            raise AssertionError(f"{database} does not open: {told.stderr.decode(errors='replace')}")
        self.rows, self.problems, self.lookups, self.integrity, count = {}, [], set(), [], -1
        for line in told.stdout.decode("ascii").splitlines():
            mark, *fields = [urllib.parse.unquote_to_bytes(part) if "%" in part else part.encode()
                             for part in line.split("|")]
            if mark == b"row":
                self.rows[fields[0]] = tuple(fields[1:])
            elif mark == b"problem":
                self.problems.append(fields)
            elif mark == b"lookup":
                self.lookups.add((fields[0], fields[2]))
            elif mark == b"integrity":
                self.integrity.append(fields[0])
            elif mark == b"count":
                count = int(fields[0])
        if self.integrity != [b"ok"]:
            raise AssertionError(f"{database} fails the integrity check: {self.integrity[:5]}")
        if self.problems:
            raise AssertionError(f"{database} holds what does not fit together: {self.problems[:5]}")
        if count != len(self.rows):
            raise AssertionError(f"{database}: {count} files, of which {len(self.rows)} are whole")

    def row(self, path):
        """The row of a path as a dictionary of bytes; none if there is none."""
        key = path if isinstance(path, bytes) else path.encode()
        return dict(zip(ROW_FIELDS[1:], self.rows[key])) if key in self.rows else None


def clipboard(desktop):
    return subprocess.run([CLIPBOARD], env=desktop.environment, capture_output=True, check=True).stdout.decode()


def box_texts(desktop, box):
    """The texts of a failure box from above, read as its user can: a click into a text, mark all, copy. The buttons at
    the box's lower edge are left alone."""
    texts = []
    _, _, width, height = desktop.geometry(box)
    for y in range(20, height - 60, 20):
        desktop.click(box, width // 2, y)
        desktop.key("ctrl+a", "ctrl+c")
        text = clipboard(desktop)
        if text and text not in texts:
            texts.append(text)
    return texts


def expect_texts(test, box, *patterns):
    """Fails unless the box has just these texts, each given as a pattern for all of it. What is copied takes a moment to
    reach the clipboard, so a wrong answer is looked at again."""
    for _ in range(5):
        texts = box_texts(test.desktop, box)
        if len(texts) == len(patterns) and all(re.fullmatch(*pair, re.S) for pair in zip(patterns, texts)):
            return
    test.fail(f"the box says {texts!r} and not {patterns!r}")


def write_settings(home, **values):
    folder = os.path.join(home, ".config", "Greyfinch Labs")
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, "Quavernet.conf"), "w", encoding="utf-8") as file:
        file.write("[Settings]\n" + "".join(f"{name}={value}\n" for name, value in values.items()))


def left_copies(folder):
    """Copies that a killed writer has left."""
    return sorted(name for name in os.listdir(folder) if COPY_NAME.fullmatch(name))
