#include "app/DragState.h"
#include "app/MainModule.h"
#include "library/SqlQuote.h"
#include "platform/RegionalSettings.h"
#include "tree/DropRun.h"
#include "tree/NodeKey.h"
#include "tree/PlaceNow.h"
#include "tree/TreeModel.h"

namespace quavernet {

namespace {

/// The statements of a drag inside the tree. The dragged entry is known by what the press has remembered of
/// it, and in a move by the selected node's id.
class EntryDrop {
public:
    explicit EntryDrop(DropRun& run)
        : m_run(run), m_drag(run.drag), m_target(run.node.Category), m_position(run.drag.DragPosition),
          m_pos(std::to_string(run.pos)) {}

    /// For a tree that another program has changed since the press. False if the dragged entry is gone, or in
    /// another category.
    bool FollowSource() {
        if (!IsEntrySelected()) {
            return true; // The statements fail as they always do.
        }
        const auto position =
            PositionNow(GetFileCategoryIdFromKey(m_run.tree.SelectedItem().Key), m_drag.DragCategory);
        m_position = position.value_or("");
        return position.has_value();
    }

    void OnEntry() {
        ReadTarget();
        ReadSource();
        if (m_run.request.Control) {
            CopyToEntry(m_targetCategoryId == m_sourceCategoryId);
        } else {
            if (m_targetCategoryId == m_sourceCategoryId) {
                MoveInCategory();
            } else {
                MoveToOtherCategory();
            }
        }
    }

    void MoveToCategory() {
        ReadTargetByName();
        TakeSelectedEntry();
        Execute("Update FileCategories set [Position] = " + m_pos + ", Category_id = " + m_targetCategoryId +
                ", Parent = '" + Target() + "' where [Position] = " + Position() + " and Parent = '" +
                Category() + "' and FileName = '" + SqlQuote(m_drag.DragText) +
                "' and Filecategory_id = " + m_selectedEntryId);
        // After the move: an entry that was dropped on its own category is now after the others, and moves
        // up with them to the last place.
        CloseGap();
    }

    void CopyToCategory() {
        ReadFileByPlace();
        ReadTargetByName();
        ADODB::Recordset highest;
        highest.Open("Select Max([Position]) from FileCategories where Parent = '" + Target() + "'",
                     *mainModule.Connection);
        // A copy goes after the highest position; a move goes after the number of entries. Without entries it
        // is 1.
        m_run.pos = Narrow16(highest.Fields(0).Number() + 1);
        m_pos = std::to_string(m_run.pos);
        highest.Close();
        Insert(std::string(SqlPlain(m_drag.DragText)));
    }

private:
    bool IsEntrySelected() const {
        return m_run.tree.HasSelection() && KindOfKey(m_run.tree.SelectedItem().Key) == NodeKind::File;
    }

    static void Execute(const std::string& statement) { mainModule.Connection->Execute(statement); }

    std::string Target() const { return std::string(SqlPlain(m_target)); }
    std::string Category() const { return std::string(SqlPlain(m_drag.DragCategory)); }
    /// A dragged category has no number here. That fails, so a category can't be moved.
    std::string Position() const { return std::string(SqlNumber(m_position)); }
    /// Throws RuntimeError if no entry is selected; what was written before stays.
    void TakeSelectedEntry() { m_selectedEntryId = GetFileCategoryIdFromKey(m_run.tree.SelectedItem().Key); }

    std::string Source() const {
        return "FileName = '" + SqlQuote(m_drag.DragText) + "' and [Position] = " + Position() +
               " and Parent = '" + Category() + "'";
    }

    void ReadTarget() {
        ADODB::Recordset rows;
        rows.Open("Select Category_id from FileCategories where FileName = '" + SqlQuote(m_run.node.Text) +
                      "' and [Position] = " + m_pos + " and Parent = '" + Target() + "'",
                  *mainModule.Connection);
        m_targetCategoryId = rows.Fields(0).Text();
        rows.Close();
    }

    void ReadSource() {
        ADODB::Recordset rows;
        rows.Open("Select Category_id, FileCategory_id from FileCategories where " + Source(),
                  *mainModule.Connection);
        m_sourceCategoryId = rows.Fields(0).Text();
        m_run.entryId = Narrow16(rows.Fields(1).Number()); // Has 16 bits; a higher id ends the drop here.
        rows.Close();
    }

    void ReadFile(const std::string& condition) {
        ADODB::Recordset rows;
        rows.Open("Select File_id from FileCategories where " + condition, *mainModule.Connection);
        m_fileId = rows.Fields(0).Text();
        rows.Close();
    }

    // By position alone; Source also compares the name.
    void ReadFileByPlace() { ReadFile("[Position] = " + Position() + " and Parent = '" + Category() + "'"); }

    void ReadTargetByName() {
        ADODB::Recordset rows;
        rows.Open("Select Category_id from Categories where Category = '" + Target() + "'",
                  *mainModule.Connection);
        m_targetCategoryId = rows.Fields(0).Text();
        rows.Close();
    }

    // The entry waits at position 0 while the others close up or make room.
    void MoveInCategory() {
        TakeSelectedEntry();
        Execute("Update FileCategories set [Position] = 0 where [Position] = " + Position() +
                " and Parent = '" + Target() + "' and FileCategory_id = " + m_selectedEntryId);
        if (Val(m_position) <= m_run.pos) {
            Execute("Update FileCategories set [Position] = [Position] - 1 where ([Position] > " +
                    Position() + " and [Position] <= " + m_pos + " and Parent = '" + Target() +
                    "') and [Position] <> 0");
        } else {
            Execute("Update FileCategories set [Position] = [Position] + 1 where ([Position] >= " + m_pos +
                    " and [Position] < " + Position() + " and Parent = '" + Target() +
                    "') and [Position] <> 0");
        }
        Execute("Update FileCategories set [Position] = " + m_pos + " where [Position] = 0 and Parent = '" +
                Target() + "' and Filecategory_id = " + m_selectedEntryId);
    }

    void MakeRoom() {
        Execute("Update FileCategories set [Position] = [Position] + 1 where [Position] >= " + m_pos +
                " and Parent = '" + Target() + "'");
    }

    void CloseGap() {
        Execute("Update FileCategories set [Position] = [Position] - 1 where [Position] > " + Position() +
                " and Parent = '" + Category() + "'");
    }

    void MoveToOtherCategory() {
        ReadFile(Source());
        MakeRoom();
        CloseGap();
        TakeSelectedEntry();
        // The next entry of the source has just come to the old position: name and id pick the right row.
        Execute("Update FileCategories set [Position] = " + m_pos + ", Category_id = " + m_targetCategoryId +
                ", Parent = '" + Target() + "' where [Position] = " + Position() + " and Parent = '" +
                Category() + "' and Filename = '" + SqlQuote(m_drag.DragText) +
                "' and FileCategory_id = " + m_selectedEntryId);
    }

    // The name goes in as it is inside a category: one with an apostrophe fails, after room has been made.
    // To another category it goes in quoted twice: each apostrophe is stored doubled.
    void CopyToEntry(bool isSameCategory) {
        ReadFile(Source());
        MakeRoom();
        Insert(isSameCategory ? std::string(SqlPlain(m_drag.DragText)) : SqlQuote(SqlQuote(m_drag.DragText)));
    }

    void Insert(const std::string& fileName) {
        Execute("Insert Into FileCategories (File_id, Category_id, [Position], Parent, FileName) values (" +
                m_fileId + ", " + m_targetCategoryId + ", " + m_pos + ", '" + Target() + "', '" + fileName +
                "')");
    }

    DropRun& m_run;
    const DragState& m_drag;
    const std::string& m_target;
    std::string m_position; ///< Of the dragged entry.
    std::string m_pos;
    std::string m_targetCategoryId;
    std::string m_sourceCategoryId;
    std::string m_selectedEntryId;
    std::string m_fileId;
};

} // namespace

DropEnd DropTreeEntry(DropRun& run) {
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    const bool mayHaveMoved = run.watch.HasNews();
    if (mayHaveMoved && !FollowTarget(run)) {
        return DropEnd::Done;
    }
    EntryDrop drop(run);
    if (mayHaveMoved && !drop.FollowSource()) {
        return DropEnd::Done;
    }
    if (run.hadFileTarget) {
        drop.OnEntry();
    } else if (run.request.Control) {
        drop.CopyToCategory();
    } else {
        // A category that holds entries shows its length, and so differs from its name here: an entry may be
        // dropped on its own category, and goes to its end.
        if (run.node.Text == run.drag.DragCategory) {
            return DropEnd::Ended;
        }
        drop.MoveToCategory();
    }
    return DropEnd::Done;
}

} // namespace quavernet
