#include "app/EndWord.h"

#include "app/TextNumbers.h"
#include "support/LogicTest.h"

namespace quavernet::test {

namespace {
class EndWordTest : public LogicTest {};
} // namespace

TEST_F(EndWordTest, TimesReadAsOnAClockWithoutLeadingNoughts) {
    EXPECT_EQ(DurationText(0), "0:00");
    EXPECT_EQ(DurationText(4), "0:04");
    EXPECT_EQ(DurationText(750), "12:30");
    EXPECT_EQ(DurationText(3599), "59:59");
    EXPECT_EQ(DurationText(3600), "1:00:00");
    EXPECT_EQ(DurationText(90061), "25:01:01");
    EXPECT_EQ(DurationText(-5), "0:00") << "the clock was put back";
}

TEST_F(EndWordTest, ThePiecesComeInTheirOrderAndTheTimeLast) {
    EndWord end;
    end.Count(56, Texts::NewFiles);
    end.Count(3, Texts::UpdatedFiles);
    end.Count(2, Texts::SkippedFiles);
    clock.now.second += 4;
    EXPECT_EQ(end.Done(), "Fertig: 56 neu, 3 aktualisiert, 2 übergangen, 0:04");
    EXPECT_EQ(end.Cancelled(), "Abgebrochen nach 0:04: 56 neu, 3 aktualisiert, 2 übergangen");
    EXPECT_EQ(end.EndedEarly(), "Vorzeitig beendet: 56 neu, 3 aktualisiert, 2 übergangen, 0:04");
    settings.values["Language"] = "ENG";
    EXPECT_EQ(EndWord().Cancelled(), "Cancelled after 0:00");
    EXPECT_EQ(EndWord().Done(), "Done: 0:00");
}

TEST_F(EndWordTest, OneOfAKindHasItsOwnText) {
    settings.values["Language"] = "ENG";
    EndWord end;
    for (const std::size_t count : {0U, 1U, 2U}) {
        end.Count(count, Texts::NewEntry, Texts::NewEntries);
    }
    end.Say("that's all");
    EXPECT_EQ(end.Done(), "Done: 0 entries, 1 entry, 2 entries, that's all, 0:00");
}

} // namespace quavernet::test
