"""The program under Wayland, as a user goes: from the start over a scan, the list, the tree, the player and the tags to an
orderly end. What Wayland forbids is passed over without a word, and what it can't tell is not stored."""
import os
import signal
import subprocess
import time
import unittest

from desktop import wait_until
from wayland_desktop import WaylandTest

# In a window of the first start's size, under the menu bar.
SEARCH_BOX = (850, 35)
TITLE_HEAD = (500, 98)
LIST_ROW_1 = (300, 118)
TREE_LEFT, TREE_TOP, ROW_HEIGHT = 70, 72, 18

PLACES = {"WindowLeft": "900", "WindowTop": "600", "WindowLeftPlayer": "1200", "WindowTopPlayer": "750"}
FIRST_WIDTH, WIDER = 1000, 1100  # pixels
TWIPS = 15  # of a pixel, in which places and sizes are stored
LOST_DISPLAY = 1

# All that is new in a home folder afterwards: the library and its copy, the settings, those of the toolkit's file dialog.
OWN_FILES = {"Dokumente/Quavernet Database/Quavernet.db", "Dokumente/Quavernet Database/Quavernet.backup1.db",
             ".config/Greyfinch Labs/Quavernet.conf", ".config/QtProject.conf"}


class WaylandBasicsTest(WaylandTest):
    def make_songs(self):
        """Three files: 0.mp3 of Abba, 1.mp3 of Cure and 2.mp3 of the Doors."""
        wave = os.path.join(self.home, "Musik", "tone.wav")
        subprocess.run(["sox", "-n", "-r", "44100", "-c", "2", "-b", "16", wave, "synth", "2", "sine", "440"], check=True)
        for number, (performer, title) in enumerate((("Abba", "Eins"), ("Cure", "Mond"), ("Doors", "Zulu"))):
            subprocess.run(["lame", "--quiet", "--id3v1-only", "--ta", performer, "--tt", title, wave,
                            os.path.join(self.home, "Musik", f"{number}.mp3")], check=True)
        os.remove(wave)

    def in_home(self):
        return {os.path.relpath(os.path.join(base, name), self.home) for base, _, names in os.walk(self.home)
                for name in names}

    def played(self):
        """Names of the files in the order of their plays, most of all first."""
        return self.library.values("select Name from Files where Hits > 0 order by Hits desc")

    def play_first_row(self):
        """A double click, and the player that comes up closed again."""
        self.click(LIST_ROW_1, repeat=2)
        self.desktop.window("^Quavernet Player$")

    def entries(self):
        return self.library.values("select Position || ' ' || Filename from FileCategories order by Position")

    def node(self, row):
        """The place of the screen in the middle of a row of the tree; the root is row 0."""
        return self.at(self.window, (TREE_LEFT, TREE_TOP + ROW_HEIGHT * row))

    def test_a_day_with_the_program(self):
        self.make_songs()
        before = self.in_home()
        self.window = self.start()
        self.assertEqual(self.desktop.title(self.window), "Quavernet - letzter scan: -")
        # By this a desktop finds the menu entry of a window.
        self.assertEqual(self.desktop.node(self.window)["app_id"], "io.greyfinch.Quavernet")
        self.scan(self.window, os.path.join(self.home, "Musik"))
        self.await_scan(self.window, 3)
        self.desktop.picture("1-scan")
        self.desktop.close_window("^Scan Log$")
        self.search_and_sort()
        self.category_by_keys()
        self.drag_into_tree()
        self.edit_a_tag()
        self.switch_to_english()
        self.desktop.key("ctrl+g", "ctrl+q")
        self.assertEqual(self.ended(), 0)
        self.assertEqual((self.settings()["GridLines"], self.settings()["Language"]), ("yes", "ENG"))
        self.assertEqual(self.complained(), "")
        self.assertEqual(self.in_home() - before, OWN_FILES)

    def test_a_place_that_nobody_tells_stays_as_it_was(self):
        self.store(ScanLog=0, **PLACES)
        window = self.start_early()
        player = self.desktop.window_after_key(window, "ctrl+p", "^Quavernet Player$")
        self.desktop.activate(player)
        # The player's button that brings the main window to the front: as far as the desktop lets it.
        x, y, width, _ = self.desktop.geometry(player)
        self.desktop.click(x + width - 46, y + 20)
        wait_until("the main window to ask for attention", lambda: self.desktop.node(window)["urgent"])
        self.desktop.picture("places")
        self.program.send_signal(signal.SIGTERM)
        self.assertEqual(self.ended(), 0)
        self.assertEqual({name: self.settings()[name] for name in PLACES}, PLACES)
        self.assertEqual(self.complained(), "")

    def start_early(self):
        """Starts the program; the start picture, which stays for four seconds, goes when the window comes to the front."""
        self.launch()
        window = self.desktop.window("^Quavernet - ")
        wait_until("the start picture", lambda: len(self.desktop.nodes()) == 2)
        wait_until("the library", lambda: self.library.values("select count(*) from Genres"))
        self.desktop.activate(window)
        wait_until("the start picture to go", self.main_is_alone)
        self.desktop.activate(window)
        return window

    def start_and_change(self):
        """A window of another width tells an end that stores the settings; the player has settings of its own."""
        self.store(ScanLog=0, **PLACES)
        window = self.start_early()
        self.desktop.command(window, f"resize set width {WIDER} px")
        wait_until("the wider window", lambda: self.desktop.geometry(window)[2] > FIRST_WIDTH)
        self.desktop.window_after_key(window, "ctrl+p", "^Quavernet Player$")
        return window

    def assert_display_lost(self):
        self.desktop.server.kill()
        self.assertEqual(self.ended(), LOST_DISPLAY)
        self.assertGreater(int(self.settings()["WindowWidth"]), FIRST_WIDTH * TWIPS)
        self.assertEqual({name: self.settings()[name] for name in PLACES}, PLACES)
        # The engine merges its log into the library when that is closed.
        self.assertFalse(os.path.exists(self.library.path + "-wal"))
        self.assertTrue(self.library.values("select count(*) from Genres")[0])

    def test_the_loss_of_the_display_ends_the_program(self):
        self.start_and_change()
        self.assert_display_lost()

    def test_the_loss_of_the_display_in_a_dialog_ends_the_program(self):
        window = self.start_and_change()
        self.desktop.window_after_key(window, "ctrl+s", "^Wählen Sie einen Ordner$")
        self.assert_display_lost()

    def rows(self):
        return self.desktop.look(self.window, 0.25, 0.16, 0.95, 0.9)

    def change_rows(self, action):
        """Does something and waits until the list shows other rows, and has come to rest."""
        before = self.rows()
        action()
        wait_until("other rows", lambda: self.rows() != before)
        wait_until("the list to come to rest", self.rows_rest)

    def rows_rest(self):
        before = self.rows()
        time.sleep(0.2)
        return self.rows() == before

    def search(self, *keys):
        self.click(SEARCH_BOX)
        self.desktop.key("ctrl+a", *keys, "Return")

    def search_and_sort(self):
        # The first row is Abba's; a double click on a head turns the order round; a search leaves that of the Cure.
        self.play_first_row()
        wait_until("the first performer", lambda: self.played() == ["0.mp3"])
        self.desktop.picture("2-player")
        self.desktop.close_window("^Quavernet Player$")
        self.change_rows(lambda: self.click(TITLE_HEAD, repeat=2))
        self.play_first_row()
        wait_until("the first title", lambda: set(self.played()) == {"0.mp3", "2.mp3"})
        self.desktop.close_window("^Quavernet Player$")
        self.change_rows(lambda: self.search(*"mond"))
        self.play_first_row()
        wait_until("what was searched for", lambda: set(self.played()) == {"0.mp3", "1.mp3", "2.mp3"})
        self.desktop.picture("3-search")
        self.desktop.close_window("^Quavernet Player$")
        self.change_rows(lambda: self.search("BackSpace"))

    def category_by_keys(self):
        self.desktop.activate(self.desktop.window_after_key(self.window, "ctrl+b", "^Baum Verwaltung$"))
        self.desktop.key("Return")
        self.desktop.type("Abend")
        self.desktop.key("Return")
        wait_until("the category", lambda: self.library.values("select Category from Categories") == ["Abend"])
        self.desktop.picture("4-category")
        self.desktop.key("Escape")
        wait_until("the dialog to go", lambda: not self.desktop.windows("^Baum Verwaltung$"))

    def drag_into_tree(self):
        """Two rows of the list to the category, then the second entry in front of the first."""
        self.click(LIST_ROW_1)
        self.drag(self.at(self.window, LIST_ROW_1), self.node(1), lambda: self.desktop.picture("5-drag"))
        wait_until("one entry", lambda: len(self.entries()) == 1)
        second = LIST_ROW_1[0], LIST_ROW_1[1] + 19
        self.click(second)
        self.drag(self.at(self.window, second), self.node(1))
        wait_until("two entries", lambda: len(self.entries()) == 2)
        first, last = (entry.split()[1] for entry in self.entries())
        self.click((TREE_LEFT, TREE_TOP + ROW_HEIGHT))
        self.desktop.key("Right")
        self.drag(self.node(3), self.node(2), lambda: self.desktop.picture("6-drag-inside"))
        wait_until("the other order", lambda: self.entries() == [f"1 {last}", f"2 {first}"])

    def edit_a_tag(self):
        self.click(LIST_ROW_1)
        details = self.desktop.window_after_key(self.window, "ctrl+i", "^Details")
        self.desktop.activate(details)
        self.desktop.key("Return")  # the button that begins the editing
        self.desktop.type("Änne")
        self.desktop.picture("7-details")
        self.desktop.key("Return")
        wait_until("the performer", lambda: "Änne" in self.library.values("select Interpret from Interpret"))
        self.desktop.key("Escape")
        wait_until("the dialog to go", lambda: not self.desktop.windows("^Details"))

    def switch_to_english(self):
        """By the menu: its second title, its last item, the second language."""
        self.desktop.activate(self.window)
        self.desktop.key("F10", "Right", "Up", "Right", "Down")
        self.desktop.picture("8-menu")
        self.desktop.key("Return")
        wait_until("the other language", lambda: self.desktop.title(self.window).startswith("Quavernet - last scan"))
        self.desktop.picture("9-english")


if __name__ == "__main__":
    unittest.main()
