#include "browser/SearchBox.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/MayAct.h"
#include "browser/FilterMark.h"
#include "browser/SearchHistory.h"
#include "widgets/Colours.h"

#include <QAction>
#include <QEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QToolButton>

#include <algorithm>

namespace quavernet {

namespace {

constexpr int PerformerOrTitle = 809;
constexpr int BoxTip = 810;
constexpr int LastSearchesTip = 811;
constexpr int Performer = 545;
constexpr int Title = 546;
constexpr int SearchName = 105;

/// Pixels: a narrower box keeps all of its room for the text.
constexpr int LeastWidthOfOffer = 150;
constexpr int MostMenuWidth = 400;

/// With neither box checked a text is searched nowhere.
std::string PlaceholderOf(bool inPerformers, bool inTitles) {
    if (inPerformers && inTitles) {
        return LoadResString(PerformerOrTitle);
    }
    return inPerformers ? LoadResString(Performer) : inTitles ? LoadResString(Title) : std::string();
}

} // namespace

SearchBox::SearchBox(QWidget* parent) : QLineEdit(parent) {
    setObjectName(QStringLiteral("txtSearch"));
    m_offer = addAction(Picture("search"), LeadingPosition);
    m_offer->setObjectName(QStringLiteral("actLastSearches"));
    connect(m_offer, &QAction::triggered, this, &SearchBox::OfferSearches);
    const QList<QToolButton*> before = findChildren<QToolButton*>();
    setClearButtonEnabled(true);
    for (QToolButton* button : findChildren<QToolButton*>()) {
        if (!before.contains(button)) {
            // After the toolkit's own handler, which empties the box.
            connect(button, &QAbstractButton::clicked, this, &SearchBox::Emptied);
        }
    }
    ShowHintColor();
}

void SearchBox::LoadStrings(bool inPerformers, bool inTitles) {
    setPlaceholderText(ToQString(PlaceholderOf(inPerformers, inTitles)));
    setToolTip(ToQString(LoadResString(BoxTip)));
    setAccessibleName(ToQString(LoadResString(SearchName)));
    m_offer->setText(ToQString(LoadResString(LastSearchesTip)));
    ShowOffer();
}

void SearchBox::SetInForce(bool inForce) {
    if (m_inForce == inForce) {
        return;
    }
    m_inForce = inForce;
    QFont weight;
    if (inForce) {
        weight.setBold(true);
    }
    setFont(weight); // Without the weight it is the application's again.
    update();
}

void SearchBox::Enter() {
    setFocus(Qt::ShortcutFocusReason);
    selectAll();
}

void SearchBox::OfferSearches() {
    const std::vector<std::string> searches = LastSearches();
    if (searches.empty() || !MayAct()) {
        return;
    }
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("mnuLastSearches"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setMinimumWidth(std::min(width(), MostMenuWidth));
    for (const std::string& search : searches) {
        QString shown = fontMetrics().elidedText(ToLine(search), Qt::ElideRight, MostMenuWidth);
        QAction* item = menu->addAction(shown.replace(u'&', QStringLiteral("&&")));
        connect(item, &QAction::triggered, this, [this, search] { Pick(ToQString(search)); });
    }
    menu->popup(mapToGlobal(QPoint(0, height())));
    menu->setActiveAction(menu->actions().constFirst());
}

void SearchBox::Pick(const QString& text) {
    if (MayAct()) {
        setText(text);
        emit SearchPicked();
    }
}

void SearchBox::EmptyByKey() {
    if (MayAct() && (!text().isEmpty() || m_inForce)) {
        clear();
        emit Emptied();
    }
}

void SearchBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        EmptyByKey();
        event->accept();
    } else if (event->key() == Qt::Key_Down && (event->modifiers() & ~Qt::AltModifier) == 0) {
        OfferSearches();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

void SearchBox::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (m_inForce) {
        PaintFilterMark(*this);
    }
}

void SearchBox::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    ShowOffer();
}

void SearchBox::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        ShowHintColor();
    }
}

void SearchBox::ShowOffer() {
    m_offer->setVisible(width() >= LeastWidthOfOffer);
}

void SearchBox::ShowHintColor() {
    const QColor color = ColourOf(OwnColour::Hint, palette());
    if (palette().color(QPalette::PlaceholderText) != color) {
        QPalette colors = palette();
        colors.setColor(QPalette::PlaceholderText, color);
        setPalette(colors);
    }
}

} // namespace quavernet
