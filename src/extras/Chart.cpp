#include "extras/Chart.h"

#include "app/LibraryViews.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/OpenWithShell.h"
#include "app/PlayerWindow.h"
#include "app/ScopedValue.h"
#include "app/TextNumbers.h"
#include "extras/TopListOptions.h"
#include "library/SqlQuote.h"

#include <algorithm>
#include <cstddef>

namespace quavernet {

namespace {

constexpr const char* MostPlayed =
    "Select Name, Hits, Path, File_id "
    "from Files order by  Hits DESC, DateLastModified DESC"; // Both blanks before Hits belong to it.
constexpr const char* Newest =
    "Select Name, DateLastModified, Path, File_id from Files order by DateLastModified DESC";
constexpr std::int32_t PlaceHeader = 501;
constexpr std::int32_t NameHeader = 502;

std::string Place(std::size_t number) {
    return std::to_string(number) + ".";
}

// A date column shows its time as well, if it has one.
std::string ShortDate(const std::string& shown) {
    const auto date = ParseDate(shown, services.regional);
    return date ? ShortDateText(*date, services.regional) : shown;
}

ChartContent Headed(std::int32_t limit) {
    ChartContent content;
    content.IsTopList = mainModule.ChartShowTop; // Whatever ChartShowNew says.
    content.Title = content.IsTopList ? LoadResString(Texts::TopFiles) + " " + std::to_string(limit)
                                      : LoadResString(Texts::NewestFiles);
    content.Headers = {LoadResString(PlaceHeader), LoadResString(NameHeader),
                       LoadResString(content.IsTopList ? Texts::ChartHits : Texts::ChartDate)};
    return content;
}

// Its box is German whatever the language: users of either know it so.
void PlayChartFile(const std::string& path) {
    const int result = services.shell->ShellExecute(path);
    if (result == Shell::FileMissing || result == Shell::FolderMissing) {
        services.msgBox->Show("Die Datei konnte nicht gefunden werden!", "Öffnen nicht möglich",
                              MsgBox::Icon::Exclamation, MsgBox::Buttons::Ok);
    }
}

} // namespace

void Chart::Form_Load() {
    m_loaded = true;
    m_chartLimit = ChartLimitSetting();
    m_chartFileIds.clear();
    m_chartRow = 0;
}

void Chart::Form_Unload() {
    if (m_loaded) {
        m_loaded = false;
        mainModule.ChartShowTop = false;
        mainModule.ChartShowNew = false;
        m_chartPaths.Clear();
        m_chartFileIds.clear();
    }
}

ChartContent Chart::FillChart() {
    m_chartPaths.Clear();
    m_chartFileIds.clear();
    ChartContent content = Headed(m_chartLimit);
    AddFiles(content);
    AddEmptyLines(content);
    if (content.Lines.size() >= 2 && static_cast<std::size_t>(m_chartRow) < content.Lines.size()) {
        content.CurrentRow = m_chartRow;
    }
    return content;
}

void Chart::AddFiles(ChartContent& content) {
    ADODB::Recordset files;
    files.OpenFirst(content.IsTopList ? MostPlayed : Newest, *mainModule.Connection,
                    static_cast<std::size_t>(std::max(m_chartLimit, 0)));
    content.Lines.reserve(static_cast<std::size_t>(files.RecordCount()));
    for (; !files.Eof(); files.MoveNext()) {
        const std::string value = files.Fields(1).Text();
        content.Lines.push_back({Place(content.Lines.size() + 1), files.Fields(0).Text(),
                                 content.IsTopList ? value : ShortDate(value)});
        m_chartFileIds += files.Fields(3).Text() + ", ";
        m_chartPaths.Add(files.Fields(2).Text());
    }
    files.Close();
    m_chartFileIds.resize(m_chartFileIds.size() - std::min<std::size_t>(m_chartFileIds.size(), 2));
}

// The list has as many lines as were asked for, but in an empty library.
void Chart::AddEmptyLines(ChartContent& content) const {
    const std::size_t files = content.Lines.size();
    const std::size_t wanted = static_cast<std::size_t>(std::max(m_chartLimit, 0));
    if (files > 0) {
        const std::size_t end = std::min(wanted, files + MostEmptyLines);
        for (std::size_t number = files + 1; number <= end; ++number) {
            content.Lines.push_back({Place(number), {}, {}});
        }
    }
}

std::optional<ChartContent> Chart::grdChart_DblClick(std::int32_t row, PlayerWindow& player,
                                                     const std::function<void(MousePointer)>& setPointer) {
    setPointer(MousePointer::Hourglass);
    try {
        m_chartRow = Narrow16(row);
        Play(row, player);
    } catch (const RuntimeError&) {
        setPointer(MousePointer::Default);
        ShowExclamation(Texts::OpenFailed, Texts::PlayingFailed);
        return std::nullopt;
    }
    try {
        auto content = m_loaded ? std::optional(FillChart()) : std::nullopt;
        setPointer(MousePointer::Default);
        return content;
    } catch (const RuntimeError&) {
        setPointer(MousePointer::Default);
        throw;
    }
}

void Chart::Play(std::int32_t row, PlayerWindow& player) {
    // The window may close while the player lets events run: what the paths are asked for afterwards is asked
    // of a copy. A line without a file fails there, in the internal player after the queue has been emptied.
    const RowTexts paths = m_chartPaths;
    const std::int32_t place = row + 1;
    if (mainModule.UseExternalPlayer) {
        PlayChartFile(paths.Item(place));
    } else {
        player.Show();
        player.FillPlaylistFromCharts(paths, place);
        player.PlayFile(1);
    }
    mainModule.Connection->Execute("Update Files Set Hits = Hits + 1 where Path = '" +
                                   SqlQuote(paths.Item(place)) + "'");
}

void Chart::cmdShowInList_Click(LibraryViews& views) const {
    const ScopedValue chartMode(mainModule.ShowChartMode, true);
    // One of the tree's requests may be under way around this one.
    const ScopedValue listMode(mainModule.ShowInGridMode, false);
    const std::string fileIds = m_chartFileIds; // The window may close while the list is loaded.
    if (!fileIds.empty()) {
        views.LoadDatabase(fileIds);
    }
}

} // namespace quavernet
