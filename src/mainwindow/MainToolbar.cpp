#include "mainwindow/MainToolbar.h"

#include "app/CommandRegistry.h"
#include "app/LoadResString.h"
#include "widgets/Pictures.h"

#include <QAction>
#include <QEvent>
#include <QLayout>

#include <array>

namespace quavernet {

namespace {

struct ToolbarEntry {
    const char* Key;
    int ToolTip;
};

constexpr std::array<ToolbarEntry, 7> ToolbarTable{{{"scan", 597},
                                                    {"cancel", 598},
                                                    {"print", 599},
                                                    {"plist", 600},
                                                    {"konvert", 601},
                                                    {"top", 602},
                                                    {"date", 603}}};

/// Pixels, at the scale 1. All buttons find room before the first filter; one that doesn't would not be seen.
constexpr int ButtonWidth = 26;
constexpr int IconSide = 20;

} // namespace

MainToolbar::MainToolbar(QWidget* parent) : QToolBar(parent) {
    setObjectName(QStringLiteral("Toolbar1"));
    SetScale(1);
    setMouseTracking(true);
    Pack();
}

void MainToolbar::SetScale(double scale) {
    m_scale = scale;
    setIconSize(QSize(IconSide, IconSide) * scale);
    for (QAction* button : actions()) {
        widgetForAction(button)->setFixedWidth(static_cast<int>(ButtonWidth * m_scale));
    }
}

// The buttons stand without gaps, whatever a style would put between them.
void MainToolbar::Pack() {
    layout()->setContentsMargins(0, 0, 0, 0);
    layout()->setSpacing(0);
}

bool MainToolbar::event(QEvent* event) {
    const bool handled = QToolBar::event(event);
    if (event->type() == QEvent::StyleChange) {
        Pack();
    }
    return handled;
}

std::vector<std::string_view> MainToolbar::Keys() {
    std::vector<std::string_view> keys;
    for (const ToolbarEntry& entry : ToolbarTable) {
        keys.emplace_back(entry.Key);
    }
    return keys;
}

void MainToolbar::Build(const CommandRegistry& commands) {
    for (const ToolbarEntry& entry : ToolbarTable) {
        if (!commands.Contains(entry.Key)) {
            continue;
        }
        QAction* button = addAction(Picture(entry.Key), QString());
        button->setObjectName(QLatin1String(entry.Key));
        widgetForAction(button)->setFocusPolicy(Qt::TabFocus);
        widgetForAction(button)->setFixedWidth(static_cast<int>(ButtonWidth * m_scale));
        connect(button, &QAction::triggered, this, [&commands, key = entry.Key] { commands.Run(key); });
    }
}

QAction* MainToolbar::Button(std::string_view key) const {
    return findChild<QAction*>(ToQString(key), Qt::FindDirectChildrenOnly);
}

void MainToolbar::LoadStrings() {
    for (const ToolbarEntry& entry : ToolbarTable) {
        if (QAction* button = Button(entry.Key)) {
            button->setText(
                ToQString(LoadResString(entry.ToolTip))); // The tip, and what a screen reader says.
        }
    }
}

} // namespace quavernet
