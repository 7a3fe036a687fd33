// What a caption says, without the mark of its mnemonic.
#pragma once

#include "adapters/qt/QtText.h"

#include <QString>

#include <string>

namespace quavernet::test {

inline std::string Caption(QString text) {
    text.replace(QLatin1String("&&"), QString(QChar::Null)).remove(u'&').replace(QChar::Null, u'&');
    return FromQString(text);
}

} // namespace quavernet::test
