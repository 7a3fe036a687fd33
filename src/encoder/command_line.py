"""The command line: switches first, then files."""
import os
from dataclasses import dataclass, field

from encoder.failure import Failure

BIT_RATES = (32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320)

USAGE = """\
NAME
    bladeenc - makes MP3 files of WAV files

SYNOPSIS
    bladeenc [SWITCH ...] [--] FILE ...

DESCRIPTION
    Each WAV file (one or two channels; 8, 16, 24 or 32 bits, or floating point of 32 bits) is encoded by lame at a
    constant bit rate. The MP3 file lies beside its WAV file under the same name with the ending ".mp3". If that
    name is taken, it is "name (2).mp3" and so on: no file is ever written over. It gets its name when it is
    complete and on the disk; until then it is a hidden file ".bladeenc-*.part" in the same folder. What a killed
    run left of these, a later one removes.

    -32 -40 -48 -56 -64 -80 -96 -112 -128 -160 -192 -224 -256 -320
                    bit rate in kilobits a second; without one of these 128, of several the last. If the format has
                    no such bit rate at the sample rate of the WAV file, the sample rate is changed.
    -outdir=FOLDER  all MP3 files go to this folder, which must be there
    -mono           one channel
    -concat         one MP3 file of all WAV files, one after the other, under the name of the first. They must have
                    the same sample rate, channels and bits.
    -nogap          players that know of gapless playing play the MP3 files without a gap between them. Each file
                    notes for that how long its sound is. Where the frames are too small for the note (at some
                    bit rates below 64), the sample rate is lowered. With -concat there is nothing left to do.
    -delete         a WAV file is deleted when its MP3 file is on the disk and has been decoded to the same length.
                    It stays if it is cut short, or if it holds anything after its sound but chunks of other kinds.
    -quit           nothing: bladeenc never waits for a key

    The first argument that is no switch begins the files, "--" as well: "-- -x.wav" names a file. So does
    "-x.wav" if there is a file of that name.

    All cores encode. At the end a note on the desktop tells what was made and what was not (notify-send or gdbus),
    for failures a box if there are no notes (zenity, kdialog or xmessage). Failures go to standard error too, paths of
    MP3 files to standard output. The texts are in the language of Quavernet.

EXIT STATUS
    0 all was done; 1 something failed; 2 the command line is wrong. A WAV file whose MP3 file failed stays.

FILES
    ~/.config/Greyfinch Labs/Quavernet.conf    setting "Language", GER or ENG
"""


@dataclass
class Options:
    bit_rate: int = 128
    folder: str = ""  # Empty: beside the WAV files.
    mono: bool = False
    join: bool = False
    no_gap: bool = False
    delete: bool = False
    help: bool = False
    files: list = field(default_factory=list)


FLAGS = {"-mono": "mono", "-concat": "join", "-nogap": "no_gap", "-delete": "delete", "--help": "help", "-h": "help"}
RATES = {f"-{rate}": rate for rate in BIT_RATES}
TARGET = "-outdir="


def parse(arguments):
    """The options; a Failure if the arguments make no sense."""
    options = Options()
    for number, argument in enumerate(arguments):
        if argument in RATES:
            options.bit_rate = RATES[argument]
        elif argument in FLAGS:
            setattr(options, FLAGS[argument], True)
        elif argument.startswith(TARGET):
            options.folder = argument[len(TARGET):]
            if not options.folder:
                raise Failure("no_folder_named")
        elif argument == "--":
            options.files = arguments[number + 1:]
            break
        elif argument != "-quit":
            if argument.startswith("-") and not os.path.lexists(argument):
                raise Failure("unknown_switch", switch=argument)
            options.files = arguments[number:]
            break
    if not options.files and not options.help:
        raise Failure("no_files")
    return options
