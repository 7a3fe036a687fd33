// The seam between the logic's UTF-8 texts and Qt's strings. Bytes that are not UTF-8 show as replacement
// characters; they never come back this way, since paths stay in the logic.
#pragma once

#include "platform/Utf8.h"

#include <QString>

#include <cstddef>
#include <string>
#include <string_view>

namespace quavernet {

inline QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// A text for a place that has room for one line: breaks and tabs become blanks. As they are they would
/// hide what comes after them. A very long one ends in dots: to lay out megabytes takes minutes.
inline QString ToLine(std::string_view text) {
    constexpr std::size_t MostCharacters = 1000;
    const bool isLong = text.size() > MostCharacters;
    const std::string_view shown = isLong ? LeftCharacters(text, MostCharacters) : text;
    QString line = ToQString(shown);
    if (shown.size() < text.size()) {
        line += QStringLiteral("...");
    }
    for (QChar& c : line) {
        if (c == u'\n' || c == u'\r' || c == u'\t' || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator) {
            c = u' ';
        }
    }
    return line;
}

inline std::string FromQString(const QString& text) {
    return text.toStdString();
}

} // namespace quavernet
