#!/usr/bin/env python3
"""The real program scans a folder that holds everything a scan can stumble over, while another process changes files
in it, and takes the same files by drag and drop.

    check_nasty.py [--short]

It ends alive, within bounds of time and memory; the library passes the integrity check; the rows of all good files
are right; what was passed over is named in the scan log with its reason, and nothing else is. With --short files and
tags are smaller. The superuser's run makes device files and goes on as the user nobody, whom rights bind.
"""
import argparse
import os
import random
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import time
import unittest
import urllib.parse

from support import Content, SCAN_LOG, write_settings
from nasty_folder import CIRCLE, MISSING, NO_ACCESS, NO_PLAIN_FILE, UNREADABLE, NastyFolder
import test_drag
from desktop import wait_until

OPTIONS = argparse.Namespace()
NOBODY = "65534"
SYSTEM_PYTHON = "/usr/bin/python3"  # One that everybody may run, wherever this one is.
MOST_SECONDS = 100       # of the whole scan, on a machine of two cores with other work
MOST_MEGABYTES = 1200    # resident at the peak: the largest comment header is kept a few times over
LEAST, CUT, GROWN = 100, 20000, 1 << 24  # lengths that moving files get; the header that their rows need stays
REASONS = {NO_ACCESS: "no access", MISSING: "missing", CIRCLE: "link to itself", NO_PLAIN_FILE: "not a plain file",
           UNREADABLE: "not readable: "}
NO_BIT_RATE = "tells no nominal bit rate"  # of a file that is named as an Ogg file


def show(text):
    print(text, flush=True)


def shown(path):
    """A path as it is on the screen; wrong bytes in a row count as one."""
    return re.sub("\ufffd+", "\ufffd", path.decode("utf-8", "replace"))


class Mover(threading.Thread):
    """Files that come, grow, shrink, lose and regain their rights and go, for as long as the scan runs. Every second one,
    `lasting`, is there all the time, whatever becomes of its length and its rights."""

    def __init__(self, folder, audio):
        super().__init__(daemon=True)
        self.folder, self.audio, self.stopped, self.rounds = folder, audio, False, 0
        os.makedirs(folder)
        self.chance = random.Random(4)
        self.files = [os.path.join(folder, b"%03d." % number + ending) for number in range(100) for ending in audio]
        self.lasting = set(self.files[::2])
        for path in self.files:
            self.make(path)

    def make(self, path):
        with open(path, "wb") as file:
            file.write(self.audio[path[-3:]]["data"])

    def change(self, path):
        os.chmod(path, 0o644)
        act = self.chance.randrange(3 if path in self.lasting else 5)
        if act == 0:
            os.truncate(path, self.chance.randrange(LEAST, CUT))
        elif act == 1:
            os.truncate(path, GROWN)
        elif act == 2:
            os.chmod(path, 0)
        elif act == 3:
            os.remove(path)
            self.make(path)
        else:
            os.rename(path, path + b".gone")
            os.mkdir(path)
            os.rmdir(path)
            os.rename(path + b".gone", path)

    def run(self):
        while not self.stopped:
            self.change(self.chance.choice(self.files))
            self.rounds += 1


class NastyTest(test_drag.DragTest):
    test_files_come_in_by_the_list_alone_and_go_out_as_a_list_of_files = None
    maxDiff = None

    def setUp(self):
        super().setUp()
        self.audio = self.real_audio()
        self.nasty = NastyFolder(os.path.join(self.home, "Musik", "nasty"), self.audio,
                                 os.environ.get("QUAVERNET_NASTY_DEVICES"))
        self.addCleanup(self.nasty.remove)
        write_settings(self.home, Language="ENG", ScanpathValue=1, Scanpath=os.fsdecode(self.nasty.root), ScanLog=1)

    def real_audio(self):
        """One real file of each format, and what its row must hold."""
        work = tempfile.mkdtemp(dir=self.home)
        wave, song, stream = (os.path.join(work, name) for name in ("a.wav", "a.mp3", "a.ogg"))
        subprocess.run(["sox", "-R", "-n", "-r", "44100", "-c", "2", "-b", "16", wave, "synth", "2", "sine", "440"],
                       check=True)
        subprocess.run(["lame", "--quiet", "-b", "128", "--tt", "Lied", "--ta", "Wer", "--tl", "Platte", "--id3v1-only", wave,
                        song], check=True)
        subprocess.run(["oggenc", "-Q", "-b", "128", "-t", "Lied", "-a", "Wer", "-l", "Platte", "-o", stream, wave], check=True)
        tagged = dict(title=b"Lied", performer=b"Wer", album=b"Platte", quality=b"128", length=b"2")
        rows = {b"mp3": tagged, b"ogg": tagged, b"wav": dict(quality=b"16", length=b"2", album=b"No album...")}
        found = {}
        for ending, path in ((b"mp3", song), (b"wav", wave), (b"ogg", stream)):
            with open(path, "rb") as file:
                found[ending] = dict(data=file.read(), row=rows[ending])
        return found

    def peak_megabytes(self):
        with open(f"/proc/{self.program.pid}/status", encoding="ascii") as file:
            return int(re.search(r"VmHWM:\s*(\d+)", file.read()).group(1)) // 1024

    def start_english(self):
        window = self.start()
        self.assertTrue(self.desktop.title(window).startswith("Quavernet - last scan"))
        return window

    def check_rows(self, content, good):
        wrong = {}
        for path, wanted in good.items():
            row = content.row(path)
            differing = ("no row" if row is None else
                         {name: (row[name][:80], value) for name, value in wanted.items() if row[name] != value})
            if differing:
                wrong[shown(path)[-80:]] = differing
        self.assertEqual(wrong, {})

    def skipped_lines(self):
        """What a scan by the program's own forms, without a screen, writes into its log; and its library."""
        documents = os.path.join(self.home, "second")
        os.makedirs(documents)
        told = subprocess.run([SCAN_LOG, documents, self.nasty.root], capture_output=True, timeout=MOST_SECONDS,
                              env=dict(self.desktop.environment, QT_QPA_PLATFORM="offscreen"))
        self.assertEqual(told.returncode, 0, told.stderr)
        lines = told.stdout.decode().split("\0")
        return ([line for line in lines if line.startswith("Skipped")],
                Content(os.path.join(documents, "Quavernet Database", "Quavernet.db")))

    def log_of(self, lines):
        """From the shown path of what was passed over to the reason."""
        told = {}
        for line in lines:
            match = re.fullmatch(r"Skipped\.\.\. (.*) \(([^()]*(?:\([^()]*\)[^()]*)*)\)", line, re.S)
            self.assertTrue(match, line)
            told[re.sub("\ufffd+", "\ufffd", match.group(1))] = match.group(2)
        self.assertEqual(len(told), len(lines), "an entry is named once")
        return told

    def check_log(self, told, moving):
        missing = {shown(path): number for path, number in self.nasty.skipped.items()
                   if not told.get(shown(path), "").startswith(REASONS[number])
                   and not (number == UNREADABLE and path.endswith(b".ogg") and told.get(shown(path)) == NO_BIT_RATE)}
        self.assertEqual({path[-80:]: (REASONS[number], told.get(path)) for path, number in missing.items()}, {})
        expected = {shown(path) for path in self.nasty.skipped}
        others = [path for path in told if path not in expected and not path.startswith(shown(moving) + "/")]
        self.assertEqual(others, [])

    def check_moving(self, mover, content, told=None):
        """A file that changes has a row with values that it had at some time, or the log of the same scan names it; only
        one that was not there for a moment may be in neither. Without a log the rows alone are looked at."""
        wrong, lost = {}, []
        for path in mover.files:
            row, reason, real = content.row(path), (told or {}).get(shown(path)), mover.audio[path[-3:]]
            if row is not None:
                size = int(row["size"])
                if (row["name"] != os.path.basename(path) or row["quality"] not in (b"0", real["row"]["quality"])
                        or not (size <= max(CUT, len(real["data"])) or size == GROWN) or reason is not None):
                    wrong[path] = (row, reason)
            elif reason is not None:
                if not reason.startswith((*REASONS.values(), NO_BIT_RATE)):
                    wrong[path] = reason
            elif path in mover.lasting:
                lost.append(path)
        self.assertEqual(wrong, {})
        known = set(mover.files)
        self.assertEqual([path for path in content.rows if path.startswith(mover.folder + b"/") and path not in known], [])
        if told is not None:
            self.assertEqual(lost, [])
            names = {shown(path) for path in known}
            self.assertEqual([path for path in told if path.startswith(shown(mover.folder) + "/") and path not in names], [])

    def test_a_scan(self):
        self.nasty.fill(10_000, not OPTIONS.short)
        moving = self.nasty.at(b"moving")
        mover = Mover(moving, self.audio)
        window = self.start_english()
        before = self.desktop.geometry(window)
        begin = time.monotonic()
        mover.start()
        self.desktop.key("ctrl+s")
        for _ in range(1000):
            title = self.desktop.title(window)
            if title.startswith("Quavernet - last scan: ") and not title.endswith("-"):
                break
            self.assertIsNone(self.program.poll(), "the program has ended")
            self.assertLess(time.monotonic() - begin, MOST_SECONDS)
            time.sleep(0.1)
        seconds = time.monotonic() - begin
        self.desktop.picture("nasty-scanned")
        megabytes = self.peak_megabytes()
        self.assertLess(megabytes, MOST_MEGABYTES)
        self.desktop.close_window("^Scan Log$")
        self.assertEqual(self.desktop.geometry(window)[2:], before[2:])
        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)

        lines, second = self.skipped_lines()
        mover.stopped = True
        mover.join()
        told = self.log_of(lines)
        self.check_log(told, moving)
        self.check_moving(mover, Content(self.library.path))
        self.check_moving(mover, second, told)
        for content in (Content(self.library.path), second):
            self.check_rows(content, self.nasty.good)
            others = [path for path in content.rows
                      if path not in self.nasty.good and not path.startswith(moving + b"/")]
            self.assertEqual(others, [])
        show(f"nasty scan: {len(self.nasty.good)} good files stored, {len(told)} entries named as skipped, "
             f"{self.nasty.noise} others; {mover.rounds} changes meanwhile; {seconds:.1f} s, {megabytes} MB at the peak")

    def stored(self):
        return self.library.values("select count(*) from Files")

    def drop(self, window, paths, count):
        """Drops the files; the library then holds so many."""
        partner = subprocess.Popen([os.environ["QUAVERNET_DRAG_PARTNER"], *("file://" + urllib.parse.quote(path) for path in paths)],
                                   env=self.desktop.environment, stdout=subprocess.DEVNULL)
        middle = self.at(self.desktop.window("^Drag partner$"), (110, 150))
        before = self.stored()
        for _ in range(3):  # On a busy machine a hand may let go before the list has answered: then it tries again.
            self.drag(middle, self.at(window, test_drag.LIST_MIDDLE))
            end = time.monotonic() + 15
            while self.stored() == before and time.monotonic() < end:
                time.sleep(0.05)
            if self.stored() != before:
                break
        wait_until("the dropped files", lambda: self.stored() == [count])
        partner.terminate()
        partner.wait()
        wait_until("the partner to go", lambda: not self.desktop.windows("^Drag partner$"))

    def test_dropped_files(self):
        self.nasty.names()
        self.nasty.links()
        self.nasty.no_files()
        self.nasty.no_rights()
        self.nasty.lengths()
        self.nasty.damaged()
        self.nasty.large_files(300 << 20)
        self.nasty.large_tags(20 << 20)
        window = self.start_english()
        # An Ogg file goes the way of the others here, sound or not: all that its row tells is its name. And a file
        # without a tag is named after the one before it.
        good = {path: dict(name=row["name"]) if path.endswith(b".ogg") else
                {name: value for name, value in row.items() if name != "title" or value in (b"Lied", b"Riese")}
                for path, row in self.nasty.good.items()}
        good.update({path: dict(name=os.path.basename(path)) for path, reason in self.nasty.skipped.items()
                     if reason == UNREADABLE})
        # A file that may not be opened is one without tag and length. In a folder that may only be entered all is well.
        closed = self.nasty.at(b"no rights", b"closed")
        good.update({closed + b"." + ending: dict(name=b"closed." + ending, quality=b"0", length=b"0")
                     for ending in self.audio})
        good[self.nasty.at(b"no rights", b"no list", b"inside.mp3")] = dict(name=b"inside.mp3", **self.audio[b"mp3"]["row"])
        self.drop(window, list(good), len(good))

        # What is no file, or none that can be asked for, ends its drop: what came before stays, what comes after is left.
        others = [path for path in self.nasty.skipped if os.path.splitext(path)[1] in (b".mp3", b".wav", b".ogg")
                  and self.nasty.skipped[path] in (NO_PLAIN_FILE, MISSING, CIRCLE)]
        others += [os.path.join(closed, b"inside.mp3"), self.nasty.at(b"no rights", b"no entry", b"inside.mp3")]
        behind = self.nasty.at(b"behind.mp3")
        self.nasty.put(behind, self.audio[b"mp3"]["data"])
        for number, path in enumerate(others):
            before = self.nasty.at(b"before %d.mp3" % number)
            self.nasty.put(before, self.audio[b"mp3"]["data"])
            self.drop(window, [before, path, behind], len(good) + number + 1)
            self.assertIsNone(self.program.poll())
        self.desktop.picture("nasty-dropped")
        megabytes = self.peak_megabytes()
        self.assertLess(megabytes, MOST_MEGABYTES)
        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)
        content = Content(self.library.path)
        self.check_rows(content, good)
        self.assertEqual(len(content.rows), len(good) + len(others))
        self.assertNotIn(behind, content.rows)
        show(f"nasty drop: {len(good)} good files stored in one drop, {len(others)} drops ended by what is no file; "
             f"{megabytes} MB at the peak")


def go_on_as_nobody():
    """Rights don't bind the superuser. Everything that nobody needs lies in a folder of his own."""
    here = os.path.dirname(os.path.abspath(__file__))
    base = tempfile.mkdtemp(prefix="quavernet-nasty-")
    program = os.environ["QUAVERNET_PROGRAM"]
    try:
        for folder in ("bin", "tests", "devices", "pictures", "tmp"):
            os.makedirs(os.path.join(base, folder))
        for name in ("quavernet", "Quavernet.db", "reliability_helper", "reliability_scan_log", "drag_partner"):
            shutil.copy2(os.path.join(os.path.dirname(program), name), os.path.join(base, "bin"))
        for name in ("reliability", "e2e"):
            shutil.copytree(os.path.join(os.path.dirname(here), name), os.path.join(base, "tests", name))
        for name, device in (("zero.mp3", os.makedev(1, 5)), ("console.ogg", os.makedev(5, 1))):
            try:
                os.mknod(os.path.join(base, "devices", name), 0o20666, device)
            except PermissionError:
                show("this system lets nobody make device files: none are among the entries")
        for folder, _, names in os.walk(base):
            for name in (folder, *names):
                os.chown(os.path.join(folder, name), int(NOBODY), int(NOBODY))
        surroundings = dict(os.environ, HOME=base, TMPDIR=os.path.join(base, "tmp"),
                            QUAVERNET_PROGRAM=os.path.join(base, "bin", "quavernet"),
                            QUAVERNET_HELPERS=os.path.join(base, "bin"),
                            QUAVERNET_DRAG_PARTNER=os.path.join(base, "bin", "drag_partner"),
                            QUAVERNET_PICTURES=os.path.join(base, "pictures"),
                            QUAVERNET_NASTY_DEVICES=os.path.join(base, "devices"))
        code = subprocess.run(["setpriv", "--reuid", NOBODY, "--regid", NOBODY, "--clear-groups", SYSTEM_PYTHON,
                               os.path.join(base, "tests", "reliability", os.path.basename(__file__)), *sys.argv[1:]],
                              cwd=base, env=surroundings).returncode
        shutil.copytree(os.path.join(base, "pictures"), os.environ["QUAVERNET_PICTURES"], dirs_exist_ok=True)
        return code
    finally:
        subprocess.run(["rm", "-rf", base], check=False)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--short", action="store_true", help="300 MB and 20 MB in place of 5 GB and 200 MB")
    parser.add_argument("tests", nargs="*", help="names of test cases (all)")
    parser.parse_args(namespace=OPTIONS)
    if os.geteuid() == 0:
        sys.exit(go_on_as_nobody())
    unittest.main(argv=[sys.argv[0], *OPTIONS.tests])


if __name__ == "__main__":
    main()
