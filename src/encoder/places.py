"""Where files are, however long the path to them is."""
import errno
import os
from contextlib import contextmanager


def open_folder(path):
    """A descriptor, step by step if the path is longer than the system takes."""
    flags = os.O_PATH | os.O_DIRECTORY | os.O_CLOEXEC
    try:
        return os.open(path, flags)
    except OSError as error:
        if error.errno != errno.ENAMETOOLONG:
            raise
    folder = os.open("/", flags)
    for part in path.split("/"):
        outer = folder
        try:
            folder = os.open(part or ".", flags, dir_fd=outer)
        finally:
            os.close(outer)
    return folder


@contextmanager
def place_of(path):
    """(descriptor of the folder, name in it) of an absolute path"""
    path, name = os.path.split(path)
    folder = open_folder(path)
    try:
        yield folder, name
    finally:
        os.close(folder)
