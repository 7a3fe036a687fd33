// Times jobs beside their floors and prints each as a line that bench/run puts into its table. Used by every
// benchmark.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace quavernet::bench {

/// What a figure should keep to. Each that is set counts.
struct Wanted {
    double ratio = 0; ///< At most this many times the floor.
    double rate = 0;  ///< At least this many items a second.
    double limit = 0; ///< At most this much, in the line's unit.
    double over = 0;  ///< At most this much more than the floor.
};

/// One figure of a run.
struct Line {
    std::string job;
    const char* unit = "s"; ///< "s" or "MB".
    double value = 0;
    double floor = 0;      ///< The least that this machine needs for the same; 0 if there is none to measure.
    std::size_t items = 0; ///< Files or rows that one run handles; 0 if it is not about any.
    Wanted wanted;
};

/// One kind of run: `prepare` is not timed and may be empty.
struct Timed {
    std::function<void()> prepare;
    std::function<void()> run;
};

/// Runs job and floor by turns, so that both see the same machine; the fastest rounds count. A floor without
/// `run` is none.
Line Measure(const std::string& job, std::size_t items, const Wanted& wanted, int rounds, const Timed& timed,
             const Timed& floor);

/// Job, unit, value, floor, items and the four wants, separated by tabs.
void Print(const Line& line);

} // namespace quavernet::bench
