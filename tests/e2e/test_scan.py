"""From the first start over a scan to the second start, as a user goes."""
import datetime
import unittest

from desktop import ProgramTest, wait_until

SEARCH_BOX = (810, 35)  # where the filter row's rules put it in a window of the first start's size


class ScanTest(ProgramTest):
    def test_first_start_scan_search_and_second_start(self):
        folder, music = self.make_music()
        window = self.start()
        self.assertEqual(self.desktop.title(window), "Quavernet - letzter scan: -")
        self.assertEqual(self.library.files(), [])

        self.scan(window, folder)
        today = datetime.date.today().strftime("%d.%m.%Y")
        wait_until("the end of the scan",
                   lambda: self.desktop.title(window) == f"Quavernet - letzter scan: {today}")
        self.assertEqual(sorted(self.library.files()), music)
        self.assertIn("Änne & die Ärmel", self.library.values("select Interpret from Interpret"))
        self.assertEqual(self.library.values("select count(*) from Files where Extension_id = 3"), [8])
        self.desktop.picture("scan-1-list")

        self.close_scan_log()
        self.search_narrows_the_list(window)

        self.desktop.activate(window)
        self.desktop.ask("xdotool", "windowsize", "--sync", window, 1000, 700)
        before = self.desktop.geometry(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)

        window = self.start()
        self.assertEqual(self.desktop.title(window), f"Quavernet - letzter scan: {today}")
        self.assertEqual(self.desktop.geometry(window)[2:], before[2:])
        self.assertEqual(sorted(self.library.files()), music)
        self.desktop.picture("scan-2-again")
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)

    def close_scan_log(self):
        log = self.desktop.window("^Scan Log$")
        self.desktop.activate(log)
        self.desktop.key("alt+F4")
        wait_until("the scan log to go", lambda: not self.desktop.windows("^Scan Log$"))

    def lower_list_is_empty(self, window):
        """Whether nothing is drawn in the lower half of the list: its rows end above."""
        return self.desktop.colours(window, 0.5, 0.55, 0.9, 0.9) == 1

    def search_narrows_the_list(self, window):
        self.desktop.activate(window)
        wait_until("a full list", lambda: not self.lower_list_is_empty(window))
        self.desktop.click(window, *SEARCH_BOX)
        self.desktop.type("Song Morgen")
        self.desktop.key("Return")
        wait_until("a list of few rows", lambda: self.lower_list_is_empty(window))
        self.desktop.picture("scan-1-search")
        self.desktop.key(*["BackSpace"] * len("Song Morgen"), "Return")
        wait_until("a full list again", lambda: not self.lower_list_is_empty(window))


if __name__ == "__main__":
    unittest.main()
