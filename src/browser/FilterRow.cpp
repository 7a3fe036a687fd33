#include "browser/FilterRow.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/MayAct.h"
#include "browser/FilterEvents.h"
#include "browser/SearchHistory.h"
#include "widgets/KeyCodes.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QShortcut>
#include <QSignalBlocker>

namespace quavernet {

namespace {

void Fill(QComboBox& combo, const std::vector<FilterEntry>& entries) {
    const bool blocked = combo.blockSignals(true);
    combo.clear();
    for (const FilterEntry& entry : entries) {
        combo.addItem(ToLine(entry.Text), QVariant::fromValue<qlonglong>(entry.ItemData));
    }
    combo.setCurrentIndex(0);
    combo.blockSignals(blocked);
}

std::optional<std::int64_t> ChosenId(const QComboBox& combo) {
    if (combo.currentIndex() <= 0) {
        return std::nullopt;
    }
    return combo.currentData().toLongLong();
}

} // namespace

FilterRow::FilterRow(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("FilterRow"));
    setMouseTracking(true);
    m_drive = AddCombo(QStringLiteral("cboDrive"));
    m_genre = AddCombo(QStringLiteral("cboGenre"));
    m_album = AddCombo(QStringLiteral("cboAlbum"));
    m_interpret = AddCheckBox(QStringLiteral("chkInterpret"));
    m_title = AddCheckBox(QStringLiteral("chkTitle"));
    m_search = new SearchBox(this);
    m_search->installEventFilter(this);
    m_go = new QPushButton(this);
    m_go->setObjectName(QStringLiteral("cmdSearch"));
    m_go->setAutoDefault(true); // Enter presses it while it has the keyboard.
    connect(m_interpret, &QCheckBox::clicked, this, &FilterRow::InterpretClicked);
    connect(m_title, &QCheckBox::clicked, this, &FilterRow::TitleClicked);
    connect(m_go, &QPushButton::clicked, this, &FilterRow::Search);
    connect(m_search, &SearchBox::Emptied, this, [this] { Apply(FilterAction::LoadDatabase); });
    connect(m_search, &SearchBox::SearchPicked, this, [this] { Apply(FilterAction::Search); });
    for (QCheckBox* box : {m_interpret, m_title}) {
        connect(box, &QCheckBox::toggled, this, &FilterRow::LoadSearchStrings);
    }
    auto* find = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), this);
    connect(find, &QShortcut::activated, m_search, &SearchBox::Enter);
}

FilterCombo* FilterRow::AddCombo(const QString& name) {
    auto* combo = new FilterCombo(this);
    combo->setObjectName(name);
    combo->installEventFilter(this);
    combo->view()->installEventFilter(this); // The keys go there while the list is open.
    connect(combo, &QComboBox::currentIndexChanged, this, [this] { Apply(ComboClick()); });
    // Picking the shown entry is a click too: the list may still show what another entry has left there.
    connect(combo, &QComboBox::activated, this, [this, combo](int index) {
        if (combo->PickedAgain(index)) {
            Apply(ComboClick());
        }
    });
    return combo;
}

QCheckBox* FilterRow::AddCheckBox(const QString& name) {
    auto* box = new QCheckBox(this);
    box->setObjectName(name);
    box->installEventFilter(this);
    return box;
}

void FilterRow::ReadFilter(ListFilter& filter) const {
    filter.SearchText = FromQString(m_search->text());
    filter.InterpretChecked = m_interpret->isChecked();
    filter.TitleChecked = m_title->isChecked();
    filter.DriveId = ChosenId(*m_drive);
    filter.GenreId = ChosenId(*m_genre);
    filter.AlbumId = ChosenId(*m_album);
}

void FilterRow::FillDriveCombo() {
    Fill(*m_drive, quavernet::FillDriveCombo());
}
void FilterRow::FillGenreCombo() {
    Fill(*m_genre, quavernet::FillGenreCombo());
}
void FilterRow::FillAlbumCombo() {
    Fill(*m_album, quavernet::FillAlbumCombo());
}

void FilterRow::LoadStrings() {
    m_go->setText(ToQString(LoadResString(123)));
    m_interpret->setText(ToQString(LoadResString(545)));
    m_title->setText(ToQString(LoadResString(546)));
    m_drive->setToolTip(ToQString(LoadResString(592)));
    m_genre->setToolTip(ToQString(LoadResString(593)));
    m_album->setToolTip(ToQString(LoadResString(594)));
    for (QComboBox* combo : {m_drive, m_genre, m_album}) {
        combo->setAccessibleName(combo->toolTip());
    }
    LoadSearchStrings();
}

void FilterRow::LoadSearchStrings() {
    m_search->LoadStrings(m_interpret->isChecked(), m_title->isChecked());
}

void FilterRow::ShowInForce(const ListFilter& filter) {
    m_drive->SetInForce(filter.DriveId.has_value());
    m_genre->SetInForce(filter.GenreId.has_value());
    m_album->SetInForce(filter.AlbumId.has_value());
    m_search->SetInForce(!SearchClause(filter).empty());
}

void FilterRow::Lift() {
    for (QComboBox* combo : {m_drive, m_genre, m_album}) {
        const QSignalBlocker silent(combo); // One load follows, not one for each control.
        combo->setCurrentIndex(0);
        combo->update();
    }
    m_search->clear();
}

void FilterRow::Search() {
    if (MayAct()) {
        RememberSearch(FromQString(m_search->text()));
    }
    Apply(FilterAction::LoadDatabase);
}

// While nothing may act, a click on a box takes itself back.
void FilterRow::InterpretClicked() {
    const bool checked = m_interpret->isChecked();
    m_interpret->setChecked(MayAct() ? ClickInterpret(checked, m_title->isChecked()) : !checked);
}

void FilterRow::TitleClicked() {
    const bool checked = m_title->isChecked();
    m_title->setChecked(MayAct() ? ClickTitle(checked, m_interpret->isChecked()) : !checked);
}

bool FilterRow::Apply(FilterAction action) {
    if (!MayAct()) {
        return false;
    }
    switch (action) {
    case FilterAction::LoadDatabase:
        emit ReloadWanted();
        return true;
    case FilterAction::Search:
        m_go->click();
        return true;
    default:
        return false;
    }
}

bool FilterRow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_search && event->type() == QEvent::ShortcutOverride) {
        return LeaveCopyToMenu(static_cast<QKeyEvent&>(*event));
    }
    if (watched == m_search) {
        return event->type() == QEvent::KeyPress &&
               Apply(SearchKeyPress(KeyCode(*static_cast<QKeyEvent*>(event))));
    }
    if (watched == m_interpret || watched == m_title) {
        return event->type() == QEvent::KeyPress &&
               Apply(CheckBoxKeyPress(KeyCode(*static_cast<QKeyEvent*>(event))));
    }
    return ComboEvent(*event, qobject_cast<QComboBox*>(watched) == nullptr);
}

// Ctrl+C belongs to the search box only while text is marked there; otherwise the menu has it.
bool FilterRow::LeaveCopyToMenu(QKeyEvent& event) const {
    if (m_search->hasSelectedText() || !event.matches(QKeySequence::Copy)) {
        return false;
    }
    event.ignore();
    return true;
}

// While nothing may act, no combo is changed: it would show what the list doesn't.
bool FilterRow::ComboEvent(QEvent& event, bool listIsOpen) {
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return !MayAct();
    case QEvent::KeyPress: {
        if (!MayAct()) {
            return true;
        }
        const int key = KeyCode(static_cast<QKeyEvent&>(event));
        ComboKeyDown(key);
        // In the open list Enter picks the entry, and the pick is the click that reloads.
        return !listIsOpen && Apply(ComboKeyPress(key));
    }
    case QEvent::KeyRelease: {
        const auto& key = static_cast<QKeyEvent&>(event);
        if (!key.isAutoRepeat()) {
            ComboKeyUp(KeyCode(key));
        }
        return false;
    }
    case QEvent::Wheel:
        if (listIsOpen) {
            return false;
        }
        // The wheel moves the list wherever the mouse is; it must not change a filter in passing.
        event.ignore();
        return true;
    default:
        return false;
    }
}

} // namespace quavernet
