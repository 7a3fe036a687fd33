"""Processor time of the real program while a row of the list is dragged over a tree by a real mouse: held on a node, held
where the tree scrolls, and moved from node to node. The floor of the moves is the same drag, moved over the list."""
import os
import sqlite3
import subprocess
import time

from hand import Hand
from screen import Screen, wait_for
from start import IDLE_LIMIT, SETTLED, shows_rows
from table import Line

HOVER = 5  # seconds of each hold, and of all moves
MOVES_A_SECOND = 50
SETTLE = 0.5  # seconds until what a move has changed is on the screen
STEP = 0.05   # seconds between the moves that begin a drag

# With the window at its default place and size: a row of the list, a column of the tree, the middle of the root's row
# there, how many rows below it are away from the part that scrolls, and a place in that part.
LIST_ROW = (312, 136)
TREE, ROOT, ROW_HEIGHT, ROWS = 102, 90, 18, 30
SCROLLING = (TREE, 688)


def node(row):
    """The middle of a row of the tree; the root is row 0."""
    return TREE, ROOT + ROW_HEIGHT * row


def used_by(process, action):
    """Processor seconds, to the nanosecond, on the clock that the system keeps of another process."""
    clock = ~process.pid << 3 | 2  # As clock_getcpuclockid makes it.
    before = time.clock_gettime(clock)
    action()
    return time.clock_gettime(clock) - before


def hold():
    time.sleep(HOVER)


def begin_drag(hand):
    hand.move(LIST_ROW)
    time.sleep(SETTLE)
    hand.do("mousedown 1")
    for x in range(LIST_ROW[0], TREE, -10):
        hand.move((x, LIST_ROW[1]))
        time.sleep(STEP)


def move_on(hand, left):
    """Down and up over the rows, each time to another one."""
    begin = time.monotonic()
    for number in range(HOVER * MOVES_A_SECOND):
        step = number % (2 * ROWS - 2)
        hand.move((left, node(1 + min(step, 2 * ROWS - 2 - step))[1]))
        time.sleep(max(0, begin + (number + 1) / MOVES_A_SECOND - time.monotonic()))


def entries(home):
    library = os.path.join(home, "Documents", "Quavernet Database", "Quavernet.db")
    connection = sqlite3.connect(f"file:{library}?mode=ro", uri=True)
    try:
        return connection.execute("select count(*) from FileCategories").fetchone()[0]
    finally:
        connection.close()


def measured(process, hand, home):
    """Processor seconds: held, held where the tree scrolls, moved over the tree, moved over the list."""
    before = entries(home)
    begin_drag(hand)
    hand.move(node(3))
    time.sleep(SETTLE)
    held = used_by(process, hold)
    over_tree = used_by(process, lambda: move_on(hand, TREE))
    over_list = used_by(process, lambda: move_on(hand, LIST_ROW[0]))
    hand.move(SCROLLING)
    scrolling = used_by(process, hold)
    hand.move(node(ROWS))
    time.sleep(SETTLE)
    hand.do("mouseup 1")
    # Else there was no drag.
    wait_for("the entry of a drop", lambda: entries(home) == before + 1)
    return held, scrolling, over_tree, over_list


def lines(program, home):
    """Lines for a home whose library has a tree of at least 100 categories."""
    with Screen() as screen:
        environment = screen.environment(home)
        process = subprocess.Popen([program], env=environment, stderr=subprocess.DEVNULL)
        hand = Hand(environment)
        try:
            wait_for("a filled window", lambda: shows_rows(screen))
            time.sleep(SETTLED)
            held, scrolling, over_tree, over_list = measured(process, hand, home)
        finally:
            hand.close()
            process.kill()
            process.wait()
    job = f"processor time in {HOVER} s of a drag"
    yield Line(f"{job} held over the tree", "s", held, limit=IDLE_LIMIT)
    yield Line(f"{job} held where the tree scrolls", "s", scrolling)
    yield Line(f"{job} over the tree, {MOVES_A_SECOND} moves a second", "s", over_tree, over_list, ratio=2)
