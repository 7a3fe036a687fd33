#include "mainwindow/MainToolbar.h"

#include "app/CommandRegistry.h"
#include "app/LoadResString.h"
#include "widgets/Pictures.h"

#include <QAction>

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

} // namespace

MainToolbar::MainToolbar(QWidget* parent) : QToolBar(parent) {
    setObjectName(QStringLiteral("Toolbar1"));
    setIconSize(QSize(20, 20));
    setMouseTracking(true);
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
