#include "inspect/modMp3Info.h"

#include "inspect/Id3v1.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "platform/BinaryFile.h"
#include "platform/RuntimeError.h"

#include <array>
#include <cstring>

namespace quavernet {

namespace {

constexpr std::int32_t WriteProtectedText = 444;
constexpr std::int32_t ErrorText = 445;
constexpr std::int32_t BoxTitle = 446;

// True if the record was written; false if only the mark was, over whatever stood there.
bool WriteMarkOrRecord(const std::string& path, const Id3v1Tag& tag) {
    BinaryFile file(path, BinaryFile::Access::ReadWrite);
    if (file.Size() < Id3v1Size) {
        throw RuntimeError(ErrorNumber::BadRecordNumber, "Bad record number");
    }
    const std::uint64_t markOffset = file.Size() - Id3v1Size;
    std::array<std::byte, Id3v1MarkSize> mark{};
    file.ReadAt(markOffset, mark);
    if (IsId3v1Mark(mark)) {
        file.WriteAt(markOffset + Id3v1MarkSize, BuildId3v1(tag));
        return true;
    }
    std::memcpy(mark.data(), "TAG", mark.size());
    file.WriteAt(markOffset, mark);
    return false;
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
        if (!WriteMarkOrRecord(path, tag)) {
            WriteId3v1(path, tag); // Now that the mark stands there, the record follows it.
        }
    } catch (const RuntimeError& error) {
        ShowFailure(error);
    }
}

} // namespace quavernet
