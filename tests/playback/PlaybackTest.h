// Base of tests of the play requests: a library behind a recorder, a list with selected rows, a tree, a
// player that writes down what is asked of it, and a temporary folder of the test's own.
#pragma once

#include "support/RecordingPlayer.h"
#include "support/SelectionViewDouble.h"
#include "support/TreeLibraryTest.h"

#include "browser/GridSelection.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

namespace quavernet::test {

/// A recording player that lets a test act where the real one lets events run.
class YieldingPlayer : public RecordingPlayer {
public:
    using RecordingPlayer::RecordingPlayer;

    void Show() override {
        RecordingPlayer::Show();
        if (onShow) {
            onShow();
        }
    }

    std::function<void()> onShow;
};

/// The environment's TMPDIR for the length of a scope.
class TemporaryPlace {
public:
    explicit TemporaryPlace(const std::string& folder) {
        if (const char* before = std::getenv("TMPDIR")) {
            m_before = before;
        }
        ::setenv("TMPDIR", folder.c_str(), 1);
    }
    ~TemporaryPlace() {
        if (m_before) {
            ::setenv("TMPDIR", m_before->c_str(), 1);
        } else {
            ::unsetenv("TMPDIR");
        }
    }
    TemporaryPlace(const TemporaryPlace&) = delete;
    TemporaryPlace& operator=(const TemporaryPlace&) = delete;

private:
    std::optional<std::string> m_before;
};

class PlaybackTest : public TreeLibraryTest {
protected:
    PlaybackTest() {
        shell.documents = "/home/u/Documents";
        dialogs.onShow = [this] { calls.push_back("dialog"); };
    }

    static std::string BytesOf(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::string Temporary(const std::string& name) const { return temporary / name; }
    /// Into the temporary folder; folders of the test itself lie there too.
    bool NothingWritten() const {
        const std::filesystem::directory_iterator entries(temporary.Path());
        return std::none_of(begin(entries), end(entries),
                            [](const auto& entry) { return !entry.is_directory(); });
    }

    /// The list shows the files of the library by their ids; these of its rows are selected, in this order.
    void ListAndSelect(std::initializer_list<std::int32_t> rows) {
        mainModule.FilePaths.Clear();
        mainModule.SelectedRows.Clear();
        for (const std::string& path : Rows("Select Path from Files order by File_id")) {
            mainModule.FilePaths.Add(path);
        }
        grid.Reset(static_cast<std::int32_t>(mainModule.FilePaths.Count()) + 1);
        for (const std::int32_t row : rows) {
            grid.SetRow(row);
            mainModule.SelectedRows.Add(row);
        }
        connection.statements.clear();
        calls.clear();
    }
    void AddFiles(std::initializer_list<const char*> names) {
        for (const char* name : names) {
            AddFile(name);
        }
    }
    /// Plays of each file, by the ids.
    std::vector<std::string> Hits() { return Rows("Select Hits from Files order by File_id"); }

    const ShownBox missingFile{"Die Datei konnte nicht gefunden werden!", "Öffnen nicht möglich",
                               MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok};
    const ShownBox cannotPlay{"Die Datei konnte nicht geöffnet werden!", "Abspielen nicht möglich!",
                              MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok};
    const std::string saveDialog = "save Playlist (*.m3u)|*.m3u /home/u/Documents";

    TemporaryFolder temporary;
    TemporaryPlace m_place{temporary.Path()};
    LongWorkDouble work{calls};
    YieldingPlayer player{calls};
    SelectionViewDouble gridView;
    DragState drag;
    GridSelection grid{gridView, drag};
};

} // namespace quavernet::test
