// The road of each statement of the covers, as StatementRoadTest has it for the rest of the program.
#include "extras/CoversTest.h"
#include "support/EngineStatements.h"
#include "support/QueryPlans.h"
#include "support/StatementRoad.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::UnorderedElementsAre;

// The engine is watched from before the library is opened.
class CoversRoadTest : private EngineStatements, public CoversTest {
protected:
    CoversRoadTest() : connection(Record()) {
        AddAlbum("Abba", "Arrival");
        AddAlbum("Cure", "Wish");
        Connection().Commit();
    }

    /// Two albums, each given two images and looked at twice.
    void GiveCovers() {
        covers.LoadAlbumList();
        for (const std::size_t album : {0U, 1U, 0U, 1U}) {
            covers.SelectAlbum(album);
            covers.SetCover(CoverPage::Front, "/front" + std::to_string(album));
            covers.SetCover(CoverPage::Back, "/back" + std::to_string(album));
            covers.SSTab1_Click(CoverPage::Back);
        }
    }

    RecordingConnection& connection;
};

TEST_F(CoversRoadTest, OfAWindowThatShowsAndSaves) {
    const StatementRoad road(connection);
    GiveCovers();
    EXPECT_THAT(
        road.Kinds(),
        UnorderedElementsAre(
            "Select distinct A.Name, A.Album_id, I.Interpret, I.Inter_id from (Albums A Inner Join Files F "
            "On "
            "A.Album_id = F.Album_id) Inner Join Interpret I On F.Inter_id = I.Inter_id Order By "
            "I.Interpret:",
            "Select Album_id from Files where Album_id = ?: lifted kept",
            "Select Front, Back, CD, CD2, Inlay, Inlet from Covers where Album_id = ? and Interpret_id = ?: "
            "lifted kept",
            "Select Cover_id from Covers where  Album_id = ? and Interpret_id = ?: lifted kept",
            "Insert Into Covers (Album_id, Interpret_id, Front, Back, CD, CD2, Inlay, Inlet) values (?, ?, "
            "?, ?, "
            "?, ?, ?, ?): lifted kept",
            "Update Covers Set Front = ?, Back = ?, CD = ?, CD2 = ?, Inlay = ?, Inlet = ? where Cover_id = "
            "?: "
            "lifted kept guarded"));
}

TEST_F(CoversRoadTest, ReadsWithoutAnOrderComeByKeyWithoutASort) {
    const StatementRoad road(connection);
    GiveCovers();
    for (const std::string& query : QueriesWithoutOrder(road)) {
        EXPECT_TRUE(ComesByKey(Connection(), query)) << query;
        EXPECT_FALSE(Sorts(Connection(), query)) << query;
    }
    EXPECT_EQ(QueriesWithoutOrder(road).size(), 3U);
}

} // namespace
} // namespace quavernet::test
