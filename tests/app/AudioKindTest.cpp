#include "app/AudioKind.h"

#include <gtest/gtest.h>

namespace quavernet::test {

TEST(AudioKindTest, TheEndOfTheNameTellsTheKindInAnyCase) {
    EXPECT_EQ(AudioKindOf("/m/One.mp3"), AudioKind::Mp3);
    EXPECT_EQ(AudioKindOf("/m/One.MP3"), AudioKind::Mp3);
    EXPECT_EQ(AudioKindOf("/m/Ömer.wAv"), AudioKind::Wav);
    EXPECT_EQ(AudioKindOf("One.Ogg"), AudioKind::Ogg);
    EXPECT_EQ(AudioKindOf(".ogg"), AudioKind::Ogg);
}

TEST(AudioKindTest, EveryOtherNameIsNoMusic) {
    for (const char* name :
         {"", "mp3", "/m/mp3", "/m/One.mp3 ", "/m/One.flac", "/m/One.mp3.txt", "/m/Ömp3"}) {
        EXPECT_EQ(AudioKindOf(name), AudioKind::None) << name;
    }
}

} // namespace quavernet::test
