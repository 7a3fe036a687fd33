// Frame2, the strip of letters above the list: "all", A to Z and "other". The list pane shows it; a click
// sets the letter filter and asks for a reload; for the keyboard the strip is one stop, walked by the arrow
// keys. At its end is the button that lifts all filters, while there are any.
#pragma once

#include "browser/FilterEvents.h"
#include "widgets/AccessibleParts.h"
#include "widgets/ControlBox.h"

#include <QFrame>
#include <QLabel>
#include <QToolButton>

#include <array>
#include <vector>

namespace quavernet {

class LetterLabel : public QLabel {
    Q_OBJECT
public:
    LetterLabel(const QString& name, QWidget* parent);

signals:
    void Moved();
    void Clicked();

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
};

class LetterRow : public QFrame, public PartedControl {
    Q_OBJECT
public:
    explicit LetterRow(QWidget* parent);

    void LoadStrings();
    void ResetLetterColors();

    /// Marks "all" as the active letter, as at each start.
    void MarkAll();

    /// Shows or hides the button that lifts all filters. `leftOut` names the formats that are filtered out:
    /// no other control shows that they are.
    void ShowLift(bool shows, const QString& leftOut);
    QToolButton& cmdLiftFilters() { return *m_lift; }

    using LetterBoxes = std::array<ControlBox, LetterLabels::Count>;

    /// Where the labels stand, in twips; fixed places keep them packed on a small screen.
    LetterBoxes Boxes() const;
    void SetBoxes(const LetterBoxes& boxes);

signals:
    void LetterChosen(); ///< mainModule.LetterFilter has its new value.
    void MouseMoved();
    void LiftWanted(); ///< All filters are to be lifted.

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // To a screen reader a group of buttons, one of which is down.
    QAccessible::Role PartedRole() const override { return QAccessible::Grouping; }
    std::vector<AccessiblePart> Parts() const override;
    void PressPart(int part) override { Choose(static_cast<std::size_t>(part)); }

    void MoveCursor(std::size_t index);
    void AddLabel(std::size_t index);
    void Choose(std::size_t index);
    void ShowLooks();
    void PlaceLabels();
    void SpreadLabels();
    int PlaceLift(int textNeeds);
    void WidenLift();
    QString LiftName() const;
    int LabelWidth(const LetterLabel& label) const;

    LetterLabels m_state;
    std::vector<LetterLabel*> m_labels;
    QToolButton* m_lift;
    QString m_leftOut;
    std::size_t m_cursor = 0; ///< The label that the keyboard is on.
    bool m_placesFixed = false;
};

} // namespace quavernet
