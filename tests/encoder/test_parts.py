"""What no real file system or lame here does, and what broken bytes do to the two readers."""
import errno
import os
import random
import stat
import struct
import subprocess
import sys
import threading
import tracemalloc
import unittest
from contextlib import contextmanager
from unittest import mock

from support import BLADEENC, EncoderTest, content, format_chunk, chunk, riff

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(BLADEENC))
from encoder import command_line, jobs, mp3_file, sound_pipe, target  # noqa: E402
from encoder.failure import Failure  # noqa: E402
from encoder.wave_file import WaveFile  # noqa: E402

SEED = 20


class PartsTest(EncoderTest):
    def through_a_pipe(self, data):
        """What the reader of a small pipe gets."""
        path = self.path("data")
        with open(path, "wb") as file:
            file.write(data)
        reader, writer = os.pipe()
        received = []

        def read():
            with open(reader, "rb") as pipe:
                received.append(pipe.read())
        thread = threading.Thread(target=read)
        thread.start()
        pipe, sent = sound_pipe.SoundPipe(writer), 0
        with open(path, "rb") as file:
            while now := pipe.send(file.fileno(), sent, len(data) - sent):
                sent += now
        os.close(writer)
        thread.join()
        return received[0]

    def test_sound_arrives_whole_from_file_systems_of_both_kinds(self):
        data = random.Random(SEED).randbytes(3_000_001)
        self.assertEqual(self.through_a_pipe(data), data)
        with mock.patch("os.sendfile", side_effect=OSError(errno.EINVAL, "no pages")):
            self.assertEqual(self.through_a_pipe(data), data)

    def rename(self, name, wanted):
        folder = os.open(self.music, os.O_PATH)
        try:
            target.rename_to_free(folder, name, wanted)
        finally:
            os.close(folder)

    def expect_renames(self):
        for name in ("part", "taken.mp3"):
            with open(self.path(name), "w", encoding="utf-8") as file:
                file.write(name)
        with self.assertRaises(FileExistsError):
            self.rename("part", "taken.mp3")
        self.assertEqual((content(self.path("taken.mp3")), content(self.path("part"))), (b"taken.mp3", b"part"))
        self.rename("part", "free.mp3")
        self.assertEqual(self.music_names(), ["free.mp3", "taken.mp3"])
        self.assertEqual(content(self.path("free.mp3")), b"part")
        os.remove(self.path("free.mp3"))

    def test_no_name_is_taken_away_whatever_the_file_system_can_do(self):
        self.expect_renames()
        with mock.patch("ctypes.CDLL", side_effect=lambda *_, **__: object()):  # A system without that call.
            self.expect_renames()
            with mock.patch("os.link", side_effect=PermissionError(errno.EPERM, "no links")):
                self.expect_renames()

    def test_a_hidden_name_that_stays_takes_no_second_name(self):
        with open(self.path("part"), "wb") as file:
            file.write(b"part")
        with mock.patch("ctypes.CDLL", side_effect=lambda *_, **__: object()), \
                mock.patch("os.unlink", side_effect=PermissionError(errno.EPERM, "append only")):
            self.rename("part", "free.mp3")
        self.assertEqual(self.music_names(), ["free.mp3", "part"])
        self.assertEqual(content(self.path("free.mp3")), b"part")

    def test_other_failures_of_a_rename_are_told(self):
        with self.assertRaises(FileNotFoundError):
            self.rename("nothing", "free.mp3")

    def run_with_folder_sync(self, code, *switches):
        """(MP3 file or nothing, failures) of a.wav where the sync of a folder ends with that error."""
        real = os.fsync

        def sync(descriptor):
            if stat.S_ISDIR(os.fstat(descriptor).st_mode):
                raise OSError(code, os.strerror(code))
            real(descriptor)
        options = command_line.parse([*switches, self.tone("a.wav", 0.1)])
        with mock.patch("os.fsync", side_effect=sync):
            made, failures = jobs.run(jobs.plan(options)[0], options)
        return made, [(failure.text, failure.path, failure.values) for failure in failures]

    def test_a_name_that_may_not_be_on_the_disk_is_told_and_the_source_stays(self):
        made = self.path("a.mp3")
        for switches in ((), ("-delete",)):
            self.assertEqual(self.run_with_folder_sync(errno.EIO, *switches),
                             (made, [("not_on_disk", made, {"reason": os.strerror(errno.EIO)})]))
            self.assertEqual(self.music_names(), ["a.mp3", "a.wav"])
            os.remove(made)

    def test_file_systems_that_sync_no_folders_lose_nothing_by_it(self):
        for code in (errno.EINVAL, errno.ENOTSUP, errno.EACCES):
            self.assertEqual(self.run_with_folder_sync(code, "-delete"), (self.path("a.mp3"), []))
            self.assertEqual(self.music_names(), ["a.mp3"])
            os.remove(self.path("a.mp3"))

    def test_what_nobody_expects_is_told_for_its_file_and_the_others_are_encoded(self):
        sources = [self.tone(f"{name}.wav", 0.1) for name in "abc"]
        real = jobs.make

        def make(job, *rest):
            if job.stem == "b":
                raise ValueError("strange")
            return real(job, *rest)
        options = command_line.parse(["-delete", *sources])
        with mock.patch("encoder.jobs.make", side_effect=make):
            made, failures = jobs.run_all(jobs.plan(options), options)
        self.assertEqual(made, [self.path("a.mp3"), self.path("c.mp3")])
        self.assertEqual([(failure.text, failure.path, failure.values) for failure in failures],
                         [("unexpected", sources[1], {"reason": "ValueError: strange"})])
        self.assertEqual(self.music_names(), ["a.mp3", "b.wav", "c.mp3"])

    def test_where_the_system_gives_no_threads_all_files_are_encoded(self):
        options = command_line.parse([self.tone(f"{name}.wav", 0.1) for name in "abc"])
        with mock.patch("threading.Thread.start", side_effect=RuntimeError("can't start new thread")), \
                mock.patch("os.sched_getaffinity", return_value=range(4)):
            self.assertEqual(jobs.run_all(jobs.plan(options), options), ([self.path(f"{n}.mp3") for n in "abc"], []))

    def test_an_mp3_file_is_whole_at_its_full_length_only(self):
        for rate in ("32", "128"):  # Without and with the note on the length.
            data = subprocess.run(["lame", "--silent", "-b", rate, self.tone("a.wav", 0.1, (440, 440)),
                                   self.path("a.mp3")], check=True) and content(self.path("a.mp3"))
            self.assertEqual(mp3_file.read(data).bit_rate, int(rate))
            frames = 0
            for size in range(len(data)):
                found = mp3_file.read(data[:size])
                if found:
                    frames += 1
                    self.assertFalse(found.noted)  # It ends after a frame, and is too short for its source.
                    self.assertLess(found.samples, 0.1 * found.rate)
            self.assertLess(frames, 20)
            if rate == "128":
                self.assertEqual(frames, 0)

    @contextmanager
    def large_file(self):
        """A target that holds 16 MB of frames, and how many these are."""
        subprocess.run(["lame", "--silent", "-t", "-b", "128", self.tone("a.wav", 0.1), self.path("a.mp3")], check=True)
        frame = content(self.path("a.mp3"))[:417]
        frame = bytes([*frame[:2], frame[2] & 0xFD, *frame[3:]])  # Without the byte that fills some frames.
        count = (16 << 20) // len(frame)
        with target.Target(self.music, "large") as large:
            with open(large.descriptor, "wb", closefd=False) as file:
                file.write(frame * count)
            yield large, count

    def test_a_large_mp3_file_is_looked_at_without_being_held_in_memory(self):
        with self.large_file() as (large, count):
            tracemalloc.start()
            try:
                found = mp3_file.read(large.content())
                used = tracemalloc.get_traced_memory()[1]
            finally:
                tracemalloc.stop()
            self.assertEqual(found.samples, count * 1152 - mp3_file.DELAY)
            self.assertLess(used, 100_000)

    def test_a_file_system_that_maps_no_files_is_read(self):
        with self.large_file() as (large, count):
            with mock.patch("mmap.mmap", side_effect=OSError(errno.ENODEV, "no maps")):
                self.assertEqual(mp3_file.read(large.content()).samples, count * 1152 - mp3_file.DELAY)

    def test_an_empty_file_is_no_mp3_file(self):
        with target.Target(self.music, "empty") as empty:
            self.assertIsNone(mp3_file.read(empty.content()))

    def wave_of_zeros(self, size, length, behind=b""):
        """A WAV file with that size noted for its sound and that many bytes of it, which take no room on the disk."""
        with open(self.path("a.wav"), "wb") as file:
            file.write(riff(format_chunk(1, 1, 44100, 16)) + b"data" + struct.pack("<I", size))
            file.truncate(44 + length)
            file.seek(0, os.SEEK_END)
            file.write(behind)
        return self.path("a.wav")

    def test_a_file_that_a_pipe_made_is_read_to_its_end_even_after_4_gibibytes(self):
        for size in (0, 0x7FFFF000, 0x7FFFFFFF, 0x7FFFFFFF - 36, 0x7FFFFFFF - 44, 0xFFFFFFFF):
            for there in (1 << 20, 5 << 30):
                with self.subTest((size, there)):
                    found = WaveFile(self.wave_of_zeros(size, there))
                    self.assertEqual((found.size, found.unread), (there, None))

    def test_a_size_like_that_of_a_pipe_counts_if_the_file_agrees_with_it(self):
        for behind in (b"", chunk(b"LIST", bytes(20))):
            found = WaveFile(self.wave_of_zeros(0x7FFFF000, 0x7FFFF000, behind))
            self.assertEqual((found.size, found.unread), (0x7FFFF000, None))

    def test_broken_bytes_are_no_mp3_file_and_break_nothing(self):
        subprocess.run(["lame", "--silent", self.tone("a.wav", 0.1), self.path("a.mp3")], check=True)
        data, chance = content(self.path("a.mp3")), random.Random(SEED)
        for _ in range(1000):
            broken = bytearray(data)
            for _ in range(chance.randrange(1, 5)):
                broken[chance.randrange(4)] = chance.randrange(256)
            if broken[:3] != data[:3]:
                self.assertIsNone(mp3_file.read(bytes(broken)))
            mp3_file.read(chance.randbytes(chance.randrange(200)))

    def test_broken_heads_are_refused_or_lie_within_the_file(self):
        head = riff(format_chunk(1, 2, 44100, 16), chunk(b"fact", bytes(4)), chunk(b"data", bytes(400)))
        chance, path, taken = random.Random(SEED), self.path("a.wav"), 0
        for _ in range(1000):
            broken = bytearray(head[:chance.choice((len(head), chance.randrange(len(head))))])
            for _ in range(chance.randrange(4)):
                if broken:
                    broken[chance.randrange(min(len(broken), 60))] = chance.choice((0, 1, 3, 0xFF, chance.randrange(9)))
            with open(path, "wb") as file:
                file.write(broken)
            try:
                found = WaveFile(path)
            except Failure:
                continue
            taken += 1
            self.assertGreater(found.samples, 0)
            self.assertLessEqual(found.offset + found.size, len(broken))
            self.assertEqual(found.size % found.format.block, 0)
        self.assertGreater(taken, 100)


if __name__ == "__main__":
    unittest.main()
