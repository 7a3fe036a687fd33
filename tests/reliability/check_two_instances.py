"""Two programs at once on one library lose nothing that either has written: both scan, each its own folder; one scans
while the other cleans; both write settings; several start for the first time at the same moment.

    check_two_instances.py [--count N] [--rounds N] [--starts N] [--only NAME]...
"""
import argparse
import os
import shutil
import signal
import sqlite3
import subprocess
import sys
import time
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))
from desktop import PROGRAM, ProgramTest, before_start, wait_until  # noqa: E402

OPTIONS = argparse.Namespace(count=3000, rounds=1, starts=5)
LONGEST_SCAN = 300  # seconds
LEAST_TURNS = 10  # of two scans at the same time: one, the other, the first again ...
PAUSES = 50
SAMPLES = 500  # different files; a large folder holds them several times
LOOKUPS = {"Interpret": "Interpret", "Titel": "Name", "Albums": "Name", "Drive": "Drive", "Quality": "Quality"}


class Instance:
    """One running program with settings of its own, on the library of the home that all share."""

    def __init__(self, test, name, folder="", scan_known=True):
        self.desktop, self.library, self.test = test.desktop, test.library, test
        self.settings_folder = os.path.join(test.home, ".config-" + name)
        os.makedirs(os.path.join(self.settings_folder, "Greyfinch Labs"), exist_ok=True)
        shutil.copy(os.path.join(test.home, ".config", "user-dirs.dirs"), self.settings_folder)
        self.write_settings({"Scanpath": folder, "ScanpathValue": "1", "QuickScan": "0" if scan_known else "1",
                             "ScanLog": "0"})
        self.process = None

    @property
    def settings_file(self):
        return os.path.join(self.settings_folder, "Greyfinch Labs", "Quavernet.conf")

    def write_settings(self, values):
        with open(self.settings_file, "w", encoding="utf-8") as file:
            file.write("[Settings]\n" + "".join(f"{name}={value}\n" for name, value in values.items()))

    def launch(self):
        environment = dict(self.desktop.environment, XDG_CONFIG_HOME=self.settings_folder)
        self.process = subprocess.Popen([PROGRAM], env=environment, cwd=self.test.home, restore_signals=False,
                                        preexec_fn=before_start)
        self.test.addCleanup(self.end)

    def window(self):
        return wait_until("its main window", self.find_window)

    def find_window(self):
        if self.process.poll() is not None:
            raise AssertionError(f"the program ended with {self.process.returncode}")
        for window in self.mine():
            if self.desktop.title(window).startswith("Quavernet - "):
                return window
        return None

    def mine(self):
        return self.desktop.windows_of(self.process.pid)

    def is_alone(self):
        return len([w for w in self.mine() if min(self.desktop.geometry(w)[2:]) > 50]) == 1

    def press(self, keys):
        window = self.window()
        wait_until("the start picture to go", self.is_alone)
        self.desktop.activate(window)
        self.desktop.key(keys)

    def box(self):
        """Title of a failure box of this program, or nothing."""
        titles = [self.desktop.title(window) for window in self.mine()]
        return next((title for title in titles if title in ("Programm wird beendet",
                                                            "Datenbank Zugriff nicht möglich")), None)

    def is_idle(self):
        """A scan ends with the date of the last scan in the title."""
        if self.box():
            self.desktop.picture(f"{self.test.id().split('.')[-1]}-box")
            raise AssertionError(f"a failure box: {self.box()}")
        title = self.desktop.title(self.window())
        return "letzter scan: " in title and not title.endswith("-")

    def quit(self):
        self.press("ctrl+q")
        wait_until("its end", lambda: self.process.poll() is not None)
        self.test.assertEqual(self.process.returncode, 0)

    def end(self):
        if self.process and self.process.poll() is None:
            self.process.kill()
            self.process.wait()


class TwoInstances(ProgramTest):
    def start(self, *arguments):
        raise NotImplementedError("instances start by themselves")

    def tearDown(self):
        self.desktop.picture(self.id().split(".")[-1] + "-end")

    def music(self, name, count):
        """A folder of so many files, each with its own path, with performers, titles and albums that all share."""
        source = os.path.join(self.home, "Proben")
        if not os.path.exists(source):
            subprocess.run([sys.executable, os.environ["QUAVERNET_SAMPLE_MAKER"], "--count", str(SAMPLES), source],
                           check=True, stdout=subprocess.DEVNULL)
        folder = os.path.join(self.home, "Musik", name)
        for number in range(max(1, count // SAMPLES)):
            shutil.copytree(source, os.path.join(folder, str(number)), copy_function=os.link)
        return folder, sorted(os.path.join(base, file) for base, _, names in os.walk(folder) for file in names)

    def rows(self, statement):
        connection = sqlite3.connect(self.library.path, timeout=10)
        connection.create_collation("QUAVERNET", lambda a, b: (a.lower() > b.lower()) - (a.lower() < b.lower()))
        try:
            return connection.execute(statement).fetchall()
        finally:
            connection.close()

    def assert_sound(self):
        self.assertEqual(self.rows("pragma quick_check"), [("ok",)])
        for table, column in LOOKUPS.items():
            doubled = self.rows(f"select lower({column}), count(*) from {table} group by 1 having count(*) > 1")
            self.assertEqual(doubled, [], f"texts that are twice in {table}")
        for column, table, key in (("Title_id", "Titel", "Title_id"), ("Inter_id", "Interpret", "Inter_id"),
                                   ("Album_id", "Albums", "Album_id"), ("Drive_id", "Drive", "Drive_id"),
                                   ("Quality_id", "Quality", "Quality_id")):
            lost = self.rows(f"select count(*) from Files where {column} not in (select {key} from {table})")
            self.assertEqual(lost, [(0,)], f"files that point to no row of {table}")

    def test_scans_of_two_folders(self):
        for number in range(OPTIONS.rounds):
            with self.subTest(round=number):
                self.scan_both(number)

    def scan_both(self, number):
        shutil.rmtree(os.path.dirname(self.library.path), True)
        folders = [self.music(f"{name}{number}", OPTIONS.count) for name in ("links", "rechts")]
        pair = [Instance(self, name, folder) for name, (folder, _) in zip(("a", "b"), folders)]
        for one in pair:
            one.launch()
            one.window()
            wait_until("the start picture to go", one.is_alone)
        self.press_at_once(pair, "ctrl+s")
        self.pause_now_and_then(pair)
        began = time.monotonic()
        ends = {}
        while len(ends) < 2:
            for index, one in enumerate(pair):
                if index not in ends and one.is_idle():
                    ends[index] = time.monotonic() - began
            self.assertLess(time.monotonic() - began, LONGEST_SCAN, "a scan that does not end")
            time.sleep(0.05)
        print("after the last pause scans ended within", " and ".join(f"{end:.1f} s" for end in ends.values()))
        self.assertEqual(sorted(self.library.files()), sorted(folders[0][1] + folders[1][1]))
        self.assert_overlap(folders[0][0])
        self.assert_sound()
        for one in pair:
            one.quit()
        self.assertEqual(len(self.library.files()), 2 * len(folders[0][1]))
        for folder, _ in folders:
            shutil.rmtree(folder)

    def press_at_once(self, pair, keys):
        """The first program finds its key when the second one has got it too."""
        for one in pair:
            one.process.send_signal(signal.SIGSTOP)
        try:
            for one in pair:
                self.desktop.activate(one.window())
                self.desktop.key(keys)
        finally:
            for one in pair:
                one.process.send_signal(signal.SIGCONT)

    def pause_now_and_then(self, pair):
        """However fast the machine is, both are in the middle of their scans for a while. A pause makes the file at which
        it falls a slow one, after which a program commits: the other gets its turn."""
        for number in range(PAUSES):
            time.sleep(0.002 + number % 5 / 1000)
            for one in pair:
                one.process.send_signal(signal.SIGSTOP)
            time.sleep(0.06)
            for one in pair:
                one.process.send_signal(signal.SIGCONT)

    def assert_overlap(self, folder):
        """Each went on storing after the other had begun to: in the order of their keys the rows take turns."""
        mine = [path.startswith(folder + os.sep) for path, in self.rows("select Path from Files order by File_id")]
        turns = 1 + sum(1 for one, next_one in zip(mine, mine[1:]) if one != next_one)
        print(f"{len(mine)} rows in {turns} turns")
        self.assertGreaterEqual(turns, LEAST_TURNS, "the scans did not overlap")

    def test_first_starts_at_the_same_moment(self):
        """Whoever is second takes the library of the first."""
        for number in range(OPTIONS.starts * OPTIONS.rounds):
            shutil.rmtree(os.path.dirname(self.library.path), True)
            pair = [Instance(self, name) for name in ("a", "b", "c")]
            for one in pair:
                one.launch()
            for one in pair:
                one.window()
                wait_until("the start picture to go", one.is_alone)
            self.assertEqual(self.rows("select count(*) from Genres"), [(149,)])
            self.assertEqual([name for name in os.listdir(os.path.dirname(self.library.path))
                              if not name.startswith("Quavernet.db")], [], f"round {number}")
            for one in pair:
                one.quit()
            self.assert_sound()

    def test_a_scan_beside_a_cleaning_and_edits(self):
        """One scans, one cleans, and another hand sends the statements of tree and player, all at once."""
        folder, music = self.music("bleibt", OPTIONS.count)
        gone, lost = self.music("geht", OPTIONS.count)
        scanner, cleaner = Instance(self, "a", gone), Instance(self, "b", folder)
        scanner.launch()
        scanner.press("ctrl+s")
        wait_until("the end of the scan", scanner.is_idle)
        shutil.rmtree(gone)
        scanner.quit()
        scanner = Instance(self, "a", folder)
        for one in (scanner, cleaner):
            one.launch()
            one.window()
            wait_until("the start picture to go", one.is_alone)
        editor = self.editor()
        cleaner.press("ctrl+c")
        wait_until("the question", lambda: "Datenbank säubern" in [self.desktop.title(w) for w in cleaner.mine()])
        scanner.press("ctrl+s")
        question = next(w for w in cleaner.mine() if self.desktop.title(w) == "Datenbank säubern")
        self.desktop.activate(question)
        self.desktop.key("alt+j")  # "Ja": the default is the other one.
        wait_until("the end of the scan", scanner.is_idle)
        wait_until("the end of the cleaning", lambda: not set(lost) & set(self.library.files()))
        told, failure = editor.communicate("\n")
        self.assertEqual(editor.returncode, 0, failure)
        edits = int(told)
        self.assertEqual(sorted(self.library.files()), music)
        self.assertEqual(self.rows("select count(*) from FileCategories"), [(edits,)])
        self.assertEqual(self.rows("select count(*), max(Position) from FileCategories"), [(edits, edits)])
        self.assertEqual(self.rows("select count(*) from Categories"), [(1,)])
        self.assert_sound()
        for one in (scanner, cleaner):
            one.quit()
        self.assertEqual(sorted(self.library.files()), music)
        print(f"{len(music)} files scanned and {len(lost)} cleaned away, with {edits} entries added to the tree meanwhile")

    def editor(self):
        """Adds entries to the tree, one by one, until it is told to stop; prints how many there are."""
        return subprocess.Popen([sys.executable, "-c", EDITOR, self.library.path], stdin=subprocess.PIPE,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)

    def test_settings_of_both(self):
        """Each keeps what the other has written under other names; of what both write, the last one counts."""
        pair = [Instance(self, "a"), Instance(self, "a")]
        for one in pair:
            one.launch()
            one.window()
            wait_until("the start picture to go", one.is_alone)
        pair[0].write_settings({**self.stored(pair[0]), "Coverstring": "http://covers.example.org/", "Random": "1"})
        self.desktop.ask("xdotool", "windowsize", "--sync", pair[0].window(), 1000, 700)
        pair[0].quit()
        self.assertEqual(self.stored(pair[0])["WindowWidth"], "15000")
        self.desktop.ask("xdotool", "windowsize", "--sync", pair[1].window(), 900, 600)
        pair[1].quit()
        stored = self.stored(pair[1])
        self.assertEqual(stored["Coverstring"], "http://covers.example.org/")
        self.assertEqual(stored["Random"], "1")
        self.assertEqual(stored["WindowWidth"], "13500", "the last one to close wins")

    def stored(self, instance):
        with open(instance.settings_file, encoding="utf-8") as file:
            return dict(line.rstrip("\n").split("=", 1) for line in file if "=" in line)

    def test_backups_of_both(self):
        """Both make their copy at the same moment: what lies there afterwards is whole."""
        folder, music = self.music("sicher", OPTIONS.count)
        for number in range(OPTIONS.rounds + 2):
            pair = [Instance(self, name, folder) for name in ("a", "b")]
            for one in pair:
                one.launch()
            for one in pair:
                one.window()
                wait_until("the start picture to go", one.is_alone)
            for one in pair:
                one.press("ctrl+s")
            for one in pair:
                wait_until("the end of the scan", one.is_idle)
                one.quit()
            self.assertEqual(sorted(self.library.files()), music)
        for number in range(1, 4):
            copy = self.library.path.replace(".db", f".backup{number}.db")
            connection = sqlite3.connect(f"file:{copy}?immutable=1", uri=True)
            connection.create_collation("QUAVERNET", lambda a, b: (a > b) - (a < b))
            self.assertEqual(connection.execute("pragma quick_check").fetchall(), [("ok",)])
            connection.close()
        self.assertEqual([name for name in os.listdir(os.path.dirname(self.library.path)) if "backup0" in name], [])


EDITOR = """
import select, sqlite3, sys, time
library = sqlite3.connect(sys.argv[1], timeout=30, isolation_level=None)
library.create_collation("QUAVERNET", lambda a, b: (a.lower() > b.lower()) - (a.lower() < b.lower()))
library.execute("Insert into Categories (Category) values ('Auswahl')")
count = 0
while not select.select([sys.stdin], [], [], 0)[0]:
    count += 1
    library.execute("Insert into FileCategories (File_id, Category_id, Position, Parent, Filename) "
                    "values (-1, 1, %d, 'Auswahl', 'Lied')" % count)
    time.sleep(0.01)
print(count)
"""


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=20000, help="files in each folder")
    parser.add_argument("--rounds", type=int, default=3)
    parser.add_argument("--starts", type=int, default=5, help="first starts in each round")
    parser.add_argument("--only", action="append", default=[], help="name of a test without its test_")
    parser.parse_args(namespace=OPTIONS)
    names = ["TwoInstances.test_" + name for name in OPTIONS.only] or None
    unittest.main(argv=sys.argv[:1], verbosity=2, defaultTest=names)


if __name__ == "__main__":
    main()
