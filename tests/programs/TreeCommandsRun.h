// Random drops and commands on the tree, of a program that is killed among them or that shares its library
// with another one. Used by the program of the reliability checks.
#pragma once

#include "CommandWorld.h"

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace quavernet {

using Words = std::vector<std::string>;

/// Files of a folder whose names begin and end so, in order.
Words FilesOf(const std::string& folder, const std::string& start, const std::string& ending);

/// Each command is noted before it begins: "op", its name, and what it is done with.
class TreeCommandsRun {
public:
    /// `kind`: "drops", "categories", "imports", or "all" of them.
    TreeCommandsRun(CommandWorld& world, const std::string& music, unsigned seed, const std::string& kind);

    /// One command on the tree as it is now.
    void Step();

    /// One command that leaves the positions of a category without gaps, on the tree as it was after the last
    /// one, as a window shows it.
    void SharedStep();

private:
    std::size_t Random(std::size_t count) { return m_chance() % count; }
    const std::string& Any(const Words& texts) { return texts[Random(texts.size())]; }
    void Sort();
    void Note(const std::string& name, const Words& fields = {});
    void Drop(const Words& files, const std::string& key, bool control = false);
    std::string AnyTarget();
    Words AnyFiles(bool withNew);
    void DropFile();
    void DropFiles();
    void DropRows();
    void DropEntry();
    void DropCategory();
    void DropPlaylistAgain();
    void DropPlaylist();
    void DeleteEntry();
    void Delete();
    static bool IsNamedElsewhere(const std::string& category);
    void Clear();
    void DeleteAll();
    std::string NewName();
    void EditorNew();
    void EditorRename();
    void EditorDelete();
    void NamedCategory();
    void Import();

    CommandWorld& m_world;
    std::mt19937 m_chance;
    Words m_known;
    Words m_new;
    Words m_playlists;
    std::string m_exchange;
    std::vector<void (TreeCommandsRun::*)()> m_commands; ///< One of them is taken for each step.
    Words m_categories;                                  ///< Keys of the nodes.
    Words m_bare; ///< Of these, the ones with entries that show no length: their entries name another one.
    Words m_entries;
    std::size_t m_nextNew = 0;
    std::size_t m_nextPlaylist = 0;
    int m_name = 0;
};

} // namespace quavernet
