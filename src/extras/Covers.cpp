#include "extras/Covers.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/OpenInBrowser.h"
#include "app/OpenWithShell.h"
#include "app/ShowBox.h"
#include "app/TextHelpers.h"
#include "app/TextNumbers.h"
#include "extras/CoverSearchOptions.h"
#include "library/SqlQuote.h"

#include <string_view>

namespace quavernet {

namespace {

constexpr std::int32_t AllFilesFilter = 318;
constexpr std::int32_t SelectAnAlbum = 319;
constexpr std::int32_t SearchNotPossible = 320; // The title above the one before and the next.
constexpr std::int32_t NoSearchString = 321;

constexpr std::string_view AlbumPart = "AlbumID:";
constexpr std::string_view InterpretPart = "InterID:";

/// The hourglass while it lives.
class Hourglass {
public:
    explicit Hourglass(CoverView& view) : m_view(view) { view.SetMousePointer(MousePointer::Hourglass); }
    ~Hourglass() { m_view.SetMousePointer(MousePointer::Default); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

private:
    CoverView& m_view;
};

bool AlbumHasFiles(const std::string& albumId) {
    ADODB::Recordset files;
    files.OpenFirst("Select Album_id from Files where Album_id = " + albumId, *mainModule.Connection, 1);
    return files.RecordCount() > 0;
}

// Nothing for a pair of album and performer that has no row.
std::optional<std::string> CoverRow(const std::string& albumId, const std::string& interpretId) {
    ADODB::Recordset row;
    row.Open("Select Cover_id from Covers where "
             " Album_id = " +
                 albumId + " and Interpret_id = " + interpretId,
             *mainModule.Connection);
    return row.RecordCount() > 0 ? std::optional(row.Fields(0).Text()) : std::nullopt;
}

} // namespace

void Covers::LoadAlbumList() {
    const Hourglass hourglass(m_view);
    m_albums.clear();
    m_albumKeys.clear();
    m_selected.reset();
    ADODB::Recordset rows;
    rows.Open("Select distinct A.Name, A.Album_id, I.Interpret, I.Inter_id from (Albums A Inner Join Files F"
              " On A.Album_id = F.Album_id) Inner Join Interpret I"
              " On F.Inter_id = I.Inter_id"
              " Order By I.Interpret",
              *mainModule.Connection);
    const std::string noAlbum = LoadResString(Texts::NoAlbum);
    for (; !rows.Eof(); rows.MoveNext()) {
        const std::string album = rows.Fields(0).Text();
        const std::string albumId = rows.Fields(1).Text();
        if (album != noAlbum && AlbumHasFiles(albumId)) {
            m_albums.push_back(rows.Fields(2).Text() + " - " + album);
            m_albumKeys.push_back(std::string(AlbumPart) + albumId + std::string(InterpretPart) +
                                  rows.Fields(3).Text());
        }
    }
}

std::optional<std::size_t> Covers::PositionOf(const std::string& key) const {
    if (m_albumKeys.empty()) {
        return std::nullopt;
    }
    std::size_t position = 0;
    for (std::size_t i = 0; i < m_albumKeys.size(); ++i) {
        if (m_albumKeys[i] == key) {
            position = i;
        }
    }
    return position;
}

void Covers::SelectAlbum(std::size_t position) {
    m_selected = position;
    m_view.RemovePictures();
    SetPanel({});
    m_coverAlbumId.clear();
    m_coverInterpretId.clear();
    m_paths = {};
    ShowCovers();
}

std::string Covers::SelectStatement() const {
    return "Select Front, Back, CD, CD2, Inlay, Inlet from Covers where Album_id = " + m_coverAlbumId +
           " and Interpret_id = " + m_coverInterpretId;
}

// An image whose file has gone is passed over and its field stays as it is: after the album was selected that
// is empty, and the next save clears the column. The panel shows the front's column for each of the six.
void Covers::ShowCovers() {
    if (!m_selected) {
        return;
    }
    const Hourglass hourglass(m_view);
    const std::string& key = m_albumKeys.at(*m_selected);
    const std::size_t interpret = key.find(InterpretPart);
    m_coverInterpretId = key.substr(interpret + InterpretPart.size());
    m_coverAlbumId = key.substr(AlbumPart.size(), interpret - AlbumPart.size());
    ADODB::Recordset covers;
    covers.Open(SelectStatement(), *mainModule.Connection);
    if (covers.RecordCount() == 0) {
        return;
    }
    for (std::size_t page = 0; page < CoverPageCount; ++page) {
        const ADODB::Field column = covers.Fields(page);
        if (!column.IsNull() && services.fileSystem->FileExists(column.Text())) {
            m_paths[page] = column.Text();
            m_view.ShowPicture(static_cast<CoverPage>(page), m_paths[page]);
            SetPanel(covers.Fields(0).Text());
        }
    }
}

void Covers::SaveCovers() {
    if (!m_selected) {
        return;
    }
    const Hourglass hourglass(m_view);
    const ADODB::WriteLock writeLock(*mainModule.Connection);
    const auto path = [this](CoverPage page) { return SqlQuote(Path(page)); };
    if (const auto row = CoverRow(m_coverAlbumId, m_coverInterpretId)) {
        mainModule.Connection->Execute(
            "Update Covers Set"
            " Front = '" +
            path(CoverPage::Front) + "', Back = '" + path(CoverPage::Back) + "', CD = '" +
            path(CoverPage::CD) + "', CD2 = '" + path(CoverPage::CD2) + "', Inlay = '" +
            path(CoverPage::Inlay) + "', Inlet = '" + path(CoverPage::Inlet) + "' where Cover_id = " + *row);
        return;
    }
    mainModule.Connection->Execute("Insert Into Covers"
                                   " (Album_id, Interpret_id, Front, Back, CD, CD2, Inlay, Inlet)"
                                   " values (" +
                                   m_coverAlbumId + ", " + m_coverInterpretId + ", '" +
                                   path(CoverPage::Front) + "', '" + path(CoverPage::Back) + "', '" +
                                   path(CoverPage::CD) + "', '" + path(CoverPage::CD2) + "', '" +
                                   path(CoverPage::Inlay) + "', '" + path(CoverPage::Inlet) + "')");
}

void Covers::SetPanel(const std::string& path) {
    m_panel = path;
    m_view.SetPanel(path);
}

void Covers::SSTab1_Click(CoverPage page) {
    if (!m_selected) {
        return;
    }
    ADODB::Recordset covers;
    covers.Open(SelectStatement(), *mainModule.Connection);
    if (covers.RecordCount() > 0) {
        SetPanel(covers.Fields(static_cast<std::size_t>(page)).Text());
    }
}

void Covers::Set(CoverPage page, const std::string& path) {
    Path(page) = path;
    if (m_view.LoadPicture(page, path)) {
        SetPanel(path);
        SaveCovers();
    }
}

void Covers::BrowseCover(CoverPage page) {
    if (!m_selected) {
        return;
    }
    try {
        const auto path = services.dialogs->ShowOpen(LoadResString(AllFilesFilter),
                                                     GetSpecialFolderPath(Shell::DocumentsFolder));
        if (path) {
            Set(page, *path);
        }
    } catch (const RuntimeError&) {
        // The command ends here; the field may have the path.
    }
}

void Covers::SetCover(CoverPage page, const std::string& path) {
    if (!m_selected) {
        return;
    }
    try {
        Set(page, path);
    } catch (const RuntimeError&) {
        // As above.
    }
}

void Covers::DeleteCover(CoverPage page) {
    Path(page).clear();
    SaveCovers();
    ShowCovers();
}

void Covers::OpenCoverFile() {
    if (m_panel.empty()) {
        return;
    }
    int result = 0;
    {
        const Hourglass hourglass(m_view);
        result = services.shell->ShellExecute(m_panel);
    }
    if (result == Shell::FileMissing) {
        ShowOpenFailure(Texts::FileNotFound);
    }
}

void Covers::OnlineCoverSearch() {
    if (!m_selected) {
        ShowExclamation(SelectAnAlbum, SearchNotPossible);
        return;
    }
    const std::string address = CoverSearchAddress(SearchTemplate(), m_albums.at(*m_selected));
    if (address.empty()) {
        ShowExclamation(NoSearchString, SearchNotPossible);
    } else {
        OpenInBrowser(address);
    }
}

std::string CoverSearchAddress(const std::string& searchTemplate, const std::string& album) {
    return ReplaceAll(searchTemplate, CoverPlaceholder, ReplaceAll(album, "-", ""));
}

} // namespace quavernet
