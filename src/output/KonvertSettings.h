// The names of the settings for the encoding of WAV files, and the values that they know. The dialog stores
// them and ConvertSelectedFiles reads them.
#pragma once

#include <array>
#include <string_view>

namespace quavernet::Konvert {

inline constexpr const char* Bitrate = "KonvertBitrate";
inline constexpr const char* Target = "KonvertTarget"; ///< A folder; empty: beside the WAV files.
inline constexpr const char* MonoStereo = "KonvertMonoStereo";
inline constexpr const char* Combine = "KonvertCombine"; ///< "1" is yes, here and below.
inline constexpr const char* NoGap = "KonvertNoGap";
inline constexpr const char* Delete = "KonvertDelete";
inline constexpr const char* Show = "ShowKonvert"; ///< Whether the dialog is shown before each conversion.

inline constexpr const char* Mono = "mono";
inline constexpr const char* Stereo = "stereo";
inline constexpr const char* FirstBitrate = "128"; ///< Until the user chooses another.

/// Kilobits a second.
inline constexpr std::array<std::string_view, 14> Bitrates{"32",  "40",  "48",  "56",  "64",  "80",  "96",
                                                           "112", "128", "160", "192", "224", "256", "320"};

} // namespace quavernet::Konvert
