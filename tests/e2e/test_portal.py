"""File dialogs by the desktop's portal, where the desktop asks for it: its answers are taken, and where there is none the
toolkit's own dialog comes up."""
import os
import select
import signal
import subprocess
import unittest

from desktop import ProgramTest, wait_until

FILE_MENU = (25, 12)
EXPORT = 4  # how often Up is pressed in the file menu: from its end
PORTAL = os.path.join(os.path.dirname(os.path.abspath(__file__)), "portal.py")

# A bus on which nothing is but what comes to it: the machine's own portal is not started.
BUS = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen>
<policy context="default"><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/></policy>
</busconfig>
"""


class PortalTest(ProgramTest):
    def setUp(self):
        super().setUp()
        configuration = os.path.join(self.home, ".runtime", "bus.conf")
        with open(configuration, "w", encoding="utf-8") as file:
            file.write(BUS)
        bus = self.begin("dbus-daemon", f"--config-file={configuration}", "--nofork", "--print-address=1")
        self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
        self.desktop.environment["QT_QPA_PLATFORMTHEME"] = "xdgdesktopportal"
        self.folder = os.path.join(self.home, "Musik", "Lieder")
        os.makedirs(self.folder)
        subprocess.run(["sox", "-n", "-r", "8000", os.path.join(self.folder, "a.wav"), "synth", "1", "sine", "440"], check=True)

    def begin(self, *command):
        process = subprocess.Popen(command, env=self.desktop.environment, stdout=subprocess.PIPE,
                                   stderr=subprocess.DEVNULL, text=True)
        self.addCleanup(process.wait)
        self.addCleanup(process.stdout.close)
        self.addCleanup(process.kill)
        return process

    def begin_portal(self, *words):
        self.portal = self.begin(PORTAL, *words)
        self.assertEqual(self.told(), "there")

    def told(self):
        """The portal's next line."""
        wait_until("a word of the portal", lambda: select.select([self.portal.stdout], [], [], 0)[0])
        return self.portal.stdout.readline().strip()

    def make_category(self, window):
        """Of an empty tree nothing is written."""
        self.desktop.activate(self.desktop.window_after_key(window, "ctrl+b", "^Baum Verwaltung$"))
        self.desktop.key("Return")
        self.desktop.type("Abend")
        self.desktop.key("Return")
        wait_until("the category", lambda: self.library.values("select Category from Categories") == ["Abend"])
        self.desktop.key("Escape")
        wait_until("the dialog to go", lambda: not self.desktop.windows("^Baum Verwaltung$"))
        self.desktop.activate(window)

    def end(self):
        self.program.send_signal(signal.SIGTERM)
        self.assertEqual(self.ended(), 0)

    def test_a_folder_and_a_file_are_those_of_the_portal(self):
        self.store(ScanLog=0)
        self.begin_portal("answer", self.folder)
        window = self.start()
        self.desktop.key("ctrl+s")
        self.assertEqual(self.told(), "OpenFile Wählen Sie einen Ordner")
        self.await_scan(window, 1)
        self.assertEqual(self.library.files(), [os.path.join(self.folder, "a.wav")])
        self.end()
        self.assertEqual(self.settings()["LastFolder"], self.folder)

    def test_a_file_to_write_is_the_portals(self):
        target = os.path.join(self.home, "Dokumente", "Baum.qvn")
        self.begin_portal("answer", target)
        window = self.start()
        self.make_category(window)
        self.desktop.click(window, *FILE_MENU)
        wait_until("the menu", self.popups)
        self.desktop.key(*["Up"] * EXPORT, "Return")
        self.assertEqual(self.told().split()[0], "SaveFile")
        wait_until("the exchange file", lambda: os.path.exists(target))
        with open(target, encoding="utf-8") as file:
            self.assertIn("Abend", file.read().split())
        self.end()

    def test_a_dialog_that_the_portal_cancels_changes_nothing(self):
        self.begin_portal("cancel")
        window = self.start()
        self.desktop.key("ctrl+s")
        self.assertEqual(self.told(), "OpenFile Wählen Sie einen Ordner")
        # The next one comes only when the first has gone.
        self.desktop.window_after_key(window, "ctrl+p", "^Quavernet Player$")
        self.assertEqual(self.library.files(), [])
        self.end()

    def test_a_dialog_of_the_portal_goes_with_the_program(self):
        self.begin_portal("wait")
        self.start()
        self.desktop.key("ctrl+s")
        self.assertEqual(self.told(), "OpenFile Wählen Sie einen Ordner")
        self.end()
        self.assertEqual(self.settings()["WindowWidth"], "15000")
        self.assertFalse(os.path.exists(self.library.path + "-wal"))

    def test_without_a_portal_the_toolkits_own_dialog_comes_up(self):
        self.store(ScanLog=0)
        window = self.start()
        self.scan(window, self.folder)
        self.await_scan(window, 1)
        self.end()


if __name__ == "__main__":
    unittest.main()
