#include "playback/PlayerList.h"

#include "adapters/qt/QtText.h"
#include "app/ScopedValue.h"
#include "playback/PlayQueue.h"
#include "playback/QueueMarks.h"
#include "widgets/Colours.h"
#include "widgets/KeyCodes.h"

#include <QApplication>
#include <QFont>
#include <QMouseEvent>

namespace quavernet {

namespace {

QSize RowSize() {
    constexpr int Room = 6; // Pixels above and below the text, together.
    return {1, QFontMetrics(QApplication::font("QListView")).height() + Room};
}

} // namespace

int PlayerEntries::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_count;
}

QVariant PlayerEntries::data(const QModelIndex& index, int role) const {
    // The queue may be shorter already than the view knows.
    if (!index.isValid() || index.row() >= m_queue.ListCount()) {
        return {};
    }
    const std::string& text = m_queue.Text(index.row());
    const bool plays = text.starts_with(PlayingMark);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return ToLine(text);
    case Qt::FontRole:
        if (plays) {
            QFont font;
            font.setBold(true);
            return font;
        }
        return {};
    case Qt::BackgroundRole:
        return plays ? QVariant(ColourOf(OwnColour::PlayingGround, QApplication::palette())) : QVariant();
    case Qt::ForegroundRole:
        if (text.find(ErrorMark) != std::string::npos) {
            return ColourOf(OwnColour::FaultyEntry, QApplication::palette());
        }
        return {};
    case Qt::SizeHintRole:
        return RowSize();
    default:
        return {};
    }
}

void PlayerEntries::Reset() {
    beginResetModel();
    m_count = m_queue.ListCount();
    endResetModel();
}

void PlayerEntries::Appended() {
    const int count = m_queue.ListCount();
    if (count > m_count) {
        beginInsertRows({}, m_count, count - 1);
        m_count = count;
        endInsertRows();
    }
}

void PlayerEntries::Changed(std::int32_t position) {
    if (position >= 0 && position < m_count) {
        emit dataChanged(index(position), index(position));
    }
}

void PlayerEntries::Removed(std::int32_t position) {
    if (position >= 0 && position < m_count) {
        beginRemoveRows({}, position, position);
        --m_count;
        endRemoveRows();
    }
}

PlayerList::PlayerList(QWidget* parent) : QListView(parent) {
    setUniformItemSizes(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
}

void PlayerList::SetQueue(const PlayQueue& queue) {
    m_queue = &queue;
    m_entries = std::make_unique<PlayerEntries>(queue);
    setModel(m_entries.get());
}

void PlayerList::EntriesReset() {
    const ScopedValue told(m_told, true);
    m_entries->Reset();
}

void PlayerList::EntriesAppended() {
    const ScopedValue told(m_told, true);
    m_entries->Appended();
}

void PlayerList::EntryChanged(std::int32_t position) {
    m_entries->Changed(position);
}

void PlayerList::EntryRemoved(std::int32_t position) {
    {
        const ScopedValue told(m_told, true);
        m_entries->Removed(position);
    }
    SelectionMoved(); // The view selects a neighbour of its own choice.
}

void PlayerList::SelectionMoved() {
    const std::int32_t position = m_queue->ListIndex();
    if (position == currentIndex().row()) {
        return;
    }
    const ScopedValue told(m_told, true);
    if (position < 0) {
        selectionModel()->clear();
    } else {
        setCurrentIndex(m_entries->index(position));
    }
}

void PlayerList::keyPressEvent(QKeyEvent* event) {
    const int code = KeyCode(*event);
    if (code != 0 && KeyDown && !KeyDown(code)) {
        event->accept();
        return;
    }
    if (code == Keys::Left || code == Keys::Right) {
        return; // The queue has moved the selection.
    }
    QListView::keyPressEvent(event);
}

// The toolkit makes the first entry the current one then, which would select it in the queue.
void PlayerList::focusInEvent(QFocusEvent* event) {
    {
        const ScopedValue told(m_told, true);
        QListView::focusInEvent(event);
    }
    SelectionMoved();
}

void PlayerList::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        emit DblClick();
    }
}

void PlayerList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QListView::currentChanged(current, previous);
    if (!m_told && current.isValid()) {
        emit Click(current.row());
    }
}

// One entry is selected, whatever key is held down.
QItemSelectionModel::SelectionFlags PlayerList::selectionCommand(const QModelIndex& index,
                                                                 const QEvent* event) const {
    (void)event;
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

} // namespace quavernet
