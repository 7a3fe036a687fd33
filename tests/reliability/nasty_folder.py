"""Makes a folder that holds everything a scan can stumble over, and tells what has to become of each entry.

Paths are bytes. `good` maps a path to what its row must hold; `skipped` maps a path to the reason (text number) in
the scan log; what is in neither must leave no trace.
"""
import os
import shutil
import socket
import struct
import subprocess

NO_ACCESS, MISSING, CIRCLE, NO_PLAIN_FILE, UNREADABLE = 751, 752, 753, 754, 755
GIGABYTE = 1 << 30
LONG = b"n" * 251 + b".mp3"  # 255 bytes, the file systems' limit

NAMES = [
    b"line\nbreak", b"carriage\rreturn", b"tab\there", b"o'clock", b"two''quotes", b'double"quote', b"50%", b"%s%n%x",
    b"%00", b"a_b%c", b"<b>bold", b"<img src=x>", b"&amp;", b"-rf", b"--help", b"semi;colon", b"$(reboot)", b"`id`",
    b"back\\slash", b"[Position]", b"star*", b"quest?ion", b"\xff\xfe\xfd", b"cut\xc3", b"\xed\xa0\x80", b"\xc0\xaf",
    b"\x01\x02\x7f", b"\xe2\x80\xaertl 3pm", b"\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d", b"e\xcc\x81", b"\xc3\xa9", b" blank ",
    b"...", b".hidden", b"\xf0\x9f\x98\x80", b"#hash", b"a:b", b"con", b"title=x", b"Processing file", b"null\xe2\x90\x80",
    b"'; drop table Files; --",
]


class NastyFolder:
    def __init__(self, root, audio, devices=None):
        """`audio` gives bytes and row of a real file of each format; `devices` is a folder of device files."""
        self.root = os.fsencode(root)
        self.devices = os.fsencode(devices) if devices else None
        self.audio = audio
        self.good, self.skipped, self.noise = {}, {}, 0
        os.makedirs(self.root)

    def at(self, *names):
        return os.path.join(self.root, *names)

    def folder(self, *names):
        os.makedirs(self.at(*names), exist_ok=True)
        return self.at(*names)

    def put(self, path, data, **row):
        with open(path, "wb") as file:
            file.write(data)
        self.good[path] = dict(name=os.path.basename(path), **row)

    def put_formats(self, folder, stem):
        """The three formats under one stem; their rows hold what the real files tell."""
        for ending, fields in self.audio.items():
            self.put(os.path.join(folder, stem + b"." + ending), fields["data"], **fields["row"])

    def fill(self, entries, large):
        self.names()
        self.links()
        self.no_files()
        self.no_rights()
        self.lengths()
        self.damaged()
        self.many_entries(entries)
        self.deep()
        self.large_files(5 * GIGABYTE if large else 300 << 20)
        self.large_tags(200 << 20 if large else 20 << 20)

    def names(self):
        folder = self.folder(b"names")
        for name in NAMES:
            self.put_formats(folder, name)
        for name in (b"dir\nbreak", b"dir'quote", b"dir\xff\xfe", b"<i>dir", b"-dir", b"dir%d", b" "):
            self.put_formats(self.folder(b"names", name), b"song")

    def links(self):
        folder = self.folder(b"links")
        self.put_formats(folder, b"real")
        for name, target in ((b"nowhere.mp3", b"missing.mp3"), (b"nowhere.ogg", b"/missing/x.ogg"), (b"nowhere", b"gone/")):
            os.symlink(target, os.path.join(folder, name))
            self.skipped[os.path.join(folder, name)] = MISSING
        for name, target in ((b"one.mp3", b"two.mp3"), (b"two.mp3", b"one.mp3"), (b"self.wav", b"self.wav")):
            os.symlink(target, os.path.join(folder, name))
            self.skipped[os.path.join(folder, name)] = CIRCLE
        os.symlink(b"real.mp3", os.path.join(folder, b"linked.mp3"))
        self.good[os.path.join(folder, b"linked.mp3")] = dict(name=b"linked.mp3", **self.audio[b"mp3"]["row"])
        # Folders in circles: none is entered twice.
        inner = self.folder(b"links", b"inner")
        os.symlink(b"..", os.path.join(inner, b"up"))
        os.symlink(b".", os.path.join(inner, b"here"))
        os.symlink(self.root, os.path.join(inner, b"root"))
        # Links to files of the kernel, which are plain but read for ever, or not at all, or change.
        for name, target in ((b"memory.mp3", b"/proc/self/mem"), (b"processor.ogg", b"/proc/cpuinfo"),
                             (b"events.mp3", b"/sys/kernel/uevent_seqnum"), (b"kernel", b"/proc"), (b"zero.wav", b"/dev/zero")):
            if os.path.exists(target):
                os.symlink(target, os.path.join(folder, name))
                self.skipped[os.path.join(folder, name)] = NO_PLAIN_FILE

    def no_files(self):
        folder = self.folder(b"no files")
        for ending in self.audio:
            os.mkfifo(os.path.join(folder, b"pipe." + ending))
            self.skipped[os.path.join(folder, b"pipe." + ending)] = NO_PLAIN_FILE
            with socket.socket(socket.AF_UNIX) as one:
                here = os.getcwd()
                os.chdir(folder)  # The name of a socket is short.
                one.bind(b"socket." + ending)
                os.chdir(here)
            self.skipped[os.path.join(folder, b"socket." + ending)] = NO_PLAIN_FILE
            os.mkdir(os.path.join(folder, b"folder." + ending))
        for name in os.listdir(self.devices) if self.devices else ():
            os.rename(os.path.join(self.devices, name), os.path.join(folder, name))
            self.skipped[os.path.join(folder, name)] = NO_PLAIN_FILE

    def no_rights(self):
        folder = self.folder(b"no rights")
        for ending, fields in self.audio.items():
            path = os.path.join(folder, b"closed." + ending)
            with open(path, "wb") as file:
                file.write(fields["data"])
            os.chmod(path, 0)
            self.skipped[path] = NO_ACCESS
        for name, mode in ((b"closed", 0), (b"no list", 0o311), (b"no entry", 0o644)):
            inner = self.folder(b"no rights", name)
            with open(os.path.join(inner, b"inside.mp3"), "wb") as file:
                file.write(self.audio[b"mp3"]["data"])
            os.chmod(inner, mode)
            self.skipped[os.path.join(inner, b"inside.mp3") if name == b"no entry" else inner] = NO_ACCESS

    def lengths(self):
        folder = self.folder(b"lengths")
        self.put(os.path.join(folder, LONG), self.audio[b"mp3"]["data"], **self.audio[b"mp3"]["row"])
        wide = b"\xe2\x82\xac" * 83 + b"ab.ogg"  # 255 bytes, 89 characters
        self.put(os.path.join(folder, wide), self.audio[b"ogg"]["data"], **self.audio[b"ogg"]["row"])

    def damaged(self):
        """Files that are no music in spite of their names: MP3 and WAV still get a row, Ogg does not."""
        folder = self.folder(b"damaged")
        pieces = {b"empty": b"", b"one byte": b"\xff", b"zeros": bytes(5000), b"high": b"\xff" * 5000, b"text": b"TAG" * 300,
                  b"tag only": b"ID3\3\0\0\0\0\0\0", b"tag cut": b"ID3\4\0\0\x7f\x7f\x7f\x7f" + b"TIT2\xff\xff\xff\xff\0\0",
                  b"riff": b"RIFF\xff\xff\xff\xffWAVEfmt \xff\xff\xff\xff", b"ogg": b"OggS\0\2" + bytes(21) + b"\xff" * 300}
        for name, data in pieces.items():
            for ending in self.audio:
                path = os.path.join(folder, name + b"." + ending)
                if ending == b"ogg":
                    with open(path, "wb") as file:
                        file.write(data)
                    self.skipped[path] = UNREADABLE
                else:
                    self.put(path, data)
        for ending, fields in self.audio.items():
            path = os.path.join(folder, b"half." + ending)
            self.put(path, fields["data"][:len(fields["data"]) // 2])

    def many_entries(self, count):
        folder = self.folder(b"many")
        for number in range(count):
            with open(os.path.join(folder, b"%05d.%s" % (number, b"txt" if number % 100 else b"wav")), "wb"):
                pass
            if number % 100 == 0:
                path = os.path.join(folder, b"%05d.wav" % number)
                self.good[path] = dict(name=os.path.basename(path), length=b"0", quality=b"0", size=b"0")
        self.noise += count - len(range(0, count, 100))

    def deep(self):
        """200 levels; on the way down the path passes the 4096 bytes of one system call, and its end the 40,000."""
        at = os.open(self.folder(b"deep"), os.O_RDONLY | os.O_DIRECTORY)
        path = self.at(b"deep")
        for level in range(200):
            name = b"level %03d " % level + b"x" * 190
            os.mkdir(name, dir_fd=at)
            below = os.open(name, os.O_RDONLY | os.O_DIRECTORY, dir_fd=at)
            os.close(at)
            at, path = below, path + b"/" + name
            if level in (10, 30, 199):
                for ending, fields in self.audio.items():
                    with open(os.open(b"deep." + ending, os.O_CREAT | os.O_WRONLY, 0o644, dir_fd=at), "wb") as file:
                        file.write(fields["data"])
                    self.good[path + b"/deep." + ending] = dict(name=b"deep." + ending, **fields["row"])
        os.close(at)

    def large_files(self, size):
        """Sparse: the real file, and nothing but a hole after it."""
        folder = self.folder(b"large")
        for ending, fields in self.audio.items():
            path = os.path.join(folder, b"large." + ending)
            row = {name: fields["row"][name] for name in ("title", "quality") if name in fields["row"]}
            if ending == b"mp3":
                row = dict(quality=fields["row"]["quality"], title=b"large")  # The tag at the end is gone.
            self.put(path, fields["data"], **row)
            os.truncate(path, size)
            empty = os.path.join(folder, b"hole." + ending)
            with open(empty, "wb"):
                os.truncate(empty, size)
            if ending == b"ogg":
                self.skipped[empty] = UNREADABLE
            else:
                self.good[empty] = dict(name=os.path.basename(empty), size=str(size).encode(), quality=b"0")

    def large_tags(self, size):
        folder = self.folder(b"large tags")
        sync = bytes([size >> 21 & 127, size >> 14 & 127, size >> 7 & 127, size & 127])
        title = b"TIT2" + struct.pack(">I", 6) + b"\0\0\0Riese"
        sound = self.audio[b"mp3"]["data"]
        for name, flags, frames in (
                (b"padding", 0, title),
                (b"picture", 0, b"APIC" + struct.pack(">I", size - 1000) + b"\0\0\0" + b"image/jpeg\0\3\0"),
                (b"not synchronised", 0x80, title)):
            path = os.path.join(folder, name + b".mp3")
            with open(path, "wb") as file:
                file.write(b"ID3\3\0" + bytes([flags]) + sync + frames)
                if name == b"picture":
                    file.seek(10 + 10 + size - 1000)
                    file.write(title)
                file.seek(10 + size)
                file.write(sound)
            self.good[path] = dict(name=os.path.basename(path), title=b"Riese")
        self.large_comments(folder, size)

    def large_comments(self, folder, size):
        plain = os.path.join(folder, b"plain.ogg")
        self.put(plain, self.audio[b"ogg"]["data"], **self.audio[b"ogg"]["row"])
        for name, key, length in ((b"long title", b"TITLE", size // 10), (b"long picture", b"METADATA_BLOCK_PICTURE", size // 10),
                                  (b"too long", b"COMMENT", 80 << 20)):
            path, comments = os.path.join(folder, name + b".ogg"), os.path.join(folder, b"comments.txt")
            with open(comments, "wb") as file:
                file.write(b"ARTIST=Riese\n" + key + b"=" + b"x" * length + b"\n")
            subprocess.run(["vorbiscomment", "-R", "-w", "-c", comments, plain, path], check=True)
            os.remove(comments)
            if name == b"too long":
                self.skipped[path] = UNREADABLE
            else:
                self.good[path] = dict(name=os.path.basename(path), performer=b"Riese")

    def remove(self):
        """Gives the rights back first."""
        subprocess.run(["chmod", "-R", "u+rwx", self.root], check=False, stderr=subprocess.DEVNULL)
        subprocess.run(["rm", "-rf", self.root], check=False)
        shutil.rmtree(self.root, ignore_errors=True)
