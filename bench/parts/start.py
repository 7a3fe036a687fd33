"""The real program from its start to a filled window, the memory that it then holds, and the processor time that it
takes while nothing happens. The floor is an empty window of the same program and the bare read of the list's rows."""
import os
import subprocess
import time

from screen import Screen, wait_for
from table import Line

IDLE = 5     # seconds over which the idle program is watched
SETTLED = 7  # seconds until the splash window has gone and the media engine has been read ahead

START_LIMITS = {20000: 0.25, 100000: 0.12}  # seconds, by rows
MEMORY_LIMITS = {100000: 75}               # MB resident, by rows
# The processor's time is counted in steps of 10 ms; one of them in this time is not measurable work.
IDLE_LIMIT = 0.01

# Pixels of the screen where rows are: left of the splash window, below the first rows, with the window at its
# default place and size.
LEFT, RIGHT, UPPER, LOWER = 215, 330, 560, 700


def greens(screen):
    return screen.pixels(LEFT, UPPER, RIGHT, LOWER)[1::4]


def shows_rows(screen):
    """Dark text on light ground in the part of the screen where rows are."""
    values = greens(screen)
    light = sum(1 for value in values[::3] if value > 220)
    dark = sum(1 for value in values[::3] if value < 100)
    return light > 2 * dark > 0


def shows_window(screen):
    """Light ground there, which the bare screen does not have."""
    return screen.pixels(LEFT, UPPER, LEFT + 1, UPPER + 1)[1] > 220


def processor_seconds(process):
    with open(f"/proc/{process.pid}/stat", encoding="ascii", errors="replace") as file:
        values = file.read().rsplit(")", 1)[1].split()
    return (int(values[11]) + int(values[12])) / os.sysconf("SC_CLK_TCK")


def resident_megabytes(process):
    with open(f"/proc/{process.pid}/status", encoding="ascii", errors="replace") as file:
        return next(int(line.split()[1]) for line in file if line.startswith("VmRSS")) / 1024


def start_once(program, home, shown, idle):
    """Seconds to the picture, megabytes, processor seconds while idle (or None)."""
    with Screen() as screen:
        begin = time.monotonic()
        process = subprocess.Popen([program], env=screen.environment(home), stderr=subprocess.DEVNULL)
        try:
            wait_for("a filled window", lambda: shown(screen))
            seconds = time.monotonic() - begin
            used = None
            if idle:
                time.sleep(SETTLED)
                before = processor_seconds(process)
                time.sleep(IDLE)
                used = processor_seconds(process) - before
            return seconds, resident_megabytes(process), used
        finally:
            process.kill()
            process.wait()


def fastest_start(program, home, shown, rounds):
    return min(start_once(program, home, shown, idle=False)[0] for _ in range(rounds))


def lines(program, home_with, bare_list, rows_wanted, rounds):
    """Lines for each size of library; `home_with` makes a home with a library of so many rows, `bare_list` tells the
    seconds of the bare read of a home's list."""
    empty = fastest_start(program, home_with(0), shows_window, rounds)
    for rows in rows_wanted:
        home = home_with(rows)
        seconds = fastest_start(program, home, shows_rows, rounds)
        yield Line(f"start to a filled window, {rows} files, floor: with the bare list", "s", seconds, empty + bare_list(home),
                   limit=START_LIMITS.get(rows, 0))
        _, megabytes, used = start_once(program, home, shows_rows, idle=True)
        yield Line(f"memory, {rows} files listed", "MB", megabytes, limit=MEMORY_LIMITS.get(rows, 0))
        yield Line(f"processor time in {IDLE} s of idling, {rows} files", "s", used, limit=IDLE_LIMIT)
