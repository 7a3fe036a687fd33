#include "browser/LetterRow.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/MayAct.h"
#include "app/TextNumbers.h"
#include "widgets/Colours.h"
#include "widgets/Pictures.h"
#include "widgets/Twips.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace quavernet {

namespace {
constexpr int LiftGap = 3; // Pixels before the button.
}

LetterLabel::LetterLabel(const QString& name, QWidget* parent) : QLabel(parent) {
    setObjectName(name);
    setAlignment(Qt::AlignCenter);
    setMouseTracking(true);
}

void LetterLabel::mouseMoveEvent(QMouseEvent*) {
    emit Moved();
}

void LetterLabel::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        emit Clicked();
    }
}

LetterRow::LetterRow(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("Frame2"));
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
    for (std::size_t i = 0; i < LetterLabels::Count; ++i) {
        AddLabel(i);
    }
    m_lift = new QToolButton(this);
    m_lift->setObjectName(QStringLiteral("cmdLiftFilters"));
    m_lift->setIcon(Picture("lift"));
    m_lift->setFocusPolicy(Qt::StrongFocus);
    m_lift->hide();
    connect(m_lift, &QToolButton::clicked, this, &LetterRow::LiftWanted);
    ShowLooks();
}

void LetterRow::AddLabel(std::size_t index) {
    const LetterLabels::Label& state = m_state.Labels()[index];
    auto* label = new LetterLabel(ToQString(state.Name), this);
    if (state.Value.size() == 1) {
        label->setText(ToQString(state.Value)); // The others have texts of the language.
    }
    m_labels.push_back(label);
    connect(label, &LetterLabel::Moved, this, [this, index] {
        m_state.MouseMove(index);
        ShowLooks();
    });
    connect(label, &LetterLabel::Clicked, this, [this, index] { Choose(index); });
}

void LetterRow::Choose(std::size_t index) {
    if (!MayAct()) {
        return;
    }
    m_cursor = index;
    const FilterAction action = m_state.Click(index);
    ShowLooks();
    if (action == FilterAction::LoadDatabase) {
        emit LetterChosen();
    }
}

void LetterRow::LoadStrings() {
    m_labels.front()->setText(ToQString(LoadResString(543)));
    m_labels.back()->setText(ToQString(LoadResString(544)));
    m_lift->setText(ToQString(LoadResString(Texts::LiftFilters)));
    m_lift->setToolTip(LiftName());
    setAccessibleName(ToQString(LoadResString(Texts::FirstLetter)));
    PlaceLabels();
}

QString LetterRow::LiftName() const {
    const QString name = ToQString(LoadResString(Texts::LiftFilters));
    return m_leftOut.isEmpty()
               ? name
               : name + QStringLiteral(" (") + m_leftOut + ToQString(LoadResString(Texts::Hidden)) + u')';
}

void LetterRow::ShowLift(bool shows, const QString& leftOut) {
    if (m_leftOut != leftOut) {
        m_leftOut = leftOut;
        m_lift->setToolTip(LiftName());
        PlaceLabels();
    }
    if (!shows && m_lift->hasFocus()) {
        setFocus(Qt::OtherFocusReason); // Or the keyboard would be lost with the button.
    }
    m_lift->setVisible(shows);
}

void LetterRow::ResetLetterColors() {
    m_state.ResetLetterColors();
    ShowLooks();
}

void LetterRow::MarkAll() {
    m_state = LetterLabels();
    m_cursor = 0;
    ShowLooks();
}

// Called at every movement of the mouse: labels that look right already are left alone.
void LetterRow::ShowLooks() {
    for (std::size_t i = 0; i < m_labels.size(); ++i) {
        const LetterLabels::Label& state = m_state.Labels()[i];
        LetterLabel& label = *m_labels[i];
        if (label.font().bold() != state.Bold) {
            QFont font = label.font();
            font.setBold(state.Bold);
            label.setFont(font);
        }
        // The frame marks a letter that filters: not every font tells bold letters from others.
        const bool filters = state.Bold && state.Value != "All";
        if ((label.frameShape() == QFrame::Box) != filters) {
            label.setFrameStyle(filters ? static_cast<int>(QFrame::Box) | QFrame::Plain : QFrame::NoFrame);
        }
        // White is read on a coloured ground; the window's own would swallow it where it is light.
        const bool hovered = state.ForeColor == LetterLabels::HoverColor;
        const QColor color = ColourOfNumber(state.ForeColor, palette());
        if (label.palette().color(QPalette::WindowText) != color || label.autoFillBackground() != hovered) {
            QPalette colors = palette();
            colors.setColor(QPalette::WindowText, color);
            colors.setColor(QPalette::Window, ColourOf(OwnColour::HoverGround, palette()));
            label.setPalette(colors);
            label.setAutoFillBackground(hovered);
        }
    }
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

// The button has its room whether it is shown or not, so that nothing moves when it comes or goes. Its text
// is shown where the labels leave room for it.
int LetterRow::PlaceLift(int textNeeds) {
    m_lift->setText(ToQString(LoadResString(Texts::LiftFilters)));
    m_lift->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    const int full = m_lift->sizeHint().width() + LiftGap;
    if (full > width() - textNeeds) {
        m_lift->setToolButtonStyle(Qt::ToolButtonIconOnly);
    }
    const int wide = m_lift->sizeHint().width();
    m_lift->setGeometry(width() - wide, 0, wide, height());
    return wide + LiftGap;
}

// Where the letters leave room, the button names the formats as well.
void LetterRow::WidenLift() {
    m_lift->setAccessibleName(LiftName());
    if (m_leftOut.isEmpty() || m_lift->toolButtonStyle() == Qt::ToolButtonIconOnly) {
        return;
    }
    const QString usual = m_lift->text();
    m_lift->setText(LiftName());
    const int wide = m_lift->sizeHint().width();
    if (m_labels.back()->geometry().right() + LiftGap < width() - wide) {
        m_lift->setGeometry(width() - wide, 0, wide, height());
    } else {
        m_lift->setText(usual);
    }
}

void LetterRow::PlaceLabels() {
    if (!m_placesFixed) {
        SpreadLabels();
        return;
    }
    LetterBoxes boxes = Boxes();
    for (std::size_t i = 1; i < boxes.size(); ++i) {
        boxes[i].Left = boxes[i - 1].Left + boxes[i - 1].Width + 10;
    }
    SetBoxes(boxes);
    (void)PlaceLift(m_labels.back()->geometry().right());
    WidenLift();
}

void LetterRow::SpreadLabels() {
    constexpr int Left = 3; // 50 twips
    constexpr int LeastSpread = 4;
    std::vector<int> widths;
    int total = 0;
    for (const LetterLabel* label : m_labels) {
        widths.push_back(LabelWidth(*label));
        total += widths.back();
    }
    const int count = static_cast<int>(m_labels.size());
    const int lift = PlaceLift(2 * Left + total + count * LeastSpread);
    const int spare = width() - 2 * Left - total - lift;
    const int extra = std::clamp(spare / count, 0, 12);
    int x = Left;
    for (std::size_t i = 0; i < m_labels.size(); ++i) {
        m_labels[i]->setGeometry(x, 0, widths[i] + extra, height());
        x += widths[i] + extra;
    }
    WidenLift();
}

void LetterRow::mouseMoveEvent(QMouseEvent*) {
    ResetLetterColors();
    emit MouseMoved();
}

void LetterRow::leaveEvent(QEvent*) {
    ResetLetterColors();
}

void LetterRow::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Left:
        MoveCursor(m_cursor - (m_cursor > 0 ? 1 : 0));
        break;
    case Qt::Key_Right:
        MoveCursor(m_cursor + (m_cursor + 1 < m_labels.size() ? 1 : 0));
        break;
    case Qt::Key_Home:
        MoveCursor(0);
        break;
    case Qt::Key_End:
        MoveCursor(m_labels.size() - 1);
        break;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Choose(m_cursor);
        break;
    default:
        event->ignore();
        return;
    }
}

void LetterRow::MoveCursor(std::size_t index) {
    m_cursor = index;
    TellFocusedPart(*this, static_cast<int>(index));
    update();
}

void LetterRow::focusInEvent(QFocusEvent*) {
    MoveCursor(m_cursor);
}

std::vector<AccessiblePart> LetterRow::Parts() const {
    std::vector<AccessiblePart> parts;
    for (std::size_t i = 0; i < m_labels.size(); ++i) {
        parts.push_back({.Name = m_labels[i]->text(),
                         .Role = QAccessible::RadioButton,
                         .Place = m_labels[i]->geometry(),
                         .Focusable = true,
                         .Focused = i == m_cursor,
                         .Checked = m_state.Labels()[i].Bold});
    }
    return parts;
}

void LetterRow::focusOutEvent(QFocusEvent*) {
    update();
}

void LetterRow::paintEvent(QPaintEvent* event) {
    QFrame::paintEvent(event);
    if (hasFocus()) {
        QPainter painter(this);
        painter.setPen(ColourOf(OwnColour::FocusLine, palette()));
        painter.drawRect(m_labels[m_cursor]->geometry().adjusted(0, 0, -1, -1));
    }
}

void LetterRow::resizeEvent(QResizeEvent*) {
    PlaceLabels();
}

void LetterRow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        ShowLooks();
    } else if (event->type() == QEvent::FontChange) {
        PlaceLabels();
    }
    QFrame::changeEvent(event);
}

} // namespace quavernet
