#include "adapters/dbus/NoteClicks.h"

#include "adapters/dbus/NoteNames.h"

#include <QDBusConnection>

namespace quavernet {

void NoteClicks::ListenOn(const QString& connection) {
    QDBusConnection bus(connection);
    const QString path = QLatin1String(notes::Path);
    const QString interface = QLatin1String(notes::Service);
    bus.connect({}, path, interface, QLatin1String(notes::ActionInvoked), this,
                SLOT(ActionInvoked(uint, QString)));
    bus.connect({}, path, interface, QLatin1String(notes::ActivationToken), this,
                SLOT(ActivationToken(uint, QString)));
}

void NoteClicks::ActionInvoked(unsigned int note, const QString& action) {
    if (note != 0 && note == Shown && action == QLatin1String(notes::ClickOnTheNote) && Clicked) {
        Clicked();
    }
}

// Comes before the click where a window may not come to the front by itself; the toolkit takes it from here.
void NoteClicks::ActivationToken(unsigned int note, const QString& token) {
    if (note != 0 && note == Shown) {
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
    }
}

} // namespace quavernet
