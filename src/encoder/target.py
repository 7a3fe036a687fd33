"""Files under hidden names that get their own when they are complete. No file is written over, and none that isn't
complete is ever seen under its name."""
import ctypes
import errno
import fcntl
import mmap
import os
import re
import time

from encoder import signals
from encoder.failure import of_system
from encoder.places import open_folder

HIDDEN = re.compile(r"\.bladeenc-[0-9a-f]{16}\.part")
YOUNG = 60  # Seconds in which a file may not be locked yet.
NO_REPLACE = 1  # RENAME_NOREPLACE
NO_SUCH_CALL = (errno.EINVAL, errno.ENOSYS)
NO_FOLDER_SYNC = (errno.EINVAL, errno.ENOTSUP, errno.EACCES)
NO_LINKS = (errno.EPERM, errno.EOPNOTSUPP)


def numbered(stem, number, limit):
    """"stem.mp3", "stem (2).mp3" and so on, within so many bytes."""
    ending = ".mp3" if number == 1 else f" ({number}).mp3"
    name, room = os.fsencode(stem), limit - len(ending)
    if len(name) > room:
        # Not through the middle of a letter.
        while room and name[room] & 0xC0 == 0x80:
            room -= 1
        name = name[:room]
    return os.fsdecode(name) + ending


def rename_to_free(folder, name, wanted):
    """FileExistsError if the wanted name is taken."""
    rename = getattr(ctypes.CDLL(None, use_errno=True), "renameat2", None)
    if rename and rename(folder, os.fsencode(name), folder, os.fsencode(wanted), NO_REPLACE) == 0:
        return
    code = ctypes.get_errno() if rename else errno.ENOSYS
    if code not in NO_SUCH_CALL:
        raise OSError(code, os.strerror(code))
    try:
        os.link(name, wanted, src_dir_fd=folder, dst_dir_fd=folder, follow_symlinks=False)
    except OSError as error:
        if error.errno not in NO_LINKS:
            raise
        # The last resort can't tell what another program makes in between.
        if is_taken(folder, wanted):
            raise FileExistsError(errno.EEXIST, os.strerror(errno.EEXIST)) from error
        os.rename(name, wanted, src_dir_fd=folder, dst_dir_fd=folder)
        return
    try:
        os.unlink(name, dir_fd=folder)
    except OSError:
        pass  # The file has its name. The hidden one goes with a later run, as that of a killed one.


def is_taken(folder, name):
    try:
        os.stat(name, dir_fd=folder, follow_symlinks=False)
    except FileNotFoundError:
        return False
    return True


class Target:
    """A hidden file in a folder; gone at the end of the with statement unless it was published."""

    def __init__(self, path, stem):
        self.path, self.stem = path, stem

    def __enter__(self):
        try:
            self.folder = open_folder(self.path)
        except OSError as error:
            raise of_system(error, self.path) from error
        try:
            remove_leftovers(self.folder)
            self.name = f".bladeenc-{os.urandom(8).hex()}.part"
            with signals.held_back():
                self.descriptor = os.open(self.name, os.O_RDWR | os.O_CREAT | os.O_EXCL | os.O_CLOEXEC, 0o666,
                                          dir_fd=self.folder)
                self.undo = signals.undo_at_end(self.remove)
        except OSError as error:
            os.close(self.folder)
            raise of_system(error, self.path) from error
        lock(self.descriptor)
        return self

    def __exit__(self, *_):
        signals.forget(self.undo)
        self.remove()
        os.close(self.descriptor)
        os.close(self.folder)

    def remove(self):
        if self.name:
            try:
                os.unlink(self.name, dir_fd=self.folder)
            except OSError:
                pass

    def content(self):
        """All bytes. They stay on the disk where the file system can do that: an MP3 file may be larger than the
        memory."""
        size = os.fstat(self.descriptor).st_size
        if not size:
            return b""
        try:
            return mmap.mmap(self.descriptor, size, flags=mmap.MAP_PRIVATE, prot=mmap.PROT_READ)
        except OSError:
            return os.pread(self.descriptor, size, 0)

    def is_full(self):
        """Whether the disk has no room for what lame writes at a time."""
        facts = os.fstatvfs(self.descriptor)
        return facts.f_bavail * facts.f_frsize < 1 << 16

    def publish(self, number):
        """Gives the first free name from that number on, and returns the path."""
        limit = os.fpathconf(self.folder, "PC_NAME_MAX")
        while True:
            wanted = numbered(self.stem, number, limit)
            try:
                rename_to_free(self.folder, self.name, wanted)
                break
            except FileExistsError:
                number += 1
        self.name = ""
        return os.path.join(self.path, wanted)

    def sync_folder(self):
        """The name reaches the disk, where the file system can do that for folders. An OSError if it did not."""
        try:
            folder = os.open(".", os.O_RDONLY | os.O_DIRECTORY | os.O_CLOEXEC, dir_fd=self.folder)
            try:
                os.fsync(folder)
            finally:
                os.close(folder)
        except OSError as error:
            if error.errno not in NO_FOLDER_SYNC:
                raise


def lock(descriptor):
    """As long as somebody has the file open, lame too, it is no leftover. False if somebody else has it, or if the file
    system knows no locks: leftovers stay there."""
    try:
        fcntl.flock(descriptor, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except OSError:
        return False
    return True


def remove_leftovers(folder):
    """What killed runs left in a folder. Without the right to read the folder they stay."""
    try:
        names = [name for name in os.listdir(f"/proc/self/fd/{folder}") if HIDDEN.fullmatch(name)]
    except OSError:
        return
    for name in names:
        try:
            descriptor = os.open(name, os.O_RDONLY | os.O_NOFOLLOW | os.O_NONBLOCK | os.O_CLOEXEC, dir_fd=folder)
        except OSError:
            continue
        try:
            if time.time() - os.fstat(descriptor).st_mtime > YOUNG and lock(descriptor):
                os.unlink(name, dir_fd=folder)
        except OSError:
            pass
        finally:
            os.close(descriptor)
