// The small services that the logic asks for: settings store, shell, boxes, dialogs, events, clock. The
// adapters live in adapters/qt and adapters/posix; tests bring doubles.
#pragma once

#include "platform/DateTime.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quavernet {

struct ChosenPrinter;

/// Named text values of the current user.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    /// Nothing if the value was never written; a written empty text is a value. Never fails.
    virtual std::optional<std::string> Query(const std::string& application, const std::string& section,
                                             const std::string& name) = 0;

    /// A failed write leaves the old value.
    virtual void Set(const std::string& application, const std::string& section, const std::string& name,
                     const std::string& value) = 0;

    /// The file that the values are kept in; empty where there is none.
    virtual std::string Place() const { return {}; }
};

/// An outside program and what it is started with.
struct ProgramCommand {
    std::string Text;                   ///< All in one line, as a system that takes no list would get it.
    std::string Program;                ///< Its path.
    std::vector<std::string> Arguments; ///< Each arrives as it is, whatever it holds.
};

/// The system's shell: special folders, opening files with their program, starting programs, the end of the
/// process.
class Shell {
public:
    static constexpr int DocumentsFolder = 5; ///< Special folder id of the user's documents.

    // Results of ShellExecute, by the system's own numbers.
    static constexpr int FileMissing = 2;
    static constexpr int FolderMissing = 3;
    static constexpr int AccessDenied = 5; ///< The file may not be read.
    static constexpr int NoProgram = 31;
    static constexpr int Started = 33; ///< As is every greater number.

    virtual ~Shell() = default;

    /// Path of a special folder, or nothing if the system knows no such folder.
    virtual std::optional<std::string> SpecialFolder(int id) = 0;

    /// Folder of the files that ship with the program (template library, help), without a final "/".
    virtual std::string ProgramFolder() = 0;

    /// Opens a file with the program that the system has for it, without waiting.
    /// Gives one of the results above.
    virtual int ShellExecute(const std::string& path) = 0;

    /// Starts an outside program as a process of its own, without waiting for it and without a shell that
    /// would read its arguments. Throws RuntimeError 53 if the program is missing, 70 if it may not be run, 7
    /// if the arguments are more than the system takes, 5 if it can't be started otherwise.
    virtual void StartProgram(const ProgramCommand& command) = 0;

    /// Opens a page of the web in the browser, without waiting. The address goes out as it is; one of any
    /// other kind than http and https opens nothing. Gives NoProgram or Started.
    virtual int OpenAddress(const std::string& url) = 0;

    /// Version of the component that renders help pages; false if there is none.
    virtual bool DllGetVersion(std::int32_t& major, std::int32_t& minor, std::int32_t& build) = 0;

    /// Ends the process at once. Does not return; doubles throw.
    virtual void EndProcess(int exitCode) = 0;

    /// The same, and starts the program once more, as a process of its own that finds all that this one
    /// wrote.
    virtual void EndProcessAndStartAgain(int exitCode) = 0;
};

/// Message boxes.
class MsgBox {
public:
    enum class Icon { None, Critical, Question, Exclamation, Information }; ///< The picture beside the text.
    /// The first one is the default, but for NoByDefault: Yes and No, and Return means No.
    enum class Buttons { Ok, OkCancel, YesNo, OkRestart, NoByDefault };
    enum class Answer { Ok, Cancel, Yes, No, Restart }; ///< The button that was pressed.

    virtual ~MsgBox() = default;

    /// Shows plain text and waits for the user. A closed box gives Cancel or No where there is such a button,
    /// else Ok.
    virtual Answer Show(const std::string& text, const std::string& title, Icon icon, Buttons buttons) = 0;

    /// The same with a second text beneath the first, which tells more of what has happened.
    virtual Answer ShowWithDetails(const std::string& text, const std::string& /*details*/,
                                   const std::string& title, Icon icon, Buttons buttons) {
        return Show(text, title, icon, buttons);
    }
};

/// The system's own dialogs.
class CommonDialogs {
public:
    virtual ~CommonDialogs() = default;

    /// Asks for a folder. Nothing if the user cancelled.
    virtual std::optional<std::string> BrowseForFolder(const std::string& title) = 0;

    /// Asks for a file that is there. `filter` is what the list of kinds shows, "|" and a pattern such as
    /// "*.m3u", which counts in any case of letters; further kinds may follow in the same way; `folder` is
    /// where the dialog begins. Nothing if the user cancelled.
    virtual std::optional<std::string> ShowOpen(const std::string& filter, const std::string& folder) = 0;

    /// The same for a file to write. The name is taken as it was typed, without an extension added, and
    /// nobody is asked whether an old file may go.
    virtual std::optional<std::string> ShowSave(const std::string& filter, const std::string& folder) = 0;

    /// Asks for a printer, or a PDF file in place of one, for copies and orientation. `name` is the file's if
    /// the user types no other. Nothing if the user cancelled.
    virtual std::optional<ChosenPrinter> ShowPrinter(const std::string& name) = 0;
};

/// The window message loop.
class Events {
public:
    virtual ~Events() = default;

    /// Lets pending events run: any handler, one of the caller's own too. Returns when none is left.
    virtual void DoEvents() = 0;
};

/// Shows the pages of the help.
class HelpViewer {
public:
    virtual ~HelpViewer() = default;

    /// Shows a page ("HTML\\start.html") of a help file in the one help window; an empty page shows the
    /// contents. A file or page that isn't there, or an empty file, shows nothing. Never fails.
    virtual void DisplayTopic(const std::string& file, const std::string& page) = 0;
};

/// The time of day.
class Clock {
public:
    virtual ~Clock() = default;

    /// Local time, to the second.
    virtual DateTime Now() = 0;
};

} // namespace quavernet
