// The dialogs that ask for a file to read or to write.
#include "gui/GuiTest.h"

#include "support/TestFiles.h"

#include "adapters/qt/QtDialogs.h"

#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QTimer>

#include <functional>

namespace quavernet::test {

namespace {

const std::string filter = "Quavernet Biliothek (*.qvn)|*.qvn";

class FileDialogTest : public GuiTest {
protected:
    /// Does something with the dialog that comes up next.
    static void WithDialog(const std::function<void(QFileDialog&)>& action) {
        QTimer::singleShot(0, [action] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            action(*dialog);
        });
    }
    static void Type(QFileDialog& dialog, const std::string& name) {
        dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(ToQString(name));
        QMetaObject::invokeMethod(&dialog, "accept");
    }
    /// Names in the dialog's list.
    static QStringList Shown(QFileDialog& dialog) {
        auto* list = dialog.findChild<QListView*>(QStringLiteral("listView"));
        QStringList names;
        for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row) {
            names.append(list->model()->index(row, 0, list->rootIndex()).data().toString());
        }
        names.sort();
        return names;
    }

    QtDialogs systemDialogs;
};

} // namespace

TEST_F(FileDialogTest, TheyBeginInTheGivenFolderWithTheGivenKind) {
    for (const bool isSave : {false, true}) {
        QString directory;
        QString kind;
        WithDialog([&](QFileDialog& dialog) {
            directory = dialog.directory().absolutePath();
            kind = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"))->currentText();
            dialog.reject();
        });
        EXPECT_EQ(isSave ? systemDialogs.ShowSave(filter, folder.Path())
                         : systemDialogs.ShowOpen(filter, folder.Path()),
                  std::nullopt);
        EXPECT_EQ(FromQString(directory), folder.Path());
        EXPECT_EQ(FromQString(kind), "Quavernet Biliothek (*.qvn)");
    }
}

TEST_F(FileDialogTest, EachKindOfSeveralCanBeChosen) {
    Texts kinds;
    WithDialog([&](QFileDialog& dialog) {
        auto* combo = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
        for (int index = 0; index < combo->count(); ++index) {
            kinds.push_back(FromQString(combo->itemText(index)));
        }
        dialog.reject();
    });
    (void)systemDialogs.ShowOpen("Mp3 Audio (*.mp3)|*.mp3|Audiodatei (*.wav)|*.wav", folder.Path());
    EXPECT_EQ(kinds, (Texts{"Mp3 Audio (*.mp3)", "Audiodatei (*.wav)"}));
}

TEST_F(FileDialogTest, AFolderThatIsNotThereBeginsAtHome) {
    QString directory;
    WithDialog([&](QFileDialog& dialog) {
        directory = dialog.directory().absolutePath();
        dialog.reject();
    });
    (void)systemDialogs.ShowOpen(filter, " - nicht definiert - ");
    EXPECT_EQ(directory, QDir::homePath());
}

TEST_F(FileDialogTest, TheExtensionCountsInAnyCaseOfLetters) {
    for (const char* name : {"a.qvn", "b.QVN", "c.Qvn", "d.m3u", "e"}) {
        WriteFile(folder / name, "x");
    }
    QStringList names;
    WithDialog([&](QFileDialog& dialog) {
        (void)QTest::qWaitFor([&] { return Shown(dialog).contains(QStringLiteral("c.Qvn")); }, 5000);
        names = Shown(dialog);
        dialog.reject();
    });
    (void)systemDialogs.ShowOpen(filter, folder.Path());
    EXPECT_EQ(FromQString(names.join(u' ')), "a.qvn b.QVN c.Qvn");
}

TEST_F(FileDialogTest, AllFilesAreAlsoThoseWithoutAPointInTheirNames) {
    for (const char* name : {"a.png", "b", "c.d.e"}) {
        WriteFile(folder / name, "x");
    }
    QStringList names;
    WithDialog([&](QFileDialog& dialog) {
        (void)QTest::qWaitFor([&] { return Shown(dialog).contains(QStringLiteral("c.d.e")); }, 5000);
        names = Shown(dialog);
        dialog.reject();
    });
    (void)systemDialogs.ShowOpen("Alle Dateien (*.*)|*.*", folder.Path());
    EXPECT_EQ(FromQString(names.join(u' ')), "a.png b c.d.e");
}

TEST_F(FileDialogTest, TheChosenFileIsGiven) {
    WriteFile(folder / "Märchen.QVN", "x");
    WithDialog([&](QFileDialog& dialog) { Type(dialog, folder / "Märchen.QVN"); });
    EXPECT_EQ(systemDialogs.ShowOpen(filter, folder.Path()), std::optional(folder / "Märchen.QVN"));
}

TEST_F(FileDialogTest, AChosenFileThatIsNotThereCountsAsCancelled) {
    WriteFile(folder / "gone.qvn", "x");
    WithDialog([&](QFileDialog& dialog) {
        QObject::connect(&dialog, &QDialog::accepted, [&] { std::filesystem::remove(folder / "gone.qvn"); });
        Type(dialog, folder / "gone.qvn");
    });
    EXPECT_EQ(systemDialogs.ShowOpen(filter, folder.Path()), std::nullopt);
}

TEST_F(FileDialogTest, ANewNameIsTakenAsItIsWithoutAnExtension) {
    WithDialog([&](QFileDialog& dialog) { Type(dialog, "tree"); });
    EXPECT_EQ(systemDialogs.ShowSave(filter, folder.Path()), std::optional(folder / "tree"));
}

TEST_F(FileDialogTest, NobodyIsAskedWhetherAnOldFileMayGo) {
    WriteFile(folder / "tree.qvn", "x");
    WithDialog([&](QFileDialog& dialog) { Type(dialog, "tree.qvn"); });
    EXPECT_EQ(systemDialogs.ShowSave(filter, folder.Path()), std::optional(folder / "tree.qvn"));
    EXPECT_EQ(ReadFile(folder / "tree.qvn"), "x");
}

} // namespace quavernet::test
