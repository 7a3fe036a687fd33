"""WAV files made by sox are selected in the list, encoded by the real encoder, and decoded again by another program."""
import os
import re
import shutil
import subprocess
import sys
import unittest

from desktop import PROGRAM, ProgramTest, before_start, wait_until

ROW_1 = (300, 118)
ROW_HEIGHT = 21
SECONDS = 2
OPTIONS = "^Konvertierungs Optionen$"
NO_TARGET = "^Ordner/Laufwerk existiert nicht$"
ENDS = "^Programm wird beendet$"
# Names that a shell or a careless reader of switches would take for something else, each with its tone in hertz.
NAMES = {"-delete.wav": 440, "it's \"$HOME\" `id`.wav": 880, "two  blanks ; rm.wav": 1320}


class ConvertTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.music = os.path.join(self.home, "Musik")
        # What the program starts with. Its desktop has no notes: boxes tell what failed, and this one writes down what
        # it was to show.
        self.program_path = PROGRAM
        self.tools = os.path.join(self.home, "bin")
        os.mkdir(self.tools)
        self.told = os.path.join(self.home, "told")
        with open(os.path.join(self.tools, "zenity"), "w", encoding="utf-8") as file:
            file.write(f"#!/bin/sh\nprintf '%s\\n' \"$@\" > '{self.told}.part'\n"
                       f"/bin/mv '{self.told}.part' '{self.told}'\n")
        os.chmod(os.path.join(self.tools, "zenity"), 0o755)
        self.search = f"{self.tools}:{os.environ['PATH']}"

    def launch(self):
        environment = dict(self.desktop.environment, PATH=self.search)
        environment.pop("DBUS_SESSION_BUS_ADDRESS", None)
        self.program = subprocess.Popen([self.program_path], env=environment, cwd=self.home, restore_signals=False,
                                        preexec_fn=before_start)

    def tone(self, name, frequency):
        path = os.path.join(self.music, name)
        subprocess.run(["sox", "-n", "-r", "44100", "-c", "2", "-b", "16", "-t", "wav", path, "synth", str(SECONDS), "sine",
                        str(frequency)], check=True)
        return path

    def heard(self, path):
        """Length in seconds, and tone in hertz, of what an MP3 file decodes to. In one channel: sox counts both as one."""
        decoded = os.path.join(self.home, "decoded.wav")
        subprocess.run(["mpg123", "-q", "--mono", "-w", decoded, path], check=True)
        facts = subprocess.run(["sox", decoded, "-n", "stat"], check=True, capture_output=True, text=True).stderr
        return tuple(float(re.search(rf"^{what}\s*:\s*([\d.]+)$", facts, re.M)[1])
                     for what in (r"Length \(seconds\)", r"Rough\s+frequency"))

    def probed(self, path, what):
        """What another program reads in the head of an MP3 file."""
        return subprocess.run(["ffprobe", "-v", "error", "-show_entries", f"stream={what}", "-of", "default=nk=1:nw=1",
                               path], check=True, capture_output=True, text=True).stdout.strip()

    def expect_sound(self, path, frequency, seconds=SECONDS):
        length, tone = self.heard(path)
        self.assertAlmostEqual(length, seconds, delta=0.1)
        self.assertAlmostEqual(tone, frequency, delta=frequency * 0.02)

    def start_with(self, sounds, **settings):
        """Scans the files and selects all rows; gives the main window."""
        self.paths = {name: self.tone(name, frequency) for name, frequency in sounds.items()}
        self.store(ScanLog=0, **settings)
        window = self.start()
        self.scan(window, self.music)
        self.await_scan(window, len(sounds))
        self.desktop.activate(window)
        self.desktop.click(window, *ROW_1)
        for _ in range(len(sounds) - 1):
            self.desktop.key("shift+Down")
        return window

    def made(self, folder):
        """MP3 files there that have their name."""
        return sorted(name for name in os.listdir(folder) if name.endswith(".mp3"))

    def leave(self, window):
        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)

    def read_told(self):
        wait_until("the box of the encoder", lambda: os.path.exists(self.told))
        with open(self.told, encoding="utf-8") as file:
            return file.read()

    def test_the_selected_files_are_encoded_with_the_chosen_options(self):
        target = os.path.join(self.home, "Neue Lieder")
        os.mkdir(target)
        window = self.start_with(NAMES)
        self.desktop.picture("convert-1-selected")
        options = self.desktop.window_after_key(window, "ctrl+k", OPTIONS)
        self.desktop.activate(options)
        self.desktop.type(target)
        self.desktop.key("Tab", "Tab", "Home")  # to the lowest rate
        self.desktop.key("Down", "Down", "Down", "Down")  # 64
        self.desktop.picture("convert-2-options")
        self.desktop.key("Escape")  # does not cancel
        wait_until("all MP3 files", lambda: len(self.made(target)) == len(NAMES))
        self.assertEqual(self.made(target), sorted(name[:-4] + ".mp3" for name in NAMES))
        for name, frequency in NAMES.items():
            self.expect_sound(os.path.join(target, name[:-4] + ".mp3"), frequency)
            self.assertEqual(self.probed(os.path.join(target, name[:-4] + ".mp3"), "bit_rate"), "64000")
        self.assertEqual(sorted(os.listdir(self.music)), sorted(NAMES), "the sources stay, and nothing lies beside them")
        self.assertEqual(sorted(self.library.files()), sorted(self.paths.values()), "the library is not updated")
        self.desktop.picture("convert-3-done")
        self.leave(window)

    def test_joined_files_go_beside_the_first_and_their_sources_are_deleted(self):
        # Without the dialog: the first setting of this user.
        sounds = {"a.wav": 440, "b.wav": 440}
        window = self.start_with(sounds, ShowKonvert=0, KonvertCombine=1, KonvertDelete=1, KonvertMonoStereo="mono",
                                 KonvertTarget=os.path.join(self.home, "weg"))
        box = self.desktop.window_after_key(window, "ctrl+k", NO_TARGET)
        self.desktop.picture("convert-4-no-target")
        self.desktop.activate(box)
        self.desktop.key("Return")
        joined = wait_until("the MP3 file alone", lambda: len(os.listdir(self.music)) == 1 and self.made(self.music))
        path = os.path.join(self.music, joined[0])
        self.expect_sound(path, 440, 2 * SECONDS)
        self.assertEqual(self.probed(path, "channels"), "1")
        self.leave(window)

    def test_the_encoder_and_what_it_starts_reach_no_network(self):
        real = shutil.which("lame")
        with open(os.path.join(self.tools, "lame"), "w", encoding="utf-8") as file:
            file.write(f"#!/bin/sh\n{self.network_trial()}\nexec '{real}' \"$@\"\n")
        os.chmod(os.path.join(self.tools, "lame"), 0o755)
        window = self.start_with({"a.wav": 440}, ShowKonvert=0)
        self.desktop.activate(window)
        self.desktop.key("ctrl+k")
        wait_until("the MP3 file", lambda: self.made(self.music) == ["a.mp3"])
        self.expect_caged(trials=1)
        self.expect_sound(os.path.join(self.music, "a.mp3"), 440)
        self.leave(window)

    def test_a_missing_lame_is_told_and_the_sources_stay(self):
        os.symlink(sys.executable, os.path.join(self.tools, "python3"))
        self.search = self.tools
        window = self.start_with({"a.wav": 440}, ShowKonvert=0, KonvertDelete=1)
        self.desktop.activate(window)
        self.desktop.key("ctrl+k")
        self.assertIn("Das Programm lame fehlt. Bitte installieren Sie das Paket lame.", self.read_told())
        self.assertEqual(os.listdir(self.music), ["a.wav"])
        self.leave(window)

    def test_a_file_that_cannot_be_encoded_is_told_by_its_name(self):
        window = self.start_with({"a.wav": 440}, ShowKonvert=0)
        with open(self.paths["a.wav"], "wb") as file:
            file.write(b"no longer a WAV file")
        self.desktop.activate(window)
        self.desktop.key("ctrl+k")
        told = self.read_told()
        self.assertIn("Das Konvertieren ist fehlgeschlagen", told)
        self.assertIn("a.wav: Das ist keine WAV-Datei.", told)
        self.assertEqual(os.listdir(self.music), ["a.wav"])
        self.leave(window)

    def test_a_missing_encoder_ends_the_program_with_its_message(self):
        alone = os.path.join(self.home, "alone")
        os.mkdir(alone)
        for name in ("quavernet", "Quavernet.db"):
            source = os.path.join(os.path.dirname(PROGRAM), name)
            try:
                os.link(source, os.path.join(alone, name))
            except OSError:
                shutil.copy(source, alone)
        self.program_path = os.path.join(alone, "quavernet")
        window = self.start_with({"a.wav": 440}, ShowKonvert=0)
        box = self.desktop.window_after_key(window, "ctrl+k", ENDS)
        self.desktop.picture("convert-5-no-encoder")
        self.desktop.activate(box)
        self.desktop.key("Return")
        self.assertEqual(self.ended(), 1)
        self.assertEqual(os.listdir(self.music), ["a.wav"])


if __name__ == "__main__":
    unittest.main()
