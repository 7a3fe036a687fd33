"""What has to be undone when a signal ends the program in the middle of its work."""
import os
import signal
from contextlib import contextmanager

ENDING = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)
_undo = {}
_busy = set()
_came = []


def undo_at_end(action):
    """Calls the action if a signal ends the program; the answer is for forget."""
    key = object()
    _undo[key] = action
    return key


def forget(key):
    _undo.pop(key, None)


@contextmanager
def held_back():
    """Signals wait, so that what is made in here is noted for undoing as well. For any thread."""
    key = object()
    _busy.add(key)
    try:
        yield
    finally:
        _busy.discard(key)
        _end_if_asked()


def end_cleanly():
    """Takes over the signals that end a program, but for those that its starter wants ignored (nohup)."""
    for number in ENDING:
        if signal.getsignal(number) is not signal.SIG_IGN:
            signal.signal(number, _note)


def _note(number, _):
    _came.append(number)
    _end_if_asked()


# First the signal is noted, then looked who is busy; the busy ones leave first and then look for a signal. So one of
# them sees the other.
def _end_if_asked():
    if _came and not _busy:
        for action in list(_undo.values()):
            action()
        os._exit(128 + _came[0])
