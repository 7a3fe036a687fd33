"""What goes wrong, as a text of the table with the file that it is about."""
import errno
import os

# Those that users meet have a text of their own, the others that of the system.
TOLD = {errno.ENOSPC: "no_space", errno.EDQUOT: "no_space", errno.EFBIG: "no_space", errno.EACCES: "no_right",
        errno.EPERM: "no_right", errno.EROFS: "no_right", errno.ENOENT: "missing", errno.ENOTDIR: "missing"}


class Failure(Exception):
    """A text by its name in texts.py, what is put into it, and the file; without a file it is about all of them."""

    def __init__(self, text, path=None, **values):
        super().__init__(text)
        self.text, self.path, self.values = text, path, values


def of_system(error, path):
    """The failure for an OSError."""
    text = TOLD.get(error.errno, "system")
    return Failure(text, path, reason=error.strerror or os.strerror(error.errno or 0))


def unexpected(error, path=None):
    """The failure for what nobody has thought of; nobody would see a trace of it."""
    if isinstance(error, OSError):
        return of_system(error, path)
    return Failure("unexpected", path, reason=f"{type(error).__name__}: {error}")
