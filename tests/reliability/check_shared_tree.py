#!/usr/bin/env python3
"""Two programs change the tree of one library at once: no position is lost, none is given twice, nothing is locked.

    check_shared_tree.py [--count N] [--rounds N] [--seed S] [--only NAME]...

In the first part two processes run the program's commands without a screen, each on the tree that it has loaded after
its own last command: drops of files, rows and entries, deletions. All of them leave the positions of a category running
from 1 on without a gap when one program is alone, and so they have to with two. In the second part the real program
is started twice, and one deletes and moves entries of a tree that the other has changed meanwhile.
"""
import argparse
import collections
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from check_kill_commands import COMMANDS, PROGRAMS, run  # noqa: E402
from check_two_instances import Instance  # noqa: E402
from command_model import State  # noqa: E402
from support import Content  # noqa: E402
from desktop import ProgramTest, wait_until  # noqa: E402

OPTIONS = argparse.Namespace(count=2000, rounds=6, seed=2026)
LONGEST = 900  # seconds
INSERT = re.compile("insert into filecategories", re.I)
TREE_LEFT, TREE_TOP, ROW_HEIGHT = 90, 72, 18  # of the nodes' names, in a window of the first start's size


def expect_in_order(test, state):
    """In each category the positions run from 1 on; each entry names its category and its file."""
    for category, name in state.categories.items():
        entries = [state.entries[key] for key in state.children(category)]
        test.assertEqual(sorted(entry.position for entry in entries), list(range(1, len(entries) + 1)), name)
        for entry in entries:
            test.assertEqual((entry.parent, entry.name), (name, state.shown(entry)))
    test.assertLessEqual({entry.category for entry in state.entries.values()}, set(state.categories))


class SharedTree(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="quavernet-shared-")
        self.addCleanup(shutil.rmtree, self.folder, True)
        self.music = os.path.join(self.folder, "music")
        os.mkdir(self.music)
        wave = os.path.join(self.folder, "song.wav")
        subprocess.run(["sox", "-R", "-n", "-r", "44100", "-c", "2", "-b", "16", wave, "synth", "2", "pinknoise"],
                       check=True)
        first = os.path.join(self.music, "k00.mp3")
        subprocess.run(["lame", "--quiet", "-b", "64", "--ta", "Abba", "--tl", "Arrival", "--tt", "k", wave, first],
                       check=True)
        for number in range(1, 30):
            shutil.copy(first, os.path.join(self.music, f"k{number:02}.mp3"))

    def path(self, name):
        return os.path.join(self.folder, name)

    def test_commands(self):
        for number in range(OPTIONS.rounds):
            with self.subTest(round=number, seed=OPTIONS.seed):
                self.share(number)

    def share(self, number):
        library = self.path(f"{number}.db")
        shutil.copy(os.path.join(PROGRAMS, "Quavernet.db"), library)
        os.chmod(library, 0o600)
        run("prepare", library, self.music)
        start = State(run("state", library))
        expect_in_order(self, start)
        journals = [self.path(f"{number}-{one}.journal") for one in ("a", "b")]
        gathering = ("0", "200")[number % 2]
        programs = [subprocess.Popen([COMMANDS, "share", library, journal, str(OPTIONS.seed + 2 * number + index), gathering,
                                      self.music, str(OPTIONS.count)], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                     stderr=subprocess.PIPE, text=True) for index, journal in enumerate(journals)]
        for program in programs:
            self.addCleanup(program.kill)
            self.assertEqual(program.stdout.readline(), "ready\n")
        for program in programs:
            program.stdin.write("go\n")
            program.stdin.flush()
        for program in programs:
            _, failure = program.communicate(timeout=LONGEST)
            self.assertEqual((program.returncode, failure), (0, ""))
        Content(library)
        after = State(run("state", library))
        expect_in_order(self, after)
        told = [self.read(journal) for journal in journals]
        made = sum(one["made"] for one in told)
        deleted = sum(one["deleted"] for one in told)
        self.assertEqual(len(after.entries), len(start.entries) + made - deleted)
        self.assertTrue(all(one["made"] and one["deleted"] for one in told), told)
        follows = sum(one["followed"] for one in told)
        self.assertGreater(follows, 0, "neither has met a change of the other")
        print(f"round {number}: {2 * OPTIONS.count} commands, {made} entries made, {deleted} deleted, {len(after.entries)} left, "
              f"{follows} looks for an entry or category that may have moved; gathering {gathering} ms", flush=True)

    def read(self, journal):
        """What a program has done, of which nothing may have failed for the other's sake."""
        counts = collections.Counter()
        with open(journal, encoding="utf-8") as file:
            lines = file.read().splitlines()
        for line, following in zip(lines, lines[1:] + [""]):
            mark, text = line.split("\t")[:2]
            self.assertNotIn(mark, ("no turn", "no commit"), text)
            self.assertNotIn("locked", text if mark == "failed" else "")
            if mark == "sql" and not following.startswith("failed\t"):
                counts["made"] += bool(INSERT.match(text))
                counts["deleted"] += text.startswith("Delete from FileCategories where File_id")
            counts["followed"] += mark == "followed"
        return counts


class SharedWindow(ProgramTest):
    def start(self, *arguments):
        raise NotImplementedError("instances start by themselves")

    def tearDown(self):
        self.desktop.picture("shared-tree-end")

    def entries(self):
        return self.library.values("select Position || ' ' || Filename from FileCategories order by Position")

    def test_windows(self):
        """Seven entries. One program takes out its second; the other, whose window shows all of them still, its fifth
        and then its last."""
        self.fill_library()
        pair = [Instance(self, name) for name in ("a", "b")]
        for one in pair:
            one.launch()
            one.window()
            wait_until("the start picture to go", one.is_alone)
            self.desktop.activate(one.window())
            self.desktop.click(one.window(), TREE_LEFT, TREE_TOP + ROW_HEIGHT)
            self.desktop.key("Right")
        self.delete(pair[0], 2)
        wait_until("the first entry to go", lambda: len(self.entries()) == 6)
        self.delete(pair[1], 5)
        wait_until("the second entry to go", lambda: len(self.entries()) == 5)
        self.assertEqual(self.entries(), ["1 k1.wav", "2 k3.wav", "3 k4.wav", "4 k6.wav", "5 k7.wav"])
        self.delete(pair[0], 5)  # Its own window shows 1, 3, 4, 5, 6 and 7: the fifth is 6.
        wait_until("the third entry to go", lambda: len(self.entries()) == 4)
        self.assertEqual(self.entries(), ["1 k1.wav", "2 k3.wav", "3 k4.wav", "4 k7.wav"])
        for one in pair:
            self.desktop.activate(one.window())
            one.quit()
        print("two windows: three entries deleted by their places in trees that were old by then")

    def delete(self, instance, row):
        self.desktop.activate(instance.window())
        self.desktop.click(instance.window(), TREE_LEFT, TREE_TOP + ROW_HEIGHT * (1 + row))
        self.desktop.key("Delete")

    def fill_library(self):
        os.makedirs(os.path.dirname(self.library.path), exist_ok=True)
        shutil.copy(os.path.join(PROGRAMS, "Quavernet.db"), self.library.path)
        os.chmod(self.library.path, 0o600)
        folder = os.path.join(self.home, "Musik")
        os.makedirs(folder, exist_ok=True)
        wave = os.path.join(self.home, "song.wav")
        subprocess.run(["sox", "-R", "-n", "-r", "44100", "-c", "2", "-b", "16", wave, "synth", "1", "pinknoise"],
                       check=True)
        for number in range(1, 8):
            shutil.copy(wave, os.path.join(folder, f"k{number}.wav"))
        run("category", self.library.path, folder, "Alpha")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=2000, help="commands of each program and round")
    parser.add_argument("--rounds", type=int, default=6)
    parser.add_argument("--seed", type=int, default=2026)
    parser.add_argument("--only", action="append", default=[], choices=["commands", "windows"])
    parser.parse_args(namespace=OPTIONS)
    print(f"shared_tree: seed {OPTIONS.seed}", flush=True)
    parts = {"commands": "SharedTree.test_commands", "windows": "SharedWindow.test_windows"}
    unittest.main(argv=sys.argv[:1], defaultTest=[parts[name] for name in OPTIONS.only or parts])


if __name__ == "__main__":
    main()
