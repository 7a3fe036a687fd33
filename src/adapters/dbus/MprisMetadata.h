// The facts of the player as the bus names them. Used by the files of this folder.
#pragma once

#include "platform/MediaRemote.h"

#include <QString>
#include <QVariantMap>

namespace quavernet::mpris {

/// Where the player is on its connection.
inline constexpr const char* ObjectPath = "/org/mpris/MediaPlayer2";
inline constexpr const char* PlayerInterfaceName = "org.mpris.MediaPlayer2.Player";

/// The bus counts in millionths of a second.
qlonglong Microseconds(double seconds);

const char* PlaybackStatusText(MediaStatus::Playback playback);
const char* LoopStatusText(MediaStatus::Loop loop);
/// No loop for a text that is none of the three.
MediaStatus::Loop LoopOfText(const QString& text);

/// The object path that stands for a track. `serial` differs for each track that was ever shown.
QString TrackPath(const MediaStatus& status, int serial);

/// Of the current track: its path on the bus, title, artist, length, file, and picture.
QVariantMap Metadata(const MediaStatus& status, int serial);

/// The properties of the player that change, by name: all but the position, which clients count on.
QVariantMap PlayerProperties(const MediaStatus& status, int serial);

} // namespace quavernet::mpris
