#include "gui/GuiTest.h"

#include "app/LoadResString.h"

namespace quavernet::test {

namespace {
class LanguageTest : public GuiTest {
protected:
    LanguageTest() {
        AddFile("Abba", "One");
        AddFile("Cure", "Two");
    }
    std::string Header(int column) {
        return FromQString(Grid().model()->headerData(column, Qt::Horizontal).toString());
    }
};
} // namespace

TEST_F(LanguageTest, TheWindowStartsInGerman) {
    Start();
    EXPECT_EQ(FromQString(Form().windowTitle()), "Quavernet - letzter scan: -");
    EXPECT_EQ(Header(0), "Interpret");
    EXPECT_EQ(Header(4), "Qualität (Bit)");
    EXPECT_EQ(PanelText(Panel::Scanning), "Bereit!");
    EXPECT_EQ(PanelText(Panel::Filecount), "2 Dateien / (2,00 MB)");
    EXPECT_EQ(FromQString(Control<QLabel>("lblAll").text()), "{alle}");
    EXPECT_EQ(FromQString(Control<QLabel>("lblOther").text()), "Sonstige");
    EXPECT_EQ(FromQString(Control<QComboBox>("cboDrive").toolTip()), "Wählen Sie ein Laufwerk");
    EXPECT_EQ(FromQString(Action("cancel").toolTip()), "Bricht den Scanvorgang ab");
    EXPECT_TRUE(Action("mnuViewLanguageGER").isChecked());
    EXPECT_FALSE(Action("mnuViewLanguageENG").isChecked());
}

TEST_F(LanguageTest, TheSwitchChangesEveryTextAtOnceAndIsStored) {
    settings.values["LastScan"] = "19.11.2026";
    Start();
    Action("mnuViewLanguageENG").trigger();
    EXPECT_EQ(settings.values["Language"], "ENG");
    EXPECT_EQ(mainModule.Language, "ENG");
    EXPECT_TRUE(Action("mnuViewLanguageENG").isChecked());
    EXPECT_FALSE(Action("mnuViewLanguageGER").isChecked());
    const auto english = [](int id) { return std::string(*QuavernetENG.GetResourceString(id)); };
    EXPECT_EQ(PanelText(Panel::Filecount), "2" + english(584) + "2,00 MB)");
    EXPECT_EQ(PanelText(Panel::Scanning), english(432));
    EXPECT_EQ(Caption(Control<QCheckBox>("chkInterpret").text()), english(545));
    EXPECT_EQ(FromQString(Control<QComboBox>("cboGenre").itemText(0)), english(389));
    EXPECT_EQ(FromQString(Control<TreeView>("TreeView").model()->index(0, 0).data().toString()),
              english(591));
    EXPECT_EQ("<" + Header(0) + "|" + Header(1) + "|" + Header(2) + "|" + Header(3) + "|" + Header(4) + "|" +
                  Header(5),
              english(384));
    EXPECT_NE(english(432), "Bereit!");
    ExpectTitle("Quavernet - " + english(351) + "19.11.2026");
}

TEST_F(LanguageTest, TheSwitchResetsTheCombosButNotTheList) {
    Start();
    Control<QComboBox>("cboAlbum").setCurrentIndex(2);
    ASSERT_EQ(Listed(), Texts{"Cure"});
    Action("mnuViewLanguageENG").trigger();
    EXPECT_EQ(Control<QComboBox>("cboAlbum").currentIndex(), 0);
    EXPECT_EQ(Listed(), Texts{"Cure"});
}

TEST_F(LanguageTest, TheSwitchTakesTheStoredColumnWidths) {
    settings.values["ColWidth(2)"] = "1500";
    Start();
    Grid().setColumnWidth(2, 40);
    Action("mnuViewLanguageENG").trigger();
    EXPECT_EQ(Grid().columnWidth(2), 100);
}

TEST_F(LanguageTest, AnUnknownLanguageIsUnreadableButRuns) {
    settings.values["Language"] = "FRA";
    Start();
    EXPECT_EQ(Caption(Action("mnuFile").text()), "Error : No Local Data");
    EXPECT_FALSE(Action("mnuViewLanguageGER").isChecked());
}

TEST_F(LanguageTest, NoCounterAndNoTimeOfAScanIsCutInEitherLanguage) {
    Start();
    MainStatusBar& status = Form().Panes().Status();
    const auto expectRoom = [&](Panel panel, const std::string& text) {
        // The panel's own margins take nine pixels.
        EXPECT_LE(status.fontMetrics().horizontalAdvance(ToQString(text)) + 9,
                  status.PanelRects()[static_cast<std::size_t>(panel)].width())
            << text;
    };
    for (const char* language : {"mnuViewLanguageGER", "mnuViewLanguageENG"}) {
        Action(language).trigger();
        expectRoom(Panel::Filecount, "99999" + LoadResString(584) + "99.999,99 MB)");
        expectRoom(Panel::Filecount, "100" + LoadResString(344));
        expectRoom(Panel::Interprets, "99999" + LoadResString(586));
        expectRoom(Panel::Interprets, LoadResString(345) + "00:00:00");
        expectRoom(Panel::Titles, "99999" + LoadResString(588));
        expectRoom(Panel::Titles, LoadResString(346) + "00:00:00");
        expectRoom(Panel::Albums, "99999" + LoadResString(589));
    }
}

TEST_F(LanguageTest, NoTextOfTheFilterRowIsCutInEitherLanguage) {
    Start();
    for (const char* language : {"mnuViewLanguageGER", "mnuViewLanguageENG"}) {
        Action(language).trigger();
        for (const char* name :
             {"chkInterpret", "chkTitle", "cmdSearch", "cboDrive", "cboGenre", "cboAlbum"}) {
            auto& control = Control<QWidget>(name);
            QString text = control.property("text").toString();
            int frame = 0;
            if (auto* combo = qobject_cast<QComboBox*>(&control)) {
                text = combo->currentText();
                frame = 30;
            }
            EXPECT_LE(control.fontMetrics().horizontalAdvance(text) + frame, control.width()) << name;
        }
        for (const QLabel* label : Control<QFrame>("Frame2").findChildren<QLabel*>()) {
            EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width())
                << FromQString(label->objectName());
        }
    }
}

TEST_F(LanguageTest, TheSearchButtonStaysInViewInANarrowWindowInEitherLanguage) {
    Start();
    auto& go = Control<QPushButton>("cmdSearch");
    auto& drive = Control<QComboBox>("cboDrive");
    Form().resize(1200, 600);
    EXPECT_EQ(drive.width(), 130);
    Form().resize(800, 600);
    for (const char* language : {"mnuViewLanguageGER", "mnuViewLanguageENG"}) {
        Action(language).trigger();
        EXPECT_LT(go.geometry().right(), go.parentWidget()->width()) << language;
        EXPECT_LT(drive.width(), 130);
        EXPECT_EQ(drive.x(), 192);
    }
    Form().resize(1200, 600);
    EXPECT_EQ(drive.width(), 130);
}

} // namespace quavernet::test
