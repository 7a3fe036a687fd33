#include "TreeCommandsRun.h"

#include "library/SqlQuote.h"
#include "tree/CategoryEditor.h"
#include "tree/CategoryName.h"
#include "tree/LoadTree.h"
#include "tree/NodeKey.h"
#include "tree/TreeDelete.h"
#include "tree/TreeDrag.h"
#include "tree/TreeDrop.h"
#include "tree/TreeImport.h"

#include <algorithm>
#include <filesystem>
#include <functional>

namespace quavernet {

Words FilesOf(const std::string& folder, const std::string& start, const std::string& ending) {
    Words paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename();
        if (name.starts_with(start) && name.ends_with(ending)) {
            paths.push_back(entry.path());
        }
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

TreeCommandsRun::TreeCommandsRun(CommandWorld& world, const std::string& music, unsigned seed,
                                 const std::string& kind)
    : m_world(world), m_chance(seed), m_known(FilesOf(music, "k", ".mp3")),
      m_new(FilesOf(music, "n", ".mp3")), m_playlists(FilesOf(music, "p", ".m3u")),
      m_exchange(music + "/i.qvn") {
    using Run = TreeCommandsRun;
    if (kind == "drops" || kind == "all") {
        m_commands = {&Run::DropFiles,         &Run::DropFiles,   &Run::DropRows,  &Run::DropRows,
                      &Run::DropEntry,         &Run::DropEntry,   &Run::DropEntry, &Run::DropPlaylist,
                      &Run::DropPlaylistAgain, &Run::DropCategory};
    }
    if (kind == "categories" || kind == "all") {
        m_commands.insert(m_commands.end(),
                          {&Run::EditorNew, &Run::EditorRename, &Run::EditorDelete, &Run::NamedCategory,
                           &Run::Delete, &Run::Delete, &Run::Clear, &Run::DeleteAll});
    }
    if (kind == "imports" || kind == "all") {
        m_commands.push_back(&Run::Import);
    }
}

void TreeCommandsRun::Step() {
    LoadTree(m_world.tree);
    m_world.Forget();
    m_world.drag = DragState();
    Sort();
    const bool isLarge = m_entries.size() > 80;
    isLarge ? Delete() : (this->*m_commands[Random(m_commands.size())])();
    m_world.journal.Add("done");
    if (Random(2) == 0) {
        mainModule.Connection->Commit(); // As at the end of an event.
    }
}

void TreeCommandsRun::SharedStep() {
    m_world.Forget();
    m_world.drag = DragState();
    Sort();
    const std::function<void()> commands[] = {
        [this] { DropFile(); },  [this] { DropRows(); },  [this] { DropEntry(); },  [this] { DropEntry(); },
        [this] { DropEntry(); }, [this] { DropEntry(); }, [this] { DeleteEntry(); }};
    const bool isLarge = m_entries.size() > 60;
    isLarge ? DeleteEntry() : commands[Random(std::size(commands))]();
    m_world.journal.Add("done");
    mainModule.Connection->Commit();
    LoadTree(m_world.tree);
}

void TreeCommandsRun::Sort() {
    m_categories.clear();
    m_bare.clear();
    m_entries.clear();
    for (const TreeNode& node : m_world.tree.Nodes()) {
        if (KindOfKey(node.Key) == NodeKind::Category) {
            m_categories.push_back(node.Key);
            if (!node.Children.empty() && node.Text == CategoryFromKey(node.Key)) {
                m_bare.push_back(node.Key);
            }
        } else if (KindOfKey(node.Key) == NodeKind::File) {
            m_entries.push_back(node.Key);
        }
    }
}

void TreeCommandsRun::Note(const std::string& name, const Words& fields) {
    std::string text = name;
    for (const std::string& field : fields) {
        text += "\t" + field;
    }
    m_world.journal.Add("op", text);
}

void TreeCommandsRun::Drop(const Words& files, const std::string& key, bool control) {
    const DropOutcome outcome =
        TreeDrop({files, key, control}, m_world.drag, m_world.tree, m_world.driver, m_world.work);
    if (outcome.Rebuild) {
        EndTreeDrop(m_world.drag, m_world.work);
    }
}

// An entry or a category; nothing in an empty tree.
std::string TreeCommandsRun::AnyTarget() {
    const bool isEntry = !m_entries.empty() && Random(3) != 0;
    return isEntry ? Any(m_entries) : m_categories.empty() ? std::string() : Any(m_categories);
}

Words TreeCommandsRun::AnyFiles(bool withNew) {
    Words files;
    for (std::size_t count = 1 + Random(3); count > 0; --count) {
        const bool isNew = withNew && m_nextNew < m_new.size() && Random(3) == 0;
        files.push_back(isNew ? m_new[m_nextNew++] : Any(m_known));
    }
    return files;
}

// One, from another program; several leave a gap.
void TreeCommandsRun::DropFile() {
    const std::string target = AnyTarget();
    if (target.empty()) {
        return EditorNew();
    }
    const std::string path = Any(m_known);
    Note("files", {target, path});
    Drop({path}, target);
}

void TreeCommandsRun::DropFiles() {
    const std::string target = AnyTarget();
    if (target.empty()) {
        return EditorNew();
    }
    Words files = AnyFiles(true);
    Words fields = files;
    fields.insert(fields.begin(), target);
    Note("files", fields);
    Drop(files, target);
}

void TreeCommandsRun::DropRows() {
    const std::string target = AnyTarget();
    if (target.empty()) {
        return EditorNew();
    }
    Words fields = AnyFiles(false);
    mainModule.FilePaths.Clear();
    mainModule.SelectedRows.Clear();
    for (const std::string& path : fields) {
        mainModule.FilePaths.Add(path);
        mainModule.SelectedRows.Add(static_cast<std::int32_t>(mainModule.FilePaths.Count()));
    }
    m_world.drag.GridDragging = true;
    const Words files = fields;
    fields.insert(fields.begin(), target);
    Note("rows", fields);
    Drop(files, target);
}

void TreeCommandsRun::DropEntry() {
    if (m_entries.empty()) {
        return EditorNew();
    }
    const std::string source = Any(m_entries);
    const std::string target = AnyTarget();
    const bool control = Random(3) == 0;
    TreePress(m_world.tree, source, false, m_world.drag);
    Note("entry", {source, target, control ? "1" : "0"});
    Drop({m_world.drag.DragFilePath}, target, control);
}

// Which takes no place anywhere.
void TreeCommandsRun::DropCategory() {
    const std::string target = AnyTarget();
    if (target.empty()) {
        return EditorNew();
    }
    const std::string source = Any(m_categories);
    const bool control = Random(3) == 0;
    TreePress(m_world.tree, source, false, m_world.drag);
    Note("category", {source, target, control ? "1" : "0"});
    const auto payload = TreeStartDrag(m_world.tree, m_world.drag);
    Drop(payload->Files, target, control);
}

// The new category has a number after its name, and its entries name the old one.
void TreeCommandsRun::DropPlaylistAgain() {
    if (m_nextPlaylist == 0) {
        return DropPlaylist();
    }
    const std::string path = m_playlists[Random(m_nextPlaylist)];
    Note("playlist", {path});
    Drop({path}, {});
}

void TreeCommandsRun::DropPlaylist() {
    if (m_nextPlaylist >= m_playlists.size()) {
        return DropEntry();
    }
    const std::string path = m_playlists[m_nextPlaylist++];
    Note("playlist", {path});
    Drop({path}, {});
}

void TreeCommandsRun::DeleteEntry() {
    if (m_entries.empty()) {
        return EditorNew();
    }
    const std::string key = Any(m_entries);
    m_world.tree.Select(key);
    Note("delete", {key});
    mnuDelete_Click(m_world.tree, m_world.views);
}

void TreeCommandsRun::Delete() {
    const bool isEntry = !m_entries.empty() && Random(4) != 0;
    if (!isEntry && m_categories.empty()) {
        return EditorNew();
    }
    const std::string key = isEntry ? Any(m_entries) : Any(m_categories);
    if (!isEntry && IsNamedElsewhere(CategoryFromKey(key))) {
        return EditorNew();
    }
    m_world.tree.Select(key);
    Note("delete", {key});
    mnuDelete_Click(m_world.tree, m_world.views);
}

// After the name is gone, no tree can be loaded: that ends the program.
bool TreeCommandsRun::IsNamedElsewhere(const std::string& category) {
    return mainModule.Connection
               ->Query("Select FC.File_id from FileCategories FC, Categories C where FC.Category_id = "
                       "C.Category_id and FC.Parent <> C.Category and FC.Parent = '" +
                       SqlQuote(category) + "'")
               .Rows() > 0;
}

// "Inhalt löschen" of a category.
void TreeCommandsRun::Clear() {
    if (m_categories.empty()) {
        return EditorNew();
    }
    const bool isBare = !m_bare.empty() && Random(2) == 0;
    const std::string key = Any(isBare ? m_bare : m_categories);
    m_world.tree.Select(key);
    m_world.msgBox.answers = {MsgBox::Answer::Yes};
    Note("clear", {key});
    mnuDeleteContent_Click(m_world.tree, m_world.views);
    m_world.msgBox.answers.clear();
}

void TreeCommandsRun::DeleteAll() {
    if (Random(4) != 0) {
        return DropEntry();
    }
    m_world.tree.Select(RootKey);
    m_world.msgBox.answers = {MsgBox::Answer::Yes};
    Note("delete all");
    mnuDeleteContent_Click(m_world.tree, m_world.views);
}

std::string TreeCommandsRun::NewName() {
    const int number = m_name++;
    return "C" + std::string(1, static_cast<char>('a' + number % 26)) + std::to_string(number);
}

void TreeCommandsRun::EditorNew() {
    const std::string name = NewName();
    CategoryEditor editor;
    editor.cmdNew_Click();
    Note("new", {name});
    editor.cmdSave_Click(name);
}

void TreeCommandsRun::EditorRename() {
    CategoryEditor editor;
    if (editor.Categories().empty()) {
        return EditorNew();
    }
    const std::string name = NewName();
    editor.EditCategory(editor.Categories().front());
    Note("rename category", {name});
    editor.cmdSave_Click(name);
}

void TreeCommandsRun::EditorDelete() {
    CategoryEditor editor;
    if (editor.Categories().size() < 4) {
        return EditorNew();
    }
    const auto index = Random(editor.Categories().size());
    editor.ListClick(static_cast<std::int32_t>(index));
    if (IsNamedElsewhere(editor.ListText())) {
        return EditorNew();
    }
    Note("delete category", {editor.ListText()});
    editor.cmdDelete_Click();
}

void TreeCommandsRun::NamedCategory() {
    const std::string name = NewName();
    Words files = AnyFiles(false);
    files.insert(files.begin() + static_cast<std::ptrdiff_t>(Random(files.size() + 1)), "/none/unknown.mp3");
    Words fields = files;
    fields.insert(fields.begin(), name);
    Note("named", fields);
    (void)FinishCategory(name, files, m_world.views);
}

void TreeCommandsRun::Import() {
    m_world.dialogs.file = m_exchange;
    Note("import", {m_exchange});
    ImportTree(m_world.work, m_world.views, m_world.driver);
}

} // namespace quavernet
