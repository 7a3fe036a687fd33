#include "adapters/mpv/LoadedPages.h"

#include "adapters/mpv/MpvLibrary.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>

#include <dlfcn.h>
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
    ASSERT_GT(ResidentCode("libmpv.so"), 0);

    mpv::GiveBackPages(mpv::ObjectsInMemory());
    EXPECT_GT(ResidentCode("libmpv.so"), 0);
    mpv::GiveBackPages({});
    EXPECT_EQ(ResidentCode("libmpv.so"), 0);

    EXPECT_STREQ(library.error_string(MPV_ERROR_NOMEM), "memory allocation failed");
    EXPECT_GT(ResidentCode("libmpv.so"), 0);
}

TEST(LoadedPagesTest, WhatIsLoadedIsKnown) {
    const mpv::Library library(mpv::Library::DefaultName);
    Dl_info place{};
    ASSERT_NE(::dladdr(reinterpret_cast<const void*>(library.create), &place), 0);
    EXPECT_TRUE(mpv::ObjectsInMemory().contains(reinterpret_cast<std::uintptr_t>(place.dli_fbase)));
}

} // namespace

} // namespace quavernet::test
