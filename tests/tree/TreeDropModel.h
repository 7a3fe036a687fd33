// What drops on the tree come to, told by positions before and after and not by statements: a second, slow
// answer that random sequences are held against.
#pragma once

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace quavernet::test {

class TreeDropModel {
public:
    struct Entry {
        int id;
        int file; ///< Whose name the tree shows.
        int name; ///< The file whose name it was given when it was made: by this one it is looked up.
        int position;
        std::string category;

        bool operator==(const Entry&) const = default;
    };

    std::vector<Entry> entries; ///< By id.
    int lastId = 0;             ///< The next entry gets the one after it.

    /// The end of a drop: the tree is built again, with the entry of a key selected if it was dropped on one.
    struct End {
        bool rebuild = true;
        int selectedId = 0;
        int selectedPosition = 0;
    };

    static constexpr int HighestId = 32767; ///< That a drop on an entry can take.

    int Count(const std::string& category) const {
        return static_cast<int>(std::count_if(entries.begin(), entries.end(),
                                              [&](const Entry& e) { return e.category == category; }));
    }

    /// The entry trades places with the others until it has the target's.
    End MoveInside(const Entry& moved, const Entry& target) {
        const int from = moved.position;
        const int to = target.position;
        const int named = Find(moved);
        if (named == NotFound || named > HighestId || Find(target) == NotFound) {
            return {false};
        }
        for (Entry& e : entries) {
            if (e.id == moved.id) {
                e.position = to;
            } else if (e.category == moved.category && from <= to && e.position > from && e.position <= to) {
                --e.position;
            } else if (e.category == moved.category && from > to && e.position >= to && e.position < from) {
                ++e.position;
            }
        }
        return {true, named, to};
    }

    /// The target and all after it make room; those after the old place close up.
    End MoveToEntry(const Entry& moved, const Entry& target) {
        const int from = moved.position;
        const int to = target.position;
        const std::string source = moved.category;
        const std::string category = target.category;
        const int named = Find(moved);
        if (named == NotFound || named > HighestId || Find(target) == NotFound) {
            return {false};
        }
        for (Entry& e : entries) {
            if (e.id == moved.id && moved.name == moved.file) {
                e.position = to;
                e.category = category;
            } else if (e.category == category && e.position >= to) {
                ++e.position;
            } else if (e.category == source && e.position > from) {
                --e.position;
            }
        }
        return {true, named, to};
    }

    /// The target and all after it make room for one more.
    End CopyToEntry(const Entry& copied, const Entry& target) {
        const int named = Find(copied);
        if (named == NotFound || named > HighestId || Find(target) == NotFound) {
            return {false};
        }
        const Entry added{++lastId, copied.file, copied.file, target.position, target.category};
        Raise(target.category, target.position, 1);
        entries.push_back(added);
        return {true, named, added.position};
    }

    /// After the count of the category's entries. What was after the old place closes up, and of the same
    /// category that is the moved one, too.
    End MoveToCategory(const Entry& moved, const std::string& category) {
        const int from = moved.position;
        const int id = moved.id;
        const std::string source = moved.category;
        const int to = Count(category) + 1;
        for (Entry& e : entries) {
            if (e.id == id && e.name == e.file) {
                e.position = to;
                e.category = category;
            }
            if (e.category == source && e.position > from) {
                --e.position;
            }
        }
        return {};
    }

    /// After the highest position.
    End CopyToCategory(const Entry& copied, const std::string& category) {
        int highest = 0;
        for (const Entry& e : entries) {
            highest = e.category == category ? std::max(highest, e.position) : highest;
        }
        // The file of the first entry at that place of the source, whatever its name.
        const auto first = std::find_if(entries.begin(), entries.end(), [&](const Entry& e) {
            return e.category == copied.category && e.position == copied.position;
        });
        entries.push_back({++lastId, first->file, copied.file, highest + 1, category});
        return {};
    }

    End RowsToEntry(const std::vector<int>& files, const Entry& target) {
        const std::string category = target.category;
        const int to = target.position;
        const int count = static_cast<int>(files.size());
        Raise(category, to, count);
        Append(files, category, to);
        return lastId > HighestId ? End{false} : End{true, lastId, to + count - 1};
    }

    End FilesToEntry(const std::vector<int>& files, const Entry& target) {
        const std::string category = target.category;
        const int to = target.position;
        const int count = static_cast<int>(files.size());
        Raise(category, to, count * count);
        Append(files, category, to);
        return {};
    }

    /// After the count of the category's entries.
    End FilesToCategory(const std::vector<int>& files, const std::string& category) {
        Append(files, category, Count(category) + 1);
        return {};
    }

private:
    void Raise(const std::string& category, int from, int by) {
        for (Entry& e : entries) {
            e.position += e.category == category && e.position >= from ? by : 0;
        }
    }
    void Append(const std::vector<int>& files, const std::string& category, int position) {
        for (const int file : files) {
            entries.push_back({++lastId, file, file, position++, category});
        }
    }
    static constexpr int NotFound = -1;

    /// The first entry at the place of this one that was given the name that this one shows: it is taken for
    /// this one. Its id may be too high to be taken.
    int Find(const Entry& entry) const {
        const auto found = std::find_if(entries.begin(), entries.end(), [&](const Entry& e) {
            return e.category == entry.category && e.position == entry.position && e.name == entry.file;
        });
        return found == entries.end() ? NotFound : found->id;
    }
};

} // namespace quavernet::test
