"""Runs lame: encodes WAV files of one format into one MP3 file, and decodes that again."""
import os
import signal
import subprocess

from encoder import mp3_file, signals
from encoder.failure import Failure
from encoder.sound_pipe import SoundPipe

# Silent but for what is fatal; the length comes from the end of the pipe.
ENCODE = ["lame", "--silent", "--ignorelength", "--cbr"]
DECODE = ["lame", "--quiet", "--decode", "--mp3input", "-t"]
BLOCK = 1 << 20
LARGEST_WAVE = 0xFFFFFFFF  # Bytes of sound that the head of a WAV file can tell.


def environment():
    # Options of the user's own would change what comes out.
    return {name: value for name, value in os.environ.items() if name != "LAMEOPT"}


def start(arguments, target, **channels):
    try:
        # By descriptor: the path may be longer than the system takes, and lame holds the lock as well.
        with signals.held_back():
            process = subprocess.Popen(arguments, env=environment(), pass_fds=(target.descriptor,), **channels)
            return process, signals.undo_at_end(process.kill)
    except FileNotFoundError as error:
        raise Failure("lame_missing") from error
    except OSError as error:
        raise Failure("lame", reason=error.strerror) from error


def place(target):
    return f"/proc/self/fd/{target.descriptor}"


def encode(sources, target, bit_rate, mono, rate):
    """Writes the MP3 file, at that sample rate unless it is 0. Returns what it holds."""
    format = sources[0].format
    arguments = ENCODE + ["-b", str(bit_rate)] + (["-m", "m"] if mono else [])
    rate = rate or rate_for(format.rate, bit_rate)
    if rate:
        arguments += ["--resample", str(rate / 1000)]
    os.ftruncate(target.descriptor, 0)
    with open(os.memfd_create("lame"), "r+b") as told:
        process, undo = start(arguments + ["-", place(target)], target, stdin=subprocess.PIPE,
                              stdout=subprocess.DEVNULL, stderr=told, bufsize=0)
        try:
            feed(process, sources)
        except BaseException:
            process.kill()  # What lame has is not the whole.
            raise
        finally:
            process.wait()
            signals.forget(undo)
        if process.returncode:
            raise failure_of(process.returncode, told, target)
    return checked(sources, target, bit_rate, 1 if mono else format.channels)


def feed(process, sources):
    with process.stdin as channel:
        pipe = SoundPipe(channel.fileno())
        try:
            pipe.write(sources[0].format.header())
            for source in sources:
                source.send(pipe)
        except BrokenPipeError:
            pass  # lame ended early; how it ended tells why.


def failure_of(code, told, target):
    if target.is_full() or code == -signal.SIGXFSZ:
        return Failure("no_space")
    if code < 0:
        return Failure("lame_killed", reason=-code)
    told.seek(0)
    lines = told.read(1 << 16).decode("utf-8", "replace").strip().splitlines()
    return Failure("lame", reason=lines[-1].strip() if lines else code)


def rate_for(rate, bit_rate):
    """The sample rate to ask for because lame would keep one at which the format has no such bit rate; 0: none."""
    least = 24000 if bit_rate > mp3_file.MOST[2] else 12000 if bit_rate > mp3_file.MOST[0] else 0
    if rate > least:
        return 0
    larger = [other for other in mp3_file.VERSIONS if other > least]
    return min([other for other in larger if other % rate == 0] or larger)


def rate_with_note(mp3):
    """The next lower sample rate at which a frame has room for the note on the length."""
    return max(rate for rate in mp3_file.VERSIONS
               if rate < mp3.rate and mp3_file.holds_note(rate, mp3.bit_rate, mp3.channels))


def is_whole(samples, sources, mp3):
    """The sound may be longer by what fills frames, never shorter (but for a sample lost to rounding)."""
    wanted = sum(source.samples for source in sources) * mp3.rate // sources[0].format.rate
    return wanted - 1 <= samples <= wanted + 3 * mp3.frame_samples


def checked(sources, target, bit_rate, channels):
    """What the MP3 file holds; a Failure if it isn't what was asked for."""
    mp3 = mp3_file.read(target.content())
    if mp3 is None or mp3.bit_rate != bit_rate or mp3.channels != channels:
        raise Failure("no_space" if target.is_full() else "incomplete")
    if not is_whole(mp3.samples, sources, mp3):
        large = sum(source.size for source in sources) > LARGEST_WAVE
        raise Failure("no_space" if target.is_full() else "too_long" if large else "incomplete")
    return mp3


def decodes(sources, target, mp3):
    """Whether the MP3 file on the disk decodes to all of the sound."""
    process, undo = start(DECODE + [place(target), "-"], target, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, bufsize=0)
    try:
        size = 0
        with process.stdout as pipe:
            while block := pipe.read(BLOCK):
                size += len(block)
    finally:
        process.wait()
        signals.forget(undo)
    return process.returncode == 0 and is_whole(size // (2 * mp3.channels), sources, mp3)
