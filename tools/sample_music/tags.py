"""Writes ID3 tags byte by byte, in every version that files carry, so that samples do not depend on a tagger."""
import struct


def id3v1(title, artist, album, year, comment, genre):
    def fixed(text, width):
        return text.encode("cp1252", "replace")[:width].ljust(width, b"\0")

    return b"TAG" + fixed(title, 30) + fixed(artist, 30) + fixed(album, 30) + fixed(year, 4) + fixed(comment, 30) + \
        bytes([genre])


def syncsafe(size):
    return bytes([size >> 21 & 127, size >> 14 & 127, size >> 7 & 127, size & 127])


def _text(text, encoding):
    if encoding == 0:
        return text.encode("cp1252", "replace")
    if encoding == 1:
        return text.encode("utf-16")
    return text.encode("utf-8")


_NAMES = {
    2: {"title": "TT2", "artist": "TP1", "album": "TAL", "year": "TYE", "genre": "TCO", "comment": "COM"},
    3: {"title": "TIT2", "artist": "TPE1", "album": "TALB", "year": "TYER", "genre": "TCON", "comment": "COMM"},
    4: {"title": "TIT2", "artist": "TPE1", "album": "TALB", "year": "TDRC", "genre": "TCON", "comment": "COMM"},
}


def id3v2(major, fields, encoding=0, padding=64):
    """A tag of version 2.<major>; encoding 0 Windows-1252, 1 UTF-16 with a mark, 3 UTF-8 (version 4 only)."""
    frames = b""
    for key, text in fields.items():
        name = _NAMES[major][key].encode()
        body = bytes([encoding])
        if key == "comment":
            body += b"deu" + (b"\xff\xfe\0\0" if encoding == 1 else b"\0")
        body += _text(text, encoding)
        if major == 2:
            frames += name + struct.pack(">I", len(body))[1:] + body
        elif major == 3:
            frames += name + struct.pack(">I", len(body)) + b"\0\0" + body
        else:
            frames += name + syncsafe(len(body)) + b"\0\0" + body
    frames += bytes(padding)
    return b"ID3" + bytes([major, 0, 0]) + syncsafe(len(frames)) + frames
