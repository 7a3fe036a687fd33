// The program's services without a user: real files, real libraries, real tags, views that show nothing.
#pragma once

#include "adapters/id3v2/TagLibComponent.h"
#include "adapters/posix/PosixFileSystem.h"
#include "adapters/posix/PosixFiles.h"
#include "adapters/posix/PosixReadAhead.h"
#include "adapters/posix/SystemClock.h"
#include "adapters/sqlite/SqliteConnection.h"
#include "adapters/vorbis/OggInfoReader.h"
#include "app/LongWork.h"
#include "app/MainModule.h"
#include "scanner/ScanView.h"

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quavernet::bench {

class MemorySettings : public SettingsStore {
public:
    std::optional<std::string> Query(const std::string&, const std::string&,
                                     const std::string& name) override {
        const auto found = m_values.find(name);
        return found == m_values.end() ? std::nullopt : std::optional(found->second);
    }
    void Set(const std::string&, const std::string&, const std::string& name,
             const std::string& value) override {
        m_values[name] = value;
    }

private:
    std::map<std::string, std::string> m_values;
};

class NoEvents : public Events {
public:
    void DoEvents() override {}
};

class SilentWork : public LongWork {
public:
    void SetPanel(Panel panel, const std::string& text) override {
        m_panels.at(static_cast<std::size_t>(panel)) = text;
    }
    std::string PanelText(Panel panel) const override { return m_panels.at(static_cast<std::size_t>(panel)); }
    void SetTitle(const std::string&) override {}
    void SetMousePointer(MousePointer) override {}
    void SetProgress(float value) override { m_progress = value; }
    float Progress() const override { return m_progress; }
    void DoEvents() override {}
    bool Cancelled() const override { return false; }
    void SetCancelled(bool) override {}
    void TellEnd(const std::string&) override {}

private:
    std::array<std::string, 6> m_panels;
    float m_progress = 0;
};

class SilentScanView : public ScanView {
public:
    ScanOptions options;

    ScanOptions Options() const override { return options; }
    void SetControlState(ControlMode) override {}
    void ClearList() override {}
    void FillDriveCombo() override {}
    void FillAlbumCombo() override {}
    void LoadDatabase(const std::string&) override {}
};

class SilentScanLog : public ScanLog {
public:
    void Show() override {}
    void EnableClose(bool) override {}
    void AddLine(const std::string&) override {}
    void SelectLastLine() override {}
    void SetFileCount(const std::string&) override {}
    void SetMegabytes(const std::string&) override {}
    void SetPlaytime(const std::string&) override {}
    void AddSkipped(const std::vector<SkippedEntry>&) override {}
};

/// Fills the services at construction and empties them again.
class BenchServices {
public:
    BenchServices() {
        services = Services();
        services.settings = &settings;
        services.fileSystem = m_fileSystem.get();
        services.files = &m_files;
        services.oggInfo = &m_oggInfo;
        ReadAhead(true);
        services.events = &m_events;
        services.clock = &m_clock;
        mainModule = MainModule();
        mainModule.TagComponent = CreateTagLibComponent(m_files);
    }
    ~BenchServices() {
        mainModule = MainModule();
        services = Services();
    }
    BenchServices(const BenchServices&) = delete;
    BenchServices& operator=(const BenchServices&) = delete;

    void OpenLibrary(const std::string& path) {
        CloseLibrary();
        mainModule.Connection = CreateSqliteConnection(services.regional);
        mainModule.Connection->Open("Data Source=" + path);
    }
    void CloseLibrary() {
        if (mainModule.Connection) {
            mainModule.Connection->Commit();
        }
        mainModule.Connection.reset();
    }

    void ReadAhead(bool on) { services.readAhead = on ? m_readAhead.get() : nullptr; }

    MemorySettings settings;

private:
    std::shared_ptr<posix::ReaderPool> m_readers = CreateReaderPool();
    std::unique_ptr<FileSystemObject> m_fileSystem = CreatePosixFileSystem(m_readers);
    PosixFiles m_files{m_readers};
    OggInfoReader m_oggInfo{m_files};
    std::unique_ptr<quavernet::ReadAhead> m_readAhead = CreatePosixReadAhead(m_readers);
    NoEvents m_events;
    SystemClock m_clock;
};

} // namespace quavernet::bench
