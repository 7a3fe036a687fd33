#include "inspect/modMp3Info.h"

#include "inspect/Id3v1.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "platform/RuntimeError.h"
#include "platform/UserFiles.h"

#include <array>
#include <cstring>

namespace quavernet {

namespace {

constexpr std::int32_t WriteProtectedText = 444;
constexpr std::int32_t ErrorText = 445;
constexpr std::int32_t BoxTitle = 446;

// Over the file's last 128 bytes, whatever is there: a file without a tag loses the end of its audio.
void OverwriteEnd(const std::string& path, const Id3v1Tag& tag) {
    const auto file = services.files->Open(path, BinaryFile::Access::ReadWrite);
    if (file->Size() < Id3v1Size) {
        throw RuntimeError(ErrorNumber::BadRecordNumber, "Bad record number");
    }
    std::array<std::byte, Id3v1Size> bytes{};
    std::memcpy(bytes.data(), "TAG", Id3v1MarkSize);
    const Id3v1Record record = BuildId3v1(tag);
    std::memcpy(bytes.data() + Id3v1MarkSize, record.data(), record.size());

    const std::uint64_t offset = file->Size() - Id3v1Size;
    std::array<std::byte, Id3v1Size> old{};
    file->ReadAt(offset, old);
    // Mark and record go in one step: a mark alone would make a tag of what follows it.
    file->Overwrite(offset, old, bytes, SaveTimes::Renew, WithoutCopy::InPlace);
}

void ShowFailure(const RuntimeError& error) {
    const std::string title = LoadResString(BoxTitle);
    if (error.Number() == ErrorNumber::PathFileAccess) {
        services.msgBox->Show(LoadResString(WriteProtectedText), title, MsgBox::Icon::Exclamation,
                              MsgBox::Buttons::Ok);
    } else if (!error.Description().empty()) {
        services.msgBox->Show(LoadResString(ErrorText) + error.Description(), title, MsgBox::Icon::Critical,
                              MsgBox::Buttons::Ok);
    }
}

} // namespace

void WriteId3v1(const std::string& path, const Id3v1Tag& tag) {
    if (path.empty()) {
        return;
    }
    try {
        OverwriteEnd(path, tag);
    } catch (const RuntimeError& error) {
        ShowFailure(error);
    }
}

} // namespace quavernet
