#include "scanner/WaitForRead.h"

#include "app/MainModule.h"
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

// Committed before the wait: another program may write while this one waits for a disk that hangs.
template <typename Ask> bool WaitInSteps(const ScanRun& run, const Ask& ask) {
    if (ask(FirstWaitTime)) {
        return true;
    }
    mainModule.Connection->Commit();
    do {
        run.work.DoEvents();
        mainModule.Connection->Commit(); // What a handler has written.
        if (run.work.Cancelled()) {
            return false;
        }
    } while (!ask(WaitStep));
    return true;
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
           WaitInSteps(run, [&](std::chrono::milliseconds most) { return ahead->IsListed(folder, most); });
}

bool WaitForFile(const ScanRun& run, FilesAhead* ahead, const std::string& path, Ahead part) {
    return ahead == nullptr ||
           WaitInSteps(run, [&](std::chrono::milliseconds most) { return ahead->IsRead(path, part, most); });
}

void NewFilesAhead::WaitFor(const std::string& path) {
    if (!std::exchange(m_hasBegun, true) && services.readAhead != nullptr) {
        std::vector<std::string> paths;
        IgnoreFailure([&] { paths = m_toCome(); });
        m_files = services.readAhead->Files(std::move(paths), Ahead::Unsure);
    }
    if (m_files == nullptr || m_files->IsRead(path, Ahead::Contents, FirstWaitTime)) {
        return;
    }
    do {
        services.events->DoEvents();
        mainModule.Connection->Commit(); // What a handler has written.
    } while (!m_files->IsRead(path, Ahead::Contents, WaitStep));
}

} // namespace quavernet
