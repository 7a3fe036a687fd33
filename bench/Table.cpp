#include "Table.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>

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
    return *std::min_element(values.begin(), values.end());
}

} // namespace

Line Measure(const std::string& job, std::size_t items, double wantedRatio, int rounds, const Timed& timed,
             const Timed& floor) {
    std::vector<double> ours;
    std::vector<double> floors;
    for (int round = 0; round < rounds; ++round) {
        floors.push_back(TimeOf(floor));
        ours.push_back(TimeOf(timed));
    }
    std::fprintf(stderr, "  %s\n", job.c_str());
    return {job, Fastest(ours), Fastest(floors), items, wantedRatio};
}

void PrintTable(const std::vector<Line>& lines, const std::vector<Line>& before) {
    std::printf("%-34s %10s %12s %10s %12s %7s %7s%s\n", "Job", "ms", "items/s", "floor ms", "floor it/s",
                "ratio", "wanted", before.empty() ? "" : "  against stored");
    for (const Line& line : lines) {
        const auto items = static_cast<double>(line.items);
        std::printf("%-34s %10.2f %12.0f %10.2f %12.0f %7.2f %7.2f", line.job.c_str(), line.seconds * 1e3,
                    items / line.seconds, line.floorSeconds * 1e3, items / line.floorSeconds,
                    line.seconds / line.floorSeconds, line.wantedRatio);
        for (const Line& old : before) {
            if (old.job == line.job) {
                // Ratios to the floor are compared, so that a slower machine is no slower program.
                std::printf("  %.2f x",
                            (line.seconds / line.floorSeconds) / (old.seconds / old.floorSeconds));
            }
        }
        std::printf("\n");
    }
}

void Store(const std::vector<Line>& lines, const std::string& path) {
    std::ofstream file(path);
    for (const Line& line : lines) {
        file << line.job << '\t' << line.seconds << '\t' << line.floorSeconds << '\t' << line.items << '\n';
    }
    if (!file.flush()) {
        throw std::runtime_error("can't write " + path);
    }
}

std::vector<Line> Load(const std::string& path) {
    std::ifstream file(path);
    if (!file) {
        throw std::runtime_error("can't read " + path);
    }
    std::vector<Line> lines;
    for (std::string text; std::getline(file, text);) {
        Line line;
        std::istringstream fields(text);
        std::getline(fields, line.job, '\t');
        if (fields >> line.seconds >> line.floorSeconds >> line.items) {
            lines.push_back(line);
        }
    }
    return lines;
}

} // namespace quavernet::bench
