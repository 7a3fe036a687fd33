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

OPTIONS = argparse.Namespace()
NOBODY = 65534
OPEN_BOX = {"GER": "Datenbank Zugriff nicht möglich", "ENG": "Unable to access the database"}
END_BOX = {"GER": "Programm wird beendet", "ENG": "Program will exit"}


def digest(path):
    """What stands at a path, whatever it is."""
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
        """Every file of the library's folder, but for a log without content and the index of the log, which the engine
        makes anew at will."""
        return {name: digest(os.path.join(self.folder, name)) for name in sorted(os.listdir(self.folder))
                if not name.endswith("-shm") and not self.is_empty_log(name)}

    def is_empty_log(self, name):
        return name.endswith("-wal") and os.path.getsize(os.path.join(self.folder, name)) == 0

    def make_library(self, copies=True):
        """A library of a few files from a real scan, with a backup copy, closed."""
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
        if not copies:
            os.remove(self.copy)

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

    def expect_box(self, title, name, user=None):
        """A start that ends in this box and changes nothing."""
        before = self.state()
        self.launch(user)
        box = wait_until(f"the box {title!r}", lambda: self.box_or_end(title))
        self.desktop.picture(f"fault-{name}-{OPTIONS.language}-{OPTIONS.screen}")
        x, y, width, height = self.desktop.geometry(box)
        across, down = (int(number) for number in OPTIONS.screen.split("x"))
        self.assertTrue(width <= across and height <= down, f"a box of {width}x{height}")
        self.desktop.activate(box)
        self.desktop.key("Escape")
        wait_until("the program's end", lambda: self.program.poll() is not None)
        self.assertEqual(self.state(), before)
        return self.program.returncode

    def box_or_end(self, title):
        boxes = self.desktop.windows(f"^{title}$")
        if not boxes and self.program.poll() is not None:
            raise AssertionError(f"the program ended with {self.program.returncode} and no box {title!r}")
        return boxes[0] if boxes else None

    def expect_refused(self, name, user=None):
        self.settings({"Language": OPTIONS.language})
        self.assertEqual(self.expect_box(OPEN_BOX[OPTIONS.language], name, user), 0)

    def expect_not_made(self, name):
        self.settings({"Language": OPTIONS.language})
        self.assertEqual(self.expect_box(END_BOX[OPTIONS.language], name), 0)

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
        """A program killed while it scanned: its last rows stand in the log alone."""
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
    self.expect_refused("locked")
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
        self.expect_box(OPEN_BOX[OPTIONS.language], "read-only-" + ("file" if os.path.isfile(path) else "folder"), user)
        os.chmod(path, 0o777)


@add("cut")
def cut(self):
    size = os.path.getsize(self.library.path)
    with open(self.library.path, "rb") as file:
        whole = file.read()
    for kept in (1, 99, 100, 4095, 4096, size // 2, size - 4096, size - 1):
        with open(self.library.path, "wb") as file:
            file.write(whole[:kept])
        self.expect_refused(f"cut-{kept}")
    self.put_back()


@add("empty")
def empty(self):
    self.change(lambda data: data.clear())
    self.expect_refused("empty")
    self.put_back()


@add("noise_header")
def noise_header(self):
    def noise(data):
        data[:100] = random.randbytes(100)
    self.change(noise)
    self.expect_refused("noise-header")
    self.put_back()


@add("noise_all")
def noise_all(self):
    def noise(data):
        data[:] = random.randbytes(len(data))
    self.change(noise)
    self.expect_refused("noise-all")


@add("noise_log")
def noise_log(self):
    self.leave_a_log()
    def noise(data):
        data[:] = random.randbytes(len(data))
    self.change(noise, self.library.path + "-wal")
    self.expect_refused("noise-log")
    self.put_back()


@add("noise_pages_after_a_kill")
def noise_pages_after_a_kill(self):
    """Every page is looked through then."""
    self.leave_a_log()
    def noise(data):
        middle = len(data) // 2 // 4096 * 4096
        data[middle:middle + 8192] = random.randbytes(8192)
    self.change(noise)
    self.expect_refused("noise-after-kill")
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
        self.program.wait()
        return "unused"
    self.desktop.activate(boxes[0])
    self.desktop.key("Escape")
    wait_until("the program's end", lambda: self.program.poll() is not None)
    self.assertIn(self.program.returncode, (0, 1), "a crash")
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
    self.expect_refused("newer")


@add("foreign")
def foreign(self):
    """A database of another program, and one with our marks but other tables."""
    for marks in ("", "pragma application_id = 0x51764E74; pragma user_version = 1;"):
        os.remove(self.library.path)
        other = sqlite3.connect(self.library.path)
        other.executescript(marks + "create table Notes (Text)")
        other.close()
        self.expect_refused("foreign")
    self.put_back()


@add("folder")
def folder(self):
    os.remove(self.library.path)
    os.mkdir(self.library.path)
    self.expect_not_made("folder")
    self.put_back()


@add("pipe")
def pipe(self):
    os.remove(self.library.path)
    os.mkfifo(self.library.path)
    self.expect_not_made("pipe")
    self.put_back()


@add("link_to_nothing")
def link_to_nothing(self):
    os.remove(self.library.path)
    os.symlink(os.path.join(self.home, "Platte", "Quavernet.db"), self.library.path)
    self.expect_not_made("link")
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


@add("no_copies")
def no_copies(self):
    os.remove(self.copy)
    self.change(lambda data: data.clear())
    self.expect_refused("no-copies")


@add("markup")
def markup(self):
    """A path that looks like markup is shown as it stands."""
    odd = os.path.join(self.home, "Doku<b>mente")
    os.rename(os.path.join(self.home, "Dokumente"), odd)
    os.symlink(odd, os.path.join(self.home, "Dokumente"))
    with open(os.path.join(self.home, ".config", "user-dirs.dirs"), "w", encoding="utf-8") as file:
        file.write('XDG_DOCUMENTS_DIR="$HOME/Doku<b>mente"\n')
    self.change(lambda data: data.clear())
    self.expect_refused("markup")


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
