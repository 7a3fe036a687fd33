// The road of each statement that the dialogs of this room send, as StatementRoadTest has it for the rest of
// the program.
#include "support/EngineStatements.h"
#include "support/QueryPlans.h"
#include "support/StatementRoad.h"

#include "editing/FileNameTools.h"
#include "editing/FileNamesEditor.h"
#include "editing/ListedFilesTest.h"

#include <gmock/gmock.h>

namespace quavernet::test {
namespace {

using ::testing::ElementsAre;

// The engine is watched from before the library is opened.
class EditingRoadTest : private EngineStatements, public ListedFilesTest {};

TEST_F(EditingRoadTest, OfRenames) {
    AddFile("a_1.mp3");
    AddFile("b_2.mp3");
    Select({1, 2});
    FileNamesEditor editor;
    editor.CleanUpAll(ReplaceUnderscores);
    const StatementRoad road(Record());
    editor.cmdSave_Click(work);
    EXPECT_THAT(road.Kinds(),
                ElementsAre("Update Files set Path = ?,  Name = ? where Path  = ?: lifted kept guarded"));
}

} // namespace
} // namespace quavernet::test
