// What the desktop says of a note that it shows: that it was clicked. Used by BusDesktop.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <functional>

namespace quavernet {

class NoteClicks : public QObject {
    Q_OBJECT
public:
    /// Listens on a connection of this name, to every sender: the owner of the notes' name would have to be
    /// asked for, and waited for.
    void ListenOn(const QString& connection);

    unsigned int Shown = 0;        ///< Number of the note on the screen; 0: none has been shown.
    std::function<void()> Clicked; ///< What a click on it does.

private Q_SLOTS:
    void ActionInvoked(unsigned int note, const QString& action);
    void ActivationToken(unsigned int note, const QString& token);

private:
    bool IsShown(unsigned int note) const { return note != 0 && note == Shown; }

    QByteArray m_token; ///< The right of the next click to bring a window to the front; may be empty.
};

} // namespace quavernet
