#include "extras/CoverSearchOptions.h"

#include "support/LogicTest.h"

namespace quavernet::test {

namespace {
class CoverSearchOptionsTest : public LogicTest {};
} // namespace

TEST_F(CoverSearchOptionsTest, SearchAndDialogEachHaveADefaultOfTheirOwn) {
    EXPECT_EQ(SearchTemplate(), "http://covers.example.org/search.php?action=search&what=#coverstring#"
                                "&category=audio&submit=++Suche++");
    EXPECT_EQ(ShownSearchTemplate(), "http://artwork.example.org/search.php?search=#coverstring#&&cat=1");
    EXPECT_EQ(ShownSearchTemplate(), ExampleSearchTemplate());
    EXPECT_TRUE(settings.values.empty()) << "a default is never stored";
}

TEST_F(CoverSearchOptionsTest, AStoredTemplateCountsForBothAsItIs) {
    for (const char* text : {"", "  Bilder \"von\" #coverstring# und #coverstring# ", "ftp://x/ü'"}) {
        SaveSearchTemplate(text);
        EXPECT_EQ(settings.values["Coverstring"], text);
        EXPECT_EQ(SearchTemplate(), text);
        EXPECT_EQ(ShownSearchTemplate(), text);
    }
}

} // namespace quavernet::test
