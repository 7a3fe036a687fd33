#include "scanner/WaitForRead.h"

#include "app/MainModule.h"
#include "app/ScopedValue.h"
#include "platform/RuntimeError.h"
#include "scanner/FolderOrder.h"
#include "scanner/ScanRun.h"

#include <chrono>

namespace quavernet {

namespace {

// A disk answers within the first, and the work goes on as if it had not waited. The window is alive between
// the steps: each lets events run.
constexpr std::chrono::milliseconds FirstWaitTime{10};
constexpr std::chrono::milliseconds WaitStep{10};

// Committed before the wait: another program may write while this one waits for a disk that hangs. False if
// `letEventsRun` has ended it.
template <typename Ask, typename Events> bool WaitInSteps(const Ask& ask, const Events& letEventsRun) {
    if (ask(FirstWaitTime)) {
        return true;
    }
    mainModule.Connection->Commit();
    do {
        const bool goesOn = letEventsRun();
        mainModule.Connection->Commit(); // What a handler has written.
        if (!goesOn) {
            return false;
        }
    } while (!ask(WaitStep));
    return true;
}

template <typename Ask>
bool WaitInScan(const ScanRun& run, const Ask& ask, const std::function<void()>& beforeStep) {
    return WaitInSteps(ask, [&] {
        beforeStep();
        run.work.DoEvents();
        return !run.work.Cancelled();
    });
}

} // namespace

std::unique_ptr<FilesAhead> WalkAheadOf(const ScanRun& run, const std::string& folder,
                                        std::function<Ahead(std::string_view name)> wants) {
    if (services.readAhead == nullptr || IsExcludedFolder(folder)) {
        return nullptr;
    }
    const auto enters = [isRecursive = run.Recursive](std::string_view path) {
        return isRecursive && !IsExcludedFolder(path);
    };
    return services.readAhead->Walk({folder, enters, std::move(wants)});
}

bool WaitForFolder(const ScanRun& run, FilesAhead* ahead, const std::string& folder) {
    return ahead == nullptr ||
           WaitInScan(
               run, [&](std::chrono::milliseconds most) { return ahead->IsListed(folder, most); }, [] {});
}

bool WaitForFile(const ScanRun& run, FilesAhead* ahead, const std::string& path, Ahead part,
                 const std::function<void()>& beforeStep) {
    return ahead == nullptr ||
           WaitInScan(
               run, [&](std::chrono::milliseconds most) { return ahead->IsRead(path, part, most); },
               beforeStep);
}

FolderAhead::FolderAhead(std::string folder) : m_folder(std::move(folder)) {
    if (services.readAhead != nullptr) {
        m_ahead = services.readAhead->Walk({m_folder, [](std::string_view) { return false; },
                                            [](std::string_view) { return Ahead::Nothing; }});
    }
}

bool FolderAhead::WaitForIt(const std::function<bool()>& letEventsRun) {
    return m_ahead == nullptr ||
           WaitInSteps([&](std::chrono::milliseconds most) { return m_ahead->IsListed(m_folder, most); },
                       letEventsRun);
}

void NewFilesAhead::WaitFor(const std::string& path, Ahead part) {
    if (!std::exchange(m_hasBegun, true) && services.readAhead != nullptr) {
        std::vector<std::string> paths;
        IgnoreFailure([&] { paths = m_toCome(); });
        m_files = services.readAhead->Files(std::move(paths), Ahead::Unsure);
    }
    if (m_files == nullptr) {
        return;
    }
    WaitInSteps([&](std::chrono::milliseconds most) { return m_files->IsRead(path, part, most); },
                [] {
                    // It may take long, and what is dropped has its place already: nothing may change that.
                    const ScopedValue alone(mainModule.ActsAlone, true);
                    services.events->DoEvents();
                    return true;
                });
}

} // namespace quavernet
