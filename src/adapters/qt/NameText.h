// Names of files in fields where they can be edited: every byte comes back. A byte that is not UTF-8 becomes
// half of a surrogate pair, a character that no text and no keyboard has; it is shown as an unknown one.
// Called by the forms that rename files.
#pragma once

#include "platform/Utf8.h"

#include <QString>

#include <string>
#include <string_view>

namespace quavernet {

/// A byte b from 128 on is the character LoneByteBase + b.
inline constexpr char16_t LoneByteBase = 0xDC00;

inline QString ToNameText(std::string_view name) {
    QString text;
    while (!name.empty()) {
        const DecodedCharacter character = DecodeUtf8(name);
        if (character.valid) {
            text += QString::fromUtf8(name.data(), character.length);
        } else {
            text += QChar(static_cast<char16_t>(LoneByteBase + character.codePoint));
        }
        name.remove_prefix(character.length);
    }
    return text;
}

inline std::string FromNameText(const QString& text) {
    std::string name;
    qsizetype begin = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t unit = text.at(i).unicode();
        const bool isPaired = i > begin && text.at(i - 1).isHighSurrogate();
        if (!isPaired && unit >= LoneByteBase + 0x80 && unit <= LoneByteBase + 0xFF) {
            name += QStringView(text).sliced(begin, i - begin).toUtf8().toStdString();
            name += static_cast<char>(unit - LoneByteBase);
            begin = i + 1;
        }
    }
    return name + QStringView(text).sliced(begin).toUtf8().toStdString();
}

} // namespace quavernet
