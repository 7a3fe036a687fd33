#include "widgets/Mnemonics.h"

#include "app/MarkedCaption.h"

#include <QAbstractButton>
#include <QHash>
#include <QLabel>
#include <QTabBar>
#include <QToolButton>

#include <vector>

namespace quavernet {

namespace {

QString WithoutMarks(QString text) {
    return text.replace(QLatin1String("&&"), QString(QChar::Null)).remove(u'&').replace(QChar::Null, u'&');
}

// On every keyboard.
bool IsPlainLetter(QChar c) {
    return c.isLetter() && c.unicode() < 128;
}

// The places in a text that may be marked, those where a word begins first.
std::vector<qsizetype> Places(const QString& text) {
    std::vector<qsizetype> places;
    for (const bool begins : {true, false}) {
        for (qsizetype i = 0; i < text.size(); ++i) {
            const bool isFirst = i == 0 || !text[i - 1].isLetterOrNumber();
            if (IsPlainLetter(text[i]) && isFirst == begins) {
                places.push_back(i);
            }
        }
    }
    return places;
}

// Gives each caption a place whose letter no other caption has. One that comes late may push an earlier one
// to another of its letters.
class Letters {
public:
    void Add(const QString& text) {
        if (!m_places.contains(text)) {
            m_places.insert(text, -1);
            QString tried;
            Find(text, tried);
        }
    }

    QString Marked(const QString& text) const {
        return MarkedCaption(text, static_cast<std::size_t>(m_places.value(text, -1)));
    }

private:
    bool Find(const QString& text, QString& tried) {
        const std::vector<qsizetype> places = Places(text);
        for (const qsizetype place : places) {
            if (!m_owners.contains(text[place].toLower())) {
                Give(place, text);
                return true;
            }
        }
        for (const qsizetype place : places) {
            const QChar letter = text[place].toLower();
            if (!tried.contains(letter)) {
                tried += letter;
                if (Find(m_owners.value(letter), tried)) {
                    Give(place, text);
                    return true;
                }
            }
        }
        return false;
    }
    void Give(qsizetype place, const QString& text) {
        m_owners[text[place].toLower()] = text;
        m_places[text] = place;
    }

    QHash<QString, qsizetype> m_places; ///< -1: no letter is left.
    QHash<QChar, QString> m_owners;
};

bool ShowsText(const QAbstractButton& button) {
    const auto* tool = qobject_cast<const QToolButton*>(&button);
    return !button.text().isEmpty() && (tool == nullptr || tool->toolButtonStyle() != Qt::ToolButtonIconOnly);
}

} // namespace

void MarkMnemonics(QWidget& window) {
    std::vector<QAbstractButton*> buttons;
    std::vector<QLabel*> labels;
    Letters letters;
    for (auto* button : window.findChildren<QAbstractButton*>()) {
        if (ShowsText(*button)) {
            buttons.push_back(button);
            letters.Add(WithoutMarks(button->text()));
        }
    }
    for (auto* label : window.findChildren<QLabel*>()) {
        if (label->buddy() != nullptr) {
            labels.push_back(label);
            letters.Add(WithoutMarks(label->text()));
        }
    }
    const QList<QTabBar*> bars = window.findChildren<QTabBar*>();
    for (const QTabBar* bar : bars) {
        for (int tab = 0; tab < bar->count(); ++tab) {
            letters.Add(WithoutMarks(bar->tabText(tab)));
        }
    }
    for (auto* button : buttons) {
        button->setText(letters.Marked(WithoutMarks(button->text())));
    }
    for (auto* label : labels) {
        label->setText(letters.Marked(WithoutMarks(label->text())));
    }
    for (QTabBar* bar : bars) {
        for (int tab = 0; tab < bar->count(); ++tab) {
            bar->setTabText(tab, letters.Marked(WithoutMarks(bar->tabText(tab))));
        }
    }
}

} // namespace quavernet
