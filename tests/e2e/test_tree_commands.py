"""The commands of the tree and of the list's rows, by menus, keys and mouse in a real window: categories made, renamed
and deleted in their dialog, entries and rows deleted, files shown in the list, performer and title swapped."""
import os
import unittest

from desktop import ProgramTest, wait_until

# In a window of the first start's size, under the menu bar.
LIST_ROW_1 = (300, 118)
TREE_LEFT = 90   # on the names of the nodes
TREE_TOP = 72    # the middle of the root's row
ROW_HEIGHT = 18
BESIDE_NODES = (100, 500)
DIALOG = "^Baum Verwaltung$"


class TreeCommandsTest(ProgramTest):
    def node(self, row):
        """Pixels of the main window in the middle of a row of the tree; the root is row 0."""
        return TREE_LEFT, TREE_TOP + ROW_HEIGHT * row

    def categories(self):
        return self.library.values("select Category from Categories order by Category_id")

    def entries(self):
        """Names of the entries with their positions, in the order of their keys."""
        return self.library.values("select Position || ' ' || Filename from FileCategories order by FileCategory_id")

    def choose(self, row, *keys, picture=None):
        """The item of a node's menu that the keys lead to."""
        self.desktop.click(self.window, *self.node(row), button=3)
        wait_until("the tree's menu", self.popups)
        if picture:
            self.desktop.picture(picture)
        self.desktop.key(*keys, "Return")

    def dialog(self):
        dialog = self.desktop.window(DIALOG)
        self.desktop.activate(dialog)
        return dialog

    def close_dialog(self):
        self.desktop.key("Escape")
        wait_until("the dialog to go", lambda: not self.desktop.windows(DIALOG))
        self.desktop.activate(self.window)

    def make_categories(self, *names):
        """By the keyboard alone: Return in the list begins a name, Return in the field saves it."""
        self.desktop.key("ctrl+b")
        self.dialog()
        for name in names:
            before = len(self.categories())
            self.desktop.key("Return")
            self.desktop.type(name)
            self.desktop.key("Return")
            wait_until(f"category {name}", lambda before=before: len(self.categories()) == before + 1)
        self.desktop.picture("tree-commands-1-dialog")
        self.close_dialog()

    def drop_playlist(self, name, files):
        path = os.path.join(self.home, name)
        with open(path, "w", encoding="utf-8") as file:
            file.write("".join(f"{line}\n" for line in files))
        partner = self.start_partner([path])
        self.drag(self.at(partner, (110, 150)), self.at(self.window, BESIDE_NODES))
        wait_until(f"the entries of {name}", lambda: len(self.entries()) == len(files))
        self.end_partner()
        self.desktop.activate(self.window)

    def test_the_tree_is_administered_by_menus_keys_and_mouse(self):
        _, music = self.make_music()
        files = [path for path in music if path.endswith(".mp3") and "'" not in path][:3]
        names = [os.path.basename(path) for path in files]
        self.window = self.start()
        self.desktop.activate(self.window)

        # What is no letter, digit or blank does not get into a name.
        self.make_categories("Z'u&l-u", "Zeta 2")
        self.assertEqual(self.categories(), ["Zulu", "Zeta 2"])
        self.drop_playlist("Alpha.m3u", files)

        # The tree shows Alpha, Zeta 2 and Zulu; Alpha is the last category of the dialog's list.
        self.choose(1, *["Down"] * 5, picture="tree-commands-2-menu")  # edit
        self.dialog()
        self.desktop.type("Omega")
        self.desktop.picture("tree-commands-3-edit")
        self.desktop.key("Return")
        wait_until("the other name", lambda: self.categories() == ["Zulu", "Zeta 2", "Omega"])
        self.close_dialog()
        self.assertEqual(set(self.library.values("select Parent from FileCategories")), {"Omega"})

        # Omega is in row 1 now; its entries follow it. The Delete key takes the second one out.
        self.desktop.click(self.window, *self.node(1))
        self.desktop.key("Right")
        self.desktop.click(self.window, *self.node(3))
        self.desktop.key("Delete")
        wait_until("the entry to go", lambda: self.entries() == [f"1 {names[0]}", f"2 {names[2]}"])

        # One file of the tree in the list; then its performer and title change places.
        self.choose(3, *["Down"] * 3)  # play, delete, show in the list
        self.desktop.picture("tree-commands-4-shown")
        text = ("select I.Interpret || '|' || T.Name from Files F, Interpret I, Titel T where F.Inter_id = I.Inter_id "
                "and F.Title_id = T.Title_id and F.Name || '' = '%s'" % names[2])
        performer, title = self.library.values(text)[0].split("|")
        self.desktop.click(self.window, *LIST_ROW_1)
        self.desktop.click(self.window, *LIST_ROW_1, button=3)
        wait_until("the list's menu", self.popups)
        self.desktop.picture("tree-commands-5-list-menu")
        self.desktop.key("Down", "Down", "Down", "Return")  # details, play, swap
        wait_until("the swap", lambda: self.library.values(text) == [f"{title}|{performer}"])

        # The row goes out of the library, and its entry out of the tree.
        self.choose(3, *["Down"] * 3)
        self.desktop.click(self.window, *LIST_ROW_1)
        known = len(self.library.files())
        self.desktop.click(self.window, *LIST_ROW_1, button=3)
        wait_until("the list's menu", self.popups)
        self.desktop.key(*["Down"] * 5, "Return")  # delete
        wait_until("the row to go", lambda: len(self.library.files()) == known - 1)
        wait_until("its entry to go", lambda: len(self.entries()) == 1)
        self.assertTrue(all(os.path.exists(path) for path in files))

        # A category goes at once; the rest after a question.
        self.desktop.click(self.window, *self.node(1))
        self.desktop.key("Left", "Delete")
        wait_until("the category to go", lambda: self.categories() == ["Zulu", "Zeta 2"])
        self.choose(0, "Down")
        box = self.desktop.window("^Löschen bestätigen$")
        self.desktop.activate(box)
        self.desktop.picture("tree-commands-6-question")
        self.desktop.key("Return")
        wait_until("the tree to be empty", lambda: not self.categories() and not self.entries())

        self.desktop.activate(self.window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)


if __name__ == "__main__":
    unittest.main()
