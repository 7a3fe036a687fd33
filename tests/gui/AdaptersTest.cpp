#include "gui/GuiTest.h"

#include "support/FileSizeLimit.h"
#include "support/HostileTexts.h"
#include "support/OrdinaryUser.h"

#include "adapters/qt/DialogLanguage.h"
#include "adapters/qt/QtDialogs.h"
#include "adapters/qt/QtMsgBox.h"
#include "adapters/qt/QtRegionalSettings.h"
#include "adapters/qt/QtSettings.h"
#include "adapters/qt/QtShell.h"
#include "app/LoadResString.h"
#include "app/Registry.h"

#include <fstream>

#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QSettings>
#include <QStandardPaths>
#include <QTimer>

namespace quavernet::test {

namespace {

class AdaptersTest : public GuiTest {
protected:
    AdaptersTest() {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, ToQString(folder.Path()));
    }
};

/// Presses a button of the next message box, and tells what the box looked like.
struct SeenBox {
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
    QString text;
    QString title;
    QStringList captions;
};

void Answer(QMessageBox::StandardButton button, SeenBox& seen) {
    QTimer::singleShot(0, [button, &seen] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        seen = {box->icon(), box->standardButtons(), box->text(), box->windowTitle(), {}};
        for (const QAbstractButton* shown : box->buttons()) {
            seen.captions.append(shown->text());
        }
        box->button(button)->click();
    });
}

} // namespace

TEST_F(AdaptersTest, ASettingReadsBackAsItWasWritten) {
    for (const char* text :
         {"", "plain", "C:\\Müsik\\ÄÖÜ", "a,b;c=d", "@Invalid()", " blanks ", "\"quoted\"", "%20"}) {
        {
            QtSettings store;
            store.Set(SettingsApplication, SettingsSection, "ColWidth(0)", text);
        }
        QtSettings store;
        EXPECT_EQ(store.Query(SettingsApplication, SettingsSection, "ColWidth(0)"),
                  std::optional<std::string>(text));
    }
}

TEST_F(AdaptersTest, APathThatIsNoUtf8ReadsBackToTheByte) {
    for (const std::string text : {"/m/K\xE4the/", "\xFF", "\xEF\xBB\xBF/m/", "/m/\xED\xA0\x80"}) {
        {
            QtSettings store;
            store.Set(SettingsApplication, SettingsSection, "Scanpath", text);
        }
        QtSettings store;
        EXPECT_EQ(store.Query(SettingsApplication, SettingsSection, "Scanpath"), text);
    }
}

TEST_F(AdaptersTest, AFullDiskLeavesTheSettingsAsTheyWere) {
    QtSettings store;
    store.Set(SettingsApplication, SettingsSection, "Language", "ENG");
    store.Sync();
    const auto text = [this] {
        std::ifstream file(folder / "Greyfinch Labs/Quavernet.conf");
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    {
        const FileSizeLimit full(4);
        store.Set(SettingsApplication, SettingsSection, "Scanpath", "/music");
        store.Sync();
        EXPECT_EQ(text(), "[Settings]\nLanguage=ENG\n");
    }
    store.Set(SettingsApplication, SettingsSection, "ScanpathValue", "1");
    store.Sync();
    EXPECT_EQ(text(), "[Settings]\nLanguage=ENG\nScanpathValue=1\n");
}

TEST_F(AdaptersTest, AFailedWriteOfASettingLeavesTheOldValueAndALaterOneCounts) {
    const auto set = [](QtSettings& store, const char* name, const char* value) {
        store.Set(SettingsApplication, SettingsSection, name, value);
    };
    const auto query = [](QtSettings& store, const char* name) {
        return store.Query(SettingsApplication, SettingsSection, name);
    };
    QtSettings store;
    set(store, "Language", "GER");
    EXPECT_EQ(query(store, "Language"), "GER");
    for (const bool waits : {false, true}) {
        const FileSizeLimit full(4);
        set(store, "Language", "ENG");
        set(store, "Scanpath", "/music");
        set(store, "Language", "FRA");
        if (waits) {
            QTest::qWait(20); // The toolkit has tried by then.
        }
        EXPECT_EQ(query(store, "Language"), "GER") << waits;
        EXPECT_EQ(query(store, "Scanpath"), std::nullopt) << waits;
    }
    set(store, "Language", "ENG");
    EXPECT_EQ(query(store, "Language"), "ENG");
    QTest::qWait(20); // What has been saved stays, whatever becomes of the next write.
    const FileSizeLimit full(4);
    set(store, "Language", "GER");
    EXPECT_EQ(query(store, "Language"), "ENG");
}

TEST_F(AdaptersTest, ASettingThatWasSavedOutlivesALaterFailureOfAnotherOne) {
    QtSettings store;
    store.Set(SettingsApplication, SettingsSection, "Scanpath", "/music");
    QTest::qWait(20);
    {
        const FileSizeLimit full(4);
        store.Set(SettingsApplication, SettingsSection, "Language", "ENG");
        EXPECT_EQ(store.Query(SettingsApplication, SettingsSection, "Scanpath"), "/music");
    }
    store.Set(SettingsApplication, SettingsSection, "Language", "GER");
    store.Sync();
    std::ifstream file(folder / "Greyfinch Labs/Quavernet.conf");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}),
              "[Settings]\nLanguage=GER\nScanpath=/music\n");
}

TEST_F(AdaptersTest, ACommaThatWasTypedIntoTheFileBelongsToTheValue) {
    std::filesystem::create_directories(folder / "Greyfinch Labs");
    std::ofstream(folder / "Greyfinch Labs/Quavernet.conf")
        << "[Settings]\nWindowLeft=1,5\nScanpath=/a, b,c\nLastScan=,\nLanguage=\n";
    QtSettings store;
    const auto query = [&store](const char* name) {
        return store.Query(SettingsApplication, SettingsSection, name);
    };
    EXPECT_EQ(query("WindowLeft"), "1,5");
    EXPECT_EQ(query("Scanpath"), "/a,b,c");
    EXPECT_EQ(query("LastScan"), ",");
    EXPECT_EQ(query("Language"), "");
}

TEST_F(AdaptersTest, TwoProgramsKeepWhatTheOtherHasWrittenUnderOtherNames) {
    QtSettings one;
    one.Set(SettingsApplication, SettingsSection, "Language", "ENG");
    one.Sync();
    EXPECT_EXIT(
        {
            QtSettings other;
            other.Set(SettingsApplication, SettingsSection, "Scanpath", "/music");
            other.Sync();
            std::_Exit(0);
        },
        ::testing::ExitedWithCode(0), "");
    one.Set(SettingsApplication, SettingsSection, "Language", "GER");
    one.Sync();
    std::ifstream file(folder / "Greyfinch Labs/Quavernet.conf");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}),
              "[Settings]\nLanguage=GER\nScanpath=/music\n");
}

TEST_F(AdaptersTest, AValueThatWasNeverWrittenIsMissing) {
    QtSettings store;
    EXPECT_EQ(store.Query(SettingsApplication, SettingsSection, "Scanpath"), std::nullopt);
}

TEST_F(AdaptersTest, SettingsOfOthersWithTheSameNamesAreNotTaken) {
    // Where the toolkit would look next: the maker's file for all his programs.
    std::ofstream(folder / "Greyfinch Labs.conf") << "[Settings]\nLanguage=ENG\nScanpath=/theirs\n";
    QtSettings store;
    store.Set(SettingsApplication, SettingsSection, "ScanpathValue", "1");
    EXPECT_EQ(store.Query(SettingsApplication, SettingsSection, "Language"), std::nullopt);
    EXPECT_EQ(store.Query(SettingsApplication, SettingsSection, "Scanpath"), std::nullopt);
    EXPECT_EQ(QSettings(QStringLiteral("Greyfinch Labs"), QStringLiteral("Quavernet"))
                  .value(QStringLiteral("Settings/Language")),
              QStringLiteral("ENG"));
}

TEST_F(AdaptersTest, ThePlaceOfTheSettingsIsTheirFile) {
    QtSettings store;
    store.Query(SettingsApplication, SettingsSection, "Language");
    EXPECT_EQ(store.Place(), folder / "Greyfinch Labs/Quavernet.conf");
}

TEST_F(AdaptersTest, SettingsAreUnderTheirOwnNames) {
    {
        QtSettings store;
        store.Set(SettingsApplication, SettingsSection, "Language", "ENG");
    }
    std::ifstream file(folder / "Greyfinch Labs/Quavernet.conf");
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    EXPECT_EQ(text, "[Settings]\nLanguage=ENG\n");
}

TEST_F(AdaptersTest, RegionalFormsFollowTheSystem) {
    const RegionalSettings german = ReadRegionalSettings(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(german.decimalSeparator, ",");
    EXPECT_EQ(german.groupSeparator, ".");
    EXPECT_EQ(german.shortDatePattern, "dd.MM.yyyy");
    EXPECT_EQ(german.dateSeparator, ".");
    EXPECT_FALSE(german.twelveHours);
    const RegionalSettings american = ReadRegionalSettings(QLocale(QLocale::English, QLocale::UnitedStates));
    EXPECT_EQ(american.decimalSeparator, ".");
    EXPECT_EQ(american.groupSeparator, ",");
    EXPECT_EQ(american.shortDatePattern, "M/d/yyyy");
    EXPECT_EQ(american.dateSeparator, "/");
    EXPECT_TRUE(american.twelveHours);
    const RegionalSettings plain = ReadRegionalSettings(QLocale::c());
    EXPECT_EQ(plain.decimalSeparator, ".");
    EXPECT_EQ(plain.groupSeparator, "");
    EXPECT_EQ(plain.shortDatePattern, "yyyy-MM-dd");
    EXPECT_EQ(plain.dateSeparator, "-");
    EXPECT_FALSE(plain.twelveHours);
}

TEST_F(AdaptersTest, BoxesHaveTheIconsAndButtonsTold) {
    QtMsgBox boxes;
    SeenBox seen;
    Answer(QMessageBox::No, seen);
    EXPECT_EQ(boxes.Show("<b>text</b>", "title", MsgBox::Icon::Question, MsgBox::Buttons::YesNo),
              MsgBox::Answer::No);
    EXPECT_EQ(seen.icon, QMessageBox::Question);
    EXPECT_EQ(seen.buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(FromQString(seen.text), "<b>text</b>");
    Answer(QMessageBox::Cancel, seen);
    EXPECT_EQ(boxes.Show("", "", MsgBox::Icon::Critical, MsgBox::Buttons::OkCancel), MsgBox::Answer::Cancel);
    EXPECT_EQ(seen.icon, QMessageBox::Critical);
    Answer(QMessageBox::Ok, seen);
    EXPECT_EQ(boxes.Show("", "", MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok), MsgBox::Answer::Ok);
    EXPECT_EQ(seen.icon, QMessageBox::Warning);
    EXPECT_EQ(seen.buttons, QMessageBox::Ok);
}

TEST_F(AdaptersTest, TheSecondTextOfABoxIsPlainAndCanBeCopied) {
    QtMsgBox boxes;
    QString details;
    Qt::TextFormat format = Qt::AutoText;
    bool selectable = false;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        details = box->informativeText();
        const auto* label = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"));
        format = label->textFormat();
        selectable = label->textInteractionFlags().testFlag(Qt::TextSelectableByMouse);
        box->button(QMessageBox::Ok)->click();
    });
    EXPECT_EQ(boxes.ShowWithDetails("text", "/home/<b>anna</b>/x.db", "title", MsgBox::Icon::Critical,
                                    MsgBox::Buttons::OkCancel),
              MsgBox::Answer::Ok);
    EXPECT_EQ(FromQString(details), "/home/<b>anna</b>/x.db");
    EXPECT_EQ(format, Qt::PlainText);
    EXPECT_TRUE(selectable);
}

TEST_F(AdaptersTest, ALongSecondTextOfABoxIsSeenWhole) {
    QtMsgBox boxes;
    const std::string sentence = LoadResString(770);
    std::string path; // Long, and without a blank at which a line could end.
    for (int i = 0; i < 8; ++i) {
        path += "/AFolderWithALongNameOfItsOwn" + std::to_string(i);
    }
    QSize room;
    QSize wanted;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        const auto* label = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"));
        const QRect text = label->fontMetrics().boundingRect(QRect(0, 0, label->width(), 100000),
                                                             Qt::TextWordWrap, label->text());
        room = box->contentsRect().intersected(label->geometry()).size();
        wanted = text.size();
        box->button(QMessageBox::Ok)->click();
    });
    boxes.ShowWithDetails("text", path + "/Quavernet.db\n" + sentence, "title", MsgBox::Icon::Critical,
                          MsgBox::Buttons::Ok);
    EXPECT_GE(room.height(), wanted.height());
    EXPECT_GE(room.width(), wanted.width());
    EXPECT_GT(wanted.width(), 0);
}

TEST_F(AdaptersTest, ReturnInABoxMeansItsFirstAnswerAndEscapeTheOther) {
    QtMsgBox boxes;
    const auto press = [&](Qt::Key key, MsgBox::Buttons buttons) {
        QTimer::singleShot(0, [key] { QTest::keyClick(QApplication::activeModalWidget(), key); });
        return boxes.Show("", "", MsgBox::Icon::Question, buttons);
    };
    EXPECT_EQ(press(Qt::Key_Return, MsgBox::Buttons::YesNo), MsgBox::Answer::Yes);
    EXPECT_EQ(press(Qt::Key_Escape, MsgBox::Buttons::YesNo), MsgBox::Answer::No);
    EXPECT_EQ(press(Qt::Key_Return, MsgBox::Buttons::NoByDefault), MsgBox::Answer::No);
    EXPECT_EQ(press(Qt::Key_Escape, MsgBox::Buttons::NoByDefault), MsgBox::Answer::No);
    EXPECT_EQ(press(Qt::Key_Return, MsgBox::Buttons::OkCancel), MsgBox::Answer::Ok);
    EXPECT_EQ(press(Qt::Key_Escape, MsgBox::Buttons::OkCancel), MsgBox::Answer::Cancel);
}

TEST_F(AdaptersTest, QtsOwnDialogsFollowTheLanguage) {
    QtMsgBox boxes;
    SeenBox seen;
    SetDialogLanguage("GER");
    Answer(QMessageBox::Yes, seen);
    boxes.Show("", "", MsgBox::Icon::None, MsgBox::Buttons::YesNo);
    EXPECT_EQ(FromQString(seen.captions.join(u'|')), "&Ja|&Nein");
    SetDialogLanguage("ENG");
    Answer(QMessageBox::Yes, seen);
    boxes.Show("", "", MsgBox::Icon::None, MsgBox::Buttons::YesNo);
    EXPECT_EQ(FromQString(seen.captions.join(u'|')), "&Yes|&No");
}

TEST_F(AdaptersTest, ACancelledFolderDialogGivesNothing) {
    QtDialogs systemDialogs;
    QString title;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        title = dialog->windowTitle();
        dialog->reject();
    });
    EXPECT_EQ(systemDialogs.BrowseForFolder("Wählen Sie einen Ordner"), std::nullopt);
    EXPECT_EQ(FromQString(title), "Wählen Sie einen Ordner");
}

TEST_F(AdaptersTest, TheFolderDialogGivesTheChosenFolder) {
    std::filesystem::create_directory(folder / "Müsik");
    QtDialogs systemDialogs;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        dialog->setDirectory(ToQString(folder.Path()));
        dialog->selectFile(ToQString(folder / "Müsik"));
        dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(ToQString(folder / "Müsik"));
        QMetaObject::invokeMethod(dialog, "accept");
    });
    EXPECT_EQ(systemDialogs.BrowseForFolder(""), std::optional<std::string>(folder / "Müsik"));
}

TEST_F(AdaptersTest, FolderDialogsOpenWhereTheLastOneEnded) {
    std::filesystem::create_directory(folder / "music");
    QtDialogs systemDialogs;
    std::string opened;
    const auto browse = [&](const std::string& choice) {
        QTimer::singleShot(0, [&, choice] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            opened = FromQString(dialog->directory().absolutePath());
            auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            if (choice.empty()) {
                dialog->reject();
                return;
            }
            dialog->setDirectory(ToQString(std::filesystem::path(choice).parent_path().string()));
            dialog->selectFile(ToQString(choice));
            name->setText(ToQString(choice));
            QMetaObject::invokeMethod(dialog, "accept");
        });
        (void)systemDialogs.BrowseForFolder("");
    };
    browse(folder / "music");
    browse("");
    EXPECT_EQ(opened, folder / "music");
    browse(folder.Path());
    EXPECT_EQ(opened, folder / "music") << "a cancelled dialog ended nowhere";
    browse("");
    EXPECT_EQ(opened, folder.Path());
    settings.values["LastFolder"] = folder / "gone";
    browse("");
    EXPECT_NE(opened, folder / "gone");
    EXPECT_TRUE(std::filesystem::is_directory(opened));
}

TEST_F(AdaptersTest, OpeningTellsWhatIsMissing) {
    QtShell systemShell({});
    EXPECT_EQ(systemShell.ShellExecute(folder / "none.mp3"), 2);
    EXPECT_EQ(systemShell.ShellExecute(folder / "none/none.mp3"), 3);
    std::ofstream(folder / "secret.mp3") << "x";
    std::filesystem::permissions(folder.Path(), std::filesystem::perms(0755));
    std::filesystem::permissions(folder / "secret.mp3", std::filesystem::perms::none);
    const OrdinaryUser user;
    EXPECT_EQ(systemShell.ShellExecute(folder / "secret.mp3"), 5);
}

/// Stands in for the desktop's opener, and notes how many arguments it gets, and the first one.
class OpenerTest : public AdaptersTest {
protected:
    OpenerTest() {
        std::filesystem::create_directory(folder / "bin");
        std::ofstream(folder / "bin/xdg-open") << "#!/bin/sh\nprintf '%s\\n%s' \"$#\" \"$1\" > '" << opened
                                               << ".part'\nmv '" << opened << ".part' '" << opened << "'\n";
        std::filesystem::permissions(folder / "bin/xdg-open", std::filesystem::perms::all);
        qputenv("PATH", QByteArray::fromStdString(folder / "bin") + ":" + path);
        std::filesystem::current_path(folder.Path());
    }
    ~OpenerTest() override {
        std::filesystem::current_path(before);
        qputenv("PATH", path);
    }

    std::string Told(const std::string& name) {
        std::ofstream(folder / name) << "x";
        std::filesystem::remove(opened);
        EXPECT_GT(QtShell({}).ShellExecute(name), 32) << name;
        return WhatTheOpenerGot(name);
    }
    std::string ToldAddress(const std::string& url) {
        std::filesystem::remove(opened);
        EXPECT_GT(QtShell({}).OpenAddress(url), 32) << url;
        return WhatTheOpenerGot(url);
    }
    std::string WhatTheOpenerGot(const std::string& asked) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(opened); })) << asked;
        std::ifstream file(opened);
        return std::string((std::istreambuf_iterator<char>(file)), {});
    }

    const std::string opened = folder / "opened";
    const QByteArray path = qgetenv("PATH");
    const std::filesystem::path before = std::filesystem::current_path();
};

TEST_F(OpenerTest, TheDesktopsOpenerGetsOneAbsolutePathAndNoShellInBetween) {
    for (const std::string& text : HostileTexts()) {
        const std::string name = AsFileName(text);
        EXPECT_EQ(Told(name), "1\n" + (folder / name));
    }
}

TEST_F(OpenerTest, AnAddressOfTheWebGoesOutAsOneArgumentAsItIs) {
    for (const std::string& text : HostileTexts()) {
        if (text.find('\0') == std::string::npos && FromQString(ToQString(text)) == text) {
            const std::string url = "HttpS://x/?q=" + text + "&r= ü \"'";
            EXPECT_EQ(ToldAddress(url), "1\n" + url);
        }
    }
}

TEST_F(OpenerTest, NoOtherKindOfAddressReachesTheOpener) {
    for (const char* url : {"", "http", "httpx://x/", "file:///etc/passwd", "mailto:x", "-http://x",
                            " http://x", "javascript:http://x", "/etc/passwd", "http/x"}) {
        EXPECT_EQ(QtShell({}).OpenAddress(url), Shell::NoProgram) << url;
    }
    EXPECT_EQ(ToldAddress("http://-"), "1\nhttp://-");
    EXPECT_EQ(ToldAddress("http:// "), "1\nhttp:// ");
    // The first one after them would find what they had opened.
    EXPECT_EQ(ToldAddress("http://x/"), "1\nhttp://x/");
}

TEST_F(OpenerTest, ANameThatIsNoUtf8IsOpenedByTheAddressOfItsBytes) {
    EXPECT_EQ(Told("B\xe9 b\xea 100%#?.mp3"), "1\nfile://" + (folder / "B%E9%20b%EA%20100%25%23%3F.mp3"));
}

TEST_F(AdaptersTest, TheHelpComponentIsTheRunTime) {
    QtShell systemShell({});
    std::int32_t major = 0;
    std::int32_t minor = 0;
    std::int32_t build = 0;
    EXPECT_TRUE(systemShell.DllGetVersion(major, minor, build));
    EXPECT_EQ(major, 6);
    EXPECT_GE(minor, 4);
}

TEST_F(AdaptersTest, TheEndOfTheProcessBringsWhatIsHeldToDiskFirst) {
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            QtShell systemShell([] { std::fputs("saved", stderr); });
            systemShell.EndProcess(3);
        },
        ::testing::ExitedWithCode(3), "saved");
}

TEST_F(AdaptersTest, PendingEventsRunInDoEvents) {
    bool ran = false;
    QTimer::singleShot(0, [&ran] { ran = true; });
    realEvents.DoEvents();
    EXPECT_TRUE(ran);
}

TEST_F(AdaptersTest, TheFolderDialogStartsInAFolderThatIsThere) {
    QtDialogs systemDialogs;
    QString start;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        start = dialog->directory().absolutePath();
        dialog->reject();
    });
    systemDialogs.BrowseForFolder("");
    const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    EXPECT_EQ(start, QFileInfo(music).isDir() ? music : QDir::homePath());
}

TEST(QtTextTest, OfAVeryLongTextTheBeginningIsShownInALine) {
    EXPECT_EQ(FromQString(ToLine("a\tb\nc")), "a b c");
    EXPECT_EQ(FromQString(ToLine(std::string(1000, 'x'))), std::string(1000, 'x'));
    std::string umlauts;
    for (int i = 0; i < 1000; ++i) {
        umlauts += "ä";
    }
    EXPECT_EQ(FromQString(ToLine(umlauts)), umlauts) << "characters count, not bytes";
    EXPECT_EQ(FromQString(ToLine(umlauts + std::string(1 << 20, 'x'))), umlauts + "...");
}

} // namespace quavernet::test
