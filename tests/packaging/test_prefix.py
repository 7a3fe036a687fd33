"""The package unpacked into an empty folder, on this machine's libraries."""
import unittest

from installed import InstalledTest, unpacked


class PrefixTest(InstalledTest):
    @classmethod
    def setUpClass(cls):
        cls.place = unpacked(cls)

    def test_the_unpacked_program_scans_plays_encodes_and_ends(self):
        self.check_first_steps()


if __name__ == "__main__":
    unittest.main(verbosity=2)
