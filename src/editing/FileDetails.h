// What the details dialog shows of a file, and the file as the dialog knows it: a record and a tag component
// of its own, so that nothing that runs meanwhile shows in it. frmDetails calls it.
#pragma once

#include "app/CurrentFile.h"
#include "platform/TagComponent.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace quavernet {

/// Performer and title as the list shows them: what a file without a tag is called.
struct ListedNames {
    std::string Performer;
    std::string Title;
};

/// The texts that can be edited, and the publisher, which goes along with them.
struct DetailsTexts {
    std::string Title;
    std::string Performer;
    std::string Album;
    std::string Year;
    std::string Genre;
    std::string Comment;
    std::string Publisher;

    bool operator==(const DetailsTexts&) const = default;
};

/// Where the shown texts come from.
enum class DetailsKind { Untagged, Id3v1, Id3v2, Ogg };

struct FileDetails {
    DetailsKind Kind = DetailsKind::Untagged;
    std::string Caption;
    bool CanEdit = true;
    DetailsTexts Texts; ///< Of a version 1 tag without its genre: that is an entry of the genre list.
    std::string Path;
    std::string Quality; ///< Kilobits per second, "--" if there is none.
    std::string Size;
    std::string Length;
    std::string Frequency;
    std::string Mode;
    std::string Layer;
    std::string Version;

    bool operator==(const FileDetails&) const = default;
};

/// The entries of the genre list, ordered by name, and the selected one.
struct DetailsGenres {
    struct Entry {
        std::string Genre;
        std::int64_t ItemData = 0; ///< Number of the genre.
    };
    std::vector<Entry> Entries;
    int ListIndex = -1; ///< -1: none.
};

class DetailsFile {
public:
    DetailsFile();

    /// Reads a file: by its format in the library, or by its name if the library has lost it. Throws
    /// RuntimeError 53 if the file is missing, others if a statement fails; the file before then stays.
    /// Lets events run.
    FileDetails LoadDetails(const std::string& path, const ListedNames& names);

    /// Selects the entry of DetailsGenre; none if that is NoGenre, or if the file has no tag.
    DetailsGenres FillDetailsGenres() const;

    const std::string& Path() const { return m_file.DetailsPath; } ///< Empty before the first load.
    bool IsOgg() const { return m_extension == "ogg"; }
    TagComponent& Tag() { return *m_tag; } ///< Has loaded the file unless that is an Ogg file.
    quavernet::Id3v1Tag& Id3v1() { return m_file.Id3v1Tag; }

    /// After a save of version 1 the number of the entry in the list takes the place of the genre's own.
    void SetDetailsGenre(std::uint8_t genre) { m_genre = genre; }
    std::uint8_t DetailsGenre() const { return m_genre; }

private:
    void ReadMpegOrWave(const std::string& path, const ListedNames& names, FileDetails& shown);

    CurrentFile m_file;
    std::unique_ptr<TagComponent> m_tag;
    std::string m_extension; ///< As the library stores it.
    /// Kept from file to file until a version 1 tag brings another one.
    std::uint8_t m_genre = 0;
};

} // namespace quavernet
