// The road of each statement of the details dialog, as StatementRoadTest has it for the rest of the program.
#include "editing/DetailsFixture.h"
#include "editing/SaveDetails.h"
#include "support/EngineStatements.h"
#include "support/QueryPlans.h"
#include "support/StatementRoad.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

// The engine is watched from before the library is opened.
class DetailsRoadTest : private EngineStatements, public DetailsFixture {
protected:
    DetailsRoadTest() : connection(Record()) {}

    /// Two files, each shown and saved twice.
    void ShowAndSave() {
        for (const char* name : {"a.mp3", "b.mp3"}) {
            const std::string path = AddCopy(TaggedMp3("--id3v1-only"), name);
            Load(path);
            File().FillDetailsGenres();
            for (const char* more : {"1", "2"}) {
                EditedDetails edited;
                edited.Texts = {name, std::string(name) + more, std::string(more) + name, "", "", "", ""};
                edited.ToId3v1 = true;
                EXPECT_FALSE(SaveDetails(File(), edited).has_value());
            }
            CoverKey("a", "b");
        }
    }

    RecordingConnection& connection;
};

TEST_F(DetailsRoadTest, OfADialogThatShowsAndSaves) {
    AddCopy(TaggedMp3("--id3v1-only"), "first.mp3");
    const StatementRoad road(connection);
    ShowAndSave();
    std::vector<std::string> kinds = road.Kinds();
    std::erase_if(kinds, [](const std::string& kind) { return kind.starts_with("Insert into Files"); });
    EXPECT_THAT(kinds,
                UnorderedElementsAre(
                    "Select Extension from Extensions where Extension_id = (Select Extension_id from Files "
                    "where Path = ?): lifted kept",
                    "Select Genre, Genre_id from Genres Order By Genre: kept",
                    "Select Title_id from Titel where Name = ?: lifted kept",
                    "Insert into Titel (Name) values (?): lifted kept",
                    "Select Inter_id from Interpret where Interpret = ?: lifted kept",
                    "Insert into Interpret (Interpret) values (?): lifted kept",
                    "Select Inter_id from Interpret: kept",
                    "Select Album_id from Albums where Name = ?: lifted kept",
                    "Insert into Albums (Name) values (?): lifted kept", "Select Album_id from Albums: kept",
                    "Select Title_id from Titel: kept",
                    "Update Files set Inter_id = ?, Title_id = ?, Genre_id = ?, Album_id = ? where Path = "
                    "?: lifted kept guarded"));
}

TEST_F(DetailsRoadTest, ReadsWithoutAnOrderComeByKeySoThatTheLastRowIsTheNewest) {
    const StatementRoad road(connection);
    ShowAndSave();
    std::vector<std::string> others;
    for (const std::string& query : QueriesWithoutOrder(road)) {
        if (!ComesByKey(Connection(), query) || Sorts(Connection(), query)) {
            others.push_back(query);
        }
    }
    EXPECT_THAT(others, ElementsAre(StartsWith("Select Extension from Extensions"))) << "a single row";
    EXPECT_GE(QueriesWithoutOrder(road).size(), 7U);
}

} // namespace
} // namespace quavernet::test
