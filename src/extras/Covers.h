// The covers of the library's albums, without their window: the list of albums, the six images of the
// selected one as they will be saved, and what the window's controls do. frmCovers owns one and shows what it
// tells.
#pragma once

#include "app/LongWork.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quavernet {

/// The images of an album, in the order of the pages.
enum class CoverPage : std::uint8_t { Front, Back, CD, CD2, Inlay, Inlet };
inline constexpr std::size_t CoverPageCount = 6;

/// What the covers do on the screen.
class CoverView {
public:
    virtual ~CoverView() = default;

    virtual void RemovePictures() = 0; ///< From all six pages.

    /// Shows a stored image on its page. One that is no picture leaves the page as it is.
    virtual void ShowPicture(CoverPage page, const std::string& path) = 0;

    /// The same for a new image: it is read at once. False, and the page stays as it is, if that fails.
    virtual bool LoadPicture(CoverPage page, const std::string& path) = 0;

    virtual void SetPanel(const std::string& path) = 0; ///< The first panel of the status bar.
    virtual void SetMousePointer(MousePointer pointer) = 0;
};

class Covers {
public:
    explicit Covers(CoverView& view) : m_view(view) {}

    /// Reads the albums that the list shows, one for each performer of an album. Throws RuntimeError if a
    /// statement fails.
    void LoadAlbumList();

    /// Performer, " - " and album of each entry, in the order of the list.
    const std::vector<std::string>& Albums() const { return m_albums; }

    /// Where the list has the album of a key, from 0: the last of several. For a key that it does not have
    /// its first entry; nothing if it is empty.
    std::optional<std::size_t> PositionOf(const std::string& key) const;

    /// The list selects this entry: its images are shown in place of those before. Throws RuntimeError if a
    /// statement fails.
    void SelectAlbum(std::size_t position);
    bool HasSelection() const { return m_selected.has_value(); }

    /// A page came to the front: the panel shows its column, whether or not such a file exists. Nothing
    /// changes without a selection, or for an album that has no covers stored. Throws RuntimeError if the
    /// statement fails.
    void SSTab1_Click(CoverPage page);

    /// Asks for the image of a page. Nothing happens without a selection. Never fails, see SetCover. Lets
    /// events run while the dialog is open.
    void BrowseCover(CoverPage page);

    /// A file was dropped on a page. Nothing happens without a selection. What is no picture, and a statement
    /// that fails, ends the command quietly; the path is then in its field and is stored with the next image.
    void SetCover(CoverPage page, const std::string& path);

    /// Empties the field of a page and saves. The picture stays until another album is selected. Throws
    /// RuntimeError if a statement fails.
    void DeleteCover(CoverPage page);

    /// Opens the file of the panel with the program that the system has for it; nothing if the panel is
    /// empty. A missing file is told in a box.
    void OpenCoverFile();

    /// Looks the selected album up in the browser. A box tells if none is selected, or if there is no
    /// address to open.
    void OnlineCoverSearch();

    const std::string& Panel() const { return m_panel; }

private:
    std::string SelectStatement() const;
    void ShowCovers();
    void SaveCovers();
    void SetPanel(const std::string& path);
    void Set(CoverPage page, const std::string& path);
    std::string& Path(CoverPage page) { return m_paths[static_cast<std::size_t>(page)]; }

    CoverView& m_view;
    std::vector<std::string> m_albums;
    std::vector<std::string> m_albumKeys; ///< As CoverKey makes them, beside m_albums.
    std::optional<std::size_t> m_selected;
    std::string m_coverAlbumId;
    std::string m_coverInterpretId;
    std::array<std::string, CoverPageCount> m_paths; ///< As they will be saved.
    std::string m_panel;
};

/// The address of a search: in the template each placeholder is replaced by the text of the album's entry
/// without its hyphens. Nothing is encoded, blanks stay.
std::string CoverSearchAddress(const std::string& searchTemplate, const std::string& album);

} // namespace quavernet
