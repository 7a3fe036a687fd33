#include "playback/PlayerButtons.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "widgets/PictureButton.h"

#include <QAbstractScrollArea>
#include <QEvent>

namespace quavernet {

namespace {

struct ButtonEntry {
    const char* Name;
    const char* Key; ///< Of the picture at rest; with "blue" under the mouse, with "down" pressed.
    std::int32_t ToolTip;
    int Side; ///< Pixels.
};

constexpr int TransportSide = 28;
constexpr int WindowSide = 20;

constexpr auto Entries = std::to_array<ButtonEntry>({{"cmdLast", "last", 604, TransportSide},
                                                     {"cmdNext", "next", 608, TransportSide},
                                                     {"cmdPlay", "play", 605, TransportSide},
                                                     {"cmdPause", "pause", 606, TransportSide},
                                                     {"cmdStop", "stop", 607, TransportSide},
                                                     {"cmdMinimize", "minimize", 610, WindowSide},
                                                     {"cmdMaindialog", "maindialog", 609, WindowSide}});

/// Over these all buttons go to rest.
constexpr auto Surfaces =
    std::to_array<const char*>({"Frame1", "Label", "lblFile", "lblPercent", "lblTime", "lstFiles"});
/// Over these too, but for cmdMaindialog, which stays as it is.
constexpr auto Sliders = std::to_array<const char*>({"Slider1", "Slider3"});

/// Where the mouse moves over a control: in a list that is its viewport.
QWidget& Surface(QWidget& window, const char* name) {
    auto* control = window.findChild<QWidget*>(QLatin1String(name));
    auto* list = qobject_cast<QAbstractScrollArea*>(control);
    return list != nullptr ? *list->viewport() : *control;
}

} // namespace

PlayerButtons::PlayerButtons(QWidget& window) : QObject(&window) {
    static_assert(Entries.size() == Count);
    for (std::size_t number = 0; number < Count; ++number) {
        const ButtonEntry& entry = Entries[number];
        auto* button = window.findChild<PictureButton*>(QLatin1String(entry.Name));
        const std::string key = entry.Key;
        button->SetLooks({key, key + "blue", key + "down"}, entry.Side);
        button->SetRestsOnLeave(false);
        connect(button, &PictureButton::Entered, this, [this, button] { SetAtRest(button); });
        m_buttons[number] = button;
    }
    m_maindialog = m_buttons.back();
    for (const char* name : Surfaces) {
        Surface(window, name).setMouseTracking(true);
        Surface(window, name).installEventFilter(this);
    }
    for (const char* name : Sliders) {
        QWidget& slider = Surface(window, name);
        slider.setProperty("leavesMaindialog", true);
        slider.installEventFilter(this);
    }
    // Whoever leaves the window leaves no blue button behind.
    window.installEventFilter(this);
}

void PlayerButtons::LoadStrings() {
    for (std::size_t number = 0; number < Count; ++number) {
        const QString text = ToQString(LoadResString(Entries[number].ToolTip));
        m_buttons[number]->setToolTip(text);
        m_buttons[number]->setAccessibleName(text);
    }
}

void PlayerButtons::SetAtRest(const PictureButton* except) {
    for (PictureButton* button : m_buttons) {
        if (button != except) {
            button->SetAtRest();
        }
    }
}

bool PlayerButtons::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseMove && watched != parent()) {
        SetAtRest(watched->property("leavesMaindialog").toBool() ? m_maindialog : nullptr);
    } else if (event->type() == QEvent::Leave && watched == parent()) {
        SetAtRest();
    }
    return false;
}

} // namespace quavernet
