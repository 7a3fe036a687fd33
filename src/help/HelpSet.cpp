#include "help/HelpSet.h"

#include "adapters/qt/QtText.h"

#include <QDir>
#include <QFile>
#include <QXmlStreamReader>

#include <algorithm>

namespace quavernet {

namespace {

const QString Root = QStringLiteral("/help/");
const QString ContentsName = QStringLiteral("contents.html");

QUrl Place(const QString& path) {
    return QUrl(QStringLiteral("qrc") + u':' + path);
}

QString TextOf(const QByteArray& page) {
    QXmlStreamReader reader(page);
    QString text;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::Characters) {
            text += reader.text();
        }
    }
    return text.simplified();
}

} // namespace

HelpSet::HelpSet(const std::string& file) {
    const QString folder = file == "help.chm"    ? QStringLiteral("de")
                           : file == "helpE.chm" ? QStringLiteral("en")
                                                 : QString();
    if (!folder.isEmpty() && QFile::exists(u':' + Root + folder + QStringLiteral("/HTML/") + ContentsName)) {
        m_folder = Root + folder;
    }
}

QUrl HelpSet::ContentsPage() const {
    return Exists() ? Place(m_folder + QStringLiteral("/HTML/") + ContentsName) : QUrl();
}

QUrl HelpSet::Find(const std::string& page) const {
    if (!Exists() || page.empty()) {
        return ContentsPage();
    }
    const QUrl place = Place(m_folder + u'/' + ToQString(page).replace(u'\\', u'/'));
    return NameOf(place).empty() || !QFile::exists(u':' + place.path()) ? QUrl() : place;
}

std::string HelpSet::NameOf(const QUrl& place) const {
    const QString pages = m_folder + QStringLiteral("/HTML/");
    const QString path = place.path();
    if (!Exists() || place.scheme() != QStringLiteral("qrc") || QDir::cleanPath(path) != path ||
        !path.startsWith(pages)) {
        return {};
    }
    return "HTML\\" + FromQString(path.mid(pages.size()));
}

std::vector<HelpEntry> HelpSet::Contents() const {
    std::vector<HelpEntry> entries;
    QXmlStreamReader reader(Read(ContentsPage()));
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (reader.name() == QStringLiteral("h2")) {
            entries.push_back({reader.readElementText(), QUrl()});
        } else if (reader.name() == QStringLiteral("a")) {
            const QUrl target(reader.attributes().value(QStringLiteral("href")).toString());
            entries.push_back({reader.readElementText(), ContentsPage().resolved(target)});
        }
    }
    return entries;
}

std::vector<HelpEntry> HelpSet::Search(const QString& text) const {
    const QStringList words = text.split(u' ', Qt::SkipEmptyParts);
    std::vector<HelpEntry> found;
    if (words.isEmpty()) {
        return found;
    }
    for (const HelpEntry& entry : Contents()) {
        if (entry.Page.isEmpty()) {
            continue;
        }
        const QString page = TextOf(Read(entry.Page));
        if (std::all_of(words.begin(), words.end(),
                        [&](const QString& word) { return page.contains(word, Qt::CaseInsensitive); })) {
            found.push_back(entry);
        }
    }
    return found;
}

bool HelpSet::IsInside(const QUrl& place) {
    return place.scheme() == QStringLiteral("qrc") && place.host().isEmpty() &&
           QDir::cleanPath(place.path()).startsWith(Root);
}

QByteArray HelpSet::Read(const QUrl& place) {
    if (!IsInside(place)) {
        return {};
    }
    QFile file(u':' + QDir::cleanPath(place.path()));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace quavernet
