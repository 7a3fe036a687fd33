#include "adapters/qt/QtRegionalSettings.h"

#include "adapters/qt/QtText.h"

namespace quavernet {

namespace {

bool IsDateLetter(QChar c) {
    return c == u'd' || c == u'M' || c == u'y';
}

/// Day, month and year in the locale's order and with its separators; what else a pattern may hold (weekday,
/// era, quoted words) is left out, since dates are read back by it.
QString PlainShortPattern(const QString& pattern) {
    QString plain;
    bool quoted = false;
    for (const QChar c : pattern) {
        if (c == u'\'') {
            quoted = !quoted;
        } else if (!quoted) {
            plain += c;
        }
    }
    if (!plain.contains(u'd') || !plain.contains(u'M') || !plain.contains(u'y') ||
        plain.contains(QStringLiteral("MMM")) || plain.contains(QStringLiteral("ddd"))) {
        return QStringLiteral("yyyy-MM-dd");
    }
    if (plain.count(u'y') != 4) {
        // Four digits always: a stored date must not lose its century.
        const qsizetype start = plain.indexOf(u'y');
        plain.replace(start, plain.count(u'y'), QStringLiteral("yyyy"));
    }
    return plain;
}

QString FirstSeparator(const QString& pattern) {
    for (const QChar c : pattern) {
        if (!IsDateLetter(c)) {
            return QString(c);
        }
    }
    return QStringLiteral(".");
}

} // namespace

RegionalSettings ReadRegionalSettings(const QLocale& locale) {
    const QString pattern = PlainShortPattern(locale.dateFormat(QLocale::ShortFormat));
    RegionalSettings regional;
    regional.decimalSeparator = FromQString(locale.decimalPoint());
    // The plain "C" locale groups no digits.
    const bool groups =
        !(locale.numberOptions() & QLocale::OmitGroupSeparator) && locale.language() != QLocale::C;
    regional.groupSeparator = groups ? FromQString(locale.groupSeparator()) : std::string();
    regional.shortDatePattern = FromQString(pattern);
    regional.dateSeparator = FromQString(FirstSeparator(pattern));
    const QString time = locale.timeFormat(QLocale::ShortFormat);
    regional.twelveHours = time.contains(u'a', Qt::CaseInsensitive) && !time.contains(u'H');
    return regional;
}

} // namespace quavernet
