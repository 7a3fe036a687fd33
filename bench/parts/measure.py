"""Measures the jobs of the program and prints one table: each figure beside the least that this machine needs for the
same, measured in the same run, and beside what is wanted.

Parts: scan (with the main window open and the scan log on, and without any window; good files, and with broken ones
among them), list (from the click to the painted rows), charts (the fill, and from the click to the painted window), tree
(load, drop, deletion and import, each to the painted nodes, and the processor time of a drag over it), million (the list
with 1,000,000 rows, and the memory for them), start (filled window, memory, idling), cancel (clicks on "cancel" at random
moments of scans), cold (scans of files on a disk that are not in the system's memory, which takes root, and of files that
are), share (scans of a share that answers late, and clicks on "cancel" while one of its files hangs; needs the right to
mount), ogg (the reader of Ogg files beside ogginfo itself), oggsave (comments saved into an Ogg file of 6 MB),
tagsave (an ID3v2 tag saved into an MP3 file of 6 MB), details (the dialog of that file), player (starts of tracks and the
processor time of playing, beside bare libmpv), queue (the player's queue at its full length), encoder (five minutes of
WAV to MP3, beside lame itself), rename (1,000 files given other names at once), covers
(the list of 5,000 albums, and large pictures beside their bare decoding), print (the list to a PDF file, and the memory
for it).

Floors of scans: walk, open, read head and tail of each file, and write (look up, update) the same rows with bare SQLite
in one transaction. Floors of lists: bare SQLite reading the same rows unsorted; of a search or a filter: the bare
statement, for genre and album and one painting; of a start: an empty window and the bare list; of the charts: the bare statement with a limit; of the tree: its bare statements in one transaction, and as
many nodes in a bare view; of a drag: the same one over the list; of the print: a bare painter that elides the same
texts; of cold files: as many bare readers of heads and tails (of Ogg files all of it) as the program has. The fastest of several rounds counts, since other programs only ever add time; of clicks the slowest. Libraries
and cold files lie on disk below build/bench, other music in memory.
"""
import argparse
import os
import shutil
import signal
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import cancel  # noqa: E402
import cold  # noqa: E402
import drag  # noqa: E402
import encoding  # noqa: E402
import share  # noqa: E402
import start  # noqa: E402
import table  # noqa: E402
from screen import Screen  # noqa: E402

TOP = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
BUILT = os.path.join(TOP, "build", "bench", "bin")
PROGRAM = os.path.join(BUILT, "quavernet")
SLOW_SHARE = os.path.join(BUILT, "slow_share")
BENCH = os.path.join(BUILT, "quavernet_bench")
WINDOW_BENCH = os.path.join(BUILT, "quavernet_window_bench")
TEMPLATE = os.path.join(BUILT, "Quavernet.db")
SAMPLE_MUSIC = os.path.join(TOP, "tools", "sample_music", "make-sample-music")

MILLION = 1_000_000
MILLION_CLICKS = 10
OGG_FILES = 1000
OGG_KINDS = 20
SONG_SECONDS = 240  # Of noise: 6 MB.
TRACKS = 20
QUEUE_ENTRIES = 32767  # As many as the player takes.
BROKEN_PERCENT = 5
COLD_FILES = 4000
COLD_OGG_FILES = 1000
HANG_CLICKS = 5


def library_of(home):
    return os.path.join(home, "Documents", "Quavernet Database", "Quavernet.db")


class Run:
    """Folders of one run, and the lines that its parts have given."""

    def __init__(self, options, music, work):
        self.options, self.music, self.work = options, music, work
        self.lines = []
        self.homes = 0

    def add(self, line):
        self.lines.append(line)
        print("  " + line.job + ": " + line.shown(line.value), file=sys.stderr)

    def collect(self, *command, environment=None):
        """Adds the lines that a program prints."""
        with subprocess.Popen([str(part) for part in command], env=environment, stdout=subprocess.PIPE, text=True) as jobs:
            for text in jobs.stdout:
                self.add(table.read_line(text))
        if jobs.returncode != 0:
            raise SystemExit(f"{os.path.basename(command[0])} {command[1]} failed")

    def in_window(self, home, *arguments):
        with Screen() as screen:
            self.collect(WINDOW_BENCH, *arguments, environment=screen.environment(home))

    def home(self, rows):
        """A home with a library of so many rows; with none the program makes the library itself."""
        self.homes += 1
        home = os.path.join(self.work, f"home{self.homes}")
        library = library_of(home)
        os.makedirs(os.path.dirname(library))
        os.chmod(home, 0o700)
        if rows > 0:
            subprocess.run([BENCH, "library", library, TEMPLATE, str(rows)], check=True)
        return home

    def bare_list(self, home):
        """Seconds of the bare read of the rows of a home's list."""
        return float(subprocess.run([BENCH, "rows", library_of(home), str(2 * self.options.rounds + 1)], check=True,
                                    stdout=subprocess.PIPE, text=True).stdout)

    def sample_music(self, name, *options):
        folder = os.path.join(self.music, name)
        if not os.path.exists(folder):
            subprocess.run([SAMPLE_MUSIC, "--count", str(self.options.count), *options, folder], check=True,
                           stdout=sys.stderr)
        return folder


def scan(run):
    for name, kind, options in (("good", "", ()),
                                ("mixed", f", {BROKEN_PERCENT} % broken files", ("--broken", str(BROKEN_PERCENT)))):
        music = run.sample_music(name, *options)
        run.in_window(run.home(0), "scan", music, run.work, f"{kind}, window and log", run.options.rounds)
        run.collect(BENCH, "scan", music, run.work, TEMPLATE, f"{kind}, no window", run.options.rounds)


def lists(run):
    run.in_window(run.home(run.options.rows), "list", 2 * run.options.rounds + 1)


def charts(run):
    run.in_window(run.home(run.options.rows), "charts", 2 * run.options.rounds + 1)


def tree(run):
    home = run.home(run.options.rows)
    run.in_window(home, "tree", run.work, 2 * run.options.rounds + 1)
    for line in drag.lines(PROGRAM, home):
        run.add(line)


def covers(run):
    run.in_window(run.home(0), "covers", run.work, 2 * run.options.rounds + 1)


def million(run):
    home = run.home(MILLION)
    run.in_window(home, "list", max(1, run.options.rounds // 2))
    run.in_window(home, "memory")
    for line in cancel.lines(PROGRAM, run.home(MILLION), run.sample_music("good"), MILLION_CLICKS,
                             f", {MILLION} rows"):
        run.add(line)


def start_to_idle(run):
    for line in start.lines(PROGRAM, run.home, run.bare_list, start.START_LIMITS, run.options.rounds):
        run.add(line)


def cancel_clicks(run):
    music = run.sample_music("good")
    for line in cancel.lines(PROGRAM, run.home(0), music, run.options.clicks):
        run.add(line)


def cold_music(run, ogg=0):
    folder = os.path.join(run.work, f"cold{ogg}")
    if not os.path.exists(folder):
        cold.make_music(folder, COLD_FILES, ogg)
    return folder


def cold_disk(run):
    if os.geteuid() != 0:
        print("Cold files can't be measured: only root may empty the system's memory of files.", file=sys.stderr)
        return
    for ogg, name in ((0, f", cold disk, {COLD_FILES} MP3 files"),
                      (COLD_OGG_FILES, f", cold disk, {COLD_OGG_FILES} of {COLD_FILES} files Ogg")):
        run.collect(BENCH, "cold", cold_music(run, ogg), run.work, TEMPLATE, name, run.options.rounds)
    run.collect(BENCH, "warm", cold_music(run), run.work, TEMPLATE, ", warm disk, floor: without reading ahead",
                4 * run.options.rounds)


def slow_share(run):
    place = os.path.join(run.work, "share")
    with share.mounted(SLOW_SHARE, cold_music(run), place):
        run.collect(BENCH, "share", place, run.work, TEMPLATE, ", slow share, floor: one reader", 1)
    music = os.path.join(run.work, "hanging")
    cold.make_music(music, 2 * cold.ALBUM)
    shutil.copy(os.path.join(music, "Performer 000", "Album 000", "00000.mp3"), os.path.join(music, share.HANGING))
    with share.mounted(SLOW_SHARE, music, os.path.join(run.work, "hanging share"), share.HANGING) as place:
        for line in share.clicks(PROGRAM, run.home(0), place, HANG_CLICKS):
            run.add(line)


def make_ogg_files(folder, count):
    """Copies of a few files of noise, as many bytes a second as music has."""
    os.makedirs(folder)
    kinds = []
    with tempfile.TemporaryDirectory(dir=os.path.dirname(folder)) as work:
        source = os.path.join(work, "source.wav")
        for number in range(1, OGG_KINDS + 1):
            kinds.append(os.path.join(work, f"{number}.ogg"))
            subprocess.run(["sox", "-R", "-n", "-r", "44100", "-c", "2", "-b", "16", source, "synth", "84", "pinknoise",
                            "vol", "0.3"], check=True)
            subprocess.run(["oggenc", "-Q", "-q", "5", "--serial", str(number), "-t", f"Title {number}", "-a", "Performer",
                            "-l", "Album", "-G", "Rock", "-d", "2001", "-o", kinds[-1], source], check=True)
        for number in range(1, count + 1):
            shutil.copy(kinds[number % OGG_KINDS], os.path.join(folder, f"{number}.ogg"))


def ogg(run):
    folder = os.path.join(run.music, "ogg")
    make_ogg_files(folder, OGG_FILES)
    run.collect(BENCH, "ogg", folder, run.options.rounds)


def oggsave(run):
    song = os.path.join(run.work, "song.ogg")
    with tempfile.TemporaryDirectory(dir=run.music) as work:
        source = os.path.join(work, "source.wav")
        subprocess.run(["sox", "-R", "-n", "-r", "44100", "-c", "2", "-b", "16", source, "synth", str(SONG_SECONDS),
                        "pinknoise", "vol", "0.3"], check=True)
        subprocess.run(["oggenc", "-Q", "-q", "8.5", "-t", "Title", "-a", "Performer", "-o", song, source], check=True)
    run.collect(BENCH, "oggsave", song, run.work, 10 * run.options.rounds)


def make_mp3_song(run):
    """An MP3 file of 6 MB with a tag of version 2."""
    song = os.path.join(run.work, "song.mp3")
    if not os.path.exists(song):
        with tempfile.TemporaryDirectory(dir=run.music) as work:
            source = os.path.join(work, "source.wav")
            subprocess.run(["sox", "-R", "-n", "-r", "44100", "-c", "2", "-b", "16", source, "synth", str(SONG_SECONDS),
                            "pinknoise", "vol", "0.3"], check=True)
            subprocess.run(["lame", "--quiet", "-b", "192", "--id3v2-only", "--tt", "Title", "--ta", "Performer", source,
                            song], check=True)
    return song


def tagsave(run):
    run.collect(BENCH, "tagsave", make_mp3_song(run), run.work, 10 * run.options.rounds)


def details(run):
    run.in_window(run.home(run.options.rows), "details", make_mp3_song(run), 10 * run.options.rounds)


def make_tracks(folder, count):
    """MP3 files of one minute: the same sound under many names."""
    if os.path.exists(folder):
        return
    with tempfile.TemporaryDirectory(dir=os.path.dirname(folder)) as work:
        tracks, wave = os.path.join(work, "tracks"), os.path.join(work, "noise.wav")
        os.mkdir(tracks)
        subprocess.run(["sox", "-n", "-r", "44100", "-c", "2", wave, "synth", "60", "pinknoise", "vol", "0.5"], check=True)
        subprocess.run(["lame", "--quiet", "-b", "192", wave, os.path.join(tracks, "0.mp3")], check=True)
        for number in range(1, count):
            shutil.copy(os.path.join(tracks, "0.mp3"), os.path.join(tracks, f"{number}.mp3"))
        os.rename(tracks, folder)


def player(run):
    folder = os.path.join(run.music, "player")
    make_tracks(folder, TRACKS)
    run.collect(BENCH, "player", folder, run.options.rounds)


def queue(run):
    run.collect(BENCH, "queue", library_of(run.home(QUEUE_ENTRIES)), run.work, 2 * run.options.rounds + 1)


def encoder(run):
    for line in encoding.lines(os.path.join(BUILT, "bladeenc"), os.path.join(run.music, "encoder"), run.options.rounds):
        run.add(line)


def rename(run):
    run.collect(BENCH, "rename", TEMPLATE, run.work, 2 * run.options.rounds + 1)


def print_list(run):
    run.in_window(run.home(run.options.rows), "print", run.work, run.options.rounds)


PARTS = {"scan": scan, "list": lists, "charts": charts, "tree": tree, "million": million, "start": start_to_idle,
         "cancel": cancel_clicks, "cold": cold_disk, "share": slow_share, "ogg": ogg, "oggsave": oggsave, "tagsave": tagsave, "details": details, "player": player,
         "queue": queue, "encoder": encoder, "rename": rename, "covers": covers,
         "print": print_list}


def read_options():
    reader = argparse.ArgumentParser(prog="bench/run", description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    reader.add_argument("--only", metavar="PART", nargs="+", choices=PARTS, default=list(PARTS), help="these parts alone")
    reader.add_argument("--count", type=int, default=20000, help="files to scan (%(default)s)")
    reader.add_argument("--rows", type=int, default=100000, help="rows of the list (%(default)s)")
    reader.add_argument("--rounds", type=int, default=3, help="rounds of a scan (%(default)s); lists and trees take 2 N + 1")
    reader.add_argument("--clicks", type=int, default=40, help='clicks on "cancel" (%(default)s)')
    reader.add_argument("--store", metavar="FILE", help="keep the figures in FILE")
    reader.add_argument("--compare", metavar="FILE",
                        help="add a column: the ratio to the floor (or the figure, where there is none) against that of "
                             "a stored run")
    options = reader.parse_args()
    if min(options.count, options.rows, options.rounds, options.clicks) < 1:
        reader.error("numbers must be above 0")
    return options


def main():
    options = read_options()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # The folders go then too: they lie in memory.
    before = table.load(options.compare) if options.compare else []
    with tempfile.TemporaryDirectory(prefix="quavernet-bench-", dir="/dev/shm") as music, \
            tempfile.TemporaryDirectory(prefix="work-", dir=os.path.join(TOP, "build", "bench")) as work:
        run = Run(options, music, work)
        for part, measure in PARTS.items():
            if part in options.only:
                measure(run)
    table.show(run.lines, before)
    if options.store:
        table.store(options.store, run.lines)


if __name__ == "__main__":
    main()
