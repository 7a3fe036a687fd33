// Base of the tests of the covers' window: pictures on disk, albums of one file each, and the window over the
// main one.
#pragma once

#include "gui/GuiTest.h"

#include "extras/CoverBox.h"
#include "extras/CoversHost.h"
#include "extras/frmCovers.h"
#include "support/RecordingConnection.h"
#include "support/SmallAudio.h"

#include <QImage>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QTabWidget>

#include <string>
#include <vector>

namespace quavernet::test {

class CoversWindowTest : public GuiTest {
protected:
    /// Two albums: "Abba - Album 1" and "Cure - Album 2".
    void StartWithAlbums() {
        AddFile("Abba", "One");
        AddFile("Cure", "Two");
        Start();
    }
    void OpenCovers() {
        if (!windows) {
            StartWithAlbums();
        }
        Action("mnuManageCovers").trigger();
        ASSERT_NE(Covers(), nullptr);
        ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == Covers(); }));
    }
    /// Null while the window is closed.
    frmCovers* Covers() { return Form().Parts().Covers.Form(); }
    template <typename T> T& Part(const char* name) {
        T* found = Covers()->findChild<T*>(QLatin1String(name));
        if (found == nullptr) {
            throw std::runtime_error(std::string("no part ") + name);
        }
        return *found;
    }
    QListView& Albums() { return Part<QListView>("lstAlbums"); }
    QTabWidget& Tabs() { return Part<QTabWidget>("SSTab1"); }
    CoverBox& Box(const char* name) { return Part<CoverBox>(name); }
    std::string PanelPath() { return FromQString(Part<QLabel>("Panel1").text()); }
    std::string TextOf(const char* name) { return Caption(Part<QAbstractButton>(name).text()); }
    void Press(const char* name) { QTest::mouseClick(&Part<QPushButton>(name), Qt::LeftButton); }
    void ClickAlbum(int row, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(Albums().viewport(), Qt::LeftButton, modifiers,
                          Albums().visualRect(Albums().model()->index(row, 0)).center());
    }
    Texts ListedAlbums() {
        Texts texts;
        for (int row = 0; row < Albums().model()->rowCount(); ++row) {
            texts.push_back(FromQString(Albums().model()->index(row, 0).data().toString()));
        }
        return texts;
    }

    /// A picture of one colour.
    std::string MakePicture(const std::string& name, const QColor& colour, const QSize& size = {40, 30}) {
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(colour);
        EXPECT_TRUE(picture.save(ToQString(folder / name)));
        return folder / name;
    }
    /// The colour in the middle of what a box shows; black without a picture.
    QColor Shown(const char* name) {
        CoverBox& box = Box(name);
        (void)box.grab(); // Paints, and so reads.
        const QImage& picture = box.Picture();
        return picture.isNull() ? QColor(Qt::black) : picture.pixelColor(picture.rect().center());
    }
    bool IsEmpty(const char* name) {
        (void)Box(name).grab();
        return Box(name).Picture().isNull();
    }

    Texts StoredCovers() {
        Texts texts;
        ADODB::Recordset rows;
        rows.Open("Select Album_id, Front, Back, CD, CD2, Inlay, Inlet from Covers", *mainModule.Connection);
        for (; !rows.Eof(); rows.MoveNext()) {
            texts.emplace_back();
            for (std::size_t field = 0; field < 7; ++field) {
                texts.back() += (field == 0 ? "" : "|") + rows.Fields(field).Text();
            }
        }
        return texts;
    }
    bool DropOn(const char* box, const Texts& paths) { return Drop(Box(box), paths, {20, 20}); }
};

} // namespace quavernet::test
