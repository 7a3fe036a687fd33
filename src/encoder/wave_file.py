"""Reads WAV files: what kind of sound they hold and where it lies."""
import os
import re
import stat
import struct
from contextlib import contextmanager
from dataclasses import dataclass

from encoder.failure import Failure, of_system
from encoder.places import place_of

PCM, FLOATING, EXTENSIBLE = 1, 3, 0xFFFE
# The rest of an extensible format's mark; its first two bytes are one of the above.
SUBFORMAT = bytes.fromhex("000000001000800000aa00389b71")
# What programs that write to a pipe note for the size that they can't know; some take the head off the last one.
SIZES_UNKNOWN = (0, 0x7FFFF000, 0xFFFFFFFF, 0x7FFFFFFF)
# More than any program writes in front of the sound; a file of noise must not keep us reading.
MOST_CHUNKS = 10000
LOWEST_RATE, HIGHEST_RATE = 1000, 768000


# What of a file is not encoded, as a text on why it is not deleted.
CUT, MORE, SECOND = "cut", "more_behind", "more_sound"
NAME = re.compile(rb"[ -~]{4}")


def chunks(file, at):
    """(name, size, offset of what is in it) of each chunk from there on."""
    for _ in range(MOST_CHUNKS):
        head = os.pread(file, 8, at)
        if len(head) < 8:
            break
        name, size = struct.unpack("<4sI", head)
        yield name, size, at + 8
        at += 8 + size + size % 2


def is_unknown(size, offset):
    """Whether the size of the sound that begins at that offset says nothing. Some count the whole head, some all of it
    but the first eight bytes."""
    return size in SIZES_UNKNOWN or 0x7FFFFFFF - size in (offset, offset - 8)


@dataclass(frozen=True)
class Format:
    kind: int
    channels: int
    rate: int
    bits: int

    @property
    def block(self):
        """Bytes of one sample of all channels."""
        return self.channels * self.bits // 8

    def told(self):
        kind = "float" if self.kind == FLOATING else "PCM" if self.kind == PCM else f"0x{self.kind:04X}"
        return f"{kind}, {self.rate} Hz, {self.channels} ch, {self.bits} bit"

    def is_taken(self):
        """Whether lame takes it."""
        return (self.channels in (1, 2) and LOWEST_RATE <= self.rate <= HIGHEST_RATE
                and (self.kind, self.bits) in ((PCM, 8), (PCM, 16), (PCM, 24), (PCM, 32), (FLOATING, 32)))

    def header(self):
        """The head of a WAV file of this format whose length is not known yet."""
        return struct.pack("<4sI4s4sIHHIIHH4sI", b"RIFF", 0xFFFFFFFF, b"WAVE", b"fmt ", 16, self.kind, self.channels,
                           self.rate, self.rate * self.block, self.block, self.bits, b"data", 0xFFFFFFFF)


class WaveFile:
    """A WAV file as it was when it was looked at. A Failure if it is none, or of a kind that can't be encoded."""

    def __init__(self, path):
        self.path = path
        with self.opened() as descriptor:
            self.facts = os.fstat(descriptor)
            if not stat.S_ISREG(self.facts.st_mode):
                raise Failure("no_wave", path)
            self.format, self.offset, self.size, self.unread = self.read(descriptor)

    @contextmanager
    def opened(self):
        """A descriptor. Only while it is read: there may be more files than may be open."""
        try:
            with place_of(self.path) as (folder, name):
                # A pipe of that name must not hold us up.
                descriptor = os.open(name, os.O_RDONLY | os.O_NONBLOCK | os.O_CLOEXEC, dir_fd=folder)
            try:
                yield descriptor
            finally:
                os.close(descriptor)
        except BrokenPipeError:
            raise  # Of the reader's end, not of the file.
        except OSError as error:
            raise of_system(error, self.path) from error

    @property
    def samples(self):
        return self.size // self.format.block

    def read(self, file):
        """(format, offset and size of the sound in bytes, text on what of the file is no part of that, or nothing)"""
        head = os.pread(file, 12, 0)
        if len(head) < 12 or head[:4] != b"RIFF" or head[8:] != b"WAVE":
            raise Failure("no_wave", self.path)
        found = None
        for name, size, at in chunks(file, 12):
            if name == b"fmt " and found is None:
                found = self.read_format(os.pread(file, min(size, 40), at))
            elif name == b"data":
                if found is None:
                    break
                return found, at, *self.measure(file, found.block, at, size)
        raise Failure("no_wave", self.path)

    def measure(self, file, block, at, size):
        """(size of the sound, text on what is no part of it, or nothing)"""
        there, unread = self.facts.st_size - at, CUT
        if size <= there:
            unread = self.look_behind(file, at + size + size % 2)
        if is_unknown(size, at) and unread in (CUT, MORE):
            size, unread = there, None
        whole = min(size, there) // block * block
        if whole <= 0:
            raise Failure("no_sound", self.path)
        return whole, unread

    def look_behind(self, file, at):
        """What comes after the sound: nothing but other chunks to the end of the file, or what may be sound as well."""
        end = self.facts.st_size
        for name, size, start in chunks(file, at):
            at = start + size + size % 2
            if not NAME.fullmatch(name) or start + size > end:
                return MORE
            if name == b"data":
                return SECOND
        # The byte that fills up an odd chunk may lack at the end.
        return None if at >= end else MORE

    def read_format(self, data):
        if len(data) < 16:
            raise Failure("no_wave", self.path)
        kind, channels, rate, _, block, bits = struct.unpack("<HHIIHH", data[:16])
        if kind == EXTENSIBLE and data[26:40] == SUBFORMAT:
            kind = data[24] | data[25] << 8
        found = Format(kind, channels, rate, bits)
        if not found.is_taken() or block != found.block:
            raise Failure("format", self.path, format=found.told())
        return found

    def send(self, pipe):
        """Gives the sound to a pipe's send. A Failure if the file is no longer what it was."""
        with self.opened() as file:
            at, end = self.offset, self.offset + self.size
            while at < end:
                sent = pipe.send(file, at, end - at)
                if not sent:
                    break
                at += sent
            if at < end or not self.is_same(os.fstat(file)):
                raise Failure("altered", self.path)

    def is_same(self, facts):
        return all(getattr(facts, fact) == getattr(self.facts, fact)
                   for fact in ("st_dev", "st_ino", "st_size", "st_mtime_ns"))

    def delete(self):
        """Takes the name away if it still names what was looked at; tells whether it did."""
        with place_of(self.path) as (folder, name):
            if not self.is_same(os.stat(name, dir_fd=folder)):
                return False
            os.unlink(name, dir_fd=folder)
            return True
