"""What is encoded: real WAV files in, MP3 files out, decoded by another decoder and compared in length and pitch."""
import os
import struct
import subprocess
import unittest

from support import Decoded, EncoderTest, chunk, content, format_chunk, frame_head, riff, tones

RATES = (32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320)
PCM_MARK = bytes.fromhex("0100000000001000800000aa00389b71")


class SoundTest(EncoderTest):
    def expect_tone(self, path, seconds, frequency=440):
        """To the sample if the file notes its length, else longer by what fills frames."""
        sound = Decoded(path)
        wanted = round(seconds * sound.rate)
        longest = wanted if b"Info" in content(path)[:64] else wanted + 2000
        self.assertTrue(wanted <= sound.samples <= longest, f"{sound.samples} samples, {wanted} expected")
        self.assertAlmostEqual(sound.pitch(), frequency, delta=frequency * 0.01)
        return sound

    def test_each_bit_rate_is_that_of_its_file(self):
        source = self.tone("a.wav", frequencies=(440, 660))
        for rate in RATES:
            with self.subTest(rate):
                [made] = self.encode("-quit", f"-{rate}", source)
                self.assertEqual(frame_head(made)[0], rate)
                self.assertEqual(frame_head(made)[2], 2)
                sound = self.expect_tone(made, 0.4)
                self.assertAlmostEqual(sound.pitch(1), 660, delta=7)
                os.remove(made)

    def test_without_a_rate_it_is_128_and_of_several_the_last_counts(self):
        source = self.tone("a.wav")
        [first] = self.encode(source)
        [second] = self.encode("-64", "-96", source)
        self.assertEqual((frame_head(first)[0], frame_head(second)[0]), (128, 96))

    def test_a_rate_that_the_format_lacks_at_the_source_s_sample_rate_raises_that(self):
        for source_rate, rate, wanted in ((8000, 64, 8000), (8000, 80, 16000), (8000, 320, 32000),
                                          (11025, 128, 22050), (22050, 192, 44100), (24000, 320, 48000)):
            with self.subTest((source_rate, rate)):
                [made] = self.encode(f"-{rate}", self.tone(f"{source_rate} {rate}.wav", rate=source_rate))
                self.assertEqual(frame_head(made), (rate, wanted, 1))
                self.expect_tone(made, 0.4)

    def test_sample_rates_that_the_format_lacks_become_others(self):
        for source_rate in (6000, 37800, 96000):
            with self.subTest(source_rate):
                [made] = self.encode(self.tone(f"{source_rate}.wav", rate=source_rate))
                self.expect_tone(made, 0.4)

    def test_mono_is_both_channels_in_one(self):
        [made] = self.encode("-mono", "-96", self.tone("a.wav", frequencies=(500, 0)),)
        self.assertEqual(frame_head(made)[2], 1)
        sound = self.expect_tone(made, 0.4, 500)
        self.assertEqual(sound.channels, 1)
        self.assertAlmostEqual(sound.loudest(), 6000, delta=600)

    def test_a_file_of_one_channel_stays_one(self):
        [made] = self.encode(self.tone("a.wav"))
        self.assertEqual(Decoded(made).channels, 1)

    def test_every_kind_of_samples_is_encoded(self):
        for bits, kind in ((8, "unsigned-integer"), (16, "signed-integer"), (24, "signed-integer"),
                           (32, "signed-integer"), (32, "floating-point")):
            with self.subTest((bits, kind)):
                path = self.path(f"{kind}{bits}.wav")
                subprocess.run(["sox", "-R", "-n", "-r", "44100", "-c", "2", "-b", str(bits), "-e", kind, path,
                                "synth", "0.4", "sine", "440", "vol", "0.4"], check=True)
                [made] = self.encode(path)
                sound = self.expect_tone(made, 0.4)
                self.assertAlmostEqual(sound.loudest(1), 0.4 * 32767, delta=1300)

    def test_other_chunks_and_the_extensible_form_are_understood(self):
        sound = tones(0.4, (440,)).tobytes()
        plain = format_chunk(1, 1, 44100, 16)
        extensible = format_chunk(0xFFFE, 1, 44100, 16, struct.pack("<HHI", 22, 16, 4) + PCM_MARK)
        odd = chunk(b"LIST", b"INFOxyz")
        for name, data in (("odd", riff(odd, plain, odd, chunk(b"data", sound), odd)),
                           ("extensible", riff(extensible, chunk(b"data", sound))),
                           ("half", riff(plain, chunk(b"data", sound + b"\1")))):
            with self.subTest(name):
                with open(self.path(name + ".wav"), "wb") as file:
                    file.write(data)
                [made] = self.encode("-delete", self.path(name + ".wav"))
                self.expect_tone(made, 0.4)
                self.assertFalse(os.path.exists(self.path(name + ".wav")))

    def test_a_file_that_a_pipe_made_has_no_size_and_is_encoded_to_its_end(self):
        for size in (0, 0xFFFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF - 36, 0x7FFFFFFF - 44, 0x7FFFF000):
            data = riff(format_chunk(1, 1, 44100, 16)) + b"data" + struct.pack("<I", size)
            with open(self.path("a.wav"), "wb") as file:
                file.write(data + tones(0.4, (440,)).tobytes())
            [made] = self.encode("-delete", self.path("a.wav"))
            self.expect_tone(made, 0.4)
            self.assertEqual(self.music_names(), ["a.mp3"])
            os.remove(made)

    def test_joined_files_follow_each_other_in_the_order_given(self):
        sources = [self.tone(f"{name}.wav", 0.5, (frequency,)) for name, frequency in
                   (("b", 400), ("a", 800), ("c", 600))]
        [made] = self.encode("-concat", *sources)
        self.assertEqual(made, self.path("b.mp3"))
        sound = Decoded(made)
        self.assertEqual(sound.samples, 3 * 22050)
        for part, frequency in enumerate((400, 800, 600)):
            self.assertAlmostEqual(sound.pitch(0, part / 3 + 0.05, part / 3 + 0.28), frequency, delta=frequency * 0.02)
        self.assertEqual(self.music_names(), ["a.wav", "b.mp3", "b.wav", "c.wav"])

    def test_more_files_are_joined_than_may_be_open(self):
        source = self.tone("a.wav", 0.01, (400,))  # Four cycles.
        [made] = self.encode("-concat", *[source] * 200, preexec_fn=lambda: limit_open_files(40))
        self.expect_tone(made, 2, 400)

    def cut_tone(self, channels=1):
        """One tone over three files whose lengths fill no frames; returns their paths and seconds."""
        pieces, start = [], 0
        for number, seconds in enumerate((0.41, 0.3877, 0.503)):
            pieces.append((self.tone(f"{number}.wav", seconds, (441,) * channels, start=start), seconds))
            start += round(seconds * 44100)
        return pieces

    def test_decoded_one_after_the_other_files_have_no_gap_at_any_rate(self):
        # Most of these rates are the small ones at which lame leaves out the note on the length.
        for channels, rates in ((1, (32, 40, 320)), (2, (32, 48, 56, 64, 128))):
            pieces = self.cut_tone(channels)
            for rate in rates:
                with self.subTest((rate, channels)):
                    made = self.encode("-nogap", f"-{rate}", *(path for path, _ in pieces))
                    self.assertEqual([frame_head(path)[0] for path in made], [rate] * 3)
                    sounds = [Decoded(path) for path in made]
                    whole = [sample for sound in sounds for sample in sound.sound[0]]
                    for sound, (_, seconds) in zip(sounds, pieces):
                        self.assertAlmostEqual(sound.samples, round(seconds * 44100) * sound.rate / 44100, delta=1.5)
                    first, second = sounds[0].samples, sounds[1].samples
                    self.expect_smooth(whole, sounds[0].rate, [first, first + second])
                    for path in made:
                        os.remove(path)

    def expect_smooth(self, sound, rate, borders):
        """The tone goes on at the borders: its loudness there is that of the rest, cycle by cycle."""
        cycle = rate // 441 + 1
        for border in borders:
            loud = [max(map(abs, sound[at:at + cycle]))
                    for at in range(border - 6 * cycle, border + 6 * cycle, cycle // 2)]
            self.assertGreater(min(loud), 10000)
            self.assertLess(max(loud), 14000)

    def test_joined_in_one_file_there_is_no_gap_either_way(self):
        pieces = self.cut_tone()
        paths = [path for path, _ in pieces]
        [plain] = self.encode("-concat", *paths)
        [again] = self.encode("-concat", "-nogap", *paths)
        self.assertEqual(content(plain), content(again))
        sound = self.expect_tone(plain, 0.41 + 0.3877 + 0.503, 441)
        self.expect_smooth(sound.sound[0], 44100, [round(0.41 * 44100), round((0.41 + 0.3877) * 44100)])

    def test_options_of_the_user_s_own_for_lame_change_nothing(self):
        source = self.tone("a.wav")
        [plain] = self.encode(source)
        self.environment["LAMEOPT"] = "--tt Title -V 5"
        [again] = self.encode(source)
        self.assertEqual(content(plain), content(again))


def limit_open_files(count):
    import resource
    resource.setrlimit(resource.RLIMIT_NOFILE, (count, count))


if __name__ == "__main__":
    unittest.main()
