#include "widgets/Colours.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <optional>

namespace quavernet {

namespace {

double Luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// A share from 0 (the first) to 1 (the second).
QColor Mixed(const QColor& first, const QColor& second, double share) {
    const auto mix = [share](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * share)); };
    return QColor(mix(first.red(), second.red()), mix(first.green(), second.green()),
                  mix(first.blue(), second.blue()));
}

/// The wanted colour, or the first on the way to the stronger one that has the contrast to all of the others.
QColor Strengthened(const QColor& wanted, const QColor& stronger, std::initializer_list<QColor> others,
                    double least) {
    constexpr int Steps = 40;
    for (int step = 0; step < Steps; ++step) {
        const QColor tried = Mixed(wanted, stronger, static_cast<double>(step) / Steps);
        if (std::ranges::all_of(others,
                                [&](const QColor& other) { return Contrast(tried, other) >= least; })) {
            return tried;
        }
    }
    return stronger;
}

/// White or black, whichever is further from a colour.
QColor Opposite(const QColor& color) {
    const QColor white(0xFF, 0xFF, 0xFF);
    const QColor black(0, 0, 0);
    return Contrast(color, white) > Contrast(color, black) ? white : black;
}

/// The colours of one desktop, by the uses that they have there.
struct DesktopColours {
    explicit DesktopColours(const QPalette& palette)
        : Window(Active(palette, QPalette::Window)), WindowText(Active(palette, QPalette::WindowText)),
          Base(Active(palette, QPalette::Base)), Tint(Active(palette, QPalette::AlternateBase)),
          Text(Active(palette, QPalette::Text)), Highlight(Active(palette, QPalette::Highlight)),
          HighlightedText(Active(palette, QPalette::HighlightedText)), Link(Active(palette, QPalette::Link)),
          Dark(IsDark(palette)) {}

    // A palette's own group is that of the widget that has it: a disabled one's texts would be too faint.
    static QColor Active(const QPalette& palette, QPalette::ColorRole role) {
        return palette.color(QPalette::Active, role);
    }

    QColor Window;
    QColor WindowText;
    QColor Base;
    QColor Tint;
    QColor Text;
    QColor Highlight;
    QColor HighlightedText;
    QColor Link;
    bool Dark;
};

QColor LetterOn(const DesktopColours& desktop) {
    const QColor wanted = desktop.Dark ? QColor(0x8A, 0xB4, 0xFF) : QColor(0, 0, 0xC0);
    return Strengthened(wanted, Opposite(desktop.Base), {desktop.Window, desktop.Base}, TextContrast);
}

// A breath of the selection's colour, on which texts stay as legible as on the plain ground.
QColor TintedGround(const DesktopColours& desktop, double share, std::initializer_list<QColor> texts) {
    return Strengthened(Mixed(desktop.Base, desktop.Highlight, share), desktop.Base, texts, TextContrast);
}

QColor PlayingOn(const DesktopColours& desktop) {
    return TintedGround(desktop, 0.2, {desktop.Text});
}

QColor Computed(OwnColour colour, const DesktopColours& desktop) {
    switch (colour) {
    case OwnColour::Letter:
        return LetterOn(desktop);
    case OwnColour::HoveredLetter:
    case OwnColour::SplashText:
        return QColor(0xFF, 0xFF, 0xFF);
    case OwnColour::HoverGround:
        return QColor(0x2A, 0x5D, 0xA8);
    case OwnColour::Hint: // The toolkit's half-transparent one is too faint to read.
        return Strengthened(Mixed(desktop.Base, desktop.Text, 0.69), desktop.Text, {desktop.Base},
                            TextContrast);
    case OwnColour::SelectionGround:
        return Strengthened(desktop.Highlight, Opposite(desktop.HighlightedText), {desktop.HighlightedText},
                            TextContrast);
    case OwnColour::DropGround:
        return TintedGround(desktop, 0.25, {desktop.Text, LetterOn(desktop)});
    case OwnColour::PlayingGround:
        return PlayingOn(desktop);
    case OwnColour::FaultyEntry: // Less than the others, but still to be read.
        return Strengthened(Mixed(desktop.Base, desktop.Text, 0.6), desktop.Text,
                            {desktop.Base, PlayingOn(desktop)}, TextContrast);
    case OwnColour::Link:
        return Strengthened(desktop.Link, Opposite(desktop.Base), {desktop.Base, desktop.Tint}, TextContrast);
    case OwnColour::FocusLine:
        return Strengthened(desktop.Highlight, desktop.WindowText, {desktop.Window, desktop.Base},
                            MarkContrast);
    case OwnColour::Edge:
        return Strengthened(Mixed(desktop.Window, desktop.WindowText, 0.2), desktop.WindowText,
                            {desktop.Window, desktop.Base}, MarkContrast);
    case OwnColour::SplashGround:
        return QColor(0x16, 0x32, 0x4F);
    case OwnColour::SplashEdge:
        return QColor(0x3B, 0x82, 0xD6);
    case OwnColour::Count:
        break;
    }
    return {};
}

} // namespace

double Contrast(const QColor& one, const QColor& other) {
    const double a = Luminance(one);
    const double b = Luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor ColourOf(OwnColour colour, const QPalette& palette) {
    struct Kept {
        qint64 Key = 0;
        std::array<std::optional<QColor>, static_cast<std::size_t>(OwnColour::Count)> Colours;
    };
    static Kept kept;
    if (colour == OwnColour::Count) {
        return {};
    }
    if (kept.Key != palette.cacheKey()) {
        kept = {palette.cacheKey(), {}};
    }
    std::optional<QColor>& known = kept.Colours[static_cast<std::size_t>(colour)];
    if (!known) {
        known = Computed(colour, DesktopColours(palette));
    }
    return *known;
}

QColor ColourOfNumber(std::uint32_t number, const QPalette& palette) {
    constexpr std::uint32_t White = 0xFFFFFF;
    return ColourOf(number == White ? OwnColour::HoveredLetter : OwnColour::Letter, palette);
}

} // namespace quavernet
