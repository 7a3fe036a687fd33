// Makes the template library at build time: an empty file, filled by the SQL files given.
// Usage: quavernet_template TARGET SQL-FILE...

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <sqlite3.h>

#include "adapters/sqlite/Collation.h"
#include "adapters/sqlite/LibraryFile.h"
#include "adapters/sqlite/SqliteError.h"
#include "platform/RuntimeError.h"

namespace {

using namespace quavernet;

std::string ReadAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw RuntimeError(ErrorNumber::FileNotFound, path + ": can't be read");
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

void MakeTemplate(const std::string& target, char** sqlFiles, int count) {
    const std::string draft = target + ".new";
    std::filesystem::remove(draft);
    {
        sqlite3* opened = nullptr;
        const int code =
            sqlite3_open_v2(draft.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
        const sqlite::DatabaseHandle handle(opened);
        sqlite::Check(opened, code);
        sqlite::RegisterTextComparison(opened);
        sqlite::RunInternal(opened, "pragma encoding = 'UTF-8'; begin");
        for (int i = 0; i < count; ++i) {
            sqlite::RunInternal(opened, ReadAll(sqlFiles[i]).c_str());
        }
        // With the mark of the write-ahead log in its header, a fresh library is opened without a write.
        sqlite::RunInternal(opened, "commit; vacuum; pragma journal_mode = wal");
    }
    std::filesystem::rename(draft, target);
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: quavernet_template TARGET SQL-FILE...\n");
        return 2;
    }
    try {
        MakeTemplate(argv[1], argv + 2, argc - 2);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quavernet_template: %s\n", error.what());
        return 1;
    }
    return 0;
}
