// The list's side of the main window: fills the grid through LoadDatabase, shows the counters, and answers
// clicks on headers, rows and letters.
#pragma once

#include "browser/ListQuery.h"

#include <QObject>

#include <cstdint>
#include <string>

namespace quavernet {

class frmMain;

class ListController : public QObject, private ListWindow {
    Q_OBJECT
public:
    explicit ListController(frmMain& form);

    void LoadDatabase(const std::string& list);
    void ClearList() override;
    void LoadHeaders();

    /// The four counters of the status bar, from the last load, in the current language.
    void ShowTotals();

private:
    void SetScanningPanel(const std::string& text) override;
    void SetProgress(float value) override;
    float Progress() const override;

    ListFilter ReadFilter() const;
    void DisableSelectionCommands();
    void HeaderDoubleClicked(int column);
    void RowDoubleClicked(std::int32_t row);
    void EnterPressed();
    void KontextMenu(const QPoint& globalPosition);

    frmMain& m_form;
    ListTotals m_totals;
};

} // namespace quavernet
