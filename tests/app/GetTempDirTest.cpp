#include "app/GetTempDir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace quavernet::test {
namespace {

class GetTempDirTest : public ::testing::Test {
protected:
    GetTempDirTest() {
        if (const char* before = std::getenv("TMPDIR")) {
            m_before = before;
        }
    }
    ~GetTempDirTest() override {
        if (m_before) {
            ::setenv("TMPDIR", m_before->c_str(), 1);
        } else {
            ::unsetenv("TMPDIR");
        }
    }

    static std::string With(const char* folder) {
        ::setenv("TMPDIR", folder, 1);
        return GetTempDir();
    }

private:
    std::optional<std::string> m_before;
};

TEST_F(GetTempDirTest, TheEnvironmentNamesIt) {
    EXPECT_EQ(With("/run/mine"), "/run/mine/");
    EXPECT_EQ(With("/run/mine/"), "/run/mine/");
    EXPECT_EQ(With("/"), "/");
}

TEST_F(GetTempDirTest, WithoutAFullPathThereItIsTheSystemsOne) {
    EXPECT_EQ(With(""), "/tmp/");
    EXPECT_EQ(With("mine"), "/tmp/");
    ::unsetenv("TMPDIR");
    EXPECT_EQ(GetTempDir(), "/tmp/");
}

} // namespace
} // namespace quavernet::test
