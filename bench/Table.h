// Times jobs beside their floors and prints the one table of a run. Used by every benchmark.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace quavernet::bench {

/// Fastest rounds of one job and of the least that the machine needs for the same.
struct Line {
    std::string job;
    double seconds = 0;
    double floorSeconds = 0;
    std::size_t items = 0; ///< Files or rows that one run handles.
    double wantedRatio = 0;
};

/// One kind of run: `prepare` is not timed and may be empty.
struct Timed {
    std::function<void()> prepare;
    std::function<void()> run;
};

/// Runs job and floor by turns, so that both see the same machine.
Line Measure(const std::string& job, std::size_t items, double wantedRatio, int rounds, const Timed& timed,
             const Timed& floor);

/// Prints the table; `before` (a stored run, may be empty) adds a column of ratios to it.
void PrintTable(const std::vector<Line>& lines, const std::vector<Line>& before);

void Store(const std::vector<Line>& lines, const std::string& path);
std::vector<Line> Load(const std::string& path);

} // namespace quavernet::bench
