// Times the program's jobs beside their physical floors. Called by bench/run.
#include "Jobs.h"

#include <cstdio>
#include <cstring>
#include <exception>
#include <string>
#include <vector>

namespace {

using namespace quavernet::bench;

std::vector<Line> LibraryJobs(char** arguments) {
    const Setting setting{arguments[0], arguments[1], arguments[2], std::stoul(arguments[3]),
                          std::stoi(arguments[4])};
    std::vector<Line> lines = ScanJobs(setting);
    for (Line& line : ListJobs(setting)) {
        lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace

int main(int count, char** arguments) {
    const bool ogg = count > 1 && std::strcmp(arguments[1], "ogg") == 0;
    const int firstOption = ogg ? 4 : 6;
    if (count < firstOption) {
        std::fprintf(stderr,
                     "quavernet_bench MUSIC WORK TEMPLATE ROWS ROUNDS [--store FILE] [--compare FILE]\n"
                     "quavernet_bench ogg MUSIC ROUNDS [--store FILE] [--compare FILE]\n");
        return 2;
    }
    try {
        std::vector<Line> before;
        std::string store;
        for (int position = firstOption; position + 1 < count; position += 2) {
            if (std::strcmp(arguments[position], "--store") == 0) {
                store = arguments[position + 1];
            } else {
                before = Load(arguments[position + 1]);
            }
        }
        const std::vector<Line> lines =
            ogg ? OggJobs(arguments[2], std::stoi(arguments[3])) : LibraryJobs(arguments + 1);
        PrintTable(lines, before);
        if (!store.empty()) {
            Store(lines, store);
        }
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    return 0;
}
