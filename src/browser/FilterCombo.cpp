#include "browser/FilterCombo.h"

#include "browser/FilterMark.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QStyleOptionComboBox>
#include <QStylePainter>

namespace quavernet {

namespace {

constexpr int MostVisibleRows = 25;

} // namespace

ListPopupStyle::ListPopupStyle(QWidget* owner) : QProxyStyle(QApplication::style()->name()) {
    setParent(owner);
}

int ListPopupStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* data) const {
    return hint == SH_ComboBox_Popup ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
}

FilterCombo::FilterCombo(QWidget* parent) : QComboBox(parent) {
    setStyle(new ListPopupStyle(this));
    setMaxVisibleItems(MostVisibleRows);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(6);
    view()->setTextElideMode(Qt::ElideRight);
}

void FilterCombo::showPopup() {
    m_opened = currentIndex();
    QComboBox::showPopup();
}

void FilterCombo::SetInForce(bool inForce) {
    if (m_inForce != inForce) {
        m_inForce = inForce;
        update();
    }
}

void FilterCombo::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    if (m_inForce) {
        painter.setFont(FilterMarkFont(font()));
        option.fontMetrics = QFontMetrics(painter.font());
    }
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    const QRect text =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    option.currentText = option.fontMetrics.elidedText(option.currentText, Qt::ElideRight, text.width() - 2);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
    if (m_inForce) {
        painter.end();
        PaintFilterMark(*this);
    }
}

} // namespace quavernet
