// The dialogs that rename files, opened by their menu items and worked by real clicks and keys, on files of a
// real folder.
#include "gui/GuiTest.h"

#include "support/TestFiles.h"

#include "adapters/qt/NameText.h"
#include "app/LoadResString.h"
#include "editing/frmFileName.h"
#include "editing/frmFilesName.h"
#include "library/SqlQuote.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <set>

namespace quavernet::test {

namespace {

class FileNamesTest : public GuiTest {
protected:
    FileNamesTest() { services.fileSystem = fileSystem.get(); }

    /// A real file with this name, and its row. Rows are sorted by performer, so in the order of the calls.
    void AddReal(const std::string& name, const std::string& subFolder = {}) {
        AddFile("Performer " + std::to_string(files + 1), "Title " + std::to_string(files + 1));
        const std::string place = subFolder.empty() ? music.Path() : music / subFolder;
        std::filesystem::create_directories(place);
        WriteFile(place + "/" + name, name);
        mainModule.Connection->Execute("Update Files set Name = '" + SqlQuote(name) + "', Path = '" +
                                       SqlQuote(place + "/" + name) +
                                       "' where File_id = " + std::to_string(files));
    }
    void StartWith(const Texts& names) {
        for (const std::string& name : names) {
            AddReal(name);
        }
        Start();
    }

    Texts OnDisk() {
        Texts names;
        for (const auto& entry : std::filesystem::directory_iterator(music.Path())) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    Texts InLibrary() {
        Texts names;
        const ADODB::RowBlock rows =
            mainModule.Connection->Query("Select Name, Path from Files order by File_id");
        for (std::size_t row = 0; row < rows.Rows(); ++row) {
            EXPECT_EQ(rows.At(row, 1).Text(), music / rows.At(row, 0).Text());
            names.push_back(rows.At(row, 0).Text());
        }
        return names;
    }
    Texts InList() {
        Texts names;
        for (long row = 1; row <= static_cast<long>(mainModule.FileNames.Count()); ++row) {
            EXPECT_EQ(mainModule.FilePaths.Item(row), music / mainModule.FileNames.Item(row));
            names.push_back(mainModule.FileNames.Item(row));
        }
        return names;
    }

    /// Triggers the item; while its dialog is open `act` runs. False if no dialog came.
    bool InDialog(const char* item, const std::function<void()>& act) {
        dialog = nullptr;
        QTimer::singleShot(0, [&] {
            dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog != nullptr) {
                act();
                dialog->reject();
            }
        });
        Action(item).trigger();
        QCoreApplication::processEvents();
        return dialog != nullptr;
    }
    template <typename T> T& Find(const char* name) { return *dialog->findChild<T*>(QLatin1String(name)); }
    QLineEdit& Field(const char* name) { return Find<QLineEdit>(name); }
    QListWidget& List() { return Find<QListWidget>("lstFileNames"); }
    void Click(const char* button) { QTest::mouseClick(&Find<QPushButton>(button), Qt::LeftButton); }
    void ClickItem(int index, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, modifiers,
                          List().visualItemRect(List().item(index)).center());
    }
    static std::string Text(const QLineEdit& field) { return FromNameText(field.text()); }
    Texts Items() {
        Texts items;
        for (int index = 0; index < List().count(); ++index) {
            items.push_back(FromQString(List().item(index)->text()));
        }
        return items;
    }
    static ShownBox Refusal(const std::string& text) {
        return {text, "Umbenennen nicht möglich", MsgBox::Icon::Critical, MsgBox::Buttons::Ok};
    }

    TemporaryFolder music;
    QDialog* dialog = nullptr;
};

} // namespace

TEST_F(FileNamesTest, TheCaptionsAreThoseOfTheLanguage) {
    StartWith({"a.mp3", "b.mp3"});
    const auto caption = [&](const QDialog& form, const char* name) {
        return Caption(form.findChild<QPushButton*>(QLatin1String(name))->text());
    };
    const auto frame = [&](const QDialog& form) {
        return FromQString(form.findChild<QGroupBox*>()->title());
    };
    settings.values["Language"] = "GER";
    const frmFileName one(&Form(), Form().Parts().Work);
    EXPECT_EQ(FromQString(one.windowTitle()), "Dateiname ändern");
    EXPECT_EQ(frame(one), "Dateiname");
    EXPECT_EQ(caption(one, "cmdChangeUmlaute"), "Umlaute umwandeln");
    EXPECT_EQ(caption(one, "cmdRemoveBrakets"), "Klammerinhalte entfernen");
    EXPECT_EQ(caption(one, "cmdRemoveNumbers"), "Nummern entfernen");
    EXPECT_EQ(caption(one, "cmdReplaceUnderscore"), "Unterstriche entfernen");
    EXPECT_EQ(caption(one, "cmsSave"), "Speichern");
    EXPECT_EQ(caption(one, "cmdCancel"), "Abbrechen");
    const frmFilesName many(&Form(), Form().Parts().Work);
    EXPECT_EQ(FromQString(many.windowTitle()), "Dateiname ändern");
    EXPECT_EQ(frame(many), "Dateinamen");
    EXPECT_EQ(caption(many, "cmdChangeUmlauts"), "Umlaute umwandeln");
    EXPECT_EQ(caption(many, "cmdRemoveBrakets"), "Klammerinhalte entfernen");
    EXPECT_EQ(caption(many, "cmdRemoveNumbers"), "Nummern entfernen");
    EXPECT_EQ(caption(many, "cmdReplaceUnderscore"), "Unterstriche entfernen");
    EXPECT_EQ(caption(many, "cmdChangeName"), "Name ändern");
    EXPECT_EQ(caption(many, "cmdSave"), "Speichern");
    EXPECT_EQ(caption(many, "cmdCancel"), "Abbrechen");
    settings.values["Language"] = "ENG";
    const frmFileName oneInEnglish(&Form(), Form().Parts().Work);
    EXPECT_EQ(FromQString(oneInEnglish.windowTitle()), "Change file name");
    EXPECT_EQ(caption(oneInEnglish, "cmdRemoveBrakets"), "Remove bracketed text");
    const frmFilesName manyInEnglish(&Form(), Form().Parts().Work);
    EXPECT_EQ(frame(manyInEnglish), "File names");
    EXPECT_EQ(caption(manyInEnglish, "cmdChangeName"), "Change name");
}

TEST_F(FileNamesTest, EveryControlHasAnAccessibleName) {
    StartWith({"a.mp3", "b.mp3"});
    frmFileName one(&Form(), Form().Parts().Work);
    EXPECT_EQ(FromQString(one.findChild<QLineEdit*>()->accessibleName()), "Dateiname");
    frmFilesName many(&Form(), Form().Parts().Work);
    EXPECT_EQ(FromQString(many.findChild<QListWidget*>()->accessibleName()), "Dateinamen");
    EXPECT_EQ(FromQString(many.findChild<QLineEdit*>(QStringLiteral("txtChangeName"))->accessibleName()),
              "Name ändern");
}

TEST_F(FileNamesTest, OneRowOpensOneDialogAndSeveralTheOther) {
    StartWith({"a.mp3", "b.mp3", "c.mp3"});
    for (const char* item : {"mnuEditFilename", "mnuKontextFilename"}) {
        ClickRow(2);
        EXPECT_TRUE(InDialog(item, [&] {
            EXPECT_EQ(dialog->objectName(), QLatin1String("frmFileName"));
            EXPECT_EQ(dialog->parentWidget(), &Form());
            EXPECT_TRUE(dialog->isModal());
            EXPECT_EQ(Text(Field("txtFileName")), "b.mp3");
            EXPECT_EQ(dialog->focusWidget(), &Field("txtFileName"));
        }));
        ClickRow(1, Qt::ShiftModifier);
        EXPECT_TRUE(InDialog(item, [&] {
            EXPECT_EQ(dialog->objectName(), QLatin1String("frmFilesName"));
            EXPECT_EQ(dialog->parentWidget(), &Form());
            EXPECT_TRUE(dialog->isModal());
            EXPECT_EQ(Items(), (Texts{"a.mp3", "b.mp3"}));
            EXPECT_EQ(List().item(1)->data(Qt::UserRole), 2);
        }));
    }
}

TEST_F(FileNamesTest, TheContextMenuHasTheItemForOneRowAndForSeveral) {
    StartWith({"a.mp3", "b.mp3"});
    EXPECT_FALSE(Action("mnuEditFilename").isEnabled()) << "no row is current yet";
    ClickRow(1);
    EXPECT_TRUE(Action("mnuEditFilename").isEnabled());
    EXPECT_EQ(Caption(Action("mnuEditFilename").text()), "Dateiname ändern...");
    EXPECT_EQ(Caption(Action("mnuKontextFilename").text()), "Dateiname ändern...");
}

TEST_F(FileNamesTest, WithoutASelectionTheMainMenuOpensNothingAndTheContextMenuAnEmptyDialog) {
    StartWith({"a.mp3"});
    Action("mnuEditFilename").setEnabled(true);
    EXPECT_FALSE(InDialog("mnuEditFilename", [] {}));
    EXPECT_TRUE(InDialog("mnuKontextFilename", [&] {
        EXPECT_EQ(Text(Field("txtFileName")), "");
        for (const char* button :
             {"cmdChangeUmlaute", "cmdRemoveBrakets", "cmdRemoveNumbers", "cmdReplaceUnderscore"}) {
            Click(button);
            EXPECT_EQ(Text(Field("txtFileName")), "") << button;
        }
        Click("cmsSave");
        EXPECT_EQ(msgBox.shown.back(), Refusal("Die zu bearbeitende Datei ist nicht mehr vorhanden!"));
        QTest::keyClicks(&Field("txtFileName"), QStringLiteral("new.mp3"));
        Click("cmsSave");
        EXPECT_EQ(msgBox.shown.size(), 2U);
        EXPECT_TRUE(dialog->isVisible());
    }));
    EXPECT_EQ(OnDisk(), (Texts{"a.mp3"}));
}

TEST_F(FileNamesTest, OneNameIsCleanedUpAndSavedAndTheDialogStays) {
    StartWith({"a.mp3", "01_Ärger_über_Öl (live).mp3", "c.mp3"});
    ClickRow(2);
    EXPECT_TRUE(InDialog("mnuEditFilename", [&] {
        Click("cmdChangeUmlaute");
        EXPECT_EQ(Text(Field("txtFileName")), "01_Aerger_ueber_Oel (live).mp3");
        Click("cmdRemoveBrakets");
        EXPECT_EQ(Text(Field("txtFileName")), "01_Aerger_ueber_Oel .mp3");
        Click("cmdRemoveNumbers");
        EXPECT_EQ(Text(Field("txtFileName")), "_Aerger_ueber_Oel .mp3");
        Click("cmdReplaceUnderscore");
        EXPECT_EQ(Text(Field("txtFileName")), " Aerger ueber Oel .mp3");
        EXPECT_EQ(OnDisk(), (Texts{"01_Ärger_über_Öl (live).mp3", "a.mp3", "c.mp3"})) << "not saved yet";

        Click("cmsSave");
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_EQ(OnDisk(), (Texts{" Aerger ueber Oel .mp3", "a.mp3", "c.mp3"}));
        EXPECT_EQ(InLibrary(), (Texts{"a.mp3", " Aerger ueber Oel .mp3", "c.mp3"}));
        EXPECT_EQ(InList(), InLibrary());
        EXPECT_EQ(PanelText(Panel::Scanning), music / " Aerger ueber Oel .mp3");

        Field("txtFileName").selectAll();
        QTest::keyClicks(&Field("txtFileName"), QStringLiteral("song"));
        QTest::keyClick(&Field("txtFileName"), Qt::Key_Return);
        EXPECT_EQ(Text(Field("txtFileName")), "song.mp3");
        EXPECT_EQ(OnDisk(), (Texts{"a.mp3", "c.mp3", "song.mp3"}));
        Click("cmdCancel");
        EXPECT_FALSE(dialog->isVisible());
    }));
    EXPECT_EQ(InLibrary(), (Texts{"a.mp3", "song.mp3", "c.mp3"}));
    EXPECT_EQ(Listed(), (Texts{"Performer 1", "Performer 2", "Performer 3"}));
    EXPECT_EQ(mainModule.SelectedRows.Rows(), (std::vector<std::int32_t>{2})) << "the list keeps its place";
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(FileNamesTest, EachRefusalOfOneNameIsTold) {
    StartWith({"1234.ogg"});
    ClickRow(1);
    EXPECT_TRUE(InDialog("mnuEditFilename", [&] {
        Click("cmdRemoveNumbers");
        Click("cmsSave");
        Field("txtFileName").clear();
        Click("cmsSave");
        const ShownBox incomplete = Refusal("Bitte geben Sie einen vollständigen Namen ein!");
        EXPECT_EQ(msgBox.shown, (std::vector<ShownBox>{incomplete, incomplete}));
        std::filesystem::remove(music / "1234.ogg");
        Click("cmsSave");
        EXPECT_EQ(msgBox.shown.back(), Refusal("Die zu bearbeitende Datei ist nicht mehr vorhanden!"));
        EXPECT_TRUE(dialog->isVisible());
    }));
    EXPECT_EQ(InLibrary(), (Texts{"1234.ogg"}));
}

TEST_F(FileNamesTest, SeveralNamesAreCleanedUpAndSaved) {
    StartWith({"01_ä.mp3", "02_(x)ö.mp3", "c.mp3"});
    ClickRow(1);
    ClickRow(2, Qt::ShiftModifier);
    EXPECT_TRUE(InDialog("mnuKontextFilename", [&] {
        Click("cmdChangeUmlauts");
        EXPECT_EQ(Items(), (Texts{"01_ae.mp3", "02_(x)oe.mp3"}));
        Click("cmdRemoveBrakets");
        EXPECT_EQ(Items(), (Texts{"01_ae.mp3", "02_oe.mp3"}));
        Click("cmdRemoveNumbers");
        EXPECT_EQ(Items(), (Texts{"_ae.mp3", "_oe.mp3"}));
        Click("cmdReplaceUnderscore");
        EXPECT_EQ(Items(), (Texts{" ae.mp3", " oe.mp3"}));
        EXPECT_EQ(OnDisk(), (Texts{"01_ä.mp3", "02_(x)ö.mp3", "c.mp3"}));
        Click("cmdSave");
        EXPECT_TRUE(dialog->isVisible());
        Click("cmdCancel");
        EXPECT_FALSE(dialog->isVisible());
    }));
    EXPECT_EQ(OnDisk(), (Texts{" ae.mp3", " oe.mp3", "c.mp3"}));
    EXPECT_EQ(InLibrary(), (Texts{" ae.mp3", " oe.mp3", "c.mp3"}));
    EXPECT_EQ(InList(), InLibrary());
}

TEST_F(FileNamesTest, OneOfSeveralNamesIsChangedByHand) {
    StartWith({"a.mp3", "b.ogg"});
    ClickRow(1);
    ClickRow(2, Qt::ShiftModifier);
    EXPECT_TRUE(InDialog("mnuKontextFilename", [&] {
        QLineEdit& field = Field("txtChangeName");
        EXPECT_EQ(dialog->focusWidget(), &List());
        Click("cmdChangeName");
        EXPECT_TRUE(msgBox.shown.empty()) << "no item is selected";

        ClickItem(1);
        EXPECT_EQ(Text(field), "b.ogg");
        field.clear();
        Click("cmdChangeName");
        EXPECT_EQ(msgBox.shown, (std::vector<ShownBox>{Refusal("Bitte geben Sie einen Namen ein!")}));
        QTest::keyClicks(&field, QStringLiteral("new"));
        Click("cmdChangeName");
        EXPECT_EQ(Text(field), "new.ogg");
        EXPECT_EQ(Items(), (Texts{"a.mp3", "new.ogg"}));

        ClickItem(1, Qt::ControlModifier);
        EXPECT_TRUE(List().item(1)->isSelected()) << "an item stays selected until another one is";
        ClickItem(0);
        EXPECT_EQ(Text(field), "a.mp3");
        field.selectAll();
        QTest::keyClicks(&field, QStringLiteral("other"));
        QTest::keyClick(&field, Qt::Key_Return);
        EXPECT_EQ(Items(), (Texts{"other.mp3", "new.ogg"}));
        EXPECT_EQ(OnDisk(), (Texts{"a.mp3", "b.ogg"}));
        Click("cmdSave");
    }));
    EXPECT_EQ(InLibrary(), (Texts{"other.mp3", "new.ogg"}));
    EXPECT_EQ(OnDisk(), (Texts{"new.ogg", "other.mp3"}));
}

TEST_F(FileNamesTest, EnterInTheListRenamesNothing) {
    StartWith({"a1.mp3", "b.mp3"});
    ClickRow(1);
    ClickRow(2, Qt::ShiftModifier);
    EXPECT_TRUE(InDialog("mnuKontextFilename", [&] {
        ClickItem(0);
        Click("cmdRemoveNumbers");
        QTest::keyClick(&List(), Qt::Key_Return);
        EXPECT_EQ(dialog->focusWidget(), &Field("txtChangeName"));
    }));
    EXPECT_EQ(OnDisk(), (Texts{"a1.mp3", "b.mp3"}));
}

TEST_F(FileNamesTest, TheKeyboardAloneSelectsNames) {
    StartWith({"a.mp3", "b.mp3", "c.mp3"});
    ClickRow(1);
    ClickRow(3, Qt::ShiftModifier);
    EXPECT_TRUE(InDialog("mnuKontextFilename", [&] {
        QTest::keyClick(&List(), Qt::Key_Down);
        EXPECT_EQ(Text(Field("txtChangeName")), "a.mp3");
        QTest::keyClick(&List(), Qt::Key_Down);
        EXPECT_EQ(Text(Field("txtChangeName")), "b.mp3");
    }));
}

TEST_F(FileNamesTest, NamesThatNoKeyboardHasComeBackByteForByte) {
    const std::string latin = "\xe4_\xf6.mp3";
    const std::string control = "a\n_\tb\x01.mp3";
    StartWith({latin, control});
    for (const int row : {1, 2}) {
        ClickRow(row);
        EXPECT_TRUE(InDialog("mnuEditFilename", [&] {
            Click("cmdReplaceUnderscore");
            Click("cmsSave");
        }));
    }
    EXPECT_EQ(OnDisk(), (Texts{"a\n \tb\x01.mp3", "\xe4 \xf6.mp3"}));
    ClickRow(1);
    ClickRow(2, Qt::ShiftModifier);
    EXPECT_TRUE(InDialog("mnuEditFilename", [&] {
        ClickItem(0);
        QTest::keyClick(&Field("txtChangeName"), Qt::Key_Home);
        QTest::keyClicks(&Field("txtChangeName"), QStringLiteral("x"));
        Click("cmdChangeName");
        ClickItem(1);
        Click("cmdChangeName");
        Click("cmdSave");
    }));
    EXPECT_EQ(InLibrary(), (Texts{"x\xe4 \xf6.mp3", "a\n \tb\x01.mp3"}));
    EXPECT_EQ(OnDisk(), (Texts{"a\n \tb\x01.mp3", "x\xe4 \xf6.mp3"}));
}

TEST_F(FileNamesTest, EveryByteComesBackFromAField) {
    std::string bytes;
    for (int value = 1; value < 256; ++value) {
        bytes += static_cast<char>(value);
    }
    for (const std::string& name :
         {bytes, std::string("\xed\xb2\x80"), std::string("😀\xf0\x9f\x98 ä\xc3"), std::string("\xff😀")}) {
        QLineEdit field;
        field.setText(ToNameText(name));
        EXPECT_EQ(FromNameText(field.text()), name);
    }
}

TEST_F(FileNamesTest, TheDialogsCloseByEscapeAndRefuseToBeMinimised) {
    StartWith({"a.mp3", "b.mp3"});
    for (const auto modifier : {Qt::NoModifier, Qt::ShiftModifier}) {
        ClickRow(modifier == Qt::NoModifier ? 1 : 2, modifier);
        EXPECT_TRUE(InDialog("mnuEditFilename", [&] {
            EXPECT_FALSE(dialog->windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
            dialog->showMinimized();
            EXPECT_FALSE(dialog->isMinimized());
            QTest::keyClick(dialog, Qt::Key_F1);
            EXPECT_EQ(helpViewer.shown.back().second, "HTML\\editfilenames.html");
            QTest::keyClick(dialog, Qt::Key_Escape);
            EXPECT_FALSE(dialog->isVisible());
        }));
    }
}

// The dialogs hold row numbers, which a load of the list would make those of other files.
TEST_F(FileNamesTest, NothingElseActsWhileADialogIsOpen) {
    StartWith({"a.mp3", "b.mp3", "c.mp3"});
    AddReal("dropped.mp3");
    mainModule.Connection->Execute("Delete from Files where Name = 'dropped.mp3'");
    for (const int last : {1, 2}) {
        ClickRow(1);
        ClickRow(last, Qt::ShiftModifier);
        EXPECT_TRUE(InDialog("mnuEditFilename", [&] {
            const CommandRegistry& commands = Form().Parts().Commands;
            for (const char* name :
                 {"mnuEditFilename", "mnuKontextFilename", "mnuEditDelete", "mnuKontextDelete", "mnuScan",
                  "mnuEditExchange", "mnump3", "mnuEditTree", "cmdPlay"}) {
                EXPECT_FALSE(commands.Run(name)) << name;
            }
            Form().Parts().Scan.FilesDropped({music / "dropped.mp3"});
            QTest::qWait(50);
            EXPECT_TRUE(Form().isVisible());
            EXPECT_EQ(mainModule.SelectedRows.Count(), static_cast<std::size_t>(last));
        }));
    }
    EXPECT_EQ(InLibrary(), (Texts{"a.mp3", "b.mp3", "c.mp3"}));
}

TEST_F(FileNamesTest, DuringAScanNoDialogOpens) {
    StartWith({"a.mp3"});
    ClickRow(1);
    mainModule.ScanRunning = true;
    EXPECT_FALSE(InDialog("mnuEditFilename", [] {}));
    EXPECT_FALSE(InDialog("mnuKontextFilename", [] {}));
    mainModule.ScanRunning = false;
}

TEST_F(FileNamesTest, TheCommandsOfTheListUseTheNewNameAtOnce) {
    StartWith({"a.mp3", "b.mp3"});
    ClickRow(2);
    EXPECT_TRUE(InDialog("mnuEditFilename", [&] {
        Field("txtFileName").setText(QStringLiteral("new.mp3"));
        Click("cmsSave");
    }));
    EXPECT_EQ(Grid().Selection().MouseMove(2, false).ToolTip, "new.mp3");
    Action("mnuKontextDelete").trigger();
    EXPECT_EQ(InLibrary(), (Texts{"a.mp3"})) << "the row is found by its new path";
    EXPECT_EQ(OnDisk(), (Texts{"a.mp3", "new.mp3"}));
}

} // namespace quavernet::test
