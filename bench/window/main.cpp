// The jobs whose end is on the screen. Called by bench/run, with a screen and a home folder of its own.
#include "window/ChartJobs.h"
#include "window/CoverJobs.h"
#include "window/DetailsJobs.h"
#include "window/ListJobs.h"
#include "window/PrintJobs.h"
#include "window/RealWindow.h"
#include "window/TreeJobs.h"
#include "window/WindowScanner.h"

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

int main(int count, char** arguments) {
    using namespace quavernet::bench;
    const std::vector<std::string> words(arguments + 1, arguments + count);
    try {
        RealWindow window(count, arguments);
        window.Start();
        if (words.size() == 2 && words[0] == "list") {
            ListJobs(window, std::stoi(words[1]));
            return 0;
        }
        if (words.size() == 2 && words[0] == "charts") {
            ChartJobs(window, std::stoi(words[1]));
            return 0;
        }
        if (words.size() == 3 && words[0] == "tree") {
            TreeJobs(window, words[1], std::stoi(words[2]));
            return 0;
        }
        if (words.size() == 3 && words[0] == "details") {
            DetailsJobs(window, words[1], std::stoi(words[2]));
            return 0;
        }
        if (words.size() == 3 && words[0] == "covers") {
            CoverJobs(words[1], std::stoi(words[2]));
            return 0;
        }
        if (words.size() == 3 && words[0] == "print") {
            PrintJobs(window, words[1], std::stoi(words[2]));
            return 0;
        }
        if (words.size() == 1 && words[0] == "memory") {
            ListMemory(window);
            return 0;
        }
        if (words.size() == 5 && words[0] == "scan") {
            WindowScanner scanner(window, words[1]);
            ScanJobs({words[1], words[2], words[3], std::stoi(words[4])}, scanner);
            return 0;
        }
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    std::fprintf(stderr, "quavernet_window_bench list ROUNDS\n"
                         "quavernet_window_bench charts ROUNDS\n"
                         "quavernet_window_bench tree WORK ROUNDS\n"
                         "quavernet_window_bench covers WORK ROUNDS\n"
                         "quavernet_window_bench details SONG ROUNDS\n"
                         "quavernet_window_bench print WORK ROUNDS\n"
                         "quavernet_window_bench memory\n"
                         "quavernet_window_bench scan MUSIC WORK NAME ROUNDS\n");
    return 2;
}
