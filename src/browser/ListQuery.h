// The filter, statements, rows and texts of the main list. LoadDatabase puts them together; the list's form
// shows the rows.
#pragma once

#include "platform/ADODB.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quavernet {

/// What the filter controls say. Letter, sort flags and modes are read from mainModule.
struct ListFilter {
    std::string SearchText;
    bool InterpretChecked = true;
    bool TitleChecked = true;
    std::optional<std::int64_t> DriveId; ///< ItemData of the chosen entry; nothing for entry 0.
    std::optional<std::int64_t> GenreId;
    std::optional<std::int64_t> AlbumId;
    bool ViewMp3 = true;
    bool ViewWav = true;
    bool ViewOgg = true;
};

/// The six columns of the list.
enum class ListColumn { Interpret, Title, Length, Size, Quality, Format };
inline constexpr int ListColumnCount = 6;

/// What the statement gave, and which of its rows are listed. Shared by the rows and by the path and name
/// collections of mainModule.
struct ListData {
    ADODB::RowBlock Block;
    std::vector<std::uint32_t> Listed; ///< Listed row - 1 -> row of the block.
};

/// The listed rows, counted from 1, in compact form; texts are made when they are asked for, by the regional
/// settings of that moment. Copies share their data.
class ListRows {
public:
    ListRows();
    explicit ListRows(std::shared_ptr<const ListData> data);

    std::size_t Count() const { return m_data->Listed.size(); }

    /// Throws RuntimeError 5 if there is no such row.
    std::string Text(std::size_t row, ListColumn column) const;
    std::int64_t RowData(std::size_t row) const; ///< Files.File_id

private:
    std::shared_ptr<const ListData> m_data;
};

/// What stays of a load beside the rows: the counters are texts, as they are shown.
struct ListTotals {
    std::int64_t LibraryFiles = 0; ///< Of the whole library, listed or not.
    double TotalMegabytes = 0;     ///< Sum of the sizes as shown, in units of 1024 * 1024 bytes.
    std::string InterpretCount = "0";
    std::string TitleCount = "0";
    std::string AlbumCount = "0";
};

struct ListResult {
    ListRows Rows;
    ListTotals Totals;
};

/// The clauses of the search box and of the three combos, each beginning " and "; empty where nothing is
/// chosen.
std::string SearchClause(const ListFilter& filter);
std::string ComboClauses(const ListFilter& filter);

/// The statement of the list and the three of the counters, for the current mode and sort flags of
/// mainModule.
std::string ListStatement(const ListFilter& filter, const std::string& list);
std::string InterpretCountStatement(const ListFilter& filter, const std::string& list);
std::string TitleCountStatement(const ListFilter& filter, const std::string& list);
std::string AlbumCountStatement(const ListFilter& filter, const std::string& list);

/// Texts of the status bar panels.
std::string FileCountText(std::size_t listed, double totalMegabytes);
std::string InterpretCountText(const std::string& count);
std::string TitleCountText(const std::string& count);
std::string AlbumCountText(const std::string& count);

/// Whether a text passes the letter: "other" takes every first character but plain letters; "A", "O" and "U"
/// take their umlauts as well.
bool LetterMatch(std::string_view text, const std::string& letter);

} // namespace quavernet
