#include "editing/TagField.h"

#include "adapters/qt/QtText.h"
#include "app/ScopedValue.h"

#include <QApplication>
#include <QEvent>

namespace quavernet {

TagField::TagField(QWidget* parent) : QLineEdit(parent) {
    SetEditable(false);
}

void TagField::ShowText(const std::string& text) {
    m_shown = text;
    setText(ToQString(text)); // No longer changed by the user. What is too long for a line is cut.
    setCursorPosition(0);
}

std::string TagField::Text() const {
    return isModified() ? FromQString(text()) : m_shown;
}

void TagField::SetEditable(bool editable) {
    setReadOnly(!editable);
    TakeColors();
}

// The desktop may turn light or dark while the dialog is open.
void TagField::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !m_takingColors) {
        TakeColors();
    }
}

void TagField::TakeColors() {
    const ScopedValue taking(m_takingColors, true);
    const QPalette system = QApplication::palette(this);
    QPalette colors;
    if (isReadOnly()) {
        for (const auto group : {QPalette::Active, QPalette::Inactive}) {
            colors.setColor(group, QPalette::Base, system.color(group, QPalette::Button));
            colors.setColor(group, QPalette::Text, system.color(group, QPalette::ButtonText));
        }
    }
    setPalette(colors);
}

} // namespace quavernet
