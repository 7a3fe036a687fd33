#include "playback/QueueEntries.h"

#include "platform/RuntimeError.h"
#include "playback/PlayerView.h"

#include <utility>

namespace quavernet {

namespace {

std::ptrdiff_t Offset(std::int32_t position) {
    return position;
}

const std::string& At(const std::vector<std::string>& store, std::int32_t position) {
    if (position < 0 || std::cmp_greater_equal(position, store.size())) {
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange, "Subscript out of range");
    }
    return store[static_cast<std::size_t>(position)];
}

void EraseAt(std::vector<std::string>& store, std::int32_t position) {
    if (std::cmp_less(position, store.size())) {
        store.erase(store.begin() + Offset(position));
    }
}

void ArrangeBy(const std::vector<std::int32_t>& order, std::vector<std::string>& store) {
    std::vector<std::string> arranged;
    arranged.reserve(store.size());
    for (const std::int32_t position : order) {
        arranged.push_back(std::move(store[static_cast<std::size_t>(position)]));
    }
    store = std::move(arranged);
}

} // namespace

const std::string& QueueEntries::Text(std::int32_t position) const {
    return At(m_texts, position);
}

const std::string& QueueEntries::Path(std::int32_t entry) const {
    return At(m_paths, entry - 1);
}

void QueueEntries::Select(std::int32_t position) {
    if (!Has(position + 1)) {
        throw RuntimeError(InvalidPropertyValue, "Invalid property value");
    }
    MoveSelection(position);
}

void QueueEntries::MoveSelection(std::int32_t position) {
    if (m_listIndex != position) {
        Flush();
        m_listIndex = position;
        m_view.SelectionMoved();
    }
}

void QueueEntries::SetText(std::int32_t position, std::string text) {
    if (At(m_texts, position) != text) {
        Flush();
        m_texts[static_cast<std::size_t>(position)] = std::move(text);
        m_view.EntryChanged(position);
    }
}

void QueueEntries::Append(std::string text, std::string path) {
    if (ListCount() >= MostEntries) {
        throw RuntimeError(ErrorNumber::Overflow, "Overflow");
    }
    m_texts.push_back(std::move(text));
    m_paths.push_back(std::move(path));
}

void QueueEntries::Flush() {
    if (const std::int32_t first = m_told; first < ListCount()) {
        m_told = ListCount();
        m_view.EntriesAppended(first);
    }
}

void QueueEntries::ClearList() {
    m_texts.clear();
    m_listIndex = None;
    m_told = 0;
    ++m_clearings;
    m_view.EntriesReset();
}

void QueueEntries::ClearPaths() {
    m_paths.clear();
    ++m_clearings;
}

void QueueEntries::Clear() {
    ClearList();
    ClearPaths();
}

void QueueEntries::Remove(std::int32_t position) {
    (void)At(m_texts, position);
    Flush();
    const bool wasSelected = m_listIndex == position;
    const bool movesUp = m_listIndex > position;
    EraseAt(m_texts, position);
    EraseAt(m_paths, position);
    m_told = ListCount();
    m_listIndex = wasSelected ? None : m_listIndex - (movesUp ? 1 : 0);
    m_view.EntryRemoved(position);
    if (wasSelected || movesUp) {
        m_view.SelectionMoved();
    }
}

void QueueEntries::Arrange(const std::vector<std::int32_t>& order) {
    ArrangeBy(order, m_texts);
    ArrangeBy(order, m_paths);
    m_listIndex = None;
    m_told = ListCount();
    ++m_clearings;
    m_view.EntriesReset();
}

} // namespace quavernet
