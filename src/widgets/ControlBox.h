// Place and size of a control as the layout rules speak of it.
#pragma once

#include <cstdint>

namespace quavernet {

/// Twips, relative to the container.
struct ControlBox {
    std::int64_t Left = 0;
    std::int64_t Top = 0;
    std::int64_t Width = 0;
    std::int64_t Height = 0;

    bool operator==(const ControlBox&) const = default;
};

} // namespace quavernet
