// Base of the tests of the details dialog: files on disk that the list shows, and the dialog over the window.
#pragma once

#include "gui/GuiTest.h"

#include "editing/TagField.h"
#include "editing/frmDetails.h"
#include "platform/OggInfoTool.h"
#include "platform/VorbisCommentTool.h"
#include "support/SmallAudio.h"
#include "support/TagBytes.h"
#include "support/TestFiles.h"
#include "widgets/PictureButton.h"

#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quavernet::test {

/// The real file system, for a double that changes one answer of it.
class PosixForward : public FileSystemObject {
public:
    explicit PosixForward(FileSystemObject& real) : m_real(real) {}

    std::unique_ptr<FolderWalk> GetFolder(const std::string& path) override { return m_real.GetFolder(path); }
    FileFacts GetFile(const std::string& path) override { return m_real.GetFile(path); }
    bool FileExists(const std::string& path) override { return m_real.FileExists(path); }
    bool FolderExists(const std::string& path) override { return m_real.FolderExists(path); }
    void CreateFolder(const std::string& path) override { m_real.CreateFolder(path); }
    void CopyFile(const std::string& source, const std::string& target) override {
        m_real.CopyFile(source, target);
    }
    void RenameFile(const std::string& source, const std::string& target) override {
        m_real.RenameFile(source, target);
    }

    std::vector<std::string> LogicalDrives() override { return m_real.LogicalDrives(); }
    std::optional<std::string> NetworkRoot(const std::string& drive) override {
        return m_real.NetworkRoot(drive);
    }

private:
    FileSystemObject& m_real;
};

class SpokenOggInfo : public OggInfoTool {
public:
    std::string Run(const std::vector<std::string>& paths) override {
        return "Processing file \"" + paths.at(0) + "\"...\n\tTITLE=Lied\n\tARTIST=Künstler\n" +
               "Channels: 2\nRate: 44100\nNominal bitrate: 112,0 kb/s\nPlayback length: 1m:05.000s\n";
    }
};

class HeldOggComments : public VorbisCommentTool {
public:
    std::vector<std::string> List(const std::string&) override { return {"TRACKNUMBER=7", "title=alt"}; }
    void Write(const std::string&, const std::vector<std::string>& comments) override {
        if (onWrite) {
            onWrite();
        }
        written = comments;
    }

    std::function<void()> onWrite;
    std::vector<std::string> written;
};

class DetailsTest : public GuiTest {
protected:
    DetailsTest() {
        services.oggInfo = &oggInfo;
        services.oggComments = &oggComments;
    }
    ~DetailsTest() override {
        services.events = &realEvents;
        dialog.reset();
    }

    std::string Path(int id) { return Value("Select Path from Files where File_id = " + std::to_string(id)); }
    std::string Value(const std::string& statement) {
        return mainModule.Connection->Query(statement).At(0, 0).Text();
    }
    void Execute(const std::string& statement) { mainModule.Connection->Execute(statement); }

    void AddBytes(const std::string& performer, const std::string& title, const std::string& name,
                  const std::string& bytes, const std::string& format = "mp3") {
        AddFile(performer, title, format);
        WriteBytes(folder / name, bytes);
        Execute("Update Files set Path = '" + (folder / name) + "', Name = '" + name +
                "' where File_id = " + std::to_string(files));
    }
    void AddTagged(const std::string& performer, const std::string& title) {
        AddBytes(performer, title, title + ".mp3", Mp3Bytes(title, performer, "Best"));
    }
    void StartWithTaggedFiles() {
        AddTagged("Abba", "One");
        AddTagged("Cure", "Two");
        AddTagged("Doors", "Three");
        Start();
    }

    /// Shows the dialog for the current row, as a command does, but returns.
    void Open() {
        dialog = std::make_unique<frmDetails>(
            EditingParts{Grid(), Form().Parts().Views, windows->Player(), Form().Parts().Work, showCovers},
            &Form());
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == dialog.get(); }));
    }
    void OpenTagged(int row = 1) {
        if (!windows) {
            StartWithTaggedFiles();
        }
        ClickRow(row);
        mainModule.DetailsRow = row;
        Open();
    }
    void OpenBytes(const std::string& name, const std::string& bytes, const std::string& format = "mp3") {
        AddBytes("Abba", "One", name, bytes, format);
        Start();
        ClickRow(1);
        Open();
    }
    void OpenVersion2() {
        OpenBytes("One.mp3", TagV2(3, TextFrame(3, "TIT2", "Lied") + TextFrame(3, "TCON", "(17)") +
                                          TextFrame(3, "TPUB", "Label")) +
                                 std::string(5000, '\0'));
    }
    void OpenOgg() { OpenBytes("One.ogg", "OggS", "ogg"); }

    static std::string FieldInFile(const std::string& path, TagComponent::Field field) {
        const auto component = CreateTagLibComponent(RealFiles());
        component->LoadFile(path);
        return component->TagField(field);
    }

    QObject m_context; ///< With it go the timers of WhenModal.

    /// Runs once when a dialog is open, and closes it afterwards. Events run before it comes up.
    void WhenModal(const std::function<void(QWidget&)>& action) {
        QTimer::singleShot(1, &m_context, [this, action] {
            if (QWidget* modal = QApplication::activeModalWidget()) {
                action(*modal);
                modal->close();
            } else {
                WhenModal(action);
            }
        });
    }

    template <typename T> T& Part(const char* name) {
        T* found = dialog->findChild<T*>(QLatin1String(name));
        if (found == nullptr) {
            throw std::runtime_error(std::string("no part ") + name);
        }
        return *found;
    }
    TagField& Field(const char* name) { return Part<TagField>(name); }
    std::string TextOf(const char* name) { return Field(name).Text(); }
    void Click(const char* name) { QTest::mouseClick(&Part<QAbstractButton>(name), Qt::LeftButton); }

    void ExpectMode(bool editing) {
        for (const char* name :
             {"txtInterpret", "txtTitle", "txtAlbum", "txtYear", "txtGenre", "txtComment"}) {
            EXPECT_EQ(Field(name).isReadOnly(), !editing) << name;
        }
        for (const char* name : {"cmdSave", "cmdCancel", "optID3V1", "optID3V2"}) {
            EXPECT_EQ(Part<QWidget>(name).isEnabled(), editing) << name;
        }
        for (const char* name : {"cmdEdit", "cmdOK"}) {
            EXPECT_EQ(Part<QWidget>(name).isEnabled(), !editing) << name;
        }
    }
    void ExpectEditing() { ExpectMode(true); }
    void ExpectViewing() {
        ExpectMode(false);
        ExpectGenreBox(false);
    }
    /// Either the list of genres or the field, in the same place.
    void ExpectGenreBox(bool shown) {
        EXPECT_EQ(Part<QComboBox>("cboGenre").isVisibleTo(dialog.get()), shown);
        EXPECT_EQ(Field("txtGenre").isVisibleTo(dialog.get()), !shown);
    }
    /// Controls that a screen reader could not name.
    std::vector<std::string> Nameless() {
        std::vector<std::string> names;
        for (QWidget* control : dialog->findChildren<QWidget*>()) {
            if (control->focusPolicy() == Qt::NoFocus || !control->isVisible()) {
                continue;
            }
            const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(control);
            if (spoken == nullptr || spoken->text(QAccessible::Name).isEmpty()) {
                names.push_back(FromQString(control->objectName()));
            }
        }
        return names;
    }

    SpokenOggInfo oggInfo;
    HeldOggComments oggComments;
    std::function<void(const std::string&)> showCovers;
    std::unique_ptr<frmDetails> dialog;
};

} // namespace quavernet::test
