"""The program where its package has put it: below a root of its own, in which it may even be shut in. What a user does
first: start it, scan a folder, play a file, encode one, end it."""
import configparser
import glob
import os
import shutil
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))
import debian  # noqa: E402
from desktop import ProgramTest, wait_until  # noqa: E402

ID = "io.greyfinch.Quavernet"
ROW_1 = (300, 118)  # of the main window's list
PLAYER = "^Quavernet Player$"
SECONDS = 60


class Place:
    """A root below which the package lies; programs see its files where they are, and the user is who tests."""
    user = None
    system = "/"  # where the libraries are

    def __init__(self, root):
        self.root = root

    def homes(self):
        """Where the user's folder can be made."""
        return tempfile.gettempdir()

    def inside(self, text):
        """Paths as programs of the place see them."""
        return text

    def command(self, program):
        return [os.path.join(self.root, program)]

    def enter(self, user):
        """In a program's process before it begins: shuts it in, and makes it that user's."""
        if user is not None:
            os.setgroups([])
            os.setgid(user)
            os.setuid(user)


def unpacked(case):
    """An empty folder with the package in it, which lasts as long as the test case."""
    root = tempfile.mkdtemp(prefix="quavernet-prefix-")
    case.addClassCleanup(shutil.rmtree, root)
    debian.unpack(root)
    return Place(root)


class InstalledTest(ProgramTest):
    """Subclasses name the place."""
    place = None

    def setUp(self):
        self.bus = None
        usual, tempfile.tempdir = tempfile.tempdir, self.place.homes()
        try:
            super().setUp()
        finally:
            tempfile.tempdir = usual
        environment = self.desktop.environment
        environment.update(LANG="C.UTF-8", LC_ALL="C.UTF-8")
        self.start_bus(environment)
        environment.pop("FONTCONFIG_FILE")  # The fonts are those of the place.
        self.inner = {name: self.place.inside(value) for name, value in environment.items()}

    def start_bus(self, environment):
        """A session's bus that is reached by name, not by a path: it is the same one from inside the place."""
        self.bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address=1",
                                     f"--address=unix:abstract=quavernet-{os.getpid()}"],
                                    stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                                    user=self.place.user)
        self.addCleanup(self.end_bus)
        environment["DBUS_SESSION_BUS_ADDRESS"] = self.bus.stdout.readline().strip()

    def end_bus(self):
        self.bus.kill()
        self.bus.wait()
        self.bus.stdout.close()

    def hand_over(self):
        """All that lies in the home belongs to its user."""
        if self.place.user is not None:
            for folder, _, names in os.walk(self.home):
                for path in [folder] + [os.path.join(folder, name) for name in names]:
                    os.chown(path, self.place.user, self.place.user)

    def run_inside(self, program, *arguments, user=None):
        return subprocess.run([*self.place.command(program), *arguments], env=self.inner, check=True,
                              capture_output=True, text=True, preexec_fn=lambda: self.place.enter(user))

    def launch(self):
        self.hand_over()
        self.terminal = tempfile.TemporaryFile("w+")
        self.addCleanup(self.terminal.close)
        self.program = subprocess.Popen(self.place.command("usr/bin/quavernet"), env=self.inner,
                                        preexec_fn=lambda: self.place.enter(self.place.user), stdout=self.terminal,
                                        stderr=subprocess.STDOUT)

    def remote(self, *words):
        """What a client on the session's bus prints."""
        return subprocess.run(["playerctl", "-p", "quavernet", *words], env=self.desktop.environment,
                              user=self.place.user, capture_output=True, text=True).stdout.strip()

    def make_track(self):
        """A folder with a WAV file and the same sound as MP3."""
        folder = os.path.join(self.home, "Musik", "Neu")
        os.makedirs(folder)
        wave, path = os.path.join(folder, "ton.wav"), os.path.join(folder, "lied.mp3")
        subprocess.run(["sox", "-n", "-r", "44100", "-c", "2", wave, "synth", str(SECONDS), "sine", "440"], check=True)
        subprocess.run(["lame", "--quiet", "-b", "128", "--tt", "Ein Lied", "--ta", "Die Probe", wave, path], check=True)
        os.rename(wave, os.path.join(self.home, "ton.wav"))
        return folder, path

    def check_window_class(self, window):
        """A desktop finds the menu entry of a window by the class that both name."""
        entry = configparser.ConfigParser(interpolation=None)
        entry.optionxform = str
        entry.read(os.path.join(self.place.root, "usr/share/applications", f"{ID}.desktop"), encoding="utf-8")
        told = self.desktop.ask("xprop", "-id", window, "WM_CLASS").split('"')
        self.assertEqual(told[3], entry["Desktop Entry"]["StartupWMClass"])

    def check_music_plays(self, window, path):
        """A double click on the only row; the position of the sound goes on by the clock."""
        self.desktop.close_window("^Scan Log$")
        self.desktop.activate(window)
        self.desktop.click(window, *ROW_1)
        self.desktop.ask("xdotool", "click", "--repeat", 2, "--delay", 60, 1)
        self.desktop.window(PLAYER)
        wait_until("music", lambda: self.remote("status") == "Playing")
        self.assertEqual(self.remote("metadata", "--format", "{{artist}}|{{title}}|{{xesam:url}}"),
                         "Die Probe|Ein Lied|file://" + self.place.inside(path))
        before = float(self.remote("position"))
        wait_until("two seconds of music", lambda: float(self.remote("position")) > before + 2)
        self.desktop.picture(self.id().split(".")[-1] + "-plays")

    def check_encoder(self):
        """As the superuser, who may write beside it: it leaves nothing there."""
        folder = os.path.join(self.place.root, "usr/share/quavernet")
        before = sorted(glob.glob(folder + "/**", recursive=True))
        self.run_inside("usr/share/quavernet/bladeenc", "-64", self.place.inside(os.path.join(self.home, "ton.wav")))
        made = subprocess.run(["ffprobe", "-v", "error", "-show_entries", "format=format_name,duration,bit_rate", "-of",
                               "csv=p=0", os.path.join(self.home, "ton.mp3")], check=True, capture_output=True, text=True)
        name, length, rate = made.stdout.strip().split(",")
        self.assertEqual((name, round(float(length)), round(int(rate), -3)), ("mp3", SECONDS, 64000))
        self.assertEqual(sorted(glob.glob(folder + "/**", recursive=True)), before)

    def check_first_steps(self):
        self.assertEqual(debian.missing_helpers(self.place.system), [])
        folder, path = self.make_track()
        self.window = self.start()
        self.check_window_class(self.window)
        self.assertEqual(self.library.files(), [])
        dialog_folder = self.place.inside(folder)
        self.scan(self.window, dialog_folder)
        self.await_scan(self.window, 1)
        self.assertEqual(self.library.files(), [self.place.inside(path)])
        self.check_music_plays(self.window, path)
        self.check_encoder()
        self.desktop.close_window(PLAYER)
        self.desktop.activate(self.window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)
        self.terminal.seek(0)
        self.assertEqual(self.terminal.read(), "", "what the terminal was told")
