// The filter row: three combos, the search box with its button, and the two check boxes that say where the
// search looks. It turns its controls into a ListFilter and asks for a reload.
#pragma once

#include "browser/FilterCombo.h"
#include "browser/FilterEvents.h"
#include "browser/FilterLists.h"
#include "browser/ListQuery.h"
#include "browser/SearchBox.h"

#include <QCheckBox>
#include <QPushButton>
#include <QWidget>

#include <optional>
#include <vector>

namespace quavernet {

class FilterRow : public QWidget {
    Q_OBJECT
public:
    explicit FilterRow(QWidget* parent);

    /// What the controls say; the format filters stand in the menu and are left as they are.
    void ReadFilter(ListFilter& filter) const;

    void FillDriveCombo();
    void FillGenreCombo();
    void FillAlbumCombo();
    void LoadStrings();

    /// Marks the controls by which the shown list is filtered.
    void ShowInForce(const ListFilter& filter);
    /// Nothing filters any more; the list has to be loaded.
    void Lift();

    QComboBox& cboDrive() { return *m_drive; }
    QComboBox& cboGenre() { return *m_genre; }
    QComboBox& cboAlbum() { return *m_album; }
    QLineEdit& txtSearch() { return *m_search; }
    QCheckBox& chkInterpret() { return *m_interpret; }
    QCheckBox& chkTitle() { return *m_title; }
    QPushButton& cmdSearch() { return *m_go; }

signals:
    void ReloadWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    FilterCombo* AddCombo(const QString& name);
    QCheckBox* AddCheckBox(const QString& name);
    bool ComboEvent(QEvent& event, bool listIsOpen);
    bool LeaveCopyToMenu(QKeyEvent& event) const;
    bool Apply(FilterAction action); ///< True if the key has been used up.
    void InterpretClicked();
    void TitleClicked();
    void LoadSearchStrings();
    void Search();

    FilterCombo* m_drive;
    FilterCombo* m_genre;
    FilterCombo* m_album;
    QCheckBox* m_interpret;
    QCheckBox* m_title;
    SearchBox* m_search;
    QPushButton* m_go;
};

} // namespace quavernet
