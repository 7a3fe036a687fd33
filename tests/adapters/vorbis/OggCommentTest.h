// What the tests of the comment writer share: a file that is saved, and what must not have changed then,
// looked at with readers of their own. Included by the tests of OggCommentWriter.
#pragma once

#include "adapters/vorbis/OggCommentWriter.h"
#include "support/FailureNumber.h"
#include "support/OggFiles.h"
#include "support/RealFiles.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace quavernet::test {

class OggCommentTest : public ::testing::Test {
protected:
    using Texts = std::vector<std::string>;

    /// Writes the comments into a file of these bytes; the result are its bytes then.
    std::string Saved(const std::string& bytes, const Texts& comments) {
        WriteWhole(path, bytes);
        OggCommentWriter(RealFiles()).Write(path, comments);
        EXPECT_EQ(Names(), Texts{"a.ogg"});
        return ReadWhole(path);
    }

    /// The same, and looks at everything: the comments are those, read by this program and by hand, and all
    /// the rest is as it was. For files that are whole.
    std::string ExpectSaved(const std::string& bytes, const Texts& comments) {
        std::string saved = Saved(bytes, comments);
        EXPECT_EQ(OggCommentWriter(RealFiles()).List(path), comments);
        ExpectOnlyComments(bytes, saved, comments);
        return saved;
    }

    /// Expects that both calls refuse a file of these bytes and leave it as it is.
    void ExpectRefused(const std::string& bytes, int number = ErrorNumber::PathFileAccess) {
        WriteWhole(path, bytes);
        EXPECT_EQ(NumberOf([&] { OggCommentWriter(RealFiles()).List(path); }), number);
        EXPECT_EQ(NumberOf([&] { OggCommentWriter(RealFiles()).Write(path, {"TITLE=x"}); }), number);
        EXPECT_EQ(ReadWhole(path), bytes);
        EXPECT_EQ(Names(), Texts{"a.ogg"});
    }

    Texts Names() const {
        Texts names;
        for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    /// Number of pages from the first on that belong to the headers of the first Vorbis stream.
    static std::size_t HeaderPageCount(const std::string& ogg) {
        const std::vector<ForgedPage> pages = Split(ogg).ours;
        std::ptrdiff_t packets = 0;
        for (std::size_t i = 0; i < pages.size(); ++i) {
            packets += std::count_if(pages[i].lacing.begin(), pages[i].lacing.end(),
                                     [](int length) { return length < 255; });
            if (packets >= 3) {
                return i + 1;
            }
        }
        ADD_FAILURE() << "no headers";
        return pages.size();
    }

    /// Samples as the real decoder gives them.
    std::string Decoded(const std::string& ogg) const {
        const TemporaryFolder place;
        WriteWhole(place / "d.ogg", ogg);
        std::string samples = OutputOf("oggdec -Q -o - " + Quoted(place / "d.ogg") + " 2>&1");
        EXPECT_GT(samples.size(), 10000u);
        return samples;
    }

    TemporaryFolder folder;
    std::string path = folder / "a.ogg";
    OggCommentWriter writer{RealFiles()};

private:
    /// A file's pages: those of the first Vorbis stream, up to where another one begins, and the others.
    struct SplitFile {
        std::vector<ForgedPage> ours, others;
    };

    static SplitFile Split(const std::string& ogg) {
        SplitFile split;
        bool over = false;
        for (ForgedPage& page : SplitPages(ogg)) {
            const bool begins = (page.flags & 2) != 0;
            const bool vorbis = begins && page.body.starts_with("\x01vorbis");
            const bool ours = split.ours.empty() ? vorbis : page.serial == split.ours[0].serial;
            over = over || (ours && begins && !split.ours.empty());
            (ours && !over ? split.ours : split.others).push_back(std::move(page));
        }
        return split;
    }

    static void ExpectOnlyComments(const std::string& before, const std::string& after,
                                   const Texts& comments) {
        const SplitFile was = Split(before);
        const SplitFile is = Split(after);
        EXPECT_EQ(JoinPages(SplitPages(after)), after) << "checksums";
        EXPECT_EQ(JoinPages(is.others), JoinPages(was.others));
        std::vector<std::string> packets = PacketsOf(was.ours);
        const auto vendorSize = static_cast<std::uint8_t>(packets.at(1)[7]);
        packets[1] = CommentPacket(comments, packets[1].substr(11, vendorSize));
        EXPECT_EQ(PacketsOf(is.ours), packets);
        ExpectSamePages(was.ours, HeaderPageCount(before), is.ours, HeaderPageCount(after));
    }

    static void ExpectSamePages(const std::vector<ForgedPage>& was, std::size_t oldHeaders,
                                std::vector<ForgedPage> is, std::size_t headers) {
        ASSERT_EQ(is.size() - headers, was.size() - oldHeaders);
        EXPECT_EQ(JoinPages({is[0]}), JoinPages({was[0]}));
        for (std::size_t i = 0; i < headers; ++i) {
            EXPECT_EQ(is[i].sequence, i);
        }
        for (std::size_t i = headers; i < is.size(); ++i) {
            const ForgedPage& old = was[i - headers + oldHeaders];
            EXPECT_EQ(is[i].sequence, static_cast<std::uint32_t>(old.sequence + headers - oldHeaders));
            is[i].sequence = old.sequence;
            EXPECT_EQ(JoinPages({is[i]}), JoinPages({old})) << i;
        }
    }
};

} // namespace quavernet::test
