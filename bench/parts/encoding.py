"""The time in which bladeenc makes an MP3 file of five minutes of noise. The floor is lame itself on the same file."""
import os
import subprocess
import time

from table import Line

SECONDS, BIT_RATE = 300, 128


def duration(made, *command):
    """Seconds from the start of a program to its end, after which the file that it has made goes."""
    begin = time.monotonic()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
    used = time.monotonic() - begin
    os.remove(made)
    return used


def lines(bladeenc, folder, rounds):
    os.makedirs(folder, exist_ok=True)
    wave, mp3 = os.path.join(folder, "noise.wav"), os.path.join(folder, "noise.mp3")
    subprocess.run(["sox", "-R", "-n", "-r", "44100", "-c", "2", "-b", "16", wave, "synth", str(SECONDS), "pinknoise",
                    "vol", "0.5"], check=True)
    # In turn, so that both meet the same times.
    times = [(duration(mp3, "lame", "--silent", "--cbr", "-b", str(BIT_RATE), wave, mp3),
              duration(mp3, bladeenc, f"-{BIT_RATE}", wave)) for _ in range(rounds)]
    os.remove(wave)
    yield Line("five minutes encoded", "s", min(own for _, own in times), min(bare for bare, _ in times), ratio=1.05)
