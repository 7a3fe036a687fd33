// The seam between the logic's UTF-8 texts and Qt's strings. Bytes that are no UTF-8 show as replacement
// characters; they never come back this way, since paths stay in the logic.
#pragma once

#include <QString>
#include <QTextDocument>

#include <string>
#include <string_view>

namespace quavernet {

inline QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// A name as a tool tip shows it as it stands: one that looks like markup would be read as such.
inline QString PlainToolTip(const QString& text) {
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

inline std::string FromQString(const QString& text) {
    return text.toStdString();
}

} // namespace quavernet
