// The jobs that need no window, and the libraries for those that do. Called by bench/run.
#include "ColdJobs.h"
#include "Floors.h"
#include "Libraries.h"
#include "Lines.h"
#include "OggJobs.h"
#include "OggSaveJobs.h"
#include "PlayerJobs.h"
#include "QueueJobs.h"
#include "RenameJobs.h"
#include "SilentScanner.h"
#include "TagSaveJobs.h"

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace {

/// Seconds of the fastest bare read of all rows of a library's list.
double BareListSeconds(const std::string& library, int rounds) {
    using namespace quavernet::bench;
    BareLibrary bare(library);
    return Measure("", 0, {}, rounds, {nullptr, [&] { bare.ReadAll(AllRows); }}, {}).value;
}

} // namespace

int main(int count, char** arguments) {
    using namespace quavernet::bench;
    const std::vector<std::string> words(arguments + 1, arguments + count);
    try {
        if (words.size() == 4 && words[0] == "library") {
            MakeLibrary(words[1], words[2], std::stoul(words[3]));
            return 0;
        }
        if (words.size() == 3 && words[0] == "rows") {
            std::printf("%.9g\n", BareListSeconds(words[1], std::stoi(words[2])));
            return 0;
        }
        if (words.size() == 6 && words[0] == "scan") {
            SilentScanner scanner(words[1], words[2] + "/scan.db", words[3]);
            ScanJobs({words[1], words[2], words[4], std::stoi(words[5])}, scanner);
            return 0;
        }
        if (words.size() == 6 && (words[0] == "cold" || words[0] == "warm" || words[0] == "share")) {
            const ColdSetting setting{words[1], words[2], words[3], words[4], std::stoi(words[5])};
            (words[0] == "cold" ? ColdJobs : words[0] == "warm" ? WarmJobs : ShareJobs)(setting);
            return 0;
        }
        if (words.size() == 3 && words[0] == "ogg") {
            OggJobs(words[1], std::stoi(words[2]));
            return 0;
        }
        if (words.size() == 4 && words[0] == "oggsave") {
            OggSaveJobs(words[1], words[2], std::stoi(words[3]));
            return 0;
        }
        if (words.size() == 3 && words[0] == "player") {
            PlayerJobs(words[1], std::stoi(words[2]));
            return 0;
        }
        if (words.size() == 4 && words[0] == "queue") {
            QueueJobs(words[1], words[2], std::stoi(words[3]));
            return 0;
        }
        if (words.size() == 4 && words[0] == "tagsave") {
            TagSaveJobs(words[1], words[2], std::stoi(words[3]));
            return 0;
        }
        if (words.size() == 4 && words[0] == "rename") {
            RenameJobs(words[1], words[2], std::stoi(words[3]));
            return 0;
        }
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    std::fprintf(stderr, "quavernet_bench library FILE TEMPLATE ROWS\n"
                         "quavernet_bench rows FILE ROUNDS\n"
                         "quavernet_bench scan MUSIC WORK TEMPLATE NAME ROUNDS\n"
                         "quavernet_bench cold MUSIC WORK TEMPLATE NAME ROUNDS\n"
                         "quavernet_bench warm MUSIC WORK TEMPLATE NAME ROUNDS\n"
                         "quavernet_bench share MUSIC WORK TEMPLATE NAME ROUNDS\n"
                         "quavernet_bench ogg MUSIC ROUNDS\n"
                         "quavernet_bench oggsave SONG WORK ROUNDS\n"
                         "quavernet_bench tagsave SONG WORK ROUNDS\n"
                         "quavernet_bench player MUSIC ROUNDS\n"
                         "quavernet_bench queue LIBRARY WORK ROUNDS\n"
                         "quavernet_bench rename TEMPLATE WORK ROUNDS\n");
    return 2;
}
