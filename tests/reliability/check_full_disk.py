"""The disk is full: the program says so or goes on as told, nothing that had been written is torn or lost, and once there
is space again the next run works. A small disk in memory is mounted for it, by the superuser or in a namespace of
the caller's own ("unshare --map-root-user --mount").

    check_full_disk.py [--count N] [--only NAME]...
"""
import argparse
import hashlib
import os
import re
import shutil
import subprocess
import sys
import unittest
import wave

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from support import HELPER, Content, clipboard, expect_texts, left_copies, write_settings  # noqa: E402
from desktop import PROGRAM, Library, ProgramTest, wait_until  # noqa: E402

OPTIONS = argparse.Namespace()
DISK_SIZE = 48 << 20
# What the boxes say, as patterns: at the first start, at a later one, and in the middle of the work.
NOT_MADE = r"Fehler beim Initialisieren der Datenbank!\n.*\nDas Programm wird beendet\."
NOT_OPENED = r"Auf Ihrem System muss mindestens MDAC .*"
UNDONE = r"Fehler: \d+ - [^(]+ \(\d+ earlier changes? (was|were) undone\)\n(\([^\n]+\)\n)?Das Programm wird beendet\."
NO_SPACE = ("Auf dem Datenträger ist kein Platz mehr. Schaffen Sie Platz, und wiederholen Sie dann den letzten Schritt.\n"
            "Datenbank: ")


def content_of(path):
    with open(path, "rb") as file:
        return hashlib.sha256(file.read()).hexdigest()


class FullDisk(ProgramTest):
    def setUp(self):
        super().setUp()
        self.disk = self.mount("Platte")
        self.documents = os.path.join(self.disk, "Dokumente")
        os.mkdir(self.documents)
        with open(os.path.join(self.home, ".config", "user-dirs.dirs"), "w", encoding="utf-8") as file:
            file.write('XDG_DOCUMENTS_DIR="$HOME/Platte/Dokumente"\nXDG_MUSIC_DIR="$HOME/Musik"\n')
        self.library = Library(self.home)
        self.library.path = os.path.join(self.documents, "Quavernet Database", "Quavernet.db")

    def mount(self, name):
        """An empty disk of its own, in the home."""
        path = os.path.join(self.home, name)
        os.makedirs(path, exist_ok=True)
        subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={DISK_SIZE},mode=0755", "quavernet-check", path],
                       check=True)
        self.addCleanup(subprocess.run, ["umount", "--lazy", path], check=True)
        return path

    def fill(self, leave=0, disk=None):
        """Leaves so many bytes free."""
        disk = disk or self.disk
        self.make_space(disk)
        free = os.statvfs(disk).f_bavail * os.statvfs(disk).f_frsize
        with open(os.path.join(disk, "ballast"), "wb") as file:
            try:
                block = bytes(4096)
                for _ in range(max(0, free - leave) // 4096):
                    file.write(block)
                    file.flush()
            except OSError:
                pass

    def make_space(self, disk=None):
        ballast = os.path.join(disk or self.disk, "ballast")
        if os.path.exists(ballast):
            os.remove(ballast)

    def small_music(self, name, count, pattern=r"\.(mp3|wav|ogg)$"):
        """A folder of many files, on another disk than the library."""
        source = os.path.join(self.home, "Proben")
        if not os.path.exists(source):
            subprocess.run([sys.executable, os.environ["QUAVERNET_SAMPLE_MAKER"], "--count", "500", source],
                           check=True, stdout=subprocess.DEVNULL)
        files = sorted(os.path.join(base, file) for base, _, names in os.walk(source) for file in names
                       if re.search(pattern, file))
        folder = os.path.join(self.home, "Musik", name)
        for number in range(count):
            part = os.path.join(folder, f"{number // 1000:03}")
            os.makedirs(part, exist_ok=True)
            path = files[number % len(files)]
            os.link(path, os.path.join(part, f"{number:06} {os.path.basename(path)}"))
        return folder, sorted(os.path.join(base, file) for base, _, names in os.walk(folder) for file in names)

    def settings(self, folder, **more):
        write_settings(self.home, **{"Scanpath": folder, "ScanpathValue": "1", "ScanLog": "0", **more})

    def launch(self):
        self.program = subprocess.Popen([PROGRAM], env=self.desktop.environment, cwd=self.home)

    def press_scan(self, window):
        self.desktop.activate(window)
        self.desktop.key("ctrl+s")

    def scan_is_over(self, window):
        title = self.desktop.title(window)
        return "letzter scan: " in title and not title.endswith("-")

    def whole_scan(self, folder, **more):
        """A start, a scan of everything and an orderly end."""
        self.settings(folder, **more)
        window = self.start()
        self.press_scan(window)
        wait_until("the end of the scan", lambda: self.scan_is_over(window))
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)

    def failure_box(self, name, first):
        """Waits for the box at the end of the program, which says this and that there is no space, and closes it."""
        box = self.desktop.window("^(Programm wird beendet|Datenbank Zugriff nicht möglich)$")
        self.desktop.picture("full-disk-" + name)
        self.desktop.activate(box)
        expect_texts(self, box, first, re.escape(NO_SPACE + self.library.path))
        self.desktop.key("Escape")
        return self.ended()

    def test_first_start(self):
        self.fill()
        write_settings(self.home)
        self.launch()
        self.assertEqual(self.failure_box("first-start", NOT_MADE), 0)
        folder = os.path.dirname(self.library.path)
        self.assertEqual(os.listdir(folder) if os.path.exists(folder) else [], [])
        self.make_space()
        self.start()
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)
        self.assertEqual(Content(self.library.path).rows, {})

    def full_while_scanning(self, name, pattern, count, spaces):
        folder, music = self.small_music(name, count, pattern)
        self.settings(folder)
        window = self.start()
        seen = []
        for leave in spaces:
            # Committed rows are looked at before the space runs out, and have to be there afterwards.
            self.fill(leave)
            self.press_scan(window)
            wait_until("the first files or the box", lambda: self.library.files() or self.desktop.windows(
                "^Programm wird beendet$"))
            seen = sorted(set(seen) | set(self.library.files()))
            self.assertEqual(self.failure_box(f"{name}-{leave >> 10}", UNDONE), 1)
            kept = Content(self.library.path)
            self.assertLessEqual({path.encode() for path in seen}, set(kept.rows))
            self.assertLess(len(kept.rows), len(music))
            before = kept.rows
            self.start_on_full_disk(f"{name}-{leave >> 10}")
            self.assertEqual(Content(self.library.path).rows, before)
            self.make_space()
            window = self.start()
        self.press_scan(window)
        wait_until("the end of the scan", lambda: self.scan_is_over(window))
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)
        self.assertEqual(sorted(Content(self.library.path).rows), sorted(path.encode() for path in music))
        print(f"{name}: {len(before)} of {len(music)} files were stored when the disk was full, all after the rescan")

    def start_on_full_disk(self, name):
        """No space at all: the window or a box, and an orderly end."""
        self.fill()
        self.launch()
        box = "^Datenbank Zugriff nicht möglich$|^Programm wird beendet$"
        wait_until("a window", lambda: self.desktop.windows(box) or (self.desktop.windows("^Quavernet - ")
                                                                    and self.main_is_alone()))
        if self.desktop.windows(box):
            self.assertIn(self.failure_box(name + "-start", f"{NOT_OPENED}|Fehler: .*"), (0, 1))
        else:
            self.desktop.activate(self.desktop.window("^Quavernet - "))
            self.desktop.key("ctrl+q")
            self.assertEqual(self.ended(), 0)

    def test_scan(self):
        # Quick enough to store thousands of files between two commits.
        self.full_while_scanning("scan", r"\.(mp3|wav)$", 4 * OPTIONS.count, (300 << 10, 7 << 20))

    def test_ogg_pass(self):
        self.full_while_scanning("ogg", r"\.ogg$", OPTIONS.count, (300 << 10, 900 << 10))

    def first_lines(self, log):
        """Of the scan log, each copied from its list."""
        _, _, width, height = self.desktop.geometry(log)
        self.desktop.click(log, width // 2, height // 2)
        self.desktop.key("Home")
        lines = []
        for _ in range(4):
            self.desktop.key("ctrl+c")
            lines.append(clipboard(self.desktop))
            self.desktop.key("Down")
        return lines

    def test_backup(self):
        folder, music = self.small_music("backup", 2000)
        self.whole_scan(folder)
        self.whole_scan(folder)
        directory = os.path.dirname(self.library.path)
        copies = {name: content_of(os.path.join(directory, name)) for name in os.listdir(directory) if "backup" in name}
        self.assertEqual(len(copies), 2)
        self.settings(folder, ScanLog="1", LastScan="-", QuickScan="1")  # which writes next to nothing itself
        window = self.start()
        self.fill(leave=200 << 10)
        self.press_scan(window)
        wait_until("the end of the scan", lambda: self.scan_is_over(window))
        self.desktop.picture("full-disk-backup-log")
        self.assertEqual({name: content_of(os.path.join(directory, name)) for name in os.listdir(directory)
                          if "backup" in name}, copies)
        log = self.desktop.window("^Scan Log$")
        self.desktop.activate(log)
        wait_until("the line about the backup copy", lambda: any(
            re.fullmatch(r"Keine Sicherungskopie der Datenbank: .+", line) for line in self.first_lines(log)))
        self.desktop.key("alt+F4")
        wait_until("the scan log to go", lambda: not self.desktop.windows("^Scan Log$"))
        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)
        self.make_space()
        self.whole_scan(folder, LastScan="-")
        self.assertEqual(len([name for name in os.listdir(directory) if "backup" in name]), 3)
        self.assertEqual(len(Content(os.path.join(directory, "Quavernet.backup1.db")).rows), len(music))

    def search_for(self, window, text):
        """Which is remembered among the last searches, at once."""
        self.desktop.activate(window)
        self.desktop.key("ctrl+f")
        self.desktop.type(text)
        self.desktop.key("Return")

    def test_settings(self):
        config = os.path.join(self.home, ".config")
        held = os.path.join(self.home, "user-dirs.dirs")
        shutil.copy(os.path.join(config, "user-dirs.dirs"), held)
        self.mount(".config")
        shutil.copy(held, config)
        write_settings(self.home, WindowWidth="12000", WindowHeight="9000", Coverstring="http://covers.example.org/")
        path = os.path.join(config, "Greyfinch Labs", "Quavernet.conf")
        before = content_of(path)
        window = self.start()
        self.fill(disk=config)
        self.desktop.ask("xdotool", "windowsize", "--sync", window, 1000, 700)
        self.search_for(window, "abba")
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)
        self.assertEqual(content_of(path), before, "the settings as they were")
        self.make_space(config)
        subprocess.run(["mount", "-o", "remount,ro", config], check=True)
        window = self.start()
        self.search_for(window, "abba")
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)
        subprocess.run(["mount", "-o", "remount,rw", config], check=True)
        self.assertEqual(content_of(path), before, "the settings as they were")
        window = self.start()
        self.desktop.ask("xdotool", "windowsize", "--sync", window, 1000, 700)
        self.search_for(window, "abba")
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)
        with open(path, encoding="utf-8") as file:
            text = file.read()
        self.assertIn("WindowWidth=15000", text)
        self.assertIn("LastSearches=abba", text)
        self.assertIn("Coverstring=http://covers.example.org/", text)

    def save_tag(self, form, path, text):
        """True if the save said that it went well."""
        return subprocess.run([HELPER, "step", "1000000000", form, path, text], capture_output=True).returncode == 7

    def test_tags(self):
        source, _ = self.small_music("tags", 500, r"\.mp3$")
        files = []
        for base, _, names in os.walk(source):
            for name in names:
                with open(os.path.join(base, name), "rb") as file:
                    head, tail = file.read(3), file.seek(-128, 2) and file.read(3)
                files.append((os.path.join(base, name), head == b"ID3", tail == b"TAG"))
        tagged = next(path for path, v2, v1 in files if v2 and v1)
        saved, refused = [], []
        for form, text, fits in (("v1", "Neuer Titel", True), ("v2", "x", True), ("v2", "y" * 30000, False)):
            path = os.path.join(self.disk, f"{form}-{len(text)}.mp3")
            self.make_space()
            shutil.copy(tagged, path)
            self.fill()
            before = content_of(path)
            well = self.save_tag(form, path, text)
            (saved if well else refused).append(f"{form} with {len(text)} characters")
            self.assertEqual(well, fits, f"{form} {len(text)}")
            self.assertEqual(content_of(path) == before, not fits)
            self.assertEqual(left_copies(self.disk), [])
            if not fits:
                self.make_space()
                self.assertTrue(self.save_tag(form, path, text))
                self.assertNotEqual(content_of(path), before)
            with open(tagged, "rb") as old, open(path, "rb") as new:
                self.assertEqual(old.read()[-20000:-128], new.read()[-20000:-128], "the audio")
        print("saved:", ", ".join(saved), "- refused, file as it was:", ", ".join(refused))

    def test_encoding(self):
        wav, mp3 = (os.path.join(self.disk, "Lied." + ending) for ending in ("wav", "mp3"))
        with wave.open(wav, "wb") as file:
            file.setparams((2, 2, 44100, 0, "NONE", None))
            file.writeframes(bytes(20 * 4 * 44100))
        before = content_of(wav)
        command = [os.path.join(os.path.dirname(PROGRAM), "bladeenc"), "-128", "-delete", wav]
        environment = dict(os.environ, HOME=self.home)
        environment.pop("DBUS_SESSION_BUS_ADDRESS", None)
        for leave in (0, 4096, 100000, 310000):
            self.fill(leave)
            run = subprocess.run(command, env=environment, capture_output=True, text=True)
            self.assertEqual((run.returncode, run.stderr),
                             (1, f"bladeenc: {wav}: Auf dem Datenträger ist kein Platz mehr.\n"), leave)
            self.assertEqual(sorted(os.listdir(self.disk)), ["Dokumente", "Lied.wav", "ballast"])
            self.assertEqual(content_of(wav), before)
        self.make_space()
        subprocess.run(["mount", "-o", "remount,ro", self.disk], check=True)
        run = subprocess.run(command, env=environment, capture_output=True, text=True)
        subprocess.run(["mount", "-o", "remount,rw", self.disk], check=True)
        self.assertEqual((run.returncode, run.stderr), (1, f"bladeenc: {self.disk}: Dafür fehlt das Recht.\n"))
        self.assertEqual(sorted(os.listdir(self.disk)), ["Dokumente", "Lied.wav"])
        self.assertEqual(content_of(wav), before)
        subprocess.run(command, env=environment, check=True)
        self.assertEqual(sorted(os.listdir(self.disk)), ["Dokumente", "Lied.mp3"])
        self.assertGreater(os.path.getsize(mp3), 320000)


    def test_comments(self):
        """Of an Ogg file."""
        source, music = self.small_music("comments", 20, r"\.ogg$")
        path = os.path.join(self.disk, "song.ogg")
        for text, fits in (("y" * 40, True), ("z" * 300, False), ("z" * 70000, False)):
            self.make_space()
            shutil.copy(music[0], path)
            self.assertTrue(self.save_tag("ogg", path, "x" * 40))
            self.fill()
            before = content_of(path)
            self.assertEqual(self.save_tag("ogg", path, text), fits, text[:1])
            self.assertEqual(content_of(path) == before, not fits)
            self.assertEqual(left_copies(self.disk), [])
            if not fits:
                self.make_space()
                self.assertTrue(self.save_tag("ogg", path, text))
                self.assertNotEqual(content_of(path), before)
        print("Ogg comments: of the same length saved in place, longer ones refused, file as it was")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=6000, help="files of the scans")
    parser.add_argument("--only", action="append", default=[])
    parser.parse_args(namespace=OPTIONS)
    if os.geteuid() != 0:
        os.execvp("unshare", ["unshare", "--map-root-user", "--mount", sys.executable, *sys.argv])
    names = ["FullDisk.test_" + name for name in OPTIONS.only] or None
    unittest.main(argv=sys.argv[:1], verbosity=2, defaultTest=names)


if __name__ == "__main__":
    main()
