// How many files the random play of the library plays: the choice of frmRandomPlay, as it is stored and as it
// is read when the play begins.
#pragma once

#include <cstdint>
#include <string>

namespace quavernet {

/// The most files that the internal player takes.
inline constexpr std::int32_t MostRandomFiles = 32767;

struct RandomPlaySettings {
    bool optAllFiles = true; ///< As many as the library has.
    bool optFileCount =
        false; ///< As many as the next one says. Neither is set for a stored text of no sense.
    std::string txtFileCount;
};

RandomPlaySettings LoadRandomPlaySettings();

/// Warns of a count that the internal player can't take, and stores it all the same. Lets events run while
/// the box is open.
void SaveRandomPlaySettings(bool fileCount, const std::string& count);

/// Sets mainModule.RandomCount for a play of the library; a stored choice of no sense leaves it as it was.
/// Throws SettingError if the count is no number, or none of 32 bits.
void SetRandomCount();

} // namespace quavernet
