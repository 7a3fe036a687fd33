#!/usr/bin/env python3
"""Places that take nothing: the disk is full, or may only be read. Playlists and exchange files are refused and told, the
old ones stay as they were and no piece of a new one is left; a tag that can't be saved leaves file and library as they
were; a rename that the disk refuses leaves the file alone; what the library can't take is told, be it a tag, a cover or
a category; and when there is space again, or the disk may be written, all of them work. Small disks in memory are mounted for it, by the
superuser or in a namespace of the caller's own ("unshare --map-root-user --mount").

    check_places.py [NAME...]
"""
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

from check_kill_commands import COMMANDS, PROGRAMS, read, run
from command_model import State
from support import Content, left_copies

DISK_SIZE = 4 << 20
ENTRIES = 3000


class Places(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="quavernet-places-")
        self.addCleanup(shutil.rmtree, self.folder, True)
        self.music = os.path.join(self.folder, "music")
        os.mkdir(self.music)
        self.disk = os.path.join(self.folder, "disk")
        os.mkdir(self.disk)
        subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={DISK_SIZE},mode=0755", "quavernet-check", self.disk],
                       check=True)
        self.addCleanup(subprocess.run, ["umount", "--lazy", self.disk], check=True)
        wave = os.path.join(self.folder, "song.wav")
        subprocess.run(["sox", "-R", "-n", "-r", "44100", "-c", "2", "-b", "16", wave, "synth", "2", "pinknoise"],
                       check=True)
        for number in range(8):
            subprocess.run(["lame", "--quiet", "--id3v1-only", "-b", "64", "--ta", "Abba", "--tl", "Arrival", "--tt", str(number), wave,
                            os.path.join(self.music, f"k{number:02}.mp3")], check=True)
        self.library = os.path.join(self.folder, "Quavernet.db")
        shutil.copy(os.path.join(PROGRAMS, "Quavernet.db"), self.library)
        os.chmod(self.library, 0o600)

    def prepare(self, music):
        run("prepare", self.library, music)
        run("fill", self.library, str(ENTRIES))

    def fill(self, leave=0):
        """Leaves so many bytes free."""
        self.make_space()
        free = os.statvfs(self.disk).f_bavail * os.statvfs(self.disk).f_frsize
        with open(os.path.join(self.disk, "ballast"), "wb", buffering=0) as file:
            try:
                for _ in range(max(0, free - leave) // 4096):
                    file.write(bytes(4096))
            except OSError:
                pass

    def make_space(self):
        ballast = os.path.join(self.disk, "ballast")
        if os.path.exists(ballast):
            os.remove(ballast)

    def remount(self, mode):
        subprocess.run(["mount", "-o", f"remount,{mode}", self.disk], check=True)

    def refused(self, command, *arguments):
        """The text that tells the failure."""
        done = subprocess.run([COMMANDS, command, *arguments], capture_output=True, text=True)
        self.assertEqual(done.returncode, 1, f"{command} did not fail: {done.stdout}")
        self.assertEqual(len(done.stderr.splitlines()), 1, done.stderr)
        return done.stderr.strip()

    def writers(self):
        return (("export", os.path.join(self.disk, "tree.qvn")), ("playlist", os.path.join(self.disk, "list.m3u")))

    def look_at_writer(self, command, path, old):
        """It is refused, and nothing has changed."""
        names = sorted(os.listdir(self.disk))
        told = self.refused(command, self.library, path)
        self.assertEqual(os.path.exists(path), old is not None)
        if old is not None:
            self.assertEqual(read(path), old)
        self.assertEqual(sorted(os.listdir(self.disk)), names)
        self.assertEqual(left_copies(self.disk), [])
        return told

    def test_texts_on_a_full_disk(self):
        self.prepare(self.music)
        for command, path in self.writers():
            told = set()
            for old in (None, b"old\n"):
                for leave in (0, 4096, 65536):
                    self.make_space()
                    if old is not None:
                        with open(path, "wb") as file:
                            file.write(old)
                    self.fill(leave)
                    told.add(self.look_at_writer(command, path, old))
            self.make_space()
            run(command, self.library, path)
            self.assertGreater(read(path).count(b"\n"), ENTRIES)
            whole = read(path)
            self.fill()
            self.look_at_writer(command, path, whole)
            print(f"{command} on a full disk: refused 7 times, told as {sorted(told)}; written when there was space")

    def test_texts_in_a_place_that_may_only_be_read(self):
        self.prepare(self.music)
        for command, path in self.writers():
            told = set()
            for old in (None, b"old\n"):
                if old is not None:
                    with open(path, "wb") as file:
                        file.write(old)
                self.remount("ro")
                told.add(self.look_at_writer(command, path, old))
                self.remount("rw")
            run(command, self.library, path)
            self.assertGreater(read(path).count(b"\n"), ENTRIES)
            print(f"{command} in a place that may only be read: refused twice, told as {sorted(told)}; written afterwards")

    def row_of(self, path):
        Content(self.library)
        state = State(run("state", self.library))
        return state.file_of(path) is not None

    def test_renames(self):
        """The disk's refusal is not looked at: the library gets the wanted name, as for a file that is missing."""
        here = os.path.join(self.disk, "music")
        shutil.copytree(self.music, here)
        self.prepare(here)
        old, new = os.path.join(here, "k00.mp3"), os.path.join(here, "x" * 200 + ".mp3")
        before = read(old)
        self.fill()
        run("rename", self.library, old, os.path.basename(new))
        self.assertEqual((os.path.exists(old), read(new), self.row_of(new), self.row_of(old)), (False, before, True, False))
        self.make_space()
        old, new = os.path.join(here, "k01.mp3"), os.path.join(here, "k91.mp3")
        before = read(old)
        self.remount("ro")
        run("rename", self.library, old, os.path.basename(new))
        self.remount("rw")
        self.assertEqual((read(old), os.path.exists(new), self.row_of(new), self.row_of(old)), (before, False, True, False))
        print("renames: on a full disk the file and its row have the new name; where nothing may be written the file keeps its "
              "own, and its row has the wanted one")

    def test_renames_with_the_library_on_the_full_disk(self):
        """A failure is told, and the library is what it was before. The file may have its new name by then, never the row
        alone."""
        run("prepare", self.library, self.music)
        first = read(self.library)
        self.library = os.path.join(self.disk, "Quavernet.db")
        old, new = os.path.join(self.music, "k00.mp3"), os.path.join(self.music, "k90.mp3")
        before = read(old)
        seen = {}
        for leave in (0, 4096, 16384, 32768, 40960, 49152, 65536, 98304, 131072, 1 << 20):
            self.make_space()
            for name in os.listdir(self.disk):
                os.remove(os.path.join(self.disk, name))
            with open(self.library, "wb") as file:
                file.write(first)
            self.fill(leave)
            done = subprocess.run([COMMANDS, "rename", self.library, old, os.path.basename(new)], capture_output=True,
                                  text=True)
            self.make_space()
            is_new = os.path.exists(new)
            self.assertEqual(read(new if is_new else old), before)
            self.assertEqual(os.path.exists(old), not is_new)
            row_is_new = self.row_of(new)
            self.assertEqual(self.row_of(old), not row_is_new)
            self.assertEqual(row_is_new, done.returncode == 0, done.stderr)
            self.assertTrue(is_new or not row_is_new)
            self.assertEqual(done.stderr == "", done.returncode == 0)
            seen.setdefault((is_new, row_is_new, done.stderr.split("(")[0].strip()), []).append(leave)
            if is_new:
                os.rename(new, old)
        self.assertIn((True, True, ""), seen)
        self.assertGreater(len(seen), 1)
        for (is_new, row_is_new, told), leaves in seen.items():
            print(f"rename with the library on the full disk, {leaves} bytes free: file {'new' if is_new else 'old'}, "
                  f"row {'new' if row_is_new else 'old'}, told as {told!r}")


    def test_tags_in_a_place_that_may_only_be_read(self):
        """Refused and told; neither the file nor its row has changed. Of a version 1 tag the row has the new texts, and a
        box tells that the file is protected."""
        here = os.path.join(self.disk, "music")
        os.mkdir(here)
        wave = os.path.join(self.folder, "song.wav")
        files = [os.path.join(here, name) for name in ("k1.mp3", "k2.mp3", "k3.ogg")]
        for path, switch in zip(files, ("--id3v1-only", "--id3v2-only")):
            subprocess.run(["lame", "--quiet", "-b", "64", switch, "--tt", "before", wave, path], check=True)
        subprocess.run(["oggenc", "-Q", "-t", "before", "-o", files[2], wave], check=True)
        for path in files:
            shutil.copy(path, os.path.join(here, "t" + os.path.basename(path)[1:]))
        for number in range(4, 10):
            shutil.copy(files[0], os.path.join(here, f"k{number}.mp3"))
        run("prepare", self.library, here)
        told, state = set(), run("state", self.library)
        for name in ("t1.mp3", "t2.mp3", "t3.ogg"):
            path = os.path.join(here, name)
            before = read(path)
            for text in ("x", "y" * 3000):  # in its place, and by a copy
                self.remount("ro")
                if name == "t1.mp3":
                    self.assertEqual(run("save", self.library, path, text), ["box\tDatei ist schreibgeschützt."])
                    state = [line for line in state if path not in line]
                else:
                    told.add(self.refused("save", self.library, path, text).replace(path, "FILE"))
                self.remount("rw")
                self.assertEqual(read(path), before)
                self.assertLessEqual(set(state), set(run("state", self.library)))
            run("save", self.library, path, "x")
            self.assertNotEqual(read(path), before)
            state = run("state", self.library)
        self.assertEqual(left_copies(here), [])
        print(f"tags in a place that may only be read: refused 6 times, told as {sorted(told)} or in a box; saved afterwards")

    def test_writes_with_the_library_on_the_full_disk(self):
        """Of a tag, a cover, a category with its entries. What could not be stored is told; the library is what it was after
        one of its statements, and the row of a tag is never ahead of the file."""
        wav = os.path.join(self.folder, "wav")
        os.mkdir(wav)
        for number in range(20):
            shutil.copy(os.path.join(self.folder, "song.wav"), os.path.join(wav, f"k{number}.wav"))
        run("prepare", self.library, self.music)
        first = read(self.library)
        song = os.path.join(self.music, "k00.mp3")
        old = read(song)
        self.library = os.path.join(self.disk, "Quavernet.db")
        for command, arguments in (("save", (song, "new")), ("cover", (song,)), ("category", (wav, "New"))):
            went_well, failed, told = [], [], set()
            for leave in (0, 4096, 16384, 32768, 40960, 49152, 65536, 98304, 131072, 1 << 20):
                self.make_space()
                for name in os.listdir(self.disk):
                    os.remove(os.path.join(self.disk, name))
                with open(self.library, "wb") as file:
                    file.write(first)
                before = run("state", self.library)
                self.fill(leave)
                done = subprocess.run([COMMANDS, command, self.library, *arguments], capture_output=True, text=True)
                self.make_space()
                Content(self.library)
                after = run("state", self.library)
                self.assertEqual(done.stderr == "", done.returncode == 0)
                if done.returncode == 0:
                    went_well.append(leave)
                    self.assertNotEqual(after, before)
                else:
                    failed.append(leave)
                    told.add(done.stderr.split("(")[0].strip())
                    if command == "category":
                        self.assertLessEqual(set(before), set(after))
                        places = [int(line.split("\t")[4]) for line in after if line.startswith("entry") and "\tNew\t" in line]
                        self.assertEqual(sorted(places), list(range(1, len(places) + 1)))
                    else:
                        self.assertEqual(after, before)
                if command == "save" and done.returncode == 0:
                    self.assertNotEqual(read(song), old)
                with open(song, "wb") as file:
                    file.write(old)
            self.assertTrue(went_well and failed, (command, went_well, failed, told))
            print(f"{command} with the library on the full disk: stored with {went_well} bytes free, refused with {failed}, "
                  f"told as {sorted(told)}")


def main():
    if os.geteuid() != 0:
        os.execvp("unshare", ["unshare", "--map-root-user", "--mount", sys.executable, *sys.argv])
    unittest.main(argv=[sys.argv[0], *(f"Places.test_{name}" for name in sys.argv[1:])])


if __name__ == "__main__":
    main()
