#include "help/HelpSet.h"

#include "adapters/qt/QtText.h"
#include "app/HelpPages.h"
#include "app/LoadResString.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QXmlStreamReader>

#include <algorithm>
#include <map>
#include <set>

namespace quavernet::test {

namespace {

struct Language {
    const char* file;
    const clsResources* texts;
};
const Language Languages[] = {{"help.chm", &QuavernetGER}, {"helpE.chm", &QuavernetENG}};

std::vector<QUrl> PagesOf(const HelpSet& set) {
    std::vector<QUrl> pages;
    const QString folder = u':' + set.ContentsPage().path().section(u'/', 0, -2);
    for (QDirIterator files(folder); files.hasNext();) {
        pages.push_back(QUrl(QStringLiteral("qrc") + files.next()));
    }
    return pages;
}

std::set<std::string> NamesOf(const HelpSet& set) {
    std::set<std::string> names;
    for (const QUrl& page : PagesOf(set)) {
        names.insert(set.NameOf(page));
    }
    return names;
}

struct Element {
    std::string name;
    std::map<std::string, std::string> attributes;
    std::string text; ///< Of elements without children.
};

/// The elements of a page in their order. A page that is no well-formed XML fails the test.
std::vector<Element> ElementsOf(const QUrl& page) {
    std::vector<Element> elements;
    std::vector<std::size_t> open;
    QXmlStreamReader reader(HelpSet::Read(page));
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement: {
            Element element{FromQString(reader.name().toString()), {}, {}};
            for (const QXmlStreamAttribute& attribute : reader.attributes()) {
                element.attributes[FromQString(attribute.name().toString())] =
                    FromQString(attribute.value().toString());
            }
            open.push_back(elements.size());
            elements.push_back(element);
            break;
        }
        case QXmlStreamReader::Characters:
            if (!open.empty()) {
                elements[open.back()].text += FromQString(reader.text().toString());
            }
            break;
        case QXmlStreamReader::EndElement:
            open.pop_back();
            break;
        default:
            break;
        }
    }
    EXPECT_FALSE(reader.hasError()) << FromQString(page.toString() + u' ' + reader.errorString());
    return elements;
}

std::vector<std::string> AttributesOf(const QUrl& page, const char* name, const char* attribute) {
    std::vector<std::string> values;
    for (const Element& element : ElementsOf(page)) {
        const auto found = element.attributes.find(attribute);
        if (element.name == name && found != element.attributes.end()) {
            values.push_back(found->second);
        }
    }
    return values;
}

std::vector<std::string> TextsOf(const QUrl& page, const std::string& name,
                                 const std::string& cssClass = {}) {
    std::vector<std::string> texts;
    for (const Element& element : ElementsOf(page)) {
        const auto found = element.attributes.find("class");
        const bool matches =
            cssClass.empty() || (found != element.attributes.end() && found->second == cssClass);
        if (element.name == name && matches) {
            texts.push_back(element.text);
        }
    }
    return texts;
}

} // namespace

TEST(HelpPagesFilesTest, EveryPageThatAFormAsksForExistsInBothLanguages) {
    for (const Language& language : Languages) {
        const HelpSet set(language.file);
        ASSERT_TRUE(set.Exists()) << language.file;
        for (const HelpPage& line : HelpPages) {
            EXPECT_FALSE(set.Find(std::string(line.Page)).isEmpty()) << language.file << " " << line.Page;
        }
    }
}

TEST(HelpPagesFilesTest, BothLanguagesHaveTheSamePages) {
    const std::set<std::string> german = NamesOf(HelpSet("help.chm"));
    EXPECT_EQ(german, NamesOf(HelpSet("helpE.chm")));
    EXPECT_GE(german.size(), 17U);
}

TEST(HelpPagesFilesTest, EveryPageIsReachedFromTheContentsOnce) {
    for (const Language& language : Languages) {
        const HelpSet set(language.file);
        std::vector<std::string> listed{"HTML\\contents.html"};
        for (const HelpEntry& entry : set.Contents()) {
            if (!entry.Page.isEmpty()) {
                listed.push_back(set.NameOf(entry.Page));
            }
        }
        const std::set<std::string> names(listed.begin(), listed.end());
        EXPECT_EQ(names, NamesOf(set)) << language.file;
        EXPECT_EQ(names.size(), listed.size()) << language.file;
    }
}

TEST(HelpPagesFilesTest, TheContentsNameAPageAsThePageDoes) {
    for (const Language& language : Languages) {
        const HelpSet set(language.file);
        for (const HelpEntry& entry : set.Contents()) {
            if (!entry.Page.isEmpty()) {
                EXPECT_EQ(TextsOf(entry.Page, "h1"), std::vector<std::string>{FromQString(entry.Title)});
            }
        }
    }
}

TEST(HelpPagesFilesTest, BothContentsAreInTheSameOrder) {
    const HelpSet german("help.chm");
    const HelpSet english("helpE.chm");
    const std::vector<HelpEntry> first = german.Contents();
    const std::vector<HelpEntry> second = english.Contents();
    ASSERT_EQ(first.size(), second.size());
    for (std::size_t i = 0; i < first.size(); ++i) {
        EXPECT_EQ(german.NameOf(first[i].Page), english.NameOf(second[i].Page));
        EXPECT_NE(first[i].Title, second[i].Title);
    }
}

TEST(HelpPagesFilesTest, NoLinkIsDeadAndNoneLeavesItsLanguage) {
    for (const Language& language : Languages) {
        const HelpSet set(language.file);
        for (const QUrl& page : PagesOf(set)) {
            for (const std::string& link : AttributesOf(page, "a", "href")) {
                const std::string target = set.NameOf(page.resolved(QUrl(ToQString(link))));
                EXPECT_FALSE(target.empty()) << set.NameOf(page) << " -> " << link;
                EXPECT_FALSE(set.Find(target).isEmpty()) << set.NameOf(page) << " -> " << link;
            }
        }
    }
}

TEST(HelpPagesFilesTest, EveryPictureAndTheStyleSheetAreThere) {
    for (const Language& language : Languages) {
        for (const QUrl& page : PagesOf(HelpSet(language.file))) {
            std::vector<std::string> wanted = AttributesOf(page, "img", "src");
            const std::vector<std::string> styles = AttributesOf(page, "link", "href");
            EXPECT_EQ(styles, std::vector<std::string>{"../../help.css"}) << FromQString(page.path());
            wanted.insert(wanted.end(), styles.begin(), styles.end());
            for (const std::string& name : wanted) {
                EXPECT_FALSE(HelpSet::Read(page.resolved(QUrl(ToQString(name)))).isEmpty())
                    << FromQString(page.path()) << " " << name;
            }
            EXPECT_EQ(AttributesOf(page, "img", "src").size(), AttributesOf(page, "img", "alt").size());
        }
    }
}

TEST(HelpPagesFilesTest, PagesUseNothingButTheElementsThatTheViewerKnows) {
    const std::set<std::string> known{"html", "head", "meta", "title", "link", "body",  "h1",
                                      "h2",   "p",    "ul",   "ol",    "li",   "table", "tr",
                                      "th",   "td",   "b",    "a",     "kbd",  "code",  "img"};
    for (const Language& language : Languages) {
        for (const QUrl& page : PagesOf(HelpSet(language.file))) {
            const std::vector<Element> elements = ElementsOf(page);
            ASSERT_FALSE(elements.empty()) << FromQString(page.path());
            for (const Element& element : elements) {
                EXPECT_TRUE(known.contains(element.name)) << FromQString(page.path()) << " " << element.name;
                // Colours belong to the desktop.
                for (const char* attribute : {"style", "color", "bgcolor", "onclick"}) {
                    EXPECT_FALSE(element.attributes.contains(attribute)) << FromQString(page.path());
                }
            }
        }
    }
}

TEST(HelpPagesFilesTest, TheStyleSheetTakesItsColoursFromThePalette) {
    const QByteArray style = HelpSet::Read(QUrl(QStringLiteral("qrc:/help/help.css")));
    ASSERT_FALSE(style.isEmpty());
    for (const QByteArray& line : style.split('\n')) {
        const qsizetype colour = line.indexOf("color:");
        if (colour >= 0) {
            EXPECT_TRUE(line.mid(colour + 6).trimmed().startsWith("palette(")) << line.toStdString();
        }
        EXPECT_FALSE(line.contains('#')) << line.toStdString();
    }
}

TEST(HelpPagesFilesTest, EveryQuotedTextOfTheProgramIsOneOfItsTexts) {
    for (const Language& language : Languages) {
        std::set<std::string> texts;
        for (const auto& entry : *language.texts) {
            texts.insert(FromQString(ToQString(entry.text).trimmed()));
        }
        std::size_t quoted = 0;
        for (const QUrl& page : PagesOf(HelpSet(language.file))) {
            for (const std::string& text : TextsOf(page, "b", "ui")) {
                EXPECT_TRUE(texts.contains(text)) << FromQString(page.path()) << ": " << text;
                ++quoted;
            }
        }
        EXPECT_GT(quoted, 150U) << language.file;
    }
}

TEST(HelpPagesFilesTest, EveryMenuCommandIsExplainedSomewhere) {
    for (const Language& language : Languages) {
        std::set<std::string> quoted;
        for (const QUrl& page : PagesOf(HelpSet(language.file))) {
            for (const std::string& text : TextsOf(page, "b", "ui")) {
                quoted.insert(text);
            }
        }
        for (const auto& entry : *language.texts) {
            if (entry.id >= 201 && entry.id <= 251) {
                EXPECT_TRUE(quoted.contains(std::string(entry.text))) << language.file << " " << entry.text;
            }
        }
    }
}

TEST(HelpPagesFilesTest, OnlyTheHelpItselfCanBeLoaded) {
    const HelpSet set("help.chm");
    EXPECT_FALSE(HelpSet::Read(set.ContentsPage()).isEmpty());
    for (const char* place :
         {"qrc:/icons/quavernet.svg", "qrc:/help/../icons/quavernet.svg", "file:///etc/hostname",
          "http://example.org/help/", "/help/help.css", "qrc://host/help/help.css"}) {
        EXPECT_FALSE(HelpSet::IsInside(QUrl(QLatin1String(place)))) << place;
        EXPECT_TRUE(HelpSet::Read(QUrl(QLatin1String(place))).isEmpty()) << place;
    }
}

TEST(HelpPagesFilesTest, AHelpFileThatIsntThereHasNoPages) {
    for (const char* file : {"", "help", "helpF.chm", "HELP.CHM"}) {
        const HelpSet set(file);
        EXPECT_FALSE(set.Exists()) << file;
        EXPECT_TRUE(set.Find("").isEmpty());
        EXPECT_TRUE(set.Find("HTML\\start.html").isEmpty());
        EXPECT_TRUE(set.Contents().empty());
        EXPECT_TRUE(set.Search(QStringLiteral("Quavernet")).empty());
    }
    const HelpSet german("help.chm");
    EXPECT_TRUE(german.Find("HTML\\nothing.html").isEmpty());
    EXPECT_TRUE(german.Find("start.html").isEmpty());
    EXPECT_TRUE(german.Find("HTML\\..\\..\\en\\HTML\\start.html").isEmpty());
    EXPECT_EQ(german.Find(""), german.ContentsPage());
}

TEST(HelpPagesFilesTest, TheSearchWantsEveryWordInAnyCase) {
    const HelpSet set("help.chm");
    const auto names = [&](const char* text) {
        std::vector<std::string> found;
        for (const HelpEntry& entry : set.Search(QString::fromUtf8(text))) {
            found.push_back(set.NameOf(entry.Page));
        }
        return found;
    };
    EXPECT_EQ(names("128 bytes"), std::vector<std::string>{"HTML\\details.html"});
    EXPECT_EQ(names("#COVERSTRING#"), std::vector<std::string>{"HTML\\coversearch.html"});
    EXPECT_EQ(names("ärzte SONSTIGE"), std::vector<std::string>{"HTML\\maindialoque.html"});
    EXPECT_TRUE(names("128 Bytes xyzzy").empty());
    EXPECT_TRUE(names("   ").empty());
    EXPECT_GT(names("scan").size(), 4U);
}

} // namespace quavernet::test
