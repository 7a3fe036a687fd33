"""The player from outside: a real client on the session's bus reads what plays and gives commands."""
import os
import subprocess
import unittest

from desktop import ProgramTest, wait_until

ROW_1 = (300, 118)  # of the main window's list
PLAYER = "^Quavernet Player$"
PAUSED = "^Quavernet Player - Pause$"
SECONDS = 60


class RemoteTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address=1"],
                                    stdout=subprocess.PIPE, text=True)
        self.addCleanup(self.end_bus)
        self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"] = self.bus.stdout.readline().strip()

    def end_bus(self):
        self.bus.kill()
        self.bus.wait()
        self.bus.stdout.close()

    def remote(self, *words):
        """What the client prints."""
        return self.desktop.ask("playerctl", "-p", "quavernet", *words).strip()

    def wait_for(self, answer, *words):
        wait_until(f"{words} to tell {answer!r}", lambda: self.remote(*words) == answer)

    def make_long_track(self):
        folder = os.path.join(self.home, "Musik", "Lang")
        os.makedirs(folder)
        wave = os.path.join(self.home, "wave.wav")
        subprocess.run(["sox", "-n", "-r", "44100", "-c", "2", wave, "synth", str(SECONDS), "sine", "440"], check=True)
        path = os.path.join(folder, "lang.mp3")
        subprocess.run(["lame", "--quiet", "-b", "128", "--tt", "Langes Lied", "--ta", "Die Probe", wave, path],
                       check=True)
        return folder, path

    def test_a_client_reads_what_plays_and_gives_commands(self):
        folder, path = self.make_long_track()
        window = self.start()
        self.assertEqual(self.remote("-l"), "", "nobody is on the bus before there is a player")
        self.scan(window, folder)
        self.await_scan(window, 1)
        self.assertEqual(self.library.files(), [path])
        self.desktop.close_window("^Scan Log$")
        self.desktop.activate(window)

        self.desktop.click(window, *ROW_1)
        self.desktop.ask("xdotool", "click", "--repeat", 2, "--delay", 60, 1)
        self.desktop.window(PLAYER)
        self.wait_for("Playing", "status")
        self.wait_for("Die Probe|Langes Lied|file://" + path, "metadata", "--format", "{{artist}}|{{title}}|{{xesam:url}}")
        length = int(self.remote("metadata", "mpris:length"))
        self.assertAlmostEqual(length / 1e6, SECONDS, delta=1)

        self.remote("play-pause")
        self.desktop.window(PAUSED)
        self.wait_for("Paused", "status")
        self.remote("position", "40")
        wait_until("the position", lambda: abs(float(self.remote("position")) - 40) < 1)
        self.remote("play")
        self.desktop.window(PLAYER)
        self.wait_for("Playing", "status")
        wait_until("the position to go on", lambda: float(self.remote("position")) > 40.5)

        self.remote("volume", "0.5")
        wait_until("the volume", lambda: abs(float(self.remote("volume")) - 0.5) < 0.01)
        self.remote("loop", "Track")
        self.wait_for("Track", "loop")
        self.remote("loop", "None")
        self.wait_for("None", "loop")
        self.remote("stop")
        self.wait_for("Stopped", "status")
        self.desktop.picture("remote-stopped")

        self.desktop.ask("dbus-send", "--session", "--type=method_call", "--dest=org.mpris.MediaPlayer2.quavernet",
                         "/org/mpris/MediaPlayer2", "org.mpris.MediaPlayer2.Quit")
        self.assertEqual(self.ended(), 0)


if __name__ == "__main__":
    unittest.main()
