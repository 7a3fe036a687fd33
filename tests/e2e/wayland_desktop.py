"""A Wayland screen for the real program: a compositor without a device (sway) and hands that only use its keyboard and its
mouse. Where windows are and what their titles say is asked of the compositor."""
import json
import os
import pwd
import re
import shutil
import socket
import struct
import subprocess
import sys
import tempfile
import time

import desktop
from desktop import DOUBLE_CLICK, FONTS, PICTURES, ProgramTest, Screen, wait_until
from wayland_hands import Hands

SIZE = tuple(int(part) for part in desktop.SCREEN.split("x"))

# Windows lie one over the other as on most desktops, and where the compositor wants them.
CONFIGURATION = f"""
xwayland disable
output * resolution {desktop.SCREEN} position 0 0
output * bg #336699 solid_color
focus_follows_mouse no
mouse_warping none
default_floating_border normal
for_window [app_id=".*"] floating enable
"""

# What would bring program or compositor to another screen or another bus.
OUTSIDE = ("DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET", "SWAYSOCK", "XDG_CURRENT_DESKTOP", "LANGUAGE",
           "DBUS_SESSION_BUS_ADDRESS", "QT_QPA_PLATFORMTHEME")

COMMAND, TREE = 0, 4  # kinds of messages to the compositor


class WaylandDesktop(Screen):
    """One compositor. Windows are told apart by its numbers."""

    def __init__(self, home):
        # The compositor refuses to run as root: then it is nobody, in a folder of its own.
        self.runtime = tempfile.mkdtemp(prefix="quavernet-wayland-")
        unprivileged = {}
        if os.geteuid() == 0:
            nobody = pwd.getpwnam("nobody")
            os.chown(self.runtime, nobody.pw_uid, nobody.pw_gid)
            unprivileged = {"user": nobody.pw_uid, "group": nobody.pw_gid, "extra_groups": []}
        configuration = os.path.join(self.runtime, "configuration")
        with open(configuration, "w", encoding="utf-8") as file:
            file.write(CONFIGURATION)
        plain = {name: value for name, value in os.environ.items() if name not in OUTSIDE}
        plain.update(LANG="de_DE.UTF-8", LC_ALL="de_DE.UTF-8")
        self.messages = os.path.join(self.runtime, "messages")
        self.server = subprocess.Popen(
            ["sway", "-c", configuration],
            env=dict(plain, HOME=self.runtime, XDG_RUNTIME_DIR=self.runtime, SWAYSOCK=self.messages,
                     WLR_BACKENDS="headless", WLR_LIBINPUT_NO_DEVICES="1", WLR_RENDERER="pixman"),
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, cwd="/", **unprivileged)
        wait_until("the compositor", lambda: self.sockets() and os.path.exists(self.messages))
        display = os.path.join(self.runtime, self.sockets()[0])
        self.environment = dict(
            plain, HOME=home, WAYLAND_DISPLAY=display, QT_QPA_PLATFORM="wayland", FONTCONFIG_FILE=FONTS,
            XDG_CONFIG_HOME=f"{home}/.config", XDG_DATA_HOME=f"{home}/.local/share", XDG_CACHE_HOME=f"{home}/.cache",
            XDG_RUNTIME_DIR=f"{home}/.runtime")
        self.hands = Hands(display, SIZE)

    def sockets(self):
        return [name for name in os.listdir(self.runtime) if re.fullmatch(r"wayland-\d+", name)]

    def close(self):
        self.hands.close()
        self.server.terminate()
        self.server.wait()
        shutil.rmtree(self.runtime, True)

    def tell(self, kind, text=""):
        """A message to the compositor; its answer."""
        with socket.socket(socket.AF_UNIX) as line:
            line.connect(self.messages)
            line.sendall(b"i3-ipc" + struct.pack("=II", len(text.encode()), kind) + text.encode())
            with line.makefile("rb") as answer:
                length, _ = struct.unpack("=II", answer.read(14)[6:])
                return json.loads(answer.read(length))

    def nodes(self):
        """All windows."""
        waiting, found = [self.tell(TREE)], []
        while waiting:
            node = waiting.pop()
            waiting += node["nodes"] + node["floating_nodes"]
            if node.get("pid") and node.get("app_id") is not None:
                found.append(node)
        return found

    def node(self, window):
        return next((node for node in self.nodes() if node["id"] == window), None)

    def windows(self, title):
        return [node["id"] for node in self.nodes() if re.search(title, node["name"] or "")]

    def windows_of(self, pid):
        """Windows of a program; none on a screen that is gone."""
        return [] if self.server.poll() is not None else [node["id"] for node in self.nodes() if node["pid"] == pid]

    def window(self, title):
        return wait_until(f"a window {title!r}", lambda: self.windows(title))[0]

    def title(self, window):
        node = self.node(window)
        return node["name"] if node else ""

    def geometry(self, window):
        """x, y, width, height of the window without its frame; zeros for one that has gone."""
        node = self.node(window)
        if not node:
            return (0, 0, 0, 0)
        frame, inside = node["rect"], node["window_rect"]
        return frame["x"] + inside["x"], frame["y"] + inside["y"], inside["width"], inside["height"]

    def command(self, window, text):
        self.tell(COMMAND, f"[con_id={window}] {text}")

    def activate(self, window):
        self.command(window, "focus")
        wait_until("the window in front", lambda: (self.node(window) or {"focused": True})["focused"])
        time.sleep(0.2)  # The toolkit asks the compositor once more before it takes the window for the active one.

    def close_window(self, title):
        """Closes the window as its frame's button does, and waits until it has gone."""
        self.command(self.window(title), "kill")
        wait_until(f"{title} to go", lambda: not self.windows(title))

    def key(self, *keys):
        for key in keys:
            self.hands.key(key)
            time.sleep(0.03)

    def type(self, text):
        for character in text:
            self.hands.press(character, True)
            self.hands.press(character, False)
            time.sleep(0.01)

    def click(self, x, y, button=1, repeat=1):
        """At a place of the screen."""
        self.hands.move(x, y)
        time.sleep(0.05)
        for _ in range(repeat):
            self.hands.button(True, button)
            self.hands.button(False, button)
            time.sleep(0.06)

    def look(self, window, left, top, right, bottom):
        """The pixels of a part of the window; the edges are shares of its width and height."""
        x, y, width, height = self.geometry(window)
        part = (f"{int(x + width * left)},{int(y + height * top)} "
                f"{int(width * (right - left))}x{int(height * (bottom - top))}")
        return subprocess.run(["grim", "-t", "ppm", "-g", part, "-"], env=self.environment, capture_output=True,
                              check=True).stdout

    def picture(self, name):
        os.makedirs(PICTURES, exist_ok=True)
        path = os.path.join(PICTURES, f"wayland-{name}.png")
        subprocess.run(["grim", path], env=self.environment, check=False, stderr=subprocess.DEVNULL)
        return path


class WaylandTest(ProgramTest):
    """What a test of the program does on a screen, done under Wayland. What the program writes to standard error is kept."""

    def setUp(self):
        super().setUp()
        self.complaints = open(os.path.join(self.home, "complaints"), "w+", encoding="utf-8")
        self.addCleanup(self.complaints.close)

    def make_screen(self):
        return WaylandDesktop(self.home)

    def tearDown(self):
        sys.stderr.write(self.complained())
        super().tearDown()

    def complained(self):
        """All that the program has written to standard error."""
        with open(self.complaints.name, encoding="utf-8") as file:
            return file.read()

    def main_is_alone(self):
        return len(self.desktop.nodes()) == 1

    def at(self, window, place):
        x, y, _, _ = self.desktop.geometry(window)
        return x + place[0], y + place[1]

    def click(self, place, button=1, repeat=1):
        self.step = 20 - self.step
        self.desktop.activate(self.window)
        self.desktop.click(*self.at(self.window, (place[0] + self.step, place[1])), button, repeat)

    def drag(self, start, end, on_the_way=None):
        steps = 12
        hands = self.desktop.hands
        time.sleep(DOUBLE_CLICK)
        hands.move(*start)
        hands.button(True)
        for step in range(1, steps + 1):
            hands.move(*(a + (b - a) * step // steps for a, b in zip(start, end)))
            time.sleep(0.3 if step == 1 else 0.03)
        time.sleep(0.3)
        if on_the_way:
            on_the_way()
        hands.button(False)
