"""What lies in packaging, before anything is built of it: one version and date everywhere, both languages, man pages
without a complaint."""
import configparser
import email.utils
import glob
import os
import re
import subprocess
import unittest
import xml.etree.ElementTree as xml

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
PACKAGING = os.path.join(ROOT, "packaging")
ID = "io.greyfinch.Quavernet"
LANGUAGE = "{http://www.w3.org/XML/1998/namespace}lang"
PAGES = ("man/quavernet.1", "man/de/quavernet.1")


def read(*path):
    with open(os.path.join(ROOT, *path), encoding="utf-8") as file:
        return file.read()


def metainfo():
    return xml.parse(os.path.join(PACKAGING, f"{ID}.metainfo.xml")).getroot()


def entry():
    parser = configparser.ConfigParser(interpolation=None)
    parser.optionxform = str
    parser.read(os.path.join(PACKAGING, f"{ID}.desktop"), encoding="utf-8")
    return parser["Desktop Entry"]


def changes_of_debian():
    """Version and date of the package's newest changes."""
    text = read("packaging", "debian", "changelog")
    version = re.match(r"quavernet \(([^)]*)\) ", text).group(1)
    signed = re.search(r"^ -- .*>  (.*)$", text, re.M).group(1)
    return version, email.utils.parsedate_to_datetime(signed).strftime("%Y-%m-%d")


class VersionTest(unittest.TestCase):
    """The program itself takes its version from the project (SettingsTest, MainMenuTest, WindowStateTest)."""

    def test_changelog_metainfo_package_and_man_pages_name_one_version_and_date(self):
        project = re.search(r"project\(Quavernet VERSION ([\d.]+) ", read("CMakeLists.txt")).group(1)
        headings = re.findall(r"^## (.*), (\d{4}-\d\d-\d\d)$", read("CHANGELOG.md"), re.M)
        self.assertEqual(headings[0][0], project)
        newest = metainfo().find("releases/release")
        self.assertEqual((newest.get("version"), newest.get("date")), headings[0])
        version, date = changes_of_debian()
        self.assertEqual((version.rpartition("-")[0], date), headings[0])
        for page in PAGES:
            title = read("packaging", page).splitlines()[0].split('"')
            self.assertEqual((title[0], title[1]), (f".TH QUAVERNET 1 {headings[0][1]} ", f"Quavernet {project}"), page)

    def test_the_revision_of_the_package_is_that_of_its_changes(self):
        revision = re.search(r"PACKAGE_RELEASE (\S+)\)", read("packaging", "Package.cmake")).group(1)
        self.assertEqual(changes_of_debian()[0].rpartition("-")[2], revision)


class DesktopTest(unittest.TestCase):
    def test_one_name_ties_desktop_file_icon_and_metainfo(self):
        self.assertEqual(metainfo().findtext("id"), ID)
        self.assertEqual(metainfo().findtext("launchable"), f"{ID}.desktop")
        self.assertEqual(entry()["Icon"], ID)

    def test_the_program_takes_no_files_and_none_are_promised(self):
        self.assertEqual(entry()["Exec"], "quavernet")
        self.assertNotIn("MimeType", entry())

    def test_each_start_is_a_program_of_its_own(self):
        for key in ("DBusActivatable", "SingleMainWindow"):
            self.assertNotIn(key, entry())

    def test_all_texts_of_the_desktop_file_are_in_both_languages(self):
        texts = [key for key in entry() if key in ("GenericName", "Comment", "Keywords")]
        self.assertEqual(len(texts), 3)
        for key in texts:
            self.assertNotEqual(entry()[key], entry()[f"{key}[de]"])

    def test_all_texts_of_the_metainfo_are_in_both_languages(self):
        root = metainfo()
        pairs = 0
        parents = [root.find("description"), root.find("description/ul"), root.find("releases/release/description"),
                   *root.findall("screenshots/screenshot")]
        for parent in parents:
            for kind in ("p", "li", "caption", "image"):
                found = parent.findall(kind)
                self.assertEqual([text.get(LANGUAGE) for text in found], [None, "de"] * (len(found) // 2), kind)
                pairs += len(found) // 2
        self.assertEqual([text.get(LANGUAGE) for text in root.findall("summary")], [None, "de"])
        self.assertGreaterEqual(pairs, 15)

    def test_each_screenshot_has_a_caption_and_a_picture_of_ours(self):
        shots = metainfo().findall("screenshots/screenshot")
        self.assertGreaterEqual(len(shots), 3)
        for shot in shots:
            self.assertEqual(len(shot.findall("caption")), 2)
            for image, language in zip(shot.findall("image"), ("en", "de"), strict=True):
                name = image.text.rpartition("/")[2]
                self.assertTrue(name.endswith(f"-{language}.png"), name)
                self.assertTrue(os.path.exists(os.path.join(ROOT, "docs", "screenshots", name)), name)

    def test_the_exchange_file_has_a_type_with_a_comment_in_both_languages_and_an_icon(self):
        space = "{http://www.freedesktop.org/standards/shared-mime-info}"
        kind = xml.parse(os.path.join(PACKAGING, f"{ID}.xml")).getroot().find(f"{space}mime-type")
        self.assertEqual(kind.find(f"{space}glob").get("pattern"), "*.qvn")
        self.assertEqual([text.get(LANGUAGE) for text in kind.findall(f"{space}comment")], [None, "de"])
        icon = kind.find(f"{space}icon").get("name")
        self.assertTrue(os.path.exists(os.path.join(PACKAGING, "icons", f"{icon}.svg")))


class ManPageTest(unittest.TestCase):
    def test_no_checker_complains_of_a_page(self):
        for page in PAGES:
            path = os.path.join(PACKAGING, page)
            shown = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", path], capture_output=True,
                                   text=True, env=dict(os.environ, LC_ALL="C.UTF-8", MANWIDTH="80"), check=True)
            self.assertEqual(shown.stderr, "", page)
            self.assertIn("Quavernet.backup1.db", re.sub(".\b", "", shown.stdout))
            checked = subprocess.run(["mandoc", "-T", "lint", path], capture_output=True, text=True)
            self.assertEqual(checked.stdout + checked.stderr, "", page)

    def test_both_pages_have_the_same_sections_and_entries(self):
        shapes = [re.findall(r"^\.(SH|TP|PP)\b", read("packaging", page), re.M) for page in PAGES]
        self.assertGreater(len(shapes[0]), 20)
        self.assertEqual(*shapes)

    def test_the_pages_name_every_key_of_the_main_window(self):
        table = read("src", "mainwindow", "MainMenuTable.h")
        keys = set(re.findall(r"'([A-Z])'", table)) - {"H"}  # Help has F1.
        self.assertGreater(len(keys), 8)
        for page, control in zip(PAGES, ("Ctrl", "Strg"), strict=True):
            told = set(re.findall(rf"^\.B {control}\+(.)$", read("packaging", page), re.M))
            # Keys of other places come with "Ctrl" in the help alone.
            self.assertLessEqual(keys - told, {"G"}, page)


class PackageNamesTest(unittest.TestCase):
    def test_what_the_package_asks_for_by_name_is_installed_for_the_program_that_is_built_here_too(self):
        told = re.search(r"PACKAGE_DEPENDS\s*\"([^\"]*)\"", read("packaging", "Package.cmake")).group(1).split(", ")
        packages = re.search(r"PACKAGES_RUN=\(([^)]*)\)", read("tools", "packages.sh")).group(1).split()
        self.assertLessEqual(set(told), set(packages))

    def test_no_drawing_is_left_out(self):
        told = read("packaging", "CMakeLists.txt")
        for drawing in glob.glob(os.path.join(PACKAGING, "icons", "*.svg")):
            self.assertIn(os.path.basename(drawing).removeprefix(ID), told)


if __name__ == "__main__":
    unittest.main(verbosity=2)
