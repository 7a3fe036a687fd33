// The pages of one language as they lie in the program: where they are, what the contents list, which pages
// hold a text. The help window is built on it.
#pragma once

#include <QString>
#include <QUrl>

#include <string>
#include <vector>

namespace quavernet {

/// One line of the contents: a chapter, or a page in it.
struct HelpEntry {
    QString Title;
    QUrl Page; ///< Empty for a chapter.
};

class HelpSet {
public:
    /// The set of a help file ("help.chm", "helpE.chm"); a set without pages for any other name.
    explicit HelpSet(const std::string& file = {});

    bool Exists() const { return !m_folder.isEmpty(); }

    /// Where a page ("HTML\start.html") lies; an empty page is the contents. Empty if there is no such page.
    QUrl Find(const std::string& page) const;

    /// The name of a page of this set as callers give it; empty for a place outside the set.
    std::string NameOf(const QUrl& place) const;

    QUrl ContentsPage() const;

    /// Chapters and pages in the order of the contents page.
    std::vector<HelpEntry> Contents() const;

    /// Pages that hold every word of the text, in any case, in the order of the contents.
    std::vector<HelpEntry> Search(const QString& text) const;

    /// True for everything that a page may load: other pages, the style sheet and pictures of the help.
    static bool IsInside(const QUrl& place);

    /// The bytes of such a place; empty for any other.
    static QByteArray Read(const QUrl& place);

private:
    QString m_folder; ///< "/help/de", empty if there is no set.
};

} // namespace quavernet
