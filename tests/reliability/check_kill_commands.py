#!/usr/bin/env python3
"""Commands are killed (SIGKILL) at random moments: drops, category commands, imports and exports of the tree, saves of
details, renames, covers, playlists. Nothing that was committed is lost, and nothing is torn.

    check_kill_commands.py [--count N] [--seed S] [NAME...]

The commands run in a process of their own, on a real library and real files, without a screen, and note each statement
before it runs and each commit when it is over. After the kill the library opens, passes the integrity check, and holds
what the rules say it holds after one of the statements between the last known commit and the last statement: told by
command_model.py, which knows no SQL. Text files are whole, the old ones or the new ones; a tagged file is the old or the
new one under its old or its new name, and its row is not ahead of it.
"""
import argparse
import collections
import os
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

from command_model import State, Told, states_of
from support import Content, left_copies

OPTIONS = argparse.Namespace()
PROGRAMS = os.environ["QUAVERNET_HELPERS"]
COMMANDS = os.path.join(PROGRAMS, "reliability_commands")
IMPORTED = 8
ENTRIES = 1500  # Of the category whose texts are written.
LONGEST = 0.4  # Seconds from the first command to the kill.


def show(text):
    print(text, flush=True)


def run(*arguments):
    done = subprocess.run([COMMANDS, *arguments], capture_output=True, text=True, errors="surrogateescape")
    if done.returncode != 0:
        raise AssertionError(f"{arguments[0]}: {done.stderr}")
    return done.stdout.splitlines()


def read(path):
    with open(path, "rb") as file:
        return file.read()


class KilledCommands(unittest.TestCase):
    def setUp(self):
        self.chance = random.Random(OPTIONS.seed)
        self.folder = tempfile.mkdtemp(prefix="quavernet-kill-")
        self.addCleanup(shutil.rmtree, self.folder, True)
        self.start = os.path.join(self.folder, "start.db")
        self.library = os.path.join(self.folder, "Quavernet.db")
        self.journal = os.path.join(self.folder, "journal")
        self.music = os.path.join(self.folder, "music")
        os.mkdir(self.music)

    def mp3(self, name, *options):
        """A song of the real encoder."""
        wave, path = os.path.join(self.folder, "song.wav"), os.path.join(self.music, name)
        if not os.path.exists(wave):
            subprocess.run(["sox", "-R", "-n", "-r", "44100", "-c", "2", "-b", "16", wave, "synth", "2", "pinknoise"],
                           check=True)
        subprocess.run(["lame", "--quiet", "-b", "64", "--ta", "Per " + name, "--tl", "Album " + name, "--tt", name,
                        *options, wave, path], check=True)
        return path

    def known(self, count):
        song = self.mp3("k00.mp3", "--id3v1-only")
        for number in range(1, count):
            shutil.copy(song, os.path.join(self.music, f"k{number:02}.mp3"))
        return song

    def prepare(self):
        """The library that every run begins with, and its content."""
        shutil.copy(os.path.join(PROGRAMS, "Quavernet.db"), self.start)
        os.chmod(self.start, 0o600)
        run("prepare", self.start, self.music)
        return State(run("state", self.start))

    def renew(self):
        for ending in ("", "-wal", "-shm", "-journal"):
            if os.path.exists(self.library + ending):
                os.remove(self.library + ending)
        shutil.copy(self.start, self.library)
        if os.path.exists(self.journal):
            os.remove(self.journal)

    def killed(self, command, *arguments):
        """A run on a fresh copy of the library, up to its kill. Its journal is left."""
        self.renew()
        process = subprocess.Popen([COMMANDS, command, self.library, self.journal, *arguments], stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE)
        self.assertEqual(process.stdout.readline(), b"ready\n", process.stderr.read() if process.poll() else "")
        time.sleep(self.chance.uniform(0, LONGEST))
        process.kill()
        failure = process.communicate()[1]
        self.assertEqual((process.returncode, failure), (-signal.SIGKILL, b""))

    def after(self):
        """The library opens and is sound; its content."""
        Content(self.library)
        return State(run("state", self.library))

    def find(self, start, told, now, view):
        """Where the library is in the road of its run: statements before the last one, and whether a command is half
        done."""
        states = states_of(start, told, view)
        places = [(number, whole) for number, state, whole in states if state == view(now)]
        self.assertTrue(places, "the library is none of those that the rules tell: " + self.difference(states, view(now)))
        return told.statements - places[-1][0], not places[-1][1] and places[-1][0] > 0

    @staticmethod
    def difference(states, now):
        """Of the nearest state, for whoever looks for the reason."""
        def parts(state):
            return {(number, *item) for number, part in enumerate(state) for item in part.items()}
        nearest = min(states, key=lambda one: len(parts(one[1]) ^ parts(now)))
        return (f"after statement {nearest[0]} of {states[0][0]} to {states[-1][0]} expected "
                f"{sorted(map(str, parts(nearest[1]) - parts(now)))} but found {sorted(map(str, parts(now) - parts(nearest[1])))}")

    def test_tree(self):
        """Drops, category commands and imports."""
        self.known(12)
        for number in range(40):
            shutil.copy(os.path.join(self.music, "k00.mp3"), os.path.join(self.music, f"n{number:02}.mp3"))
            with open(os.path.join(self.music, f"p{number:02}.m3u"), "w", encoding="ascii") as file:
                for name in ("k01", "none", "k03", f"n{39 - number:02}"):
                    file.write(f"#EXTINF:2,{name}\n{self.music}/{name}.mp3\n")
        with open(os.path.join(self.music, "i.qvn"), "w", encoding="ascii") as file:
            file.write("#Categories\nJazz\nGospel\n#Files\n")
            for number in range(IMPORTED):
                name = ("k", "n", "x")[number % 3] + f"{number:02}.mp3"
                file.write(f"{2 * number + 1},{('Jazz', 'Gospel')[number % 2]},{name},{self.music}/{name}\n")
        start = self.prepare()
        for kind in ("drops", "categories", "imports", "all"):
            self.kill_tree(kind, start)

    def kill_tree(self, kind, start):
        names, silent, lost, half, statements = *(collections.Counter() for _ in range(3)), 0, 0
        for number in range(OPTIONS.count):
            with self.subTest(kind=kind, run=number, seed=OPTIONS.seed):
                self.killed("tree", str(OPTIONS.seed + number), "0" if number % 2 else "200", self.music, kind)
                told = Told(self.journal)
                back, is_half = self.find(start, told, self.after(), State.told)
                lost[min(back, 9)] += 1
                half += is_half
                statements += told.statements
                names.update(command["name"] for command in told.commands)
                silent.update(command["name"] for command in told.commands if command["statements"] == 0)
        show(f"tree, {kind}: {OPTIONS.count} killed after {statements} statements of {sum(names.values())} commands "
             f"({', '.join(f'{count} {name}' for name, count in sorted(names.items()))}; "
             f"{sum(silent.values())} wrote nothing, of them {silent['clear']} clear); the library was at the last statement "
             f"{lost[0]} times, before it {sum(lost.values()) - lost[0]} times; {half} times in a command's middle")
        self.assertGreater(statements, 0)
        self.assertEqual(silent["category"], names["category"])

    def test_files(self):
        """Saves of details, renames and covers."""
        self.known(6)
        self.mp3("t1.mp3", "--id3v1-only")
        self.mp3("t2.mp3", "--id3v2-only", "--pad-id3v2-size", "1000")
        self.mp3("t4.mp3", "--id3v2-only", "--pad-id3v2-size", "0")
        subprocess.run(["oggenc", "-Q", "--serial", "1", "-t", "t3", "-o", os.path.join(self.music, "t3.ogg"),
                        os.path.join(self.folder, "song.wav")], check=True)
        start = self.prepare()
        songs = {name: self.contents(os.path.join(self.music, name)) for name in os.listdir(self.music) if name[0] == "t"}
        for kind in ("saves", "renames", "covers", "all"):
            self.kill_files(kind, start, songs)

    def kill_files(self, kind, start, songs):
        seen, half = collections.Counter(), 0
        for number in range(OPTIONS.count):
            for name in os.listdir(self.music):
                if name[0] in "tu":
                    os.remove(os.path.join(self.music, name))
            for name, contents in songs.items():
                with open(os.path.join(self.music, name), "wb") as file:
                    file.write(contents["as they were"])
            with self.subTest(kind=kind, run=number, seed=OPTIONS.seed):
                self.killed("files", str(OPTIONS.seed + number), "0" if number % 2 else "200", self.music, kind)
                told = Told(self.journal)
                half += self.find(start, told, self.after(), State.texts)[0] > 0
                self.look_at_files(told, songs, seen)
        show(f"files, {kind}: {OPTIONS.count} killed; {seen['over save']} saves, {seen['over rename']} renames and "
             f"{seen['over cover']} covers were over; in a save {seen['save']} times (file old {seen['save old']}, new "
             f"{seen['save new']}), in a rename {seen['rename']} times (old name {seen['rename old']}, new "
             f"{seen['rename new']}), in a cover {seen['cover']} times; the library was before its last statement {half} times")

    def contents(self, path):
        """The file after undisturbed saves of each text. The same text gives the same bytes."""
        copy = os.path.join(self.folder, "copy" + os.path.splitext(path)[1])
        shutil.copy(path, copy)
        self.renew()
        found = []
        for text in ("one", "two", "one"):
            run("save", self.library, copy, text)
            found.append(read(copy))
        self.assertEqual(found[0], found[2])
        self.assertEqual(len({read(path), *found}), 3)
        os.remove(copy)
        return {"as they were": read(path), "one": found[0], "two": found[1]}

    def look_at_files(self, told, songs, seen):
        names, texts = {name: name for name in songs}, {name: "as they were" for name in songs}
        last = {}
        for command in told.commands:
            kind, over = command["name"], command["over"]
            seen[("over " if over else "") + kind] += 1
            if kind == "cover":
                continue
            name = "t" + os.path.basename(command["fields"][0])[1:]
            value = command["fields"][1] if kind == "save" else os.path.basename(command["fields"][1])
            if not over:
                last = {"name": name, kind: value, "is told": command["statements"] > 0}
            elif kind == "save":
                texts[name] = value
            else:
                names[name] = value
        for name, contents in songs.items():
            mine = last if last.get("name") == name else {}
            there = [path for path in ("t" + name[1:], "u" + name[1:]) if os.path.exists(os.path.join(self.music, path))]
            self.assertEqual(len(there), 1)
            which = self.old_or_new(there[0], names[name], mine.get("rename"), mine)
            seen["rename " + which] += "rename" in mine
            now = read(os.path.join(self.music, there[0]))
            which = self.old_or_new(now, contents[texts[name]], contents.get(mine.get("save")), mine)
            seen["save " + which] += "save" in mine
        self.assertLessEqual(len(left_copies(self.music)), 1)

    def old_or_new(self, found, old, new, last):
        """The library hears of a change after the file: when its statement has been sent, nothing but the new is right."""
        if new is not None and last["is told"]:
            self.assertEqual(found, new)
        else:
            self.assertIn(found, [old] + [new] * (new is not None))
        return "old" if found == old else "new"

    def test_texts(self):
        """Exchange file and playlists, large enough that most of the time goes into writing them."""
        self.known(12)
        self.prepare()
        run("fill", self.start, str(ENTRIES))
        names = ("tree.qvn", "list.m3u", "blues.m3u")
        place = os.path.join(self.folder, "place")
        os.mkdir(place)
        states = self.both_texts(place)
        counts, left = collections.Counter(), 0
        for number in range(OPTIONS.count):
            for name in names:
                with open(os.path.join(place, name), "wb") as file:
                    file.write(states[name][0])
            with self.subTest(run=number, seed=OPTIONS.seed):
                self.killed("texts", place)
                Content(self.library)
                for name in names:
                    now = read(os.path.join(place, name))
                    self.assertIn(now, states[name])
                    counts[name, states[name].index(now)] += 1
                self.assertEqual(sorted(name for name in os.listdir(place) if name not in left_copies(place)), sorted(names))
                left += len(left_copies(place))
        for name in names:
            show(f"texts, {name} of {len(states[name][1])} bytes: {OPTIONS.count} killed; as it was {counts[name, 0]} times, one "
                 f"content {counts[name, 1]} times, the other {counts[name, 2]} times, torn never")
        show(f"texts: copies left {left}")

    def both_texts(self, place):
        """Of each file: what was there before, and its two contents, as undisturbed runs write them."""
        states = {name: [b"old\n"] for name in ("tree.qvn", "list.m3u", "blues.m3u")}
        for turns in ("1", "2"):
            self.renew()
            run("texts", self.library, self.journal, place, turns)
            for name, texts in states.items():
                texts.append(read(os.path.join(place, name)))
        for name, texts in states.items():
            self.assertEqual(len(set(texts)), 3, name)
            for text in texts[1:]:
                self.assertTrue(text.startswith(b"#Categories\n" if name == "tree.qvn" else b"#EXTM3U\r\n"))
                self.assertGreater(text.count(b"\n"), ENTRIES)
        return states


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=200, help="kills of each kind (200)")
    parser.add_argument("--seed", type=int, default=2026, help="of the random moments and commands (2026)")
    parser.add_argument("tests", nargs="*", help="names of tests (all)")
    parser.parse_args(namespace=OPTIONS)
    show(f"kill_commands: seed {OPTIONS.seed}, {OPTIONS.count} kills of each kind")
    unittest.main(argv=[sys.argv[0], *OPTIONS.tests])


if __name__ == "__main__":
    main()
