"""The charts by keyboard and mouse: both lists, plays that move a file up, rows without a file, the list of the main
window, and the dialog that sets their length and takes the counts away."""
import os
import subprocess
import time
import unittest

from desktop import DOUBLE_CLICK, ProgramTest, wait_until

TOP = (147, 35)           # buttons of the toolbar, in the main window
DATE = (173, 35)
OPTIONS_MENU = (270, 12)
LIST_ROW_1 = (300, 118)
ABOVE_ROWS = 24           # pixels from the charts' upper edge to their first row
BELOW_ROWS = 88           # pixels that the charts are higher than their rows
NEWEST = "^Aktuelle Mp3s$"
CANNOT_PLAY = "^Abspielen nicht möglich!$"
CANNOT_OPEN = "^Öffnen nicht möglich$"
OPTIONS = "^Charts und Toplist$"


class ChartsTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.record_opener()
        folder = os.path.join(self.home, "Musik")
        wave = os.path.join(self.home, "song.wav")
        subprocess.run(["sox", "-n", "-r", "44100", "-b", "16", "-c", "2", wave, "trim", "0", "1"], check=True)
        for name in "abc":
            subprocess.run(["lame", "--quiet", "--ta", name.upper(), "--tt", "Song", wave,
                            os.path.join(folder, f"{name}.mp3")], check=True)
        self.store(ScanLog=0, ExternalPlayer=1, FileCountTopList=5)
        self.window = self.start()
        self.scan(self.window, folder)
        self.await_scan(self.window, 3)
        self.files = self.library.values("select Path from Files order by File_id")

    def open_charts(self, button, title):
        """The window that a button of the toolbar brings up. A busy machine may lose a click."""
        for _ in range(3):
            self.desktop.activate(self.window)
            self.desktop.click(self.window, *button)
            end = time.monotonic() + 20
            while time.monotonic() < end:
                found = self.desktop.windows(title)
                if found:
                    self.desktop.activate(found[0])
                    return found[0]
                time.sleep(0.1)
        raise AssertionError(f"no {title!r}")

    def double_click(self, charts, row, lines):
        """Row 1 is the first of so many."""
        height = (self.desktop.geometry(charts)[3] - BELOW_ROWS) / lines
        self.desktop.activate(charts)
        time.sleep(DOUBLE_CLICK)
        self.desktop.ask("xdotool", "mousemove", "--window", charts, 150, int(ABOVE_ROWS + (row - 0.5) * height), "click",
                         "--repeat", 2, "--delay", 60, 1)

    def play(self, charts, row, lines, path):
        """A row whose file is opened, and counted once more."""
        calls = len(self.opener_calls())
        hits = self.hits(path)
        self.double_click(charts, row, lines)
        wait_until("the desktop's opener", lambda: len(self.opener_calls()) > calls)
        wait_until("the count", lambda: self.hits(path) == hits + 1)
        self.assertEqual(self.opener_calls()[calls:], [[path]])

    def answer(self, title, picture):
        box = self.desktop.window(title)
        self.desktop.picture(picture)
        self.desktop.activate(box)
        self.desktop.key("Return")
        wait_until(f"{title} to go", lambda: not self.desktop.windows(title))

    def hits(self, path):
        return dict(zip(self.library.values("select Path from Files order by File_id"),
                        self.library.values("select Hits from Files order by File_id")))[path]

    def open_options(self):
        for _ in range(3):
            self.desktop.activate(self.window)
            self.desktop.click(self.window, *OPTIONS_MENU)
            wait_until("an open menu", self.popups)
            self.desktop.key(*["Up"] * 7, "Return")  # counted from the last item
            end = time.monotonic() + 20
            while time.monotonic() < end:
                if self.desktop.windows(OPTIONS):
                    self.desktop.activate(self.desktop.window(OPTIONS))
                    return
                time.sleep(0.1)
        raise AssertionError("no dialog of the charts")

    def test_the_charts_rank_play_and_show_files_in_the_list(self):
        a, b, c = self.files
        charts = self.open_charts(TOP, "^TOP 5$")
        self.desktop.picture("charts-1-top")
        self.play(charts, 3, 5, c)  # moves up to the first row
        self.play(charts, 1, 5, c)
        self.play(charts, 3, 5, b)
        self.desktop.picture("charts-2-played")
        self.double_click(charts, 4, 5)
        self.answer(CANNOT_PLAY, "charts-3-no-file")
        os.remove(c)
        self.double_click(charts, 1, 5)
        self.answer(CANNOT_OPEN, "charts-4-missing")
        wait_until("the count of a play that failed", lambda: self.hits(c) == 3)
        self.assertEqual((self.hits(a), self.hits(b)), (0, 1))
        self.assertEqual(len(self.opener_calls()), 3)

        self.open_options()
        self.desktop.picture("charts-5-options")
        self.desktop.type("1")
        self.desktop.key("Return")
        wait_until("the dialog to go", lambda: not self.desktop.windows(OPTIONS))
        charts = self.open_charts(TOP, "^TOP 1$")
        self.desktop.key("Tab", "space")  # the button
        self.desktop.picture("charts-6-in-list")
        self.desktop.activate(self.window)
        self.desktop.click(self.window, *LIST_ROW_1)
        self.desktop.key("Return")
        self.answer(CANNOT_OPEN, "charts-7-list")  # the file that is gone, in the list's only row
        wait_until("its count", lambda: self.hits(c) == 4)

        self.open_options()
        self.desktop.key("Tab", "space", "Return")
        wait_until("the counts to go", lambda: not any(map(self.hits, self.files)))
        self.open_charts(DATE, NEWEST)
        self.desktop.picture("charts-8-newest")
        self.desktop.key("Escape")
        wait_until("the charts to go", lambda: not self.desktop.windows(NEWEST))
        self.desktop.activate(self.window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)


if __name__ == "__main__":
    unittest.main()
