"""While a scan runs, nothing but "cancel" acts: letters, column heads, check boxes and drops on the list leave the
scan alone, and the window can be closed once it has ended."""
import os
import re
import struct
import unittest

from desktop import ProgramTest, wait_until

# In a window of the first start's size.
CANCEL = (49, 35)
CHECK_PERFORMER = (619, 35)
LETTER_A = (266, 73)
HEAD_TITLE = (520, 100)
LIST_MIDDLE = (500, 400)

SLOW_FILES = 3 * 4000
FRAMES = 20000  # of each file's tag: they take a reader some hundredths of a second


class RunningScanTest(ProgramTest):
    def make_slow_music(self, sound):
        """A folder of files that each take their time, one file under many names."""
        frame = b"TXXX" + struct.pack(">IH", 5, 0) + b"\0a\0bc"
        size = len(frame) * FRAMES
        head = b"ID3\3\0\0" + bytes(size >> shift & 0x7F for shift in (21, 14, 7, 0))
        folder = os.path.join(self.home, "Musik", "Langsam")
        os.makedirs(folder)
        first = os.path.join(folder, "0000.mp3")
        with open(sound, "rb") as source, open(first, "wb") as file:
            file.write(head + frame * FRAMES + source.read())
        for number in range(1, SLOW_FILES):
            os.link(first, os.path.join(folder, f"{number:04}.mp3"))
        return folder

    def running(self, window):
        return re.fullmatch(r"Quavernet - \d+ %", self.desktop.title(window))

    def goes_on(self, window, after):
        """The scan stores files after this, too."""
        stored = len(self.library.files())
        wait_until(f"more files after {after}", lambda: len(self.library.files()) > stored)
        self.assertTrue(self.running(window), f"ended after {after}")

    def test_a_running_scan_is_left_alone_until_cancel(self):
        _, music = self.make_music()
        sounds = [path for path in music if path.endswith(".mp3")]
        folder = self.make_slow_music(sounds[0])
        self.store(ScanLog=0)
        window = self.start()
        partner = self.start_partner(sounds[:2])
        self.scan(window, folder)
        wait_until("the first files", self.library.files)
        self.desktop.activate(window)

        self.desktop.click(window, *LETTER_A)
        self.goes_on(window, "a letter")
        self.desktop.click(window, *HEAD_TITLE)
        self.desktop.ask("xdotool", "click", "--repeat", 2, "--delay", 60, 1)
        self.goes_on(window, "a double click on a head")
        self.desktop.click(window, *CHECK_PERFORMER)
        self.desktop.key("Return", "space")
        self.goes_on(window, "Enter on a check box")
        self.drag(self.at(partner, (110, 150)), self.at(window, LIST_MIDDLE))
        self.goes_on(window, "a drop")
        self.desktop.picture("running-scan")
        self.desktop.activate(window)
        self.desktop.key("alt+F4")
        self.desktop.close_window("^Programm beenden$")
        self.goes_on(window, "a refused close")

        self.desktop.activate(window)
        self.desktop.click(window, *CANCEL)
        wait_until("the end of the scan", lambda: not self.running(window))
        stored = self.library.files()
        self.assertLess(len(stored), SLOW_FILES)
        self.assertEqual([path for path in stored if not path.startswith(folder)], [])
        self.assertEqual(len(stored), len(set(stored)))
        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)


if __name__ == "__main__":
    unittest.main()
