"""Finds places that hand a text on to somebody who would read more into it: a shell, a format, markup, an address
opener, the network. Names and tags of files are texts of strangers."""
import os
import re

import source

# What would hand a text on to an interpreter or to the network: (pattern in the code without its texts, why).
HANDED_ON = [
    (re.compile(r"(?<![\w.>:])(?:std::|::)?(?:system|popen|wordexp)\s*\("), "hands a text to a shell"),
    (re.compile(r"(?<![\w.>])(?:execlp?e?|execvp?e?|posix_spawnp?|fork|vfork)\s*\("), "starts a program beside the places for it"),
    (re.compile(r"\bQProcess\b|<QProcess>"), "starts a program beside the places for it"),
    (re.compile(r"\bstartCommand\s*\(|\bsetNativeArguments\s*\("), "takes a command line apart"),
    (re.compile(r"\b(?:QDesktopServices|openUrl|fromUserInput)\b"), "opens an address"),
    (re.compile(r"\bsetOpenExternalLinks\s*\(\s*true"), "opens an address"),
    (re.compile(r"\b(?:QNetwork\w+|QTcp\w+|QUdp\w+|QSsl\w+|QAbstractSocket|QHostInfo|QHostAddress|QWebSocket\w*|"
                r"QLocalS(?:ocket|erver))\b"), "reaches for the network"),
    (re.compile(r"(?<![\w.>])(?:::)?(?:socket|connect|getaddrinfo|gethostby\w+)\s*\(\s*(?:AF_|PF_)|\bgetaddrinfo\s*\(|"
                r"\bgethostby\w+\s*\(|\bcurl_\w+\s*\("), "reaches for the network"),
    (re.compile(r"\b(?:setHtml|insertHtml|toHtml|setMarkdown|appendHtml)\s*\(|\bQt::(?:RichText|MarkdownText|AutoText)\b"),
     "reads a text as markup"),
]
HEADERS_HANDED_ON = re.compile(r"^(?:QtNetwork/.*|QNetwork\w+|QTcp\w+|QUdp\w+|QSsl\w+|QHost\w+|QDesktopServices|QProcess|"
                               r"sys/socket\.h|netinet/.*|arpa/inet\.h|netdb\.h|curl/.*|wordexp\.h|spawn\.h)$")
# (file, what is allowed there): why.
MAY_HAND_ON = {
    ("src/adapters/qt/QtShell.cpp", "QProcess"): "starts programs whose arguments are texts, with a list of these",
    ("src/adapters/qt/StartDetached.cpp", "fork("): "starts the one whose arguments are bytes, with a list of these",
    ("src/adapters/qt/StartDetached.cpp", "execv("): "as above",
    ("src/adapters/mpv/ReadLibraryAhead.cpp", "posix_spawn("): "the system's loader, with words of the program's own",
    ("src/adapters/mpv/ReadLibraryAhead.cpp", "spawn.h"): "as above",
    ("src/adapters/qt/Application.cpp", "Qt::AutoText"): "tells every label to take no text for markup",
}
FORMATTED = re.compile(r"(?<![\w.>:])(?:std::|::)?(?P<name>v?(?:f|s|sn|d)?printf|v?syslog|scanf|sscanf|asprintf)\s*\(")
FORMAT_AT = {"printf": 0, "vprintf": 0, "scanf": 0, "fprintf": 1, "vfprintf": 1, "sprintf": 1, "vsprintf": 1, "dprintf": 1,
             "vdprintf": 1, "sscanf": 1, "asprintf": 1, "syslog": 1, "vsyslog": 1, "snprintf": 2, "vsnprintf": 2}


def arguments_of(text, plain, opening):
    """The arguments of a call whose bracket opens at `opening`, split where `plain` (without texts) has commas."""
    depth, found, first = 0, [], opening + 1
    for at in range(opening, len(plain)):
        if plain[at] in "([{":
            depth += 1
        elif plain[at] in ")]}":
            depth -= 1
        if depth == 0 or (depth == 1 and plain[at] == ","):
            found.append(text[first:at].strip())
            first = at + 1
        if depth == 0:
            break
    return found


def check(root):
    broken, met = [], set()
    files = source.walk(root, ["src"], source.CODE)
    for path in files:
        text = source.read(root, path)
        plain = source.without_texts(text)
        hits = [(plain.count("\n", 0, m.start()) + 1, m.group(0), why) for pattern, why in HANDED_ON
                for m in pattern.finditer(plain)]
        hits += [(text.count("\n", 0, text.find(name)) + 1, name, "is for the network or for starting programs")
                 for name, _quoted in source.includes(text) if HEADERS_HANDED_ON.match(name)]
        for match in FORMATTED.finditer(plain):
            given = arguments_of(text, plain, match.end() - 1)
            at = FORMAT_AT[match.group("name")]
            if len(given) <= at or not given[at].startswith('"'):
                hits.append((plain.count("\n", 0, match.start()) + 1, match.group(0) + "...", "takes a format that is no literal"))
        for line, what, why in hits:
            if (path, what) in MAY_HAND_ON:
                met.add((path, what))
            else:
                broken.append(f"{path}:{line}: \"{what}\" {why}")
    for path, what in sorted(set(MAY_HAND_ON) - met):
        if os.path.exists(os.path.join(root, path)):
            broken.append(f'{path}: "{what}" is allowed in tools/house/check.py but is no longer there')
    for path in source.walk(root, ["src"], ("CMakeLists.txt",)):
        if re.search(r"\b(?:Qt6::Network|Network\b.*\)|CURL::|WebEngine)", source.read(root, path)):
            broken.append(f"{path}: links a library for the network")
    print(f"Handing on: {len(files)} files, {len(met)} places allowed")
    return broken
