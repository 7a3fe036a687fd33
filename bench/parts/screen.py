"""A virtual screen whose memory is a file (Xvfb -fbdir), so that what is on it can be watched from outside at the
cost of reading memory, and homes for programs that run there."""
import mmap
import os
import shutil
import struct
import subprocess
import tempfile
import time

WAIT = 60  # seconds until something that does not come up ends the run


class Screen:
    def __init__(self):
        self.folder = tempfile.mkdtemp(dir="/dev/shm")
        read, write = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x960x24", "-noreset",
                                        "-nolisten", "tcp", "-fbdir", self.folder], pass_fds=[write],
                                       stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as numbers:
            self.display = ":" + numbers.readline().strip()
        with open(os.path.join(self.folder, "Xvfb_screen0"), "rb") as file:
            self.memory = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        header = struct.unpack(">25I", self.memory[:100])
        self.start = header[0] + 12 * header[19]
        self.bytes_per_line = header[12]

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()
        self.memory.close()
        shutil.rmtree(self.folder)

    def pixels(self, left, top, right, bottom):
        """The bytes of a part of the screen, four a pixel."""
        begins = (self.start + y * self.bytes_per_line for y in range(top, bottom))
        return b"".join(self.memory[begin + 4 * left:begin + 4 * right] for begin in begins)

    def environment(self, home):
        """For a program that shall find its settings and its library in a home of its own."""
        return dict(os.environ, DISPLAY=self.display, HOME=home, LC_ALL="C.UTF-8", QT_QPA_PLATFORM="xcb",
                    XDG_CONFIG_HOME=home + "/.config", XDG_RUNTIME_DIR=home)


def wait_for(what, condition, pause=0.001):
    """Seconds from the call until the condition holds."""
    begin = time.monotonic()
    while not condition():
        if time.monotonic() - begin > WAIT:
            raise SystemExit(f"waited {WAIT} s in vain for {what}")
        time.sleep(pause)
    return time.monotonic() - begin
