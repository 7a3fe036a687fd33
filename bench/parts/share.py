"""A share that answers each open, read and listing late, mounted for the time of a measurement, and clicks on "cancel"
while one of its files hangs."""
import contextlib
import os
import subprocess
import time

import cancel
from hand import Hand
from screen import Screen, wait_for
from start import shows_window
from table import Line

DELAY = 2  # Milliseconds of each answer.
LIMIT = 0.1  # Seconds until a click is answered while a file hangs.
HANGING = "hangs.mp3"
UNTIL_IT_HANGS = 1.0  # Seconds from the start of a scan: all other files are done by then.


@contextlib.contextmanager
def mounted(server, folder, place, *options):
    os.makedirs(place)
    with subprocess.Popen([server, folder, place, str(DELAY), *options], stdout=subprocess.DEVNULL) as process:
        wait_for("the share", lambda: os.path.ismount(place))
        try:
            yield place
        finally:
            subprocess.run(["umount", "--lazy", place], check=True)
            process.terminate()


def clicks(program, home, share, count):
    """A line with the slowest of so many clicks on "cancel" while the scan waits for a file."""
    cancel.write_settings(home, share)
    with Screen() as screen:
        environment = screen.environment(home)
        process = subprocess.Popen([program], env=environment, stderr=subprocess.DEVNULL)
        hand = Hand(environment)
        times = []
        try:
            wait_for("the window", lambda: shows_window(screen))
            time.sleep(5)  # The splash window goes.
            scans = cancel.Scans(screen, hand)
            for _ in range(count):
                scans.begin()
                time.sleep(UNTIL_IT_HANGS)
                if scans.is_over():
                    raise SystemExit("the scan did not wait for the file that hangs")
                begin = time.monotonic()
                hand.press()
                wait_for("an answer", scans.is_answered, pause=0.0002)
                answered = time.monotonic() - begin
                wait_for("the end of the scan", scans.is_over, pause=0.0002)
                times.append((answered, time.monotonic() - begin))
        finally:
            hand.close()
            process.kill()
            process.wait()
    for job, place in (("the button answers", 0), ("the list stands again", 1)):
        yield Line(f"click on cancel while a file hangs until {job}, slowest of {count}", "s",
                   max(told[place] for told in times), limit=LIMIT)
