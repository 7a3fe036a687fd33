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


# Every window that a menu opens: its keys in German and in English, the role of the window, and some roles in it that
# a list of texts would not have. Two rows are selected for the last one, and one for the others.
WINDOWS = [
    (("ctrl+i",), ("ctrl+i",), "dialog", {"text", "push button"}),
    (("ctrl+b",), ("ctrl+b",), "dialog", {"list", "push button"}),
    (("alt+o", "k"), ("alt+o", "c"), "dialog", {"combo box", "radio button", "check box", "text"}),
    (("alt+o", "c"), ("alt+o", "t"), "dialog", {"text", "check box"}),
    (("alt+o", "o"), ("alt+o", "o"), "dialog", {"text", "push button"}),
    (("alt+o", "f"), ("alt+o", "d"), "dialog", {"text", "check box"}),
    (("alt+o", "r"), ("alt+o", "r"), "dialog", {"radio button"}),
    (("alt+o", "e"), ("alt+o", "m"), "dialog", {"radio button", "check box"}),
    (("alt+h", "b"), ("alt+h", "a"), "dialog", {"label", "push button"}),
    (("ctrl+c",), ("ctrl+c",), "alert", {"push button"}),
    (("alt+b", "d"), ("alt+e", "f"), "dialog", {"text", "push button"}),
    (("shift+Down", "alt+b", "d"), ("shift+Down", "alt+e", "f"), "dialog", {"list", "text"}),
]
# And those that stay open beside the main window.
OPEN_WINDOWS = [
    ("ctrl+l", "dialog", {"list", "page tab", "push button"}),
    ("ctrl+p", "frame", {"list", "slider", "push button", "check box"}),
    ("F1", "frame", {"tree", "text", "push button"}),
]


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

    def tree(self, *options):
        """The program as the bus tells it; a window that is just being made may be in the way of a first answer."""
        def answer():
            told = subprocess.run([WALKER, "Quavernet", *options], env=self.desktop.environment, capture_output=True,
                                  text=True)
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

    def start_with_music(self, language, ScanLog=0):
        folder, music = self.make_music()
        self.store(ScanLog=ScanLog, Language=language, Scanpath=folder, ScanpathValue=1)
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

    def check_new_window(self, before, keys, role, roles):
        """What the keys have opened: it and all in it has names, the role of its kind, and a way by the
        keyboard. Gives its name."""
        wait_until(f"the window of {keys}", lambda: self.windows()[before:])
        tree = self.tree("--window", str(before))
        opened = self.shown(tree)[before]
        self.assert_nothing_nameless(tree)
        self.assert_keyboard_reaches_what_acts(tree)
        self.assertEqual(opened["role"], role)
        self.assertLessEqual(roles, {item["role"] for item, _ in self.all(opened)})
        return opened["name"]

    def check_all_windows(self, language):
        window = self.start_with_music(language)
        for german, english, role, roles in WINDOWS:
            keys = german if language == "GER" else english
            with self.subTest(language=language, keys=keys):
                self.desktop.activate(window)
                self.desktop.click(window, *ROW_1)
                before = len(self.windows())
                self.desktop.key(*keys)
                self.check_new_window(before, keys, role, roles)
                self.desktop.key("Escape")
                wait_until(f"the window of {keys} to go", lambda: len(self.windows()) == before)
        for key, role, roles in OPEN_WINDOWS:
            with self.subTest(language=language, key=key):
                self.desktop.activate(window)
                before = len(self.windows())
                self.desktop.key(key)
                self.check_new_window(before, key, role, roles)
                self.desktop.key("alt+F4")
                wait_until(f"the window of {key} to go", lambda: len(self.windows()) == before)
        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)

    def test_every_window_of_the_menus_in_german(self):
        self.check_all_windows("GER")

    def test_every_window_of_the_menus_in_english(self):
        self.check_all_windows("ENG")

    def check_windows_of_buttons(self, language, charts, category, edit):
        """Those that only a button opens, which is pressed as a screen reader does, and the log of a scan."""
        window = self.start_with_music(language, ScanLog=1)
        log = self.check_new_window(1, "ctrl+s", "dialog", {"list", "label", "push button"})
        self.desktop.close_window(f"^{log}$")
        for button in charts:
            self.press("push button", button)
            chart = self.check_new_window(1, button, "dialog", {"table", "label", "push button"})
            self.desktop.close_window(f"^{chart}$")
        self.desktop.activate(window)
        self.desktop.click(window, *ROW_1)
        self.desktop.key("ctrl+i")
        wait_until("the details", lambda: len(self.windows()) == 2)
        self.press("push button", edit)
        wait_until("the fields", lambda: any("editable" in item["states"]
                                             for item, _ in self.all(self.shown(self.tree("--window", "1"))[1], "text")))
        details = self.check_new_window(1, edit, "dialog", {"text", "combo box", "radio button"})
        self.desktop.close_window(f"^{details}$")
        self.desktop.activate(window)
        self.desktop.key("ctrl+p")
        wait_until("the player", lambda: len(self.windows()) == 2)
        # The toolkit answers the press when the dialog that it opens has gone.
        pressed = subprocess.Popen([WALKER, "Quavernet", "push button", category], env=self.desktop.environment,
                                   stderr=subprocess.DEVNULL)
        self.addCleanup(pressed.wait)
        self.addCleanup(pressed.kill)
        dialog = self.check_new_window(2, category, "dialog", {"text", "push button"})
        self.desktop.close_window(f"^{dialog}$")

    def test_the_windows_of_buttons_in_german(self):
        self.check_windows_of_buttons("GER", ("Zeigt die meistgehörten Titel an", "Zeigt die neuesten Dateien an"), "In Bibliothek", "Bearbeiten")

    def test_the_windows_of_buttons_in_english(self):
        self.check_windows_of_buttons("ENG", ("Shows the most played titles", "Shows the newest files"), "Add to library", "Edit")

    def press(self, role, name):
        subprocess.run([WALKER, "Quavernet", role, name], env=self.desktop.environment, check=True)

    def windows(self):
        """Those that are shown, in the order in which they were made: some are kept for the next time."""
        return self.shown(self.tree("--windows"))

    def shown(self, tree):
        return [window for window in tree["children"] if "showing" in window["states"]]

    def test_a_letter_can_be_pressed_by_a_screen_reader(self):
        self.start_with_music("GER")
        self.tree()
        subprocess.run([WALKER, "Quavernet", "radio button", "B"], env=self.desktop.environment, check=True)

        def chosen():
            return [item["name"] for item, _ in self.all(self.tree(), "radio button") if "checked" in item["states"]]
        wait_until("the letter", lambda: chosen() == ["B"])


if __name__ == "__main__":
    unittest.main()
