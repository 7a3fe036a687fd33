"""The documents beside the program: links lead somewhere, and the tour shows the same in both languages."""
import glob
import os
import re
import unittest

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
LINK = re.compile(r"\]\(([^)\s]+)\)")


def read(path):
    with open(os.path.join(ROOT, path), encoding="utf-8") as file:
        return file.read()


def anchors(text):
    """Of the headings, as forges make them."""
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in re.findall(r"^#+ (.*)$", text, re.M)}


class DocumentsTest(unittest.TestCase):
    def test_each_link_within_the_project_leads_somewhere(self):
        documents = [os.path.relpath(path, ROOT) for pattern in ("*.md", "docs/*.md")
                     for path in glob.glob(os.path.join(ROOT, pattern))]
        links = 0
        for document in documents:
            for link in LINK.findall(read(document)):
                if re.match(r"\w+:", link):
                    continue
                links += 1
                name, _, anchor = link.partition("#")
                path = os.path.normpath(os.path.join(os.path.dirname(document), name)) if name else document
                self.assertTrue(os.path.exists(os.path.join(ROOT, path)), f"{document}: {link}")
                if anchor:
                    self.assertIn(anchor, anchors(read(path)), f"{document}: {link}")
        self.assertGreater(links, 40)

    def test_each_picture_of_the_tour_is_there_in_english_and_then_in_german(self):
        shown = re.findall(r"^!\[(.*) in (English|German)\]\(docs/screenshots/(.*)-(en|de)\.png\)$", read("README.md"), re.M)
        self.assertEqual(len(shown), read("README.md").count("!["))
        self.assertGreaterEqual(len(shown), 20)
        for english, german in zip(shown[::2], shown[1::2], strict=True):
            self.assertEqual((english[1], english[3], german[1], german[3]), ("English", "en", "German", "de"))
            self.assertEqual((english[0], english[2]), (german[0], german[2]))

    def test_the_tour_passes_each_feature_that_has_a_dialog_of_its_own(self):
        shown = set(re.findall(r"screenshots/(\w+)-en\.png", read("README.md")))
        for window in ("main", "scan", "frmEditTree", "frmPlayer", "frmRandomPlay", "frmDetails", "frmFilesName", "frmCovers",
                       "frmChart", "frmKonvertOptions", "print", "frmHelp"):
            self.assertIn(window, shown)

    def test_the_package_that_is_told_of_is_the_one_that_is_made(self):
        version = re.match(r"quavernet \(([^)]*)\)", read("packaging/debian/changelog")).group(1)
        self.assertEqual(set(re.findall(r"quavernet_([^_]*)_amd64\.deb", read("README.md"))), {version})


if __name__ == "__main__":
    unittest.main(verbosity=2)
