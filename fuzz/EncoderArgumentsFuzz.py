#!/usr/bin/env python3
"""Arguments of the encoder: what it reads of them, which MP3 files it plans, and how it tells what is wrong.

    EncoderArgumentsFuzz.py [-max_total_time=SECONDS] [-max_len=N] [-seed=N] [-artifact_prefix=PATH] FOLDER...

Called like the other targets, by fuzz/run: looks for inputs for so long, and keeps those that reach new lines of the
encoder in the first folder. Without a time it replays the folders' inputs once, as the tests do. An input is a list of
arguments with a NUL after each. Ends with 77 and leaves the input when a rule is broken:

- Switches, bit rate, folder and files are those of a slow second reading; a failure is one that the encoder has a text
  for, on one line, whatever the argument.
- A command line as the program makes it gives back its bit rate, folder, switches and files, byte by byte.
- No two MP3 files get one name, none gets that of a file that is there; names have at most 255 bytes and lie in the
  folder asked for; each file that is named is encoded once, or all of them together, in order.
"""
import hashlib
import os
import random
import signal
import sys
import tempfile
import time
import traceback

sys.path.insert(0, os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "src"))
sys.dont_write_bytecode = True
from encoder import command_line, jobs, target, tell, texts  # noqa: E402
from encoder.failure import Failure  # noqa: E402

LONGEST = 4096
WORDS = [b"-mono", b"-concat", b"-nogap", b"-delete", b"-quit", b"--help", b"-h", b"--", b"-", b"-outdir=", b"-outdir=sub",
         b"-outdir=/none", b"-32", b"-128", b"-320", b"-129", b"-x.wav", b"-outdir", b"a.wav", b"b.wav", b"/m/a.wav", b"sub/a.wav",
         b"./a.wav", b"../a.wav", b"a", b".wav", b"\xff\xfe.wav", "ä\u202e\n.wav".encode(), b"x" * 260 + b".wav", b"{switch}", b"%s", b""]
THERE = [b"-x.wav", b"-there", b"a.mp3", b"a (2).mp3", b"\xff\xfe.mp3", b"sub/a.mp3"]
RATES = [32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320]
SWITCHES = {b"-mono": "mono", b"-concat": "join", b"-nogap": "no_gap", b"-delete": "delete", b"--help": "help", b"-h": "help"}
TRACED = {module.__file__ for module in (command_line, jobs, target, tell, texts)}
FOUND = 77


def reading(arguments):
    """The second reading: the name of a failure, or all options."""
    told = {"mono": False, "join": False, "no_gap": False, "delete": False, "help": False, "bit_rate": 128, "folder": b"",
            "files": []}
    rest = list(arguments)
    while rest:
        first = rest[0]
        if first == b"--":
            told["files"] = rest[1:]
            break
        if first in SWITCHES:
            told[SWITCHES[first]] = True
        elif first[:8] == b"-outdir=":
            told["folder"] = first[8:]
            if first == b"-outdir=":
                return "no_folder_named"
        elif first[:1] == b"-" and first[1:] in [str(rate).encode() for rate in RATES]:
            told["bit_rate"] = int(first[1:])
        elif first[:1] == b"-" and first != b"-quit" and first not in names_here():
            return "unknown_switch"
        elif first != b"-quit":
            told["files"] = rest
            break
        rest = rest[1:]
    return told if told["files"] or told["help"] else "no_files"


def names_here():
    """What an argument that begins with a dash may name: no path of a longer kind does so here."""
    return os.listdir(b".")


def read(arguments):
    """What the encoder reads, in the form of the second reading."""
    try:
        options = command_line.parse([os.fsdecode(one) for one in arguments])
    except Failure as failure:
        expect_line(failure)
        return failure.text, None
    told = {name: getattr(options, name) for name in ("mono", "join", "no_gap", "delete", "help", "bit_rate")}
    told["folder"] = os.fsencode(options.folder)
    told["files"] = [os.fsencode(path) for path in options.files]
    return told, options


def expect_line(failure):
    for language in (texts.GERMAN, texts.ENGLISH):
        line = tell.line_of(failure, language, tell.shown(failure.path or ""))
        assert line and line.isprintable() and line.encode(), line


def expect_plan(options):
    planned = jobs.plan(options)
    here = os.getcwdb()
    full = [os.path.join(here, os.fsencode(path)) for path in options.files]
    sources = [[os.fsencode(path) for path in job.sources] for job in planned]
    assert sources == ([full] if options.join else [[path] for path in dict.fromkeys(full)]), sources
    made = []
    for job, group in zip(planned, sources):
        name = os.fsencode(target.numbered(job.stem, job.number, 255))
        folder = os.fsencode(job.folder)
        asked = os.path.join(here, os.fsencode(options.folder)) if options.folder else os.path.dirname(group[0])
        assert folder == asked, (folder, asked)
        assert name.endswith(b".mp3") and len(name) <= 255 and b"/" not in name, name
        stem = os.path.splitext(os.path.basename(group[0]))[0]
        assert stem.startswith(name[:-4]) or b" (" in name or len(stem) > 251, (stem, name)
        made.append(os.path.join(folder, name))
        assert not os.path.lexists(made[-1]), made[-1]
    assert len(set(made)) == len(made), made


def expect_command(arguments, chance):
    """As the program puts a command line together, of whatever it finds in settings and list."""
    rate, folder = chance.choice([None, *RATES]), arguments[0] if arguments and chance.random() < 0.5 else b""
    switches = [name for name in (b"-mono", b"-concat", b"-nogap", b"-delete") if chance.random() < 0.5]
    files = [b"/" + one for one in arguments[:4]] or [b"/a.wav"]
    line = [b"-quit", *([f"-{rate}".encode()] if rate else []), *([b"-outdir=" + folder] if folder else []), *switches, *files]
    told, _ = read(line)
    expected = {"mono": b"-mono" in switches, "join": b"-concat" in switches, "no_gap": b"-nogap" in switches,
                "delete": b"-delete" in switches, "help": False, "bit_rate": rate or 128, "folder": folder, "files": files}
    assert told == expected, (told, expected)


def run_one(data):
    arguments = data.split(b"\0")[:-1] if data.endswith(b"\0") else data.split(b"\0")
    told, options = read(arguments)
    expected = reading(arguments)
    assert told == expected, (told, expected)
    if options and options.files:
        expect_plan(options)
    expect_command(arguments, random.Random(data))


def mutated(inputs, chance, longest):
    parts = chance.choice(inputs).split(b"\0")
    for _ in range(1 + chance.randrange(4)):
        at = chance.randrange(len(parts) + 1)
        kind = chance.randrange(6)
        if kind == 0 or not parts:
            parts.insert(at, chance.choice(WORDS + THERE))
        elif kind == 1:
            parts.pop(min(at, len(parts) - 1))
        elif kind == 2:
            parts.insert(at, chance.choice(parts))
        elif kind == 3:
            other = chance.choice(inputs).split(b"\0")
            parts[at:] = other[chance.randrange(len(other) + 1):]
        else:
            part = bytearray(chance.choice(parts))
            place = chance.randrange(len(part) + 1)
            part[place:place + chance.randrange(3)] = bytes(chance.randrange(1, 256) for _ in range(chance.randrange(4)))
            parts[min(at, len(parts) - 1):at + 1] = [bytes(part)]
    return b"\0".join(parts)[:longest]


class Coverage:
    """Pairs of lines of the encoder that followed each other."""

    def __init__(self):
        self.seen, self.last, self.news = set(), 0, False

    def trace(self, frame, event, _):
        if frame.f_code.co_filename not in TRACED:
            return None
        pair = (frame.f_code.co_filename, self.last, frame.f_lineno)
        self.last = frame.f_lineno
        if pair not in self.seen:
            self.seen.add(pair)
            self.news = True
        return self.trace

    def run(self, data):
        self.last, self.news = 0, False
        sys.settrace(self.trace)
        try:
            run_one(data)
        finally:
            sys.settrace(None)
        return self.news


def options_of(words):
    flags = dict(word[1:].split("=", 1) for word in words if word.startswith("-") and "=" in word)
    return flags, [os.path.abspath(word) for word in words if not word.startswith("-")]


def stored(folders):
    for folder in folders:
        for name in sorted(os.listdir(folder)):
            with open(os.path.join(folder, name), "rb") as file:
                yield file.read()


class Stop(Exception):
    """The time is over, or somebody says so."""


def look(flags, folders, coverage, counts):
    inputs = [b"a.wav\0"]
    for data in stored(folders):
        counts["last"] = data
        counts["executions"] += 1
        coverage.run(data)
        inputs.append(data)
    seconds = float(flags.get("max_total_time", 0))
    seed = int(flags.get("seed", 0)) or int.from_bytes(os.urandom(4), "big")
    print(f"INFO: Seed: {seed}", flush=True)
    chance, longest = random.Random(seed), int(flags.get("max_len", LONGEST))
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        data = counts["last"] = mutated(inputs, chance, longest)
        counts["executions"] += 1
        if coverage.run(data):
            inputs.append(data)
            with open(os.path.join(folders[0], hashlib.sha1(data).hexdigest()), "wb") as file:
                file.write(data)


def main():
    flags, folders = options_of(sys.argv[1:])
    prefix = os.path.abspath(flags["artifact_prefix"]) if "artifact_prefix" in flags else ""
    coverage, counts = Coverage(), {"executions": 0, "last": b""}

    def stop(*_):
        raise Stop
    signal.signal(signal.SIGINT, stop)
    with tempfile.TemporaryDirectory(prefix="quavernet-fuzz-") as scratch:
        os.chdir(scratch)
        os.mkdir("sub")
        for name in THERE:
            with open(name, "wb"):
                pass
        try:
            look(flags, folders, coverage, counts)
        except Stop:
            pass
        except BaseException:
            traceback.print_exc()
            print(f"the input: {counts['last']!r}")
            if prefix:
                with open(prefix + "crash-" + hashlib.sha1(counts["last"]).hexdigest(), "wb") as file:
                    file.write(counts["last"])
            return FOUND
        finally:
            os.chdir("/")
    print(f"#{counts['executions']} DONE cov: {len(coverage.seen)}")
    print(f"stat::number_of_executed_units: {counts['executions']}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
