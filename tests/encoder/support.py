"""What the tests of the encoder share: WAV files of known tones, the program on them, and a decoder that isn't lame."""
import array
import math
import os
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import wave

BLADEENC = os.environ["QUAVERNET_BLADEENC"]
SETTINGS = os.path.join("Greyfinch Labs", "Quavernet.conf")

# The encoder waits for the disk after each file, which would be most of the time of the tests on a busy one.
MEMORY = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None


def tones(seconds, frequencies, rate=44100, start=0):
    """Samples of 16 bits: a tone for each channel; 0 is silence. Starts at that sample of the endless tones."""
    count = round(seconds * rate)
    sound = array.array("h", bytes(2 * count * len(frequencies)))
    for channel, frequency in enumerate(frequencies):
        step = 2 * math.pi * frequency / rate
        sound[channel::len(frequencies)] = array.array(
            "h", [round(12000 * math.sin(step * sample)) for sample in range(start, start + count)])
    return sound


def write_wave(path, sound, channels=1, rate=44100):
    with wave.open(path, "wb") as file:
        file.setnchannels(channels)
        file.setsampwidth(2)
        file.setframerate(rate)
        file.writeframes(sound.tobytes())


def chunk(name, data):
    return name + struct.pack("<I", len(data)) + data + bytes(len(data) % 2)


def riff(*chunks):
    return b"RIFF" + struct.pack("<I", 4 + sum(map(len, chunks))) + b"WAVE" + b"".join(chunks)


def format_chunk(kind, channels, rate, bits, extra=b""):
    block = channels * bits // 8
    return chunk(b"fmt ", struct.pack("<HHIIHH", kind, channels, rate, rate * block, block, bits) + extra)


class Decoded:
    """What mpg123 makes of an MP3 file."""

    def __init__(self, path):
        folder = tempfile.mkdtemp(prefix="quavernet-decoded-")
        try:
            wav = os.path.join(folder, "decoded.wav")
            subprocess.run(["mpg123", "-q", "-w", wav, path], check=True)
            with wave.open(wav) as file:
                self.rate, self.channels = file.getframerate(), file.getnchannels()
                self.samples = file.getnframes()
                sound = array.array("h", file.readframes(self.samples))
        finally:
            shutil.rmtree(folder)
        self.sound = [sound[channel::self.channels] for channel in range(self.channels)]

    def pitch(self, channel=0, first=0.25, last=0.75):
        """Hertz, by counting upward crossings of zero in a part of the file."""
        part = self.sound[channel][int(self.samples * first):int(self.samples * last)]
        ups = [at for at in range(1, len(part)) if part[at - 1] < 0 <= part[at]]
        return (len(ups) - 1) * self.rate / (ups[-1] - ups[0]) if len(ups) > 1 else 0

    def loudest(self, channel=0):
        return max(map(abs, self.sound[channel]))


def frame_head(path):
    """(kilobits, sample rate, channels) by the first four bytes."""
    with open(path, "rb") as file:
        head = file.read(4)
    assert head[0] == 0xFF and head[1] & 0xE6 == 0xE2, head
    version = head[1] >> 3 & 3
    low = (8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160)
    high = (32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320)
    rates = {3: (44100, 48000, 32000), 2: (22050, 24000, 16000), 0: (11025, 12000, 8000)}
    return ((high if version == 3 else low)[(head[2] >> 4) - 1], rates[version][head[2] >> 2 & 3],
            1 if head[3] >> 6 == 3 else 2)


def content(path):
    with open(path, "rb") as file:
        return file.read()


class EncoderTest(unittest.TestCase):
    """A home and a folder of music of its own, without a desktop."""

    def setUp(self):
        self.home = tempfile.mkdtemp(prefix="quavernet-encoder-")
        self.addCleanup(shutil.rmtree, self.home)
        self.music = tempfile.mkdtemp(prefix="quavernet-encoder-", dir=MEMORY)
        self.addCleanup(shutil.rmtree, self.music)
        self.tools = os.path.join(self.home, "tools")
        os.mkdir(self.tools)
        # The Python that runs the tests, not one that a version manager has to look for first.
        os.symlink(sys.executable, os.path.join(self.tools, "python3"))
        kept = {name: value for name, value in os.environ.items()
                if name not in ("DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "LAMEOPT",
                                "XDG_CONFIG_HOME")}
        self.environment = dict(kept, HOME=self.home, PATH=f"{self.tools}:{kept['PATH']}")

    def path(self, *names):
        return os.path.join(self.music, *names)

    def tone(self, name, seconds=0.4, frequencies=(440,), rate=44100, start=0):
        """A WAV file; returns its path."""
        path = self.path(name)
        write_wave(path, tones(seconds, frequencies, rate, start), len(frequencies), rate)
        return path

    def silence(self, name, seconds):
        """A long WAV file, made quickly; returns its path."""
        path = self.path(name)
        write_wave(path, array.array("h", bytes(2 * 44100 * seconds)))
        return path

    def run_it(self, *arguments, **options):
        return subprocess.run([BLADEENC, *arguments], env=self.environment, stdin=subprocess.DEVNULL,
                              capture_output=True, cwd=options.pop("cwd", self.music), **options)

    def encode(self, *arguments, **options):
        """Runs it, expects that all was done, and returns the paths of the MP3 files."""
        run = self.run_it(*arguments, **options)
        self.assertEqual((run.returncode, run.stderr.decode(errors="replace")), (0, ""))
        return [os.fsdecode(path) for path in run.stdout[:-1].split(b"\n")]

    def refused(self, *arguments, code=1, **options):
        """Runs it, expects a failure, and returns what it says."""
        run = self.run_it(*arguments, **options)
        said = run.stderr.decode(errors="surrogateescape")
        self.assertEqual(run.returncode, code, said)
        self.assertNotIn("Traceback", said)
        return said

    def music_names(self, folder=None):
        return sorted(os.listdir(folder or self.music))

    def stand_in(self, name, script, folder=None):
        """A program of that name in front of the real one."""
        path = os.path.join(folder or self.tools, name)
        with open(path, "w", encoding="utf-8") as file:
            file.write("#!/bin/sh\n" + script + "\n")
        os.chmod(path, 0o755)
        return path

    def speak_english(self):
        path = os.path.join(self.home, ".config", SETTINGS)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            file.write("[General]\nLanguage=GER\n\n[Settings]\nLanguage=ENG\nVolume=50\n")
