// The engine's only way to a file: a protocol of the program's own, behind which are plain files that were
// announced before. Paths never reach the engine, which would take some of them for addresses, playlists or
// options. Made by MpvEngine.
#pragma once

#include "adapters/mpv/MpvLibrary.h"
#include "adapters/mpv/PatientFile.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace quavernet::mpv {

/// What the engine holds of a file from its opening on. The engine may call a file off while another of its
/// threads closes it, and shortly after: so this stays when the file has gone.
class OpenedStream {
public:
    explicit OpenedStream(std::shared_ptr<PatientFile> file) : m_file(std::move(file)) {}

    /// Null once it was closed.
    std::shared_ptr<PatientFile> File() const;

    /// Gives the file up, which is not read again.
    void Close();

private:
    mutable std::mutex m_mutex;
    std::shared_ptr<PatientFile> m_file;
};

/// Outlives the engine, whose threads ask it.
class StreamTable {
public:
    explicit StreamTable(UserFiles& files) : m_files(files) {}

    /// Makes the engine know the protocol.
    void Register(const Library& library, mpv_handle* engine);

    /// The address of a file for the engine. A number names one file for good.
    std::string Announce(std::uint64_t number, const std::string& path);
    void Forget(std::uint64_t number);

    /// The file as it was opened last; nullptr if it never was.
    std::shared_ptr<PatientFile> Opened(std::uint64_t number) const;

    /// For the engine's callbacks: begins to open the file of an address; nullptr if there is no such file.
    OpenedStream* Open(const std::string& address);

private:
    struct Entry {
        std::string path;
        std::shared_ptr<PatientFile> file;
    };

    UserFiles& m_files;
    mutable std::mutex m_mutex; ///< The engine opens files from threads of its own.
    std::map<std::uint64_t, Entry> m_entries;
    std::deque<OpenedStream> m_streams; ///< All that were opened: a few bytes for each that is closed.
};

} // namespace quavernet::mpv
