"""Ends by a signal come within two seconds and lose nothing: in the start, idle, in a scan, while music plays, with a
dialog open. After each the process has ended with 0, the settings are those of the window and the library is whole.

    check_ends.py [--count N] [--seed N] [--longest SECONDS]
"""
import argparse
import os
import random
import re
import signal
import sys
import time
import unittest

import support
from desktop import ProgramTest, wait_until

OPTIONS = argparse.Namespace(count=10, seed=None, longest=2.0)
FILES = 20000  # of a scan: it takes about a second
ROW_1 = (300, 118)
SIGNALS = (signal.SIGTERM, signal.SIGINT, signal.SIGHUP)
FOLDER_DIALOG = "^Wählen Sie einen Ordner$"
FIRST_PLACE = 900  # twips: the settings' own place of the window, which each end replaces


class Ends(ProgramTest):
    def setUp(self):
        super().setUp()
        seed = OPTIONS.seed if OPTIONS.seed is not None else random.randrange(2**32)
        print(f"seed {seed}", flush=True)
        self.random = random.Random(seed)
        folder, self.music = self.make_music()
        self.many = os.path.join(self.home, "Viele")
        os.makedirs(self.many)
        sound = next(path for path in self.music if path.endswith(".mp3"))
        with open(sound, "rb") as file:
            head = file.read(4096)
        for number in range(FILES):
            with open(os.path.join(self.many, f"{number:05}.mp3"), "wb") as file:
                file.write(head)
        self.store(ScanLog=0, WindowLeft=FIRST_PLACE)
        window = self.start()
        self.scan(window, folder)
        self.await_scan(window, len(self.music))
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)

    def in_the_start(self):
        self.launch()
        time.sleep(self.random.uniform(0.02, 0.4))

    def idle(self):
        self.window = self.start()
        self.desktop.ask("xdotool", "windowmove", "--sync", self.window, 200, 120)

    def in_a_scan(self):
        self.idle()
        self.scan(self.window, self.many)
        wait_until("a running scan", lambda: re.search(r" \d+ %$", self.desktop.title(self.window)))
        time.sleep(self.random.uniform(0, 0.3))

    def playing(self):
        self.idle()
        self.desktop.click(self.window, *ROW_1)
        self.desktop.ask("xdotool", "click", "--repeat", 2, "--delay", 60, 1)
        self.desktop.window("^Quavernet Player$")
        time.sleep(self.random.uniform(0, 0.3))

    def in_a_dialog(self):
        self.idle()
        self.desktop.window_after_key(self.window, "ctrl+s", FOLDER_DIALOG)

    def test_ends_by_signals(self):
        for state in (self.in_the_start, self.idle, self.in_a_scan, self.playing, self.in_a_dialog):
            took = []
            for _ in range(OPTIONS.count):
                self.store(ScanLog=0, WindowLeft=FIRST_PLACE)
                state()
                number = self.random.choice(SIGNALS)
                begun = time.monotonic()
                self.program.send_signal(number)
                self.program.wait(60)
                took.append(time.monotonic() - begun)
                self.ended()
                self.look_at_the_end(state, number)
            print(f"{state.__name__:14} {len(took)} ends, median {sorted(took)[len(took) // 2]:.2f} s, "
                  f"longest {max(took):.2f} s", flush=True)
            self.assertLessEqual(max(took), OPTIONS.longest)

    def look_at_the_end(self, state, number):
        # A program that has not come to its signals yet ends as programs do; it has nothing to store.
        early = state == self.in_the_start and self.program.returncode == -number
        self.assertTrue(early or self.program.returncode == 0, f"ended with {self.program.returncode}")
        if state != self.in_the_start:
            with open(os.path.join(self.home, ".config", "Greyfinch Labs", "Quavernet.conf"), encoding="utf-8") as file:
                self.assertNotIn(f"WindowLeft={FIRST_PLACE}\n", file.read())
            self.assertFalse(os.path.exists(self.library.path + "-wal"))
        content = support.Content(self.library.path)
        self.assertTrue({path.encode() for path in self.music} <= set(content.rows))


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__.partition("\n")[0])
    parser.add_argument("--count", type=int, default=OPTIONS.count, help="ends in each state (10)")
    parser.add_argument("--seed", type=int, help="of the random choices; printed, so that a run can be repeated")
    parser.add_argument("--longest", type=float, default=OPTIONS.longest, help="seconds that an end may take (2)")
    parser.parse_args(namespace=OPTIONS)
    unittest.main(argv=sys.argv[:1])
