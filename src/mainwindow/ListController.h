// The list's side of the main window: fills the grid through LoadDatabase, shows the counters, and answers
// clicks on headers, rows and letters.
#pragma once

#include "browser/GridOpen.h"
#include "browser/ListQuery.h"

#include <QObject>

#include <cstdint>
#include <string>

namespace quavernet {

class frmMain;
class GridView;

class ListController : public QObject, private ListWindow, private GridOpenWindow {
    Q_OBJECT
public:
    ListController(frmMain& form, PlayerWindow& player);

    void LoadDatabase(const std::string& list) override;
    void ClearList() override;
    void LoadHeaders();

    /// The four counters of the status bar, from the last load, in the current language.
    void ShowTotals();

private:
    void SetScanningPanel(const std::string& text) override;
    void SetProgress(float value) override;
    float Progress() const override;
    void SetMousePointer(int pointer) override;
    void SetRedraw(bool redraw) override;
    void SetHeaderPicture(const SortArrow& arrow) override;

    ListFilter ReadFilter() const;
    void DisableSelectionCommands();
    void DoubleClicked(std::int32_t mouseCol, std::int32_t mouseRow);
    void EnterPressed();
    void SetKontextItems(int mode);
    void KontextMenu(const QPoint& globalPosition);
    GridView& Grid() const;

    frmMain& m_form;
    PlayerWindow& m_player;
    ListTotals m_totals;
};

} // namespace quavernet
