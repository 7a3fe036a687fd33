#include "app/MainModule.h"
#include "app/Registry.h"
#include "app/Version.h"

#include "support/LogicTest.h"

namespace quavernet::test {

namespace {

std::string Read(const std::string& name, const std::string& defaultValue) {
    return GetSettingValue(SettingsApplication, SettingsSection, name, defaultValue);
}

void Write(const std::string& name, const std::string& value) {
    SaveSettingValue(SettingsApplication, SettingsSection, name, value);
}

/// Notes where a value was asked for.
class AddressedSettings : public SettingsStore {
public:
    std::optional<std::string> Query(const std::string& application, const std::string& section,
                                     const std::string& name) override {
        address = application + "|" + section + "|" + name;
        return std::nullopt;
    }
    void Set(const std::string& application, const std::string& section, const std::string& name,
             const std::string& value) override {
        address = application + "|" + section + "|" + name + "|" + value;
    }

    std::string address;
};

} // namespace

using SettingsTest = LogicTest;

TEST_F(SettingsTest, AMissingValueGivesTheReadersOwnDefaultAndStoresNothing) {
    EXPECT_EQ(Read("Scanpath", ""), "");
    EXPECT_EQ(Read("ShowKonvert", "1"), "1");
    EXPECT_EQ(Read("ShowKonvert", "0"), "0");
    EXPECT_TRUE(settings.values.empty());
}

TEST_F(SettingsTest, AnEmptyValueIsAValue) {
    Write("Scanpath", "");
    EXPECT_EQ(Read("Scanpath", "/music"), "");
}

TEST_F(SettingsTest, AValueReadsBackAsItWasWritten) {
    for (const std::string text : {"/Müsik/Größe", " blanks ", "\"quoted\\", "line\nbreak", "日本"}) {
        Write("Scanpath", text);
        EXPECT_EQ(Read("Scanpath", "-"), text);
    }
}

TEST_F(SettingsTest, ValuesLieUnderTheProgramsOwnKey) {
    AddressedSettings addressed;
    services.settings = &addressed;
    Read("Drive", "0");
    EXPECT_EQ(addressed.address, "Greyfinch Labs\\Quavernet|Settings|Drive");
    Write("Drive", "3");
    EXPECT_EQ(addressed.address, "Greyfinch Labs\\Quavernet|Settings|Drive|3");
}

TEST(VersionTest, TheSplashWindowNamesMajorMinorAndRevision) {
    EXPECT_EQ(VersionNumbers(), "1.0.3");
    EXPECT_EQ(SplashVersionText(), "v1.0.3");
}

} // namespace quavernet::test
