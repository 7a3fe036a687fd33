"""Whatever has happened to the library's file, the program says what is wrong and where the copies lie, ends, and leaves
every byte as it was; what only takes a while it waits for.

    check_library_faults.py [--only NAME]... [--screen 1280x960] [--language GER|ENG] [--rounds N]

Without --only every fault is tried. A picture of each box is kept. File rights hold for ordinary users alone: the
superuser runs the program as another user for them.
"""
import argparse
import hashlib
import os
import random
import re
import shutil
import sqlite3
import subprocess
import sys
import threading
import time
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))
import desktop as desktop_module  # noqa: E402
from desktop import PROGRAM, ProgramTest, wait_until  # noqa: E402
from support import expect_texts  # noqa: E402

OPTIONS = argparse.Namespace()
NOBODY = 65534
OPEN_BOX = {"GER": "Datenbank Zugriff nicht möglich", "ENG": "Unable to access the database"}
END_BOX = {"GER": "Programm wird beendet", "ENG": "Program will exit"}
# What the boxes say: their first texts, and the sentences of which the second ones are made.
FIRST_TEXT = {
    OPEN_BOX["GER"]: "Auf Ihrem System muss mindestens MDAC ab Version 2.5 installiert sein!\n"
                     "Stellen Sie auch sicher, dass Microsoft Jet ab Version 4.0 installiert ist.\n"
                     "Jet 4.0 ist normalerweise Bestandteil von MDAC 2.5. Bei den Versionen 2.7 und 2.8 "
                     "müssen Sie Jet gegebenenfalls getrennt installieren!",
    OPEN_BOX["ENG"]: "At least MDAC version 2.5 must be installed on your system!\n"
                     "Please also make sure that Microsoft Jet version 4.0 or later is installed.\n"
                     "Jet 4.0 is usually part of MDAC 2.5. With versions 2.7 and 2.8 you may have to install Jet "
                     "separately!",
    END_BOX["GER"]: "Fehler beim Initialisieren der Datenbank!\nBitte wenden Sie sich an Ihren Systemadministrator oder "
                    "an den Hersteller des Produkts.\nDas Programm wird beendet.",
    END_BOX["ENG"]: "Error while initialising the database!\nPlease contact your system administrator or the vendor of "
                    "the product.\nThe program will now exit."}
REASONS = {
    "locked": {"GER": "Ein anderes Programm hält die Datenbank gesperrt. Beenden Sie es, und versuchen Sie es dann noch "
                      "einmal.",
               "ENG": "Another program keeps the database locked. Close it, then try again."},
    "damaged": {"GER": "Die Datenbank ist beschädigt.", "ENG": "The database is damaged."},
    "newer": {"GER": "Die Datenbank stammt von einer neueren Version von Quavernet. Öffnen Sie sie mit dieser Version.",
              "ENG": "The database was made by a newer version of Quavernet. Open it with that version."},
    "foreign": {"GER": "An der Stelle der Datenbank liegt eine Datei, die keine Datenbank von Quavernet ist.",
                "ENG": "The file in the database's place is not a Quavernet database."},
    "file read-only": {"GER": "Die Datenbank ist schreibgeschützt, oder Ihnen fehlt das Recht, sie zu ändern.",
                       "ENG": "The database is write-protected, or you have no right to change it."},
    "folder read-only": {"GER": "Der Ordner der Datenbank ist schreibgeschützt, oder Ihnen fehlt das Recht, darin zu "
                                "schreiben.",
                         "ENG": "The folder of the database is write-protected, or you have no right to write in it."},
    "folder": {"GER": "An der Stelle der Datenbank liegt ein Ordner.",
               "ENG": "There is a folder in the database's place."},
    "no plain file": {"GER": "An der Stelle der Datenbank liegt eine Verknüpfung, deren Ziel fehlt, oder etwas anderes als "
                             "eine gewöhnliche Datei.",
                      "ENG": "In the database's place there is a link that leads nowhere, or something other than a plain "
                             "file."}}
SOUND = ("locked", "newer", "file read-only", "folder read-only")  # No copy is to be put in such a library's place.
PLACE = {"GER": "Datenbank: ", "ENG": "Database: "}
COPIES = {"GER": "Daneben liegen Sicherungskopien, die neueste zuerst:",
          "ENG": "There are backup copies beside it, the newest first:"}
NO_COPIES = {"GER": "Sicherungskopien liegen nicht daneben.", "ENG": "There are no backup copies beside it."}
ADVICE = {"GER": "So holen Sie eine davon zurück: Verschieben Sie die Datenbank, zusammen mit den gleichnamigen Dateien auf "
                 "„-wal“ und „-shm“, falls es sie gibt, in einen anderen Ordner. Kopieren Sie dann die Sicherungskopie, "
                 "und geben Sie der Kopie den Namen der Datenbank.",
          "ENG": "To put one back: move the database, together with the files of the same name ending in \"-wal\" and "
                 "\"-shm\" if there are any, to another folder. Then copy the backup copy and give that copy the name of "
                 "the database."}


def digest(path):
    """What is at a path, whatever it is."""
    if os.path.islink(path):
        return "link to " + os.readlink(path)
    if os.path.isdir(path):
        return "folder of " + ",".join(sorted(os.listdir(path)))
    if not os.path.isfile(path):
        return f"mode {os.lstat(path).st_mode:o}"
    with open(path, "rb") as file:
        return hashlib.sha256(file.read()).hexdigest()


class LibraryFaults(ProgramTest):
    """Each test makes a fault in the library of a first start and looks at what the next start does."""

    @property
    def folder(self):
        return os.path.dirname(self.library.path)

    def state(self):
        """Every file of the library's folder (or what is in the documents' place), but for a log without content and
        the index of the log, which the engine makes again at will."""
        if not os.path.isdir(self.folder):
            return digest(os.path.join(self.home, "Dokumente"))
        return {name: digest(os.path.join(self.folder, name)) for name in sorted(os.listdir(self.folder))
                if not name.endswith("-shm") and not self.is_empty_log(name)}

    def is_empty_log(self, name):
        return name.endswith("-wal") and os.path.getsize(os.path.join(self.folder, name)) == 0

    def make_library(self):
        """A library of a few files from a real scan, with two backup copies, closed."""
        music, _ = self.make_music()
        self.settings({"Scanpath": music, "ScanpathValue": "1", "ScanLog": "0"})
        window = self.start()
        self.desktop.key("ctrl+s")
        wait_until("the end of the scan", lambda: "letzter scan: -" not in self.desktop.title(window)
                   and "letzter scan: " in self.desktop.title(window))
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)
        self.rows = self.library.files()
        self.assertTrue(self.rows)
        self.copy = os.path.join(self.folder, "Quavernet.backup1.db")
        shutil.copy(self.library.path, self.copy)  # that of the first scan is of the empty library
        older = os.path.join(self.folder, "Quavernet.backup2.db")
        shutil.copy(self.library.path, older)
        for path, date in ((self.copy, "2026-11-20 14:03:07"), (older, "2025-01-02 03:04:05")):
            moment = time.mktime(time.strptime(date, "%Y-%m-%d %H:%M:%S"))
            os.utime(path, (moment, moment))

    def details(self, reason, language=None):
        """The second text of a box as it has to be: a reason, the library's place, the copies that are there, with
        their dates, and how to put one back."""
        language = language or OPTIONS.language
        lines = []
        for number in (1, 2, 3):
            path = os.path.join(self.folder, f"Quavernet.backup{number}.db")
            if os.path.isfile(path):
                date = time.strftime("%d.%m.%Y %H:%M:%S", time.localtime(os.path.getmtime(path)))
                lines.append(f"\n{path} ({date})")
        text = REASONS[reason][language] + "\n" + PLACE[language] + self.library.path
        if lines:
            text += "\n\n" + COPIES[language] + "".join(lines)
        if reason not in SOUND:
            text += "\n\n" + (ADVICE if lines else NO_COPIES)[language]
        return text

    def settings(self, values):
        os.makedirs(os.path.join(self.home, ".config", "Greyfinch Labs"), exist_ok=True)
        path = os.path.join(self.home, ".config", "Greyfinch Labs", "Quavernet.conf")
        with open(path, "w", encoding="utf-8") as file:
            file.write("[Settings]\n" + "".join(f"{name}={value}\n" for name, value in values.items()))
        return path

    def launch(self, user=None):
        def become():
            if user is not None:
                os.setgid(user)
                os.setuid(user)
        self.program = subprocess.Popen([PROGRAM], env=self.desktop.environment, cwd="/", preexec_fn=become)

    def expect_box(self, title, name, details, user=None):
        """A start that ends in this box, with this pattern of a second text, and changes nothing."""
        before = self.state()
        self.launch(user)
        box = wait_until(f"the box {title!r}", lambda: self.box_or_end(title))
        self.desktop.picture(f"fault-{name}-{OPTIONS.language}-{OPTIONS.screen}")
        x, y, width, height = self.desktop.geometry(box)
        across, down = (int(number) for number in OPTIONS.screen.split("x"))
        self.assertTrue(width <= across and height <= down, f"a box of {width}x{height}")
        expect_texts(self, box, re.escape(FIRST_TEXT[title]), details)
        self.desktop.activate(box)
        self.desktop.key("Escape")
        code = self.ended()
        self.assertEqual(self.state(), before)
        return code

    def box_or_end(self, title):
        boxes = self.desktop.windows(f"^{title}$")
        if not boxes and self.program.poll() is not None:
            raise AssertionError(f"the program ended with {self.program.returncode} and no box {title!r}")
        return boxes[0] if boxes else None

    def expect_refused(self, name, reason, user=None):
        self.settings({"Language": OPTIONS.language})
        details = re.escape(self.details(reason))
        self.assertEqual(self.expect_box(OPEN_BOX[OPTIONS.language], name, details, user), 0)

    def expect_not_made(self, name, reason):
        self.settings({"Language": OPTIONS.language})
        self.assertEqual(self.expect_box(END_BOX[OPTIONS.language], name, re.escape(self.details(reason))), 0)

    def put_back(self):
        """What the box advises: the copy in the library's place."""
        for ending in ("", "-wal", "-shm"):
            path = self.library.path + ending
            if os.path.isdir(path):
                shutil.rmtree(path)
            elif os.path.lexists(path):
                os.remove(path)
        shutil.copy(self.copy, self.library.path)
        self.settings({"Language": "GER"})
        self.start()
        self.assertEqual(self.library.files(), self.rows)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)

    def change(self, change, path=None):
        with open(path or self.library.path, "r+b") as file:
            data = bytearray(file.read())
            data = change(data) or data
            file.seek(0)
            file.truncate()
            file.write(data)

    def leave_a_log(self):
        """A program killed while it scanned: its last rows are in the log alone."""
        connection = sqlite3.connect(self.library.path)
        connection.create_collation("QUAVERNET", lambda a, b: (a > b) - (a < b))
        pid = os.fork()
        if pid == 0:
            late = sqlite3.connect(self.library.path)
            late.create_collation("QUAVERNET", lambda a, b: (a > b) - (a < b))
            late.execute("insert into Categories (Category) values ('im Protokoll')")
            late.commit()
            os._exit(0)
        os.waitpid(pid, 0)
        connection.close()

    def with_fault(self, name):
        return not OPTIONS.only or name in OPTIONS.only


def fault(name):
    """Marks a test as one that --only chooses by this name."""
    def mark(test):
        def run(self):
            if self.with_fault(name):
                self.make_library()
                test(self)
        run.__doc__ = test.__doc__
        return run
    return mark


def add(name):
    def mark(test):
        setattr(LibraryFaults, "test_" + name, fault(name)(test))
        return test
    return mark


LOCKER = """
import sqlite3, sys
lock = sqlite3.connect(sys.argv[1], isolation_level=None)
lock.execute("pragma locking_mode = exclusive")
lock.execute("begin exclusive")
lock.execute("create table Extra (Number)")
print("locked", flush=True)
sys.stdin.readline()
lock.execute("rollback")
"""


def lock(self):
    """A process of its own: one that opens and closes the file itself gives its lock up unawares."""
    locker = subprocess.Popen([sys.executable, "-c", LOCKER, self.library.path], stdin=subprocess.PIPE,
                              stdout=subprocess.PIPE, text=True)
    self.addCleanup(locker.communicate)
    self.assertEqual(locker.stdout.readline(), "locked\n")
    return locker


@add("locked")
def locked(self):
    """Another program holds it for good."""
    locker = lock(self)
    self.expect_refused("locked", "locked")
    locker.communicate("\n")


@add("locked_for_a_moment")
def locked_for_a_moment(self):
    """A lock that goes within seconds is waited for."""
    locker = lock(self)
    threading.Timer(2, lambda: (locker.stdin.write("\n"), locker.stdin.flush())).start()
    self.settings({"Language": "GER"})
    began = time.monotonic()
    self.start()
    print(f"window after {time.monotonic() - began:.1f} s of a lock of 2 s")
    self.assertEqual(self.library.files(), self.rows)
    self.desktop.key("ctrl+q")
    self.assertEqual(self.ended(), 0)


@add("read_only")
def read_only(self):
    """The file, then its folder, belongs to somebody else."""
    user = NOBODY if os.geteuid() == 0 else None
    for base, folders, names in os.walk(self.home):
        for entry in folders + names:
            path = os.path.join(base, entry)
            if not os.path.islink(path):
                os.chmod(path, 0o777)
            if user is not None:
                os.chown(path, user, user, follow_symlinks=False)
    os.chmod(self.home, 0o777)
    os.chmod(os.path.join(self.home, ".runtime"), 0o700)
    for path, right in ((self.library.path, 0o444), (self.folder, 0o555)):
        os.chmod(path, right)
        conf = self.settings({"Language": OPTIONS.language})
        if user is not None:
            os.chown(conf, user, user)
        kind = "file" if os.path.isfile(path) else "folder"
        self.expect_box(OPEN_BOX[OPTIONS.language], "read-only-" + kind, re.escape(self.details(kind + " read-only")), user)
        os.chmod(path, 0o777)


@add("cut")
def cut(self):
    size = os.path.getsize(self.library.path)
    with open(self.library.path, "rb") as file:
        whole = file.read()
    for kept in (1, 99, 100, 4095, 4096, size // 2, size - 4096, size - 1):
        with open(self.library.path, "wb") as file:
            file.write(whole[:kept])
        # Of less than the header nobody can tell what it was.
        self.expect_refused(f"cut-{kept}", "damaged" if kept >= 100 else "foreign")
    self.put_back()


@add("empty")
def empty(self):
    self.change(lambda data: data.clear())
    self.expect_refused("empty", "foreign")
    self.put_back()


@add("noise_header")
def noise_header(self):
    def noise(data):
        data[:100] = random.randbytes(100)
    self.change(noise)
    self.expect_refused("noise-header", "foreign")
    self.put_back()


@add("noise_all")
def noise_all(self):
    def noise(data):
        data[:] = random.randbytes(len(data))
    self.change(noise)
    self.expect_refused("noise-all", "foreign")


@add("noise_log")
def noise_log(self):
    self.leave_a_log()
    def noise(data):
        data[:] = random.randbytes(len(data))
    self.change(noise, self.library.path + "-wal")
    self.expect_refused("noise-log", "damaged")
    self.put_back()


@add("noise_pages_after_a_kill")
def noise_pages_after_a_kill(self):
    """Every page is looked through then."""
    self.leave_a_log()
    def noise(data):
        middle = len(data) // 2 // 4096 * 4096
        data[middle:middle + 8192] = random.randbytes(8192)
    self.change(noise)
    self.expect_refused("noise-after-kill", "damaged")
    self.put_back()


@add("noise_pages")
def noise_pages(self):
    """Each single page in turn: a box at the start, or one when a scan begins; never a crash, a hang or a write."""
    with open(self.library.path, "rb") as file:
        whole = file.read()
    pages = list(range(1, len(whole) // 4096))
    chosen = sorted(random.sample(pages, min(OPTIONS.rounds, len(pages))))
    told = {"start": 0, "work": 0, "unused": 0}
    for page in chosen:
        noisy = bytearray(whole)
        noisy[page * 4096:(page + 1) * 4096] = random.randbytes(4096)
        for ending in ("-wal", "-shm"):
            if os.path.exists(self.library.path + ending):
                os.remove(self.library.path + ending)
        with open(self.library.path, "wb") as file:
            file.write(noisy)
        for number in (2, 3):
            if os.path.exists(os.path.join(self.folder, f"Quavernet.backup{number}.db")):
                os.remove(os.path.join(self.folder, f"Quavernet.backup{number}.db"))
        before = self.state()
        told[self.outcome_of_a_scan(page)] += 1
        self.assertEqual(self.state(), before, f"page {page}")
    print(f"pages of noise: {len(chosen)} of {len(pages)}, told at the start {told['start']}, at the scan {told['work']}, "
          f"in no use {told['unused']}")
    self.assertEqual(told["unused"], 0)


def outcome_of_a_scan(self, page):
    music = os.path.join(self.home, "Musik", "Proben")
    self.settings({"Scanpath": music, "ScanpathValue": "1", "ScanLog": "0", "QuickScan": "1"})
    self.launch()
    titles = f"^({OPEN_BOX['GER']}|{END_BOX['GER']})$"
    state = "start"
    window = wait_until("a window", lambda: self.desktop.windows(titles) or self.desktop.windows("^Quavernet - "))
    if not self.desktop.windows(titles):
        wait_until("the start", lambda: self.desktop.windows(titles) or self.main_is_alone())
    if not self.desktop.windows(titles):
        state = "work"
        self.desktop.activate(window[0])
        self.desktop.key("ctrl+s")
        wait_until("the box", lambda: self.desktop.windows(titles) or self.scan_is_over(window[0]))
    boxes = self.desktop.windows(titles)
    self.desktop.picture(f"fault-noise-page-{state}")
    if not boxes:
        self.program.kill()
        self.ended()
        return "unused"
    first = FIRST_TEXT[OPEN_BOX["GER"]] if self.desktop.title(boxes[0]) == OPEN_BOX["GER"] else None
    self.desktop.activate(boxes[0])
    expect_texts(self, boxes[0], re.escape(first) if first else r"Fehler: \d+ - .*\nDas Programm wird beendet\.",
                 re.escape(self.details("damaged", "GER")))
    self.desktop.key("Escape")
    self.assertIn(self.ended(), (0, 1), "a crash")
    return state


def scan_is_over(self, window):
    title = self.desktop.title(window)
    return "letzter scan: " in title and not title.endswith("-")


LibraryFaults.outcome_of_a_scan = outcome_of_a_scan
LibraryFaults.scan_is_over = scan_is_over


@add("newer")
def newer(self):
    def version(data):
        data[60:64] = (2).to_bytes(4, "big")
    self.change(version)
    self.expect_refused("newer", "newer")


@add("foreign")
def foreign(self):
    """A database of another program, and one with our marks but other tables."""
    for marks in ("", "pragma application_id = 0x51764E74; pragma user_version = 1;"):
        os.remove(self.library.path)
        other = sqlite3.connect(self.library.path)
        other.executescript(marks + "create table Notes (Text)")
        other.close()
        self.expect_refused("foreign", "foreign")
    self.put_back()


@add("folder")
def folder(self):
    os.remove(self.library.path)
    os.mkdir(self.library.path)
    self.expect_not_made("folder", "folder")
    self.put_back()


@add("pipe")
def pipe(self):
    os.remove(self.library.path)
    os.mkfifo(self.library.path)
    self.expect_not_made("pipe", "no plain file")
    self.put_back()


@add("link_to_nothing")
def link_to_nothing(self):
    os.remove(self.library.path)
    os.symlink(os.path.join(self.home, "Platte", "Quavernet.db"), self.library.path)
    self.expect_not_made("link", "no plain file")
    self.assertTrue(os.path.islink(self.library.path))
    self.put_back()


@add("replaced")
def replaced(self):
    """While the program runs another library takes the place of its own, or the place is empty: the next scan ends in a
    box, nothing is written, and the next start has what lies there then."""
    kept = os.path.join(self.home, "kept.db")
    shutil.copy(self.library.path, kept)
    for how in ("file", "folder", "deleted", "unused"):
        self.settings({"Scanpath": os.path.join(self.home, "Musik", "Proben"), "ScanpathValue": "1", "ScanLog": "0"})
        window = self.start()
        self.desktop.key("ctrl+s")  # the log holds rows from now on
        wait_until("the end of the scan", lambda: self.scan_is_over(window))
        if how == "deleted":
            os.remove(self.library.path)
        else:
            if how == "folder":
                os.rename(self.folder, self.folder + " alt")
                os.mkdir(self.folder)
            shutil.copy(kept, self.folder + "/restored")
            os.rename(self.folder + "/restored", self.library.path)
        before = digest(self.library.path) if how != "deleted" else None
        self.desktop.activate(window)
        if how == "unused":
            self.desktop.key("ctrl+q")
        else:
            self.desktop.key("ctrl+s")
            box = wait_until("the box", lambda: self.box_or_end(END_BOX["GER"]))
            self.desktop.picture(f"fault-replaced-{how}")
            self.desktop.activate(box)
            self.desktop.key("Escape")
        self.assertEqual(self.ended(), 0 if how == "unused" else 1)
        self.assertEqual(digest(self.library.path) if how != "deleted" else None, before)
        log = self.library.path + "-wal"
        self.assertTrue(not os.path.exists(log) or os.path.getsize(log) == 0, "a log that belongs to another file")
        self.start()
        self.assertEqual(self.library.files(), [] if how == "deleted" else self.rows)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)
        shutil.copy(kept, self.library.path)


@add("documents")
def documents(self):
    """A link to nowhere, or a file, in the place of the documents folder: the box names it, and what it leads to."""
    place = os.path.join(self.home, "Dokumente")
    os.rename(place, place + " sonst")
    reason = {"GER": "Der Grund: ", "ENG": "The reason: "}[OPTIONS.language]
    os.symlink("/Platte/Dokumente", place)
    for name, told in (("documents-link", place + " -> /Platte/Dokumente"), ("documents-file", place)):
        self.settings({"Language": OPTIONS.language})
        text = re.escape(reason) + "[^:/]+: " + re.escape(told + "\n" + PLACE[OPTIONS.language] + self.library.path)
        self.assertEqual(self.expect_box(END_BOX[OPTIONS.language], name, text), 0)
        os.remove(place)
        with open(place, "w", encoding="utf-8"):
            pass


@add("no_copies")
def no_copies(self):
    for number in (1, 2):
        os.remove(os.path.join(self.folder, f"Quavernet.backup{number}.db"))
    self.change(lambda data: data.clear())
    self.expect_refused("no-copies", "foreign")


@add("markup")
def markup(self):
    """A path that looks like markup is shown as it is."""
    odd = os.path.join(self.home, "Doku<b>mente")
    os.rename(os.path.join(self.home, "Dokumente"), odd)
    os.symlink(odd, os.path.join(self.home, "Dokumente"))
    with open(os.path.join(self.home, ".config", "user-dirs.dirs"), "w", encoding="utf-8") as file:
        file.write('XDG_DOCUMENTS_DIR="$HOME/Doku<b>mente"\n')
    self.change(lambda data: data.clear())
    self.library.path = self.library.path.replace("/Dokumente/", "/Doku<b>mente/")
    self.expect_refused("markup", "foreign")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--only", action="append", default=[])
    parser.add_argument("--screen", default="1280x960")
    parser.add_argument("--language", default="GER", choices=("GER", "ENG"))
    parser.add_argument("--rounds", type=int, default=12, help="pages that are overwritten")
    parser.add_argument("--seed", type=int, default=int(time.time()))
    parser.parse_args(namespace=OPTIONS)
    random.seed(OPTIONS.seed)
    print("seed", OPTIONS.seed)
    desktop_module.SCREEN = OPTIONS.screen
    names = ["LibraryFaults.test_" + name for name in OPTIONS.only] or None
    unittest.main(argv=sys.argv[:1], verbosity=2, defaultTest=names)


if __name__ == "__main__":
    main()
