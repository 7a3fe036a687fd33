"""The mouse of a virtual screen. Used by the parts that click and drag in the real program."""
import subprocess


class Hand:
    """The mouse of a screen, moved by one xdotool that takes its commands as they come."""

    def __init__(self, environment):
        self.tool = subprocess.Popen(["xdotool", "-"], stdin=subprocess.PIPE, env=environment, text=True)

    def do(self, command):
        self.tool.stdin.write(command + "\n")
        self.tool.stdin.flush()

    def move(self, place):
        self.do(f"mousemove {place[0]} {place[1]}")

    def press(self):
        self.do("mousedown 1")
        self.do("mouseup 1")

    def close(self):
        self.tool.stdin.close()
        self.tool.wait()
