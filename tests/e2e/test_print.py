"""The list printed through the print dialog of a machine that has no printer: Escape prints nothing, and Return writes
a PDF file in which another program finds every row."""
import os
import re
import subprocess
import unittest

from desktop import ProgramTest, wait_until

DIALOG = "^Drucken$"
SONGS = [("Ärzte", "Ölschlamm"), ("Beatles", "Yesterday"), ("Cure", "Friday I'm in Love")]


class PrintTest(ProgramTest):
    def setUp(self):
        super().setUp()
        # Where no print server is, its library would look for one in the network.
        self.desktop.environment["CUPS_SERVER"] = os.path.join(self.home, ".runtime", "cups.sock")

    def make_songs(self):
        folder = os.path.join(self.home, "Musik", "Lieder")
        os.makedirs(folder)
        wave = os.path.join(self.home, "song.wav")
        subprocess.run(["sox", "-n", "-r", "44100", "-b", "16", "-c", "2", wave, "trim", "0", "1"], check=True)
        for number, (performer, title) in enumerate(SONGS):
            subprocess.run(["lame", "--quiet", "--ta", performer, "--tt", title, wave,
                            os.path.join(folder, f"{number}.mp3")], check=True)
        return folder

    def open_dialog(self):
        dialog = self.desktop.window_after_key(self.window, "ctrl+d", DIALOG)
        self.desktop.activate(dialog)

    def await_no_dialog(self):
        wait_until("the dialog to go", lambda: not self.desktop.windows(DIALOG))

    def test_the_list_is_written_to_a_file_in_which_every_row_is_found(self):
        self.store(ScanLog=0)
        folder = self.make_songs()
        self.window = self.start()
        self.scan(self.window, folder)
        self.await_scan(self.window, len(SONGS))
        documents = os.path.join(self.home, "Dokumente")
        target = os.path.join(documents, "Quavernet Datei Liste.pdf")

        self.open_dialog()
        self.desktop.picture("print-1-dialog")
        self.desktop.key("Escape")
        self.await_no_dialog()
        self.assertFalse(os.path.exists(target))

        self.open_dialog()
        self.desktop.key("Return")
        self.await_no_dialog()
        wait_until("the file", lambda: os.path.exists(target))
        text = subprocess.run(["pdftotext", "-layout", target, "-"], check=True, capture_output=True, text=True).stdout
        lines = [re.sub(r"\s+", " ", line).strip() for line in text.split("\n") if line.strip()]
        self.assertEqual(lines[0], "Quavernet Datei Liste")
        self.assertRegex(lines[1], r"^\d\d\.\d\d\.\d{4}$")
        self.assertEqual(lines[2], "Interpret Titel Länge Grösse Qualität (Bit) Format")
        self.assertEqual(len(lines), 3 + len(SONGS))
        for line, (performer, title) in zip(lines[3:], SONGS):
            self.assertRegex(line, rf"^{performer} {title} 00:01 .* mp3$")
        self.assertEqual([name for name in os.listdir(documents) if name.endswith(".pdf")], [os.path.basename(target)])
        self.desktop.activate(self.window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)


if __name__ == "__main__":
    unittest.main()
