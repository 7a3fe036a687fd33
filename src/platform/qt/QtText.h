// The seam between the logic's UTF-8 texts and Qt's strings. Bytes that are no UTF-8 show as replacement
// characters; they never come back this way, since paths stay in the logic.
#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace quavernet {

inline QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string FromQString(const QString& text) {
    return text.toStdString();
}

} // namespace quavernet
