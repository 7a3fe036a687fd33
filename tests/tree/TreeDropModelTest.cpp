// Random sequences of drops, held after each against what the outcomes say.
#include "tree/TreeDropModel.h"

#include "app/DragState.h"
#include "scanner/ScanDriver.h"
#include "support/LongWorkDouble.h"
#include "support/ScanDoubles.h"
#include "support/TestLibrary.h"
#include "tree/NodeKey.h"
#include "tree/TreeDrag.h"
#include "tree/TreeDrop.h"
#include "tree/TreeModel.h"

#include <cstdlib>
#include <memory>
#include <random>
#include <sstream>

namespace quavernet::test {
namespace {

const std::vector<std::string> Categories{"Jazz", "Blues", "Pop"};
constexpr int Files = 6;

const std::vector<std::string> Names{"", "f1.mp3", "f2.mp3", "f3.mp3", "f4.mp3", "f5.mp3", "f6.mp3"};

const std::string& NameOf(int file) {
    return Names[static_cast<std::size_t>(file)];
}

int IdOf(const std::string& category) {
    return static_cast<int>(std::find(Categories.begin(), Categories.end(), category) - Categories.begin()) +
           1;
}

std::string KeyOf(const TreeDropModel::Entry& entry) {
    return FileKey(std::to_string(entry.id), std::to_string(entry.position));
}

/// Takes the time of commits out of a test that looks at none.
class WithoutCommits : public ADODB::Connection {
public:
    explicit WithoutCommits(std::unique_ptr<ADODB::Connection> real) : m_real(std::move(real)) {}
    void Open(std::string_view) override {}
    void Execute(std::string_view statement) override { m_real->Execute(statement); }
    ADODB::RowBlock Query(std::string_view statement) override { return m_real->Query(statement); }
    ADODB::RowBlock QueryFirst(std::string_view statement, std::size_t most) override {
        return m_real->QueryFirst(statement, most);
    }
    void Commit() override {}
    std::int64_t ChangesOfOthers() override { return m_real->ChangesOfOthers(); }
    void LockWrites() override { m_real->LockWrites(); }
    void UnlockWrites() noexcept override { m_real->UnlockWrites(); }

private:
    std::unique_ptr<ADODB::Connection> m_real;
};

class TreeDropModelTest : public LibraryTest {
protected:
    TreeDropModelTest() {
        mainModule.Connection = std::make_unique<WithoutCommits>(std::move(mainModule.Connection));
        for (const std::string& category : Categories) {
            Execute("Insert into Categories (Category) values ('" + category + "')");
        }
        for (int file = 1; file <= Files; ++file) {
            Execute("Insert into Files (Name, Path, Length) values ('" + NameOf(file) + "', '/" +
                    NameOf(file) + "', 60)");
        }
    }

    void Sequence(unsigned seed) {
        m_random.seed(seed);
        m_log.str("");
        FillAtRandom();
        for (int drop = Pick(1, 3); drop > 0 && !HasFailure(); --drop) {
            ShowModel();
            RandomDrop();
            Compare();
        }
    }

private:
    int Pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_random); }
    const std::string& PickCategory() { return Categories[static_cast<std::size_t>(Pick(0, 2))]; }
    TreeDropModel::Entry PickEntry() {
        return m_model
            .entries[static_cast<std::size_t>(Pick(0, static_cast<int>(m_model.entries.size()) - 1))];
    }

    static std::string ValuesOf(const TreeDropModel::Entry& e) {
        return "(" + std::to_string(e.id) + ", " + std::to_string(e.file) + ", " +
               std::to_string(IdOf(e.category)) + ", " + std::to_string(e.position) + ", '" + e.category +
               "', '" + NameOf(e.name) + "')";
    }

    // Half of the categories have gaps. Now and then the ids are about to become too large.
    void FillAtRandom() {
        m_model = TreeDropModel();
        m_model.lastId = Pick(0, 19) == 0 ? TreeDropModel::HighestId - 8 : 0;
        std::string values;
        for (const std::string& category : Categories) {
            const int gap = Pick(0, 1) * Pick(1, 9);
            int position = 0;
            for (int count = Pick(0, 4); count > 0; --count) {
                position += 1 + Pick(0, gap);
                const int file = Pick(1, Files);
                m_model.entries.push_back({++m_model.lastId, file, file, position, category});
                values += (values.empty() ? "" : ", ") + ValuesOf(m_model.entries.back());
            }
        }
        Execute("Delete from FileCategories");
        Execute("Update sqlite_sequence set seq = " + std::to_string(m_model.lastId) +
                " where name = 'FileCategories'");
        if (!values.empty()) {
            Execute("Insert into FileCategories (FileCategory_id, File_id, Category_id, Position, Parent, "
                    "Filename) values " +
                    values);
        }
    }

    // The tree as it is after a rebuild.
    void ShowModel() {
        m_tree = TreeModel();
        TreeNode& root = m_tree.Add(nullptr, std::string(RootKey), "Bibliothek", "", "");
        for (const std::string& category : Categories) {
            const int count = m_model.Count(category);
            const std::string length = count == 0 ? "" : " (0" + std::to_string(count) + ":00)";
            m_tree.Add(&root, CategoryKey(category), category + length, "", "");
        }
        for (const TreeDropModel::Entry& e : m_model.entries) {
            m_tree.Add(&m_tree.Node(CategoryKey(e.category)), KeyOf(e), NameOf(e.file), "", "");
        }
    }

    void RandomDrop() {
        if (m_model.entries.empty() || Pick(0, 2) == 0) {
            DropManyFiles();
        } else {
            DropOneEntry();
        }
    }

    void DropManyFiles() {
        const bool fromGrid = Pick(0, 1) == 0;
        std::vector<int> files;
        std::vector<std::string> paths;
        mainModule.FilePaths.Clear();
        mainModule.SelectedRows.Clear();
        for (int count = Pick(1, 3); count > 0; --count) {
            files.push_back(Pick(1, Files));
            paths.push_back("/" + NameOf(files.back()));
            mainModule.FilePaths.Add(paths.back());
            mainModule.SelectedRows.Add(static_cast<std::int32_t>(paths.size()));
        }
        m_drag = DragState();
        m_drag.GridDragging = fromGrid;
        const bool onEntry = !m_model.entries.empty() && Pick(0, 1) == 0;
        if (!onEntry) {
            const std::string category = PickCategory();
            Drop(paths, CategoryKey(category), false);
            Expect(m_model.FilesToCategory(files, category));
            return;
        }
        const TreeDropModel::Entry target = PickEntry();
        Drop(paths, KeyOf(target), Pick(0, 1) == 0);
        Expect(fromGrid ? m_model.RowsToEntry(files, target) : m_model.FilesToEntry(files, target));
    }

    void DropOneEntry() {
        const TreeDropModel::Entry dragged = PickEntry();
        const bool copies = Pick(0, 1) == 0;
        TreePress(m_tree, KeyOf(dragged), false, m_drag);
        if (Pick(0, 2) == 0) {
            const std::string category = PickCategory();
            Drop({m_drag.DragFilePath}, CategoryKey(category), copies);
            Expect(copies ? m_model.CopyToCategory(dragged, category)
                          : m_model.MoveToCategory(dragged, category));
            return;
        }
        const TreeDropModel::Entry target = PickEntry();
        Drop({m_drag.DragFilePath}, KeyOf(target), copies);
        if (dragged.file == target.file) {
            Expect({false}); // They show the same text.
        } else if (copies) {
            Expect(m_model.CopyToEntry(dragged, target));
        } else if (dragged.category == target.category) {
            Expect(m_model.MoveInside(dragged, target));
        } else {
            Expect(m_model.MoveToEntry(dragged, target));
        }
    }

    void Drop(const std::vector<std::string>& files, const std::string& key, bool control) {
        m_log << (m_drag.DragFromTree ? m_drag.DragText + " of " + m_drag.DragCategory : "files ") << " -> "
              << key << (control ? " with Ctrl\n" : "\n");
        m_outcome = TreeDrop({files, key, control}, m_drag, m_tree, m_driver, m_work);
        EndTreeDrop(m_drag, m_work);
        m_calls.clear();
    }

    void Expect(const TreeDropModel::End& end) {
        EXPECT_EQ(m_outcome.Rebuild, end.rebuild) << m_log.str();
        if (end.rebuild && end.selectedId > 0) {
            EXPECT_TRUE(m_outcome.HadFileTarget) << m_log.str();
            EXPECT_EQ(m_outcome.SelectKey,
                      FileKey(std::to_string(end.selectedId), std::to_string(end.selectedPosition)))
                << m_log.str();
        }
    }

    void Compare() {
        const ADODB::RowBlock rows = Connection().Query(
            "Select FileCategory_id, File_id, Category_id, [Position], Parent, Filename from FileCategories");
        bool isSame = rows.Rows() == m_model.entries.size();
        for (std::size_t row = 0; isSame && row < rows.Rows(); ++row) {
            const TreeDropModel::Entry& e = m_model.entries[row];
            isSame = rows.At(row, 0).Integer() == e.id && rows.At(row, 1).Integer() == e.file &&
                     rows.At(row, 2).Integer() == IdOf(e.category) &&
                     rows.At(row, 3).Integer() == e.position && rows.At(row, 4).View() == e.category &&
                     rows.At(row, 5).View() == NameOf(e.name);
        }
        if (!isSame) {
            ShowDifference(rows);
        }
    }

    void ShowDifference(const ADODB::RowBlock& rows) const {
        std::vector<std::string> found;
        for (std::size_t row = 0; row < rows.Rows(); ++row) {
            found.push_back("(" + rows.At(row, 0).Text() + ", " + rows.At(row, 1).Text() + ", " +
                            rows.At(row, 2).Text() + ", " + rows.At(row, 3).Text() + ", '" +
                            rows.At(row, 4).Text() + "', '" + rows.At(row, 5).Text() + "')");
        }
        std::vector<std::string> expected;
        for (const TreeDropModel::Entry& e : m_model.entries) {
            expected.push_back(ValuesOf(e));
        }
        EXPECT_EQ(found, expected) << m_log.str();
    }

    std::mt19937 m_random;
    std::ostringstream m_log;
    TreeDropModel m_model;
    TreeModel m_tree;
    DragState m_drag;
    DropOutcome m_outcome;
    CallList m_calls;
    LongWorkDouble m_work{m_calls};
    RecordingScanView m_view{m_calls};
    RecordingScanLog m_scanLog{m_calls};
    ScanDriver m_driver{m_work, m_view, m_scanLog};
};

// QUAVERNET_DROP_SEQUENCES=1000000 looks longer.
TEST_F(TreeDropModelTest, RandomSequencesOfDropsComeToWhatTheirOutcomesSay) {
    const char* const wanted = std::getenv("QUAVERNET_DROP_SEQUENCES");
    const unsigned sequences = wanted == nullptr ? 10000 : static_cast<unsigned>(std::atoi(wanted));
    ASSERT_GT(sequences, 0U);
    for (unsigned seed = 1; seed <= sequences && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Sequence(seed);
    }
}

} // namespace
} // namespace quavernet::test
