// A combo of the filter row: its text ends in dots where it is narrow, as on a small screen, and it shows
// whether it filters.
#pragma once

#include <QComboBox>
#include <QProxyStyle>

#include <utility>

namespace quavernet {

/// The application's style, but for lists that open: some styles open them as a menu over the whole screen,
/// with every entry in it.
class ListPopupStyle : public QProxyStyle {
    Q_OBJECT
public:
    explicit ListPopupStyle(QWidget* owner);
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
};

class FilterCombo : public QComboBox {
    Q_OBJECT
public:
    explicit FilterCombo(QWidget* parent);

    void showPopup() override;

    /// True if the open list gave the entry that was there before, which is no change of the index.
    bool PickedAgain(int index) { return std::exchange(m_opened, NotOpened) == index; }

    /// The shown list is filtered by this combo, or no longer.
    void SetInForce(bool inForce);
    bool IsInForce() const { return m_inForce; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    static constexpr int NotOpened = -1;
    int m_opened = NotOpened;
    bool m_inForce = false;
};

} // namespace quavernet
