"""The player beside the main window: a double click plays, buttons and keys act, either window may close first, and the
player brings the main window back."""
import configparser
import os
import unittest

from desktop import ProgramTest, wait_until

ROW_1 = (300, 118)  # of the main window's list
PLAYER = "^Quavernet Player$"
PAUSED = "^Quavernet Player - Pause$"

# In the player's window at its first size.
PAUSE = (96, 103)
MAIN_WINDOW = (353, 19)
MINIMISE = (379, 19)
ENTRY_1 = (100, 162)


class PlayerTest(ProgramTest):
    def hits(self):
        return sum(self.library.values("select Hits from Files"))

    def double_click(self, window, place):
        self.desktop.click(window, *place)
        self.desktop.ask("xdotool", "click", "--repeat", 2, "--delay", 60, 1)

    def start_with_music(self):
        folder, music = self.make_music()
        window = self.start()
        self.scan(window, folder)
        self.await_scan(window, len(music))
        self.desktop.close_window("^Scan Log$")
        self.desktop.activate(window)
        return window

    def play_row_1(self, window):
        before = self.hits()
        self.double_click(window, ROW_1)
        wait_until("a counted play", lambda: self.hits() > before)
        player = self.desktop.window(PLAYER)
        self.desktop.activate(player)  # A late last click leaves it behind the main window.
        return player

    def test_a_double_click_plays_and_the_buttons_act(self):
        window = self.start_with_music()
        player = self.play_row_1(window)
        self.assertEqual(self.hits(), 1)
        self.expect_caged(trials=0)  # Of all threads, the engine's too.
        text = self.library.values(
            "select I.Interpret || ' - ' || T.Name from Files F join Interpret I on I.Inter_id = F.Inter_id "
            "join Titel T on T.Title_id = F.Title_id where F.Hits = 1")[0]
        self.desktop.picture("player-playing")

        self.desktop.click(player, *PAUSE)
        self.desktop.window(PAUSED)
        self.desktop.click(player, *PAUSE)
        self.desktop.window(PLAYER)

        self.double_click(player, ENTRY_1)
        self.desktop.click(player, *PAUSE)
        self.desktop.window(PAUSED)

        self.desktop.click(player, *MINIMISE)
        wait_until("the track in the task bar", lambda: text in self.desktop.title(player))
        self.desktop.activate(window)
        self.desktop.key("ctrl+p")
        self.desktop.window(PLAYER)

    def test_either_window_may_close_first(self):
        window = self.start_with_music()
        player = self.play_row_1(window)
        self.desktop.close_window("^Quavernet - ")
        self.desktop.click(player, *PAUSE)
        self.desktop.window(PAUSED)
        self.desktop.click(player, *PAUSE)
        self.desktop.window(PLAYER)
        self.assertIsNone(self.program.poll())

        self.desktop.click(player, *MAIN_WINDOW)
        window = self.desktop.window("^Quavernet - ")
        wait_until("rows in the list", lambda: self.desktop.colours(window, 0.3, 0.2, 0.9, 0.4) > 2)
        self.desktop.activate(window)
        self.desktop.picture("player-main-again")
        self.play_row_1(window)
        self.assertEqual(self.hits(), 2)

        self.desktop.close_window(PLAYER)
        self.assertIsNone(self.program.poll())
        self.play_row_1(window)
        self.desktop.close_window("^Quavernet - ")
        self.desktop.close_window(PLAYER)
        self.assertEqual(self.ended(), 0)
        settings = configparser.ConfigParser(interpolation=None)
        settings.optionxform = str
        settings.read(os.path.join(self.home, ".config", "Greyfinch Labs", "Quavernet.conf"), encoding="utf-8")
        self.assertIsNotNone(settings.get("Settings", "WindowLeftPlayer", fallback=None))


if __name__ == "__main__":
    unittest.main()
