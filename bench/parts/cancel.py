"""Clicks on "cancel" at random moments of scans in the real program: how long until the screen shows that the button
has been pressed, until the walk has ended, and until the list is there again and the menus can be used."""
import os
import random
import subprocess
import time

from hand import Hand
from screen import Screen, wait_for
from start import shows_rows, shows_window
from table import Line

LIMIT = 0.05  # seconds for an answer
SETTLE = 0.3  # seconds in which nothing moves any more

# Middles of the two buttons, and what shows the state: the picture on "cancel", the text of the first menu, the progress
# bar, which is emptied at the end of the walk. With the window at its default place and size.
SCAN, CANCEL = (33, 53), (63, 53)
CANCEL_PICTURE = (55, 45, 72, 62)
FIRST_MENU = (20, 18, 56, 34)
PROGRESS_BAR = (898, 734, 1006, 743)


def write_settings(home, music):
    folder = os.path.join(home, ".config", "Greyfinch Labs")
    os.makedirs(folder)
    with open(os.path.join(folder, "Quavernet.conf"), "w", encoding="utf-8") as file:
        file.write(f"[Settings]\nScanpathValue=1\nScanpath={music}\n")


class Scans:
    """One run of the program: its idle look is known, scans are started and cancelled by the mouse alone."""

    def __init__(self, screen, hand, is_end_short=True):
        """`is_end_short`: the list is back soon, so that the end of a count can be told by the end of all."""
        self.screen, self.hand, self.is_end_short = screen, hand, is_end_short
        self.hand.move(CANCEL)
        time.sleep(SETTLE)
        self.idle_picture, self.idle_menu, self.empty_bar = self.picture(), self.menu(), self.bar()

    def picture(self):
        return self.screen.pixels(*CANCEL_PICTURE)

    def menu(self):
        return self.screen.pixels(*FIRST_MENU)

    def bar(self):
        return self.screen.pixels(*PROGRESS_BAR)

    def is_answered(self):
        return self.picture() == self.idle_picture

    def is_over(self):
        return self.is_answered() and self.menu() == self.idle_menu

    def has_stopped(self):
        return self.bar() == self.empty_bar or self.is_over()

    def begin(self):
        """Returns when "cancel" can be clicked, with the mouse on it."""
        self.hand.move(SCAN)
        time.sleep(SETTLE)
        self.hand.press()
        wait_for("a scan", lambda: self.menu() != self.idle_menu)
        self.hand.move(CANCEL)

    def duration(self):
        """Seconds of a scan that nobody cancels."""
        self.begin()
        return wait_for("the end of the scan", self.is_over)

    def watch_bar(self, duration):
        """Waits so many seconds. Returns whether the bar has moved meanwhile, as it does while files are walked."""
        has_moved = False
        end = time.monotonic() + duration
        while time.monotonic() < end:
            has_moved = has_moved or self.bar() != self.empty_bar
            time.sleep(0.005)
        return has_moved

    def click(self, delay):
        """Seconds to the answer, to the end of the walk (None where the screen does not tell) and to the end of all.
        Nothing if the walk was over before the click, or in its first percent, where the bar can't tell that it is
        emptied."""
        self.begin()
        has_walked = self.watch_bar(delay)
        bar_is_empty = self.bar() == self.empty_bar
        if self.is_over() or (bar_is_empty and (has_walked or not shows_rows(self.screen))):
            self.hand.press()
            wait_for("the end of the scan", self.is_over)
            return None
        has_stopped = self.is_over if bar_is_empty else self.has_stopped
        begin = time.monotonic()
        self.hand.press()
        times = []
        for what, condition in (("an answer", self.is_answered), ("the end of the walk", has_stopped),
                                ("the end of the scan", self.is_over)):
            wait_for(what, condition, pause=0.0002)
            times.append(time.monotonic() - begin)
        if bar_is_empty and not self.is_end_short:
            times[1] = None  # While files are counted nothing on the screen tells the end of that.
        return times


def lines(program, home, music, clicks, name=""):
    """Lines with the slowest of so many clicks; `name` tells them from those of another library."""
    chance = random.Random(5)
    write_settings(home, music)
    with Screen() as screen:
        environment = screen.environment(home)
        process = subprocess.Popen([program], env=environment, stderr=subprocess.DEVNULL)
        hand = Hand(environment)
        try:
            wait_for("the window", lambda: shows_window(screen))
            time.sleep(5)  # The splash window goes.
            scans = Scans(screen, hand, is_end_short=not name)
            times = []
            duration = scans.duration()
            while len(times) < clicks or all(told[1] is None for told in times):
                told = scans.click(chance.random() * duration)
                if told:
                    times.append(told)
        finally:
            hand.close()
            process.kill()
            process.wait()
    for job, place, limit in (("the button answers", 0, LIMIT), ("the scan has stopped", 1, LIMIT),
                              ("the list stands again", 2, 0)):
        figures = [told[place] for told in times if told[place] is not None]
        yield Line(f"click on cancel until {job}{name}, slowest of {len(figures)}", "s", max(figures), limit=limit)
