#include "gui/GuiTest.h"

#include "app/LoadResString.h"
#include "mainwindow/MainMenuTable.h"

#include <QDialog>
#include <QStyleFactory>
#include <QTimer>
#include <QToolBar>

#include <memory>

namespace quavernet::test {

namespace {
class MainMenuTest : public GuiTest {};

void ExpectSoundSeparators(const QMenu& menu) {
    bool lastWasSeparator = true;
    for (const QAction* action : menu.actions()) {
        EXPECT_FALSE(action->isSeparator() && lastWasSeparator)
            << FromQString(menu.menuAction()->objectName());
        lastWasSeparator = action->isSeparator();
        if (action->menu() != nullptr) {
            ExpectSoundSeparators(*action->menu());
        }
    }
    EXPECT_FALSE(lastWasSeparator);
}
} // namespace

TEST_F(MainMenuTest, CaptionsAndShortcutsFollowTheTableInBothLanguages) {
    Start();
    for (const char* language : {"mnuViewLanguageENG", "mnuViewLanguageGER"}) {
        Action(language).trigger();
        for (const MenuEntry& entry : MainMenuTable) {
            QAction* item = Form().Menu().Item(entry.Name);
            if (!entry.Is(MenuEntry::Menu) && !entry.Is(MenuEntry::Bar)) {
                ASSERT_EQ(item != nullptr, Form().Parts().Commands.Contains(entry.Name)) << entry.Name;
            }
            if (item == nullptr) {
                continue;
            }
            if (entry.Text != 0) {
                EXPECT_EQ(Caption(item->text()), LoadResString(entry.Text));
            }
            const QString shortcut = item->shortcut().toString(QKeySequence::PortableText);
            const char* const keys = entry.Is(MenuEntry::Shifted) ? "Ctrl+Shift+" : "Ctrl+";
            EXPECT_EQ(FromQString(shortcut),
                      entry.Shortcut == 0 ? "" : keys + std::string(1, entry.Shortcut));
        }
    }
}

TEST_F(MainMenuTest, ItemsThatDoWhatAToolbarButtonDoesShowItsPicture) {
    Start();
    for (const auto& [item, button] : {std::pair{"mnuScan", "scan"},
                                       {"mnuPrint", "print"},
                                       {"mnuKontextPrint", "print"},
                                       {"mnuPlaylist", "plist"},
                                       {"mnuKontextPlaylist", "plist"},
                                       {"mnuKonvert", "konvert"},
                                       {"mnuKontextKonvert", "konvert"}}) {
        const auto image = [](const QAction& action) { return action.icon().pixmap(16, 16).toImage(); };
        EXPECT_FALSE(Action(item).icon().isNull()) << item;
        EXPECT_EQ(image(Action(item)), image(*Form().Panes().Toolbar1().Button(button))) << item;
    }
}

TEST_F(MainMenuTest, TheLanguagesAreAChoiceOfOne) {
    Start();
    const QActionGroup* group = Action("mnuViewLanguageGER").actionGroup();
    ASSERT_NE(group, nullptr);
    EXPECT_TRUE(group->isExclusive()) << "which gives them round marks";
    EXPECT_EQ(group, Action("mnuViewLanguageENG").actionGroup());
    EXPECT_EQ(group->actions().size(), 2);
    Action("mnuViewLanguageENG").trigger();
    EXPECT_EQ(group->checkedAction(), &Action("mnuViewLanguageENG"));
    Action("mnuViewLanguageENG").trigger();
    EXPECT_EQ(group->checkedAction(), &Action("mnuViewLanguageENG"));

    mainModule.ActsAlone = true;
    Action("mnuViewLanguageGER").trigger();
    EXPECT_EQ(group->checkedAction(), &Action("mnuViewLanguageENG")) << "a click that may not act";
    mainModule.ActsAlone = false;
    EXPECT_EQ(settings.values["Language"], "ENG");
}

TEST_F(MainMenuTest, F10OpensTheFirstMenuThatIsEnabled) {
    Start();
    Grid().setFocus();
    QTest::keyClick(Form().windowHandle(), Qt::Key_F10);
    QMenu& file = *Action("mnuFile").menu();
    EXPECT_TRUE(file.isVisible());
    QTest::keyClick(&file, Qt::Key_Escape);
    file.close();
    Action("mnuFile").setEnabled(false);
    QTest::keyClick(Form().windowHandle(), Qt::Key_F10);
    EXPECT_FALSE(file.isVisible());
    EXPECT_TRUE(Action("mnuView").menu()->isVisible());
    Action("mnuView").menu()->close();
}

TEST_F(MainMenuTest, AltAndItsLetterOpenAMenuAndTheItemsLetterRunsIt) {
    Start();
    QTest::keyClick(Form().windowHandle(), Qt::Key_A, Qt::AltModifier); // "Ansicht"
    QMenu& view = *Action("mnuView").menu();
    ASSERT_TRUE(view.isVisible());
    EXPECT_FALSE(Grid().showGrid());
    QTest::keyClick(&view, Qt::Key_G);
    EXPECT_FALSE(view.isVisible());
    EXPECT_TRUE(Grid().showGrid());
}

TEST_F(MainMenuTest, ShiftF10AndTheMenuKeyOpenTheMenuOfListAndTree) {
    AddFile("Abba", "One");
    Start();
    const auto opens = [&](const char* menu, const std::function<void()>& press) {
        press();
        QWidget* const popup = QApplication::activePopupWidget();
        if (popup != nullptr) {
            popup->close();
        }
        return popup != nullptr && popup == Form().Menu().Popup(menu);
    };
    const auto shiftF10 = [&] { QTest::keyClick(Form().windowHandle(), Qt::Key_F10, Qt::ShiftModifier); };
    ClickRow(1);
    Grid().setFocus();
    EXPECT_TRUE(opens("mnuKontext", shiftF10));
    auto& tree = Control<QWidget>("TreeView");
    tree.setFocus();
    EXPECT_TRUE(opens("mnuTree", shiftF10));
}

TEST_F(MainMenuTest, NoMenuIsEmptyOrHasStraySeparators) {
    Start();
    for (const QAction* action : Form().menuBar()->actions()) {
        ExpectSoundSeparators(*action->menu());
    }
    ExpectSoundSeparators(*Form().Menu().Popup("mnuKontext"));
    // The tree's separators have names, and are shown by the kind of the node: the toolkit hides those that
    // part nothing.
    EXPECT_TRUE(Form().Menu().Popup("mnuTree")->separatorsCollapsible());
    Texts shown, expected;
    for (const QAction* action : Form().Menu().Popup("mnuTree")->actions()) {
        shown.push_back((action->isSeparator() ? "- " : "") + FromQString(action->objectName()));
    }
    for (const MenuEntry& entry : MainMenuTable) {
        const bool isBar = entry.Is(MenuEntry::Bar);
        if (entry.Parent == "mnuTree" && (isBar || Form().Parts().Commands.Contains(entry.Name))) {
            expected.push_back((isBar ? "- " : "") + std::string(entry.Name));
        }
    }
    EXPECT_EQ(shown, expected);
    EXPECT_EQ(std::count_if(shown.begin(), shown.end(), [](const auto& name) { return name[0] == '-'; }), 5);
}

TEST_F(MainMenuTest, TogglesSetTheirGlobals) {
    Start();
    Action("mnuOptionsScanLog").trigger();
    EXPECT_FALSE(mainModule.ScanLogEnabled);
    Action("mnuAddToPlaylist").trigger();
    EXPECT_TRUE(mainModule.AlwaysAddToPlaylist);
    Action("mnuExternalPlayer").trigger();
    EXPECT_TRUE(mainModule.UseExternalPlayer);
    Action("mnuOptionsLoadOverSearch").trigger();
    EXPECT_TRUE(mainModule.LoadOverSearch);
}

TEST_F(MainMenuTest, FormatFiltersWorkAsPairsAndReloadTheList) {
    AddFile("Abba", "One", "mp3");
    AddFile("Cure", "Two", "wav");
    Start();
    Action("mnuKontextMp3").trigger();
    EXPECT_FALSE(Action("mnump3").isChecked());
    EXPECT_EQ(Listed(), Texts{"Cure"});
    EXPECT_EQ(PanelText(Panel::Interprets), "2 Interpreten");
    Action("mnump3").trigger();
    EXPECT_TRUE(Action("mnuKontextMp3").isChecked());
    EXPECT_EQ(Listed(), (Texts{"Abba", "Cure"}));
}

TEST_F(MainMenuTest, ARunningScanSilencesTheShortcuts) {
    Start();
    Form().SetControlState(ControlMode::ScanRunning);
    EXPECT_FALSE(Action("scan").isEnabled());
    EXPECT_TRUE(Action("cancel").isEnabled());
    EXPECT_FALSE(Action("mnuFile").isEnabled());
    EXPECT_FALSE(Control<QLineEdit>("txtSearch").isEnabled());
    QTest::keyClick(Form().windowHandle(), Qt::Key_G, Qt::ControlModifier);
    EXPECT_FALSE(Grid().showGrid());
    Form().SetControlState(ControlMode::Idle);
    QTest::keyClick(Form().windowHandle(), Qt::Key_G, Qt::ControlModifier);
    EXPECT_TRUE(Grid().showGrid());
}

TEST_F(MainMenuTest, TheAboutBoxNamesVersionAndProduct) {
    Start();
    std::string version;
    std::string title;
    std::string button;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        title = FromQString(box->windowTitle());
        version = FromQString(box->findChild<QLabel*>(QStringLiteral("lblVersion"))->text());
        button = Caption(box->findChild<QPushButton*>(QStringLiteral("cmdSysInfo"))->text());
        QTest::mouseClick(box->findChild<QPushButton*>(QStringLiteral("cmdSysInfo")), Qt::LeftButton);
        QTest::mouseClick(box->findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
    });
    Action("mnuAbout").trigger();
    EXPECT_EQ(title, "Über Quavernet");
    EXPECT_EQ(version, "Version 1.0.3");
    EXPECT_EQ(button, "System Info...");
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].text, "Über Quavernet");
    EXPECT_EQ(msgBox.shown[0].icon, MsgBox::Icon::None);
}

TEST_F(MainMenuTest, EveryItemOfTheTableHasItsCommand) {
    Start();
    Texts leftOut;
    for (const MenuEntry& entry : MainMenuTable) {
        if (Form().Menu().Item(entry.Name) == nullptr) {
            leftOut.emplace_back(entry.Name);
        }
    }
    EXPECT_EQ(leftOut, Texts{});
    Texts buttons;
    for (const QAction* button : Form().Panes().Toolbar1().actions()) {
        buttons.push_back(FromQString(button->objectName()));
    }
    EXPECT_EQ(buttons, (Texts{"scan", "cancel", "print", "plist", "konvert", "top", "date"}));
}

TEST_F(MainMenuTest, EveryButtonOfTheToolbarIsSeenInEachStyle) {
    Start();
    QToolBar& toolbar = Form().Panes().Toolbar1();
    const auto expectSeen = [&](const std::string& style) {
        QCoreApplication::processEvents();
        for (QAction* button : toolbar.actions()) {
            const QWidget& widget = *toolbar.widgetForAction(button);
            EXPECT_TRUE(widget.isVisible()) << style << " " << FromQString(button->objectName());
            EXPECT_TRUE(toolbar.rect().contains(widget.geometry())) << FromQString(button->objectName());
            EXPECT_GE(widget.width(), toolbar.iconSize().width() + 4);
        }
    };
    expectSeen("as it starts");
    for (const QString& name : QStyleFactory::keys()) {
        const std::unique_ptr<QStyle> style(QStyleFactory::create(name));
        toolbar.setStyle(style.get());
        expectSeen(FromQString(name));
        toolbar.setStyle(nullptr);
    }
}

TEST_F(MainMenuTest, TheSixMenusAndTheirCommandsFollowTheMode) {
    AddFile("Abba", "One", "wav");
    Start();
    const Texts menus{"mnuFile", "mnuView", "mnuExtras", "mnuOptions", "mnuUpperHelp"};
    const Texts controls{"cboDrive", "cboGenre", "cboAlbum", "txtSearch", "cmdSearch"};
    const auto expect = [&](bool idle) {
        for (const std::string& name : menus) {
            EXPECT_EQ(Action(name.c_str()).isEnabled(), idle) << name;
        }
        for (const std::string& name : controls) {
            EXPECT_EQ(Control<QWidget>(name.c_str()).isEnabled(), idle) << name;
        }
        EXPECT_EQ(Action("scan").isEnabled(), idle);
        EXPECT_EQ(Action("cancel").isEnabled(), !idle);
    };
    expect(true);
    Form().SetControlState(ControlMode::ScanRunning);
    expect(false);
    Form().SetControlState(ControlMode::ListLoaded);
    expect(false);
    Form().SetControlState(ControlMode::Idle);
    expect(true);
    ClickRow(1);
    expect(true);
    EXPECT_EQ(Grid().CurrentFormat(), "wav");
    EXPECT_EQ(Grid().Selection().Col(), 5);
}

TEST_F(MainMenuTest, GridLinesWorkAsAPairByMenuShortcutAndContextMenu) {
    Start();
    QTest::keyClick(Form().windowHandle(), Qt::Key_G, Qt::ControlModifier);
    EXPECT_TRUE(Grid().showGrid());
    EXPECT_TRUE(Action("mnuKontextShowGridlines").isChecked());
    Action("mnuKontextShowGridlines").trigger();
    EXPECT_FALSE(Grid().showGrid());
    EXPECT_FALSE(Action("mnuShowGridlines").isChecked());
}

} // namespace quavernet::test
