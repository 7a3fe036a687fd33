// The folders and files of an AheadPlan: what is wanted of them, and how far reading them has come. What a
// plan and its readers do with them is told there.
#pragma once

#include "adapters/posix/FileAhead.h"
#include "adapters/posix/FileSystemKind.h"
#include "adapters/posix/FolderListing.h"
#include "platform/ReadAhead.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quavernet::posix {

/// What is wanted of a file, as far as is known: at first what Ahead says.
enum class Want : std::uint8_t {
    Nothing,
    Facts,
    Unsure,
    Guessed, ///< It was unsure. Its contents are wanted because files before it were opened.
    Contents,
    Opened, ///< Its user has asked for its contents, whatever was known before.
};

struct AheadFile {
    AheadFile(std::string nameOrPath, Ahead wanted);

    /// Whether its user may still pass it over unopened, by all that is known.
    bool IsUncertain() const { return want == Want::Unsure || want == Want::Guessed; }

    std::string name; ///< In its folder; the whole path in a plan of files.
    Want want;
    Ahead has = Ahead::Nothing; ///< Facts or Contents, once they have been read.
    bool isBusy = false;        ///< A reader is at it.
    bool isHeld = false;        ///< Counted among those whose contents are held.
    bool isLookedFor = false;   ///< Its user has asked for its facts, in a plan of files.
    std::shared_ptr<FileAhead> file;
};

struct AheadFolder {
    std::string path;    ///< Empty: the names are whole paths.
    std::string leadsTo; ///< Not empty: where its user is, here or below. All before that is over.
    FileSystemKind kind = FileSystemKind::Share;
    bool isForOneFile = false; ///< That was asked for, though nobody had told of it.
    bool isListed = false;
    bool isBusy = false;
    bool isCounted = false;                 ///< Among those that are listed ahead.
    bool isOver = false;                    ///< Its user has gone on.
    std::unique_ptr<FolderListing> listing; ///< Until its user takes it.
    std::vector<AheadFile> files;
    std::size_t next = 0;   ///< No reader has to look at those before it.
    std::size_t passed = 0; ///< Those before it are over.

    std::string PathOf(const AheadFile& file) const;

    /// The name that a file of this path would have in the folder: empty if it could be in no such folder.
    std::string_view NameOf(std::string_view filePath) const;
};

} // namespace quavernet::posix
