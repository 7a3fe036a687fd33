// What an empty list says about itself, in its own view: why nothing is there, and the button that helps. The
// list's controller shows it and answers its buttons.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

namespace quavernet {

class GridView;

enum class EmptyForm {
    None,         ///< The list has rows, or is about to get some.
    NoLibrary,    ///< The library holds no file.
    NothingFound, ///< No file passes the filters.
    SearchFirst   ///< The list is loaded by a search alone.
};

class EmptyListHint : public QWidget {
    Q_OBJECT
public:
    /// Lies over the view of the grid. Presses beside the buttons, the wheel and drags reach the grid.
    explicit EmptyListHint(GridView& grid);

    /// `searched`: the text that was searched for; empty for none.
    void Show(EmptyForm form, const QString& searched);
    EmptyForm Form() const { return m_form; }
    void LoadStrings();

signals:
    void ScanWanted();
    void LiftWanted(); ///< All filters are to be lifted.

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Cover();

    GridView& m_grid;
    QLabel* m_title;
    QPushButton* m_scan;
    QPushButton* m_lift;
    QLabel* m_drop;
    EmptyForm m_form = EmptyForm::None;
    QString m_searched;
};

} // namespace quavernet
