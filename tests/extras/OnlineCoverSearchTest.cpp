#include "extras/CoversTest.h"

#include "extras/CoverSearchOptions.h"

namespace quavernet::test {

namespace {

class OnlineCoverSearchTest : public CoversTest {
protected:
    /// The address that a template leads to for Abba's Arrival.
    std::string Opened(const std::string& searchTemplate) {
        SaveSearchTemplate(searchTemplate);
        shell.addresses.clear();
        covers.OnlineCoverSearch();
        return shell.addresses.size() == 1 ? shell.addresses.front()
                                           : std::to_string(shell.addresses.size()) + " addresses";
    }
};

} // namespace

TEST_F(OnlineCoverSearchTest, WithoutAnAlbumABoxAsksForOne) {
    covers.OnlineCoverSearch();
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0], (ShownBox{"Bitte markieren Sie ein Album.", "Online Suche nicht möglich",
                                         MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok}));
    EXPECT_EQ(shell.addresses, Texts{});
}

TEST_F(OnlineCoverSearchTest, TheDefaultSearchesForTheEntryWithItsBlanks) {
    SelectArrival();
    covers.OnlineCoverSearch();
    EXPECT_EQ(shell.addresses, Texts{"http://covers.example.org/search.php?action=search&what=Abba  Arrival"
                                     "&category=audio&submit=++Suche++"});
    EXPECT_TRUE(settings.values.empty());
    EXPECT_EQ(view.calls, Texts{});
}

TEST_F(OnlineCoverSearchTest, EachPlaceholderIsReplacedAndNothingElse) {
    SelectArrival();
    EXPECT_EQ(Opened("http://x/#coverstring#/#coverstring#"), "http://x/Abba  Arrival/Abba  Arrival");
    EXPECT_EQ(Opened("http://x/?q=\"#coverstring#\"&ü= b'"), "http://x/?q=\"Abba  Arrival\"&ü= b'");
    EXPECT_EQ(Opened("http://x/#Coverstring#"), "http://x/#Coverstring#");
    EXPECT_EQ(Opened("http://x/nothing"), "http://x/nothing") << "opened as it is";
    EXPECT_EQ(Opened("x.org/#coverstring#"), "http://x.org/Abba  Arrival");
    EXPECT_EQ(Opened("file:///etc/#coverstring#"), "http://file:///etc/Abba  Arrival");
    EXPECT_EQ(Opened("#coverstring#"), "http://Abba  Arrival");
    EXPECT_EQ(Opened(" "), "http:// ");
    EXPECT_TRUE(msgBox.shown.empty());
    EXPECT_EQ(shell.executed, Texts{});
}

TEST_F(OnlineCoverSearchTest, AnEmptyAddressIsToldInABox) {
    SelectArrival();
    EXPECT_EQ(Opened(""), "0 addresses");
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(
        msgBox.shown[0],
        (ShownBox{"Bitte geben Sie unter Optionen -> Online Coversuche... einen gültigen Suchstring ein.",
                  "Online Suche nicht möglich", MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok}));
}

TEST_F(OnlineCoverSearchTest, AllHyphensOfTheEntryGo) {
    EXPECT_EQ(CoverSearchAddress("#coverstring#", "A-ha - Take-On-Me"), "Aha  TakeOnMe");
    EXPECT_EQ(CoverSearchAddress("#coverstring#", "---"), "");
    EXPECT_EQ(CoverSearchAddress("<#coverstring#>", "Ärger & \"Öl\" – 'x' #coverstring#"),
              "<Ärger & \"Öl\" – 'x' #coverstring#>")
        << "a name that looks like the placeholder is a name";
}

TEST_F(OnlineCoverSearchTest, ABrowserThatDoesNotStartIsNotTold) {
    SelectArrival();
    shell.executeResult = Shell::NoProgram;
    covers.OnlineCoverSearch();
    EXPECT_TRUE(msgBox.shown.empty());
}

} // namespace quavernet::test
