#include "adapters/dbus/NoteClicks.h"

#include "adapters/dbus/NoteNames.h"

#include <QDBusConnection>

#include <utility>

namespace quavernet {

namespace {
constexpr const char* TokenVariable = "XDG_ACTIVATION_TOKEN";
}

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
    if (!IsShown(note) || action != QLatin1String(notes::ClickOnTheNote) || !Clicked) {
        return;
    }
    // The toolkit takes it from here when a window comes to the front; programs started later must not.
    const QByteArray token = std::exchange(m_token, {});
    if (!token.isEmpty()) {
        qputenv(TokenVariable, token);
    }
    Clicked();
    qunsetenv(TokenVariable);
}

// Comes before the click where a window may not come to the front by itself.
void NoteClicks::ActivationToken(unsigned int note, const QString& token) {
    if (IsShown(note)) {
        m_token = token.toUtf8();
    }
}

} // namespace quavernet
