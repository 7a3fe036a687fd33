"""What users read, in both languages, and which of them the program speaks."""
import os

GERMAN, ENGLISH = "GER", "ENG"

TEXTS = {
    # Heads of notes.
    "done_one": ("Eine MP3-Datei ist fertig", "One MP3 file is ready"),
    "done": ("{count} MP3-Dateien sind fertig", "{count} MP3 files are ready"),
    "failed": ("Das Konvertieren ist fehlgeschlagen", "The conversion has failed"),
    "partly": ("Nicht alles wurde konvertiert", "Not everything was converted"),
    "more": ("… und {count} weitere", "… and {count} more"),
    # The command as a whole.
    "unknown_switch": ("Den Schalter {switch} gibt es nicht.", "There is no switch {switch}."),
    "no_folder_named": ("-outdir= nennt keinen Ordner.", "-outdir= names no folder."),
    "no_files": ("Es ist keine Datei angegeben.", "No file is given."),
    "lame_missing": ("Das Programm lame fehlt. Bitte installieren Sie das Paket lame.",
                     "The program lame is missing. Please install the package lame."),
    # About one file.
    "missing": ("Die Datei oder der Ordner ist nicht da.", "The file or folder is not there."),
    "no_right": ("Dafür fehlt das Recht.", "This is not permitted."),
    "no_space": ("Auf dem Datenträger ist kein Platz mehr.", "There is no space left on the disk."),
    "system": ("Das System meldet: {reason}", "The system says: {reason}"),
    "unexpected": ("Damit hat niemand gerechnet: {reason}", "Nobody expected this: {reason}"),
    "no_wave": ("Das ist keine WAV-Datei.", "This is not a WAV file."),
    "no_sound": ("Die WAV-Datei enthält keinen Ton.", "The WAV file holds no sound."),
    "format": ("Diese Art von WAV-Datei kann nicht konvertiert werden ({format}).",
               "This kind of WAV file can't be converted ({format})."),
    "formats_differ": ("Die Dateien lassen sich nicht zusammenfügen: {name} hat {format}, die erste Datei {first}.",
                       "The files can't be joined: {name} has {format}, the first file {first}."),
    "altered": ("Die WAV-Datei hat sich während des Konvertierens geändert.",
                "The WAV file changed while it was converted."),
    "lame": ("lame ist gescheitert: {reason}", "lame has failed: {reason}"),
    "lame_killed": ("lame wurde abgebrochen (Signal {reason}).", "lame was stopped (signal {reason})."),
    "too_long": ("So viel Ton nimmt lame nicht in eine Datei auf.", "lame does not take that much sound in one file."),
    "incomplete": ("Die MP3-Datei wurde nicht vollständig.", "The MP3 file did not get complete."),
    "not_decoded": ("Die MP3-Datei ließ sich nicht ganz abspielen und wurde verworfen. Die WAV-Datei bleibt.",
                    "The MP3 file could not be played to its end and was dropped. The WAV file stays."),
    # The MP3 file is there, the WAV file stays.
    "not_on_disk": ("Die MP3-Datei kam vielleicht nicht auf den Datenträger: {reason}. Die WAV-Datei bleibt.",
                    "The MP3 file may not have reached the disk: {reason}. The WAV file stays."),
    "changed": ("Die WAV-Datei hat sich inzwischen geändert und wurde nicht gelöscht.",
                "The WAV file has changed meanwhile and was not deleted."),
    "cut": ("Die WAV-Datei ist abgeschnitten. Sie wurde konvertiert, aber nicht gelöscht.",
            "The WAV file is cut short. It was converted, but not deleted."),
    "more_behind": ("Hinter dem Ton der WAV-Datei liegt noch etwas, das sich nicht lesen ließ. "
                    "Sie wurde nicht gelöscht.",
                    "After its sound the WAV file holds something that could not be read. It was not deleted."),
    "more_sound": ("Die WAV-Datei enthält mehrere Stücke Ton. Konvertiert wurde das erste, gelöscht wurde sie nicht.",
                   "The WAV file holds several pieces of sound. The first was converted, the file was not deleted."),
    "not_deleted": ("Die WAV-Datei ließ sich nicht löschen: {reason}",
                    "The WAV file could not be deleted: {reason}"),
}


def settings_file():
    folder = os.environ.get("XDG_CONFIG_HOME") or ""
    if not os.path.isabs(folder):
        folder = os.path.expanduser("~/.config")
    return os.path.join(folder, "Greyfinch Labs", "Quavernet.conf")


def language():
    """That of the program; German if nobody has chosen one or the settings can't be read."""
    group = found = ""
    try:
        with open(settings_file(), encoding="utf-8", errors="replace") as file:
            for line in file:
                name, equals, value = line.partition("=")
                if line.startswith("["):
                    group = line.strip().strip("[]").casefold()
                elif equals and group == "settings" and name.strip().casefold() == "language":
                    found = value.strip().strip('"').upper()
    except OSError:
        pass
    return ENGLISH if found == ENGLISH else GERMAN


def text(name, chosen, /, **values):
    """A text of the table. Values are put in as they are, whatever they hold."""
    return TEXTS[name][chosen == ENGLISH].format(**values)
