"""The details of a file by keyboard and mouse: opened, edited and saved, and read back by another program."""
import os
import subprocess
import unittest

from desktop import ProgramTest, wait_until

ROW_1 = (300, 118)
ROW_HEIGHT = 21


class DetailsTest(ProgramTest):
    def make_file(self, name, *switches):
        folder = os.path.join(self.home, "Musik")
        wave = os.path.join(self.home, "tone.wav")
        if not os.path.exists(wave):
            subprocess.run(["sox", "-n", "-r", "44100", "-c", "2", "-b", "16", wave, "synth", "2", "sine", "440"], check=True)
        path = os.path.join(folder, name)
        subprocess.run(["lame", "--quiet", "-b", "128", *switches, wave, path], check=True)
        return path

    def start_with(self, *paths):
        self.store(ScanLog=0)
        window = self.start()
        self.scan(window, os.path.join(self.home, "Musik"))
        self.await_scan(window, len(paths))
        self.assertEqual(sorted(self.library.files()), sorted(paths))
        return window

    def open_details(self, window, row, title="^Details"):
        self.desktop.activate(window)
        self.desktop.click(window, ROW_1[0], ROW_1[1] + (row - 1) * ROW_HEIGHT)
        dialog = self.desktop.window_after_key(window, "ctrl+i", title)
        self.desktop.activate(dialog)
        return dialog

    def row_of(self, path):
        """Performer, title, album and genre number as the library has them."""
        quoted = path.replace("'", "''")
        return self.library.values(
            "select I.Interpret || '|' || T.Name || '|' || A.Name || '|' || F.Genre_id from Files F, Interpret I, Titel T, "
            "Albums A where F.Inter_id = I.Inter_id and F.Title_id = T.Title_id and F.Album_id = A.Album_id and "
            f"F.Path || '' = '{quoted}'")

    def tags(self, path):
        """What another program finds in a file: names in small letters and their texts."""
        lines = subprocess.run(["ffprobe", "-v", "error", "-show_entries", "format_tags:stream_tags", "-of", "default=nw=1",
                                path], capture_output=True, check=True, text=True).stdout.splitlines()
        found = (line.removeprefix("TAG:").partition("=") for line in lines if line.startswith("TAG:"))
        return {name.lower(): text for name, _, text in found}

    def expect_tags(self, path, **expected):
        found = self.tags(path)
        self.assertEqual({name: found.get(name) for name in expected}, expected)

    def leave(self, window):
        """Out of the dialog, and out of the program."""
        self.desktop.key("Escape")
        wait_until("the dialog to go", lambda: not self.desktop.windows("^Details"))
        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)

    def test_tags_of_both_versions_are_edited_by_the_keyboard(self):
        first = self.make_file("a.mp3", "--id3v1-only", "--tt", "Eins", "--ta", "Abba", "--tl", "Best", "--tg", "17")
        second = self.make_file("b.mp3", "--id3v2-only", "--tt", "Zwei", "--ta", "Cure", "--tl", "Wish", "--tg", "17")
        with open(second, "rb") as file:
            audio = file.read()
        audio = audio[audio.index(b"\xff\xfb"):]
        window = self.start_with(first, second)

        self.open_details(window, 1)
        self.desktop.picture("details-1-viewing")
        self.desktop.key("Return")  # the button that begins the editing
        self.desktop.type("Aha")
        self.desktop.picture("details-2-editing")
        self.desktop.key("Return")
        wait_until("the new performer", lambda: self.row_of(first) == ["Aha|Eins|Best|17"])
        self.expect_tags(first, artist="Aha", title="Eins", album="Best", genre="Rock")
        self.desktop.key("Escape")
        wait_until("the dialog to go", lambda: not self.desktop.windows("^Details"))
        self.desktop.picture("details-3-saved")

        self.open_details(window, 2)
        self.desktop.key("Return", "Tab")  # on to the title
        self.desktop.type("Neu")
        self.desktop.picture("details-4-version-2")
        self.desktop.key("Return")
        wait_until("the new title", lambda: self.row_of(second) == ["Cure|Neu|Wish|255"])
        self.expect_tags(second, artist="Cure", title="Neu", album="Wish")
        with open(second, "rb") as file:
            self.assertTrue(file.read().endswith(audio), "not a byte of the music has changed")
        self.desktop.key("Escape")
        wait_until("the dialog to go", lambda: not self.desktop.windows("^Details"))

        self.open_details(window, 2)
        self.desktop.key("Return", "x", "Escape")  # begins, types, gives up
        self.desktop.picture("details-5-given-up")
        self.assertTrue(self.desktop.windows("^Details"), "the first Escape ends the editing alone")
        self.leave(window)
        self.expect_tags(second, title="Neu")

    def test_the_comments_of_an_ogg_file_are_edited_and_the_library_stays(self):
        wave = os.path.join(self.home, "tone.wav")
        path = os.path.join(self.home, "Musik", "c.ogg")
        subprocess.run(["sox", "-n", "-r", "44100", "-c", "2", "-b", "16", wave, "synth", "2", "sine", "440"], check=True)
        subprocess.run(["oggenc", "-Q", "-t", "Drei", "-a", "Doors", "-N", "7", "-o", path, wave], check=True)
        window = self.start_with(path)
        before = self.row_of(path)
        self.open_details(window, 1)
        self.desktop.key("Return")
        self.desktop.type("Neu")
        self.desktop.picture("details-7-ogg")
        self.desktop.key("Return")
        wait_until("the new performer", lambda: self.tags(path).get("artist") == "Neu")
        self.expect_tags(path, title="Drei", track="7")
        self.leave(window)
        self.assertEqual(self.row_of(path), before)

    def test_a_file_that_has_gone_is_told(self):
        path = self.make_file("a.mp3", "--id3v1-only", "--tt", "Eins", "--ta", "Abba")
        window = self.start_with(path)
        os.remove(path)
        self.open_details(window, 1, "^Anzeige der Details nicht möglich$")
        self.desktop.picture("details-6-gone")
        self.desktop.key("Return")
        wait_until("the box to go", lambda: not self.desktop.windows("^Anzeige der Details"))
        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)


if __name__ == "__main__":
    unittest.main()
