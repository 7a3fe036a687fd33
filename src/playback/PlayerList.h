// The list of the player's window: the queue's entries, the one that plays marked to the eye as well.
// frmPlayer feeds it.
#pragma once

#include <QAbstractListModel>
#include <QListView>

#include <cstdint>
#include <functional>
#include <memory>

namespace quavernet {

class PlayQueue;

/// The texts of the queue. It is told of a change after it has happened.
class PlayerEntries : public QAbstractListModel {
    Q_OBJECT
public:
    explicit PlayerEntries(const PlayQueue& queue) : m_queue(queue) {}

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    void Reset();
    void Appended();
    void Changed(std::int32_t position);
    void Removed(std::int32_t position);

private:
    const PlayQueue& m_queue;
    int m_count = 0; ///< What the view has been told.
};

class PlayerList : public QListView {
    Q_OBJECT
public:
    explicit PlayerList(QWidget* parent = nullptr);

    /// Whether the list is to handle a key too. Asked with the number of each key that has one.
    std::function<bool(int keyCode)> KeyDown;

    /// The queue to show; it outlives the list's last event.
    void SetQueue(const PlayQueue& queue);

    // What has happened in the queue. None of these is told back as the user's doing.
    void EntriesReset();
    void EntriesAppended();
    void EntryChanged(std::int32_t position);
    void EntryRemoved(std::int32_t position);
    void SelectionMoved();

signals:
    void Click(std::int32_t position); ///< The user has selected another entry.
    void DblClick();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

private:
    const PlayQueue* m_queue = nullptr;
    std::unique_ptr<PlayerEntries> m_entries;
    bool m_told = false; ///< A change of the queue is being shown.
};

} // namespace quavernet
