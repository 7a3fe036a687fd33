"""A keyboard and a mouse for a Wayland compositor of the wlroots family. They speak the wire protocol themselves, over one
connection that stays: a seat has a keyboard and a pointer only as long as somebody holds them, and programs behave
differently on a seat without."""
import array
import os
import socket
import struct
import time

# Evdev's buttons.
BUTTONS = {1: 0x110, 2: 0x112, 3: 0x111}

# The modifiers that every keymap has, by their bits.
MODIFIERS = {"shift": 1, "ctrl": 4, "alt": 8}

# Keys without a character, by their names here and in keymaps.
NAMED = {"shift": "Shift_L", "ctrl": "Control_L", "alt": "Alt_L",
         **{name: name for name in ("Return", "Escape", "Tab", "BackSpace", "Delete", "Home", "End", "Left", "Right", "Up",
                                    "Down", "Prior", "Next", "Menu")},
         **{f"F{number}": f"F{number}" for number in range(1, 13)}}

CHARACTERS = [chr(code) for code in range(0x20, 0x7f)] + list("äöüÄÖÜß")

FIRST_CODE = 9  # of a keymap; on the wire a key is 8 less


def keymap():
    """A keyboard with a key for each character: nobody has to know what lies on which level. Gives the text of the keymap
    and the codes of its keys."""
    symbols = [*NAMED, *CHARACTERS]
    codes = {symbol: FIRST_CODE + number for number, symbol in enumerate(symbols)}
    keycodes = "".join(f"<K{code}> = {code};\n" for code in codes.values())
    keys = "".join(f"key <K{code}> {{ [ {NAMED.get(symbol) or f'U{ord(symbol):04X}'} ] }};\n"
                   for symbol, code in codes.items())
    return (f'xkb_keymap {{\nxkb_keycodes "k" {{ minimum = 8; maximum = 255;\n{keycodes}}};\n'
            'xkb_types "t" { include "complete" };\nxkb_compatibility "c" { include "complete" };\n'
            f'xkb_symbols "s" {{\n{keys}modifier_map Shift {{ Shift_L }};\nmodifier_map Control {{ Control_L }};\n'
            'modifier_map Mod1 { Alt_L };\n};\n};\n'), codes


class Connection:
    """A client of the compositor that asks much and listens to little."""

    def __init__(self, path):
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.connect(path)
        self.next = 2  # 1 is the display
        self.read = b""
        self.globals = {}
        self.registry = self.request(1, 1, "n")
        self.synchronize()

    def request(self, target, number, shape="", *values, fd=None):
        """Sends a request; gives the id of what it makes. In the shape n is a new object, i a number of any kind, s a
        text."""
        made = None
        body = b""
        values = list(values)
        for kind in shape:
            if kind == "n":
                made = self.next
                self.next += 1
                body += struct.pack("=I", made)
            elif kind == "i":
                body += struct.pack("=I", values.pop(0) & 0xffffffff)
            else:
                text = values.pop(0).encode() + b"\0"
                body += struct.pack("=I", len(text)) + text + bytes(-len(text) % 4)
        message = struct.pack("=IHH", target, number, 8 + len(body)) + body
        rights = [(socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array("i", [fd]))] if fd is not None else []
        self.socket.sendmsg([message], rights)
        return made

    def synchronize(self):
        """Until the compositor has taken all requests."""
        done = self.request(1, 0, "n")
        while True:
            received = self.socket.recv(65536)
            if not received:
                raise AssertionError("the compositor has gone")
            self.read += received
            while len(self.read) >= 8:
                sender, number, size = struct.unpack("=IHH", self.read[:8])
                if len(self.read) < size:
                    break
                body, self.read = self.read[8:size], self.read[size:]
                if sender == 1 and number == 0:
                    raise AssertionError(f"the compositor refuses a request: {body}")
                if sender == self.registry and number == 0:
                    name, length = struct.unpack("=II", body[:8])
                    self.globals[body[8:7 + length].decode()] = name
                if sender == done:
                    return

    def bind(self, interface):
        return self.request(self.registry, 0, "isin", self.globals[interface], interface, 1)


class Hands:
    """A keyboard, a mouse and a hand for each."""

    def __init__(self, path, screen):
        self.connection = Connection(path)
        self.screen = screen
        self.held = 0
        seat = self.connection.bind("wl_seat")
        ask = self.connection.request
        self.pointer = ask(self.connection.bind("zwlr_virtual_pointer_manager_v1"), 0, "in", seat)
        self.keyboard = ask(self.connection.bind("zwp_virtual_keyboard_manager_v1"), 0, "in", seat)
        text, self.codes = keymap()
        file = os.memfd_create("keymap")
        os.write(file, text.encode() + b"\0")
        ask(self.keyboard, 0, "ii", 1, len(text.encode()) + 1, fd=file)
        os.close(file)
        self.connection.synchronize()

    def close(self):
        self.connection.socket.close()

    @staticmethod
    def now():
        return time.monotonic_ns() // 1000000 & 0xffffffff

    def move(self, x, y):
        self.connection.request(self.pointer, 1, "iiiii", self.now(), int(x), int(y), *self.screen)
        self.connection.request(self.pointer, 4)
        self.connection.synchronize()

    def button(self, down, button=1):
        self.connection.request(self.pointer, 2, "iii", self.now(), BUTTONS[button], int(down))
        self.connection.request(self.pointer, 4)
        self.connection.synchronize()

    def press(self, symbol, down):
        self.connection.request(self.keyboard, 1, "iii", self.now(), self.codes[symbol] - 8, int(down))
        if symbol in MODIFIERS:
            self.held = self.held | MODIFIERS[symbol] if down else self.held & ~MODIFIERS[symbol]
            self.connection.request(self.keyboard, 2, "iiii", self.held, 0, 0, 0)
        self.connection.synchronize()

    def key(self, chord):
        """One key, such as "Return" or "ctrl+s"."""
        symbols = chord.split("+")
        for symbol in symbols:
            self.press(symbol, True)
        for symbol in reversed(symbols):
            self.press(symbol, False)
