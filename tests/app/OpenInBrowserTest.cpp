#include "app/OpenInBrowser.h"

#include "support/LogicTest.h"

namespace quavernet::test {

namespace {
class OpenInBrowserTest : public LogicTest {};
} // namespace

TEST_F(OpenInBrowserTest, AnAddressThatBeginsWithHttpInAnyCaseGoesOutAsItIs) {
    const std::vector<std::string> addresses{"http://x/", "https://x/?q=a  b&r=\"ü'$(x)`", "HtTpS://x/",
                                             "httpx"};
    for (const std::string& address : addresses) {
        EXPECT_TRUE(OpenInBrowser(address));
    }
    EXPECT_EQ(shell.addresses, addresses);
    EXPECT_TRUE(shell.executed.empty());
}

TEST_F(OpenInBrowserTest, AnyOtherOneGetsHttpInFront) {
    for (const char* address : {"example.org/?q=x", "ftp://x/", "file:///etc/passwd", "javascript:alert(1)",
                                " http://x/", "-x", "/music", ""}) {
        OpenInBrowser(address);
        EXPECT_EQ(shell.addresses.back(), std::string("http://") + address);
    }
    EXPECT_TRUE(shell.executed.empty());
}

TEST_F(OpenInBrowserTest, ResultsUpTo32AreFailures) {
    for (const int result : {0, 2, 31, 32}) {
        shell.executeResult = result;
        EXPECT_FALSE(OpenInBrowser("http://x/")) << result;
    }
    for (const int result : {33, 42}) {
        shell.executeResult = result;
        EXPECT_TRUE(OpenInBrowser("http://x/")) << result;
    }
}

} // namespace quavernet::test
