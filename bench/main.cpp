// Times the program's jobs beside their physical floors. Called by bench/run.
#include "Jobs.h"

#include <cstdio>
#include <cstring>
#include <exception>
#include <string>
#include <vector>

int main(int count, char** arguments) {
    using namespace quavernet::bench;
    if (count < 6) {
        std::fprintf(stderr, "quavernet_bench MUSIC WORK TEMPLATE ROWS ROUNDS [--only scan|list] "
                             "[--store FILE] [--compare FILE]\n");
        return 2;
    }
    try {
        const Setting setting{arguments[1], arguments[2], arguments[3], std::stoul(arguments[4]),
                              std::stoi(arguments[5])};
        std::vector<Line> before;
        std::string store;
        std::string only;
        for (int position = 6; position + 1 < count; position += 2) {
            if (std::strcmp(arguments[position], "--store") == 0) {
                store = arguments[position + 1];
            } else if (std::strcmp(arguments[position], "--only") == 0) {
                only = arguments[position + 1];
            } else {
                before = Load(arguments[position + 1]);
            }
        }
        std::vector<Line> lines;
        if (only != "list") {
            lines = ScanJobs(setting);
        }
        if (only != "scan") {
            for (Line& line : ListJobs(setting)) {
                lines.push_back(std::move(line));
            }
        }
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
