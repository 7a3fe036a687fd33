"""A screen, a window manager and a home of their own for the real program, and hands that only use the keyboard
and the mouse (xdotool). What the program did is read from its library file and from the titles of its windows."""
import configparser
import os
import re
import resource
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time
import unittest
import urllib.parse

import no_network

WAIT = 60  # seconds that anything may take before it counts as not happening

# Set by CMake: the built program, the sample maker, and where screenshots go.
PROGRAM = os.environ["QUAVERNET_PROGRAM"]
SAMPLE_MAKER = os.environ["QUAVERNET_SAMPLE_MAKER"]
PICTURES = os.environ["QUAVERNET_PICTURES"]
FONTS = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", "support", "fonts.conf"))

DOUBLE_CLICK = 0.6  # seconds after which a press is no second click of a double click, which plays

# Where programs' own files lie in a home folder. The last is that of the bus, which starts one where the session has
# none (dbus-launch).
OWN_FOLDERS = {".config", ".cache", ".local", ".runtime", ".dbus"}

SCREEN = "1280x960"  # a check may choose another one before it starts


def wait_until(what, condition):
    """Gives the first true answer of the condition; fails with `what` when none comes."""
    end = time.monotonic() + WAIT
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > end:
            raise AssertionError(f"waited {WAIT} s in vain for {what}")
        time.sleep(0.02)


class Screen:
    """What scenarios do alike on each kind of screen, which has its own way to find windows and to press keys."""

    def window_after_key(self, window, key, title):
        """Presses a key in a window until it brings up another one: on a busy machine the first may come too early."""
        for _ in range(3):
            self.activate(window)
            self.key(key)
            end = time.monotonic() + WAIT / 3
            while time.monotonic() < end:
                found = self.windows(title)
                if found:
                    return found[0]
                time.sleep(0.1)
        raise AssertionError(f"{key} brings up no window {title!r}")


class Desktop(Screen):
    """Xvfb with openbox."""

    def __init__(self, home):
        read, write = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", SCREEN + "x24", "-nolisten", "tcp",
             "-noreset"],
            pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as numbers:
            number = numbers.readline().strip()
        if not number:
            raise AssertionError("Xvfb did not start")
        self.environment = dict(
            os.environ, DISPLAY=f":{number}", HOME=home, LANG="de_DE.UTF-8", LC_ALL="de_DE.UTF-8",
            XDG_CONFIG_HOME=f"{home}/.config", XDG_DATA_HOME=f"{home}/.local/share", XDG_CACHE_HOME=f"{home}/.cache",
            XDG_RUNTIME_DIR=f"{home}/.runtime", QT_QPA_PLATFORM="xcb", FONTCONFIG_FILE=FONTS)
        for name in ("WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP", "LANGUAGE"):
            self.environment.pop(name, None)
        self.manager = subprocess.Popen(["openbox"], env=self.environment, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL)
        wait_until("the window manager",
                   lambda: "window id" in self.ask("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))

    def close(self):
        for process in (self.manager, self.server):
            process.terminate()
            process.wait()

    def ask(self, *command):
        return subprocess.run([str(part) for part in command], env=self.environment, capture_output=True,
                              text=True).stdout

    def windows(self, title):
        """Visible windows whose title matches."""
        return self.ask("xdotool", "search", "--onlyvisible", "--name", title).split()

    def windows_of(self, pid):
        """Visible windows of a program."""
        return self.ask("xdotool", "search", "--onlyvisible", "--pid", pid).split()

    def window(self, title):
        return wait_until(f"a window {title!r}", lambda: self.windows(title))[0]

    def title(self, window):
        return self.ask("xdotool", "getwindowname", window).strip()

    def geometry(self, window):
        """x, y, width, height; zeros for a window that has gone."""
        told = dict(line.split("=") for line in
                    self.ask("xdotool", "getwindowgeometry", "--shell", window).split())
        return tuple(int(told.get(key, 0)) for key in ("X", "Y", "WIDTH", "HEIGHT"))

    def activate(self, window):
        self.ask("xdotool", "windowactivate", "--sync", window)

    def close_window(self, title):
        """Closes the window as its frame's button does, and waits until it has gone."""
        self.activate(self.window(title))
        self.key("alt+F4")
        wait_until(f"{title} to go", lambda: not self.windows(title))

    def key(self, *keys):
        self.ask("xdotool", "key", "--delay", 30, *keys)

    def type(self, text):
        self.ask("xdotool", "type", "--delay", 15, text)

    def click(self, window, x, y, button=1):
        """A click at pixels from the window's upper left corner."""
        self.ask("xdotool", "mousemove", "--window", window, x, y, "click", button)

    def colours(self, window, left, top, right, bottom):
        """How many colours a part of the window shows; the edges are shares of its width and height."""
        x, y, width, height = self.geometry(window)
        crop = (f"{int(width * (right - left))}x{int(height * (bottom - top))}"
                f"+{int(x + width * left)}+{int(y + height * top)}")
        picture = subprocess.run(["import", "-window", "root", "-crop", crop, "png:-"], env=self.environment,
                                 capture_output=True, check=True).stdout
        return int(subprocess.run(["convert", "png:-", "-format", "%k", "info:"], input=picture,
                                  capture_output=True, check=True).stdout)

    def picture(self, name):
        os.makedirs(PICTURES, exist_ok=True)
        path = os.path.join(PICTURES, name + ".png")
        self.ask("import", "-window", "root", path)
        return path


class Library:
    """The program's library file, read by another hand. It can't sort or compare texts: their order is ours."""

    def __init__(self, home):
        self.path = f"{home}/Dokumente/Quavernet Database/Quavernet.db"

    def values(self, statement):
        """First column of all rows; nothing while there is no library yet."""
        if not os.path.exists(self.path):
            return []
        connection = sqlite3.connect(f"file:{self.path}?mode=ro", uri=True, timeout=10)
        try:
            return [row[0] for row in connection.execute(statement)]
        except sqlite3.OperationalError as failure:
            if "unable to open" in str(failure) or "no such table" in str(failure):
                return []
            raise
        finally:
            connection.close()

    def files(self):
        return self.values("select Path from Files")


def before_start():
    """In the program's process before it begins: a file that may not grow is told as an error, and a socket for a
    network ends the process. The program needs none."""
    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    no_network.enter()


class ProgramTest(unittest.TestCase):
    """Starts the desktop; a test starts and ends the program as often as it likes."""

    def setUp(self):
        self.home = tempfile.mkdtemp(prefix="quavernet-e2e-")
        self.addCleanup(shutil.rmtree, self.home, True)
        for folder in (".config", ".runtime", "Dokumente", "Musik"):
            os.makedirs(os.path.join(self.home, folder), mode=0o700)
        with open(os.path.join(self.home, ".config", "user-dirs.dirs"), "w", encoding="utf-8") as file:
            file.write('XDG_DOCUMENTS_DIR="$HOME/Dokumente"\nXDG_MUSIC_DIR="$HOME/Musik"\n')
        self.desktop = self.make_screen()
        self.addCleanup(self.desktop.close)
        self.library = Library(self.home)
        self.program = None
        self.complaints = None  # where the program's standard error goes; by default where the test's goes
        self.step = 0

    def make_screen(self):
        return Desktop(self.home)

    def tearDown(self):
        self.desktop.picture(self.id().split(".")[-1] + "-end")
        if self.program and self.program.poll() is None:
            self.program.kill()
            self.program.wait()
        # Whatever a scenario does, the program's own files lie where the desktop wants them.
        if os.path.isdir(self.home):  # A scenario that takes its whole system down has none by now.
            hidden = {name for name in os.listdir(self.home) if name.startswith(".")}
            self.assertLessEqual(hidden, OWN_FOLDERS)

    def make_music(self, *arguments):
        """Sample music; returns its folder and the paths that a scan takes."""
        folder = os.path.join(self.home, "Musik", "Proben")
        subprocess.run([sys.executable, SAMPLE_MAKER, *arguments, folder], check=True, stdout=subprocess.DEVNULL)
        return folder, sorted(os.path.join(base, name) for base, _, names in os.walk(folder) for name in names
                              if re.search(r"\.(mp3|wav|ogg)$", name, re.I))

    def store(self, **settings):
        """Writes the settings file, before the program starts."""
        folder = os.path.join(self.home, ".config", "Greyfinch Labs")
        os.makedirs(folder, exist_ok=True)
        with open(os.path.join(folder, "Quavernet.conf"), "w", encoding="utf-8") as file:
            file.write("[Settings]\n" + "".join(f"{name}={value}\n" for name, value in settings.items()))

    def settings(self):
        """What the settings file holds."""
        parser = configparser.ConfigParser(interpolation=None)
        parser.optionxform = str
        parser.read(os.path.join(self.home, ".config", "Greyfinch Labs", "Quavernet.conf"), encoding="utf-8")
        return parser["Settings"]

    def record_opener(self):
        """From the next start on an xdg-open that notes its arguments stands for the desktop's."""
        tool = os.path.join(self.home, "bin", "xdg-open")
        os.makedirs(os.path.dirname(tool))
        with open(tool, "w", encoding="utf-8") as file:
            file.write(f"#!/bin/sh\nprintf '%s\\0' \"$#\" \"$@\" >> '{self.home}/opened'\n{self.network_trial()}\n")
        os.chmod(tool, 0o755)
        self.desktop.environment["PATH"] = f"{self.home}/bin:{os.environ['PATH']}"

    def network_trial(self):
        """A line for a shell script that tries to make a socket for a network, and notes how that ended."""
        return (f"(ulimit -c 0; '{sys.executable}' -c 'import socket; socket.socket(socket.AF_INET)'; "
                f"echo $? >> '{self.home}/tried') 2> '{self.home}/trial'")

    def expect_caged(self, trials):
        """The program itself can't reach a network, nor could what it has started, which has tried so many times."""
        def tried():
            if not os.path.exists(os.path.join(self.home, "tried")):
                return []
            with open(os.path.join(self.home, "tried"), encoding="ascii") as file:
                return file.read().split()
        self.assertTrue(no_network.holds(self.program.pid))
        wait_until("the trials", lambda: len(tried()) >= trials)
        self.assertEqual(set(tried()), {str(128 + signal.SIGSYS)} if trials else set())

    def opener_calls(self):
        """The arguments of each call of the desktop's opener."""
        opened = os.path.join(self.home, "opened")
        if not os.path.exists(opened):
            return []
        with open(opened, "rb") as file:
            words = file.read().decode().split("\0")[:-1]
        found = []
        while words:
            count = int(words.pop(0))
            found.append([words.pop(0) for _ in range(count)])
        return found

    def launch(self):
        """Starts the program and waits for nothing."""
        self.program = subprocess.Popen([PROGRAM], env=self.desktop.environment, cwd=self.home, stderr=self.complaints,
                                        restore_signals=False, preexec_fn=before_start)

    def start(self):
        """Starts the program and gives its main window, once the start picture has gone and the start is through."""
        self.launch()
        window = self.desktop.window("^Quavernet - ")
        wait_until("the library", lambda: self.library.values("select count(*) from Genres"))
        wait_until("the start picture to go", lambda: self.main_is_alone())
        wait_until("the start to be through", self.is_at_rest)
        self.desktop.activate(window)
        return window

    def is_at_rest(self):
        """Whether the program's first thread waits for events, and has done so for a moment: a thread that only waits for
        a processor is not at rest."""
        def looked_at():
            with open(f"/proc/{self.program.pid}/stat", encoding="utf-8") as file:
                state, *numbers = file.read().rsplit(")", 1)[1].split()
            return state, numbers[10:12]  # And its processor time.
        first = looked_at()
        for _ in range(5):
            time.sleep(0.05)
            if looked_at() != first:
                return False
        return first[0] == "S"

    def main_is_alone(self):
        mine = self.desktop.windows_of(self.program.pid)
        return len([window for window in mine if min(self.desktop.geometry(window)[2:]) > 50]) == 1

    def scan(self, window, folder):
        """Ctrl+S, then the folder into the dialog."""
        dialog = self.desktop.window_after_key(window, "ctrl+s", "^Wählen Sie einen Ordner$")
        self.desktop.activate(dialog)
        self.desktop.type(folder + "/")
        self.desktop.key("Return")
        wait_until("the folder dialog to go", lambda: not self.desktop.windows("^Wählen Sie einen Ordner$"))

    def await_scan(self, window, count):
        """Until the first scan has stored so many files and has given the window's title back: while it runs, the title
        ends in a dash or in a percentage, and no other command acts."""
        wait_until("the scan", lambda: len(self.library.files()) == count)
        wait_until("the end of the scan", lambda: self.desktop.title(window)[-1:] not in ("", "-", "%"))

    def popups(self):
        """Windows of the program that the window manager does not manage: its open menus."""
        mine = self.desktop.windows_of(self.program.pid)
        return [window for window in mine if min(self.desktop.geometry(window)[2:]) > 20 and
                "window state" not in self.desktop.ask("xprop", "-id", window, "WM_STATE")]

    def click(self, place, button=1, repeat=1):
        """A click into the main window, `self.window`, each time a bit elsewhere: two clicks in one place are a double click."""
        self.step = 20 - self.step
        self.desktop.activate(self.window)
        self.desktop.ask("xdotool", "mousemove", "--window", self.window, place[0] + self.step, place[1],
                         "click", "--repeat", repeat, "--delay", 60, button)

    def ended(self):
        """Waits for the program's end; its exit code. On a busy screen its windows stand for a moment more: the next start
        would be taken for them."""
        wait_until("the program's end", lambda: self.program.poll() is not None)
        wait_until("its windows to go", lambda: not self.desktop.windows_of(self.program.pid))
        return self.program.returncode

    def limit_written_files(self, size):
        """From now on the program can't make any file longer than this, as on a full disk."""
        resource.prlimit(self.program.pid, resource.RLIMIT_FSIZE, (size, size))

    def start_partner(self, files):
        """Another window, with these files to drag out of it."""
        self.out = open(os.path.join(self.home, "dropped.txt"), "w+", encoding="utf-8")
        self.addCleanup(self.out.close)
        self.partner = subprocess.Popen([os.environ["QUAVERNET_DRAG_PARTNER"], *files], env=self.desktop.environment,
                                        stdout=self.out)
        self.addCleanup(self.partner.wait)
        self.addCleanup(self.partner.terminate)
        partner = self.desktop.window("^Drag partner$")
        self.desktop.activate(partner)  # Until the window manager has put it in its place.
        return partner

    def end_partner(self):
        self.partner.terminate()
        self.partner.wait()
        wait_until("the other window to go", lambda: not self.desktop.windows("^Drag partner$"))

    def dropped(self):
        """Paths that were dropped on the partner."""
        with open(self.out.name, encoding="utf-8") as file:
            uris = [line.strip() for line in file if line.strip()]
        return [urllib.parse.unquote(uri.removeprefix("file://")) for uri in uris]

    def at(self, window, place):
        """The place of the screen that lies so far from the window's upper left corner."""
        x, y, _, _ = self.desktop.geometry(window)
        frame = self.desktop.ask("xprop", "-id", window, "_NET_FRAME_EXTENTS").rpartition("=")[2].split(",")
        # The place that is told counts the frame twice.
        return x - int(frame[0]) + place[0], y - int(frame[2]) + place[1]

    def drag(self, start, end, on_the_way=None):
        """From one place of the screen to another; the pointer goes in steps, as a hand does. Calls `on_the_way` before
        the button goes up."""
        steps = 12
        ask = self.desktop.ask
        time.sleep(DOUBLE_CLICK)
        ask("xdotool", "mousemove", *start, "mousedown", 1)
        for step in range(1, steps + 1):
            # A busy machine needs a moment to begin the drag: it would find the button up again.
            ask("xdotool", "mousemove", *(a + (b - a) * step // steps for a, b in zip(start, end)), "sleep",
                0.3 if step == 1 else 0.03)
        ask("xdotool", "sleep", 0.5)
        if on_the_way:
            on_the_way()
        ask("xdotool", "mouseup", 1)
