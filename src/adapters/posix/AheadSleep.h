// Whether readers are worth their cost on a disk of this machine: only while the disk really gives something.
// What the system has in its memory comes sooner without them. Asked by AheadPlan.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

namespace quavernet::posix {

class AheadSleep {
public:
    /// `maySleep`: what may sleep begins asleep; all else is awake for ever.
    explicit AheadSleep(bool maySleep) : m_maySleep(maySleep), m_isAsleep(maySleep) {}

    bool MaySleep() const { return m_maySleep; }
    bool IsAsleep() const { return m_isAsleep; }

    /// Whether it sleeps, and need not look up for one more file. Asked by the thread alone that asks for the
    /// files, which needs no lock for it.
    bool SleepsOn() {
        if (!m_isAsleep || m_untilLook <= 1) {
            return false;
        }
        --m_untilLook;
        return true;
    }

    /// Asleep: a file or folder is asked for, and the disk has given that thread so many blocks since it
    /// began. True, and awake from now on, if they have become more.
    bool Wakes(const std::function<std::uint64_t()>& blocks, bool isFolder);

    /// Awake: a reader has brought something that the disk had to give so many blocks for. True, and asleep
    /// from now on, when many things in a row needed none.
    bool FallsAsleep(std::uint64_t blocks);

private:
    static constexpr std::size_t ShortestInterval = 8;

    const bool m_maySleep;
    std::atomic<bool> m_isAsleep;
    std::size_t m_fromMemory = 0;              ///< Things in a row that the disk had to give nothing for.
    bool m_hasMetDisk = false;                 ///< Since it woke.
    std::optional<std::uint64_t> m_blocks;     ///< What the asking thread had got at the last look.
    std::size_t m_interval = ShortestInterval; ///< Files between two looks; more after a needless waking.
    std::size_t m_untilLook = 0;               ///< The asking thread's own.
};

} // namespace quavernet::posix
