#include "adapters/dbus/MprisMetadata.h"

#include <QByteArray>
#include <QDBusObjectPath>
#include <QStringList>

#include <cmath>
#include <utility>

namespace quavernet::mpris {

namespace {

/// Bytes that are not UTF-8 become replacement characters: the bus would close the connection over them.
QString TextFor(const std::string& text) {
    return QString::fromStdString(text);
}

QString FileAddress(const std::string& path) {
    return QLatin1String("file://") +
           QString::fromLatin1(QByteArray::fromStdString(path).toPercentEncoding("/"));
}

} // namespace

qlonglong Microseconds(double seconds) {
    return std::llround(seconds * 1e6);
}

const char* PlaybackStatusText(MediaStatus::Playback playback) {
    switch (playback) {
    case MediaStatus::Playback::Playing:
        return "Playing";
    case MediaStatus::Playback::Paused:
        return "Paused";
    default:
        return "Stopped";
    }
}

const char* LoopStatusText(MediaStatus::Loop loop) {
    switch (loop) {
    case MediaStatus::Loop::Track:
        return "Track";
    case MediaStatus::Loop::Playlist:
        return "Playlist";
    default:
        return "None";
    }
}

MediaStatus::Loop LoopOfText(const QString& text) {
    for (const MediaStatus::Loop loop : {MediaStatus::Loop::Track, MediaStatus::Loop::Playlist}) {
        if (text == QLatin1String(LoopStatusText(loop))) {
            return loop;
        }
    }
    return MediaStatus::Loop::None;
}

QString TrackPath(const MediaStatus& status, int serial) {
    return status.path.empty() ? QLatin1String("/org/mpris/MediaPlayer2/TrackList/NoTrack")
                               : QString::fromLatin1("/quavernet/track/%1").arg(serial);
}

QVariantMap Metadata(const MediaStatus& status, int serial) {
    QVariantMap facts;
    facts[QLatin1String("mpris:trackid")] = QVariant::fromValue(QDBusObjectPath(TrackPath(status, serial)));
    if (status.path.empty()) {
        return facts;
    }
    facts[QLatin1String("xesam:title")] = TextFor(status.title);
    if (!status.artist.empty()) {
        facts[QLatin1String("xesam:artist")] = QStringList{TextFor(status.artist)};
    }
    if (status.length >= 0) {
        facts[QLatin1String("mpris:length")] = Microseconds(status.length);
    }
    facts[QLatin1String("xesam:url")] = FileAddress(status.path);
    if (!status.cover.empty()) {
        facts[QLatin1String("mpris:artUrl")] = FileAddress(status.cover);
    }
    return facts;
}

QVariantMap PlayerProperties(const MediaStatus& status, int serial) {
    const bool hasTrack = !status.path.empty();
    const std::pair<const char*, QVariant> properties[] = {
        {"PlaybackStatus", QLatin1String(PlaybackStatusText(status.playback))},
        {"LoopStatus", QLatin1String(LoopStatusText(status.loop))},
        {"Metadata", Metadata(status, serial)},
        {"Volume", status.volume},
        {"CanGoNext", status.canGoNext},
        {"CanGoPrevious", status.canGoPrevious},
        {"CanPlay", hasTrack},
        {"CanPause", hasTrack},
        {"CanSeek", hasTrack && status.length > 0}};
    QVariantMap named;
    for (const auto& [name, value] : properties) {
        named.insert(QLatin1String(name), value);
    }
    return named;
}

} // namespace quavernet::mpris
