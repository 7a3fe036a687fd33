// Qt's own dialogs (folder, print, message buttons) in the language of the program.
#pragma once

#include <string>

namespace quavernet {

/// "GER" takes Qt's German texts, anything else its built-in English ones. May be called again at run time.
void SetDialogLanguage(const std::string& language);

} // namespace quavernet
