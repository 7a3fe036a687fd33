"""The package as a file: what is in it, what it asks for, and what Debian's checker says of it."""
import gzip
import os
import re
import shutil
import sqlite3
import subprocess
import tempfile
import unittest

import debian

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
ID = "io.greyfinch.Quavernet"
SIZES = (16, 22, 24, 32, 48, 64, 128, 256)


class PackageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.root = tempfile.mkdtemp(prefix="quavernet-package-")
        cls.addClassCleanup(shutil.rmtree, cls.root)
        debian.unpack(cls.root)
        cls.files = sorted(os.path.relpath(os.path.join(folder, name), cls.root)
                           for folder, _, names in os.walk(cls.root) for name in names)

    def path(self, *parts):
        return os.path.join(self.root, "usr", *parts)

    def source(self, *parts):
        with open(os.path.join(ROOT, *parts), "rb") as file:
            return file.read()

    def test_the_checker_finds_no_error_and_no_warning_that_is_not_explained(self):
        run = subprocess.run(["lintian", "--allow-root", "--show-overrides", debian.package()],
                             capture_output=True, text=True)
        self.assertEqual((run.returncode, run.stderr), (0, ""), run.stdout)
        rows = [row for row in run.stdout.splitlines() if re.match(r"[A-MO-Z]: ", row)]
        self.assertEqual([row for row in rows if not row.startswith("O: ")], [], run.stdout)
        reasons = self.source("packaging", "debian", "lintian-overrides").decode().splitlines()
        explained = [row for number, row in enumerate(reasons) if not row.startswith("#") and
                     reasons[number - 1].startswith("#")]
        self.assertEqual(len(rows), len(explained), "an override without a reason, or for nothing")

    def test_every_file_of_the_package_is_one_of_these(self):
        program = ["bin/quavernet", "share/quavernet/Quavernet.db", "share/quavernet/bladeenc"]
        program += [f"share/quavernet/encoder/{name}" for name in os.listdir(os.path.join(ROOT, "src", "encoder"))
                    if name.endswith(".py")]
        desktop = [f"share/applications/{ID}.desktop", f"share/metainfo/{ID}.metainfo.xml", f"share/mime/packages/{ID}.xml"]
        icons = [f"share/icons/hicolor/symbolic/apps/{ID}-symbolic.svg"]
        for kind, name in (("apps", ID), ("mimetypes", f"{ID}-exchange")):
            icons.append(f"share/icons/hicolor/scalable/{kind}/{name}.svg")
            icons += [f"share/icons/hicolor/{size}x{size}/{kind}/{name}.png" for size in SIZES]
        pages = ["share/man/man1/quavernet.1.gz", "share/man/de/man1/quavernet.1.gz"]
        told = [f"share/doc/quavernet/{name}" for name in ("changelog.gz", "changelog.Debian.gz", "copyright")]
        told.append("share/lintian/overrides/quavernet")
        self.assertEqual(self.files, sorted("usr/" + name for name in program + desktop + icons + pages + told))

    def test_no_script_runs_when_it_is_installed_or_removed(self):
        control = tempfile.mkdtemp(prefix="quavernet-control-")
        self.addCleanup(shutil.rmtree, control)
        subprocess.run(["dpkg-deb", "--control", debian.package(), control], check=True)
        self.assertEqual(sorted(os.listdir(control)), ["control", "md5sums"])

    def test_everybody_reads_and_root_alone_writes(self):
        for row in debian.told("dpkg-deb", "--contents", debian.package()).splitlines():
            rights, owner, name = row.split()[0], row.split()[1], row.split()[-1]
            programs = name in ("./usr/bin/quavernet", "./usr/share/quavernet/bladeenc")
            wanted = "drwxr-xr-x" if name.endswith("/") else "-rwxr-xr-x" if programs else "-rw-r--r--"
            self.assertEqual((rights, owner), (wanted, "root/root"), name)

    def test_what_is_loaded_while_the_program_runs_is_asked_for_by_name(self):
        asked = [re.match(r"\S+", one).group(0) for one in debian.field("Depends").split(", ")]
        for name in ("libmpv2", "libqt6svg6", "qt6-image-formats-plugins", "qt6-translations-l10n", "xdg-utils",
                     "python3", "lame"):
            self.assertIn(name, asked)
        for name in ("libqt6widgets6", "libsqlite3-0", "libtag1v5", "libogg0"):
            self.assertIn(name, asked, "of the links of the program")

    def test_the_icons_have_their_sizes_and_show_something(self):
        for kind, name in (("apps", ID), ("mimetypes", f"{ID}-exchange")):
            for size in SIZES:
                path = self.path(f"share/icons/hicolor/{size}x{size}/{kind}/{name}.png")
                told = debian.told("identify", "-format", "%w %h %k", path).split()
                self.assertEqual(told[:2], [str(size)] * 2)
                self.assertGreater(int(told[2]), 10, "colours of " + path)

    def test_the_metainfo_finds_its_desktop_file_in_the_package(self):
        debian.told("appstreamcli", "validate-tree", "--no-net", self.root)

    def test_the_library_is_a_sound_one_without_files(self):
        library = sqlite3.connect(f"file:{self.path('share/quavernet/Quavernet.db')}?mode=ro", uri=True)
        self.addCleanup(library.close)
        # The order of texts is the program's own; the check needs one of that name.
        library.create_collation("QUAVERNET", lambda one, other: (one > other) - (one < other))
        self.assertEqual(library.execute("pragma quick_check").fetchall(), [("ok",)])
        self.assertEqual(library.execute("select count(*) from Files").fetchone(), (0,))

    def test_changes_of_the_program_and_of_the_package_are_the_sources_own(self):
        doc = self.path("share/doc/quavernet")
        for name, source in (("changelog.gz", ("CHANGELOG.md",)), ("changelog.Debian.gz", ("packaging", "debian", "changelog"))):
            with gzip.open(os.path.join(doc, name)) as file:
                self.assertEqual(file.read(), self.source(*source))
        version = re.match(r"quavernet \(([^)]*)\)", self.source("packaging", "debian", "changelog").decode()).group(1)
        self.assertEqual(debian.field("Version"), version)

    def test_file_managers_know_an_exchange_file_by_its_name_and_by_its_first_line(self):
        data = os.path.join(self.root, "types")
        shutil.copytree(self.path("share/mime"), os.path.join(data, "mime"))
        # The system's own types beside ours, as on a desktop.
        shutil.copy("/usr/share/mime/packages/freedesktop.org.xml", os.path.join(data, "mime", "packages"))
        subprocess.run(["update-mime-database", os.path.join(data, "mime")], check=True, capture_output=True)
        wanted = "application/x-quavernet-tree"
        for name, text, kind in (("Baum.qvn", "#Categories\nRock\n#Files\n", wanted), ("Baum.qvn", "Rock\n", wanted),
                                 ("Baum", "#Categories\nRock\n#Files\n", wanted), ("Baum", "Rock\n", "text/plain")):
            path = os.path.join(self.root, name)
            with open(path, "w", encoding="utf-8") as file:
                file.write(text)
            told = subprocess.run(["gio", "info", "-a", "standard::content-type,standard::icon", path], check=True,
                                  capture_output=True, text=True,
                                  env=dict(os.environ, XDG_DATA_DIRS=data, XDG_DATA_HOME=self.root)).stdout
            self.assertIn(f"content-type: {kind}\n", told, (name, text))
            self.assertEqual(f"{ID}-exchange" in told, kind == wanted)


if __name__ == "__main__":
    unittest.main(verbosity=2)
