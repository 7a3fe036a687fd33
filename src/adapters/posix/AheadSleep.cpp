#include "adapters/posix/AheadSleep.h"

#include <algorithm>
#include <utility>

namespace quavernet::posix {

namespace {

constexpr std::size_t UntilSleep = 64; // Things from memory.
constexpr std::size_t LongestInterval = 1024;

} // namespace

// A look costs as much as to ask for a file or two; a folder, of which there are fewer, counts as several
// files.
bool AheadSleep::Wakes(const std::function<std::uint64_t()>& blocks, bool isFolder) {
    const std::size_t step = isFolder ? ShortestInterval : 1;
    if (m_blocks && m_untilLook > step) {
        m_untilLook -= step;
        return false;
    }
    m_untilLook = m_interval;
    const std::uint64_t now = blocks();
    if (now <= std::exchange(m_blocks, now).value_or(now)) {
        return false;
    }
    m_isAsleep = false;
    m_hasMetDisk = false;
    m_fromMemory = 0;
    m_untilLook = 0; // The next sleep begins with a look.
    return true;
}

bool AheadSleep::FallsAsleep(std::uint64_t blocks) {
    m_hasMetDisk = m_hasMetDisk || blocks > 0;
    m_fromMemory = blocks > 0 ? 0 : m_fromMemory + 1;
    if (!m_maySleep || m_isAsleep || m_fromMemory < UntilSleep) {
        return false;
    }
    m_isAsleep = true;
    m_blocks.reset();
    m_interval = m_hasMetDisk ? ShortestInterval : std::min(2 * m_interval, LongestInterval);
    return true;
}

} // namespace quavernet::posix
