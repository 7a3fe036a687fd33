// The texts of the details dialog in both languages, and its help.
#include "gui/DetailsTest.h"

#include <array>
#include <string>

#include <gmock/gmock.h>

namespace quavernet::test {

namespace {

using ::testing::IsEmpty;

} // namespace

TEST_F(DetailsTest, F1OnEachControlOpensItsPage) {
    OpenTagged();
    for (QWidget* control : dialog->findChildren<QWidget*>()) {
        if (control->focusPolicy() != Qt::NoFocus && control->isVisible() && control->isEnabled()) {
            helpViewer.shown.clear();
            QTest::keyClick(control, Qt::Key_F1);
            ASSERT_EQ(helpViewer.shown.size(), 1U) << FromQString(control->objectName());
            EXPECT_EQ(helpViewer.shown[0].second, "HTML\\details.html");
        }
    }
}

TEST_F(DetailsTest, TheTextsAreThoseOfTheLanguageAndEveryControlHasAName) {
    struct Captions {
        const char* language;
        std::array<const char*, 16> labels;
        std::array<const char*, 4> buttons; // OK, Cancel, Edit, Save
        const char* cover;
    };
    constexpr std::array Languages{Captions{"GER",
                                            {"Pfad:", "Interpret:", "Titel:", "Album:", "Genre:", "Grösse:",
                                             "Qualität:", "Länge:", "Frequenz:", "Mode:", "Layer:",
                                             "Version:", "Jahr:", "Sprache:", "Publisher:", "Kommentar:"},
                                            {"OK", "Abbrechen", "Bearbeiten", "Speichern"},
                                            "Cover..."},
                                   Captions{"ENG",
                                            {"Path:", "Performer:", "Title:", "Album:", "Genre:", "Size:",
                                             "Quality:", "Length:", "Frequency:", "Mode:", "Layer:",
                                             "Version:", "Year:", "Language:", "Publisher:", "Comment:"},
                                            {"OK", "Cancel", "Edit", "Save"},
                                            "Cover..."}};
    showCovers = [](const std::string&) {};
    for (const Captions& captions : Languages) {
        settings.values["Language"] = captions.language;
        OpenTagged();
        for (std::size_t i = 0; i < captions.labels.size(); ++i) {
            const std::string name = "Label" + std::to_string(i + 1);
            EXPECT_EQ(Caption(Part<QLabel>(name.c_str()).text()), captions.labels[i]);
        }
        constexpr std::array Buttons{"cmdOK", "cmdCancel", "cmdEdit", "cmdSave"};
        for (std::size_t i = 0; i < Buttons.size(); ++i) {
            EXPECT_EQ(Caption(Part<QPushButton>(Buttons[i]).text()), captions.buttons[i]);
        }
        EXPECT_EQ(Caption(Part<QLabel>("lblCover").text()), captions.cover);
        Click("cmdEdit");
        for (const char* option : {"optID3V1", "optID3V2"}) {
            Part<QRadioButton>(option).click();
            EXPECT_THAT(Nameless(), IsEmpty());
        }
    }
}

} // namespace quavernet::test
