#include "Lines.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace quavernet::bench {

namespace {

double TimeOf(const Timed& timed) {
    if (timed.prepare) {
        timed.prepare();
    }
    const auto start = std::chrono::steady_clock::now();
    timed.run();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Other programs on the machine only ever add time: the fastest round is the least disturbed one.
double Fastest(const std::vector<double>& values) {
    return values.empty() ? 0 : *std::min_element(values.begin(), values.end());
}

} // namespace

Line Measure(const std::string& job, std::size_t items, const Wanted& wanted, int rounds, const Timed& timed,
             const Timed& floor) {
    std::vector<double> ours;
    std::vector<double> floors;
    for (int round = 0; round < rounds; ++round) {
        if (floor.run) {
            floors.push_back(TimeOf(floor));
        }
        ours.push_back(TimeOf(timed));
    }
    return {job, "s", Fastest(ours), Fastest(floors), items, wanted};
}

void Print(const Line& line) {
    std::printf("%s\t%s\t%.9g\t%.9g\t%zu\t%g\t%g\t%g\t%g\n", line.job.c_str(), line.unit, line.value,
                line.floor, line.items, line.wanted.ratio, line.wanted.rate, line.wanted.limit,
                line.wanted.over);
    std::fflush(stdout);
}

} // namespace quavernet::bench
