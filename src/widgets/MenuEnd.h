// The end of a context menu, for the controls that open one: the menu takes the release of the button that
// opened it, so that the press ends when the menu closes.
#pragma once

#include <QApplication>
#include <QMenu>

namespace quavernet {

/// Runs `end` once when the menu that is open now closes, before its command runs; nothing if none is open.
template <typename End> void WhenMenuCloses(const QObject& context, End end) {
    if (const auto* menu = qobject_cast<const QMenu*>(QApplication::activePopupWidget())) {
        QObject::connect(menu, &QMenu::aboutToHide, &context, end, Qt::SingleShotConnection);
    }
}

} // namespace quavernet
