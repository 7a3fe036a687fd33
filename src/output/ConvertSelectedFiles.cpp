#include "output/ConvertSelectedFiles.h"

#include "app/LoadResString.h"
#include "app/LongWork.h"
#include "app/MainModule.h"
#include "app/Registry.h"
#include "app/ShowBox.h"
#include "app/TextNumbers.h"
#include "output/KonvertSettings.h"

#include <algorithm>

namespace quavernet {

namespace {

constexpr const char* Encoder = "/bladeenc";

// The blanks of a switch belong to the line alone. They add up there, and nothing in it is quoted but the
// files: a folder with blanks is one argument, and falls apart in the line.
void AddSwitch(ProgramCommand& command, const std::string& before, const std::string& name,
               const std::string& after) {
    command.Text += before + name + after;
    command.Arguments.push_back(name);
}

void AddBitRate(ProgramCommand& command) {
    const std::string rate = Setting(Konvert::Bitrate, Konvert::FirstBitrate);
    if (std::ranges::find(Konvert::Bitrates, rate) != Konvert::Bitrates.end()) {
        AddSwitch(command, " ", "-" + rate, " ");
    }
}

void AddTarget(ProgramCommand& command) {
    const std::string folder = Setting(Konvert::Target, "");
    if (folder.empty()) {
        return;
    }
    if (services.fileSystem->FolderExists(folder)) {
        AddSwitch(command, " ", "-outdir=" + folder, " ");
    } else {
        ShowBox(LoadResString(Texts::TargetFolderMissing) + "\r\n" +
                    LoadResString(Texts::SavedInSourceFolder),
                Texts::FolderOrDriveMissing, MsgBox::Icon::Exclamation);
    }
}

void AddIf(ProgramCommand& command, const char* setting, const std::string& value, const std::string& name) {
    if (Setting(setting, "") == value) {
        AddSwitch(command, " ", name, " ");
    }
}

void AddFile(ProgramCommand& command, const std::string& path) {
    command.Text += " \"" + path + "\"";
    command.Arguments.push_back(path);
}

// A selection of many thousand files is more than a program can be started with.
void StartEncoder() {
    try {
        services.shell->StartProgram(EncoderCommand(services.shell->ProgramFolder()));
    } catch (const RuntimeError& failure) {
        if (failure.Number() != ErrorNumber::OutOfMemory) {
            throw;
        }
        ShowBox(Texts::SelectionTooLarge, Texts::ConvertingNotPossible, MsgBox::Icon::Exclamation);
    }
}

} // namespace

ProgramCommand EncoderCommand(const std::string& programFolder) {
    ProgramCommand command;
    command.Program = programFolder + Encoder;
    command.Text = command.Program + " ";
    AddSwitch(command, " ", "-quit", " ");
    AddBitRate(command);
    AddTarget(command);
    AddIf(command, Konvert::MonoStereo, Konvert::Mono, "-mono");
    AddIf(command, Konvert::Combine, "1", "-concat");
    AddIf(command, Konvert::NoGap, "1", "-nogap");
    AddIf(command, Konvert::Delete, "1", "-delete");
    for (const std::int32_t row : mainModule.SelectedRows.Rows()) {
        AddFile(command, mainModule.FilePaths.Item(row));
    }
    return command;
}

void ConvertSelectedFiles(LongWork& work, const std::function<void()>& showOptions) {
    if (CheckBoxSetting(Konvert::Show, "1")) {
        showOptions();
    }
    work.SetPanel(Panel::Scanning, LoadResString(Texts::Converting));
    StartEncoder();
    work.SetPanel(Panel::Scanning, {});
}

} // namespace quavernet
