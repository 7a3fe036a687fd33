#include "RenameJobs.h"

#include "BareStatement.h"
#include "Floors.h"
#include "Lines.h"
#include "Services.h"

#include "editing/FileNamesEditor.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace quavernet::bench {

namespace {

constexpr std::size_t Files = 1000;

std::string Name(std::size_t number, const std::string& title) {
    return std::to_string(number) + title;
}

/// Gives all files the title, so that each round finds them as the one before did.
void NameFiles(const std::string& folder, const std::string& title) {
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    for (std::size_t i = 0; i < Files; ++i) {
        std::ofstream(folder + Name(i, title)).put('x');
    }
}

/// The bare renames, and one prepared statement for each, in one transaction.
void RenameBare(BareLibrary& bare, const std::string& folder, const std::string& from,
                const std::string& to) {
    bare.Execute("begin");
    Statement update(bare.Handle(), "update Files set Path = ?, Name = ? where Path = ?");
    for (std::size_t i = 0; i < Files; ++i) {
        const std::string oldPath = folder + Name(i, from);
        const std::string newName = Name(i, to);
        const std::string newPath = folder + newName;
        if (std::rename(oldPath.c_str(), newPath.c_str()) != 0) {
            throw std::runtime_error("no file " + oldPath);
        }
        update.Bind(1, newPath);
        update.Bind(2, newName);
        update.Bind(3, oldPath);
        update.Run();
    }
    bare.Execute("commit");
}

} // namespace

void RenameJobs(const std::string& emptyLibrary, const std::string& work, int rounds) {
    const std::string bareFolder = work + "/rename-bare/";
    const std::string folder = work + "/rename/";
    const std::string title = " a song of_some name.mp3";
    const std::string cleaned = " a song of some name.mp3";
    NameFiles(bareFolder, title);
    NameFiles(folder, title);
    BareLibrary bare(work + "/rename-bare.db");
    bare.CreateTables();
    std::filesystem::copy_file(emptyLibrary, work + "/rename.db",
                               std::filesystem::copy_options::overwrite_existing);
    BenchServices program;
    program.OpenLibrary(work + "/rename.db");
    for (std::size_t i = 0; i < Files; ++i) {
        const std::string name = Name(i, title);
        const auto insert = [&](const std::string& place) {
            return "insert into Files (Name, Path) values ('" + name + "', '" + place + name + "')";
        };
        bare.Execute(insert(bareFolder).c_str());
        mainModule.Connection->Execute(insert(folder));
        mainModule.FilePaths.Add(folder + name);
        mainModule.FileNames.Add(name);
    }
    mainModule.Connection->Commit();
    mainModule.SelectedRows.AddRange(1, static_cast<std::int32_t>(Files));

    // Each round gives the other of two names.
    std::string bareTitle = title;
    const auto other = [&](const std::string& name) { return name == title ? cleaned : title; };
    const auto renameBare = [&] {
        RenameBare(bare, bareFolder, bareTitle, other(bareTitle));
        bareTitle = other(bareTitle);
    };
    const auto rename = [&] {
        FileNamesEditor editor;
        editor.CleanUpAll([&](const std::string& name) {
            const auto number = name.find(' ');
            return name.substr(0, number) + other(name.substr(number));
        });
        SilentWork silent;
        editor.cmdSave_Click(silent);
        mainModule.Connection->Commit();
    };
    Print(Measure("1,000 files renamed, floor: bare renames and statements", Files, {.ratio = 2}, rounds,
                  {nullptr, rename}, {nullptr, renameBare}));
    if (!std::filesystem::exists(mainModule.FilePaths.Item(1))) {
        throw std::runtime_error("the files have other names than the list");
    }
}

} // namespace quavernet::bench
