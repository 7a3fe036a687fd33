// The road of each statement that the tree sends, as StatementRoadTest has it for the rest of the program.
#include "support/EngineStatements.h"
#include "support/QueryPlans.h"
#include "support/StatementRoad.h"
#include "tree/TreeDropTest.h"

namespace quavernet::test {
namespace {

using ::testing::IsSupersetOf;

// The engine is watched from before the library is opened.
class TreeRoadTest : private EngineStatements, public TreeDropTest {
protected:
    /// Each case of the drop, twice.
    void DropAll() {
        for (const char* name : {"x.mp3", "y.mp3"}) {
            WriteMp3(name);
            AddFile(name[0] * 10, name);
        }
        WriteBytes(music / "One.m3u", "");
        WriteBytes(music / "Two.m3u", (music / "x.mp3") + "\n" + (music / "y.mp3"));
        for (int round = 0; round < 2; ++round) {
            FillAgain();
            Step({KnownPath("x.mp3"), KnownPath("y.mp3")}, "file102pos2");
            Step({KnownPath("x.mp3"), KnownPath("y.mp3")}, "CAT_Empty");
            SelectRows({"b1", "b2"});
            Step({}, "file101pos1");
            SelectRows({"b1"});
            Step({}, "CAT_Empty");
            for (const bool control : {false, true}) {
                FillAgain();
                for (const char* target : {"file105pos5", "file201pos1", "CAT_Blues"}) {
                    LoadTree(tree);
                    Press("file106pos6");
                    Step({}, target, control);
                    FillAgain();
                }
                Press("file102pos2");
                Step({}, "file105pos5", control);
            }
            Step({music / (round == 0 ? "One.m3u" : "Two.m3u")}, "");
        }
    }

private:
    void FillAgain() {
        // What the other program runs then belongs to this statement, and not to the last one of a drop.
        (void)Value("Select Max(Category_id) from Categories");
        Connection().Commit();
        const auto other = OpenLibrary(libraryPath);
        other->Execute("Delete from FileCategories");
        other->Execute("Delete from Categories");
        other->Execute("Delete from Files where File_id < 1000");
        other->Commit();
        other->Execute("Insert into Categories (Category_id, Category) values (3, 'Empty')");
        Fill(*other, 1, "Jazz", "j", 6);
        Fill(*other, 2, "Blues", "b", 3);
        other->Commit();
        LoadTree(tree);
    }
    static void Fill(ADODB::Connection& library, int id, const std::string& category,
                     const std::string& letter, int entries) {
        library.Execute("Insert into Categories (Category_id, Category) values (" + std::to_string(id) +
                        ", '" + category + "')");
        for (int i = 1; i <= entries; ++i) {
            const std::string key = std::to_string(id * 100 + i);
            const std::string name = "'" + letter + std::to_string(i) + "'";
            library.Execute("Insert into Files (File_id, Name, Path, Length) values (" + key + ", " + name +
                            ", '/m/' || " + name + ", 60)");
            library.Execute("Insert into FileCategories (FileCategory_id, File_id, Category_id, Position, "
                            "Parent, Filename) values (" +
                            key + ", " + key + ", " + std::to_string(id) + ", " + std::to_string(i) + ", '" +
                            category + "', " + name + ")");
        }
    }
    void Step(const std::vector<std::string>& files, const std::string& target, bool control = false) {
        const DropOutcome outcome = TreeDrop({files, target, control}, drag, tree, driver, work);
        EXPECT_TRUE(outcome.Rebuild) << target;
        EndTreeDrop(drag, work);
    }
};

// Beside the loading of the tree and the store of new files, which the other tests have.
TEST_F(TreeRoadTest, OfTheDrop) {
    const StatementRoad road(connection);
    DropAll();
    EXPECT_THAT(
        road.Kinds(),
        IsSupersetOf({"Select Category_id from Categories where Category = ?: lifted kept remembered",
                      "Update FileCategories set [Position] = [Position] + ? where ([Position] >= ? and "
                      "Parent = ?): partly lifted kept",
                      "Select Path from Files where Path = ?: lifted kept",
                      "Select File_id, Name from Files where Path = ?: lifted kept",
                      "Insert Into FileCategories (File_id, Category_id, [Position], Parent, Filename) "
                      "values (?, ?, ?, ?, ?): lifted kept",
                      "Select Category_id, Category from Categories where Category = ?: lifted kept",
                      "Insert Into FileCategories (File_id, Category_id, [Position], Parent, FileName) "
                      "values (?, ?, ?, ?, ?): lifted kept",
                      "Select Max(FileCategory_id) from FileCategories: kept",
                      "Select Category_id from FileCategories where FileName = ? and [Position] = ? and "
                      "Parent = ?: lifted kept",
                      "Select Category_id, FileCategory_id from FileCategories where FileName = ? and "
                      "[Position] = ? and Parent = ?: lifted kept",
                      "Update FileCategories set [Position] = ? where [Position] = ? and Parent = ? and "
                      "FileCategory_id = ?: lifted kept",
                      "Update FileCategories set [Position] = [Position] + ? where ([Position] >= ? and "
                      "[Position] < ? and Parent = ?) and [Position] <> ?: partly lifted kept",
                      "Update FileCategories set [Position] = ? where [Position] = ? and Parent = ? and "
                      "Filecategory_id = ?: lifted kept",
                      "Select File_id from FileCategories where FileName = ? and [Position] = ? and Parent = "
                      "?: lifted kept",
                      "Update FileCategories set [Position] = [Position] + ? where [Position] >= ? and "
                      "Parent = ?: partly lifted kept",
                      "Update FileCategories set [Position] = [Position] - ? where [Position] > ? and Parent "
                      "= ?: partly lifted kept",
                      "Update FileCategories set [Position] = ?, Category_id = ?, Parent = ? where "
                      "[Position] = ? and Parent = ? and Filename = ? and FileCategory_id = ?: lifted kept",
                      "Update FileCategories set [Position] = ?, Category_id = ?, Parent = ? where "
                      "[Position] = ? and Parent = ? and FileName = ? and Filecategory_id = ?: lifted kept",
                      "Update FileCategories set [Position] = [Position] - ? where ([Position] > ? and "
                      "[Position] <= ? and Parent = ?) and [Position] <> ?: partly lifted kept",
                      "Select File_id from FileCategories where [Position] = ? and Parent = ?: lifted kept",
                      "Select Max([Position]) from FileCategories where Parent = ?: lifted kept",
                      "Select * from Categories where Category = ?: lifted kept",
                      "Insert Into Categories (Category) values (?): lifted kept",
                      "Select Category_id from Categories: kept"}));
}

TEST_F(TreeRoadTest, EveryReadOfTheDropComesByKeyWithoutASort) {
    const StatementRoad road(connection);
    DropAll();
    const std::vector<std::string> queries = QueriesWithoutOrder(road);
    EXPECT_GE(queries.size(), 9U);
    for (const std::string& query : queries) {
        EXPECT_TRUE(ComesByKey(Connection(), query)) << query;
        EXPECT_FALSE(Sorts(Connection(), query)) << query;
    }
}

} // namespace
} // namespace quavernet::test
