// ID3v2 tags as the inspection and the details dialog see them. The adapter lives in adapters/id3v2.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>

namespace quavernet {

/// Reads and writes the seven ID3v2 text fields of one file at a time.
class TagComponent {
public:
    /// Field indexes of TagField and SetTagField.
    enum Field { Title = 2, Performer = 3, Album = 4, Year = 5, Genre = 6, Comment = 7, Publisher = 12 };

    virtual ~TagComponent() = default;

    /// Reads the tag of a file. A file that carries no tag, or can't be read, leaves the fields empty.
    virtual void LoadFile(const std::string& path) = 0;

    /// The same for a caller that has read the beginning of the file: it isn't opened again if `head` (10
    /// bytes or more) begins with no tag, or holds the whole of it.
    virtual void LoadHead(const std::string& path, std::span<const std::byte> /*head*/) { LoadFile(path); }

    /// Whether the file last loaded begins with an ID3v2 tag: major version 2 to 4 and a valid
    /// size, even when it holds no frame.
    virtual bool HasV2Tag() const = 0;

    /// UTF-8 without NULs; the first value of the first frame of its kind, also if it is empty. A genre may
    /// hold a number in parentheses. Empty for an index that is none of Field.
    virtual std::string TagField(int index) const = 0;
    /// Sets a field to a text in UTF-8 for the next save; an empty one takes the field's frame away. An index
    /// that is none of Field is passed over.
    virtual void SetTagField(int index, const std::string& text) = 0;

    /// Writes the fields back: those that were set to another text than the loaded one, so that the others
    /// keep what another program wrote since; into another file than the loaded one, all seven. Every other
    /// frame, the tag's version, a version 1 tag and the audio stay byte for byte; the file is either the old
    /// or the new one, never torn. Throws RuntimeError 75 if it can't be written, or could not be read when
    /// it was loaded.
    virtual void SaveFile(const std::string& path) = 0;
};

} // namespace quavernet
