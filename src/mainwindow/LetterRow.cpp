#include "mainwindow/LetterRow.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "mainwindow/Pictures.h"
#include "mainwindow/Twips.h"

#include <QEvent>
#include <QMouseEvent>

#include <algorithm>

namespace quavernet {

LetterLabel::LetterLabel(const QString& name, std::string filter, QWidget* parent)
    : QLabel(parent), m_filter(std::move(filter)) {
    setObjectName(name);
    setAlignment(Qt::AlignCenter);
    setAutoFillBackground(false);
    setMouseTracking(true);
}

void LetterLabel::enterEvent(QEnterEvent*) {
    emit Entered();
}

void LetterLabel::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        emit Clicked();
    }
}

LetterRow::LetterRow(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("Frame2"));
    setMouseTracking(true);
    AddLabel(QStringLiteral("lblAll"), QString(), "All");
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const QString text(QLatin1Char{letter});
        AddLabel(QStringLiteral("lbl") + text, text, std::string(1, letter));
    }
    AddLabel(QStringLiteral("lblOther"), QString(), "other");
    ResetLetterColors();
}

void LetterRow::AddLabel(const QString& name, const QString& text, std::string filter) {
    auto* label = new LetterLabel(name, std::move(filter), this);
    label->setText(text);
    m_labels.push_back(label);
    connect(label, &LetterLabel::Entered, this, [this, label] {
        ResetLetterColors();
        ColorLabel(*label, true);
    });
    connect(label, &LetterLabel::Clicked, this, [this, label] {
        ResetLetterBold();
        QFont font = label->font();
        font.setBold(true);
        label->setFont(font);
        mainModule.LetterFilter = label->Filter();
        emit LetterChosen();
    });
}

void LetterRow::LoadStrings() {
    m_labels.front()->setText(ToQString(LoadResString(543)));
    m_labels.back()->setText(ToQString(LoadResString(544)));
    PlaceLabels();
}

void LetterRow::ResetLetterColors() {
    for (LetterLabel* label : m_labels) {
        ColorLabel(*label, false);
    }
}

void LetterRow::ResetLetterBold() {
    for (LetterLabel* label : m_labels) {
        QFont font = label->font();
        font.setBold(false);
        label->setFont(font);
    }
}

void LetterRow::MarkAll() {
    ResetLetterBold();
    QFont font = m_labels.front()->font();
    font.setBold(true);
    m_labels.front()->setFont(font);
}

void LetterRow::ColorLabel(LetterLabel& label, bool hovered) {
    // White is read on the highlight colour; the window's own colour would swallow it where it is light.
    if (label.autoFillBackground() == hovered && label.property("colored").toBool()) {
        return;
    }
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, hovered ? QColor(0xFF, 0xFF, 0xFF) : LetterRestColor(colors));
    colors.setColor(QPalette::Window, QColor(0x2A, 0x5D, 0xA8));
    label.setPalette(colors);
    label.setAutoFillBackground(hovered);
    label.setProperty("colored", true);
}

LetterRow::LetterBoxes LetterRow::Boxes() const {
    LetterBoxes boxes;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const QRect place = m_labels[i]->geometry();
        boxes[i] = {ToTwips(place.x()), 0, ToTwips(LabelWidth(*m_labels[i])), ToTwips(place.height())};
    }
    return boxes;
}

void LetterRow::SetBoxes(const LetterBoxes& boxes) {
    m_placesFixed = true;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        m_labels[i]->setGeometry(ToPixels(static_cast<double>(boxes[i].Left)), 0,
                                 ToPixels(static_cast<double>(boxes[i].Width)), height());
    }
}

int LetterRow::LabelWidth(const LetterLabel& label) const {
    // For bold text, so that nothing moves when the active letter changes.
    QFont bold = font();
    bold.setBold(true);
    return QFontMetrics(bold).horizontalAdvance(label.text()) + 2;
}

void LetterRow::PlaceLabels() {
    if (m_placesFixed) {
        LetterBoxes boxes = Boxes();
        for (std::size_t i = 1; i < boxes.size(); ++i) {
            boxes[i].Left = boxes[i - 1].Left + boxes[i - 1].Width + 10;
        }
        SetBoxes(boxes);
        return;
    }
    std::vector<int> widths;
    int total = 0;
    for (const LetterLabel* label : m_labels) {
        widths.push_back(LabelWidth(*label));
        total += widths.back();
    }
    constexpr int Left = 3; // 50 twips
    const int count = static_cast<int>(m_labels.size());
    const int spare = width() - 2 * Left - total;
    const int extra = std::clamp(spare / count, 0, 12);
    int x = Left;
    for (std::size_t i = 0; i < m_labels.size(); ++i) {
        m_labels[i]->setGeometry(x, 0, widths[i] + extra, height());
        x += widths[i] + extra;
    }
}

void LetterRow::mouseMoveEvent(QMouseEvent*) {
    ResetLetterColors();
    emit MouseMoved();
}

void LetterRow::leaveEvent(QEvent*) {
    ResetLetterColors();
}

void LetterRow::resizeEvent(QResizeEvent*) {
    PlaceLabels();
}

void LetterRow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        for (LetterLabel* label : m_labels) {
            label->setProperty("colored", false);
        }
        ResetLetterColors();
    }
    QFrame::changeEvent(event);
}

} // namespace quavernet
