#include "browser/ListQuery.h"
#include "support/TestLibrary.h"

namespace quavernet::test {

class PageMemoryTest : public LibraryTest {
protected:
    std::int64_t Kilobytes() { return -mainModule.Connection->Query("pragma cache_size").At(0, 0).Integer(); }
    void LoadList() { mainModule.Connection->Query(ListStatement({}, {})); }
};

TEST_F(PageMemoryTest, AListNeedsFewPages) {
    EXPECT_EQ(Kilobytes(), 4096);
    LoadList();
    EXPECT_EQ(Kilobytes(), 4096);
}

TEST_F(PageMemoryTest, AWriteGetsManyUntilTheNextList) {
    Execute("Insert into Interpret (Interpret) values ('Nena')");
    EXPECT_EQ(Kilobytes(), 16384);
    LoadList(); // Inside of the gathered transaction: more writes may come.
    EXPECT_EQ(Kilobytes(), 16384);
    mainModule.Connection->Commit();
    EXPECT_EQ(Kilobytes(), 16384);
    LoadList();
    EXPECT_EQ(Kilobytes(), 4096);
}

TEST_F(PageMemoryTest, OtherOrderedQueriesChangeNothing) {
    Execute("Insert into Categories (Category) values ('Jazz')");
    mainModule.Connection->Commit();
    mainModule.Connection->Query("Select C.Category from Categories C order by C.Category ASC");
    EXPECT_EQ(Kilobytes(), 16384);
}

} // namespace quavernet::test
