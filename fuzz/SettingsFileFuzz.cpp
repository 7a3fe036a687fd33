// Reads a settings file of any bytes through the store and writes into it: what was written must read back to
// the byte from the file, whatever the file held before. The input: the length of a text and the text, then
// the file.
#include "adapters/qt/QtSettings.h"

#include "support/TemporaryFolder.h"

#include "FuzzInput.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

namespace {

using namespace quavernet;
using fuzz::Require;

const std::string Section = "Settings";

// The store keeps what it read of a file while that looks unchanged: each run has a file of its own.
class SettingsFile {
public:
    explicit SettingsFile(std::string_view contents) : m_name(std::to_string(++Count())) {
        fuzz::WriteWhole(Path(), contents);
    }
    ~SettingsFile() { std::filesystem::remove(Path()); }
    SettingsFile(const SettingsFile&) = delete;
    SettingsFile& operator=(const SettingsFile&) = delete;

    std::string Application() const { return "Maker\\" + m_name; }

private:
    static const std::string& Folder() {
        static const test::TemporaryFolder folder;
        static const std::string path = [] {
            ::setenv("XDG_CONFIG_HOME", folder.Path().c_str(), 1);
            std::filesystem::create_directory(folder / "Maker");
            return folder / "Maker";
        }();
        return path;
    }
    static unsigned long& Count() {
        static unsigned long count = 0;
        return count;
    }
    std::string Path() const { return Folder() + "/" + m_name + ".conf"; }

    std::string m_name;
};

// Forms that the store itself never writes; the library takes any type out of them.
bool HoldsForeignValues(std::string_view file) {
    return file.find("@Variant") != std::string_view::npos ||
           file.find("@DateTime") != std::string_view::npos;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view contents = fuzz::TextOf(data, size);
    const std::string text = fuzz::TakeText(contents);
    if (HoldsForeignValues(contents)) {
        return 0;
    }
    const SettingsFile file(contents);
    const std::array<const char*, 4> others = {"WindowLeft", "Language", "ColWidth(0)", "Coverstring"};
    std::array<std::optional<std::string>, 4> before;
    {
        QtSettings store;
        for (std::size_t i = 0; i < others.size(); ++i) {
            before[i] = store.Query(file.Application(), Section, others[i]);
        }
        store.Query(file.Application(), Section, "Scanpath");
        store.Set(file.Application(), Section, "Scanpath", text);
        Require(store.Query(file.Application(), Section, "Scanpath") == text);
    }
    QtSettings again;
    Require(again.Query(file.Application(), Section, "Scanpath") == text);
    for (std::size_t i = 0; i < others.size(); ++i) {
        Require(again.Query(file.Application(), Section, others[i]) == before[i]);
    }
    return 0;
}
