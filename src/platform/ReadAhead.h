// Reads files before they are wanted, many at a time, so that work on thousands of them does not wait for one
// after the other. The adapter lives in adapters/posix; scan, drops and import say what comes next, and ask
// before they open it.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quavernet {

/// What of a file will be wanted when its turn comes.
enum class Ahead : std::uint8_t {
    Nothing,
    Facts,    ///< What its folder tells of it; for a folder what it holds.
    Unsure,   ///< The facts. The contents too as soon as files before it turn out to be opened.
    Contents, ///< Head and tail.
};

/// A walk over folders that is going to be made, each folder before those in it. Both questions are asked by
/// other threads, and as long as the files are read ahead.
struct WalkAhead {
    std::string folder;                                ///< Where it begins: FolderWalk::Path().
    std::function<bool(std::string_view path)> enters; ///< Whether the walk enters a subfolder.
    std::function<Ahead(std::string_view name)> wants; ///< Of a file.
};

/// The files of one piece of work, in their order. They are read as long as this object lives; its end does
/// not wait for a read that hangs. It changes nothing that its user finds: a file that can't be read shows
/// that when it is opened, and one that changes meanwhile is read again then.
class FilesAhead {
public:
    virtual ~FilesAhead() = default;

    /// Both wait until what comes next can be had without a wait, but for no longer than `most`, and tell
    /// whether it can: the folder may be listed, the file asked for its facts or (`part` is Contents) opened.
    /// Asked in the order of the work, several times for the same path if need be; what comes before it is
    /// over then. The path may be one that nobody told of.
    virtual bool IsListed(const std::string& folder, std::chrono::milliseconds most) = 0;
    virtual bool IsRead(const std::string& path, Ahead part, std::chrono::milliseconds most) = 0;
};

class ReadAhead {
public:
    virtual ~ReadAhead() = default;

    /// Null where it would only cost, which is for files in memory, or where no thread is to be had.
    virtual std::unique_ptr<FilesAhead> Walk(WalkAhead walk) = 0;

    /// The same for files that are known by their paths. The last `kept` ones that were asked for stay open.
    virtual std::unique_ptr<FilesAhead> Files(std::vector<std::string> paths, Ahead wanted,
                                              std::size_t kept = 1) = 0;
};

} // namespace quavernet
