"""How the user is told: by a note on the desktop, by a box, and always on standard error."""
import os
import signal
import subprocess
import time
import unittest

from support import EncoderTest

# Writes its arguments, each with a zero after it.
RECORD = 'for part; do printf "%s\\0" "$part"; done > "$RECORDS/$(basename "$0")"'


class NotesTest(EncoderTest):
    def setUp(self):
        super().setUp()
        self.records = os.path.join(self.home, "records")
        os.mkdir(self.records)
        # A path without the desktop's tools that this machine may have.
        for tool in ("lame", "basename", "sleep"):
            self.real(tool)
        self.environment.update(PATH=self.tools, RECORDS=self.records, DBUS_SESSION_BUS_ADDRESS="unix:path=/nowhere")

    def recorded(self, tool):
        try:
            with open(os.path.join(self.records, tool), encoding="utf-8") as file:
                return file.read().split("\0")[:-1]
        except FileNotFoundError:
            return None

    def test_one_note_at_the_end_names_what_was_made(self):
        self.stand_in("notify-send", RECORD)
        self.encode(self.tone("a.wav", 0.1), self.tone("Ä & <b>\\n.wav", 0.1))
        self.assertEqual(self.recorded("notify-send"), ["--app-name=Quavernet", "--icon=io.greyfinch.Quavernet",
                                                        "--urgency=normal", "--", "2 MP3-Dateien sind fertig",
                                                        "a.mp3\nÄ &amp; &lt;b&gt;\\\\n.mp3"])

    def test_failures_are_told_first_and_many_are_counted(self):
        self.stand_in("notify-send", RECORD)
        self.speak_english()
        missing = [self.path(f"{number}.wav") for number in range(8)]
        self.refused(*missing, self.tone("a.wav", 0.1))
        note = self.recorded("notify-send")
        self.assertEqual(note[2:5], ["--urgency=critical", "--", "Not everything was converted"])
        told = [f"{number}.wav: The file or folder is not there." for number in range(5)]
        self.assertEqual(note[5].split("\n"), told + ["… and 3 more"])
        self.refused(missing[0])
        self.assertEqual(self.recorded("notify-send")[4], "The conversion has failed")

    def test_names_of_strangers_stay_one_line_of_readable_letters(self):
        self.stand_in("notify-send", RECORD)
        said = self.refused(os.fsencode(self.music) + b"/\xff\n\x1b[31m\xe2\x80\xae.wav")
        shown = "���[31m�.wav"
        self.assertEqual(said, f"bladeenc: {self.path(shown)}: Die Datei oder der Ordner ist nicht da.\n")
        self.assertEqual(self.recorded("notify-send")[5], f"{shown}: Die Datei oder der Ordner ist nicht da.")

    def real(self, tool):
        place = subprocess.run(["which", tool], check=True, capture_output=True, text=True).stdout.strip()
        os.symlink(place, os.path.join(self.tools, tool))

    def heard_on_a_bus(self, work):
        """What programs call on a bus of their own while that is done."""
        bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address"],
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.addCleanup(bus.stdout.close)
        self.addCleanup(bus.wait)
        self.addCleanup(bus.kill)
        address = bus.stdout.readline().strip()
        heard = os.path.join(self.home, "heard")
        with open(heard, "w", encoding="utf-8") as file:
            monitor = subprocess.Popen(["dbus-monitor", "--address", address,
                                        "interface=org.freedesktop.Notifications"],
                                       stdout=file, stderr=subprocess.DEVNULL)
        self.addCleanup(monitor.wait)
        self.addCleanup(monitor.kill)

        def await_text(text):
            end = time.monotonic() + 20
            while True:
                with open(heard, encoding="utf-8") as told:
                    content = told.read()
                if text in content:
                    return content
                self.assertLess(time.monotonic(), end, content)
                time.sleep(0.01)
        await_text("member=NameLost")  # From now on it listens.
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        work()
        return await_text("int32 -1")

    def test_without_notify_send_the_bus_is_called(self):
        self.real("gdbus")
        heard = self.heard_on_a_bus(lambda: self.refused(self.path("it's \\n <b>\".wav")))
        call = heard[heard.index("member=Notify"):]
        self.assertEqual([line.strip() for line in call.splitlines()[1:6]],
                         ['string "Quavernet"', "uint32 0", 'string "io.greyfinch.Quavernet"',
                          'string "Das Konvertieren ist fehlgeschlagen"',
                          'string "it\'s \\n &lt;b&gt;".wav: Die Datei oder der Ordner ist nicht da."'])
        self.assertRegex(call, r'string "urgency"\s+variant\s+byte 2\s')

    def test_a_box_stands_in_for_the_note_when_something_failed(self):
        self.environment["DISPLAY"] = ":99"
        name = self.path("a <b>\\n.wav")
        told = "Das Konvertieren ist fehlgeschlagen\n\na <b>\\n.wav: Die Datei oder der Ordner ist nicht da."
        for tool, arguments in (("xmessage", ["-center", "-title", "Quavernet", told]),
                                ("kdialog", ["--title", "Quavernet", "--error", told.replace("<b>", "‹b›")]),
                                ("zenity", ["--error", "--no-markup", "--title=Quavernet",
                                            "--text=" + told.replace("\\", "\\\\")])):
            with self.subTest(tool):
                self.stand_in(tool, RECORD)
                self.refused(name)
                self.assertEqual(self.recorded(tool), arguments)
        self.assertEqual(self.music_names(), [])

    def test_a_note_or_box_that_fails_makes_place_for_the_next(self):
        self.environment["DISPLAY"] = ":99"
        for tool in ("notify-send", "gdbus", "zenity"):
            self.stand_in(tool, "exit 1")
        self.stand_in("kdialog", RECORD)
        self.refused(self.path("a.wav"))
        self.assertIn("--error", self.recorded("kdialog"))

    def test_nobody_waits_for_a_box(self):
        self.environment["DISPLAY"] = ":99"
        self.stand_in("zenity", 'echo $$ > "$RECORDS/process"; exec sleep 60')
        self.stand_in("kdialog", RECORD)
        self.refused(self.path("a.wav"), timeout=30)
        with open(os.path.join(self.records, "process"), encoding="utf-8") as file:
            os.kill(int(file.read()), signal.SIGKILL)  # It was still there.
        self.assertIsNone(self.recorded("kdialog"))

    def test_success_needs_no_box_and_without_a_desktop_nothing_is_asked(self):
        self.environment["DISPLAY"] = ":99"
        self.stand_in("zenity", RECORD)
        self.encode(self.tone("a.wav", 0.1))
        self.assertIsNone(self.recorded("zenity"))
        del self.environment["DISPLAY"], self.environment["DBUS_SESSION_BUS_ADDRESS"]
        for tool in ("notify-send", "gdbus", "zenity", "kdialog", "xmessage"):
            self.stand_in(tool, RECORD)
        self.refused(self.path("b.wav"))
        self.assertEqual(os.listdir(self.records), [])


if __name__ == "__main__":
    unittest.main()
