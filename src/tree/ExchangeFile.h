// The form of the tree's exchange file: two sections of lines, the names of the categories and the entries
// with their fields between commas. Used by its writer and its reader, which keep the form as it is: nothing
// in it is quoted, and not every tree that is written can be read back.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quavernet {

inline constexpr std::string_view CategoriesLine = "#Categories"; ///< Begins the section of the names.
inline constexpr std::string_view FilesLine = "#Files";           ///< Begins the section of the entries.

enum class ExchangeSection { None, Categories, Files };

/// Tells lines with data from the others. One object reads one file, line by line.
class ExchangeSections {
public:
    /// The section that the line is data of. None for a line before the first section, an empty line, and any
    /// line with a "#": it names the section that follows, in any case of letters, or is passed over, so that
    /// names with this sign are lost.
    ExchangeSection Of(std::string_view line);

private:
    ExchangeSection m_section = ExchangeSection::None;
};

/// The fields of an entry, as they are in its line.
struct ExchangeEntry {
    std::string_view Position; ///< A whole number; blanks beside it are allowed.
    std::string_view Parent;   ///< Name of the category.
    std::string_view Filename; ///< May hold commas.
    std::string_view Path; ///< Everything after the last comma: a path with one is cut and won't be found.
};

/// Nothing if the line has fewer than three commas, or its position is not a 32-bit number.
std::optional<ExchangeEntry> SplitEntry(std::string_view line);

/// The line that SplitEntry takes apart, with its end.
std::string EntryLine(const ExchangeEntry& entry);

} // namespace quavernet
