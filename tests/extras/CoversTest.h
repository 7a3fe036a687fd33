// Base of the tests of the covers: albums in a real library, pictures as files, and a view that notes what it
// is told.
#pragma once

#include "extras/Covers.h"
#include "support/TestFiles.h"
#include "support/TestLibrary.h"

#include "adapters/posix/PosixFileSystem.h"

#include <memory>
#include <string>
#include <vector>

namespace quavernet::test {

/// Pages by number from 0; each call as one text.
class CoverViewDouble : public CoverView {
public:
    void RemovePictures() override { calls.emplace_back("remove"); }
    void ShowPicture(CoverPage page, const std::string& path) override {
        calls.push_back("show " + Number(page) + " " + path);
    }
    bool LoadPicture(CoverPage page, const std::string& path) override {
        calls.push_back("load " + Number(page) + " " + path);
        return isPicture;
    }
    void SetPanel(const std::string& path) override { calls.push_back("panel " + path); }
    void SetMousePointer(MousePointer pointer) override {
        calls.emplace_back(pointer == MousePointer::Hourglass ? "hourglass" : "pointer");
    }

    bool isPicture = true;
    std::vector<std::string> calls;

private:
    static std::string Number(CoverPage page) { return std::to_string(static_cast<int>(page)); }
};

class CoversTest : public LibraryTest {
protected:
    using Texts = std::vector<std::string>;

    CoversTest() {
        services.fileSystem = fileSystem.get();
        shell.documents = "/home/user/documents";
    }

    /// An album of a performer with one file; both are made if they are new.
    void AddAlbum(const std::string& performer, const std::string& album) {
        const std::string albumId = KeyOf("Albums", "Album_id", "Name", album);
        const std::string interId = KeyOf("Interpret", "Inter_id", "Interpret", performer);
        Execute("Insert into Files (Title_id, Inter_id, Name, Path, Album_id) values (1, " + interId +
                ", 'x', '/" + std::to_string(++m_files) + "', " + albumId + ")");
    }
    /// Abba's Arrival (album 1, performer 1), which is selected.
    void SelectArrival() {
        AddAlbum("Abba", "Arrival");
        covers.LoadAlbumList();
        covers.SelectAlbum(0);
        view.calls.clear();
    }
    std::string MakeFile(const std::string& name) {
        WriteFile(folder / name, "x");
        return folder / name;
    }
    void AddCovers(const std::string& values) {
        Execute("Insert into Covers (Album_id, Interpret_id, Front, Back, CD, CD2, Inlay, Inlet) values (" +
                values + ")");
    }
    Texts Stored() {
        return Rows(
            "Select Cover_id, Album_id, Interpret_id, Front, Back, CD, CD2, Inlay, Inlet from Covers");
    }
    static std::string Quoted(const std::string& path) { return "'" + path + "'"; }

    TemporaryFolder folder;
    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem();
    CoverViewDouble view;
    Covers covers{view};

private:
    std::string KeyOf(const std::string& table, const std::string& key, const std::string& column,
                      const std::string& text) {
        const std::string select =
            "Select " + key + " from " + table + " where " + column + " = '" + text + "'";
        if (Count(select) == 0) {
            Execute("Insert into " + table + " (" + column + ") values ('" + text + "')");
        }
        return Value(select);
    }

    int m_files = 0;
};

} // namespace quavernet::test
