"""Reads back what lame has written: whether it is complete, and how much sound it holds."""
from dataclasses import dataclass

LAYER_3 = 1
# By the two bits of the version in a frame's head: 0 is MPEG-2.5, 2 MPEG-2, 3 MPEG-1.
RATES = {3: (44100, 48000, 32000), 2: (22050, 24000, 16000), 0: (11025, 12000, 8000)}
KILOBITS = {3: (0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320),
            2: (0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160)}
KILOBITS[0] = KILOBITS[2]
# What encoders put into a frame at most, in kilobits.
MOST = {3: 320, 2: 160, 0: 64}
VERSIONS = {rate: version for version, rates in RATES.items() for rate in rates}
MONO = 3
# Bytes of the note on the length in the first frame, after the frame's head and side information.
NOTE = 156
# Samples by which encoder and decoder together are late.
DELAY = 1105


@dataclass
class Mp3:
    bit_rate: int
    rate: int
    channels: int
    frame_samples: int
    samples: int  # That a decoder gives; without a note with what fills the last frame.
    noted: bool   # Whether the file says how long its sound is.


def side_information(version, channels):
    return (32 if channels == 2 else 17) if version == 3 else (17 if channels == 2 else 9)


def holds_note(rate, bit_rate, channels):
    """Whether a frame is large enough for the note."""
    version = VERSIONS[rate]
    frame = (144 if version == 3 else 72) * bit_rate * 1000 // rate
    return bit_rate <= MOST[version] and frame >= 4 + side_information(version, channels) + NOTE


def read(data):
    """The facts of a file of frames that all have one head; nothing if it is anything else or has no end."""
    if len(data) < 4 or data[0] != 0xFF or data[1] & 0xE6 != 0xE0 | LAYER_3 << 1:
        return None
    version, kilobits, rate = data[1] >> 3 & 3, data[2] >> 4, data[2] >> 2 & 3
    if version == 1 or kilobits in (0, 15) or rate == 3:
        return None
    bit_rate, rate = KILOBITS[version][kilobits], RATES[version][rate]
    channels = 1 if data[3] >> 6 == MONO else 2
    frame_samples = 1152 if version == 3 else 576
    size = frame_samples // 8 * bit_rate * 1000 // rate
    frames = count_frames(data, size)
    if frames is None:
        return None
    noted = note(data[4 + side_information(version, channels):size])
    if noted:
        frames_noted, unheard = noted
        if frames_noted != frames - 1:
            return None
        samples = frames_noted * frame_samples - unheard
    else:
        samples = frames * frame_samples - DELAY
    return Mp3(bit_rate, rate, channels, frame_samples, samples, noted is not None)


def count_frames(data, size):
    """How many frames of the first one's kind follow each other to the very end; nothing if something else does."""
    second, third = data[1], data[2] & 0xFD
    at, end, frames = 0, len(data), 0
    while at < end:
        if end - at < 4 or data[at] != 0xFF or data[at + 1] != second or data[at + 2] & 0xFD != third:
            return None
        at += size + (data[at + 2] >> 1 & 1)
        frames += 1
    return frames if at == end else None


def note(data):
    """(frames after this one, samples at both ends that are no sound)"""
    if len(data) < NOTE or data[:4] != b"Info":
        return None
    ends = int.from_bytes(data[141:144], "big")
    return int.from_bytes(data[8:12], "big"), (ends >> 12) + (ends & 0xFFF)
