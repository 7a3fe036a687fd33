// The inside of frmMain: toolbar and filter row on top, tree and list pane with the splitter between them,
// the status bar below. It makes and owns the controls; PaneLayout moves them.
#pragma once

#include "browser/FilterRow.h"
#include "browser/GridView.h"
#include "browser/LetterRow.h"
#include "mainwindow/MainStatusBar.h"
#include "mainwindow/MainToolbar.h"
#include "mainwindow/PaneLayout.h"
#include "tree/TreeView.h"
#include "widgets/PictureButton.h"

#include <QFrame>
#include <QWidget>

#include <memory>

namespace quavernet {

class MainPanes : public QWidget {
    Q_OBJECT
public:
    MainPanes(QWidget* parent, DragState& drag);

    MainToolbar& Toolbar1() { return *m_toolbar; }
    FilterRow& Filter() { return *m_filter; }
    LetterRow& Letters() { return *m_letters; }
    GridView& Grid() { return *m_grid; }
    TreeView& Tree() { return *m_tree; }
    MainStatusBar& Status() { return *m_status; }

    /// Makes the buttons of the registered commands.
    void BuildCommands(const CommandRegistry& commands);

    /// Texts of the controls of the panes in the current language; the combos' entries are filled apart.
    void LoadStrings();

    PaneLayout& Placement() { return *m_placement; }

signals:
    void FontChanged(); ///< The panes have taken on another font; their scale may be another one.

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildToolbar();
    void BuildFrames(DragState& drag);
    void OrderTabs();
    void LoadAccessibleNames();
    void ApplyScale();
    void PlayButtonsAtRest();

    QWidget* m_client;
    FilterRow* m_filter;
    MainToolbar* m_toolbar;
    PictureButton* m_play;
    PictureButton* m_randomize;
    QFrame* m_frame1;
    QFrame* m_frame3;
    QWidget* m_sizer;
    LetterRow* m_letters;
    GridView* m_grid;
    TreeView* m_tree;
    MainStatusBar* m_status;
    std::unique_ptr<PaneLayout> m_placement;
};

} // namespace quavernet
