// A new file that takes the place of another once it is whole. Called by whoever replaces or copies a file of
// the user.
#pragma once

#include "adapters/posix/Descriptor.h"

#include <cstddef>
#include <span>
#include <string>

namespace quavernet::posix {

/// Lies in the target's folder, without a name where the file system can do that: a process that is killed
/// leaves nothing then. Elsewhere, and for the moment between name and place, it is hidden, has no ending
/// that a scan looks for, and is locked as long as its writer lives: the next copy in the folder removes
/// those whose writer is gone. Functions return 0 or the error number.
class TemporaryCopy {
public:
    TemporaryCopy() = default;
    ~TemporaryCopy(); ///< A copy that was not moved goes.
    TemporaryCopy(const TemporaryCopy&) = delete;
    TemporaryCopy& operator=(const TemporaryCopy&) = delete;

    /// Begins an empty copy. A target that is a link is itself replaced.
    int Begin(const std::string& target);

    /// The open copy's number, for calls that this class does not wrap.
    int Number() const { return m_copy.Get(); }

    int Append(std::span<const std::byte> bytes);

    /// Brings the copy to the disk and moves it to its place. On failure the target is as it was.
    int MoveToTarget();

    /// The same where nothing may be yet; EEXIST if something does.
    int MoveToFreePlace();

private:
    int Open();
    int OpenNamed();
    int Name();
    int MoveNamedToFreePlace();

    std::string m_targetName;
    std::string m_name; ///< Empty as long as it has none.
    Descriptor m_folder;
    Descriptor m_copy;
};

/// Whether a name in a folder is one of a copy.
bool IsCopyName(const std::string& name);

} // namespace quavernet::posix
