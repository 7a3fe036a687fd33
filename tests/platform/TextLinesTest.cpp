#include "platform/TextLines.h"
#include "platform/RuntimeError.h"
#include "support/RealFiles.h"
#include "support/TemporaryFolder.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <sys/stat.h>

namespace quavernet::test {

using namespace std::string_literals;

class TextLinesTest : public ::testing::Test {
protected:
    std::vector<std::string> LinesOf(std::string_view contents) {
        WriteFile(path, contents);
        TextLines reader(RealFiles(), path);
        std::vector<std::string> lines;
        for (std::string line; reader.Next(line);) {
            lines.push_back(line);
        }
        return lines;
    }

    TemporaryFolder folder;
    const std::string path = folder / "list.txt";
};

using Lines = std::vector<std::string>;

TEST_F(TextLinesTest, BothLineFeedAndReturnWithLineFeedEndALine) {
    EXPECT_EQ(LinesOf("one\ntwo\r\nthree\n"), (Lines{"one", "two", "three"}));
}

TEST_F(TextLinesTest, TheLastLineNeedsNoEnd) {
    EXPECT_EQ(LinesOf("one\ntwo"), (Lines{"one", "two"}));
}

TEST_F(TextLinesTest, AnEmptyFileHasNoLineAndAnEmptyLineIsOne) {
    EXPECT_EQ(LinesOf(""), Lines{});
    EXPECT_EQ(LinesOf("\n"), Lines{""});
    EXPECT_EQ(LinesOf("\r\n\n\r\na"), (Lines{"", "", "", "a"}));
}

TEST_F(TextLinesTest, AReturnAloneEndsNothing) {
    EXPECT_EQ(LinesOf("one\rtwo\n"), Lines{"one\rtwo"});
    EXPECT_EQ(LinesOf("one\r\r\n"), Lines{"one\r"});
    EXPECT_EQ(LinesOf("one\r"), Lines{"one\r"});
}

TEST_F(TextLinesTest, NulBytesBelongToTheirLine) {
    EXPECT_EQ(LinesOf("a\0b\n\0\nc"s), (Lines{"a\0b"s, "\0"s, "c"}));
}

TEST_F(TextLinesTest, AByteOrderMarkIsSkippedAtTheBeginningOfTheFileOnly) {
    EXPECT_EQ(LinesOf("\xEF\xBB\xBFone\n\xEF\xBB\xBFtwo\n"), (Lines{"one", "\xEF\xBB\xBFtwo"}));
    EXPECT_EQ(LinesOf("\xEF\xBB\xBF"), Lines{});
    EXPECT_EQ(LinesOf("\xEF\xBB"), Lines{"\xEF\xBB"});
}

TEST_F(TextLinesTest, ALineLongerThanABlockIsWhole) {
    const std::string line(5'000'000, 'x');
    EXPECT_EQ(LinesOf(line + "\r\n" + line), (Lines{line, line}));
}

TEST_F(TextLinesTest, ALineEndAcrossTheBorderOfABlockIsOneEnd) {
    for (std::size_t length = 65'533; length < 65'539; ++length) {
        const std::string line(length, 'x');
        EXPECT_EQ(LinesOf(line + "\r\nnext\r\n"), (Lines{line, "next"})) << length;
    }
}

TEST_F(TextLinesTest, AMillionLinesComeOneByOne) {
    std::string contents;
    for (int i = 0; i < 1'000'000; ++i) {
        contents += "x\n";
    }
    WriteFile(path, contents);
    TextLines reader(RealFiles(), path);
    int count = 0;
    for (std::string line; reader.Next(line);) {
        ++count;
    }
    EXPECT_EQ(count, 1'000'000);
}

TEST_F(TextLinesTest, ALineBeyondTheLimitIsCutAndTheNextOneIsRead) {
    const Lines lines = LinesOf(std::string(TextLines::LongestLine + 100'000, 'x') + "\nnext\n");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].size(), TextLines::LongestLine);
    EXPECT_EQ(lines[1], "next");
}

TEST_F(TextLinesTest, AfterTheLastLineTheTextIsEmpty) {
    WriteFile(path, "one\n");
    TextLines reader(RealFiles(), path);
    std::string line;
    EXPECT_TRUE(reader.Next(line));
    EXPECT_FALSE(reader.Next(line));
    EXPECT_EQ(line, "");
    EXPECT_FALSE(reader.Next(line));
}

TEST_F(TextLinesTest, WhatIsNoPlainFileIsRefused) {
    EXPECT_THROW(TextLines(RealFiles(), folder / "missing"), OpenError);
    EXPECT_THROW(TextLines(RealFiles(), folder.Path()), OpenError);
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_THROW(TextLines(RealFiles(), folder / "pipe"), OpenError);
}

TEST_F(TextLinesTest, Utf8StaysAsItIs) {
    EXPECT_EQ(DecodeText("Grün 日本"), "Grün 日本");
    EXPECT_EQ(DecodeText(""), "");
}

TEST_F(TextLinesTest, WhatIsNotUtf8IsWindows1252) {
    EXPECT_EQ(DecodeText("Gr\xFCn \x80"), "Grün €");
    EXPECT_EQ(DecodeText("Grün \xFC"), "GrÃ¼n ü");
}

} // namespace quavernet::test
