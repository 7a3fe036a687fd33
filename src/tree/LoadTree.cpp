#include "tree/LoadTree.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextNumbers.h"
#include "library/SqlQuote.h"
#include "platform/CaseFold.h"
#include "platform/LibraryError.h"
#include "tree/NodeKey.h"

#include <cmath>
#include <utility>

namespace quavernet {

namespace {

/// What a load does with faults of the tree. Those that are there at the start of the program must not keep
/// it from coming up, or nobody could change them: they are passed over, then and for the rest of the run.
/// One that arises later is a failure.
class Faults {
public:
    /// Runs one step, which concerns what the name tells.
    template <typename Step> void Pass(const std::string& name, Step&& step) const {
        try {
            step();
        } catch (const LibraryError&) {
            throw; // Nothing of the tree.
        } catch (const RuntimeError& failure) {
            // Of a category whose entries spell it in several ways, now one spelling is read and now another.
            const std::string key = FoldCase(name);
            if (m_isStart) {
                mainModule.TreeFaults.Note(key, name, failure);
            } else if (!mainModule.TreeFaults.Knows(key, failure)) {
                throw;
            }
        }
    }

private:
    bool m_isStart = !mainModule.TreeLoaded;
};

void AddCategories(TreeModel& tree, TreeNode& root, const Faults& faults) {
    ADODB::Recordset categories;
    categories.Open("Select Category from Categories order By Category", *mainModule.Connection);
    root.Expanded = true;
    if (categories.RecordCount() > 0) {
        categories.MoveFirst();
        while (!categories.Eof()) {
            const std::string name = categories.Fields(0).Text();
            faults.Pass(name, [&] {
                TreeNode& node = tree.Add(&root, CategoryKey(name), name, "close", "open");
                node.ForeColor = TreeNode::CategoryColor;
                node.Bold = true;
            });
            services.events->DoEvents();
            categories.MoveNext();
        }
    }
    categories.Close();
}

// The order is over all categories at once; each of them still ends up sorted, as each entry is appended to
// its own.
void AddEntries(TreeModel& tree, const Faults& faults) {
    ADODB::Recordset entries;
    entries.Open("Select F.Name, C.Category, F.Path, F.File_id, [FC.Position], FC.FileCategory_id "
                 "from Files F, Categories C, FileCategories FC "
                 " where F.File_id = FC.File_id and C.Category_id = FC.Category_id Order By [FC.Position]",
                 *mainModule.Connection);
    while (!entries.Eof()) {
        const std::string category = entries.Fields(1).Text();
        faults.Pass(category, [&] {
            tree.Add(&tree.Node(CategoryKey(category)),
                     FileKey(entries.Fields(5).Text(), entries.Fields(4).Text()), entries.Fields(0).Text(),
                     "file", "");
        });
        entries.MoveNext();
    }
    entries.Close();
}

// Minutes and seconds are 16-bit numbers: a longer category is a failure.
std::string LengthText(const ADODB::Field& sum) {
    if (sum.IsNull()) {
        throw RuntimeError(ErrorNumber::InvalidUseOfNull, "Invalid use of Null");
    }
    const std::int16_t minutes = Narrow16(std::trunc(sum.Number() / 60));
    const std::int16_t seconds = Narrow16(Narrow32(sum.Number()) % 60);
    return FormatFixed(minutes, 2, 0, services.regional) + ":" +
           FormatFixed(seconds, 2, 0, services.regional);
}

// Texts compare without case: the entries of one group may spell their category in several ways.
TreeNode& CategoryOfGroup(TreeModel& tree, const std::string& parent) {
    std::string name = parent;
    if (!tree.Contains(CategoryKey(name))) {
        ADODB::Recordset category;
        category.Open("Select Category from Categories where Category = '" + SqlQuote(parent) + "'",
                      *mainModule.Connection);
        name = category.RecordCount() > 0 ? category.Fields(0).Text() : name;
        category.Close();
    }
    return tree.Node(CategoryKey(name));
}

void AddLengths(TreeModel& tree, const Faults& faults) {
    ADODB::Recordset sums;
    bool isOpen = false;
    // The sum of one category may be too large for a number; then no length is known. The fault has the
    // same name in every language.
    faults.Pass("Sum(F.Length)", [&] {
        sums.Open("Select Sum(F.Length), FC.Parent from Files F Inner Join FileCategories FC"
                  " on F.File_id = FC.File_id "
                  "Group By FC.Parent",
                  *mainModule.Connection);
        isOpen = true;
    });
    while (isOpen && !sums.Eof()) {
        const std::string parent = sums.Fields(1).Text();
        faults.Pass(parent, [&] {
            const std::string length = LengthText(sums.Fields(0));
            TreeNode& category = CategoryOfGroup(tree, parent);
            category.Text += " (" + length + ")";
        });
        sums.MoveNext();
    }
    if (isOpen) {
        sums.Close();
    }
}

void Build(TreeModel& tree) {
    tree.SetChangesOfOthers(mainModule.Connection->ChangesOfOthers());
    TreeNode& root = tree.Add(nullptr, std::string(RootKey), LoadResString(Texts::TreeRoot), "parent", "");
    root.Bold = true;
    const Faults faults;
    AddCategories(tree, root, faults);
    AddEntries(tree, faults);
    AddLengths(tree, faults);
    services.events->DoEvents();
}

// No fault of this program: another one has deleted or renamed categories.
void ForgetNodesThatAreGone(const TreeModel& tree) {
    const auto keys = mainModule.TreeNodeData.Keys();
    for (const std::string& key : keys) {
        if (!tree.Contains(key)) {
            mainModule.TreeNodeData.Remove(key);
        }
    }
}

} // namespace

void LoadTree(TreeModel& tree, std::optional<std::int64_t> seen) {
    if (!seen && !tree.Nodes().empty()) {
        seen = tree.ChangesOfOthers();
    }
    // Built aside: events run on the way, and what they do works on the old tree.
    TreeModel loaded;
    try {
        Build(loaded);
    } catch (const RuntimeError&) {
        tree = std::move(loaded); // Keys and places of the old one may be wrong by now.
        throw;
    }
    tree = std::move(loaded);
    if (seen && *seen != tree.ChangesOfOthers()) {
        ForgetNodesThatAreGone(tree);
    }
    for (const std::string& key : mainModule.TreeNodeData.Keys()) {
        tree.Node(key).Expanded = true;
    }
    mainModule.TreeLoaded = true;
}

std::string TreeFaultsText() {
    return mainModule.TreeFaults.Text(LoadResString(Texts::TreeFaults));
}

std::string GetFileIdFromNode(const TreeModel& tree, const std::string& key) {
    const TreeNode& node = key.empty() ? tree.SelectedItem() : tree.Node(key);
    if (node.Parent == nullptr) {
        throw RuntimeError(ErrorNumber::ObjectNotSet, "Object variable or With block variable not set");
    }
    return FileIdAt(node, PositionFromKey(node.Key));
}

std::string FileIdAt(const TreeNode& entryNode, const std::string& position) {
    // The category is unquoted: a name with an apostrophe, as an import may bring one, is refused.
    ADODB::Recordset entry;
    entry.Open("Select File_id from FileCategories where Parent = '" +
                   std::string(SqlPlain(CategoryFromKey(entryNode.Parent->Key))) + "' and Filename = '" +
                   SqlQuote(entryNode.Text) + "' and [Position] = " + std::string(SqlNumber(position)),
               *mainModule.Connection);
    std::string fileId = entry.RecordCount() > 0 ? entry.Fields(0).Text() : std::string();
    entry.Close();
    return fileId;
}

} // namespace quavernet
