// How a caption shows the letter that the keyboard reaches it by. Used for menus and for the controls of
// dialogs.
#pragma once

#include <cstddef>

namespace quavernet {

/// The caption with "&" before the character at this place; none there: no mark. Every other "&" is doubled,
/// so that it shows. `Text` is a string of any kind of characters.
template <typename Text> Text MarkedCaption(const Text& caption, std::size_t place) {
    constexpr typename Text::value_type Mark{u'&'};
    Text marked;
    std::size_t at = 0;
    for (const auto character : caption) {
        if (at++ == place || character == Mark) {
            marked += Mark;
        }
        marked += character;
    }
    return marked;
}

} // namespace quavernet
