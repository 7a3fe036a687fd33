// Doubles of the services: what a test can't have for real (a user, a clock, a locale) or wants to look into.
#pragma once

#include "app/MainModule.h"
#include "platform/Desktop.h"
#include "platform/Printer.h"
#include "platform/RuntimeError.h"
#include "platform/Services.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace quavernet::test {

class MapSettings : public SettingsStore {
public:
    std::optional<std::string> Query(const std::string&, const std::string&,
                                     const std::string& name) override {
        const auto found = values.find(name);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    void Set(const std::string&, const std::string&, const std::string& name,
             const std::string& value) override {
        values[name] = value;
    }

    std::map<std::string, std::string> values;
};

/// Thrown where the real shell would end the process.
struct ProcessEnded {
    int exitCode;
};

class RecordingShell : public Shell {
public:
    std::optional<std::string> SpecialFolder(int id) override {
        return id == DocumentsFolder ? documents : std::nullopt;
    }
    std::string ProgramFolder() override { return programFolder; }
    int ShellExecute(const std::string& path) override {
        executed.push_back(path);
        return executeResult;
    }
    void StartProgram(const ProgramCommand& command) override {
        started.push_back(command);
        if (startFailure) {
            throw *startFailure;
        }
    }
    int OpenAddress(const std::string& url) override {
        addresses.push_back(url);
        return executeResult;
    }
    bool DllGetVersion(std::int32_t& major, std::int32_t& minor, std::int32_t& build) override {
        std::tie(major, minor, build) = browserVersion.value_or(std::tuple{0, 0, 0});
        return browserVersion.has_value();
    }
    void EndProcess(int exitCode) override { throw ProcessEnded{exitCode}; }
    void EndProcessAndStartAgain(int exitCode) override {
        startedAgain = true;
        throw ProcessEnded{exitCode};
    }

    std::optional<std::string> documents;
    std::string programFolder;
    std::vector<std::string> executed;
    std::vector<std::string> addresses; ///< Opened in the browser.
    int executeResult = 33;
    std::vector<ProgramCommand> started; ///< What was asked for, failures too.
    std::optional<RuntimeError> startFailure;
    bool startedAgain = false;
    std::optional<std::tuple<std::int32_t, std::int32_t, std::int32_t>> browserVersion = std::tuple{6, 4, 2};
};

struct ShownBox {
    std::string text;
    std::string title;
    MsgBox::Icon icon;
    MsgBox::Buttons buttons;
    std::string details = {}; ///< The second text.

    bool operator==(const ShownBox&) const = default;
};

class ScriptedMsgBox : public MsgBox {
public:
    Answer Show(const std::string& text, const std::string& title, Icon icon, Buttons buttons) override {
        return ShowWithDetails(text, {}, title, icon, buttons);
    }
    Answer ShowWithDetails(const std::string& text, const std::string& details, const std::string& title,
                           Icon icon, Buttons buttons) override {
        shown.push_back({text, title, icon, buttons, details});
        if (answers.empty()) {
            const bool asks = buttons == Buttons::YesNo || buttons == Buttons::NoByDefault;
            return asks ? Answer::No : Answer::Ok;
        }
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }

    std::vector<ShownBox> shown;
    std::deque<Answer> answers;
};

class ScriptedDialogs : public CommonDialogs {
public:
    std::optional<std::string> BrowseForFolder(const std::string& title) override {
        titles.push_back(title);
        return folder;
    }
    std::optional<std::string> ShowOpen(const std::string& filter, const std::string& startFolder) override {
        return Show("open", filter, startFolder);
    }
    std::optional<std::string> ShowSave(const std::string& filter, const std::string& startFolder) override {
        return Show("save", filter, startFolder);
    }

    std::optional<ChosenPrinter> ShowPrinter(const std::string& name) override {
        shown.push_back("printer " + name);
        if (onShow) {
            onShow();
        }
        if (fails) {
            throw RuntimeError(20476, "no dialog");
        }
        return std::exchange(printer, std::nullopt);
    }

    std::optional<std::string> folder;
    std::optional<ChosenPrinter> printer; ///< The answer of the print dialog, given once.
    std::optional<std::string> file;      ///< The answer of the file dialogs.
    bool fails = false;                   ///< File and print dialogs can't come up.
    std::function<void()> onShow;         ///< What happens while one of these is open.
    std::vector<std::string> titles;
    std::vector<std::string> shown; ///< These: kind, filter and folder or name, joined by blanks.

private:
    std::optional<std::string> Show(const std::string& kind, const std::string& filter,
                                    const std::string& startFolder) {
        shown.push_back(kind + " " + filter + " " + startFolder);
        if (onShow) {
            onShow();
        }
        if (fails) {
            throw RuntimeError(20476, "no dialog");
        }
        return file;
    }
};

/// Counts the calls and runs `onDoEvents`, through which a test acts in the middle of a long operation.
class HandEvents : public Events {
public:
    void DoEvents() override {
        ++count;
        if (onDoEvents) {
            onDoEvents();
        }
    }

    int count = 0;
    std::function<void()> onDoEvents;
};

class RecordingHelpViewer : public HelpViewer {
public:
    void DisplayTopic(const std::string& file, const std::string& page) override {
        shown.emplace_back(file, page);
    }

    std::vector<std::pair<std::string, std::string>> shown; ///< Help file and page.
};

class RecordingDesktop : public Desktop {
public:
    void Notify(const DesktopNote& note) override {
        notes.push_back(note.Title + ": " + note.Text);
        last = note;
    }
    void ShowProgress(double share) override { progress.push_back(share); }
    void HideProgress() override { progress.push_back(-1); }

    std::vector<std::string> notes;
    DesktopNote last;
    std::vector<double> progress; ///< What was shown; -1: hidden.
};

class HandClock : public Clock {
public:
    DateTime Now() override { return now; }

    DateTime now{2026, 11, 20, 14, 3, 22};
};

} // namespace quavernet::test
