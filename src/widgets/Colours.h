// Every colour that is the program's own, in one table. Forms and painters ask here and nothing else names a
// colour, so that one test computes the contrast of all of them. All other colours are the desktop's.
#pragma once

#include <QColor>
#include <QPalette>

#include <cstdint>

namespace quavernet {

/// What is read needs a contrast of 4.5 to its ground, a mark that is only seen one of 3.
inline constexpr double TextContrast = 4.5;
inline constexpr double MarkContrast = 3;

enum class OwnColour {
    Letter,          ///< Letters of the row, categories of the tree, frames of filters in force.
    HoveredLetter,   ///< On HoverGround.
    HoverGround,     ///< Of the letter under the mouse.
    Hint,            ///< In an empty field.
    SelectionGround, ///< Of rows in list and tree, under the desktop's HighlightedText.
    DropGround,      ///< Of the node that takes a drop.
    PlayingGround,   ///< Of the entry that plays.
    FaultyEntry,     ///< The text of one that can't be played.
    Link,            ///< In a page of the help.
    FocusLine,       ///< Around what has the keyboard.
    Edge,            ///< Between panels, around an empty picture, of a table.
    SplashText,
    SplashGround,
    SplashEdge,
    Count ///< How many there are.
};

/// The colour on a desktop with this palette. Where the desktop's own colours would leave it too faint it
/// goes as far towards a stronger one as it has to. It is that of an active window also in one that is not,
/// or that is disabled. For the main thread alone: the colours of the last palette are kept, since cells are
/// painted with them.
QColor ColourOf(OwnColour colour, const QPalette& palette);

/// That of a number of the logic (blue, green, red from the highest byte down): 0xC00000, the dark blue of
/// letters and categories, or 0xFFFFFF, the white of a letter under the mouse.
QColor ColourOfNumber(std::uint32_t number, const QPalette& palette);

/// From 1, for the same colour, to 21, for black on white; as the guidelines for accessible pages define it.
double Contrast(const QColor& one, const QColor& other);

inline bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::Window).lightness() <
           palette.color(QPalette::Active, QPalette::WindowText).lightness();
}

} // namespace quavernet
