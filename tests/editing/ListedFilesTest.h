// Base of tests that rename listed files: real files in a folder, their rows in a real library, and the list
// that is made of them.
#pragma once

#include "support/LongWorkDouble.h"
#include "support/TestFiles.h"
#include "support/TestLibrary.h"
#include "support/Texts.h"

#include "adapters/posix/PosixFileSystem.h"
#include "library/SqlQuote.h"

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>

namespace quavernet::test {

class ListedFilesTest : public LibraryTest {
protected:
    ListedFilesTest() { services.fileSystem = fileSystem.get(); }

    /// A file with its name as content, its row in the library and in the list.
    void AddFile(const std::string& name, const std::string& subFolder = {}) {
        const std::string place = subFolder.empty() ? music.Path() : music / subFolder;
        std::filesystem::create_directories(place);
        WriteFile(place + "/" + name, name);
        AddRow(name, place);
    }
    /// The same without a file.
    void AddRow(const std::string& name, const std::string& place) {
        const std::string path = place + "/" + name;
        Execute("Insert into Files (Name, Path) values ('" + SqlQuote(name) + "', '" + SqlQuote(path) + "')");
        mainModule.FilePaths.Add(path);
        mainModule.FileNames.Add(name);
    }
    void Select(std::initializer_list<std::int32_t> rows) {
        mainModule.SelectedRows.Clear();
        for (const std::int32_t row : rows) {
            mainModule.SelectedRows.Add(row);
        }
    }

    /// Each file of the folder as its name and its content.
    Texts OnDisk(const std::string& subFolder = {}) {
        Texts files;
        for (const auto& entry : std::filesystem::directory_iterator(music / subFolder)) {
            if (entry.is_regular_file()) {
                files.push_back(entry.path().filename().string() + "=" + ReadFile(entry.path().string()));
            }
        }
        std::sort(files.begin(), files.end());
        return files;
    }
    /// Each row of the library as name and path, the folder as "~".
    Texts InLibrary() { return Short(Rows("Select Name, Path from Files order by File_id")); }
    /// The same of the list.
    Texts InList() {
        Texts texts;
        for (long row = 1; row <= static_cast<long>(mainModule.FilePaths.Count()); ++row) {
            texts.push_back(mainModule.FileNames.Item(row) + "|" + mainModule.FilePaths.Item(row));
        }
        return Short(texts);
    }
    Texts Short(Texts texts) const {
        for (std::string& text : texts) {
            for (auto at = text.find(music.Path()); at != std::string::npos; at = text.find(music.Path())) {
                text.replace(at, music.Path().size(), "~");
            }
        }
        return texts;
    }

    TemporaryFolder music;
    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem();
    CallList calls;
    LongWorkDouble work{calls};
};

} // namespace quavernet::test
