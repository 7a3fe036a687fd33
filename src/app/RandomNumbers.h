// The random numbers of the program, one row of them for the whole process. RandomBetween draws from it.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <utility>

namespace quavernet {

class RandomNumbers {
public:
    using SeedSource = std::function<std::uint64_t()>;

    /// Without a source of its own a row begins at the time of a clock, which never gives the same time
    /// twice.
    explicit RandomNumbers(SeedSource source = &Time) : m_source(std::move(source)) { Randomize(); }

    /// Begins another row.
    void Randomize() { m_state = m_source(); }

    /// The next number: 0 or more, less than 1.
    double Rnd() {
        // SplitMix64: rows that begin at neighbouring seeds have nothing in common.
        m_state += Step;
        std::uint64_t bits = m_state;
        bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9;
        bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EB;
        constexpr double Unit = 0x1p-53;
        return static_cast<double>((bits ^ (bits >> 31)) >> 11) * Unit;
    }

private:
    static constexpr std::uint64_t Step = 0x9E3779B97F4A7C15; ///< 2^64 divided by the golden ratio, odd.

    // A clock may tick more coarsely than it is asked.
    static std::uint64_t Time() {
        static std::atomic<std::uint64_t> asked{0};
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        return static_cast<std::uint64_t>(now.count()) + Step * ++asked;
    }

    SeedSource m_source;
    std::uint64_t m_state = 0;
};

} // namespace quavernet
