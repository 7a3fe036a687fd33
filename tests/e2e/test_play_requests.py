"""Every way to ask for music, by buttons, keys and menus of the real window, in the external and in the internal player:
what is handed over, what playlists hold byte for byte, and which plays are counted."""
import os
import subprocess
import time
import unittest

from desktop import ProgramTest, wait_until

# In a window of the first start's size, under the menu bar.
ROW_1 = (300, 118)
TREE_LEFT = 90   # on the names of the nodes
TREE_TOP = 72    # the middle of the root's row
ROW_HEIGHT = 18
BESIDE_NODES = (100, 500)
PLAYER = "^Quavernet Player$"


class PlayRequestsTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.temporary = os.path.join(self.home, "temporary")
        os.makedirs(self.temporary)
        self.desktop.environment["TMPDIR"] = self.temporary
        self.record_opener()
        self.calls = 0
        self.folder = os.path.join(self.home, "Musik", "Lieder")
        self.files = []

    def make_songs(self):
        """Three songs of one to three seconds, whose performers are A, B and C."""
        os.makedirs(self.folder)
        for seconds, name in enumerate("abc", 1):
            wave, path = os.path.join(self.home, "song.wav"), os.path.join(self.folder, f"{name}.mp3")
            subprocess.run(["sox", "-n", "-r", "44100", "-b", "16", "-c", "2", wave, "trim", "0", str(seconds)], check=True)
            subprocess.run(["lame", "--quiet", "--ta", name.upper(), "--tt", "Song", wave, path], check=True)
            self.files.append(path)

    def make_category(self):
        """Jazz, of the second and the third song, from a playlist that is dropped on the tree."""
        path = os.path.join(self.home, "Jazz.m3u")
        with open(path, "w", encoding="utf-8") as file:
            file.write("".join(f"{line}\n" for line in self.files[1:]))
        partner = self.start_partner([path])
        self.drag(self.at(partner, (110, 150)), self.at(self.window, BESIDE_NODES))
        wait_until("the entries", lambda: len(self.library.values("select 1 from FileCategories")) == 2)
        self.end_partner()

    def begin(self):
        self.make_songs()
        self.window = self.start()
        self.scan(self.window, self.folder)
        self.await_scan(self.window, len(self.files))
        self.desktop.activate(self.window)
        self.make_category()
        self.click(self.node(1))
        self.desktop.key("Right")

    def end(self):
        """Ctrl+Q; once more if it came while a play was still being counted, which lets nothing else act."""
        for _ in range(3):
            self.desktop.activate(self.window)
            self.desktop.key("ctrl+q")
            end = time.monotonic() + 15
            while time.monotonic() < end:
                if not self.desktop.windows("^Quavernet - "):
                    return
                time.sleep(0.1)

    def node(self, row):
        """Pixels of the main window in the middle of a row of the tree; the root is row 0."""
        return TREE_LEFT, TREE_TOP + ROW_HEIGHT * row

    def choose(self, place, downs, picture=None):
        """The item of the menu that a right click opens."""
        self.click(place, button=3)
        wait_until("a menu", self.popups)
        if picture:
            self.desktop.picture(picture)
        self.desktop.key(*["Down"] * downs, "Return")
        wait_until("the menu to go", lambda: not self.popups())

    def select_two(self):
        self.click(ROW_1)
        self.desktop.key("shift+Down")

    def press_play_button(self):
        """By the keyboard: letters, random button and play button are before the list."""
        self.desktop.key("shift+Tab", "shift+Tab", "shift+Tab", "space")

    def counts(self):
        return tuple(self.library.values("select Hits from Files order by Path || ''"))

    def opened(self):
        """The one file that the last request has handed over."""
        self.calls += 1
        wait_until("the desktop's opener", lambda: len(self.opener_calls()) >= self.calls)
        self.assertEqual(len(self.opener_calls()), self.calls)
        arguments = self.opener_calls()[-1]
        self.assertEqual(len(arguments), 1)
        return arguments[0]

    def playlist(self, numbers):
        lines = ["#EXTM3U"]
        for number in numbers:
            name = os.path.basename(self.files[number])[:-4]
            length = self.library.values(f"select Length from Files where Path || '' = '{self.files[number]}'")[0]
            lines += [f"#EXTINF:{length},{name}", self.files[number]]
        return "".join(f"{line}\r\n" for line in lines).encode()

    def expect_playlist(self, path, numbers):
        self.assertEqual(self.opened(), path)
        with open(path, "rb") as file:
            self.assertEqual(file.read(), self.playlist(numbers))

    def test_the_external_player_gets_files_and_playlists(self):
        self.store(ExternalPlayer=1, ScanLog=0)
        self.begin()
        several = os.path.join(self.temporary, "Playlist.m3u")
        category = os.path.join(self.temporary, "Jazz.m3u")
        at_random = os.path.join(self.temporary, "Random.m3u")

        self.click(ROW_1, repeat=2)
        self.assertEqual(self.opened(), self.files[0])
        wait_until("a double click in the list to count", lambda: self.counts() == (1, 0, 0))

        self.select_two()
        self.press_play_button()
        self.expect_playlist(several, [0, 1])
        self.choose(ROW_1, 1, picture="play-requests-1-list-menu")
        self.expect_playlist(several, [0, 1])
        self.click(ROW_1)
        self.desktop.key("shift+Down", "shift+Down", "Return")
        self.expect_playlist(several, [0, 1, 2])
        self.assertEqual(self.counts(), (1, 0, 0))

        self.select_two()
        self.desktop.key("ctrl+a")
        self.expect_playlist(several, [0, 1])
        wait_until("the main menu's play to count", lambda: self.counts() == (2, 1, 0))
        self.click(ROW_1)
        self.choose(ROW_1, 2)  # the first one, the details, is for one row
        self.assertEqual(self.opened(), self.files[0])
        wait_until("the list's play of one row to count", lambda: self.counts() == (3, 1, 0))

        self.click(self.node(3), repeat=2)
        self.assertEqual(self.opened(), self.files[2])
        wait_until("a double click in the tree to count", lambda: self.counts() == (3, 1, 1))
        self.choose(self.node(2), 1)
        self.assertEqual(self.opened(), self.files[1])
        wait_until("the tree's play to count", lambda: self.counts() == (3, 2, 1))
        self.choose(self.node(1), 1, picture="play-requests-2-tree-menu")
        self.expect_playlist(category, [1, 2])
        self.choose(self.node(1), 2)
        self.assertEqual(self.opened(), at_random)
        with open(at_random, "rb") as file:
            self.assertIn(file.read(), (self.playlist([1, 2]), self.playlist([2, 1])))
        self.desktop.key("ctrl+r")
        self.assertEqual(self.opened(), at_random)
        with open(at_random, encoding="utf-8") as file:
            self.assertEqual(len([line for line in file if line.startswith("/")]), 3)

        self.click(self.node(1), repeat=2)  # A category is no file, and closes.

        saved = os.path.join(self.home, "Musik", "my.m3u")
        self.select_two()
        self.desktop.key("ctrl+e")
        self.save(saved)
        box = self.desktop.window("^Datei erstellt$")
        self.desktop.activate(box)
        self.desktop.picture("play-requests-3-question")
        self.desktop.key("Return")
        self.expect_playlist(saved, [0, 1])

        self.assertEqual(self.counts(), (3, 2, 1))
        self.assertEqual({os.stat(path).st_mode & 0o777 for path in (several, category, at_random)}, {0o600})
        self.end()
        self.assertEqual(self.ended(), 0)

    def test_the_internal_player_counts_what_the_list_asks_for(self):
        self.store(ExternalPlayer=0, ScanLog=0)
        self.begin()
        self.click(ROW_1, repeat=2)
        player = self.desktop.window(PLAYER)
        wait_until("a double click in the list to count", lambda: self.counts() == (1, 0, 0))
        self.select_two()
        self.desktop.key("ctrl+a")
        wait_until("the main menu's play to count", lambda: self.counts() == (2, 1, 0))
        self.desktop.picture("play-requests-4-player")

        # None of these counts. What comes after them is carried out after them.
        self.select_two()
        self.press_play_button()
        self.choose(ROW_1, 1)
        self.click(ROW_1)
        self.choose(ROW_1, 2)  # the first one, the details, is for one row
        self.click(self.node(3), repeat=2)
        for row, item in ((2, 1), (1, 1), (1, 2)):
            self.choose(self.node(row), item)
        self.desktop.activate(self.window)
        self.desktop.key("ctrl+r")
        self.select_two()
        self.desktop.key("Return")
        self.expect_playlist(os.path.join(self.temporary, "Playlist.m3u"), [0, 1])
        self.assertEqual(self.counts(), (2, 1, 0))
        self.click(ROW_1, repeat=2)
        wait_until("the last double click to count", lambda: self.counts() == (3, 1, 0))
        self.assertEqual(os.listdir(self.temporary), ["Playlist.m3u"])
        self.click(self.node(1), repeat=2)
        self.click(ROW_1, repeat=2)
        wait_until("a double click after that on a category", lambda: self.counts() == (4, 1, 0))

        # The player stays when the main window goes, and its end is that of the program.
        self.end()
        wait_until("the main window to go", lambda: not self.desktop.windows("^Quavernet - "))
        self.assertEqual(self.desktop.windows(PLAYER), [player])
        self.desktop.close_window(PLAYER)
        self.assertEqual(self.ended(), 0)

    def test_a_playlist_that_can_not_be_written_ends_the_program_and_loses_nothing(self):
        self.store(ExternalPlayer=1, ScanLog=0)
        self.begin()
        self.click(ROW_1, repeat=2)
        self.assertEqual(self.opened(), self.files[0])
        self.select_two()
        os.makedirs(os.path.join(self.temporary, "Playlist.m3u", "in the way"))
        self.desktop.key("ctrl+a")
        box = self.desktop.window("^Programm wird beendet$")
        self.desktop.activate(box)
        self.desktop.picture("play-requests-5-end")
        self.desktop.key("Return")
        self.assertEqual(self.ended(), 1)
        self.assertEqual(self.counts(), (1, 0, 0))
        self.assertEqual(len(self.library.values("select 1 from FileCategories")), 2)
        self.assertEqual(os.listdir(self.temporary), ["Playlist.m3u"])

        self.window = self.start()
        self.desktop.activate(self.window)
        self.click(ROW_1, repeat=2)
        self.assertEqual(self.opened(), self.files[0])
        wait_until("the next play to count", lambda: self.counts() == (2, 0, 0))
        self.end()
        self.assertEqual(self.ended(), 0)

    def save(self, path):
        title = "^Speichern unter$"
        dialog = self.desktop.window(title)
        self.desktop.activate(dialog)
        self.desktop.type(path)
        self.desktop.key("Return")
        wait_until("the file dialog to go", lambda: not self.desktop.windows(title))


if __name__ == "__main__":
    unittest.main()
