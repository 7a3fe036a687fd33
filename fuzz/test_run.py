#!/usr/bin/env python3
"""Tests fuzz/run with programs that stand in for the fuzz targets."""
import json
import os
import stat
import subprocess
import sys
import tempfile
import time
import unittest

RUN = os.path.join(os.path.dirname(os.path.abspath(__file__)), "run")

# What libFuzzer prints at the end, in short; a finding leaves its input under the prefix.
SOUND = """#!/bin/sh
echo "#7 DONE cov: 42 ft: 50"
echo "stat::number_of_executed_units: 1234"
sleep 0.3
"""
LONG = """#!/bin/sh
trap 'echo "stat::number_of_executed_units: 5"; exit 72' INT
echo "#5 NEW cov: 3 ft: 3"
for i in 1 2 3 4 5 6 7 8 9; do sleep 1; done
"""
BREAKING = """#!/bin/sh
for word in "$@"; do
    case $word in -artifact_prefix=*) printf bad >"${word#*=}crash-1" ;; esac
done
echo "#7 NEW cov: 9 ft: 9"
exit 77
"""


class RunTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(prefix="quavernet-test-")
        self.addCleanup(self.folder.cleanup)
        os.mkdir(self.path("programs"))

    def path(self, *parts):
        return os.path.join(self.folder.name, *parts)

    def program(self, name, text):
        path = self.path("programs", name)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        os.chmod(path, os.stat(path).st_mode | stat.S_IXUSR)

    def start(self, *arguments, **environment):
        return subprocess.Popen([sys.executable, RUN, "--programs", self.path("programs"), "--work", self.path("work"),
                                 *arguments], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                                env={**os.environ, **environment})

    def run_it(self, *arguments, **environment):
        with self.start(*arguments, **environment) as process:
            return process.communicate()[0], process.returncode

    def log(self, name):
        try:
            with open(self.path("work", "logs", name + ".log"), encoding="utf-8") as file:
                return file.read()
        except FileNotFoundError:
            return ""

    def totals(self):
        with open(self.path("work", "totals.json"), encoding="utf-8") as file:
            return json.load(file)

    def test_targets_take_turns_and_their_figures_add_up(self):
        self.program("WaveFuzz", SOUND)
        self.program("MpegFuzz", SOUND)
        output, status = self.run_it("--minutes", "0.04", "WaveFuzz", "MpegFuzz")
        self.assertEqual(status, 0, output)
        slices = [line.split()[0] for line in output.splitlines() if "executions," in line]
        self.assertEqual(slices[:2], ["WaveFuzz", "MpegFuzz"])
        totals = self.totals()
        self.assertEqual(totals["WaveFuzz"]["executions"], 1234 * slices.count("WaveFuzz"))
        self.assertEqual(totals["MpegFuzz"]["coverage"], 42)
        self.run_it("--minutes", "0.02", "WaveFuzz")
        self.assertGreater(self.totals()["WaveFuzz"]["executions"], totals["WaveFuzz"]["executions"])
        table, status = self.run_it("--table", "WaveFuzz")
        self.assertEqual(status, 0)
        self.assertRegex(table.splitlines()[1], r"^WaveFuzz +\d+ +\d+ +[\d,]+ +42 +0 +0$")

    def test_a_finding_keeps_its_input_and_fails(self):
        self.program("WaveFuzz", BREAKING)
        output, status = self.run_it("--minutes", "0.02", "WaveFuzz")
        self.assertEqual(status, 1, output)
        self.assertIn("FOUND WaveFuzz-crash-1", output)
        with open(self.path("work", "findings", "WaveFuzz-crash-1"), encoding="utf-8") as file:
            self.assertEqual(file.read(), "bad")
        self.assertGreaterEqual(self.totals()["WaveFuzz"]["findings"], 1)

    def test_no_slice_begins_while_the_file_stands(self):
        self.program("WaveFuzz", SOUND)
        pause = self.path("pause")
        with open(pause, "w", encoding="utf-8"):
            pass
        with self.start("--minutes", "0.02", "WaveFuzz", FUZZ_PAUSE=pause) as process:
            time.sleep(1.5)
            self.assertIsNone(process.poll())
            self.assertFalse(os.path.exists(self.path("work", "totals.json")))
            os.remove(pause)
            self.assertIn("1,234", process.communicate()[0])

    def test_a_pause_ends_a_slice_that_runs(self):
        self.program("WaveFuzz", LONG)
        pause = self.path("pause")
        with self.start("--minutes", "0.1", "WaveFuzz", FUZZ_PAUSE=pause) as process:
            while "NEW" not in self.log("WaveFuzz"):
                time.sleep(0.1)
            with open(pause, "w", encoding="utf-8"):
                pass
            line = process.stdout.readline()
            process.kill()
        self.assertIn(" 5 executions", line)
        self.assertEqual(self.totals()["WaveFuzz"]["findings"], 0)
        self.assertLess(self.totals()["WaveFuzz"]["processor"], 5)

    def test_a_target_in_python_looks_for_inputs_and_keeps_them(self):
        output, status = self.run_it("--minutes", "0.03", "EncoderArgumentsFuzz")
        self.assertEqual(status, 0, output)
        totals = self.totals()["EncoderArgumentsFuzz"]
        self.assertGreater(totals["executions"], 20, output)
        self.assertGreater(totals["coverage"], 40)
        self.assertEqual(totals["inputs"], len(os.listdir(self.path("work", "corpora", "EncoderArgumentsFuzz"))))

    def test_an_unknown_target_is_refused(self):
        output, status = self.run_it("NoFuzz")
        self.assertEqual(status, 2)
        self.assertIn("WaveFuzz", output)


if __name__ == "__main__":
    unittest.main()
