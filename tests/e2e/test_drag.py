"""Files dragged with the mouse between the program and another window."""
import unittest

from desktop import ProgramTest, wait_until

# In a window of the first start's size, under the menu bar.
LIST_ROW_1 = (300, 118)
LIST_ROW_2 = (300, 137)
LIST_MIDDLE = (500, 400)
BACKGROUND = (960, 65)


class DragTest(ProgramTest):
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
