"""The pipe through which lame gets the sound."""
import errno
import fcntl
import os
import time

SIZE = 1 << 20
BLOCK = 1 << 16
SET_SIZE, GET_SIZE = 1031, 1032  # F_SETPIPE_SZ, F_GETPIPE_SZ
FASTEST_READER = 100_000_000  # Bytes a second, far above what lame takes.
NO_PAGES = (errno.EINVAL, errno.ENOSYS)


class SoundPipe:
    """Fills a full pipe again after a pause, not after each small piece that its reader takes: waking up for each of
    these costs both of them more than the copying."""

    def __init__(self, descriptor):
        self.descriptor = descriptor
        os.set_blocking(descriptor, False)
        try:
            fcntl.fcntl(descriptor, SET_SIZE, SIZE)
        except OSError:
            pass  # The user has many pipes; a small one will do.
        self.pause = fcntl.fcntl(descriptor, GET_SIZE) / FASTEST_READER

    def send(self, file, at, size):
        """Passes on what lies there in a file. Returns how many bytes, 0 at the end of the file."""
        while True:
            try:
                return os.sendfile(self.descriptor, file, at, size)
            except BlockingIOError:
                time.sleep(self.pause)
            except OSError as error:
                if error.errno not in NO_PAGES:
                    raise
                # A file system that can't hand on its pages.
                return self.write(os.pread(file, min(size, BLOCK), at))

    def write(self, data):
        """Returns how many bytes the pipe took, of some at least one."""
        while True:
            try:
                return os.write(self.descriptor, data)
            except BlockingIOError:
                time.sleep(self.pause)
