"""Covers of albums: given by a drop, opened, dragged out, looked up and taken away, from the menu's window and out of
the details of a file."""
import os
import subprocess
import time
import unittest

from desktop import ProgramTest, wait_until

ROW_1 = (300, 118)
COVERS = "^Cover Verwaltung$"

LABEL = (574, 251)  # "Cover..." in the details

# In the covers' window of its first size.
ALBUM_1, ALBUM_2 = (60, 12), (60, 26)
FRONT, BACK = (281, 16), (336, 16)
IMAGE = (494, 220)
BROWSE, SEARCH, DELETE = (398, 418), (494, 418), (589, 418)


class CoversTest(ProgramTest):
    def make_file(self, name, *switches):
        wave = os.path.join(self.home, "tone.wav")
        if not os.path.exists(wave):
            subprocess.run(["sox", "-n", "-r", "44100", "-c", "2", "-b", "16", wave, "synth", "1", "sine", "440"], check=True)
        subprocess.run(["lame", "--quiet", "-b", "128", "--id3v1-only", *switches, wave,
                        os.path.join(self.home, "Musik", name)], check=True)

    def make_picture(self, name, *options):
        path = os.path.join(self.home, name)
        subprocess.run(["convert", "-size", "600x500", *options, path], check=True)
        return path

    def start_with_albums(self):
        self.make_file("a.mp3", "--tt", "Eins", "--ta", "Abba", "--tl", "Arrival")
        self.make_file("b.mp3", "--tt", "Zwei", "--ta", "Cure", "--tl", "Wish")
        self.store(ScanLog=0)
        self.record_opener()
        window = self.start()
        self.scan(window, os.path.join(self.home, "Musik"))
        self.await_scan(window, 2)
        return window

    def covers(self, column="Front"):
        return self.library.values(f"select {column} from Covers order by Cover_id")

    def open_covers(self, window):
        covers = self.desktop.window_after_key(window, "ctrl+l", COVERS)
        self.desktop.activate(covers)
        return covers

    def press_button(self, covers, place, what, condition):
        """Clicks until it has shown; on a busy machine a click may come too early."""
        for _ in range(5):
            self.desktop.click(covers, *place)
            end = time.monotonic() + 5
            while time.monotonic() < end:
                if condition():
                    return
                time.sleep(0.05)
        raise AssertionError("waited in vain for " + what)

    def test_images_are_dropped_opened_dragged_out_looked_up_and_taken_away(self):
        front = self.make_picture("Vorn's Bild ü.jpg", "gradient:red-yellow")
        back = self.make_picture("hinten.png", "plasma:blue-white")
        window = self.start_with_albums()
        covers = self.open_covers(window)
        _, _, width, height = self.desktop.geometry(covers)
        self.assertGreaterEqual((width, height), (738, 494))
        self.desktop.key("Down")
        self.desktop.picture("covers-1-empty")
        x, y = self.at(covers, (0, 0))
        partner = self.start_partner([front, back])
        self.desktop.ask("xdotool", "windowmove", "--sync", partner, 1000, 700)
        middle = self.at(partner, (110, 150))

        self.drag(middle, (x + IMAGE[0], y + IMAGE[1]))
        wait_until("the front in the library", lambda: self.covers() == [front])
        self.desktop.picture("covers-2-front")
        self.assertGreater(self.desktop.colours(covers, 0.45, 0.2, 0.9, 0.7), 50, "the picture is shown")

        self.desktop.activate(covers)
        self.desktop.ask("xdotool", "mousemove", "--window", covers, *IMAGE, "click", "--repeat", 2, "--delay", 60, 1)
        wait_until("the desktop's opener", lambda: self.opener_calls() == [[front]])

        self.desktop.click(covers, *BACK)  # after the album is chosen again, the panel still names the front there
        self.desktop.click(covers, *ALBUM_2)
        self.desktop.click(covers, *ALBUM_1)
        self.drag((x + IMAGE[0], y + IMAGE[1]), (x + IMAGE[0] + 90, y + IMAGE[1] + 90))
        time.sleep(1)
        self.assertEqual(self.covers("Back"), [""], "let go over its own box it is no new image")
        self.desktop.click(covers, *FRONT)
        self.drag((x + IMAGE[0], y + IMAGE[1]), middle)
        wait_until("the front on the other side", lambda: self.dropped() == [front])
        self.end_partner()

        self.press_button(covers, SEARCH, "the browser", lambda: len(self.opener_calls()) == 2)
        self.assertEqual(self.opener_calls()[1], ["http://covers.example.org/search.php?action=search&what=Abba  Arrival"
                                                  "&category=audio&submit=++Suche++"])
        self.expect_caged(trials=2)
        self.press_button(covers, DELETE, "the front to go", lambda: self.covers() == [""])
        self.desktop.picture("covers-3-deleted")
        self.assertGreater(self.desktop.colours(covers, 0.45, 0.2, 0.9, 0.7), 50, "the old picture stays")
        self.desktop.click(covers, *ALBUM_2)
        wait_until("the empty box", lambda: self.desktop.colours(covers, 0.45, 0.2, 0.9, 0.7) == 1)

        self.desktop.key("Escape")
        wait_until("the covers to go", lambda: not self.desktop.windows(COVERS))
        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)
        self.assertTrue(os.path.exists(front), "the files stay where they are")

    def test_the_details_lead_to_the_album_and_both_windows_work(self):
        back = self.make_picture("hinten.png", "plasma:blue-white")
        window = self.start_with_albums()
        self.desktop.click(window, *ROW_1)
        details = self.desktop.window_after_key(window, "ctrl+i", "^Details")
        self.desktop.activate(details)
        self.desktop.picture("covers-4-details")
        self.press_button(details, LABEL, "the covers", lambda: self.desktop.windows(COVERS))
        covers = self.desktop.window(COVERS)
        self.desktop.activate(covers)
        self.desktop.picture("covers-5-beside")
        self.press_button(covers, BROWSE, "the file dialog", lambda: self.desktop.windows("^Öffnen$"))
        self.desktop.type(back)
        self.desktop.key("Return")
        wait_until("the front in the library", lambda: self.covers() == [back])
        self.assertEqual(self.library.values("select A.Name from Albums A, Covers C where A.Album_id = C.Album_id"), ["Arrival"])
        self.desktop.activate(details)
        self.desktop.key("Escape")
        wait_until("the details to go", lambda: not self.desktop.windows("^Details"))
        self.desktop.activate(covers)
        self.desktop.picture("covers-6-after")
        self.press_button(covers, DELETE, "the front to go", lambda: self.covers() == [""])
        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)


if __name__ == "__main__":
    unittest.main()
