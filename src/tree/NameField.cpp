#include "tree/NameField.h"

#include "tree/NameFilter.h"

#include <QKeyEvent>
#include <QValidator>

#include <algorithm>

namespace quavernet {

namespace {

QString NameCharactersOf(const QString& text) {
    QString passed;
    std::copy_if(text.begin(), text.end(), std::back_inserter(passed),
                 [](QChar character) { return IsNameCharacter(character.unicode()); });
    return passed;
}

// Filters what a change has put in; what was there before stays. The toolkit asks it at every change of the
// field, from whatever source.
class InsertionFilter : public QValidator {
public:
    InsertionFilter(const QString& shown, QObject* parent) : QValidator(parent), m_shown(shown) {}

    State validate(QString& text, int& cursor) const override {
        const auto shorter = std::min(text.size(), m_shown.size());
        const auto front =
            std::mismatch(text.begin(), text.begin() + shorter, m_shown.begin()).first - text.begin();
        const auto room = shorter - front;
        const auto back =
            std::mismatch(text.rbegin(), text.rbegin() + room, m_shown.rbegin()).first - text.rbegin();
        const QString inserted = text.mid(front, text.size() - front - back);
        const QString passed = NameCharactersOf(inserted);
        if (passed.size() != inserted.size()) {
            // With nothing left of it there is no change: a marked text that it would replace is there again.
            text = passed.isEmpty() ? m_shown : text.left(front) + passed + text.right(back);
            cursor = static_cast<int>(passed.isEmpty() ? m_shown.size() - back : front + passed.size());
        }
        return Acceptable;
    }

private:
    const QString& m_shown;
};

} // namespace

NameField::NameField(QWidget* parent) : QLineEdit(parent) {
    setValidator(new InsertionFilter(m_shown, this));
    connect(this, &QLineEdit::textChanged, this, [this](const QString& text) { m_shown = text; });
}

void NameField::ShowName(const QString& name) {
    m_shown = name;
    setText(name);
}

// A key that is not taken leaves the marked text marked.
void NameField::keyPressEvent(QKeyEvent* event) {
    const QString text = event->text();
    const bool isCharacter = !text.isEmpty() && text.front().isPrint();
    if (isCharacter && NameCharactersOf(text).isEmpty() &&
        !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))) {
        return;
    }
    QLineEdit::keyPressEvent(event);
}

} // namespace quavernet
