// What is around a scan in its tests: a view and a log that write down every call in one list, and a
// file system whose volumes and dates a test can choose.
#pragma once

#include "adapters/posix/PosixFileSystem.h"
#include "app/MainModule.h"
#include "scanner/OggPass.h"
#include "scanner/ScanRun.h"
#include "scanner/ScanView.h"
#include "support/LongWorkDouble.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quavernet::test {

class RecordingScanView : public ScanView {
public:
    explicit RecordingScanView(CallList& calls) : m_calls(calls) {}

    ScanOptions Options() const override { return options; }
    void SetControlState(ControlMode mode) override {
        m_calls.push_back(mode == ControlMode::ScanRunning ? "state: scan running" : "state: idle");
    }
    void ClearList() override { m_calls.push_back("clear list"); }
    void FillDriveCombo() override { m_calls.push_back("drive combo"); }
    void FillAlbumCombo() override { m_calls.push_back("album combo"); }
    void LoadDatabase(const std::string& list) override { m_calls.push_back("load '" + list + "'"); }

    ScanOptions options;

private:
    CallList& m_calls;
};

class RecordingScanLog : public ScanLog {
public:
    explicit RecordingScanLog(CallList& calls) : m_calls(calls) {}

    void Show() override {
        Call("log show");
        if (onShow) {
            onShow();
        }
    }
    void EnableClose(bool enabled) override { Call(enabled ? "log close on" : "log close off"); }
    void AddLine(const std::string& line) override { Call("log line: " + line); }
    void SelectLastLine() override { Call("log select"); }
    void SetFileCount(const std::string& text) override { Call("log files: " + text); }
    void SetMegabytes(const std::string& text) override { Call("log megabytes: " + text); }
    void SetPlaytime(const std::string& text) override { Call("log minutes: " + text); }
    void AddSkipped(const std::vector<SkippedEntry>& entries) override {
        skipped.insert(skipped.end(), entries.begin(), entries.end());
    }

    std::vector<SkippedEntry> skipped;
    std::function<void()> onShow;
    bool failing = false; ///< Every call fails after it has been noted.

private:
    void Call(const std::string& text) {
        m_calls.push_back(text);
        if (failing) {
            throw RuntimeError(91, "the log is gone");
        }
    }

    CallList& m_calls;
};

class RecordingOggPass : public OggPass {
public:
    void ReadOggBatches(ScanRun& run) override {
        ++runs;
        paths = run.OggPaths;
        filesDone = run.FilesDone;
        cancelled = run.work.Cancelled();
        megabytes = run.ScannedMegabytes;
        start = mainModule.ScanStartTime;
    }

    int runs = 0;
    std::vector<std::string> paths;
    std::int32_t filesDone = -1;
    bool cancelled = false;
    double megabytes = -1;
    DateTime start;
};

/// The real file system, with volumes, network roots and facts of a test's choice.
class ChosenVolumes : public FileSystemObject {
public:
    std::unique_ptr<FolderWalk> GetFolder(const std::string& path) override {
        folders.push_back(path);
        if (foldersLeft-- == 0) {
            throw RuntimeError(ErrorNumber::PathNotFound, path);
        }
        return std::make_unique<Walk>(m_real->GetFolder(path), *this);
    }
    FileFacts GetFile(const std::string& path) override { return m_real->GetFile(path); }
    bool FileExists(const std::string& path) override { return m_real->FileExists(path); }
    bool FolderExists(const std::string& path) override { return m_real->FolderExists(path); }
    void CreateFolder(const std::string& path) override { m_real->CreateFolder(path); }
    void CopyFile(const std::string& source, const std::string& target) override {
        m_real->CopyFile(source, target);
    }
    void RenameFile(const std::string& source, const std::string& target) override {
        m_real->RenameFile(source, target);
    }
    std::vector<std::string> LogicalDrives() override { return drives; }
    std::optional<std::string> NetworkRoot(const std::string& drive) override {
        const auto found = networkRoots.find(drive);
        return found == networkRoots.end() ? std::nullopt : std::optional(found->second);
    }

    std::vector<std::string> drives{"/"};
    std::map<std::string, std::string> networkRoots;
    std::vector<std::string> folders;       ///< Arguments of GetFolder.
    int foldersLeft = -1;                   ///< GetFolder fails when so many calls have passed; -1: never.
    std::function<void(FileFacts&)> onFile; ///< Changes the facts of a file.
    std::function<void(FolderContents&)> onList;

private:
    class Walk : public FolderWalk {
    public:
        Walk(std::unique_ptr<FolderWalk> real, ChosenVolumes& owner)
            : m_real(std::move(real)), m_owner(owner) {}

        const std::string& Path() const override { return m_real->Path(); }
        FolderContents List(const std::string& folder) override {
            FolderContents contents = m_real->List(folder);
            if (m_owner.onList) {
                m_owner.onList(contents);
            }
            return contents;
        }
        std::optional<FileFacts> File(const std::string& path) override {
            auto facts = m_real->File(path);
            if (facts && m_owner.onFile) {
                m_owner.onFile(*facts);
            }
            return facts;
        }
        std::vector<SkippedEntry> TakeSkipped() override { return m_real->TakeSkipped(); }

    private:
        std::unique_ptr<FolderWalk> m_real;
        ChosenVolumes& m_owner;
    };

    std::unique_ptr<FileSystemObject> m_real = CreatePosixFileSystem();
};

} // namespace quavernet::test
