// The letters that open menus and run their items, one table for each language. MainMenu marks the captions
// with them; the captions themselves stay as they are.
#pragma once

#include <string>
#include <string_view>

namespace quavernet {

/// The letter of an item or menu in a language ("GER", "ENG"); 0 if it has none.
char MenuMnemonic(std::string_view item, std::string_view language);

/// The caption with "&" before the letter, where a word begins with it or else where it comes first. Every
/// other "&" is doubled, so that it shows. Letters are ASCII and match in either case.
std::string WithMnemonic(std::string_view caption, char letter);

} // namespace quavernet
