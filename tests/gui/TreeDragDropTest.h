// The base of tests of drags over the category tree: a filled tree, and hands that press, drag and drop on
// it.
#pragma once

#include "gui/TreeTest.h"

#include "adapters/qt/FileUris.h"

#include <QDrag>
#include <QDropEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QScrollBar>
#include <QTimer>

#include <fstream>

namespace quavernet::test {

/// Looks at a mark when a drag of the watched control is made.
class DragWatch : public QObject {
public:
    explicit DragWatch(const bool& mark) : m_mark(mark) {}
    bool eventFilter(QObject*, QEvent* event) override {
        wasMarked = wasMarked || (event->type() == QEvent::ChildAdded && m_mark);
        return false;
    }
    bool wasMarked = false;

private:
    const bool& m_mark;
};

class TreeDragDropTest : public TreeTest {
protected:
    ~TreeDragDropTest() override {
        if (windows) {
            Leave(); // The toolkit would look for the widget under the drag in the next test.
        }
    }
    /// Both categories have entries; all of them can be seen.
    void StartWithTree() {
        MakeTree();
        for (const char* entry : {"(21, 1, 2, 1, 'Beta', 'One.mp3')", "(22, 2, 2, 2, 'Beta', 'Two.mp3')"}) {
            mainModule.Connection->Execute(
                "Insert into FileCategories (FileCategory_id, File_id, Category_id, "
                "[Position], Parent, Filename) values " +
                std::string(entry));
        }
        Start();
        Tree().expandAll();
    }
    /// More categories than the view has rows for, named "100" and so on, and the first one of its entries.
    void StartWithLongTree() {
        AddFile("Abba", "One");
        AddFile("Cure", "Two");
        for (int number = 100; number < 200; ++number) {
            const std::string name = std::to_string(number);
            mainModule.Connection->Execute("Insert into Categories (Category_id, Category) values (" + name +
                                           ", '" + name + "')");
            mainModule.Connection->Execute(
                "Insert into FileCategories (FileCategory_id, File_id, Category_id, "
                "[Position], Parent, Filename) values (" +
                name + ", 1, " + name + ", 1, '" + name + "', 'One.mp3')");
        }
        Start();
        Tree().expandAll();
    }
    std::string MakeFile(const std::string& name) {
        std::ofstream(folder / name, std::ios::binary) << std::string(400, 'x');
        return folder / name;
    }

    DragState& Drag() { return Form().Parts().Drag; }
    QTimer& Timer1() { return *Form().Parts().TreeDrags.findChild<QTimer*>(QStringLiteral("Timer1")); }
    QScrollBar& Bar() { return *Tree().verticalScrollBar(); }
    QPoint Beside() { return Tree().viewport()->rect().bottomLeft() + QPoint(10, -1); }
    QPoint Place(const QModelIndex& node) { return {40, Tree().visualRect(node).center().y()}; }
    QModelIndex BetaEntry(int row) { return Child(Beta(), row); }

    void Press(const QModelIndex& node, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mousePress(Tree().viewport(), button, {}, Place(node));
    }
    void Release(const QModelIndex& node, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseRelease(Tree().viewport(), button, {}, Place(node));
    }
    void MoveTo(const QPoint& place, Qt::MouseButtons held) {
        QMouseEvent move(QEvent::MouseMove, QPointF(place), QPointF(Tree().viewport()->mapToGlobal(place)),
                         Qt::NoButton, held, Qt::NoModifier);
        QCoreApplication::sendEvent(Tree().viewport(), &move);
    }
    /// What a drag that begins at a node offers; nothing if none begins. The drag itself ends at once here.
    const QMimeData* DragOut(const QModelIndex& node) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Press(node);
        MoveTo(Place(node) + QPoint(60, 5), Qt::LeftButton);
        const auto* drag = Tree().findChild<QDrag*>();
        return drag == nullptr ? nullptr : drag->mimeData();
    }

    bool Enter(const QMimeData& data, const QPoint& place, Qt::DropActions actions = Qt::CopyAction) {
        QDragEnterEvent enter(place, actions, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Tree().viewport(), &enter);
        return enter.isAccepted();
    }
    bool Over(const QMimeData& data, const QPoint& place) {
        QDragMoveEvent move(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Tree().viewport(), &move);
        return move.isAccepted();
    }
    void Leave() {
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(Tree().viewport(), &leave);
    }
    bool DropAt(const QPoint& place, const Texts& paths, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const std::unique_ptr<QMimeData> data(FilesToOffer(paths));
        if (!Enter(*data, place)) {
            return false;
        }
        QDropEvent drop(place, Qt::CopyAction, data.get(), Qt::LeftButton, modifiers);
        QCoreApplication::sendEvent(Tree().viewport(), &drop);
        return drop.isAccepted();
    }
    bool DropOn(const QModelIndex& node, const Texts& paths,
                Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        return DropAt(Place(node), paths, modifiers);
    }
    /// From press to drop inside the tree.
    void DragTo(const QModelIndex& from, const QModelIndex& to,
                Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        Press(from);
        DropOn(to, {"/music/" + Text(from)}, modifiers); // A drag swallows the release of the button.
    }
    std::string Target() {
        const TreeNode* target = Tree().Model().DropHighlight();
        return target == nullptr ? "none" : target->Key;
    }
    std::string Selected() {
        return Tree().Model().HasSelection() ? Tree().Model().SelectedItem().Key : "none";
    }
    /// Whether the mark is set when the drag begins that this move starts.
    bool MarkAtDrag(QAbstractItemView& view, const bool& mark, const QPoint& place) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        DragWatch watch(mark);
        view.installEventFilter(&watch);
        QMouseEvent move(QEvent::MouseMove, QPointF(place), QPointF(view.viewport()->mapToGlobal(place)),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view.viewport(), &move);
        EXPECT_EQ(view.findChildren<QDrag*>().size(), 1);
        return watch.wasMarked;
    }
    /// Ids and positions of a category's entries.
    std::string Entries(const std::string& category) {
        std::string text;
        ADODB::Recordset rows;
        rows.Open("Select FileCategory_id, [Position] from FileCategories where Parent = '" + category +
                      "' order by [Position], FileCategory_id",
                  *mainModule.Connection);
        for (; !rows.Eof(); rows.MoveNext()) {
            text += (text.empty() ? "" : " ") + rows.Fields(0).Text() + "@" + rows.Fields(1).Text();
        }
        return text;
    }
    Texts Shown(const QModelIndex& category) {
        Texts texts;
        for (int row = 0; row < ChildCount(category); ++row) {
            texts.push_back(Text(Child(category, row)));
        }
        return texts;
    }
};

} // namespace quavernet::test
