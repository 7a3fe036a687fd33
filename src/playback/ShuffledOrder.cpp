#include "playback/ShuffledOrder.h"

#include "playback/RandomBetween.h"

#include <bit>
#include <cstddef>

namespace quavernet {

namespace {

/// Places that are left, found by their number among these in logarithmic time: node i of the tree counts
/// the places of a range that ends at i.
class PlacesLeft {
public:
    explicit PlacesLeft(std::size_t count) : m_counts(count + 1), m_step(std::bit_floor(count)) {
        for (std::size_t i = 1; i <= count; ++i) {
            m_counts[i] += 1;
            if (const std::size_t above = i + (i & -i); above <= count) {
                m_counts[above] += m_counts[i];
            }
        }
    }

    /// Takes the one with the number, from 1 on, and gives its place, from 0 on.
    std::size_t Take(std::int32_t number) {
        std::size_t before = 0; // All places up to here have smaller numbers.
        for (std::size_t step = m_step; step > 0; step /= 2) {
            if (before + step < m_counts.size() && m_counts[before + step] < number) {
                before += step;
                number -= m_counts[before];
            }
        }
        for (std::size_t i = before + 1; i < m_counts.size(); i += i & -i) {
            --m_counts[i];
        }
        return before;
    }

private:
    std::vector<std::int32_t> m_counts;
    std::size_t m_step;
};

} // namespace

std::vector<std::int32_t> ShuffledOrder(std::int32_t count) {
    PlacesLeft places(static_cast<std::size_t>(count));
    std::vector<std::int32_t> order;
    order.reserve(static_cast<std::size_t>(count));
    for (std::int32_t left = count; left > 0; --left) {
        const auto number = static_cast<std::int32_t>(RandomBetween(1, left, true, true));
        order.push_back(static_cast<std::int32_t>(places.Take(number)));
    }
    return order;
}

} // namespace quavernet
