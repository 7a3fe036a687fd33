// The seam between the logic's UTF-8 texts and Qt's strings. Bytes that are not UTF-8 show as replacement
// characters; they never come back this way, since paths stay in the logic.
#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace quavernet {

inline QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// A text for a place that has room for one line: breaks and tabs become blanks. As they are they would
/// hide what comes after them.
inline QString ToLine(std::string_view text) {
    QString line = ToQString(text);
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
