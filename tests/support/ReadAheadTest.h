// A folder of music on a disk that hangs when a test wants it, and what its files hold for whoever opens
// them.
#pragma once

#include "platform/RuntimeError.h"
#include "support/SlowDisk.h"
#include "support/TemporaryFolder.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace quavernet::test {

class ReadAheadTest : public ::testing::Test {
protected:
    static constexpr std::chrono::milliseconds Long{60000};
    static constexpr std::chrono::milliseconds Short{1};

    ReadAheadTest() { std::filesystem::permissions(music.Path(), std::filesystem::perms(0755)); }

    std::string Write(const std::string& name, const std::string& bytes = "x") {
        std::filesystem::create_directories(std::filesystem::path(music / name).parent_path());
        WriteFile(music / name, bytes);
        return music / name;
    }
    std::vector<std::string> WriteMany(const std::string& folder, int count) {
        std::vector<std::string> paths;
        for (int i = 0; i < count; ++i) {
            paths.push_back(Write(folder + "/" + std::to_string(1000 + i) + ".mp3"));
        }
        return paths;
    }
    std::unique_ptr<FilesAhead> Walk(Ahead wanted = Ahead::Contents) {
        return parts.readAhead->Walk(
            {music.Path(), [](std::string_view) { return true; },
             [wanted](std::string_view name) { return name.ends_with(".mp3") ? wanted : Ahead::Nothing; }});
    }

    /// Asks for a file in steps, as a scan does, until it is read.
    static bool IsReadInSteps(FilesAhead& ahead, const std::string& path) {
        return Comes([&] { return ahead.IsRead(path, Ahead::Contents, std::chrono::milliseconds(10)); });
    }

    /// Whether it becomes true. Asked again and again.
    template <typename Condition> static bool Comes(const Condition& condition) {
        const auto end = std::chrono::steady_clock::now() + Long;
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
            std::this_thread::yield();
        }
        return true;
    }

    /// What a file holds for whoever opens it, or its failure.
    std::string Contents(const std::string& path) {
        try {
            const auto file = parts.files.Open(path, BinaryFile::Access::Read);
            std::string bytes(static_cast<std::size_t>(file->Size()) + 10, '\0');
            bytes.resize(file->ReadAt(0, std::as_writable_bytes(std::span(bytes))));
            return bytes;
        } catch (const OpenError& error) {
            return std::to_string(error.Number()) + " " + error.Reason();
        }
    }
    bool IsHeld(const std::string& path) { return parts.disk.Pool()->CurrentFile(path) != nullptr; }

    TemporaryFolder music;
    SlowServices parts;
};

} // namespace quavernet::test
