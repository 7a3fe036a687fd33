"""While one program waits for a file of a share that hangs, another one writes into the same library, and the window of
the first is alive: it scans, or files have been dropped on its list.

    check_hanging_share.py [--only NAME]...

The share is a real one, of FUSE. A system without it is told, and the check ends with the code 77.
"""
import argparse
import os
import shutil
import subprocess
import sys
import time
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from check_two_instances import Instance, TwoInstances, wait_until  # noqa: E402
import test_drag  # noqa: E402

SLOW_SHARE = os.path.join(os.environ["QUAVERNET_HELPERS"], "slow_share")
HANGING = "hangs.mp3"
NOT_RUN = 77
FILES = 200  # Quick ones beside the one that hangs: what is stored of them waits for its commit.


def missing():
    """What it takes to have a share and is not there, or nothing."""
    if not os.access("/dev/fuse", os.R_OK | os.W_OK):
        return "no /dev/fuse that this user may open"
    if not shutil.which("fusermount3"):
        return "no fusermount3 (package fuse3)"
    if not os.path.exists(SLOW_SHARE):
        return f"no {SLOW_SHARE}, which is built where libfuse3-dev is installed"
    return None


class HangingShare(TwoInstances):
    def setUp(self):
        super().setUp()
        self.local, self.local_files = self.music("lokal", 500)
        behind, files = self.music("fern", 500)
        for path in files[FILES:]:
            os.remove(path)
        hanging = os.path.join(behind, "0", HANGING)
        shutil.copy(files[0], hanging)
        self.place = os.path.join(self.home, "share")
        os.makedirs(self.place)
        self.share = subprocess.Popen([SLOW_SHARE, behind, self.place, "0", HANGING], stdout=subprocess.PIPE, text=True)
        self.addCleanup(self.unmount)
        wait_until("the share", lambda: os.path.ismount(self.place))
        self.share_files = sorted(os.path.join(self.place, os.path.relpath(path, behind))
                                  for path in (*files[:FILES], hanging))
        os.set_blocking(self.share.stdout.fileno(), False)

    def unmount(self):
        subprocess.run(["fusermount3", "-u", "-z", self.place], check=False)
        self.share.wait()
        self.share.stdout.close()

    def hangs(self):
        return self.share.stdout.readline() == "hangs\n"

    def launch(self, name, folder):
        one = Instance(self, name, folder)
        one.launch()
        one.window()
        wait_until("the start picture to go", one.is_alone)
        return one

    def let_the_other_write(self, other):
        """The other program scans all of its files before the one that hangs has answered."""
        began = time.monotonic()
        other.press("ctrl+s")
        wait_until("the end of the other's scan", other.is_idle)
        took = time.monotonic() - began
        stored = set(self.library.files())
        self.assertLessEqual(set(self.local_files), stored)
        self.assertNotIn(os.path.join(self.place, "0", HANGING), stored, "the share has answered too early")
        print(f"while a file hung the other program scanned {len(self.local_files)} files in {took:.1f} s")

    def test_scan(self):
        waiting, other = self.launch("a", self.place), self.launch("b", self.local)
        waiting.press("ctrl+s")
        wait_until("the file that hangs", self.hangs)
        self.let_the_other_write(other)
        self.assertFalse(waiting.is_idle())
        wait_until("the end of the scan", waiting.is_idle)
        self.assertEqual(sorted(self.library.files()), sorted(self.local_files + self.share_files))
        self.assert_sound()
        for one in (waiting, other):
            one.quit()

    def test_drop(self):
        waiting, other = self.launch("a", self.local), self.launch("b", self.local)
        self.start_partner(self.share_files)
        middle = self.at(self.desktop.window("^Drag partner$"), (110, 150))
        self.desktop.activate(waiting.window())
        self.drag(middle, self.at(waiting.window(), test_drag.LIST_MIDDLE))
        wait_until("the file that hangs", self.hangs)
        self.let_the_other_write(other)
        wait_until("the dropped files", lambda: set(self.share_files) <= set(self.library.files()))
        self.assert_sound()
        self.end_partner()
        for one in (waiting, other):
            one.quit()


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--only", action="append", default=[], help="name of a test without its test_")
    told = parser.parse_args()
    lack = missing()
    if lack:
        print(f"no share that hangs can be made here: {lack}")
        sys.exit(NOT_RUN)
    names = ["HangingShare.test_" + name for name in told.only or ("scan", "drop")]
    unittest.main(argv=sys.argv[:1], verbosity=2, defaultTest=names)


if __name__ == "__main__":
    main()
