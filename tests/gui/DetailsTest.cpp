// The details dialog in the real window, on real files, by real keys and clicks.
#include "gui/DetailsTest.h"

#include "adapters/qt/FileUris.h"
#include "app/MayAct.h"

#include <QDrag>
#include <QMimeData>
#include <QTimer>

#include <gmock/gmock.h>

namespace quavernet::test {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

const std::vector<std::string> EditableFields{"txtInterpret", "txtTitle", "txtAlbum",
                                              "txtYear",      "txtGenre", "txtComment"};

} // namespace

TEST_F(DetailsTest, CtrlIOpensTheCurrentRowModalOverTheMainWindow) {
    StartWithTaggedFiles();
    ClickRow(2);
    bool seen = false;
    WhenModal([&](QWidget& modal) {
        seen = modal.objectName() == QLatin1String("frmDetails") && modal.parentWidget() == &Form() &&
               modal.findChild<QLineEdit*>(QStringLiteral("txtTitle"))->text() == QLatin1String("Two");
        EXPECT_FALSE(MayAct()) << "no reminder, no drop and no other command comes in between";
        EXPECT_FALSE(Form().Parts().Commands.Run("mnuEditDelete"));
    });
    QTest::keyClick(&Grid(), Qt::Key_I, Qt::ControlModifier);
    EXPECT_TRUE(seen);
    EXPECT_EQ(mainModule.DetailsRow, 2);
    EXPECT_TRUE(MayAct());
    EXPECT_EQ(Listed().size(), 3U);
}

TEST_F(DetailsTest, TheContextMenuOpensTheCurrentRowAndKeepsTheRowThatThePressNoted) {
    StartWithTaggedFiles();
    ClickRow(2);
    mainModule.DetailsRow = 7;
    std::string title;
    WhenModal([&](QWidget& modal) {
        title = FromQString(modal.findChild<QLineEdit*>(QStringLiteral("txtTitle"))->text());
    });
    Action("mnuKontextDetails").trigger();
    EXPECT_EQ(title, "Two");
    EXPECT_EQ(mainModule.DetailsRow, 7);
}

TEST_F(DetailsTest, AFileThatIsNotThereIsToldAndNoDialogOpens) {
    StartWithTaggedFiles();
    ClickRow(1);
    std::filesystem::remove(Path(1));
    for (const char* name : {"mnuDetails", "mnuKontextDetails"}) {
        msgBox.shown.clear();
        Action(name).trigger();
        EXPECT_THAT(msgBox.shown,
                    ElementsAre(ShownBox{"Datei nicht gefunden!", "Anzeige der Details nicht möglich",
                                         MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok}))
            << name;
    }
}

TEST_F(DetailsTest, AFileThatVanishesBeforeItIsReadIsToldToo) {
    StartWithTaggedFiles();
    ClickRow(1);
    class Forgetful : public PosixForward {
    public:
        using PosixForward::PosixForward;
        FileFacts GetFile(const std::string&) override { throw RuntimeError(53, "File not found"); }
    };
    Forgetful forgetful(*fileSystem);
    services.fileSystem = &forgetful;
    Action("mnuDetails").trigger();
    services.fileSystem = fileSystem.get();
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].text, "Datei nicht gefunden!");
}

TEST_F(DetailsTest, WithoutACurrentRowNothingOpens) {
    StartWithTaggedFiles();
    EXPECT_FALSE(Action("mnuDetails").isEnabled());
    EXPECT_TRUE(Form().Parts().Commands.Run("mnuDetails"));
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(DetailsTest, ItOpensForViewing) {
    OpenTagged();
    EXPECT_EQ(FromQString(dialog->windowTitle()), "Details");
    EXPECT_EQ(TextOf("txtPath"), Path(1));
    EXPECT_EQ(TextOf("txtInterpret"), "Abba");
    EXPECT_EQ(TextOf("txtTitle"), "One");
    EXPECT_EQ(TextOf("txtAlbum"), "Best");
    EXPECT_EQ(TextOf("txtYear"), "1999");
    EXPECT_EQ(TextOf("txtGenre"), "Rock");
    EXPECT_EQ(TextOf("txtQuality"), "128");
    EXPECT_EQ(TextOf("txtFrequency"), "44100");
    EXPECT_EQ(TextOf("txtLength"), "0:10 min");
    EXPECT_EQ(TextOf("txtSize"), "0,15 MB");
    EXPECT_EQ(TextOf("txtLanguage"), "");
    EXPECT_TRUE(Part<QRadioButton>("optID3V1").isChecked());
    ExpectViewing();
    EXPECT_EQ(dialog->focusWidget(), &Part<QWidget>("cmdEdit"));
}

TEST_F(DetailsTest, EditOpensTheFieldsAndSelectsThePerformer) {
    OpenTagged();
    Click("cmdEdit");
    ExpectEditing();
    EXPECT_EQ(dialog->focusWidget(), &Field("txtInterpret"));
    EXPECT_EQ(FromQString(Field("txtInterpret").selectedText()), "Abba");
    for (const char* name : {"txtPath", "txtPublisher", "txtLanguage", "txtQuality", "txtSize", "txtLength",
                             "txtFrequency", "txtMode", "txtLayer", "txtVersion"}) {
        EXPECT_TRUE(Field(name).isReadOnly()) << name;
    }
}

TEST_F(DetailsTest, ReadOnlyFieldsHaveTheColourOfButtonsAndOpenOnesThatOfPaper) {
    OpenTagged();
    const auto expectColors = [&](const char* name, bool open) {
        const QPalette system = QApplication::palette();
        const QPalette palette = Field(name).palette();
        EXPECT_EQ(palette.color(QPalette::Base), system.color(open ? QPalette::Base : QPalette::Button))
            << name;
        EXPECT_EQ(palette.color(QPalette::Text), system.color(open ? QPalette::Text : QPalette::ButtonText))
            << name;
    };
    const QPalette before = QApplication::palette();
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(40, 40, 40));
    dark.setColor(QPalette::Base, QColor(20, 20, 20));
    dark.setColor(QPalette::Button, QColor(60, 60, 60));
    dark.setColor(QPalette::Text, QColor(250, 250, 250));
    dark.setColor(QPalette::ButtonText, QColor(240, 240, 240));
    for (const bool editing : {false, true}) {
        if (editing) {
            Click("cmdEdit");
        }
        for (const QPalette& palette : {dark, before}) {
            QApplication::setPalette(palette);
            QCoreApplication::processEvents(); // The controls hear of it there.
            for (const std::string& name : EditableFields) {
                expectColors(name.c_str(), editing);
            }
            expectColors("txtPath", false);
        }
    }
}

TEST_F(DetailsTest, EnterInAFieldSavesFileLibraryAndListAndKeepsTheRow) {
    OpenTagged(2);
    Grid().SetTopRow(1);
    Click("cmdEdit");
    QTest::keyClicks(&Field("txtInterpret"), QStringLiteral("Aha"));
    Part<QComboBox>("cboGenre").setCurrentText(QStringLiteral("Pop"));
    QTest::keyClick(&Field("txtInterpret"), Qt::Key_Return);
    ExpectViewing();
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_THAT(ReadFile(Path(2)), ::testing::HasSubstr("TAGTwo" + std::string(27, ' ') + "Aha"));
    EXPECT_THAT(Listed(), ElementsAre("Abba", "Aha", "Doors"));
    EXPECT_EQ(Value("Select Genre_id from Files where File_id = 2"), "13");
    EXPECT_EQ(TextOf("txtGenre"), "Pop");
    EXPECT_EQ(Grid().Selection().Row(), 2);
    EXPECT_EQ(Grid().TopRow(), 1);
    EXPECT_THAT(mainModule.SelectedRows.Rows(), ElementsAre(2));
    EXPECT_EQ(PanelText(Panel::Scanning), Path(2));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(DetailsTest, EnterInTheGenreBoxSavesToo) {
    OpenTagged();
    Click("cmdEdit");
    QTest::keyClick(&Part<QComboBox>("cboGenre"), Qt::Key_Enter, Qt::KeypadModifier);
    ExpectViewing();
    EXPECT_EQ(Value("Select Genre_id from Files where File_id = 1"), "17");
}

TEST_F(DetailsTest, EnterWhileViewingDoesNothingInAField) {
    OpenTagged();
    const std::string before = ReadFile(Path(1));
    for (TagField* field : dialog->findChildren<TagField*>()) {
        QTest::keyClick(field, Qt::Key_Return);
    }
    EXPECT_TRUE(dialog->isVisible());
    ExpectViewing();
    EXPECT_EQ(ReadFile(Path(1)), before);
}

TEST_F(DetailsTest, CancelBringsTheTextOfTheFileBack) {
    OpenTagged();
    Click("cmdEdit");
    for (const std::string& name : EditableFields) {
        Field(name.c_str()).setText(QStringLiteral("typed"));
    }
    Part<QRadioButton>("optID3V2").click();
    Click("cmdCancel");
    ExpectViewing();
    EXPECT_EQ(TextOf("txtInterpret") + TextOf("txtTitle") + TextOf("txtAlbum") + TextOf("txtYear") +
                  TextOf("txtGenre") + TextOf("txtComment"),
              "AbbaOneBest1999Rock");
    EXPECT_TRUE(Part<QRadioButton>("optID3V1").isChecked());
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(DetailsTest, EscapeGivesUpTheEditingFirstAndTheDialogThen) {
    OpenTagged();
    Click("cmdEdit");
    QTest::keyClicks(&Field("txtInterpret"), QStringLiteral("x"));
    QTest::keyClick(&Field("txtInterpret"), Qt::Key_Escape);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(TextOf("txtInterpret"), "Abba");
    ExpectViewing();
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(DetailsTest, AFileThatVanishedBeforeCancelIsShownAsItWasReadLast) {
    OpenTagged();
    Click("cmdEdit");
    Field("txtTitle").setText(QStringLiteral("typed"));
    std::filesystem::remove(Path(1));
    Click("cmdCancel");
    ExpectViewing();
    EXPECT_EQ(TextOf("txtTitle"), "One");
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].text, "Datei nicht gefunden!");
    EXPECT_EQ(msgBox.shown[0].title, "Anzeige der Details nicht möglich");
}

TEST_F(DetailsTest, Version1TakesItsGenreFromTheListAndVersion2FromTheField) {
    OpenTagged();
    Click("cmdEdit");
    ExpectGenreBox(true);
    EXPECT_EQ(FromQString(Part<QComboBox>("cboGenre").currentText()), "Rock");
    EXPECT_EQ(Part<QComboBox>("cboGenre").count(), 149);
    QTest::mouseClick(&Part<QRadioButton>("optID3V2"), Qt::LeftButton, {}, QPoint(5, 8));
    ExpectGenreBox(false);
    EXPECT_EQ(TextOf("txtGenre"), "Rock");
    QTest::mouseClick(&Part<QRadioButton>("optID3V1"), Qt::LeftButton, {}, QPoint(5, 8));
    ExpectGenreBox(true);
    EXPECT_EQ(Part<QComboBox>("cboGenre").count(), 149) << "cleared before it is filled again";
}

TEST_F(DetailsTest, TheGenreBoxTakesThePlaceOfTheFieldAndTheDialogKeepsItsSize) {
    OpenTagged();
    const QSize size = dialog->size();
    Click("cmdEdit");
    EXPECT_EQ(dialog->size(), size);
    Part<QRadioButton>("optID3V2").click();
    Part<QRadioButton>("optID3V1").click();
    Click("cmdCancel");
    EXPECT_EQ(dialog->size(), size);
}

TEST_F(DetailsTest, AVersion2FileIsSavedAsVersion2WithTheGenreThatWasTyped) {
    OpenVersion2();
    EXPECT_TRUE(Part<QRadioButton>("optID3V2").isChecked());
    EXPECT_EQ(TextOf("txtGenre"), "(17)");
    Click("cmdEdit");
    ExpectGenreBox(false);
    Field("txtGenre").setText(QStringLiteral("Own"));
    Field("txtGenre").setModified(true);
    Click("cmdSave");
    ExpectViewing();
    EXPECT_EQ(TextOf("txtGenre"), "Own");
    EXPECT_EQ(Value("Select Genre_id from Files where File_id = 1"), "255");
    EXPECT_EQ(Value("Select Name from Titel where Title_id = (Select Title_id from Files where File_id = 1)"),
              "Lied");
    EXPECT_EQ(FieldInFile(Path(1), TagComponent::Genre), "Own");
    EXPECT_EQ(FieldInFile(Path(1), TagComponent::Publisher), "Label");
}

TEST_F(DetailsTest, AnEntryThatStaysSelectedInTheHiddenBoxIsTheGenreOfAVersion2Save) {
    OpenVersion2();
    Click("cmdEdit");
    Part<QRadioButton>("optID3V1").click();
    EXPECT_EQ(FromQString(Part<QComboBox>("cboGenre").currentText()), "Blues");
    EXPECT_EQ(TextOf("txtGenre"), "Blues");
    Part<QRadioButton>("optID3V2").click();
    Click("cmdSave");
    EXPECT_EQ(Value("Select Genre_id from Files where File_id = 1"), "0");
}

TEST_F(DetailsTest, AfterASaveOfVersion1ThePlaceInTheListCountsAsTheGenre) {
    OpenTagged();
    Click("cmdEdit");
    auto& genres = Part<QComboBox>("cboGenre");
    genres.setCurrentIndex(3);
    const QString saved = genres.currentText();
    Click("cmdSave");
    EXPECT_EQ(TextOf("txtGenre"), FromQString(saved));
    Click("cmdEdit");
    EXPECT_EQ(genres.currentText(), saved);
    Part<QRadioButton>("optID3V2").click();
    Part<QRadioButton>("optID3V1").click();
    EXPECT_EQ(genres.currentData().toInt(), 3);
}

TEST_F(DetailsTest, WithoutAGenreASaveOfVersion1StoresNone) {
    OpenTagged();
    Click("cmdEdit");
    Part<QComboBox>("cboGenre").setCurrentIndex(-1);
    Click("cmdSave");
    EXPECT_EQ(Value("Select Genre_id from Files where File_id = 1"), "255");
    EXPECT_EQ(ReadFile(Path(1)).back(), '\xFF');
    Click("cmdEdit");
    Part<QRadioButton>("optID3V2").click();
    Part<QRadioButton>("optID3V1").click();
    EXPECT_EQ(Part<QComboBox>("cboGenre").currentIndex(), -1);
}

TEST_F(DetailsTest, AFileWithoutATagIsEditedAsVersion1) {
    OpenBytes("One.mp3", std::string(5000, '\0'));
    EXPECT_EQ(FromQString(dialog->windowTitle()),
              "Details - Speichern nur als ID3v1 TAG - Kein ID3 Tag gefunden!");
    EXPECT_EQ(TextOf("txtInterpret"), "Abba");
    Click("cmdEdit");
    ExpectGenreBox(true);
    EXPECT_EQ(Part<QComboBox>("cboGenre").currentIndex(), -1);
    Click("cmdSave");
    EXPECT_THAT(ReadFile(Path(1)).substr(5000 - 128), StartsWith("TAGOne"));
    Click("cmdEdit");
    Click("cmdCancel");
    EXPECT_EQ(FromQString(dialog->windowTitle()), "Details") << "there is a tag now";
}

TEST_F(DetailsTest, AWaveFileCannotBeEdited) {
    OpenBytes("One.wav", WaveBytes(), "wav");
    EXPECT_EQ(FromQString(dialog->windowTitle()), "Details - Bearbeiten von wav nicht möglich");
    EXPECT_FALSE(Part<QPushButton>("cmdEdit").isEnabled());
    EXPECT_EQ(TextOf("txtQuality"), "8");
    EXPECT_EQ(dialog->focusWidget(), &Part<QWidget>("cmdOK"));
    QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(DetailsTest, TheVersionOfATagSaysNothingOfAnOggFile) {
    OpenOgg();
    const std::string genre = TextOf("txtGenre");
    Click("cmdEdit");
    for (const char* option : {"optID3V1", "optID3V2", "optID3V1"}) {
        Part<QRadioButton>(option).click();
        ExpectGenreBox(false);
        EXPECT_EQ(TextOf("txtGenre"), genre);
    }
}

TEST_F(DetailsTest, AnOggFileIsSavedUnderTheHourglassAndTheLibraryStays) {
    OpenOgg();
    EXPECT_EQ(TextOf("txtInterpret"), "Künstler");
    EXPECT_EQ(TextOf("txtMode"), "stereo");
    EXPECT_EQ(TextOf("txtLength"), "1:05 min");
    EXPECT_FALSE(Part<QRadioButton>("optID3V1").isChecked() || Part<QRadioButton>("optID3V2").isChecked());
    Click("cmdEdit");
    ExpectGenreBox(false);
    QTest::keyClicks(&Field("txtInterpret"), QStringLiteral("Neu"));
    bool hourglass = false;
    oggComments.onWrite = [&] {
        hourglass = QGuiApplication::overrideCursor() != nullptr &&
                    QGuiApplication::overrideCursor()->shape() == Qt::WaitCursor;
    };
    Click("cmdSave");
    EXPECT_TRUE(hourglass);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    ExpectViewing();
    EXPECT_THAT(oggComments.written, ElementsAre("TITLE=Lied", "ARTIST=Neu",
                                                 "GENRE=", "ALBUM=", "DATE=", "COMMENT=", "TRACKNUMBER=7"));
    EXPECT_THAT(Listed(), ElementsAre("Abba"));
}

TEST_F(DetailsTest, ASaveThatFailsIsToldAndEverythingThatWasTypedStays) {
    OpenOgg();
    Click("cmdEdit");
    QTest::keyClicks(&Field("txtInterpret"), QStringLiteral("Neu"));
    oggComments.onWrite = [] { throw RuntimeError(ErrorNumber::DiskFull, "No space left on device"); };
    Click("cmdSave");
    EXPECT_THAT(msgBox.shown,
                ElementsAre(ShownBox{"Fehler: 61 - No space left on device", "Speichern abgebrochen",
                                     MsgBox::Icon::Critical, MsgBox::Buttons::Ok}));
    ExpectEditing();
    EXPECT_EQ(TextOf("txtInterpret"), "Neu");
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    oggComments.onWrite = nullptr;
    Click("cmdSave");
    ExpectViewing();
    EXPECT_EQ(oggComments.written.at(1), "ARTIST=Neu");
}

TEST_F(DetailsTest, ThePlayButtonPlaysTheCurrentRowOfTheList) {
    OpenTagged(2);
    mainModule.UseExternalPlayer = true;
    auto& play = Part<PictureButton>("cmdPlay");
    EXPECT_EQ(play.PictureKey(), "Play");
    QTest::mouseMove(&play, QPoint(9, 9));
    QMouseEvent over(QEvent::MouseMove, QPointF(9, 9), play.mapToGlobal(QPointF(9, 9)), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&play, &over);
    EXPECT_EQ(play.PictureKey(), "PlayGreen");
    QTest::mousePress(&play, Qt::LeftButton);
    EXPECT_EQ(play.PictureKey(), "PlayGreenDown");
    QTest::mouseRelease(&play, Qt::LeftButton);
    EXPECT_EQ(play.PictureKey(), "PlayGreen");
    EXPECT_THAT(shell.executed, ElementsAre(Path(2)));
    EXPECT_EQ(Value("Select Hits from Files where File_id = 2"), "1");
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&play, &leave);
    EXPECT_EQ(play.PictureKey(), "Play");
}

TEST_F(DetailsTest, AClickOnTheLabelOfTheTitleClosesTheDialog) {
    OpenTagged();
    for (const char* name : {"Label1", "Label2", "Label4"}) {
        QTest::mouseClick(&Part<QLabel>(name), Qt::LeftButton);
    }
    QTest::mouseClick(&Part<QLabel>("Label3"), Qt::RightButton);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(Caption(Part<QLabel>("Label3").text()), "Titel:");
    QTest::mouseClick(&Part<QLabel>("Label3"), Qt::LeftButton);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(DetailsTest, TheCoversLabelLeadsToTheKeyOfAlbumAndPerformerWhileViewing) {
    std::vector<std::string> keys;
    showCovers = [&](const std::string& key) { keys.push_back(key); };
    OpenTagged();
    EXPECT_EQ(Caption(Part<QLabel>("lblCover").text()), "Cover...");
    EXPECT_TRUE(Part<QLabel>("lblCover").isVisible());
    QTest::mouseClick(&Part<QLabel>("lblCover"), Qt::LeftButton);
    EXPECT_THAT(keys, IsEmpty()) << "the library has no such album";
    Execute("Insert into Albums (Album_id, Name) values (70, 'Best')");
    QTest::mouseClick(&Part<QLabel>("lblCover"), Qt::LeftButton);
    EXPECT_THAT(keys, ElementsAre("AlbumID:70InterID:1"));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    Click("cmdEdit");
    QTest::mouseClick(&Part<QLabel>("lblCover"), Qt::LeftButton);
    EXPECT_EQ(keys.size(), 1U);
}

TEST_F(DetailsTest, WithoutCoversNoLabelLeadsToThem) {
    OpenTagged();
    EXPECT_FALSE(Part<QLabel>("lblCover").isVisible());
}

TEST_F(DetailsTest, ThePathIsDraggedAsAFile) {
    OpenTagged();
    TagField& path = Field("txtPath");
    QTest::mousePress(&path, Qt::LeftButton, {}, QPoint(10, 8));
    const auto move = [&](QPoint place, Qt::MouseButtons buttons) {
        QMouseEvent event(QEvent::MouseMove, place, path.mapToGlobal(place), Qt::NoButton, buttons,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&path, &event);
    };
    move(QPoint(12, 8), Qt::LeftButton);
    EXPECT_EQ(path.findChild<QDrag*>(), nullptr);
    move(QPoint(60, 8), Qt::NoButton);
    EXPECT_EQ(path.findChild<QDrag*>(), nullptr);
    move(QPoint(60, 8), Qt::LeftButton);
    const auto* drag = path.findChild<QDrag*>();
    ASSERT_NE(drag, nullptr);
    EXPECT_THAT(LocalFiles(*drag->mimeData()), ElementsAre(Path(1)));
    EXPECT_FALSE(path.hasSelectedText());
}

TEST_F(DetailsTest, WhatComesInTheEventsOfAHandlerDoesNotRunInsideIt) {
    OpenTagged();
    const std::string before = ReadFile(Path(1));
    Click("cmdEdit");
    Field("txtTitle").setText(QStringLiteral("typed"));
    Field("txtTitle").setModified(true);
    int points = 0;
    events.onDoEvents = [&] {
        ++points;
        Click("cmdEdit");
        Click("cmdSave");
        Click("cmdPlay");
        Click("cmdCancel");
    };
    services.events = &events;
    Click("cmdCancel");
    services.events = &realEvents;
    EXPECT_GE(points, 3) << "one of its own and two of the inspection";
    ExpectViewing();
    EXPECT_EQ(TextOf("txtTitle"), "One");
    EXPECT_EQ(ReadFile(Path(1)), before);
    EXPECT_TRUE(shell.executed.empty());
}

TEST_F(DetailsTest, ADialogThatClosesInTheEventsOfItsSaveHasSavedAll) {
    OpenTagged(2);
    Click("cmdEdit");
    QTest::keyClicks(&Field("txtInterpret"), QStringLiteral("Zappa"));
    events.onDoEvents = [&] { dialog->reject(); };
    services.events = &events;
    Click("cmdSave");
    services.events = &realEvents;
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_THAT(Listed(), ElementsAre("Abba", "Doors", "Zappa"));
    EXPECT_EQ(Grid().Selection().Row(), 2);
}

TEST_F(DetailsTest, WhenASearchNoLongerFindsTheFileTheDialogStaysWithIt) {
    AddTagged("Abba", "One");
    Start();
    Control<QLineEdit>("txtSearch").setText(QStringLiteral("Abba"));
    QTest::keyClick(&Control<QLineEdit>("txtSearch"), Qt::Key_Return);
    ClickRow(1);
    Open();
    Click("cmdEdit");
    QTest::keyClicks(&Field("txtInterpret"), QStringLiteral("Zappa"));
    Click("cmdSave");
    EXPECT_THAT(Listed(), IsEmpty());
    Click("cmdEdit");
    QTest::keyClicks(&Field("txtInterpret"), QStringLiteral("x"));
    Click("cmdCancel");
    EXPECT_EQ(TextOf("txtInterpret"), "Zappa");
    EXPECT_EQ(TextOf("txtPath"), Path(1));
}

TEST_F(DetailsTest, WithALoadAtSearchesAloneTheListStaysAsItIs) {
    OpenTagged(2);
    mainModule.LoadOverSearch = true;
    Click("cmdEdit");
    QTest::keyClicks(&Field("txtInterpret"), QStringLiteral("Zappa"));
    Click("cmdSave");
    EXPECT_THAT(Listed(), ElementsAre("Abba", "Cure", "Doors"));
    EXPECT_EQ(Value("Select I.Interpret from Interpret I, Files F where F.Inter_id = I.Inter_id and "
                    "F.File_id = 2"),
              "Zappa");
    EXPECT_EQ(Grid().Selection().Row(), 2);
}

TEST_F(DetailsTest, AFieldGivesBackWhatItCannotShow) {
    TagField field;
    const std::string longText(100000, 'x');
    for (const std::string& text : {std::string("a\nb\tc"), std::string("\xC3\x28 \xFF"), longText}) {
        field.ShowText(text);
        EXPECT_TRUE(field.Text() == text);
    }
    field.ShowText("a\nb");
    QTest::keyClick(&field, Qt::Key_End);
    QTest::keyClicks(&field, QStringLiteral("c"));
    EXPECT_EQ(field.Text(), "a\nb") << "read-only";
    field.SetEditable(true);
    QTest::keyClicks(&field, QStringLiteral("c"));
    EXPECT_EQ(field.Text(), "a\nbc");
    field.ShowText("d");
    EXPECT_EQ(field.Text(), "d");
}

} // namespace quavernet::test
