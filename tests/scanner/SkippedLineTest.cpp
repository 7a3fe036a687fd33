#include "scanner/SkippedLine.h"

#include "app/LoadResString.h"
#include "support/LogicTest.h"

namespace quavernet::test {

namespace {

class SkippedLineTest : public LogicTest {};

std::string Line(SkippedEntry::Kind kind) {
    return SkippedLine({"/music/x.mp3", "I/O error", kind});
}

} // namespace

TEST_F(SkippedLineTest, NamesPathAndReasonInOneLine) {
    EXPECT_EQ(Line(SkippedEntry::Kind::NoAccess), "Übersprungen... /music/x.mp3 (kein Zugriff)");
    EXPECT_EQ(Line(SkippedEntry::Kind::Missing), "Übersprungen... /music/x.mp3 (nicht vorhanden)");
    EXPECT_EQ(Line(SkippedEntry::Kind::LinkCircle),
              "Übersprungen... /music/x.mp3 (Verknüpfung auf sich selbst)");
    EXPECT_EQ(Line(SkippedEntry::Kind::NoPlainFile),
              "Übersprungen... /music/x.mp3 (keine gewöhnliche Datei)");
    EXPECT_EQ(Line(SkippedEntry::Kind::NoBitRate),
              "Übersprungen... /music/x.mp3 (nennt keine nominale Bitrate)");
}

TEST_F(SkippedLineTest, AnyOtherReasonIsToldInTheSystemsWords) {
    EXPECT_EQ(Line(SkippedEntry::Kind::Unreadable), "Übersprungen... /music/x.mp3 (nicht lesbar: I/O error)");
    EXPECT_EQ(SkippedLine({"/a", "I/O error"}), "Übersprungen... /a (nicht lesbar: I/O error)");
}

TEST_F(SkippedLineTest, FollowsTheLanguage) {
    settings.values["Language"] = "ENG";
    EXPECT_EQ(Line(SkippedEntry::Kind::NoAccess), "Skipped... /music/x.mp3 (no access)");
    EXPECT_EQ(Line(SkippedEntry::Kind::Unreadable), "Skipped... /music/x.mp3 (not readable: I/O error)");
    EXPECT_EQ(Line(SkippedEntry::Kind::NoBitRate), "Skipped... /music/x.mp3 (tells no nominal bit rate)");
}

} // namespace quavernet::test
