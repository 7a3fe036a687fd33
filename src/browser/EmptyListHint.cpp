#include "browser/EmptyListHint.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/TextNumbers.h"
#include "browser/GridView.h"

#include <QEvent>
#include <QScrollBar>
#include <QVBoxLayout>

namespace quavernet {

namespace {

constexpr int NoMusicYet = 800;
constexpr int ScanFolder = 801;
constexpr int OrDragFiles = 802;
constexpr int NothingFound = 803;
constexpr int NothingFoundFor = 804; ///< Before the text that was searched for.
constexpr int EndOfSearched = 805;   ///< After it.
constexpr int EnterSearch = 807;

constexpr int MostSearchedCharacters = 60;

QLabel* AddLabel(const QString& name, QWidget& hint, QVBoxLayout& column) {
    auto* label = new QLabel(&hint);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText); // What was searched for may look like mark-up.
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    label->setForegroundRole(QPalette::Text);
    column.addWidget(label);
    return label;
}

QPushButton* AddButton(const QString& name, QWidget& hint, QVBoxLayout& column) {
    auto* button = new QPushButton(&hint);
    button->setObjectName(name);
    button->setAutoDefault(true); // Enter presses it while it has the keyboard.
    column.addWidget(button, 0, Qt::AlignCenter);
    return button;
}

} // namespace

EmptyListHint::EmptyListHint(GridView& grid) : QWidget(grid.viewport()), m_grid(grid) {
    setObjectName(QStringLiteral("EmptyListHint"));
    setMouseTracking(true);
    auto* column = new QVBoxLayout(this);
    column->addStretch(2);
    m_title = AddLabel(QStringLiteral("lblEmptyTitle"), *this, *column);
    m_scan = AddButton(QStringLiteral("cmdEmptyScan"), *this, *column);
    m_lift = AddButton(QStringLiteral("cmdEmptyLift"), *this, *column);
    m_drop = AddLabel(QStringLiteral("lblEmptyDrop"), *this, *column);
    column->addStretch(3);
    connect(m_scan, &QPushButton::clicked, this, &EmptyListHint::ScanWanted);
    connect(m_lift, &QPushButton::clicked, this, &EmptyListHint::LiftWanted);
    grid.viewport()->installEventFilter(this);
    // The view takes what lies in it along when it scrolls to the side.
    connect(grid.horizontalScrollBar(), &QScrollBar::valueChanged, this, &EmptyListHint::Cover);
    hide();
}

void EmptyListHint::Cover() {
    setGeometry(m_grid.viewport()->rect());
}

void EmptyListHint::Show(EmptyForm form, const QString& searched) {
    if ((m_lift->hasFocus() && form != EmptyForm::NothingFound) ||
        (m_scan->hasFocus() && form != EmptyForm::NoLibrary)) {
        m_grid.setFocus(Qt::OtherFocusReason); // The toolkit would give the keyboard to any neighbour.
    }
    m_form = form;
    m_searched = searched;
    LoadStrings();
    m_scan->setVisible(form == EmptyForm::NoLibrary);
    m_drop->setVisible(form == EmptyForm::NoLibrary);
    m_lift->setVisible(form == EmptyForm::NothingFound);
    Cover();
    setVisible(form != EmptyForm::None);
}

void EmptyListHint::LoadStrings() {
    QFont font;
    font.setBold(true);
    m_title->setFont(font);
    m_scan->setText(ToQString(LoadResString(ScanFolder)));
    m_lift->setText(ToQString(LoadResString(Texts::LiftFilters)));
    m_drop->setText(ToQString(LoadResString(OrDragFiles)));
    if (m_form == EmptyForm::NothingFound && !m_searched.isEmpty()) {
        const QString shown = m_searched.size() > MostSearchedCharacters
                                  ? m_searched.left(MostSearchedCharacters) + QStringLiteral("...")
                                  : m_searched;
        m_title->setText(ToQString(LoadResString(NothingFoundFor)) + shown +
                         ToQString(LoadResString(EndOfSearched)));
        return;
    }
    m_title->setText(ToQString(LoadResString(m_form == EmptyForm::NothingFound  ? NothingFound
                                             : m_form == EmptyForm::SearchFirst ? EnterSearch
                                                                                : NoMusicYet)));
}

bool EmptyListHint::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        Cover();
    }
    return false;
}

} // namespace quavernet
