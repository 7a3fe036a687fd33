"""What can go wrong: nothing torn is left under an MP3 file's name, sources stay, and the user is told."""
import os
import resource
import signal
import subprocess
import time
import unittest

from support import BLADEENC, Decoded, EncoderTest, content, format_chunk, riff, tones, write_wave

# Does as lame does, but decodes half.
HALF_DECODED = """
case " $* " in
*" --decode "*) exec dd if=/dev/zero bs=1000 count=1 2>/dev/null ;;
*) exec "$REAL_LAME" "$@" ;;
esac
"""


class FailuresTest(EncoderTest):
    def setUp(self):
        super().setUp()
        self.environment["REAL_LAME"] = subprocess.run(["which", "lame"], check=True, capture_output=True,
                                                       text=True).stdout.strip()

    def without_lame(self):
        """A search path that holds python3 and nothing else."""
        self.environment["PATH"] = self.tools

    def expect_nothing_made(self, *sources):
        self.assertEqual(self.music_names(), sorted(sources))

    def test_a_missing_lame_is_told_once(self):
        self.without_lame()
        sources = [self.tone(f"{name}.wav", 0.1) for name in "abc"]
        self.assertEqual(self.refused("-delete", *sources),
                         "bladeenc: Das Programm lame fehlt. Bitte installieren Sie das Paket lame.\n")
        self.expect_nothing_made("a.wav", "b.wav", "c.wav")

    def test_texts_are_in_the_language_of_the_program(self):
        self.without_lame()
        source = self.tone("a.wav", 0.1)
        self.speak_english()
        self.assertEqual(self.refused(source),
                         "bladeenc: The program lame is missing. Please install the package lame.\n")
        self.assertEqual(self.refused("-x", code=2), "bladeenc: There is no switch -x.\n")

    def test_settings_that_make_no_sense_leave_it_german(self):
        folder = os.path.join(self.home, ".config", "Greyfinch Labs")
        os.makedirs(folder)
        for settings in (b"\xff\xfe[Settings\nLanguage", b"Language=ENG\n", b"[Other]\nLanguage=ENG\n",
                         b"[Settings]\nLanguage=\"\"\nlanguages=ENG\n"):
            with open(os.path.join(folder, "Quavernet.conf"), "wb") as file:
                file.write(settings)
            self.assertEqual(self.refused(code=2), "bladeenc: Es ist keine Datei angegeben.\n")
        self.environment["XDG_CONFIG_HOME"] = os.path.join(self.home, "elsewhere")
        os.makedirs(os.path.join(self.home, "elsewhere", "Greyfinch Labs"))
        with open(os.path.join(self.home, "elsewhere", "Greyfinch Labs", "Quavernet.conf"), "wb") as file:
            file.write(b"[settings]\r\n language = \"eng\" \r\n")
        self.assertEqual(self.refused(code=2), "bladeenc: No file is given.\n")

    def test_a_wrong_command_makes_nothing(self):
        self.tone("a.wav", 0.1)
        self.assertIn("Es ist keine Datei angegeben", self.refused("-quit", "-128", code=2))
        self.assertIn("nennt keinen Ordner", self.refused("-outdir=", "a.wav", code=2))
        self.assertIn("Schalter -100", self.refused("-100", "a.wav", code=2))
        self.expect_nothing_made("a.wav")

    def test_a_missing_source_or_target_folder_is_told(self):
        source = self.tone("a.wav", 0.1)
        self.assertEqual(self.refused("-64", self.path("b.wav"), source),
                         f"bladeenc: {self.path('b.wav')}: Die Datei oder der Ordner ist nicht da.\n")
        self.assertEqual(self.refused("-outdir=/nowhere/at all", source),
                         "bladeenc: /nowhere/at all: Die Datei oder der Ordner ist nicht da.\n")
        self.assertEqual(self.music_names(), ["a.mp3", "a.wav"])

    def test_a_folder_to_run_in_that_has_gone_is_told(self):
        source, gone = self.tone("a.wav", 0.1), os.path.join(self.home, "gone")
        os.mkdir(gone)
        self.environment["GONE"] = gone
        run = subprocess.run(["sh", "-c", 'cd "$GONE" && rmdir "$GONE" && exec "$@"', "sh", BLADEENC, source],
                             env=self.environment, capture_output=True, text=True)
        self.assertEqual((run.returncode, run.stderr), (1, "bladeenc: Die Datei oder der Ordner ist nicht da.\n"))
        self.expect_nothing_made("a.wav")

    def test_a_lame_that_fails_leaves_nothing_and_its_words_are_told(self):
        source = self.tone("a.wav", 0.1)
        self.stand_in("lame", 'cat > /dev/null; echo noise >&2; echo "cannot do <this> \\$x" >&2; exit 3')
        self.assertEqual(self.refused("-delete", source),
                         f"bladeenc: {source}: lame ist gescheitert: cannot do <this> $x\n")
        self.expect_nothing_made("a.wav")

    def test_a_lame_that_dies_half_way_leaves_nothing(self):
        source = self.silence("a.wav", 60)
        for last, told in (("kill -9 $$", "Signal 9"), ("exit 0", "nicht vollständig"), ("exit 1", "gescheitert: 1")):
            with self.subTest(last):
                # A whole MP3 file of a part of the sound.
                self.stand_in("lame", f"""for out; do :; done
                                      head -c 100000 | "$REAL_LAME" --silent -b 128 - "$out"; {last}""")
                self.assertIn(told, self.refused("-delete", source))
                self.expect_nothing_made("a.wav")

    def test_more_sound_than_lame_takes_is_told_and_stays(self):
        source = self.path("a.wav")
        with open(source, "wb") as file:
            file.write(riff(format_chunk(1, 1, 44100, 16)) + b"data\xff\xff\xff\xff")
            file.truncate(5 << 30)
        self.stand_in("lame", 'for out; do :; done; head -c 100000 | "$REAL_LAME" --silent -b 128 - "$out"; exit 0')
        self.assertEqual(self.refused("-delete", source),
                         f"bladeenc: {source}: So viel Ton nimmt lame nicht in eine Datei auf.\n")
        self.expect_nothing_made("a.wav")
        self.assertEqual(os.path.getsize(source), 5 << 30)

    def test_a_lame_that_writes_something_else_is_found_out(self):
        source = self.tone("a.wav", 0.3)
        for name, work in (("nothing", ":"), ("noise", 'head -c 20000 /dev/urandom > "$out"'),
                           ("zeros", 'head -c 20000 /dev/zero > "$out"'),
                           ("another rate", '"$REAL_LAME" --silent -b 96 - "$out"'),
                           ("a tail cut off", '"$REAL_LAME" "$@" && truncate -s -1 "$out"'),
                           ("a tail too long", '"$REAL_LAME" "$@" && printf x >> "$out"'),
                           ("a hole", '"$REAL_LAME" "$@"; dd if=/dev/zero of="$out" bs=500 count=1 seek=4 conv='
                                      'notrunc')):
            with self.subTest(name):
                self.stand_in("lame", f'for out; do :; done; {work}; cat > /dev/null; exit 0')
                self.assertIn("nicht vollständig", self.refused("-delete", source))
                self.expect_nothing_made("a.wav")

    def test_a_lame_that_talks_without_end_holds_nothing_up(self):
        source = self.tone("a.wav", 0.1)
        self.stand_in("lame", 'head -c 3000000 /dev/zero >&2; head -c 3000000 /dev/zero; exec "$REAL_LAME" "$@"')
        self.assertEqual(self.encode(source), [self.path("a.mp3")])

    def test_a_source_that_does_not_decode_to_its_length_stays(self):
        source = self.tone("a.wav", 0.2)
        self.stand_in("lame", HALF_DECODED)
        self.assertEqual(self.refused("-delete", source), f"bladeenc: {source}: Die MP3-Datei ließ sich nicht ganz "
                                                          "abspielen und wurde verworfen. Die WAV-Datei bleibt.\n")
        self.expect_nothing_made("a.wav")

    def test_a_source_that_changes_meanwhile_stays(self):
        source = self.tone("a.wav", 0.2)
        self.stand_in("lame", f'case " $* " in *" --decode "*) printf x >> "{source}";; esac; exec "$REAL_LAME" "$@"')
        self.assertIn("inzwischen geändert", self.refused("-delete", source))
        self.assertEqual(self.music_names(), ["a.mp3", "a.wav"])

    def test_a_source_that_is_cut_while_it_is_read_gives_no_file(self):
        source = self.silence("a.wav", 60)
        self.stand_in("lame", f'truncate -s 1000000 "{source}"; cat > /dev/null')
        self.assertIn("während des Konvertierens geändert", self.refused(source))
        self.expect_nothing_made("a.wav")

    def test_a_full_disk_is_told_and_leaves_nothing(self):
        # A file can't get longer than this, as on a full disk.
        source, other = self.tone("a.wav", 3), self.tone("b.wav", 0.1)
        for size in (0, 4096, 30000):
            said = self.refused("-128", "-delete", source,
                                preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (size, size)))
            self.assertEqual(said, f"bladeenc: {source}: Auf dem Datenträger ist kein Platz mehr.\n")
            self.expect_nothing_made("a.wav", "b.wav")
        self.refused("-128", "-delete", source, other,
                     preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (30000, 30000)))
        self.assertEqual(self.music_names(), ["a.wav", "b.mp3"])

    def start(self, *arguments):
        return subprocess.Popen([BLADEENC, *arguments], env=self.environment, stdin=subprocess.DEVNULL,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, cwd=self.music)

    def start_with_slow_lame(self, *arguments):
        """(the program while its lame is at work, which it will be for half a minute; the number of that process)"""
        started = os.path.join(self.home, "lame")
        self.stand_in("lame", f'echo $$ > "{started}.new"; mv "{started}.new" "{started}"; exec sleep 30')
        process = self.start(*arguments)
        end = time.monotonic() + 20
        while not os.path.exists(started):
            self.assertLess(time.monotonic(), end)
            time.sleep(0.005)
        with open(started, encoding="utf-8") as file:
            number = int(file.read())
        os.remove(started)
        os.remove(os.path.join(self.tools, "lame"))
        return process, number

    def test_whenever_it_is_killed_a_file_is_whole_or_not_there(self):
        sound = tones(1, (440,))
        source = self.path("a.wav")
        for pause in (0, 0.02, 0.04, 0.06, 0.1, 0.15, 0.25, 0.4):
            with self.subTest(pause):
                write_wave(source, sound * 8)
                process = self.start("-delete", source)
                time.sleep(0.05 + pause)
                process.kill()
                process.wait()
                left = self.music_names()
                self.assertEqual([name for name in left if not name.startswith(".")],
                                 [name for name in left if name in ("a.wav", "a.mp3")])
                self.assertTrue(all(name.endswith(".part") for name in left if name.startswith(".")), left)
                if "a.mp3" in left:
                    self.assertEqual(Decoded(self.path("a.mp3")).samples, 8 * 44100)
                    os.remove(self.path("a.mp3"))
                else:
                    self.assertIn("a.wav", left)

    def test_what_a_killed_run_left_is_removed_later_but_nothing_that_is_in_use(self):
        process, lame = self.start_with_slow_lame(self.silence("a.wav", 60))
        process.kill()
        process.wait()
        [part] = [name for name in self.music_names() if name.endswith(".part")]
        other = self.tone("b.wav", 0.1)
        foreign = [".bladeenc-x.part", ".bladeenc-0123456789abcdef.part.wav"]
        for name in foreign:
            self.tone(name, 0.1)

        os.utime(self.path(part), (time.time() - 3600,) * 2)
        self.encode(other)
        self.assertIn(part, self.music_names())  # The lame of the killed run still has it.

        os.kill(lame, signal.SIGKILL)
        self.await_end(lame)
        self.encode(other)
        self.assertEqual(self.music_names(), sorted(["a.wav", "b.wav", "b.mp3", "b (2).mp3", *foreign]))

    def await_end(self, process):
        """Until a process that isn't ours has ended; one that nobody has asked for its result counts as ended."""
        end = time.monotonic() + 20
        while True:
            try:
                with open(f"/proc/{process}/stat", encoding="utf-8") as file:
                    if file.read().rpartition(")")[2].split()[0] in "ZX":
                        return
            except FileNotFoundError:
                return
            self.assertLess(time.monotonic(), end)
            time.sleep(0.01)

    def test_signals_that_end_it_leave_nothing_and_end_lame(self):
        source = self.silence("a.wav", 60)
        before = content(source)
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(number):
                process, lame = self.start_with_slow_lame("-delete", source)
                process.send_signal(number)
                self.assertEqual(process.wait(), 128 + number)
                self.await_end(lame)
                self.expect_nothing_made("a.wav")
        self.assertEqual(content(source), before)

    def test_a_full_disk_leaves_no_compiled_files(self):
        self.encode(self.tone("a.wav", 0.1))
        self.assertNotIn("__pycache__", os.listdir(os.path.join(os.path.dirname(BLADEENC), "encoder")))

    def test_a_reader_that_has_gone_changes_no_exit_code(self):
        read, write = os.pipe()
        os.close(read)
        with os.fdopen(write, "wb") as gone:
            run = subprocess.run([BLADEENC, "-128", self.tone("a.wav")], env=self.environment, stdin=subprocess.DEVNULL,
                                 stdout=gone, stderr=subprocess.PIPE, cwd=self.music)
        self.assertEqual((run.returncode, run.stderr), (0, b""))
        self.assertEqual(self.music_names(), ["a.mp3", "a.wav"])

    def test_it_works_without_any_channel(self):
        source = self.tone("a.wav", 0.1)
        process = subprocess.run(["sh", "-c", 'exec "$@" <&- >&- 2>&-', "sh", BLADEENC, "-delete", source,
                                  "/nowhere.wav"], env=self.environment)
        self.assertEqual(process.returncode, 1)
        self.assertEqual(self.music_names(), ["a.mp3"])
        self.assertEqual(Decoded(self.path("a.mp3")).samples, 4410)


if __name__ == "__main__":
    unittest.main()
