// How long the charts are, and whether they count from nothing again: the choices of frmOptToplist, as they
// are stored, and as the charts read them.
#pragma once

#include <cstdint>
#include <string>

namespace quavernet {

/// The stored length as the dialog shows it, "10" if none ever was.
std::string FileCountTopList();

/// The same as a number: that of the text's beginning, 0 where there is none. One out of range is the nearest
/// of 32 bits.
std::int32_t ChartLimitSetting();

/// Stores the text as it is: what is no number counts as 0 later. With `resetStatistics` no file has ever
/// been played from now on; nobody is asked. False, and nothing done, for an empty text. Throws RuntimeError
/// if the statement fails; the text is stored then.
bool SaveTopListOptions(const std::string& fileCount, bool resetStatistics);

} // namespace quavernet
