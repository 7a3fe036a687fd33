"""Tells the user how it ended: on the channels of the process, by a note on the desktop, or in a box."""
import html
import os
import subprocess
import sys

from encoder import texts

PROGRAM, ICON = "Quavernet", "io.greyfinch.Quavernet"
LINES = 5  # Of a note; the others are counted.
PATIENCE = 10  # Seconds for the desktop to answer.
BOX_STARTS = 2  # Seconds after which a box that has not failed is on the screen.


def write(channel, text):
    """To a channel that may have nobody at its other end."""
    try:
        channel.buffer.write(os.fsencode(text))
        channel.flush()
    except OSError:
        # What is left in the buffer goes nowhere; written at the end it would change the exit code.
        os.dup2(os.open(os.devnull, os.O_WRONLY), channel.fileno())
    except (ValueError, AttributeError):
        pass


def shown(text):
    """A text of strangers on one line; bytes that are not UTF-8 as question marks in a diamond."""
    readable = os.fsencode(text).decode("utf-8", "replace")
    return "".join(letter if letter.isprintable() else "\N{REPLACEMENT CHARACTER}" for letter in readable)


def line_of(failure, language, name):
    values = {key: shown(str(value)) for key, value in failure.values.items()}
    said = texts.text(failure.text, language, **values)
    return f"{name}: {said}" if name else said


def everybody(made, failures):
    """The paths that were made and the failures."""
    language = texts.language()
    for path in made:
        write(sys.stdout, path + "\n")
    for failure in once(failures):
        write(sys.stderr, f"bladeenc: {line_of(failure, language, shown(failure.path or ''))}\n")
    head, lines = summary(made, failures, language)
    body = "\n".join(lines)
    if not note(head, body, bool(failures)) and failures:
        box(f"{head}\n\n{body}")


def once(failures):
    """What is about all files is said once."""
    return list({(failure.text, failure.path, str(failure.values)): failure for failure in failures}.values())


def summary(made, failures, language):
    """Head and lines of the note."""
    if failures:
        head = texts.text("partly" if made else "failed", language)
        lines = [line_of(failure, language, shown(os.path.basename((failure.path or "").rstrip("/"))))
                 for failure in once(failures)]
    else:
        head = texts.text("done_one" if len(made) == 1 else "done", language, count=len(made))
        lines = [shown(os.path.basename(path)) for path in made]
    if len(lines) > LINES:
        lines[LINES:] = [texts.text("more", language, count=len(lines) - LINES)]
    return head, lines


def has_bus():
    """Without one, the tools would start a bus of their own that nobody listens to."""
    runtime = os.environ.get("XDG_RUNTIME_DIR")
    return bool(os.environ.get("DBUS_SESSION_BUS_ADDRESS") or runtime and os.path.exists(f"{runtime}/bus"))


def note(head, body, urgent):
    """Whether the desktop took it. What stands in a note is read as markup."""
    if not has_bus():
        return False
    body = html.escape(body, quote=False)
    urgency = "critical" if urgent else "normal"
    return ran(
        "notify-send", f"--app-name={PROGRAM}", f"--icon={ICON}", f"--urgency={urgency}", "--", head,
        body.replace("\\", "\\\\")) or ran(
        "gdbus", "call", "--session", f"--timeout={PATIENCE // 2}", "--dest=org.freedesktop.Notifications",
        "--object-path=/org/freedesktop/Notifications", "--method=org.freedesktop.Notifications.Notify", "--",
        quoted(PROGRAM), "uint32 0", quoted(ICON), quoted(head), quoted(body), "@as []",
        f"{{'urgency': <byte {2 if urgent else 1}>}}", "int32 -1")


def quoted(text):
    """As gdbus reads a text."""
    plain = text.replace("\\", "\\\\").replace("'", "\\'").replace("\n", "\\n")
    return f"'{plain}'"


def ran(*command):
    try:
        return subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              timeout=PATIENCE).returncode == 0
    except (OSError, subprocess.TimeoutExpired):
        return False


def box(text):
    """A box that stays until it is closed; nobody waits for it."""
    if not os.environ.get("DISPLAY") and not os.environ.get("WAYLAND_DISPLAY"):
        return
    # kdialog takes a text with angle brackets for markup.
    plain = text.replace("<", "‹").replace(">", "›")
    for command in (["zenity", "--error", "--no-markup", f"--title={PROGRAM}", "--text=" + text.replace("\\", "\\\\")],
                    ["kdialog", "--title", PROGRAM, "--error", plain],
                    ["xmessage", "-center", "-title", PROGRAM, text]):
        try:
            process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                       stderr=subprocess.DEVNULL, start_new_session=True)
        except OSError:
            continue
        try:
            if process.wait(BOX_STARTS) == 0:
                return
        except subprocess.TimeoutExpired:
            return
