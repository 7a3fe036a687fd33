// Which controls of a window show less than their whole text.
#pragma once

#include "adapters/qt/QtText.h"

#include <string>
#include <vector>

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QToolButton>
#include <QWidget>

namespace quavernet::test {

/// True if a push button has room for its caption, though less than its style would like.
inline bool HoldsCaption(const QWidget& widget) {
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    if (button == nullptr || qobject_cast<const QCheckBox*>(button) != nullptr ||
        qobject_cast<const QRadioButton*>(button) != nullptr) {
        return false;
    }
    const auto* tool = qobject_cast<const QToolButton*>(button);
    const bool isPicture =
        button->text().isEmpty() || (tool != nullptr && tool->toolButtonStyle() == Qt::ToolButtonIconOnly);
    constexpr QSize Border(6, 4);
    const QSize needed = isPicture
                             ? button->iconSize()
                             : button->fontMetrics().size(Qt::TextShowMnemonic, button->text()) + Border;
    return needed.width() <= button->width() && needed.height() <= button->height();
}

/// Controls with texts that are cut at the size that the window comes up with. Windows that it owns are
/// looked at by themselves.
inline std::vector<std::string> CutTexts(const QWidget& window) {
    std::vector<std::string> cut;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        const int needed = label != nullptr && label->wordWrap() ? label->heightForWidth(label->width())
                                                                 : widget->sizeHint().height();
        const bool shows = label != nullptr || qobject_cast<const QAbstractButton*>(widget) != nullptr;
        const bool narrow = label == nullptr || !label->wordWrap();
        if (shows && widget->window() == &window && widget->isVisible() && !HoldsCaption(*widget) &&
            (widget->height() < needed || (narrow && widget->width() < widget->sizeHint().width()))) {
            cut.push_back(FromQString(widget->objectName()));
        }
    }
    return cut;
}

} // namespace quavernet::test
