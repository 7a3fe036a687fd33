"""Categories filled and put in order by dragging, with a real pointer: from another window, from the list and inside
the tree."""
import os
import unittest

from desktop import ProgramTest, wait_until

# In a window of the first start's size, under the menu bar.
LIST_ROW_1 = (300, 118)
TREE_LEFT = 90   # on the names of the nodes
TREE_TOP = 72    # the middle of the root's row
ROW_HEIGHT = 18
BESIDE_NODES = (100, 500)


class TreeDragTest(ProgramTest):
    def place(self, row):
        """The place of the screen in the middle of a row of the tree; the root is row 0."""
        return self.at(self.window, (TREE_LEFT, TREE_TOP + ROW_HEIGHT * row))

    def entries(self, category):
        """Names of the files of the category with this number, counted from 0, in their order, with dense positions."""
        key = self.library.values("select Category_id from Categories")[category]
        rows = self.library.values("select FC.Position || ' ' || F.Name from FileCategories FC, Files F "
                                   f"where F.File_id = FC.File_id and FC.Category_id = {key} order by FC.Position")
        self.assertEqual([int(row.split(" ", 1)[0]) for row in rows], list(range(1, len(rows) + 1)))
        return [row.split(" ", 1)[1] for row in rows]

    def wait_for_entries(self, category, names):
        wait_until(f"{names} in category {category}",
                   lambda: len(self.library.values("select 1 from Categories")) > category
                   and len(self.library.values("select 1 from FileCategories where Category_id = "
                                               f"(select min(Category_id) + {category} from Categories)")) == len(names))
        wait_until(f"the order of {names}", lambda: self.entries(category) == names)

    def drop_from_other_window(self, files, end, picture=None):
        partner = self.start_partner(files)
        if picture:
            self.drag(self.at(partner, (110, 150)), end, lambda: self.desktop.picture(picture))
        else:
            self.drag(self.at(partner, (110, 150)), end)
        return partner

    def playlist(self, name, files):
        path = os.path.join(self.home, name)
        with open(path, "w", encoding="utf-8") as file:
            file.write("#EXTM3U\n" + "".join(f"{line}\r\n" for line in files))
        return path

    def drag_with_ctrl(self, start, end):
        self.desktop.ask("xdotool", "keydown", "ctrl")
        self.drag(start, end)
        self.desktop.ask("xdotool", "keyup", "ctrl")

    def expand(self, row):
        self.desktop.click(self.window, TREE_LEFT, TREE_TOP + ROW_HEIGHT * row)
        self.desktop.key("Right")

    def test_categories_are_filled_and_put_in_order_by_dragging(self):
        _, music = self.make_music()
        files = [path for path in music if path.endswith(".mp3") and "'" not in path][:9]
        name = [os.path.basename(path) for path in files]
        self.window = self.start()

        # Two playlists from another window become categories, wherever they are dropped.
        self.drop_from_other_window([self.playlist("Alpha.m3u", files[:4])], self.at(self.window, BESIDE_NODES))
        self.wait_for_entries(0, name[:4])
        self.end_partner()
        self.drop_from_other_window([self.playlist("Beta.m3u", files[4:6])], self.place(1))
        self.wait_for_entries(1, name[4:6])
        self.end_partner()

        # Three files from there go to the end of a category (rows: root, Alpha, Beta).
        partner = self.drop_from_other_window(files[6:9], self.place(2), "tree-drag-1-running")
        self.wait_for_entries(1, name[4:9])

        # The tree shows Alpha's entries in the rows 2 to 5, and Beta in row 6.
        self.expand(1)
        self.desktop.picture("tree-drag-2-filled")
        self.drag(self.place(2), self.place(4), lambda: self.desktop.picture("tree-drag-3-inside"))
        self.wait_for_entries(0, [name[1], name[2], name[0], name[3]])
        self.drag(self.place(5), self.place(3))
        self.wait_for_entries(0, [name[1], name[3], name[2], name[0]])

        # To another category, and with Ctrl a copy.
        self.drag(self.place(2), self.place(6))
        self.wait_for_entries(1, name[4:9] + [name[1]])
        self.wait_for_entries(0, [name[3], name[2], name[0]])
        self.drag_with_ctrl(self.place(3), self.place(5))
        self.wait_for_entries(1, name[4:9] + [name[1], name[2]])
        self.wait_for_entries(0, [name[3], name[2], name[0]])

        # A row of the list, to a category and to an entry.
        self.desktop.click(self.window, *LIST_ROW_1)
        self.drag(self.at(self.window, LIST_ROW_1), self.place(5))
        wait_until("a row of the list in Beta", lambda: len(self.entries(1)) == 8)
        row = self.entries(1)[-1]
        self.drag(self.at(self.window, LIST_ROW_1), self.place(3))
        self.wait_for_entries(0, [name[3], row, name[2], name[0]])
        self.desktop.picture("tree-drag-4-rows")

        # A whole category to the other window.
        known = self.dropped()
        self.drag(self.place(1), self.at(partner, (110, 150)))
        wait_until("a category's files on the other side", lambda: len(self.dropped()) == len(known) + 4)
        self.assertEqual([os.path.basename(path) for path in self.dropped()[len(known):]], self.entries(0))
        self.assertEqual(len(self.entries(0)), 4)

        self.desktop.activate(self.window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)


if __name__ == "__main__":
    unittest.main()
