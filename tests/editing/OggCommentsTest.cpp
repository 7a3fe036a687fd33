#include "editing/OggComments.h"

#include <gmock/gmock.h>

namespace quavernet::test {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// The comments after the dialog's own six.
std::vector<std::string> Kept(const std::vector<std::string>& old) {
    std::vector<std::string> comments = EditedComments({}, old);
    comments.erase(comments.begin(), comments.begin() + 6);
    return comments;
}

} // namespace

TEST(OggCommentsTest, TheSixOfTheDialogComeFirstAlsoEmptyOnes) {
    EXPECT_THAT(EditedComments({"Lied", "Künstler", "Größe", "1999", "Rock", "Wort", "Label"}, {}),
                ElementsAre("TITLE=Lied", "ARTIST=Künstler", "GENRE=Rock", "ALBUM=Größe", "DATE=1999",
                            "COMMENT=Wort"));
    EXPECT_THAT(EditedComments({}, {}),
                ElementsAre("TITLE=", "ARTIST=", "GENRE=", "ALBUM=", "DATE=", "COMMENT="));
}

TEST(OggCommentsTest, WhatTheDialogDoesNotEditIsKeptInItsOrder) {
    EXPECT_THAT(Kept({"TRACKNUMBER=7", "title=alt", "ORGANIZATION=Label", "TRACKNUMBER=7", "no sign", "",
                      "Artist=x", "ISRC=1"}),
                ElementsAre("TRACKNUMBER=7", "ORGANIZATION=Label", "TRACKNUMBER=7", "no sign", "", "ISRC=1"));
}

TEST(OggCommentsTest, ACommentGoesIfOneOfTheWordsStandsAnywhereInIt) {
    EXPECT_THAT(Kept({"ALBUMARTIST=Various", "SUBTITLE=x", "DESCRIPTION=my first aLbUm", "X=updated",
                      "genre=Pop", "DATES", "X=comments"}),
                IsEmpty());
}

TEST(OggCommentsTest, TheFirstLineOfACommentDecidesForAllOfIt) {
    EXPECT_THAT(Kept({"LYRICS=a\nmy album title\nb", "COMMENT=a\nb", "LYRICS=date\nb"}),
                ElementsAre("LYRICS=a\nmy album title\nb"));
}

TEST(OggCommentsTest, PicturesAreKeptWhateverLettersTheirDataHold) {
    EXPECT_THAT(Kept({"METADATA_BLOCK_PICTURE=AAdateTITLE", "metadata_block_picture=xALBUMx",
                      "COVERART=genre", "METADATA_BLOCK_PICTURE_TITLE=x"}),
                ElementsAre("METADATA_BLOCK_PICTURE=AAdateTITLE", "metadata_block_picture=xALBUMx",
                            "COVERART=genre"));
}

} // namespace quavernet::test
