// Whether an open library still lies where it was opened: a restored copy, another machine's state or a
// removed folder may take its place while the program runs. Asked by CommitGathering and by the connection's
// end.
#pragma once

#include <optional>
#include <string>

#include <sys/types.h>

struct sqlite3;

namespace quavernet::sqlite {

/// Knows a file by its device and number, whatever its name.
class LibraryPlace {
public:
    LibraryPlace() = default;
    ~LibraryPlace();
    LibraryPlace(const LibraryPlace&) = delete;
    LibraryPlace& operator=(const LibraryPlace&) = delete;

    /// Remembers the file that the path leads to: the one that has just been opened.
    void Attach(const std::string& path);

    /// As it was given, for messages.
    const std::string& Path() const { return m_path; }

    /// The path leads to another file by now, or to none. One look at the file system. A place that can't be
    /// looked at, because of rights or a failing device, counts as unchanged.
    bool IsLost() const;

    /// Of a lost library: takes the log into the old file, wherever that lies now, and leaves it empty. With
    /// its content, it would make nonsense of the file that is in this place now or later. Does nothing
    /// while another program uses the log. No transaction may be open.
    void EmptyLog(sqlite3* database);

private:
    struct Identity {
        dev_t device;
        ino_t number;
        bool operator==(const Identity&) const = default;
    };

    static std::optional<Identity> IdentityOf(const std::string& path);
    bool IsLogShared(sqlite3* database);

    std::string m_path;
    std::optional<Identity> m_file;
    int m_index = -1; ///< To be closed after the library: closing it gives the engine's locks on it up.
};

} // namespace quavernet::sqlite
