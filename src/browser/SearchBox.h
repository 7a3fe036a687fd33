// The search box of the filter row: says what is searched, is emptied by its cross and by Esc, offers the
// last searches, and shows whether it filters.
#pragma once

#include <QLineEdit>

class QAction;

namespace quavernet {

class SearchBox : public QLineEdit {
    Q_OBJECT
public:
    explicit SearchBox(QWidget* parent);

    /// Texts in the current language; the placeholder names what the two boxes have chosen.
    void LoadStrings(bool inPerformers, bool inTitles);

    /// The shown list is filtered by the text that was searched for, or no longer.
    void SetInForce(bool inForce);
    bool IsInForce() const { return m_inForce; }

    /// Goes to the box and marks its text, to be replaced.
    void Enter();

    /// Opens the list of the last searches below the box; nothing happens if there are none.
    void OfferSearches();

signals:
    void Emptied();      ///< By the cross or by Esc.
    void SearchPicked(); ///< One of the last searches is in the box.

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void EmptyByKey();
    void Pick(const QString& text);
    void ShowOffer();
    void ShowHintColor();

    QAction* m_offer;
    bool m_inForce = false;
};

} // namespace quavernet
