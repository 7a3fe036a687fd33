// Every colour of the program's own on everything that it is seen on, on light and dark desktops.
#include "widgets/Colours.h"

#include "adapters/qt/QtText.h"

#include <QApplication>
#include <QStyle>
#include <QStyleFactory>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace quavernet::test {

namespace {

struct NamedDesktop {
    const char* Name;
    QPalette Palette;
};

QPalette PaletteOf(QRgb window, QRgb windowText, QRgb base, QRgb tint, QRgb text, QRgb highlight,
                   QRgb highlightedText, QRgb link) {
    QPalette palette;
    const std::pair<QPalette::ColorRole, QRgb> roles[] = {{QPalette::Window, window},
                                                          {QPalette::WindowText, windowText},
                                                          {QPalette::Button, window},
                                                          {QPalette::ButtonText, windowText},
                                                          {QPalette::Base, base},
                                                          {QPalette::AlternateBase, tint},
                                                          {QPalette::Text, text},
                                                          {QPalette::Highlight, highlight},
                                                          {QPalette::HighlightedText, highlightedText},
                                                          {QPalette::Link, link}};
    for (const auto& [role, color] : roles) {
        palette.setColor(role, QColor(color));
    }
    return palette;
}

/// The toolkit's own palette, and such as desktops have.
std::vector<NamedDesktop> SomeDesktops() {
    const std::unique_ptr<QStyle> fusion(QStyleFactory::create(QStringLiteral("Fusion")));
    return {
        {"the toolkit's", fusion->standardPalette()},
        {"light, a light blue",
         PaletteOf(0xEFF0F1, 0x232629, 0xFFFFFF, 0xF7F7F7, 0x232629, 0x3DAEE9, 0xFFFFFF, 0x2980B9)},
        {"light, an orange",
         PaletteOf(0xF6F5F4, 0x2E3436, 0xFFFFFF, 0xFAFAFA, 0x000000, 0xE95420, 0xFFFFFF, 0x1B6ACB)},
        {"light, a yellow with black",
         PaletteOf(0xEFEFEF, 0x000000, 0xFFFFFF, 0xF0F0F0, 0x000000, 0xFFD42A, 0x000000, 0x0000FF)},
        {"dark, a light blue",
         PaletteOf(0x2A2E32, 0xFCFCFC, 0x1B1E20, 0x232629, 0xFCFCFC, 0x3DAEE9, 0xFCFCFC, 0x1D99F3)},
        {"dark, a link that it forgot",
         PaletteOf(0x353535, 0xFFFFFF, 0x191919, 0x353535, 0xFFFFFF, 0x2A82DA, 0x000000, 0x0000FF)},
        {"dark, a green",
         PaletteOf(0x242424, 0xFFFFFF, 0x1E1E1E, 0x282828, 0xEEEEEE, 0x26A269, 0xFFFFFF, 0x78AEED)},
        {"black and white",
         PaletteOf(0x000000, 0xFFFFFF, 0x000000, 0x000000, 0xFFFFFF, 0xFFFFFF, 0x000000, 0xFFFF00)},
    };
}

/// A colour of the program's, or one of the desktop's beside it.
struct Seen {
    Seen(OwnColour own) // NOLINT(google-explicit-constructor): the table below is to be read.
        : Own(own), Of([own](const QPalette& palette) { return ColourOf(own, palette); }) {}
    Seen(QPalette::ColorRole role) // NOLINT(google-explicit-constructor)
        : Of([role](const QPalette& palette) { return palette.color(QPalette::Active, role); }) {}

    OwnColour Own = OwnColour::Count;
    std::function<QColor(const QPalette&)> Of;
};

struct Use {
    const char* Where;
    Seen Front;
    Seen Ground;
    double Least;
};

const std::vector<Use>& Uses() {
    using enum OwnColour;
    static const std::vector<Use> uses{
        {"the letters", Letter, QPalette::Window, TextContrast},
        {"the letter under the mouse", HoveredLetter, HoverGround, TextContrast},
        {"the frame of a filter in force", Letter, QPalette::Window, MarkContrast},
        {"the same, to the inside", Letter, QPalette::Base, MarkContrast},
        {"the name of a category", Letter, QPalette::Base, TextContrast},
        {"a category that takes a drop", Letter, DropGround, TextContrast},
        {"a file that takes a drop", QPalette::Text, DropGround, TextContrast},
        {"the frame around it", FocusLine, QPalette::Base, MarkContrast},
        {"a selected row of list and tree", QPalette::HighlightedText, SelectionGround, TextContrast},
        {"the hint in a field", Hint, QPalette::Base, TextContrast},
        {"the entry that plays", QPalette::Text, PlayingGround, TextContrast},
        {"an entry that cannot be played", FaultyEntry, QPalette::Base, TextContrast},
        {"the same while it is the one that plays", FaultyEntry, PlayingGround, TextContrast},
        {"a link of the help", Link, QPalette::Base, TextContrast},
        {"a link in a note of the help", Link, QPalette::AlternateBase, TextContrast},
        {"the border of a table of the help", Edge, QPalette::Base, MarkContrast},
        {"the frame around what has the keyboard", FocusLine, QPalette::Window, MarkContrast},
        {"the edges of the status bar's panels", Edge, QPalette::Window, MarkContrast},
        {"the frame of an empty picture", Edge, QPalette::Base, MarkContrast},
        {"the start picture", SplashText, SplashGround, TextContrast},
        {"its frame", SplashEdge, SplashGround, MarkContrast},
        // The desktop's own, where the program paints with them.
        {"a row of the list, a page of the help", QPalette::Text, QPalette::Base, TextContrast},
        {"a tinted row, a note of the help", QPalette::Text, QPalette::AlternateBase, TextContrast},
        {"the head of the list, a field to read", QPalette::ButtonText, QPalette::Button, TextContrast},
        {"the status bar, the captions", QPalette::WindowText, QPalette::Window, TextContrast},
    };
    return uses;
}

} // namespace

TEST(ColoursTest, EveryColourIsReadOrSeenOnAllThatItIsShownOn) {
    for (const NamedDesktop& desktop : SomeDesktops()) {
        for (const Use& use : Uses()) {
            const QColor front = use.Front.Of(desktop.Palette);
            const QColor ground = use.Ground.Of(desktop.Palette);
            EXPECT_EQ(front.alpha(), 255) << use.Where << ": what is see-through has another contrast";
            EXPECT_GE(Contrast(front, ground), use.Least)
                << desktop.Name << ", " << use.Where << ": " << FromQString(front.name()) << " on "
                << FromQString(ground.name());
        }
    }
}

TEST(ColoursTest, NoColourOfTheTableIsForgottenHere) {
    std::set<OwnColour> used;
    for (const Use& use : Uses()) {
        used.insert(use.Front.Own);
        used.insert(use.Ground.Own);
    }
    for (int colour = 0; colour < static_cast<int>(OwnColour::Count); ++colour) {
        EXPECT_TRUE(used.contains(static_cast<OwnColour>(colour))) << colour;
        EXPECT_TRUE(ColourOf(static_cast<OwnColour>(colour), QApplication::palette()).isValid()) << colour;
    }
}

TEST(ColoursTest, AColourThatIsStrongEnoughIsTakenAsItIs) {
    const QPalette yellow = SomeDesktops()[3].Palette;
    EXPECT_EQ(ColourOf(OwnColour::SelectionGround, yellow), QColor(0xFF, 0xD4, 0x2A));
    EXPECT_EQ(ColourOf(OwnColour::Letter, yellow), QColor(0, 0, 0xC0));
    EXPECT_EQ(ColourOf(OwnColour::Link, yellow), QColor(0, 0, 0xFF));
    const QPalette blue = SomeDesktops()[1].Palette;
    const QColor ground = ColourOf(OwnColour::SelectionGround, blue);
    EXPECT_NEAR(ground.hueF(), QColor(0x3D, 0xAE, 0xE9).hueF(), 0.02) << "still the desktop's blue";
    EXPECT_LT(Contrast(ground, Qt::white), 5) << "and no darker than it has to be";
}

TEST(ColoursTest, ContrastIsThatOfTheGuidelines) {
    EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21, 1e-9);
    EXPECT_NEAR(Contrast(Qt::white, Qt::white), 1, 1e-9);
    EXPECT_NEAR(Contrast(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.01);
}

TEST(ColoursTest, NumbersOfTheLogicAreColoursOfTheTable) {
    const QPalette palette = SomeDesktops()[0].Palette;
    EXPECT_EQ(ColourOfNumber(0xC00000, palette), QColor(0, 0, 0xC0)) << "blue is the highest byte";
    EXPECT_EQ(ColourOfNumber(0xFFFFFF, palette), QColor(0xFF, 0xFF, 0xFF));
}

TEST(ColoursTest, AHintMadeByADisabledFieldIsAsStrongAsAnother) {
    QPalette palette =
        PaletteOf(0xEFEFEF, 0x000000, 0xFFFFFF, 0xF0F0F0, 0x000000, 0xFFD42A, 0x000000, 0x0000FF);
    const QColor hint = ColourOf(OwnColour::Hint, palette);
    palette.setColor(QPalette::Disabled, QPalette::Text, QColor(0xDD, 0xDD, 0xDD));
    palette.setCurrentColorGroup(QPalette::Disabled);
    EXPECT_EQ(ColourOf(OwnColour::Hint, palette), hint);
}

TEST(ColoursTest, AChangedPaletteHasColoursOfItsOwn) {
    QPalette palette =
        PaletteOf(0xEFEFEF, 0x000000, 0xFFFFFF, 0xF0F0F0, 0x000000, 0xFFD42A, 0x000000, 0x0000FF);
    const QPalette before = palette;
    const QColor edge = ColourOf(OwnColour::Edge, palette);
    palette.setColor(QPalette::Window, QColor(0, 0, 0));
    palette.setColor(QPalette::WindowText, QColor(0xFF, 0xFF, 0xFF));
    EXPECT_NE(ColourOf(OwnColour::Edge, palette), edge);
    EXPECT_EQ(ColourOf(OwnColour::Edge, before), edge);
}

} // namespace quavernet::test
