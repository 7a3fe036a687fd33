// The inside of frmMain: toolbar and filter row on top, tree and list pane with the splitter between them,
// the status bar below. It owns the controls and moves them by the layout rules.
#pragma once

#include "browser/FilterRow.h"
#include "browser/GridView.h"
#include "browser/LetterRow.h"
#include "mainwindow/MainLayout.h"
#include "mainwindow/MainStatusBar.h"
#include "mainwindow/MainToolbar.h"
#include "widgets/PictureButton.h"

#include <QFrame>
#include <QTreeWidget>
#include <QWidget>

namespace quavernet {

class MainPanes : public QWidget {
    Q_OBJECT
public:
    explicit MainPanes(QWidget* parent);

    MainToolbar& Toolbar1() { return *m_toolbar; }
    FilterRow& Filter() { return *m_filter; }
    LetterRow& Letters() { return *m_letters; }
    GridView& Grid() { return *m_grid; }
    QTreeWidget& Tree() { return *m_tree; }
    MainStatusBar& Status() { return *m_status; }

    /// Makes the buttons of the registered commands.
    void BuildCommands(const CommandRegistry& commands);

    /// Texts of the controls of the panes in the current language; the combos' entries are filled apart.
    void LoadStrings();

    void PackForSmallScreen();
    /// Lays the panes out for the start, with the window at its size.
    void SetSplitterPos(std::int32_t twips);
    std::int32_t SplitterPos() const { return static_cast<std::int32_t>(m_layout.lblSizer.Left); }

    void Form_Resize();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildToolbar();
    void BuildFrames();
    void OrderTabs();
    void LoadAccessibleNames();
    void SizeFilterRow();
    void FitFilterRow();
    void ReadLayout();
    void ApplyLayout();
    void PlayButtonsAtRest();
    void SplitterEvent(QEvent& event);

    MainLayout m_layout;
    QWidget* m_client; ///< The form's scale area, below the strip with toolbar and filter row.
    FilterRow* m_filter;
    MainToolbar* m_toolbar;
    PictureButton* m_play;
    PictureButton* m_randomize;
    QFrame* m_frame1;
    QFrame* m_frame3;
    QWidget* m_sizer;
    LetterRow* m_letters;
    GridView* m_grid;
    QTreeWidget* m_tree;
    MainStatusBar* m_status;
    int m_dragOrigin = 0;
    bool m_playButtonsShown = false;
};

} // namespace quavernet
