"""The tree goes to a file and comes back, by the file menu; and a fault of the tree that arises in the run ends the
program, which starts itself again and comes up with all that was written."""
import os
import sqlite3
import unittest

from desktop import ProgramTest, wait_until

FILE_MENU = (25, 12)
EXPORT, IMPORT = 4, 3  # how often Up is pressed in the file menu: from its end
TREE = "select F.Position || ',' || F.Parent || ',' || F.Filename || ',' || L.Path" \
       " from FileCategories F join Files L on L.File_id = F.File_id order by FileCategory_id"


class ExchangeTest(ProgramTest):
    def choose(self, window, ups):
        self.desktop.activate(window)
        self.desktop.click(window, *FILE_MENU)
        wait_until("the menu", self.popups)
        self.desktop.key(*["Up"] * ups, "Return")

    def answer(self, title, text):
        """Types into the file dialog, or leaves it with Escape."""
        dialog = self.desktop.window(title)
        self.desktop.activate(dialog)
        self.desktop.picture("exchange-" + ("cancelled" if text is None else os.path.basename(text)))
        if text is not None:
            self.desktop.type(text)
        self.desktop.key("Escape" if text is None else "Return")
        wait_until("the dialog to go", lambda: not self.desktop.windows(title))

    def change(self, *statements):
        """Another program's hand; the names are ASCII, so that any order without case will do."""
        connection = sqlite3.connect(self.library.path, timeout=10)
        connection.create_collation("QUAVERNET", lambda a, b: (a.lower() > b.lower()) - (a.lower() < b.lower()))
        with connection:
            for statement in statements:
                connection.execute(statement)
        connection.close()

    def write_tree(self, music):
        path = os.path.join(self.home, "Dokumente", "in.qvn")
        lines = ["#Categories", "Jazz", "Rock", "#Files"]
        lines += [f"{number},{'Jazz' if number % 2 else 'Rock'},{os.path.basename(file)},{file}"
                  for number, file in enumerate(music, 3) if "," not in file and "#" not in file]
        with open(path, "wb") as file:
            file.write("".join(line + "\n" for line in lines).encode("utf-8", "surrogateescape"))
        return path, lines[4:]

    def import_tree(self, window, path, entries):
        self.choose(window, IMPORT)
        self.answer("^Öffnen$", path)
        wait_until("the entries", lambda: len(self.library.values(TREE)) == len(entries))

    def test_a_tree_is_read_and_written_again(self):
        _, music = self.make_music()
        window = self.start()
        path, entries = self.write_tree(music)
        self.import_tree(window, path, entries)
        self.assertEqual(self.library.values(TREE), entries)
        self.desktop.picture("exchange-tree")

        target = os.path.join(self.home, "Dokumente", "out.qvn")
        self.choose(window, EXPORT)
        self.answer("^Speichern unter$", target)
        wait_until("the written file", lambda: os.path.exists(target))
        with open(target, "rb") as written, open(path, "rb") as read:
            self.assertEqual(written.read(), read.read())
        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)

    def test_the_program_starts_again_after_a_fault_of_the_tree(self):
        # The failure goes through the toolkit's frames, and what they held is lost: a leak check, where there is one,
        # knows that by whole stacks alone.
        self.desktop.environment["ASAN_OPTIONS"] = "fast_unwind_on_malloc=0"
        _, music = self.make_music()
        window = self.start()
        path, entries = self.write_tree(music)
        self.import_tree(window, path, entries)
        self.change("insert into FileCategories (File_id, Category_id, Position, Parent, Filename)"
                    " select File_id, 1, 99, 'Nowhere', Name from Files limit 1")
        kept = self.library.values(TREE)

        self.choose(window, IMPORT)
        self.answer("^Öffnen$", None)  # A cancelled import builds the tree again.
        box = self.desktop.window("^Programm wird beendet$")
        self.desktop.picture("exchange-failure")
        self.desktop.activate(box)
        self.desktop.key("Tab", "space")
        self.assertEqual(self.ended(), 1)

        again = self.desktop.window("^Quavernet - ")
        pid = int(self.desktop.ask("xdotool", "getwindowpid", again))
        self.addCleanup(self.end_stranger, pid)
        self.assertNotEqual(pid, self.program.pid)
        wait_until("the start picture", lambda: len(self.large_windows(pid)) == 2)
        wait_until("the start picture to go", lambda: len(self.large_windows(pid)) == 1)
        self.desktop.picture("exchange-again")
        self.assertEqual(self.library.values(TREE), kept)
        self.desktop.activate(again)
        self.desktop.key("ctrl+q")
        wait_until("the end of the second run", lambda: not self.runs(pid))
        self.assertEqual(self.library.values(TREE), kept)

    def test_no_fault_of_the_tree_keeps_the_program_from_coming_up(self):
        _, music = self.make_music()
        window = self.start()
        path, entries = self.write_tree(music)
        self.import_tree(window, path, entries)
        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)
        for name, statements in {
                "too-long": ["update Files set Length = 1966080"],
                "unknown-length": ["update Files set Length = null"],
                "beyond-numbers": ["update Files set Length = 9223372036854775807"],
                "negative": ["update Files set Length = -9000000000"],
                "unknown-size": ["update Files set SizeInBytes = null, Length = null"],
                "no-category": ["update FileCategories set Parent = 'Nowhere', Category_id = 77"],
                "other-parent": ["update FileCategories set Parent = 'Nowhere'"],
                "null": ["update FileCategories set Parent = null, Position = null, Filename = null"],
                "doubled": ["insert into Categories (Category) select Category from Categories"],
                "unnamed": ["insert into Categories (Category) values (null), ('')"],
                "no-file": ["update FileCategories set File_id = 12345678"]}.items():
            with self.subTest(name):
                self.change(*statements)
                window = self.start()
                self.desktop.picture("exchange-fault-" + name)
                self.assertFalse(self.desktop.windows("^Programm wird beendet$"))
                self.desktop.activate(window)
                self.desktop.key("ctrl+q")
                self.assertEqual(self.ended(), 0)

    def large_windows(self, pid):
        return [window for window in self.desktop.windows_of(pid) if min(self.desktop.geometry(window)[2:]) > 50]

    @staticmethod
    def runs(pid):
        try:
            with open(f"/proc/{pid}/stat", encoding="utf-8") as file:
                return file.read().rsplit(") ", 1)[1][0] != "Z"
        except FileNotFoundError:
            return False

    def end_stranger(self, pid):
        if self.runs(pid):
            os.kill(pid, 9)


if __name__ == "__main__":
    unittest.main()
