// The settings for the encoding of WAV files: their names, the values that they know, and all of them as
// frmKonvertOptions shows and stores them. ConvertSelectedFiles reads them one by one.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace quavernet {

namespace Konvert {

inline constexpr const char* Bitrate = "KonvertBitrate";
inline constexpr const char* Target = "KonvertTarget"; ///< A folder; empty: beside the WAV files.
inline constexpr const char* MonoStereo = "KonvertMonoStereo";
inline constexpr const char* Combine = "KonvertCombine"; ///< "1" is yes, here and below.
inline constexpr const char* NoGap = "KonvertNoGap";
inline constexpr const char* Delete = "KonvertDelete";
inline constexpr const char* Show = "ShowKonvert"; ///< Whether each conversion shows the dialog first.

inline constexpr const char* Mono = "mono";
inline constexpr const char* Stereo = "stereo";
inline constexpr const char* FirstBitrate = "128"; ///< Until the user chooses another.

/// Kilobits a second.
inline constexpr std::array<std::string_view, 14> Bitrates{"32",  "40",  "48",  "56",  "64",  "80",  "96",
                                                           "112", "128", "160", "192", "224", "256", "320"};

} // namespace Konvert

struct KonvertOptions {
    std::string txtTarget;   ///< Bytes of the folder's path.
    std::string cboBitrates; ///< May be none of the list.
    bool optStereo = false;  ///< Neither this nor the next one is set for a stored text of no sense.
    bool optMono = false;
    bool chkCombine = false;
    bool chkNoGap = false;
    bool chkDelete = false;
    bool chkShowKonvert = false;
};

/// A user who never stored anything finds chkShowKonvert clear here, although conversions show the dialog.
/// Throws SettingError for a check box whose stored text is no number.
KonvertOptions LoadKonvertOptions();
void SaveKonvertOptions(const KonvertOptions& options);

/// Asks for a folder; its path with a final "/", or nothing if the user cancelled.
std::optional<std::string> BrowseTarget();

/// Whether the stored number of a check box is 1, rounded to a whole one. Throws SettingError 13 for a text
/// that is no number, and 6 for one of more than 16 bits.
bool CheckBoxSetting(const std::string& name, const std::string& defaultValue);

} // namespace quavernet
