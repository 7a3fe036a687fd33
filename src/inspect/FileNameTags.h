// Title and performer out of a file's name, by the rule for dashes. Called for files without tags: by
// TagsFromFileName for the MPEG side and by the Ogg pass.
#pragma once

#include <string>
#include <string_view>

namespace quavernet {

/// Views into the name that was split.
struct FileNameTags {
    std::string_view title;
    std::string_view performer; ///< Empty where the name holds no "-".
};

/// The pieces between the "-", trimmed, the extension gone: "title", "performer-title", or three and more,
/// of which the greater of the first two is the performer and the third is the title.
/// Throws RuntimeError if the last piece has no four characters to lose.
FileNameTags SplitFileName(std::string_view name);

} // namespace quavernet
