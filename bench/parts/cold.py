"""Music for scans of a slow medium: MP3 and Ogg files of the sizes that single songs have, in folders of one album."""
import os
import random
import struct
import subprocess
import tempfile

SMALLEST, LARGEST = 200_000, 700_000  # Bytes of a file.
ALBUM = 16  # Files of a folder.
ALBUMS_OF_ONE = 4  # Folders of a performer.


def frame(name, text):
    body = b"\x00" + text.encode("latin-1")
    return name + struct.pack(">IH", len(body), 0) + body


def tag(number):
    """An ID3v2 tag with some room, as taggers leave it."""
    body = frame(b"TIT2", f"Title {number}") + frame(b"TPE1", f"Performer {number % 97}") + frame(b"TALB", "Album")
    body += b"\x00" * (2038 - len(body))
    size = bytes(len(body) >> shift & 127 for shift in (21, 14, 7, 0))
    return b"ID3\x03\x00\x00" + size + body


def sound(work, encoder):
    """A minute of noise, encoded."""
    source, target = os.path.join(work, "source.wav"), os.path.join(work, "encoded")
    subprocess.run(["sox", "-R", "-n", "-r", "44100", "-c", "2", "-b", "16", source, "synth", "60", "pinknoise", "vol", "0.3"],
                   check=True)
    subprocess.run([*encoder(source, target)], check=True)
    with open(target, "rb") as file:
        return file.read()


def mp3_encoder(source, target):
    return ["lame", "--quiet", "-b", "192", "-t", source, target]


def ogg_files(work):
    """Whole files of several lengths."""
    files = []
    for number, seconds in enumerate((14, 18, 23, 28, 32)):
        source, target = os.path.join(work, "source.wav"), os.path.join(work, f"{number}.ogg")
        subprocess.run(["sox", "-R", "-n", "-r", "44100", "-c", "2", "-b", "16", source, "synth", str(seconds), "pinknoise",
                        "vol", "0.3"], check=True)
        subprocess.run(["oggenc", "-Q", "-q", "5", "-t", f"Title {number}", "-a", "Performer", "-o", target, source], check=True)
        with open(target, "rb") as file:
            files.append(file.read())
    return files


def make_music(folder, count, ogg=0):
    """`count` files below the folder, the last `ogg` of them Ogg."""
    chance = random.Random(19)
    with tempfile.TemporaryDirectory() as work:
        song = sound(work, mp3_encoder)
        oggs = ogg_files(work) if ogg else []
        for number in range(count):
            album = number // ALBUM
            place = os.path.join(folder, f"Performer {album // ALBUMS_OF_ONE:03}", f"Album {album:03}")
            os.makedirs(place, exist_ok=True)
            is_ogg = number >= count - ogg
            size = chance.randrange(SMALLEST, LARGEST)
            contents = oggs[number % len(oggs)] if is_ogg else tag(number) + song[:size]
            with open(os.path.join(place, f"{number:05}." + ("ogg" if is_ogg else "mp3")), "wb") as file:
                file.write(contents)
