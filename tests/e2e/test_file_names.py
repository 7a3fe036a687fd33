"""File names cleaned up in a real window: one name, then several, from the list's menu. Disk, library and what the list
plays follow; an entry of the tree keeps its old name."""
import os
import subprocess
import unittest

from desktop import ProgramTest, wait_until

# In a window of the first start's size, under the menu bar.
ROW_1 = (300, 118)
BESIDE_NODES = (100, 500)
DIALOG = "^Dateiname ändern$"
NAMES = ["01_Ärger_über_Öl (live).mp3", "b_(x).mp3", "c_2.mp3"]


class FileNamesTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.record_opener()
        self.folder = os.path.join(self.home, "Musik", "Lieder")

    def make_songs(self):
        """Three songs of a second, whose performers are A, B and C."""
        os.makedirs(self.folder)
        wave = os.path.join(self.home, "song.wav")
        subprocess.run(["sox", "-n", "-r", "44100", "-b", "16", "-c", "2", wave, "trim", "0", "1"], check=True)
        for performer, name in zip("ABC", NAMES):
            subprocess.run(["lame", "--quiet", "--ta", performer, "--tt", "Song", wave, os.path.join(self.folder, name)],
                           check=True)

    def make_category(self):
        """Jazz, of the first song, from a playlist that is dropped on the tree."""
        path = os.path.join(self.home, "Jazz.m3u")
        with open(path, "w", encoding="utf-8") as file:
            file.write(os.path.join(self.folder, NAMES[0]) + "\n")
        partner = self.start_partner([path])
        self.drag(self.at(partner, (110, 150)), self.at(self.window, BESIDE_NODES))
        wait_until("the entry", lambda: self.entries() == [NAMES[0]])
        self.end_partner()

    def entries(self):
        return self.library.values("select Filename from FileCategories")

    def on_disk(self):
        return sorted(os.listdir(self.folder))

    def in_library(self):
        paths = self.library.values("select Path from Files")
        self.assertEqual([os.path.basename(path) for path in paths], self.library.values("select Name from Files"))
        return sorted(os.path.basename(path) for path in paths)

    def open_dialog(self, downs, picture):
        self.click(ROW_1, button=3)
        wait_until("the list's menu", self.popups)
        self.desktop.key(*["Down"] * downs, "Return")
        self.desktop.activate(self.desktop.window(DIALOG))
        self.desktop.picture(picture)

    def close_dialog(self):
        self.desktop.key("Escape")
        wait_until("the dialog to go", lambda: not self.desktop.windows(DIALOG))
        self.desktop.activate(self.window)

    def test_names_are_cleaned_up_on_disk_in_the_library_and_in_the_list(self):
        self.store(ExternalPlayer=1, ScanLog=0)
        self.make_songs()
        self.window = self.start()
        self.scan(self.window, self.folder)
        self.await_scan(self.window, len(NAMES))
        self.desktop.activate(self.window)
        self.make_category()

        self.click(ROW_1)
        self.open_dialog(4, "file-names-1-one")  # details, play, swap, file name
        self.desktop.key(*["Tab", "space"] * 4)
        self.desktop.picture("file-names-2-cleaned-up")
        self.assertEqual(self.on_disk(), sorted(NAMES))
        self.desktop.key("Return")
        one = " Aerger ueber Oel .mp3"
        wait_until("the new name", lambda: self.in_library() == sorted([one, *NAMES[1:]]))
        self.assertEqual(self.on_disk(), sorted([one, *NAMES[1:]]))
        self.close_dialog()

        # The second and the third song; the right button leaves them selected.
        self.click(ROW_1)
        self.desktop.key("Down", "shift+Down")
        self.open_dialog(3, "file-names-3-several")  # details are grey
        self.desktop.key("Down", "Tab", "End", *["BackSpace"] * 7)  # the first one's "(x).mp3"
        self.desktop.type("new")
        self.desktop.key("Return", *["Tab"] * 5, "space")           # underscores
        self.desktop.picture("file-names-4-several-cleaned-up")
        self.desktop.key("Return")
        new = sorted([one, "b new.mp3", "c 2.mp3"])
        wait_until("the new names", lambda: self.in_library() == new)
        self.assertEqual(self.on_disk(), new)
        self.close_dialog()

        self.assertEqual(self.entries(), [NAMES[0]])
        self.click(ROW_1, repeat=2)
        wait_until("the desktop's opener", self.opener_calls)
        self.assertEqual(self.opener_calls(), [[os.path.join(self.folder, one)]])
        self.desktop.picture("file-names-5-list")
        self.desktop.activate(self.window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)


if __name__ == "__main__":
    unittest.main()
