// The two stores of the play queue: the texts of the list box with its selection, and the paths. PlayQueue
// alone changes them; the view is told.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quavernet {

class PlayerView;

/// Entries count from 1, list positions from 0. Every change but ClearList and ClearPaths keeps the stores in
/// step.
class QueueEntries {
public:
    static constexpr std::int32_t MostEntries = 32767; ///< Positions are numbers of 16 bits.
    static constexpr std::int32_t None = -1;           ///< ListIndex without a selection.

    explicit QueueEntries(PlayerView& view) : m_view(view) {}

    std::int32_t ListCount() const { return static_cast<std::int32_t>(m_texts.size()); }
    std::int32_t PathCount() const { return static_cast<std::int32_t>(m_paths.size()); }

    /// Whether the list has that entry.
    bool Has(std::int32_t entry) const { return entry >= 1 && entry <= ListCount(); }
    /// Whether there is a path for it.
    bool HasPath(std::int32_t entry) const { return entry >= 1 && entry <= PathCount(); }

    /// Both throw RuntimeError 9 if there is none.
    const std::string& Text(std::int32_t position) const;
    const std::string& Path(std::int32_t entry) const;

    std::int32_t ListIndex() const { return m_listIndex; }

    /// Throws RuntimeError 380 if there is no such position.
    void Select(std::int32_t position);
    void Deselect() { MoveSelection(None); }

    /// Throws RuntimeError 9 if there is none.
    void SetText(std::int32_t position, std::string text);

    /// Throws RuntimeError 6 if the queue is full; nothing is put in then. The view is told by Flush.
    void Append(std::string text, std::string path);

    /// Tells the view of entries that were appended. Called before anybody can look at the list.
    void Flush();

    void ClearList();
    void ClearPaths();
    void Clear();

    /// Takes an entry out of both stores. The selection stays with its text; it goes if that is removed.
    void Remove(std::int32_t position);

    /// Entry i becomes the one that was at position order[i - 1]. Nothing is selected afterwards.
    void Arrange(const std::vector<std::int32_t>& order);

    /// Another number whenever the queue has been emptied, since a position then names nothing that it named
    /// before.
    unsigned Clearings() const { return m_clearings; }

private:
    static constexpr int InvalidPropertyValue = 380;

    void MoveSelection(std::int32_t position);

    PlayerView& m_view;
    std::vector<std::string> m_texts; ///< lstFiles
    std::vector<std::string> m_paths; ///< PlayerPaths
    std::int32_t m_listIndex = None;
    std::int32_t m_told = 0; ///< Entries that the view knows of.
    unsigned m_clearings = 0;
};

} // namespace quavernet
