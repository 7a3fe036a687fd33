#include "adapters/mpv/LoadedPages.h"

#include "adapters/mpv/MpvLibrary.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include <mpv/client.h>

namespace quavernet::test {

namespace {

/// Kilobytes of a library's code that this process holds.
int ResidentCode(const std::string& library) {
    std::ifstream mappings("/proc/self/smaps");
    int kilobytes = 0;
    bool isCode = false;
    for (std::string line; std::getline(mappings, line);) {
        std::istringstream words(line);
        std::string first;
        std::string second;
        words >> first >> second;
        if (first.find('-') != std::string::npos && !first.ends_with(':')) {
            isCode = second == "r-xp" && line.find(library) != std::string::npos;
        } else if (isCode && first == "Rss:") {
            kilobytes += std::stoi(second);
        }
    }
    return kilobytes;
}

TEST(LoadedPagesTest, CodeThatIsNotUsedTakesNoMemoryAndIsBackWhenItIsCalled) {
    const mpv::Library library(mpv::Library::DefaultName);
    mpv_handle* handle = library.create();
    ASSERT_NE(handle, nullptr);
    library.terminate_destroy(handle);
    const int before = ResidentCode("libmpv.so");
    ASSERT_GT(before, 0);

    mpv::GiveBackPages(mpv::ObjectsInMemory());
    EXPECT_EQ(ResidentCode("libmpv.so"), before);
    mpv::GiveBackPages({});
    EXPECT_EQ(ResidentCode("libmpv.so"), 0);

    EXPECT_STREQ(library.error_string(MPV_ERROR_NOMEM), "memory allocation failed");
    EXPECT_GT(ResidentCode("libmpv.so"), 0);
}

TEST(LoadedPagesTest, WhatIsLoadedIsKnown) {
    const mpv::Library library(mpv::Library::DefaultName);
    EXPECT_GT(mpv::ObjectsInMemory().size(), 100U);
}

} // namespace

} // namespace quavernet::test
