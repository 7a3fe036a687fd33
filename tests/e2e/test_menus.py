"""The menus, the context menu and the events of list and letters in a real window, by keyboard and mouse; pictures
of each menu are kept."""
import configparser
import os
import unittest

from desktop import ProgramTest, wait_until

MENUS = {"Datei": 25, "Ansicht": 78, "Bearbeiten": 147, "Extras": 215, "Optionen": 270, "Hilfe": 325}  # where they are in the menu bar
ROW_1 = (300, 118)
HEADER_TITLE = (520, 100)
LETTER_A = (266, 73)


class MenusTest(ProgramTest):
    def setting(self, name):
        settings = configparser.ConfigParser(interpolation=None)
        settings.optionxform = str
        settings.read(os.path.join(self.home, ".config", "Greyfinch Labs", "Quavernet.conf"), encoding="utf-8")
        return settings.get("Settings", name, fallback=None)

    def open_menu(self, window, number):
        self.desktop.activate(window)
        self.desktop.click(window, list(MENUS.values())[number], 12)
        wait_until("an open menu", self.popups)

    def close_menu(self):
        """Escape, once for each open submenu too."""
        def closed():
            self.desktop.key("Escape")
            return not self.popups()
        wait_until("the menu to go", closed)

    def choose(self, window, number, *downs):
        """The item so many steps below the first, or with a number below 0 counted from the last, and on in submenus."""
        self.open_menu(window, number)
        for level, steps in enumerate(downs):
            # A menu opened by the mouse has no item marked yet.
            moves = ["Up"] * -steps if steps < 0 else ["Down"] * (steps if level else steps + 1)
            self.desktop.key(*moves, "Right" if level + 1 < len(downs) else "Return")

    def dialog(self, window, title, number, *downs):
        """The item opens a window of this title, which Escape closes."""
        self.choose(window, number, *downs)
        dialog = self.desktop.window(title)
        self.desktop.picture("menus-" + title.strip("^$").lower().replace(" ", "-"))
        self.desktop.activate(dialog)
        self.desktop.key("Escape")
        wait_until(f"{title} to go", lambda: not self.desktop.windows(title))

    def test_every_menu_leads_somewhere(self):
        folder, music = self.make_music()
        window = self.start()
        self.scan(window, folder)
        self.await_scan(window, len(music))
        log = self.desktop.window("^Scan Log$")
        self.desktop.activate(log)
        self.desktop.key("alt+F4")
        wait_until("the scan log to go", lambda: not self.desktop.windows("^Scan Log$"))

        for number, menu in enumerate(MENUS):
            self.open_menu(window, number)
            self.desktop.picture(f"menus-{number + 1}-{menu.lower()}")
            self.close_menu()

        self.dialog(window, "^Wählen Sie einen Ordner$", 0, 0)
        self.dialog(window, "^Datenbank säubern$", 0, -2)
        self.dialog(window, "^Charts und Toplist$", 4, -7)
        self.dialog(window, "^Standard Scanpfad$", 4, -5)
        self.dialog(window, "^Random Play Optionen$", 4, -4)
        self.dialog(window, "^Scan Erinnerung$", 4, -3)
        self.dialog(window, "^Über Quavernet$", 5, 1)
        self.choose(window, 1, 0)      # mp3 off
        self.choose(window, 1, 3)      # grid lines on
        self.choose(window, 4, 0, 0)   # quick scan on
        self.choose(window, 4, -2, 1)  # external player on
        self.choose(window, 4, -1)     # load over search on
        self.list_and_letters(window)
        self.choose(window, 1, 4, 1)   # English
        wait_until("English", lambda: self.desktop.title(window).startswith("Quavernet - last scan"))
        self.desktop.picture("menus-english")
        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)
        self.assertEqual({name: self.setting(name) for name in (
            "ViewMp3", "ViewOgg", "ViewWav", "GridLines", "QuickScan", "ExternalPlayer", "AddToPlaylist",
            "LoadOverSearch", "Language")},
            {"ViewMp3": "0", "ViewOgg": "0", "ViewWav": "1", "GridLines": "yes", "QuickScan": "1",
             "ExternalPlayer": "1", "AddToPlaylist": "0", "LoadOverSearch": "1", "Language": "ENG"})

    def list_and_letters(self, window):
        self.desktop.click(window, *HEADER_TITLE)
        self.desktop.ask("xdotool", "click", "--repeat", 2, "--delay", 60, 1)
        self.desktop.picture("menus-list-sorted")
        self.desktop.click(window, *ROW_1, button=3)
        wait_until("the context menu", lambda: len(self.popups()) == 1)
        self.desktop.key("Up", "Right")  # the last item
        wait_until("its submenu", lambda: len(self.popups()) == 2)
        self.desktop.picture("menus-context")
        self.desktop.key("Down", "Return")  # ogg off
        wait_until("the menu to go", lambda: not self.popups())
        self.desktop.click(window, *LETTER_A)
        self.desktop.picture("menus-letter")
        self.desktop.click(window, *ROW_1)
        self.desktop.ask("xdotool", "click", 5, "click", 4)
        self.desktop.picture("menus-row")


if __name__ == "__main__":
    unittest.main()
