"""Ends that nobody clicks: SIGTERM, SIGINT and SIGHUP, the end of the desktop's session, the loss of the display. The
settings are stored and the library is closed, whatever the program was doing."""
import os
import signal
import subprocess
import sys
import time
import unittest

from desktop import ProgramTest, wait_until

ROW_1 = (300, 118)  # of the main window's list, in a window of the first start's size
FILE_MENU = (20, 10)
STORED = {"WindowLeft": "900", "WindowTop": "600"}  # twips: where the settings say that the window is
MOVED = (200, 120)  # pixels: where the window is moved to
LOST_DISPLAY = 1


class EndsTest(ProgramTest):
    def start_and_move(self):
        """The window lies elsewhere than the settings say: an end that stores them is told by that."""
        self.store(ScanLog=0, **STORED)
        window = self.start()
        self.desktop.ask("xdotool", "windowmove", "--sync", window, *MOVED)
        return window

    def assert_ended_in_order(self, code=0):
        self.assertEqual(self.ended(), code)
        self.assertNotEqual({name: self.settings()[name] for name in STORED}, STORED)
        # The engine merges its log into the library when that is closed.
        self.assertFalse(os.path.exists(self.library.path + "-wal"))
        self.assertTrue(self.library.values("select count(*) from Genres")[0])

    def start_with_music(self):
        folder, music = self.make_music()
        window = self.start_and_move()
        self.scan(window, folder)
        self.await_scan(window, len(music))
        self.desktop.activate(window)
        return window

    def test_each_signal_ends_the_idle_program(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(signal=number.name):
                self.start_and_move()
                self.program.send_signal(number)
                self.assert_ended_in_order()

    def test_an_ignored_signal_stays_ignored(self):
        before = signal.signal(signal.SIGHUP, signal.SIG_IGN)
        self.addCleanup(signal.signal, signal.SIGHUP, before)
        window = self.start_and_move()
        self.program.send_signal(signal.SIGHUP)
        self.desktop.window_after_key(window, "ctrl+s", "^Wählen Sie einen Ordner$")
        self.assertIsNone(self.program.poll())
        self.program.send_signal(signal.SIGTERM)
        self.assert_ended_in_order()

    def test_a_running_scan_is_cancelled_and_keeps_what_it_stored(self):
        _, music = self.make_music()
        folder = os.path.join(self.home, "Musik", "Viele")
        os.makedirs(folder)
        with open(next(path for path in music if path.endswith(".mp3")), "rb") as file:
            sound = file.read()
        for number in range(20000):
            with open(os.path.join(folder, f"{number:05}.mp3"), "wb") as file:
                file.write(sound[:4096])
        window = self.start_and_move()
        self.scan(window, folder)
        wait_until("the first files", self.library.files)
        self.program.send_signal(signal.SIGTERM)
        self.assert_ended_in_order()
        self.assertEqual([path for path in self.library.files() if not path.startswith(folder)], [])

    def test_dialogs_boxes_and_menus_go_first(self):
        folder_dialog = "^Wählen Sie einen Ordner$"
        ways = {
            "a file dialog": lambda window: self.desktop.window_after_key(window, "ctrl+s", folder_dialog),
            "a question": lambda window: self.desktop.window_after_key(window, "ctrl+c", "^Datenbank"),
            "a menu": lambda window: self.open_menu(window),
        }
        for name, way in ways.items():
            with self.subTest(front=name):
                way(self.start_and_move())
                self.program.send_signal(signal.SIGTERM)
                self.assert_ended_in_order()

    def open_menu(self, window):
        self.desktop.click(window, *FILE_MENU)
        wait_until("a menu", self.popups)

    def test_a_dialog_of_a_file_goes_without_saving(self):
        window = self.start_with_music()
        self.desktop.click(window, *ROW_1)
        titles = self.library.values("select Name from Titel order by Title_id")
        self.desktop.window_after_key(window, "ctrl+i", "^Details")
        self.desktop.type("Neu")
        self.program.send_signal(signal.SIGINT)
        self.assert_ended_in_order()
        self.assertEqual(self.library.values("select Name from Titel order by Title_id"), titles)

    def test_a_drag_that_is_held_goes_first(self):
        window = self.start_with_music()
        self.desktop.click(window, *ROW_1)
        x, y = self.at(window, ROW_1)
        self.desktop.ask("xdotool", "mousemove", x, y, "sleep", 1, "mousedown", 1, "sleep", 0.2, "mousemove", x, y + 60,
                         "sleep", 0.3, "mousemove", x, y + 90, "sleep", 0.5)
        self.addCleanup(self.desktop.ask, "xdotool", "mouseup", 1)
        self.desktop.picture("held-drag")
        self.program.send_signal(signal.SIGTERM)
        self.assert_ended_in_order()

    def test_both_windows_go_while_music_plays(self):
        window = self.start_with_music()
        self.desktop.click(window, *ROW_1)
        self.desktop.ask("xdotool", "click", "--repeat", 2, "--delay", 60, 1)
        player = self.desktop.window("^Quavernet Player$")
        self.desktop.ask("xdotool", "windowmove", "--sync", player, *MOVED)
        self.program.send_signal(signal.SIGTERM)
        self.assert_ended_in_order()
        self.assertIn("WindowLeftPlayer", self.settings())

    def leave_main(self, window):
        """True when it has gone. The player that has just come up may still take the keyboard: then once more."""
        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        time.sleep(2)
        return not self.desktop.windows("^Quavernet - ")

    def test_the_player_alone_goes_too(self):
        window = self.start_and_move()
        self.desktop.key("ctrl+p")
        self.desktop.window("^Quavernet Player$")
        wait_until("the main window to go", lambda: self.leave_main(window))
        self.program.send_signal(signal.SIGTERM)
        self.assert_ended_in_order()
        self.assertIn("WindowLeftPlayer", self.settings())

    def test_the_end_of_the_session_ends_the_program(self):
        manager = subprocess.Popen(
            [sys.executable, os.path.join(os.path.dirname(os.path.abspath(__file__)), "session_manager.py")],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.addCleanup(manager.wait)
        self.addCleanup(manager.stdout.close)
        self.addCleanup(manager.kill)
        self.desktop.environment["SESSION_MANAGER"] = manager.stdout.readline().strip()
        self.start_and_move()
        self.assertEqual(manager.stdout.readline().strip(), "registered")
        manager.stdin.close()
        self.assert_ended_in_order()

    def test_the_loss_of_the_display_ends_the_program(self):
        self.start_and_move()
        time.sleep(2)  # until the program knows where its window is: a display that is gone tells nothing more
        self.desktop.server.kill()
        self.assert_ended_in_order(LOST_DISPLAY)

    def test_the_loss_of_the_display_in_a_dialog_ends_the_program(self):
        window = self.start_and_move()
        self.desktop.window_after_key(window, "ctrl+s", "^Wählen Sie einen Ordner$")
        self.desktop.server.kill()
        self.assert_ended_in_order(LOST_DISPLAY)


if __name__ == "__main__":
    unittest.main()
