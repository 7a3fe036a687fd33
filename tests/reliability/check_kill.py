#!/usr/bin/env python3
"""The program and its writers are killed (SIGKILL) at random moments; nothing that was there before is lost.

    check_kill.py [--count N] [--seed S] [--files N]

N scans by the real program are killed, half of them into a library that holds every file as it was before each got
other contents, tags included: the library then opens, is sound, holds whole rows only (of before or of now), and a
further scan completes it to what an undisturbed scan gives. N saves of tags are killed in each form (in place, in place over a
page's end, by a copy; version 1 within a page and over its end; Ogg comments in place, by a copy, with other numbers of
the pages), and each form once at each of its system calls:
the file is the old or the new one byte for byte, and what a killed save leaves is no music and goes with the next.
"""
import argparse
import os
import random
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import time
import unittest

from support import Content, HELPER, left_copies, write_settings
from desktop import ProgramTest, wait_until

OPTIONS = argparse.Namespace()
PAGE = 4096
FIRST_ROWS = 0.2  # Seconds of a scan until rows are committed for the first time.


def show(text):
    print(text, flush=True)


class KilledScanTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.chance = random.Random(OPTIONS.seed)
        self.folder = self.home
        self.quick = False
        self.held = self.now = self.before = None  # Contents: of the library; of scans of the music as it is, and was.
        self.library_folder = os.path.dirname(self.library.path)

    def start_soon(self):
        """Starts the program and gives its window without waiting for anything else; it scans without asking."""
        write_settings(self.home, Language="GER", ScanpathValue=1, Scanpath=self.folder,
                       QuickScan=int(self.quick), ScanLog=0)
        self.program = subprocess.Popen([os.environ["QUAVERNET_PROGRAM"]], env=self.desktop.environment,
                                        cwd=self.home)
        return self.desktop.window("^Quavernet - ")

    def start_scan(self):
        window = self.start_soon()
        wait_until("the library", lambda: self.library.values("select count(*) from Genres"))
        self.desktop.activate(window)
        wait_until("the start picture to go", self.start_picture_has_gone)
        self.desktop.activate(window)
        self.desktop.key("ctrl+s")
        return window, time.monotonic()

    def start_picture_has_gone(self):
        """A key ends it, and does nothing else."""
        if not self.main_is_alone():
            self.desktop.key("Escape")
        return self.main_is_alone()

    def whole_scan(self):
        """Seconds and content of a scan that ends by itself."""
        window, begin = self.start_scan()
        wait_until("the end of the scan", lambda: self.scan_has_ended(window))
        seconds = time.monotonic() - begin
        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)
        self.held = Content(self.library.path)
        return seconds, self.held

    def scan_has_ended(self, window):
        """The settings held no date of a scan at the start."""
        title = self.desktop.title(window)
        return title.startswith("Quavernet - letzter scan: ") and not title.endswith("-")

    def kill(self):
        self.program.kill()
        self.ended()

    def forget_library(self):
        shutil.rmtree(self.library_folder, ignore_errors=True)

    def make_other_music(self):
        """The same names, under each of them what another file of its format holds: other tags, size and length."""
        self.other = os.path.join(self.home, "other")
        for ending in (".mp3", ".ogg", ".wav"):
            paths = [path for path in self.music if path.endswith(ending)]
            for path, source in zip(paths, paths[1:] + paths[:1]):
                target = os.path.join(self.other, os.path.relpath(path, self.folder))
                os.makedirs(os.path.dirname(target), exist_ok=True)
                os.link(source, target)

    def change_music(self):
        """Each file gets its other contents; a second change brings the first ones back."""
        os.rename(self.folder, self.other + "-once")
        os.rename(self.other, self.folder)
        os.rename(self.other + "-once", self.other)
        self.before, self.now = self.now, self.before

    def stored(self):
        """A number that changes when a row's file or size does."""
        return self.library.values("select total(File_id * (Sizeinbytes + 1)) from Files")

    def test_scans(self):
        self.folder, self.music = self.make_music("--count", str(OPTIONS.files))
        self.make_other_music()
        seconds, self.now = self.whole_scan()
        self.assertEqual(sorted(self.now.rows), sorted(path.encode() for path in self.music))
        self.forget_library()
        self.change_music()
        _, self.now = self.whole_scan()
        self.assertEqual(self.now.rows.keys(), self.before.rows.keys())
        same = len(self.now.rows.items() & self.before.rows.items())  # Wave files, named by their paths.
        self.assertLess(same, len(self.music) / 10)
        self.change_music()
        again, now = self.whole_scan()
        self.assertEqual(now.rows, self.now.rows)
        show(f"scans: {len(self.music)} files, undisturbed {seconds:.2f} s into an empty library, "
             f"{again:.2f} s over other tags")
        self.kept, empty, over = 0, [], []
        for number in range(OPTIONS.count):
            # Half of the moments come after the first rows on the disk, wherever those are on a busy machine.
            after_rows = number % 4 < 2
            if number % 2 == 0:
                empty.append(self.scan_killed_in_an_empty_library(number, self.moment(seconds, after_rows), after_rows))
            else:
                over.append(self.scan_killed_over_other_tags(number, self.moment(again, after_rows), after_rows))
            if number % 10 == 9:
                show(f"scans: {number + 1} killed, {self.kept} times all was kept")
        show(f"scans: killed {self.counts(empty, len(self.music))} into an empty library, "
             f"{self.counts(over, len(self.music) - same)} over other tags")
        self.assertTrue(any(over), "no killed scan over other tags had written anything")

    def moment(self, seconds, after_rows):
        return self.chance.uniform(0, max(0.0, seconds - FIRST_ROWS) if after_rows else seconds)

    @staticmethod
    def counts(stored, whole):
        """Of numbers of stored rows, how many there are, and how many of them are nothing, a part, all."""
        return (f"{len(stored)} (nothing stored {sum(not count for count in stored)}, "
                f"a part {sum(0 < count < whole for count in stored)}, "
                f"all {sum(count == whole for count in stored)})")

    def killed_scan(self, moment, after_rows):
        """What a full scan leaves that is killed so many seconds after its start, or after its first rows."""
        self.quick = False
        stored = self.stored() or [0.0]
        window, begin = self.start_scan()
        if after_rows:
            wait_until("the first rows", lambda: self.stored() != stored or self.scan_has_ended(window))
            begin = time.monotonic()
        time.sleep(max(0.0, begin + moment - time.monotonic()))
        self.kill()
        return Content(self.library.path)

    def scan_killed_in_an_empty_library(self, number, moment, after_rows):
        self.forget_library()
        left = self.killed_scan(moment, after_rows)
        with self.subTest(number=number, moment=round(moment, 4), seed=OPTIONS.seed):
            self.assertLessEqual(left.rows.items(), self.now.rows.items(), "rows that are not whole")
            self.quick = number % 4 == 2
            _, now = self.whole_scan()
            if self.quick:
                # Ten known Ogg files in a row end the pass of a quick scan.
                self.assertEqual(self.without_new_oggs(now.rows, left.rows),
                                 self.without_new_oggs(self.now.rows, left.rows))
            else:
                self.assertEqual(now.rows, self.now.rows)
                self.assertEqual(now.lookups, self.now.lookups)
            self.kept += 1
        return len(left.rows)

    def scan_killed_over_other_tags(self, number, moment, after_rows):
        held = self.held
        self.change_music()
        left = self.killed_scan(moment, after_rows)
        with self.subTest(number=number, moment=round(moment, 4), seed=OPTIONS.seed):
            self.assertLessEqual(held.rows.keys(), left.rows.keys(), "rows that are gone")
            torn = left.rows.items() - self.now.rows.items() - held.rows.items()
            self.assertEqual(sorted(torn)[:3], [], "rows that are not whole")
            self.quick = False
            _, now = self.whole_scan()
            self.assertEqual(now.rows, self.now.rows)
            self.assertEqual(now.lookups, held.lookups | self.now.lookups)
            self.kept += 1
        return len((left.rows.items() & self.now.rows.items()) - self.before.rows.items())

    @staticmethod
    def without_new_oggs(rows, left):
        return {path: row for path, row in rows.items() if not path.endswith(b".ogg") or path in left}

    def test_first_starts(self):
        """Killed while the library is made: the next start has a whole one."""
        count = max(OPTIONS.count // 10, 3)
        for _ in range(count):
            self.forget_library()
            self.quick = False
            write_settings(self.home, Language="GER")
            self.program = subprocess.Popen([os.environ["QUAVERNET_PROGRAM"]], env=self.desktop.environment,
                                            cwd=self.home)
            time.sleep(self.chance.uniform(0, 0.25))
            self.kill()
            self.start_soon()
            wait_until("the library", lambda: self.library.values("select count(*) from Genres"))
            self.kill()
            self.assertEqual(Content(self.library.path).rows, {})
            self.assertEqual(left_copies(self.library_folder), [])
        show(f"first starts: {count} killed")


class KilledSaveTest(unittest.TestCase):
    """The writers of the product in a process of their own."""

    def setUp(self):
        self.chance = random.Random(OPTIONS.seed + 1)
        self.folder = tempfile.mkdtemp(prefix="quavernet-kill-")
        self.addCleanup(shutil.rmtree, self.folder, True)
        self.path = os.path.join(self.folder, "a.mp3")

    @staticmethod
    def audio(size):
        return random.Random(7).randbytes(size)

    @staticmethod
    def tag(title, padding, behind=b""):
        """A tag of version 2.3 with this title, further frames and padding."""
        frames = b"TIT2" + struct.pack(">I", len(title) + 1) + b"\0\0\0" + title + behind + bytes(padding)
        size = len(frames)
        return b"ID3\3\0\0" + bytes([size >> 21 & 127, size >> 14 & 127, size >> 7 & 127, size & 127]) + frames

    @staticmethod
    def picture(size):
        return b"APIC" + struct.pack(">I", size) + b"\0\0" + b"\0image/jpeg\0\3\0" + b"p" * (size - 14)

    def ogg(self, title, *options):
        """A song of the real encoder; the comments among the options come before its title."""
        wave = os.path.join(self.folder, "song.wav")
        subprocess.run(["sox", "-R", "-n", "-r", "44100", "-c", "2", "-b", "16", wave, "synth", "5", "pinknoise"], check=True)
        subprocess.run(["oggenc", "-Q", "--serial", "1", *options, "-t", title, "-o", self.path, wave], check=True)
        os.remove(wave)
        return self.read()

    def write(self, data, path=None):
        with open(path or self.path, "wb") as file:
            file.write(data)

    def read(self, path=None):
        with open(path or self.path, "rb") as file:
            return file.read()

    def saved(self, form, text):
        """The file after an undisturbed save."""
        subprocess.run([HELPER, "step", "1000000", form, self.path, text], check=False)
        return self.read()

    def forms(self):
        """Name, writer, first content, and the two texts that are written by turns."""
        song = self.audio(100_000)
        short = self.tag(b"a" * 20, 200)
        behind = self.tag(b"a" * 20, 200, self.picture(30_000))
        v1 = b"TAG" + b"x" * 125
        within = song + bytes(-(len(song) + 128) % PAGE) + v1  # The tag ends where a page ends.
        over = song + bytes(-(len(song) + 64) % PAGE) + v1     # A page ends in its middle.
        commented = self.ogg("a" * 30)
        noted = self.ogg("a" * 30, "-c", "X-NOTE=" + "n" * 5000)
        return [("Ogg in place", "ogg", commented, "b" * 30, "c" * 30),
                ("Ogg over a page's end", "ogg", noted, "b" * 30, "c" * 30),
                ("Ogg by a copy", "ogg", commented, "b" * 3000, "c" * 40),
                ("Ogg with other numbers of the pages", "ogg", commented, "b" * 70000, "c" * 40),
                ("v2 in place", "v2", short + song, "b" * 30, "c" * 40),
                ("v2 over a page's end", "v2", behind + song, "b" * 30, "c" * 40),
                ("v1 in a page", "v1", within, "b" * 30, "c" * 30),
                ("v1 over a page's end", "v1", over, "b" * 30, "c" * 30),
                ("v1 into a file without one", "v1", song + bytes(-(len(song) + 64) % PAGE) + bytes(128),
                 "b" * 30, "c" * 30)]

    def leave_nothing(self):
        """What is left is no music, and the next save that copies takes it away."""
        for name in left_copies(self.folder):
            self.assertFalse(name.lower().endswith((".mp3", ".wav", ".ogg")))
        other = os.path.join(self.folder, "other.mp3")
        self.write(self.tag(b"a", 0) + self.audio(1000), other)
        subprocess.run([HELPER, "grow", "b" * 100, other], check=True, stdout=subprocess.DEVNULL)
        self.assertEqual(left_copies(self.folder), [])
        os.remove(other)

    def start_writer(self, *arguments):
        writer = subprocess.Popen([HELPER, *arguments], stdout=subprocess.PIPE)
        self.assertEqual(writer.stdout.readline(), b"ready\n")
        return writer

    def kill_soon(self, writer, longest):
        time.sleep(self.chance.uniform(0, longest))
        writer.kill()
        writer.wait()
        writer.stdout.close()
        self.assertIn(writer.returncode, (-signal.SIGKILL, 0))

    def test_saves_at_random_moments(self):
        for name, form, first, one, two in self.forms():
            self.write(first)
            states = [first]
            for text in (one, two, one):
                states.append(self.saved(form, text))
            self.assertEqual(len(set(states)), 3, "the same text gives the same bytes")
            seen = []
            for _ in range(OPTIONS.count):
                self.write(first)
                self.kill_soon(self.start_writer("save", form, self.path, one, two), 0.03)
                now = self.read()
                with self.subTest(form=name, seed=OPTIONS.seed):
                    self.assertIn(now, states)
                seen.append(states.index(now))
            show(f"saves, {name}: {OPTIONS.count} killed; old file {seen.count(0)} times, one text {seen.count(1)} times, "
                 f"the other {seen.count(2)} times; copies left {len(left_copies(self.folder))}")
            self.leave_nothing()

    def test_saves_by_a_copy_at_random_moments(self):
        """The copy is large, so that most of the time goes into writing it."""
        old = self.tag(b"a" * 20, 0) + self.audio(4_000_000)
        store = os.path.join(self.folder, "store")
        os.mkdir(store)
        self.write(old)
        new = self.saved("v2", "b" * 200)
        self.assertNotEqual(new, old)
        files = [os.path.join(store, f"{number:02}.mp3") for number in range(20)]
        counts = {old: 0, new: 0}
        left = 0
        for _ in range(OPTIONS.count):
            self.write(old)
            for path in files:  # A save by a copy leaves the other names of the old file alone.
                if os.path.exists(path):
                    os.remove(path)
                os.link(self.path, path)
            self.kill_soon(self.start_writer("grow", "b" * 200, *files), 0.1)
            with self.subTest(seed=OPTIONS.seed):
                for path in files:
                    now = self.read(path)
                    self.assertIn(now, counts)
                    counts[now] += 1
            left += len(left_copies(store))
        show(f"saves, v2 by a copy: {OPTIONS.count} killed; of {OPTIONS.count * len(files)} files {counts[old]} were old, "
             f"{counts[new]} new; copies left {left}")
        shutil.rmtree(store)
        self.leave_nothing()

    def test_each_system_call(self):
        """Stopped before and after each call in turn, and killed there."""
        grow = ("v2 by a copy", "v2", self.tag(b"a" * 20, 0) + self.audio(3_000_000), "b" * 200, "")
        for name, form, first, text, _ in [*self.forms(), grow]:
            self.write(first)
            new = self.saved(form, text)
            stops, changed, left = 0, 0, 0
            while True:
                self.write(first)
                stops += 1
                code = subprocess.run([HELPER, "step", str(stops), form, self.path, text]).returncode
                self.assertIn(code, (0, 7))
                now = self.read()
                with self.subTest(form=name, call=stops):
                    self.assertIn(now, (first, new))
                changed += now == new
                left = max(left, len(left_copies(self.folder)))
                if code == 7:
                    break
            self.assertEqual(self.read(), new)
            self.assertGreater(stops, 10)
            show(f"saves, {name}: killed at each of {stops - 1} stops; new file after {changed - 1} of them; "
                 f"copies left at once at most {left}")
            self.leave_nothing()

    def test_each_system_call_of_a_whole_copy(self):
        """As the library is made from its template."""
        source = os.path.join(self.folder, "source")
        self.write(self.audio(200_000), source)
        stops = 0
        while True:
            if os.path.exists(self.path):
                os.remove(self.path)
            stops += 1
            code = subprocess.run([HELPER, "step", str(stops), "copy", self.path, source]).returncode
            with self.subTest(call=stops):
                self.assertIn(code, (0, 7))
                if os.path.exists(self.path):
                    self.assertEqual(self.read(), self.read(source))
            if code == 7:
                break
        self.assertTrue(os.path.exists(self.path))
        show(f"whole copies: killed at each of {stops - 1} stops")
        self.leave_nothing()


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=200, help="kills of each kind (200)")
    parser.add_argument("--files", type=int, default=16000, help="files of a scan (16000)")
    parser.add_argument("--seed", type=int, default=2026, help="of the random moments (2026)")
    parser.add_argument("tests", nargs="*", help="names of test cases (all)")
    parser.parse_args(namespace=OPTIONS)
    show(f"kill: seed {OPTIONS.seed}, {OPTIONS.count} kills of each kind")
    unittest.main(argv=[sys.argv[0], *OPTIONS.tests])


if __name__ == "__main__":
    main()
