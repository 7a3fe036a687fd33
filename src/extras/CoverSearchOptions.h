// The address template of the online cover search, as frmCoverSearchOptions shows and stores it and as the
// search takes it.
#pragma once

#include <string>

namespace quavernet {

/// In a template the place of what is searched for.
inline constexpr const char* CoverPlaceholder = "#coverstring#";

/// The stored template for the search. Without one: a site of its own, another than the dialog's.
std::string SearchTemplate();

/// The stored template for the dialog. Without one: the example.
std::string ShownSearchTemplate();

/// A template as the dialog shows it to explain one, and its default.
std::string ExampleSearchTemplate();

/// Stores the text as it is: nothing is checked, and an empty one counts as a template too.
void SaveSearchTemplate(const std::string& text);

} // namespace quavernet
