#include "playback/RandomPlaySettings.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/OpenWithShell.h"
#include "app/Registry.h"
#include "app/SettingFailure.h"
#include "app/TextNumbers.h"

namespace quavernet {

namespace {

constexpr const char* Option = "CheckedRandomOpt";
constexpr const char* Count = "FileCountRandomPlay";
constexpr const char* AllFiles = "AllFiles";
constexpr const char* FileCount = "FileCount";
constexpr const char* FirstCount = "200";

std::int32_t FilesInLibrary() {
    ADODB::Recordset files;
    files.Open("Select Count(File_id) from Files", *mainModule.Connection);
    const std::int32_t count = Narrow32(files.Fields(0).Number());
    files.Close();
    return count;
}

std::int32_t StoredCount() {
    try {
        if (const auto number = ParseNumber(Setting(Count, FirstCount), services.regional)) {
            return Narrow32(*number);
        }
    } catch (const RuntimeError& error) {
        throw SettingError(Count, error.Number(), error.Description(), Texts::RandomCountAdvice);
    }
    throw SettingError(Count, ErrorNumber::TypeMismatch, "Type mismatch", Texts::RandomCountAdvice);
}

} // namespace

RandomPlaySettings LoadRandomPlaySettings() {
    const std::string option = Setting(Option, AllFiles);
    return {option == AllFiles, option == FileCount, Setting(Count, FirstCount)};
}

void SaveRandomPlaySettings(bool fileCount, const std::string& count) {
    if (fileCount && Val(count) > MostRandomFiles) {
        ShowExclamation(Texts::TooManyFiles, Texts::Attention);
    }
    SaveSetting(Option, fileCount ? FileCount : AllFiles);
    SaveSetting(Count, count);
}

void SetRandomCount() {
    const std::string option = Setting(Option, AllFiles);
    if (option == AllFiles) {
        mainModule.RandomCount = FilesInLibrary();
    } else if (option == FileCount) {
        mainModule.RandomCount = StoredCount();
    }
}

} // namespace quavernet
