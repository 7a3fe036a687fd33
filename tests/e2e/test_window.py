"""The main window on a real screen: its start picture, stored sizes, and keys and mouse on list and tree."""
import unittest

from desktop import ProgramTest, wait_until

FOLDER_DIALOG = "^Wählen Sie einen Ordner$"
ROW_1 = (300, 118)  # in a window of the first start's size
BESIDE_NODES = (100, 500)


class WindowTest(ProgramTest):
    def end(self, window):
        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)

    def hits(self):
        return self.library.values("select sum(Hits) from Files")[0]

    def test_a_key_in_the_first_second_ends_the_start_picture_and_nothing_else(self):
        self.launch()
        window = self.desktop.window("^Quavernet - ")
        wait_until("the keyboard", lambda: self.desktop.ask("xdotool", "getactivewindow").strip() == window)
        self.desktop.key("space")
        wait_until("the start picture to go", lambda: self.main_is_alone())
        self.assertEqual(self.desktop.windows(FOLDER_DIALOG), [])
        self.desktop.picture("window-1-after-a-key")
        self.end(window)

    def test_a_window_stored_small_shows_tree_and_list(self):
        self.store(WindowWidth=4500, WindowHeight=2850)
        window = self.start()
        self.assertEqual(self.desktop.geometry(window)[2:], (300, 190))
        self.desktop.picture("window-2-small")
        # The head of the tree and that of the list; what is told of a window's place may be off by its frame.
        self.assertGreater(self.desktop.colours(window, 0.1, 0.25, 0.5, 0.5), 1)
        self.assertGreater(self.desktop.colours(window, 0.72, 0.4, 0.95, 0.7), 1)
        self.end(window)

    def test_a_window_stored_without_a_size_can_be_seen(self):
        self.store(WindowWidth=0, WindowHeight=-15)
        window = self.start()
        self.assertGreater(min(self.desktop.geometry(window)[2:]), 50)
        self.desktop.picture("window-3-least")
        self.end(window)

    def test_enter_opens_the_row_after_the_menu_key_and_after_shift(self):
        folder, music = self.make_music()
        self.store(ExternalPlayer=1, ScanLog=0)
        window = self.start()
        self.scan(window, folder)
        self.await_scan(window, len(music))
        self.desktop.activate(window)
        self.desktop.ask("xdotool", "keydown", "shift")
        self.desktop.click(window, *ROW_1)
        self.desktop.ask("xdotool", "keyup", "shift")
        self.desktop.key("Return")
        wait_until("a play", lambda: self.hits() == 1)
        self.desktop.key("Menu")
        self.desktop.key("Escape")
        self.desktop.activate(window)
        self.desktop.key("Return")
        wait_until("another play", lambda: self.hits() == 2)
        self.desktop.click(window, *BESIDE_NODES)
        self.desktop.ask("xdotool", "click", "--repeat", 2, "--delay", 60, 1, "click", 5, "click", 5)
        self.desktop.picture("window-4-list")
        self.assertEqual(self.hits(), 2)
        self.end(window)


if __name__ == "__main__":
    unittest.main()
