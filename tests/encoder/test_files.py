"""Which files are taken, under which names MP3 files lie, and what stays."""
import os
import struct
import unittest

from support import Decoded, EncoderTest, chunk, content, format_chunk, riff, tones, write_wave

NASTY = ["it's.wav", 'say "so".wav', "two  blanks .wav", "$HOME `id` $(id).wav", "line\nend\r.wav",
         "a;b|c&d>e.wav",
         "-mono", "-x.wav", "--", "back\\slash\\n.wav", "100% {0} {name}.wav", "*.wav", "Ü 𝄞.wav", ".wav",
         "no ending"]


class FilesTest(EncoderTest):
    def test_names_of_every_kind_arrive_as_one_name(self):
        sources = [self.tone(name, 0.1) for name in NASTY]
        run = self.run_it("-quit", "-32", *sources)
        self.assertEqual((run.returncode, run.stderr), (0, b""))
        self.assertEqual(self.music_names(), sorted(NASTY + [os.path.splitext(name)[0] + ".mp3" for name in NASTY]))

    def test_names_that_are_not_utf_8_keep_their_bytes(self):
        folder = os.fsencode(self.music) + b"/f\xfcr"
        os.mkdir(folder)
        write_wave(os.fsdecode(folder + b"/\xe4\xff.wav"), tones(0.1, (440,)))
        for locale in ("C", "C.UTF-8", "POSIX"):
            self.environment.update(LC_ALL=locale)
            self.encode(b"-outdir=" + folder, folder + b"/\xe4\xff.wav")
        self.assertEqual(sorted(os.listdir(folder)),
                         [b"\xe4\xff (2).mp3", b"\xe4\xff (3).mp3", b"\xe4\xff.mp3", b"\xe4\xff.wav"])

    def test_a_leading_dash_is_a_name_after_two_dashes_after_a_file_and_if_there_is_such_a_file(self):
        self.tone("-x.wav", 0.1)
        self.tone("-mono", 0.1)
        self.assertEqual(self.encode("-64", "--", "-x.wav"), [self.path("-x.mp3")])
        self.assertEqual(self.encode("-64", "-x.wav", "-mono"), [self.path("-x (2).mp3"), self.path("-mono.mp3")])
        self.assertIn("Schalter -y.wav", self.refused("-64", "-y.wav", code=2))

    def test_very_long_names_and_paths_are_no_obstacle(self):
        source = self.tone("ü" * 127 + "x", 0.1)
        [made] = self.encode("-64", source)
        self.assertEqual(os.path.basename(made), "ü" * 125 + ".mp3")
        folder = self.music
        for _ in range(30):
            folder = os.path.join(folder, "deep " + "x" * 195)
        long_path, descriptor = os.path.join(folder, "a.wav"), os.open(self.music, os.O_RDONLY)
        for part in os.path.relpath(folder, self.music).split("/"):
            os.mkdir(part, dir_fd=descriptor)
            inner = os.open(part, os.O_RDONLY, dir_fd=descriptor)
            os.close(descriptor)
            descriptor = inner
        self.addCleanup(os.close, descriptor)
        os.link(source, "a.wav", dst_dir_fd=descriptor)
        [made] = self.encode("-64", "-delete", long_path)
        self.assertEqual(made, os.path.join(folder, "a.mp3"))
        self.assertEqual(os.listdir(descriptor), ["a.mp3"])

    def test_a_target_folder_takes_all_files(self):
        target = self.path("Ziel ' mit \"Leerzeichen\" $x/")
        os.mkdir(target)
        os.mkdir(self.path("eins"))
        first, second = self.tone("a.wav", 0.1), self.tone("eins/a.wav", 0.1)
        third = self.tone("b.wav", 0.1)
        made = self.encode("-quit", "-64", f"-outdir={target}", first, second, third)
        self.assertEqual([os.path.basename(path) for path in made], ["a.mp3", "a (2).mp3", "b.mp3"])
        self.assertEqual(self.music_names(target), ["a (2).mp3", "a.mp3", "b.mp3"])
        self.assertEqual(self.music_names(self.path("eins")), ["a.wav"])

    def test_relative_paths_count_from_the_folder_it_runs_in(self):
        os.mkdir(self.path("out"))
        self.tone("a.wav", 0.1)
        self.assertEqual(self.encode("-outdir=out", "a.wav"), [self.path("out", "a.mp3")])

    def test_no_file_is_written_over_and_none_onto_its_source(self):
        source = self.tone("a.wav", 0.1)
        disguised = self.tone("b.mp3", 0.1)
        before = content(disguised)
        with open(self.path("a.mp3"), "wb") as file:
            file.write(b"mine")
        os.symlink("nowhere", self.path("a (2).mp3"))
        self.assertEqual(self.encode(source, disguised), [self.path("a (3).mp3"), self.path("b (2).mp3")])
        self.assertEqual((content(self.path("a.mp3")), content(disguised)), (b"mine", before))
        self.assertTrue(os.path.islink(self.path("a (2).mp3")))

    def test_a_file_named_twice_is_encoded_once_but_joined_twice(self):
        source = self.tone("a.wav", 0.2)
        self.assertEqual(self.encode(source, source), [self.path("a.mp3")])
        [joined] = self.encode("-concat", "-delete", source, source)
        self.assertEqual(Decoded(joined).samples, 2 * 8820)
        self.assertEqual(self.music_names(), ["a (2).mp3", "a.mp3"])

    def test_what_is_no_wave_file_is_refused_and_the_others_are_encoded(self):
        good = self.tone("good.wav", 0.1)
        data = content(good)
        sound = chunk(b"data", bytes(1000))
        strange = {"empty": b"", "short": data[:11], "text": b"This is no music.\n" * 100,
                   "avi": b"RIFF\0\0\0\0AVI " + data,
                   "big end": b"RIFX" + data[4:], "mp3": b"\xff\xfb\x90\x64" * 500, "head": riff(),
                   "no sound": riff(format_chunk(1, 1, 44100, 16)),
                   "no format": riff(sound), "late format": riff(sound, format_chunk(1, 1, 44100, 16)),
                   "small format": riff(chunk(b"fmt ", bytes(8)), sound),
                   "chunks": riff(*[chunk(b"junk", b"")] * 20000)}
        for name, bytes_of_it in strange.items():
            with open(self.path(name + ".wav"), "wb") as file:
                file.write(bytes_of_it)
        os.mkdir(self.path("folder.wav"))
        os.mkfifo(self.path("pipe.wav"))
        before = self.music_names()
        before.remove("good.wav")
        names = [*strange, "folder", "pipe"]
        said = self.refused("-delete", *(self.path(name + ".wav") for name in names), good)
        self.assertEqual(said.splitlines(),
                         [f"bladeenc: {self.path(name)}.wav: Das ist keine WAV-Datei." for name in names])
        self.assertEqual(self.music_names(), sorted(before + ["good.mp3"]))

    def test_kinds_of_wave_files_that_lame_does_not_take_are_refused_by_name(self):
        sound = chunk(b"data", bytes(4800))
        kinds = {"0x0002, 44100 Hz, 1 ch, 4 bit": format_chunk(2, 1, 44100, 4),
                 "0x0055, 44100 Hz, 2 ch, 16 bit": format_chunk(0x55, 2, 44100, 16),
                 "float, 44100 Hz, 2 ch, 64 bit": format_chunk(3, 2, 44100, 64),
                 "PCM, 44100 Hz, 2 ch, 20 bit": format_chunk(1, 2, 44100, 20),
                 "PCM, 48000 Hz, 6 ch, 16 bit": format_chunk(1, 6, 48000, 16),
                 "PCM, 48000 Hz, 0 ch, 16 bit": format_chunk(1, 0, 48000, 16),
                 "PCM, 44100 Hz, 2 ch, 16 bit": format_chunk(1, 2, 44100, 16)[:20] + b"\3\0\x10\0",
                 "PCM, 0 Hz, 1 ch, 16 bit": format_chunk(1, 1, 0, 16),
                 "PCM, 4294967295 Hz, 1 ch, 0 bit": format_chunk(1, 1, 0, 0)[:12] + b"\xff" * 4 + bytes(8)}
        for told, head in kinds.items():
            with self.subTest(told):
                with open(self.path("a.wav"), "wb") as file:
                    file.write(riff(head, sound))
                said = self.refused("-delete", self.path("a.wav"))
                self.assertEqual(said, f"bladeenc: {self.path('a.wav')}: Diese Art von WAV-Datei kann nicht "
                                       f"konvertiert werden ({told}).\n")
        self.assertEqual(self.music_names(), ["a.wav"])

    def test_a_file_without_sound_is_refused(self):
        source = self.tone("a.wav", 0)
        self.assertIn("enthält keinen Ton", self.refused("-delete", source))
        self.assertEqual(self.music_names(), ["a.wav"])

    def test_files_of_different_formats_are_not_joined(self):
        first = self.tone("a.wav", 0.1)
        others = [self.tone("rate.wav", 0.1, rate=48000), self.tone("channels.wav", 0.1, (440, 440))]
        for other, told in zip(others, ("48000 Hz, 1 ch", "44100 Hz, 2 ch")):
            said = self.refused("-concat", "-delete", first, first, other)
            self.assertEqual(said, f"bladeenc: {first}: Die Dateien lassen sich nicht zusammenfügen: "
                                   f"{os.path.basename(other)} hat PCM, {told}, 16 bit, die erste Datei "
                                   "PCM, 44100 Hz, 1 ch, 16 bit.\n")
        self.assertEqual(self.music_names(), ["a.wav", "channels.wav", "rate.wav"])

    def test_sources_stay_as_they_are_unless_they_are_to_go(self):
        sources = [self.tone(f"{name}.wav", 0.1) for name in "abc"]
        before = [(content(path), os.stat(path).st_mtime_ns) for path in sources]
        self.encode(*sources)
        self.assertEqual([(content(path), os.stat(path).st_mtime_ns) for path in sources], before)
        self.encode("-delete", sources[0], sources[2])
        self.assertEqual(self.music_names(), ["a (2).mp3", "a.mp3", "b.mp3", "b.wav", "c (2).mp3", "c.mp3"])

    def test_joined_sources_go_together(self):
        sources = [self.tone(f"{name}.wav", 0.1) for name in "abc"]
        self.encode("-concat", "-delete", *sources)
        self.assertEqual(self.music_names(), ["a.mp3"])
        self.assertEqual(Decoded(self.path("a.mp3")).samples, 3 * 4410)

    def test_a_source_that_is_cut_short_is_encoded_but_stays(self):
        source = self.tone("a.wav", 0.4)
        os.truncate(source, os.path.getsize(source) - 4410 * 2)
        said = self.refused("-delete", source)
        self.assertIn("abgeschnitten", said)
        self.assertEqual(self.music_names(), ["a.mp3", "a.wav"])
        self.assertEqual(Decoded(self.path("a.mp3")).samples, round(0.3 * 44100))

    def broken_wave(self, size, head=b"", sound=None, length=0):
        """A WAV file with that size noted for its sound, and that much of zeros, which take no room on the disk."""
        sound = tones(0.1, (440,)).tobytes() if sound is None else sound
        with open(self.path("a.wav"), "wb") as file:
            file.write(riff(format_chunk(1, 1, 44100, 16), head) + b"data" + struct.pack("<I", size) + sound)
            file.truncate(max(length, file.tell()))
        return self.path("a.wav")

    def expect_kept(self, source, samples, *words):
        before = os.stat(source)
        said = self.refused("-delete", source)
        for word in words:
            self.assertIn(word, said)
        self.assertEqual(self.music_names(), ["a.mp3", "a.wav"])
        after = os.stat(source)
        self.assertEqual((after.st_size, after.st_mtime_ns), (before.st_size, before.st_mtime_ns))
        self.assertEqual(Decoded(self.path("a.mp3")).samples, samples)
        os.remove(self.path("a.mp3"))

    def test_a_source_that_holds_more_than_its_size_tells_stays(self):
        sound = tones(0.1, (440,)).tobytes()
        words = "Hinter dem Ton der WAV-Datei liegt noch etwas, das sich nicht lesen ließ. Sie wurde nicht gelöscht."
        for name, behind, length in (("wrapped at 4 GiB", b"", (1 << 32) + 44 + len(sound)),
                                     ("a head of an earlier time", sound, 0),
                                     ("a chunk that overruns", b"LIST" + struct.pack("<I", 100) + bytes(99), 0),
                                     ("less than a head", b"LIST", 0), ("no letters", b"\1\2\3\4" + bytes(8), 0),
                                     ("a broken chunk after good ones", chunk(b"LIST", b"odd") + b"bext\xff", 0)):
            with self.subTest(name):
                self.expect_kept(self.broken_wave(len(sound), sound=sound + behind, length=length), 4410, words)

    def test_a_source_with_several_pieces_of_sound_stays(self):
        sound = tones(0.1, (440,)).tobytes()
        for between in (b"", chunk(b"LIST", b"odd")):
            source = self.broken_wave(len(sound), sound=sound + between + chunk(b"data", sound))
            self.expect_kept(source, 4410, "Die WAV-Datei enthält mehrere Stücke Ton. Konvertiert wurde das erste, "
                                           "gelöscht wurde sie nicht.")

    def test_a_source_that_is_cut_short_stays_however_large_it_says_it_was(self):
        for size in (8822, 0x7FFF0000, 0x7FFFFFFE, 0x80000000, 0xA0000000, 0xFFFFFFFE):
            with self.subTest(hex(size)):
                self.expect_kept(self.broken_wave(size), 4410, "abgeschnitten")

    def test_a_size_of_zero_means_no_sound_if_the_file_ends_or_other_chunks_follow(self):
        for behind in (b"", chunk(b"LIST", bytes(20)), chunk(b"data", bytes(20))):
            source = self.broken_wave(0, sound=behind)
            self.assertIn("enthält keinen Ton", self.refused("-delete", source))
            self.assertEqual(self.music_names(), ["a.wav"])

    def test_new_files_have_the_rights_that_the_user_gives_to_new_files(self):
        [made] = self.encode(self.tone("a.wav", 0.1), preexec_fn=lambda: os.umask(0o027))
        self.assertEqual(os.stat(made).st_mode & 0o777, 0o640)

    def test_help_names_every_switch(self):
        run = self.run_it("--help")
        self.assertEqual((run.returncode, run.stderr), (0, b""))
        for switch in (b"-quit", b"-32", b"-320", b"-outdir=", b"-mono", b"-concat", b"-nogap", b"-delete"):
            self.assertIn(switch, run.stdout)


if __name__ == "__main__":
    unittest.main()
