#include "editing/FileNameTools.h"

#include <gtest/gtest.h>

namespace quavernet::test {
namespace {

/// What each clean-up makes of a name.
struct CleanUp {
    const char* name;
    const char* umlauts;
    const char* numbers;
    const char* brackets;
    const char* underscores;
};

// Half of the names are as nasty as names get: none of them may lose or split a byte that no rule names.
const CleanUp CleanUps[] = {
    {"", "", "", "", ""},
    {"song.mp3", "song.mp3", "song.mp3", "song.mp3", "song.mp3"},
    // Order and case of the umlauts; the sharp s and other accents stay.
    {"Ärger_über_Öl.mp3", "Aerger_ueber_Oel.mp3", "Ärger_über_Öl.mp3", "Ärger_über_Öl.mp3",
     "Ärger über Öl.mp3"},
    {"äÄüÜöÖßéñ.ogg", "aeAeueUeoeOeßéñ.ogg", "äÄüÜöÖßéñ.ogg", "äÄüÜöÖßéñ.ogg", "äÄüÜöÖßéñ.ogg"},
    // A letter and a combining mark is not compared as the one letter that it looks like.
    {"a\u0308 \u00e4", "a\u0308 ae", "a\u0308 \u00e4", "a\u0308 \u00e4", "a\u0308 \u00e4"},
    // Digits of other scripts are none.
    {"12 ٣ ３ ² ①", "12 ٣ ３ ² ①", " ٣ ３ ² ①", "12 ٣ ３ ² ①", "12 ٣ ３ ² ①"},
    // The blank behind a track number stays, and the extension is repaired.
    {"01 - song.mp3", "01 - song.mp3", " - song.mp3", "01 - song.mp3", "01 - song.mp3"},
    {"song 1234567890.mp3", "song 1234567890.mp3", "song .mp3", "song 1234567890.mp3", "song 1234567890.mp3"},
    {"SONG1.MP3", "SONG1.MP3", "SONG.MP3", "SONG1.MP3", "SONG1.MP3"},
    {"1.Mp3", "1.Mp3", ".Mp3", "1.Mp3", "1.Mp3"},
    {"stamp", "stamp", "stamp3", "stamp", "stamp"},
    {"STAMP7", "STAMP7", "STAMP3", "STAMP7", "STAMP7"},
    {"mp", "mp", "mp3", "mp", "mp"},
    {"p", "p", "p", "p", "p"},
    {"mp4", "mp4", "mp3", "mp4", "mp4"},
    {"x.mp34", "x.mp34", "x.mp3", "x.mp34", "x.mp34"},
    {"2001.ogg", "2001.ogg", ".ogg", "2001.ogg", "2001.ogg"},
    {"1234567890", "1234567890", "", "1234567890", "1234567890"},
    // Brackets: in the middle, open, nested, crossed, doubled, empty, closed without being opened.
    {"song (live).mp3", "song (live).mp3", "song (live).mp3", "song .mp3", "song (live).mp3"},
    {"song (live.mp3", "song (live.mp3", "song (live.mp3", "song ", "song (live.mp3"},
    {"a(b(c)d)e.mp3", "a(b(c)d)e.mp3", "a(b(c)d)e.mp3", "ad)e.mp3", "a(b(c)d)e.mp3"},
    {"a(b[c)d]e.mp3", "a(b[c)d]e.mp3", "a(b[c)d]e.mp3", "ad]e.mp3", "a(b[c)d]e.mp3"},
    {"a)b(c.mp3", "a)b(c.mp3", "a)b(c.mp3", "a)b", "a)b(c.mp3"},
    {"()a()b().mp3", "()a()b().mp3", "()a()b().mp3", "ab.mp3", "()a()b().mp3"},
    {"(all)", "(all)", "(all)", "", "(all)"},
    {"[a]{b}<c>（d）", "[a]{b}<c>（d）", "[a]{b}<c>（d）", "[a]{b}<c>（d）", "[a]{b}<c>（d）"},
    // Underscores: each one a blank, nothing trimmed.
    {"_a__b_", "_a__b_", "_a__b_", "_a__b_", " a  b "},
    {"   ", "   ", "   ", "   ", "   "},
    {"_", "_", "_", "_", " "},
    // Not UTF-8: the bytes stay, and an umlaut beside them is found.
    {"\xe4\xf6\xfc_1(x)", "\xe4\xf6\xfc_1(x)", "\xe4\xf6\xfc_(x)", "\xe4\xf6\xfc_1", "\xe4\xf6\xfc 1(x)"},
    {"\xc3ä\xa4_(\xff)1.mp3",
     "\xc3"
     "ae\xa4_(\xff)1.mp3",
     "\xc3ä\xa4_(\xff).mp3", "\xc3ä\xa4_1.mp3", "\xc3ä\xa4 (\xff)1.mp3"},
    {"😀_1(😀)ä.wav", "😀_1(😀)ae.wav", "😀_(😀)ä.wav", "😀_1ä.wav", "😀 1(😀)ä.wav"},
    {"a\n_\t1", "a\n_\t1", "a\n_\t", "a\n_\t1", "a\n \t1"},
};

TEST(FileNameToolsTest, EachCleanUpDoesWhatItsTableSays) {
    for (const CleanUp& row : CleanUps) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ChangeUmlauts(row.name), row.umlauts);
        EXPECT_EQ(RemoveNumbers(row.name), row.numbers);
        EXPECT_EQ(RemoveBrackets(row.name), row.brackets);
        EXPECT_EQ(ReplaceUnderscores(row.name), row.underscores);
    }
}

TEST(FileNameToolsTest, ANameOf255BytesGrowsAsTheRulesSay) {
    std::string umlauts;
    std::string letters;
    for (int i = 0; i < 127; ++i) {
        umlauts += "ü";
        letters += "ue";
    }
    EXPECT_EQ(ChangeUmlauts(umlauts + "x"), letters + "x");
    EXPECT_EQ(RemoveNumbers(std::string(251, '7') + ".mp3"), ".mp3");
    EXPECT_EQ(RemoveBrackets("(" + std::string(253, 'x') + ")"), "");
    EXPECT_EQ(ReplaceUnderscores(std::string(255, '_')), std::string(255, ' '));
}

TEST(FileNameToolsTest, ANulIsACharacterLikeOthers) {
    const std::string name("a\0_1(x)", 7);
    EXPECT_EQ(RemoveNumbers(name), std::string("a\0_(x)", 6));
    EXPECT_EQ(RemoveBrackets(name), std::string("a\0_1", 4));
    EXPECT_EQ(ReplaceUnderscores(name), std::string("a\0 1(x)", 7));
}

TEST(FileNameToolsTest, UmlautsAndUnderscoresTogetherMakeAPlainName) {
    EXPECT_EQ(ReplaceUnderscores(ChangeUmlauts("Ärger_über_Öl")), "Aerger ueber Oel");
}

TEST(FileNameToolsTest, TheExtensionIsTheLastFourCharacters) {
    EXPECT_EQ(FileExtension("song.mp3"), ".mp3");
    EXPECT_EQ(FileExtension("song.flac"), "flac");
    EXPECT_EQ(FileExtension("README"), "ADME");
    EXPECT_EQ(FileExtension("mp3"), "mp3");
    EXPECT_EQ(FileExtension(""), "");
    EXPECT_EQ(FileExtension("lied.öäü"), ".öäü");
    EXPECT_EQ(FileExtension("x😀😀😀😀"), "😀😀😀😀");
    EXPECT_EQ(FileExtension("ab\xe4\xf6\xfc\xff"), "\xe4\xf6\xfc\xff");
}

TEST(FileNameToolsTest, TheExtensionIsPutBackUnlessItIsThereLetterForLetter) {
    EXPECT_EQ(WithExtension("song", ".mp3"), "song.mp3");
    EXPECT_EQ(WithExtension("song.mp3", ".mp3"), "song.mp3");
    EXPECT_EQ(WithExtension("song.mp3", ".MP3"), "song.mp3.MP3");
    EXPECT_EQ(WithExtension("song.mp", ".mp3"), "song.mp.mp3");
    EXPECT_EQ(WithExtension("READMADME", "ADME"), "READMADME");
    EXPECT_EQ(WithExtension("song", ""), "song");
    EXPECT_EQ(WithExtension("mp3", ".mp3"), "mp3.mp3");
}

} // namespace
} // namespace quavernet::test
