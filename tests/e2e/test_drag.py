"""Files dragged with the mouse between the program and another window."""
import os
import subprocess
import unittest
import urllib.parse

from desktop import ProgramTest, wait_until

PARTNER = os.environ["QUAVERNET_DRAG_PARTNER"]

# In a window of the first start's size, under the menu bar.
LIST_ROW_1 = (300, 118)
LIST_ROW_2 = (300, 137)
LIST_MIDDLE = (500, 400)
BACKGROUND = (960, 65)


class DragTest(ProgramTest):
    def start_partner(self, files):
        self.out = open(os.path.join(self.home, "dropped.txt"), "w+", encoding="utf-8")
        self.addCleanup(self.out.close)
        partner = subprocess.Popen([PARTNER, *files], env=self.desktop.environment, stdout=self.out)
        self.addCleanup(partner.wait)
        self.addCleanup(partner.terminate)
        return self.desktop.window("^Drag partner$")

    def dropped(self):
        """Paths that were dropped on the partner."""
        with open(self.out.name, encoding="utf-8") as file:
            uris = [line.strip() for line in file if line.strip()]
        return [urllib.parse.unquote(uri.removeprefix("file://")) for uri in uris]

    def at(self, window, place):
        x, y, _, _ = self.desktop.geometry(window)
        return x + place[0], y + place[1]

    def drag(self, start, end):
        """Screen places; the pointer goes in steps, as a hand does."""
        steps = 12
        ask = self.desktop.ask
        ask("xdotool", "mousemove", *start, "mousedown", 1)
        for step in range(1, steps + 1):
            ask("xdotool", "mousemove", *(a + (b - a) * step // steps for a, b in zip(start, end)), "sleep", 0.03)
        ask("xdotool", "sleep", 0.2, "mouseup", 1)

    def test_files_come_in_by_the_list_alone_and_go_out_as_a_list_of_files(self):
        _, music = self.make_music()
        files = [path for path in music if path.endswith(".mp3")][:2]
        window = self.start()
        partner = self.start_partner(files)
        middle = self.at(partner, (110, 150))

        self.drag(middle, self.at(window, BACKGROUND))
        self.desktop.picture("drag-1-background")
        self.assertEqual(self.library.files(), [])

        self.drag(middle, self.at(window, LIST_MIDDLE))
        wait_until("the dropped files in the library", lambda: len(self.library.files()) == 2)
        self.assertEqual(self.library.files(), files)
        self.desktop.picture("drag-2-in")

        self.desktop.click(window, *LIST_ROW_1)
        self.drag(self.at(window, LIST_ROW_1), middle)
        wait_until("one file on the other side", lambda: len(self.dropped()) == 1)
        self.assertIn(self.dropped()[0], files)

        self.desktop.click(window, *LIST_ROW_1)
        self.desktop.ask("xdotool", "keydown", "shift")
        self.drag(self.at(window, LIST_ROW_2), middle)
        self.desktop.ask("xdotool", "keyup", "shift")
        wait_until("both files on the other side", lambda: len(self.dropped()) == 3)
        self.assertEqual(sorted(self.dropped()[1:]), sorted(files))
        self.desktop.picture("drag-3-out")
        self.assertEqual(self.library.files(), files)

        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)


if __name__ == "__main__":
    unittest.main()
