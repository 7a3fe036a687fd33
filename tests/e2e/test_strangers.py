"""Files of strangers: names and tags that would mean something to a shell, a statement, a format, a page or a
browser. The real program scans, lists and opens them, as always here inside a cage that kills it at the first socket
for a network."""
import http.server
import os
import re
import signal
import socket
import subprocess
import sys
import threading
import unittest

import no_network
from desktop import PROGRAM, SAMPLE_MAKER, ProgramTest, wait_until

sys.path.insert(0, os.path.dirname(SAMPLE_MAKER))
import tags  # noqa: E402

ROW_1 = (300, 118)


def hostile_texts(port, mark):
    """Each would leave a trace if somebody read more into it: a visit at the port, or the file `mark`."""
    return [f"<b>x</b><img src=http://127.0.0.1:{port}/x>", "%s%n%d %1", "'; DROP TABLE Files; --",
            "x'); Delete from Files; --", f"$(touch {mark})", f"`touch {mark}`", f"; touch {mark} ;", f"| touch {mark}",
            "&amp; &File", "two\nlines", "-rf", f"http://127.0.0.1:{port}/x", "O'Neil \"x\""]


class Visits(http.server.ThreadingHTTPServer):
    """Counts who comes by."""

    def __init__(self):
        super().__init__(("127.0.0.1", 0), http.server.BaseHTTPRequestHandler)
        self.count = 0
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def verify_request(self, _request, _client):
        self.count += 1
        return False


class CageTest(unittest.TestCase):
    def run_caged(self, code):
        return subprocess.run([sys.executable, "-c", code], preexec_fn=no_network.enter, capture_output=True).returncode

    def test_the_cage_kills_who_makes_a_socket_for_a_network(self):
        for family in no_network.FAMILIES:
            self.assertEqual(self.run_caged(f"import socket; socket.socket(socket.{family}, socket.SOCK_DGRAM)"),
                             -signal.SIGSYS, family)
        self.assertEqual(self.run_caged("import socket; socket.socket(socket.AF_UNIX)"), 0)
        self.assertNotEqual(self.run_caged("import subprocess, sys\n"
                                           "sys.exit(subprocess.call([sys.executable, '-c',"
                                           "'import socket; socket.socket()']))"), 0)


class LibrariesTest(unittest.TestCase):
    def test_the_program_is_linked_with_no_library_for_the_network(self):
        linked = subprocess.run(["ldd", PROGRAM], check=True, capture_output=True, text=True).stdout
        self.assertIn("libQt6Widgets", linked)
        self.assertEqual(re.findall(r"lib(?:Qt6Network|Qt6WebEngine\w*|curl\S*|ssl|soup\S*|nghttp2)\.so", linked), [])


class StrangersTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.visits = Visits()
        self.addCleanup(self.visits.server_close)
        self.addCleanup(self.visits.shutdown)
        self.mark = "touched-by-a-name"
        self.texts = hostile_texts(self.visits.server_address[1], self.mark)
        self.folder = os.path.join(self.home, "Musik", "Fremd")
        self.record_opener()
        self.store(ExternalPlayer=1, ScanLog=0)

    def write(self, text, name, data):
        folder = os.path.join(self.folder, text.replace("/", "|"))
        os.makedirs(folder, exist_ok=True)
        path = os.path.join(folder, name.replace("/", "|"))
        with open(path, "wb") as file:
            file.write(data)
        return path

    def encoded(self, *command):
        wave = os.path.join(self.home, "silence.wav")
        if not os.path.exists(wave):
            subprocess.run(["sox", "-n", "-r", "44100", "-b", "16", "-c", "2", wave, "trim", "0", "1"], check=True)
        return subprocess.run(command, cwd=self.home, check=True, capture_output=True).stdout

    def make_strangers(self):
        mp3 = self.encoded("lame", "--quiet", "silence.wav", "-")
        paths = []
        for text in self.texts:
            fields = {"title": text, "artist": text, "album": text, "year": "1999", "comment": text, "genre": "Rock"}
            data = tags.id3v2(4, fields, 3) + mp3 + tags.id3v1(text, text, text, "1999", text, 17)
            paths.append(self.write(text, text + ".mp3", data))
            paths.append(self.write(text, text + ".wav", self.encoded("cat", "silence.wav")))
            ogg = self.encoded("oggenc", "-Q", "-t", text, "-a", text, "-l", text, "-c", "COMMENT=" + text,
                               "-o", "-", "silence.wav")
            paths.append(self.write(text, text + ".ogg", ogg))
        forged = self.encoded("oggenc", "-Q", "-c", "X=Nominal bitrate: 1 or 1=1", "-o", "-", "silence.wav")
        self.write("forged", "forged.ogg", forged)
        return sorted(paths)

    def test_names_and_tags_of_strangers_are_texts_and_nothing_else(self):
        paths = self.make_strangers()
        window = self.start()
        self.scan(window, self.folder)
        self.await_scan(window, len(paths))
        self.assertEqual(sorted(self.library.files()), paths)
        for table, column in (("Titel", "Name"), ("Interpret", "Interpret")):
            self.assertLessEqual(set(self.texts), set(self.library.values(f"select {column} from {table}")))
        # A scan takes albums from Ogg files, whose reader tells the first line of a comment, and from tags of version
        # 1, which these have not.
        self.assertLessEqual({text for text in self.texts if "\n" not in text},
                             set(self.library.values("select Name from Albums")))
        self.desktop.picture("strangers-list")

        self.desktop.activate(window)
        self.desktop.click(window, *ROW_1)
        self.desktop.key("Home")
        for played in range(1, 13):
            self.desktop.key("Return", "Down")
            wait_until("the desktop's opener", lambda: len(self.opener_calls()) >= played)
        self.desktop.picture("strangers-played")
        for arguments in self.opener_calls():
            self.assertEqual(len(arguments), 1)
            self.assertIn(arguments[0], paths)
        wait_until("the counted plays", lambda: self.library.values("select sum(Hits) from Files") == [12])

        self.desktop.key("F1")
        page = self.desktop.window("^Hilfe zu Quavernet$")
        self.desktop.activate(page)
        self.desktop.key("ctrl+f")
        self.desktop.type(self.texts[0])
        self.desktop.key("Return")
        self.desktop.key("Escape")
        self.desktop.activate(window)
        self.desktop.key("ctrl+q")
        self.assertEqual(self.ended(), 0)
        self.assertEqual(self.visits.count, 0)
        left = [name for base, folders, names in os.walk(self.home) for name in folders + names]
        self.assertNotIn(self.mark, left)
        self.assertFalse(os.path.exists(os.path.join(os.getcwd(), self.mark)))

    def test_the_visits_are_counted(self):
        with socket.create_connection(self.visits.server_address, 10) as visitor:
            visitor.sendall(b"GET / HTTP/1.0\r\n\r\n")
            wait_until("the visit", lambda: self.visits.count == 1)


if __name__ == "__main__":
    unittest.main()
