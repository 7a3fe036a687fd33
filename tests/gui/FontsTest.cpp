#include "gui/AllDialogs.h"
#include "gui/CutTexts.h"
#include "gui/PlayerWindowTest.h"

#include "browser/GridPaint.h"
#include "help/frmHelp.h"
#include "mainwindow/frmSplash.h"
#include "support/SmallAudio.h"
#include "widgets/Twips.h"

#include <QFontInfo>
#include <QStyle>
#include <QStyleOptionComboBox>

namespace quavernet::test {

namespace {

struct DesktopFont {
    const char* Family;
    int Points;
};

/// The program on a desktop with another font. The scale of the screen is that of the test's process.
class FontsTest : public PlayerWindowTest, public ::testing::WithParamInterface<DesktopFont> {
protected:
    FontsTest() {
        QApplication::setFont(QFont(QLatin1String(GetParam().Family), GetParam().Points));
        AddFile("Abba", "One");
        WriteBytes(folder / "One.mp3", Mp3Bytes("One", "Abba", "Best"));
        mainModule.Connection->Execute("Update Files set Path = '" + (folder / "One.mp3") + "'");
    }
    ~FontsTest() override {
        windows.reset();
        QApplication::setFont(m_usual);
    }

    /// The main window at its default size, however small the screen of the test is.
    void StartAtFullSize() {
        StartPlayer();
        Form().resize(QSize(1000, 733) * TwipScale(QApplication::font()));
        QCoreApplication::processEvents();
        Form().activateWindow();
        ClickRow(1);
    }
    void ExpectNothingCut() {
        const auto made = MakeDialogs(Form(), windows->Player());
        frmSplash splash(&Form());
        frmHelp help;
        help.LoadStrings();
        std::vector<QWidget*> all{&Form(), &Player(), &splash, &help};
        for (const auto& dialog : made) {
            all.push_back(dialog.get());
        }
        for (QWidget* window : all) {
            window->show();
            // On the small screen of a test the toolkit may have shown less than the window wants.
            window->resize(window->size().expandedTo(window->minimumSizeHint()));
            QCoreApplication::processEvents();
            EXPECT_EQ(CutTexts(*window), std::vector<std::string>{})
                << Name() << " " << FromQString(window->objectName());
        }
    }
    int Advance(const QString& text) { return QFontMetrics(Grid().font()).horizontalAdvance(text); }

    std::string Name() {
        return std::string(GetParam().Family) + " " + std::to_string(GetParam().Points) + " " +
               settings.values["Language"];
    }

private:
    QFont m_usual = QApplication::font();
};

const char* const BothLanguages[] = {"GER", "ENG"};

} // namespace

TEST_P(FontsTest, NoLabelAndNoButtonOfAnyWindowIsCut) {
    ASSERT_EQ(FromQString(QFontInfo(QApplication::font()).family()), GetParam().Family)
        << "the font has to be installed, see tools/packages.sh";
    for (const char* language : BothLanguages) {
        settings.values["Language"] = language;
        StartAtFullSize();
        ExpectNothingCut();
        CloseMain();
    }
}

TEST_P(FontsTest, DefaultColumnsHoldTheirHeadsWithTheArrowAndShortOnesTheirUsualTexts) {
    const QString usual[] = {{},
                             {},
                             QStringLiteral("59:59 min"),
                             QStringLiteral("999,99 MB"),
                             QStringLiteral("320"),
                             QStringLiteral("mp3")};
    for (const char* language : BothLanguages) {
        settings.values["Language"] = language;
        StartAtFullSize();
        const auto& head = static_cast<const ArrowHeader&>(*Grid().horizontalHeader());
        for (int column = 0; column < ListColumnCount; ++column) {
            Grid().Model().SetSortArrow(column, true);
            const QRect section(0, 0, Grid().columnWidth(column), head.height());
            const QString text = Grid().model()->headerData(column, Qt::Horizontal).toString();
            EXPECT_LE(head.fontMetrics().horizontalAdvance(text) + 4, head.TextRect(section, column).width())
                << Name() << " " << FromQString(text);
            constexpr int GridLine = 1;
            EXPECT_LE(Advance(usual[column]) + 4, Grid().columnWidth(column) - GridLine)
                << Name() << " " << FromQString(usual[column]);
        }
        EXPECT_GE(Grid().rowHeight(0), Grid().fontMetrics().height()) << Name();
        EXPECT_GE(head.height(), head.fontMetrics().height()) << Name();
        CloseMain();
    }
}

TEST_P(FontsTest, ListsAndStatusShowTheirFirstTextsWhole) {
    for (const char* language : BothLanguages) {
        settings.values["Language"] = language;
        StartAtFullSize();
        for (const char* name : {"cboDrive", "cboGenre", "cboAlbum"}) {
            auto& combo = Control<QComboBox>(name);
            QStyleOptionComboBox option;
            option.initFrom(&combo);
            option.currentText = combo.itemText(0);
            const QRect text = combo.style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                             QStyle::SC_ComboBoxEditField, &combo);
            EXPECT_GE(text.width() - 2, Advance(option.currentText)) << Name() << " " << name;
            EXPECT_GE(combo.height(), combo.fontMetrics().height()) << Name() << " " << name;
        }
        const MainStatusBar& status = Form().Panes().Status();
        EXPECT_GE(status.height(), status.fontMetrics().ascent() + status.fontMetrics().descent()) << Name();
        for (std::size_t panel = 1; panel < 5; ++panel) {
            const QString text = ToQString(status.Text(static_cast<Panel>(panel)));
            EXPECT_GE(status.PanelRects()[panel].width(), Advance(text)) << Name() << " " << panel;
        }
        CloseMain();
    }
}

namespace {
std::string FontName(const ::testing::TestParamInfo<DesktopFont>& font) {
    std::string name = font.param.Family + std::to_string(font.param.Points);
    name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
    return name;
}
} // namespace

INSTANTIATE_TEST_SUITE_P(FontsOfDebian, FontsTest,
                         ::testing::Values(DesktopFont{"DejaVu Sans", 9}, DesktopFont{"DejaVu Sans", 10},
                                           DesktopFont{"DejaVu Sans", 12}, DesktopFont{"DejaVu Sans", 14},
                                           DesktopFont{"Noto Sans", 9}, DesktopFont{"Noto Sans", 10},
                                           DesktopFont{"Noto Sans", 12}, DesktopFont{"Noto Sans", 14}),
                         FontName);

} // namespace quavernet::test
