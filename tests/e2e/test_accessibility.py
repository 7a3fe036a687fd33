"""What a screen reader gets: the tree of objects as the desktop's accessibility bus tells it, in both languages."""
import json
import os
import subprocess
import unittest

from desktop import ProgramTest, wait_until

ROW_1 = (300, 118)  # of the main window's list, in a window of the first start's size
WALKER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "accessible_tree.py")

# What takes the keyboard or says something by its name. Panes, separators and scroll bars say nothing. A "frame" is a
# window, but also a pane in one.
NAMED_ROLES = {"push button", "toggle button", "check box", "radio button", "combo box", "text", "table", "tree table",
               "tree", "list", "menu", "menu item", "check menu item", "radio menu item", "slider", "spin button",
               "table column header", "column header", "dialog", "alert", "page tab"}


class AccessibilityTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address=1"],
                                    env=self.desktop.environment, stdout=subprocess.PIPE, text=True)
        self.addCleanup(self.end_bus)
        self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"] = self.bus.stdout.readline().strip()
        self.desktop.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"

    def end_bus(self):
        self.bus.kill()
        self.bus.wait()
        self.bus.stdout.close()

    def tree(self):
        """The program as the bus tells it; a window that is just being made may be in the way of a first answer."""
        def answer():
            told = subprocess.run([WALKER, "Quavernet"], env=self.desktop.environment, capture_output=True, text=True)
            return told.returncode == 0 and told.stdout and json.loads(told.stdout)
        return wait_until("the program on the accessibility bus", answer)

    def all(self, item, role=None, parents=()):
        """Objects that are shown, with the names of what they are in."""
        if role is None or item["role"] == role:
            yield item, parents
        for child in item["children"]:
            if "visible" in child["states"] or child["role"] in ("menu item", "table cell"):
                yield from self.all(child, role, (*parents, item["name"] or item["role"]))

    def one(self, tree, role, name):
        found = [item for item, _ in self.all(tree, role) if item["name"] == name]
        self.assertEqual(len(found), 1, f"{role} {name!r}: {[item['name'] for item, _ in self.all(tree, role)]}")
        return found[0]

    def assert_nothing_nameless(self, tree):
        nameless = [(item["role"], *parents) for item, parents in self.all(tree)
                    if item["role"] in NAMED_ROLES and "showing" in item["states"] and not item["name"].strip()]
        nameless += [window["role"] for window in tree["children"] if not window["name"].strip()]
        self.assertEqual(nameless, [])

    def assert_keyboard_reaches_what_acts(self, tree):
        """Whatever can be pressed takes the keyboard, too. Buttons inside a text field have keys in it: Esc, arrow down."""
        inside = [id(button) for field, _ in self.all(tree, "text") for button in field["children"]]
        deaf = [(item["role"], item["name"]) for item, _ in self.all(tree) if id(item) not in inside
                and item["role"] in ("push button", "check box", "radio button", "combo box", "slider", "text")
                and {"showing", "enabled"} <= set(item["states"]) and "focusable" not in item["states"]]
        self.assertEqual(deaf, [])

    def start_with_music(self, language):
        folder, music = self.make_music()
        self.store(ScanLog=0, Language=language, Scanpath=folder, ScanpathValue=1)
        window = self.start()
        self.desktop.key("ctrl+s")
        self.await_scan(window, len(music))
        self.desktop.activate(window)
        return window

    def check_main_window(self, window, texts):
        self.desktop.click(window, *ROW_1)
        self.desktop.key("Down", "shift+Down")
        tree = self.tree()
        self.assert_nothing_nameless(tree)
        self.assert_keyboard_reaches_what_acts(tree)

        grid = self.one(tree, "table", texts["list"])
        heads = [item["name"] for item in grid["children"] if item["role"].endswith("column header")]
        self.assertEqual(heads, texts["heads"])
        cells = [item for item in grid["children"] if item["role"] == "table cell"]
        rows = [cells[start:start + 6] for start in range(0, 36, 6)]
        selected = [number for number, row in enumerate(rows, 1) if all("selected" in cell["states"] for cell in row)]
        self.assertEqual(selected, [2, 3])
        self.assertEqual([cell["name"] for row in rows for cell in row if "focused" in cell["states"]],
                         [rows[2][0]["name"]])

        letters = next(item for item, _ in self.all(tree) if item["name"] == texts["letters"])
        buttons = [item for item in letters["children"] if item["role"] == "radio button"]
        self.assertEqual([item["name"] for item in buttons if "checked" in item["states"]], [texts["all"]])
        self.assertEqual([item["name"] for item in buttons][1:27], [chr(code) for code in range(ord("A"), ord("Z") + 1)])
        self.assertTrue(all(item["actions"] for item in buttons))

        panels = next(item for item, _ in self.all(tree) if item["role"] == "status bar")["children"]
        self.assertEqual([item["name"] for item in panels][2:], texts["panels"])

    def test_the_main_window_in_german(self):
        self.check_main_window(self.start_with_music("GER"), {
            "list": "Quavernet Datei Liste", "letters": "Anfangsbuchstabe", "all": "{alle}",
            "heads": ["Interpret, aufsteigend sortiert", "Titel", "Länge", "Grösse", "Qualität (Bit)", "Format"],
            "panels": ["19 Interpreten", "56 Titel", "4 Alben"]})

    def test_the_main_window_in_english(self):
        self.check_main_window(self.start_with_music("ENG"), {
            "list": "Quavernet File List", "letters": "First letter", "all": "{all}",
            "heads": ["Performer, sorted in ascending order", "Title", "Length", "Size", "Quality (bit)", "Format"],
            "panels": ["19 performers", "56 title(s)", "4 albums"]})

    def test_the_other_windows_in_both_languages(self):
        for language, keys in (("GER", ("ctrl+i", "ctrl+l", "ctrl+b", "ctrl+p", "F1")),
                               ("ENG", ("ctrl+i", "ctrl+l", "ctrl+b", "ctrl+p", "F1"))):
            window = self.start_with_music(language) if language == "GER" else self.start_again(language)
            for key in keys:
                with self.subTest(language=language, key=key):
                    self.desktop.activate(window)
                    self.desktop.click(window, *ROW_1)
                    before = self.windows()
                    self.desktop.key(key)
                    wait_until(f"the window of {key}", lambda: self.windows() > before)
                    tree = self.tree()
                    self.assert_nothing_nameless(tree)
                    self.assert_keyboard_reaches_what_acts(tree)
                    self.desktop.key("Escape" if key not in ("ctrl+p", "F1") else "alt+F4")
                    wait_until(f"the window of {key} to go", lambda: self.windows() == before)
            self.desktop.activate(window)
            self.desktop.key("ctrl+q")
            self.assertEqual(self.ended(), 0)

    def windows(self):
        """How many are shown: some are kept for the next time."""
        return len([window for window in self.tree()["children"] if "showing" in window["states"]])

    def start_again(self, language):
        self.store(ScanLog=0, Language=language)
        return self.start()

    def test_a_letter_can_be_pressed_by_a_screen_reader(self):
        self.start_with_music("GER")
        self.tree()
        subprocess.run([WALKER, "Quavernet", "radio button", "B"], env=self.desktop.environment, check=True)

        def chosen():
            return [item["name"] for item, _ in self.all(self.tree(), "radio button") if "checked" in item["states"]]
        wait_until("the letter", lambda: chosen() == ["B"])


if __name__ == "__main__":
    unittest.main()
