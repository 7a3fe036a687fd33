#include "widgets/Twips.h"

#include <QFontMetricsF>

#include <algorithm>

namespace quavernet {

double TwipScale(const QFont& font) {
    constexpr double UsualWidth = 7.41; // Pixels, of an average letter of DejaVu Sans in 9 points.
    const QString letters = QStringLiteral("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ");
    const double width = QFontMetricsF(font).horizontalAdvance(letters) / static_cast<double>(letters.size());
    return std::max(1.0, width / UsualWidth);
}

} // namespace quavernet
