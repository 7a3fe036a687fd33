"""Finds texts that a user would read and that are in the code instead of in the string tables.

Five places are looked at: literals in calls that show something, QStringLiterals that are no names, literals with
letters beyond ASCII, literals in words wherever texts are made for a reader, and the strings of .ui files. Single
words that are handed on before they are shown are out of reach.
"""
import os
import re
import xml.etree.ElementTree as ElementTree

import source

TABLES = "src/resources/"

# (file, text): why it may be there.
ALLOWED = {
    ("src/scanner/ScanPathSettings.cpp", "Wählen Sie einen Ordner"): "this dialog is German in every language",
    ("src/app/CommandRegistry.cpp", " is in no menu and on no toolbar"): "a developer's slip; the program does not start",
    ("src/app/CommandRegistry.cpp", " is registered twice"): "a developer's slip; the program does not start",
    ("src/app/LoadResString.cpp", "Error : No Local Data"): "the language has no texts",
    ("src/app/LoadResString.cpp", "Not found:"): "the language has no such text",
    ("src/app/Registry.h", "Greyfinch Labs\\Quavernet"): "the maker's name, part of the settings' place",
    ("src/browser/FilterLists.cpp", "Kein Album..."): "the name of a row of the library, in whatever language",
    ("src/browser/FilterLists.cpp", "No album..."): "the name of a row of the library, in whatever language",
    ("src/browser/ListQuery.cpp", " MB"): "a unit",
    ("src/browser/ListRecord.cpp", " min"): "a unit",
    ("src/browser/ListTexts.cpp", " MB)"): "a unit",
    ("src/editing/FileDetails.cpp", " MB"): "a unit",
    ("src/editing/FileDetails.cpp", " min"): "a unit",
    ("src/editing/SaveDetails.cpp", "AlbumID:"): "a part of a key",
    ("src/editing/SaveDetails.cpp", "InterID:"): "a part of a key",
    ("src/extras/Covers.cpp", "AlbumID:"): "a part of a key",
    ("src/extras/Covers.cpp", "InterID:"): "a part of a key",
    ("src/editing/frmDetails.cpp", "ID3v1"): "the name of a kind of tag",
    ("src/editing/frmDetails.cpp", "ID3v2"): "the name of a kind of tag",
    ("src/extras/Chart.cpp", "Die Datei konnte nicht gefunden werden!"): "this box is German in every language",
    ("src/extras/Chart.cpp", "Öffnen nicht möglich"): "this box is German in every language",
    ("src/mainwindow/LocateDatabase.cpp", "Quavernet Database/"): "a folder",
    ("src/mainwindow/MainStatusBar.cpp", "100000 Interpreten"): "a measure, never shown",
    ("src/mainwindow/MainStatusBar.cpp", "100000 Tracks"): "a measure, never shown",
    ("src/mainwindow/MainStatusBar.cpp", "100000 Albums"): "a measure, never shown",
    ("src/mainwindow/MainStatusBar.cpp", "verbl.: 00:00:00"): "a measure, never shown",
    ("src/mainwindow/MainStatusBar.cpp", "Time: 00:00:00"): "a measure, never shown",
    ("src/playback/QueueStart.cpp", " bit"): "a unit",
    ("src/playback/QueueStart.cpp", " min"): "a unit",
    ("src/scanner/FolderOrder.h", "System Volume Information"): "a folder",
    ("src/scanner/OggBatches.cpp", "verbl.: "): "the Ogg pass is German in every language",
    ("src/scanner/OggBatches.cpp", "Zeit: "): "the Ogg pass is German in every language",
    ("src/scanner/SavedLog.cpp", " - Saved... "): "the line of a stored file is the same in every language",
    ("src/scanner/frmScanLog.ui", "MB"): "a unit",
    ("src/app/IdleTitle.cpp", "Quavernet - "): "the product's name",
    ("src/scanner/ProgressStep.cpp", "Quavernet - "): "the product's name",
    ("src/mainwindow/frmAbout.cpp", "Quavernet"): "the product's name",
    ("src/mainwindow/frmAbout.ui", "Quavernet"): "the product's name",
    ("src/help/HelpBrowser.cpp", " a { color: %1; } table { border-color: %2; } "): "rules of a style sheet",
    ("src/mainwindow/frmSplash.cpp", "QDialog#frmSplash { background: %1; border: 1px solid %2; } "): "a rule of a style sheet",
    ("src/mainwindow/frmSplash.ui", "Quavernet"): "the product's name",
    ("src/mainwindow/frmSplash.ui", "Greyfinch Labs"): "the maker's name",
    ("src/mainwindow/frmSplash.ui", "mp3 · ogg-Vorbis · wav"): "names of formats",
    ("src/adapters/qt/Application.cpp", "Quavernet"): "the product's name",
    ("src/adapters/qt/Application.cpp", "Greyfinch Labs"): "the maker's name, part of the settings' place",
    ("src/adapters/qt/DialogLanguage.cpp", "QuavernetDialogLanguage"): "an object's name",
}

# Calls and constructors whose texts come before a user's eyes.
SHOWN = re.compile(
    r"\b(?:set(?:Text|WindowTitle|Title|ToolTip|StatusTip|WhatsThis|PlaceholderText|InformativeText|DetailedText|"
    r"LabelText|ButtonText|HeaderLabels?|HorizontalHeaderLabels|TabText|ItemText|Prefix|Suffix|SpecialValueText|"
    r"AccessibleName|AccessibleDescription)|add(?:Item|Items|Tab|Action|Menu|Button|Row)|insert(?:Item|Tab)|"
    r"showMessage|drawText|get(?:ExistingDirectory|OpenFileName|OpenFileNames|SaveFileName|Text|Item)|"
    r"(?<=QMessageBox::)(?:information|warning|critical|question|about)|tr|translate|"
    r"Q(?:Label|PushButton|ToolButton|CheckBox|RadioButton|GroupBox|Action|Menu|MessageBox|FileDialog|"
    r"ProgressDialog|InputDialog)|"
    r"(?<=->)Show|(?<=\.)Show|SetText|SetTitle|SetPanel|SetScanningPanel|AddLine|showStatus|BrowseForFolder)\s*(?:\w+\s*)?\(")

# Calls whose literals are names: of settings, controls and pictures.
NAMING = re.compile(r"\b(?:GetSettingValue|SaveSettingValue|Setting|LoadResString|setObjectName|findChild(?:ren)?"
                    r"(?:<[^<>]*>)?|Picture)\s*\(")
CONTROL_NAME = re.compile(r"^(?:cmd|cbo|chk|lbl|txt|opt|img|lst|grd|mnu|frm|pic)(?:[A-Z0-9]\w*)?$")
# Paths, formats, commands: in one piece, and with a sign or without a capital followed by a small letter.
TECHNICAL = re.compile(r"^[^\s]*[./:_%&=-][^\s]*$|^[a-z][A-Za-z0-9]*$|^[A-Z0-9]+$")

TOKEN = re.compile(r'(?P<comment>//(?:[^\n\\]|\\.)*|/\*.*?\*/)|(?P<raw>R"(?P<tag>[^\s()\\]{0,16})\((?P<body>.*?)\)(?P=tag)")'
                   r'|(?P<text>"(?:[^"\\\n]|\\.)*")|(?P<char>(?<![0-9a-fA-F])\'(?:[^\'\\\n]|\\.)+\')', re.S)
LETTER = re.compile(r"[^\W\d_]")

# Rooms that make texts for a reader. Adapters and the inspection deal in the words of formats and tools.
SPEAKING = re.compile(r"^src/(?:app|help|widgets|library|scanner|browser|tree|playback|editing|extras|output|mainwindow)/")
# A word with a blank beside it, or a word at the end of a sentence.
WORDS = re.compile(r"[^\W\d_]{2,}[.:!?,]* |(?: |^)[^\W\d_]{3,}(?:\.\.\.|[!?:])$| [^\W\d_]{2,}")
STATEMENT = re.compile(r"\b(?:select|insert into|delete from|group by|order by|update \w+ set|values \()|=|_id\b|\w\.\w"
                       r"|^[', )%]*(?:and|or|where|from|on|like|as|set|union|limit)\b|%|^['(]|pragma|vacuum", re.I)
# The run-time's own failures are named in its own words, and a folder is not a text.
FAILING = re.compile(r"\b(?:RuntimeError|SettingError|Usage|printf|fprintf|FolderNamed)\s*\(")


class Text:
    """One literal of a source: where it begins and ends, its line and what it says."""

    def __init__(self, match, code):
        self.first, self.last = match.span()
        self.line = code.count("\n", 0, self.first) + 1
        says = match.group("body") if match.group("raw") else match.group("text")[1:-1]
        self.says = re.sub(r'\\(["\\])', r"\1", re.sub(r"\\[nrt0]", " ", says))
        before = code[:self.first].rstrip()
        self.is_qt = bool(re.search(r"(?:QStringLiteral|QLatin1String|QLatin1StringView|QString::fromUtf8|QString)\s*\($"
                                    r"|\bu(?:8)?$", before)) or code[self.first - 1:self.first] == "u"


def scan(code):
    """The literals, and the code with comments and literals blanked out, so that brackets can be counted."""
    texts, bare = [], list(code)
    for match in TOKEN.finditer(code):
        if match.group("text") or match.group("raw"):
            texts.append(Text(match, code))
        for at in range(*match.span()):
            if bare[at] != "\n":
                bare[at] = " "
    return texts, "".join(bare)


def closing(bare, opening):
    """Where the bracket that opens at `opening` closes."""
    depth = 0
    for at in range(opening, len(bare)):
        depth += {"(": 1, ")": -1}.get(bare[at], 0)
        if depth == 0:
            return at
    return len(bare)


def spans(pattern, bare):
    return [(match.end() - 1, closing(bare, match.end() - 1)) for match in pattern.finditer(bare)]


def within(text, places):
    return any(first < text.first < last for first, last in places)


def in_code(code, speaking=False):
    """(line, text, why) of each literal that breaks the rule."""
    texts, bare = scan(code)
    shown, naming, failing = spans(SHOWN, bare), spans(NAMING, bare), spans(FAILING, bare)
    includes = {number for number, row in enumerate(code.splitlines(), 1) if re.match(r"\s*#\s*include", row)}
    for text in texts:
        if not LETTER.search(text.says) or text.line in includes or within(text, naming):
            continue
        if re.search(r"[^\W\d_]", re.sub(r"[\x00-\x7F]", "", text.says)):
            yield text.line, text.says, "has letters beyond ASCII"
        elif CONTROL_NAME.match(text.says):
            continue
        elif within(text, shown):
            yield text.line, text.says, "is shown"
        elif text.is_qt and not TECHNICAL.match(text.says):
            yield text.line, text.says, "looks like a text in words"
        elif speaking and WORDS.search(text.says) and not STATEMENT.search(text.says) and not within(text, failing):
            yield text.line, text.says, "looks like a text in words"


NAMES_IN_FORMS = {"objectName", "styleSheet", "inputMask", "displayFormat", "iconName"}


def in_form(code):
    """(line, text, why) of each string of a .ui file with letters."""
    root = ElementTree.fromstring(code)
    for holder in root.iter():
        if holder.get("name") in NAMES_IN_FORMS:
            continue
        for child in holder:
            if child.tag == "string" and child.text and LETTER.search(child.text):
                at = code.find(">" + child.text + "<")
                yield code.count("\n", 0, max(at, 0)) + 1, child.text, "is shown"


def check(root):
    broken, met, files = [], set(), 0
    for path in source.walk(root, ["src"], source.CODE + (".ui",)):
        if path.startswith(TABLES):
            continue
        files += 1
        code = source.read(root, path)
        for line, says, why in in_form(code) if path.endswith(".ui") else in_code(code, SPEAKING.match(path)):
            if (path, says) in ALLOWED:
                met.add((path, says))
            else:
                broken.append(f'{path}:{line}: "{says}" {why}; it belongs into both string tables')
    for path, says in sorted(set(ALLOWED) - met):
        if os.path.exists(os.path.join(root, path)):
            broken.append(f'{path}: "{says}" is allowed in tools/house/texts.py but is no longer there')
    print(f"Texts: {files} files, {len(met)} literals allowed")
    return broken
