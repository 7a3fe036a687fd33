"""The sample maker: two runs give the same tree, and its files are what their names say."""
import collections
import hashlib
import os
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

TOOL = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools", "sample_music",
                    "make-sample-music")


def make(folder, *arguments):
    return subprocess.run([sys.executable, TOOL, *arguments, folder], capture_output=True, text=True)


def files_of(folder):
    return sorted(os.path.join(base, name) for base, _, names in os.walk(folder) for name in names)


def tree_hash(folder):
    total = hashlib.sha256()
    for path in files_of(folder):
        total.update(os.fsencode(os.path.relpath(path, folder)) + b"\0")
        total.update(str(int(os.stat(path).st_mtime)).encode())
        with open(path, "rb") as file:
            total.update(hashlib.sha256(file.read()).digest())
    return total.hexdigest()


class SampleMusicTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="quavernet-sample-")
        self.addCleanup(shutil.rmtree, self.folder)

    def path(self, name):
        return os.path.join(self.folder, name)

    def test_two_small_sets_are_the_same(self):
        for name in ("a", "b"):
            self.assertEqual(make(self.path(name)).returncode, 0)
        self.assertEqual(tree_hash(self.path("a")), tree_hash(self.path("b")))

    def test_two_large_sets_are_the_same_and_have_as_many_files_as_asked_for(self):
        for name in ("a", "b"):
            self.assertEqual(make(self.path(name), "--count", "300").returncode, 0)
        self.assertEqual(tree_hash(self.path("a")), tree_hash(self.path("b")))
        self.assertEqual(len(files_of(self.path("a"))), 300)

    def test_broken_files_take_the_place_of_so_many_good_ones_of_the_same_names(self):
        make(self.path("good"), "--count", "300")
        make(self.path("mixed"), "--count", "300", "--broken", "20")
        self.assertEqual([os.path.relpath(path, self.path("good")) for path in files_of(self.path("good"))],
                         [os.path.relpath(path, self.path("mixed")) for path in files_of(self.path("mixed"))])
        kinds = collections.Counter()
        for good, mixed in zip(files_of(self.path("good")), files_of(self.path("mixed"))):
            with open(good, "rb") as first, open(mixed, "rb") as second:
                data, other = first.read(), second.read()
            if other != data:
                kinds["empty" if not other else "zeros" if not any(other) else
                      "cut" if data.startswith(other) else "noise"] += 1
                self.assertTrue(data.startswith(other) or len(other) == len(data))
        self.assertEqual(sum(kinds.values()), 60)
        self.assertEqual(kinds, {"empty": 15, "zeros": 15, "cut": 15, "noise": 15})

    def test_the_small_set_holds_every_kind(self):
        make(self.path("a"))
        paths = files_of(self.path("a"))
        endings = collections.Counter(os.path.splitext(path)[1] for path in paths)
        self.assertEqual(endings[".mp3"] + endings[".MP3"] + endings[".Mp3"], 36)
        self.assertEqual(endings[".wav"] + endings[".WAV"], 12)
        self.assertEqual(endings[".ogg"] + endings[".OGG"], 8)
        self.assertGreater(endings[".MP3"], 0)
        self.assertEqual(endings[".OGG"], 1)
        starts = collections.Counter()
        for path in paths:
            with open(path, "rb") as file:
                data = file.read()
            if path.lower().endswith(".mp3"):
                starts[data[:4] if data[:3] == b"ID3" else b"audio"] += 1
                starts[b"v1"] += data[-128:-125] == b"TAG"
                starts[b"Xing"] += b"Xing" in data[:4096]
        for mark in (b"ID3\2", b"ID3\3", b"ID3\4", b"audio", b"v1", b"Xing"):
            self.assertGreater(starts[mark], 1, mark)
        self.assertTrue(any("'" in path for path in paths))
        self.assertTrue(any("ö" in path for path in paths))

    def test_the_ogg_files_hold_what_they_should(self):
        make(self.path("a"))
        folder = self.path("a/Ogg")
        told = subprocess.run(["ogginfo", *files_of(folder)], capture_output=True, text=True,
                              env=dict(os.environ, LC_ALL="C.UTF-8")).stdout
        self.assertEqual(told.count("Channels: 1"), 4)
        self.assertEqual(told.count("Channels: 2"), 4)
        self.assertEqual(told.count("ARTIST="), 4)
        self.assertEqual(told.count("Upper bitrate: 112"), 4)

    def test_a_folder_with_something_in_it_is_left_alone(self):
        os.makedirs(self.path("a"))
        open(self.path("a/x"), "w").close()
        self.assertNotEqual(make(self.path("a")).returncode, 0)
        self.assertEqual(files_of(self.path("a")), [self.path("a/x")])

    def stand_in(self, name, script):
        """A folder of programs in which this one is replaced."""
        programs = self.path("programs")
        os.makedirs(programs, exist_ok=True)
        with open(os.path.join(programs, name), "w") as file:
            file.write("#!/bin/sh\n" + script + "\n")
        os.chmod(os.path.join(programs, name), 0o755)
        return programs

    def make_with_path(self, path, folder, *arguments):
        return subprocess.run([sys.executable, TOOL, *arguments, folder], capture_output=True, text=True,
                              env=dict(os.environ, PATH=path))

    def test_missing_encoders_are_told_by_their_packages_before_anything_is_made(self):
        programs = self.stand_in("lame", "exit 0")
        told = self.make_with_path(programs, self.path("new/a"))
        self.assertNotEqual(told.returncode, 0)
        self.assertIn("these packages are missing: vorbis-tools sox\n", told.stderr)
        self.assertIn("apt-get install vorbis-tools sox", told.stderr)
        self.assertFalse(os.path.exists(self.path("new")))

    def test_an_encoder_that_fails_leaves_nothing_half_made(self):
        path = self.stand_in("oggenc", "exit 3") + ":" + os.environ["PATH"]
        os.makedirs(self.path("empty"))
        for folder in ("empty", "new/a"):
            for arguments in ((), ("--count", "60")):
                told = self.make_with_path(path, self.path(folder), *arguments)
                self.assertNotEqual(told.returncode, 0)
                self.assertIn("oggenc failed; nothing was made", told.stderr)
        self.assertEqual(os.listdir(self.path("empty")), [])
        self.assertFalse(os.path.exists(self.path("new")))

    def test_a_run_that_is_ended_leaves_nothing_half_made(self):
        path = self.stand_in("oggenc", f"touch '{self.path('begun')}'; sleep 1; exit 3") + ":" + os.environ["PATH"]
        run = subprocess.Popen([sys.executable, TOOL, self.path("a")], stderr=subprocess.DEVNULL,
                               env=dict(os.environ, PATH=path))
        while not os.path.exists(self.path("begun")):
            time.sleep(0.05)
        self.assertTrue(os.listdir(self.path("a")))
        run.terminate()
        self.assertNotEqual(run.wait(30), 0)
        self.assertFalse(os.path.exists(self.path("a")))


if __name__ == "__main__":
    unittest.main()
