// The list on the screen: fills the grid through LoadDatabase, shows the counters, and answers clicks on
// heads, rows and letters. The main window makes it; commands reload through it.
#pragma once

#include "app/Controls.h"
#include "app/LongWork.h"
#include "browser/EmptyListHint.h"
#include "browser/GridOpen.h"
#include "browser/ListQuery.h"

#include <QObject>

#include <cstdint>
#include <string>

namespace quavernet {

class FilterRow;
class GridView;
class LetterRow;

/// The controls that the list is in and is filtered by.
struct ListPane {
    GridView& Grid;
    FilterRow& Filter;
    LetterRow& Letters;
};

class ListController : public QObject, private SortView {
    Q_OBJECT
public:
    ListController(const ListPane& pane, LongWork& work, Controls& controls, SwitchControls switchControls,
                   PlayerWindow& player);

    /// Ends in the control state of the moment: idle, or that of a running scan. Lets events run.
    void LoadDatabase(const std::string& list) override;
    void ClearList();
    void LoadHeaders();

    /// The four counters of the status bar, from the last load, in the current language.
    void ShowTotals();

    /// Texts that the list itself shows, in the current language.
    void LoadStrings();

    /// An empty list says why it is empty; not so while a scan is on its way to fill it.
    void ShowHint(bool idle);

signals:
    void PlaySelectedFilesWanted(); ///< Enter with several selected rows.
    void ScanWanted();              ///< The button in the empty list.

private:
    void SetRedraw(bool redraw) override;
    void SetHeaderPicture(const SortArrow& arrow) override;

    ListFilter ReadFilter() const;
    ListFilter ReadFilterInForce();
    void EmptyGrid();
    void ShowInForce(bool loaded);
    void LiftFilters();
    void Reload();
    void DoubleClicked(std::int32_t mouseCol, std::int32_t mouseRow);
    void EnterPressed();
    void SelectionChanged();
    void SetKontextItems(int mode);
    void KontextMenu(const QPoint& globalPosition);

    ListPane m_pane;
    LongWork& m_work;
    Controls& m_controls;
    SwitchControls m_switchControls;
    PlayerWindow& m_player;
    EmptyListHint& m_hint; ///< In the grid's view, which owns it.
    ListTotals m_totals;
    ListFilter m_inForce; ///< What the shown list is filtered by.
    bool m_loaded = false;
};

} // namespace quavernet
