// Times the program's jobs beside their physical floors. Called by bench/run.
#include "Jobs.h"

#include <cstdio>
#include <cstring>
#include <exception>
#include <string>
#include <vector>

namespace {

using namespace quavernet::bench;

struct Options {
    std::vector<Line> before; ///< A stored run to compare with.
    std::string store;
    std::string only; ///< "scan", "list" or empty for both.
};

Options ReadOptions(int count, char** arguments, int first) {
    Options options;
    for (int position = first; position + 1 < count; position += 2) {
        if (std::strcmp(arguments[position], "--store") == 0) {
            options.store = arguments[position + 1];
        } else if (std::strcmp(arguments[position], "--only") == 0) {
            options.only = arguments[position + 1];
        } else {
            options.before = Load(arguments[position + 1]);
        }
    }
    return options;
}

std::vector<Line> LibraryJobs(char** arguments, const std::string& only) {
    const Setting setting{arguments[0], arguments[1], arguments[2], std::stoul(arguments[3]),
                          std::stoi(arguments[4])};
    std::vector<Line> lines;
    if (only != "list") {
        lines = ScanJobs(setting);
    }
    if (only != "scan") {
        for (Line& line : ListJobs(setting)) {
            lines.push_back(std::move(line));
        }
    }
    return lines;
}

} // namespace

int main(int count, char** arguments) {
    if (count == 5 && std::strcmp(arguments[1], "library") == 0) {
        MakeLibrary({"", "", arguments[3], std::stoul(arguments[4]), 0}, arguments[2]);
        return 0;
    }
    const bool ogg = count > 1 && std::strcmp(arguments[1], "ogg") == 0;
    const int firstOption = ogg ? 4 : 6;
    if (count < firstOption) {
        std::fprintf(stderr,
                     "quavernet_bench MUSIC WORK TEMPLATE ROWS ROUNDS [--only scan|list] [--store FILE] "
                     "[--compare FILE]\n"
                     "quavernet_bench library FILE TEMPLATE ROWS\n"
                     "quavernet_bench ogg MUSIC ROUNDS [--store FILE] [--compare FILE]\n");
        return 2;
    }
    try {
        const Options options = ReadOptions(count, arguments, firstOption);
        const std::vector<Line> lines =
            ogg ? OggJobs(arguments[2], std::stoi(arguments[3])) : LibraryJobs(arguments + 1, options.only);
        PrintTable(lines, options.before);
        if (!options.store.empty()) {
            Store(lines, options.store);
        }
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    return 0;
}
