"""The package on a bare Debian: it installs with what it asks for, its program works for an ordinary user, and nothing
but the user's own remains when it is removed. Where no bare Debian can be made, the package is unpacked into an empty
folder instead, and its program works from there."""
import os
import shutil
import unittest

from bare_root import BareRoot, NoRoot
from installed import InstalledTest, Place, unpacked

ORDINARY = 1000  # a user of the place
LIBRARY = "Dokumente/Quavernet Database/Quavernet.db"


class ShutIn(Place):
    """Programs of the place see nothing else."""
    user = ORDINARY

    def __init__(self, root):
        super().__init__(root)
        self.system = root

    def homes(self):
        return os.path.join(self.root, "tmp")

    def inside(self, text):
        return text.replace(self.root + "/", "/")

    def command(self, program):
        return ["/" + program]

    def enter(self, user):
        os.chroot(self.root)
        os.chdir("/")
        super().enter(user)


class BareRootTest(InstalledTest):
    @classmethod
    def setUpClass(cls):
        cls.root = BareRoot(os.path.join(os.environ["QUAVERNET_PACKAGES"], "root"))
        try:
            cls.root.make()
        except NoRoot as reason:
            print(f"No bare Debian can be made here ({reason}): into an empty folder instead.")
            cls.root, cls.place = None, unpacked(cls)
            return
        cls.before = cls.root.tree()
        cls.root.install()
        cls.place = ShutIn(cls.root.base)

    def check_removal(self):
        self.root.purge()
        self.assertTrue(os.path.exists(os.path.join(self.home, LIBRARY)), "the user's library stays")
        shutil.rmtree(self.home)
        after = self.root.tree()
        changed = sorted(path for path in self.before.keys() | after.keys() if self.before.get(path) != after.get(path))
        self.assertEqual(changed, [])

    def test_the_package_installs_works_and_leaves_nothing_when_it_goes(self):
        self.check_first_steps()
        if self.root:
            self.check_removal()


if __name__ == "__main__":
    unittest.main(verbosity=2)
