"""The disk is full in the middle of a scan: the program says so and ends, and keeps what it had written."""
import os
import unittest

from desktop import ProgramTest, wait_until


class WriteFailureTest(ProgramTest):
    def test_a_full_disk_ends_the_scan_with_a_message_and_keeps_what_was_written(self):
        folder, music = self.make_music("--count", "20000")
        window = self.start()
        self.scan(window, folder)
        kept = wait_until("the first files", self.library.files)
        self.limit_written_files(max(os.path.getsize(path) for path in (self.library.path,
                                                                        self.library.path + "-wal")))

        box = self.desktop.window("^Programm wird beendet$")
        self.desktop.picture("write-failure-box")
        self.assertIsNone(self.program.poll())
        self.desktop.activate(box)
        self.desktop.key("Return")
        self.assertEqual(self.ended(), 1)

        left = self.library.files()
        self.assertLessEqual(set(kept), set(left))
        self.assertLess(len(left), len(music))

        self.start()
        self.assertEqual(sorted(self.library.files()), sorted(left))
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)


if __name__ == "__main__":
    unittest.main()
