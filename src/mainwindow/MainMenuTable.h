// The menus of the main window as one table, in the order in which they stand. The main window builds its
// menus from it; a command is brought into the menus by its last column.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace quavernet {

struct MenuEntry {
    enum Traits : std::uint8_t {
        Plain = 0,
        Menu = 1,           ///< Holds the entries that name it as their parent.
        Checkable = 2,      ///< Carries a check mark.
        StartsDisabled = 4, ///< Grey until a row is clicked.
        Separated = 8,      ///< A separator stands before it.
        Built = 16,         ///< The command exists; others stay out of the menus.
        Bar = 32,           ///< A separator with a name, shown and hidden like an item.
    };

    std::string_view Name;
    std::string_view Parent; ///< Empty for the menu bar; "popup" for a menu that a right click opens.
    std::int32_t Text;       ///< Text number; 0 for an entry with a text of its own.
    char Shortcut;           ///< Together with Ctrl; 0 for none.
    std::uint8_t Trait;

    constexpr bool Is(Traits trait) const { return (Trait & trait) != 0; }
};

namespace detail {
inline constexpr std::uint8_t Item = MenuEntry::Built;
inline constexpr std::uint8_t Later = MenuEntry::Plain;
inline constexpr std::uint8_t Group = MenuEntry::Menu | MenuEntry::Built;
inline constexpr std::uint8_t LaterGroup = MenuEntry::Menu;
inline constexpr std::uint8_t Check = MenuEntry::Checkable | MenuEntry::Built;
inline constexpr std::uint8_t Grey = MenuEntry::StartsDisabled;
inline constexpr std::uint8_t Line = MenuEntry::Separated;
inline constexpr std::uint8_t LaterBar = MenuEntry::Bar;
} // namespace detail

inline constexpr auto MainMenuTable = [] {
    using detail::Check, detail::Grey, detail::Group, detail::Item, detail::Later, detail::LaterBar,
        detail::LaterGroup, detail::Line;
    return std::to_array<MenuEntry>({
        {"mnuFile", "", 201, 0, Group},
        {"mnuScan", "mnuFile", 207, 'S', Item},
        {"mnuPlayer", "mnuFile", 208, 'P', Later},
        {"mnuPrint", "mnuFile", 209, 'D', Later | Line},
        {"mnuFileExport", "mnuFile", 210, 0, Later | Line},
        {"mnuFileImport", "mnuFile", 211, 0, Later},
        {"mnuCleanDatabase", "mnuFile", 212, 'C', Item | Line},
        {"mnuExit", "mnuFile", 213, 'Q', Item | Line},
        {"mnuView", "", 202, 0, Group},
        {"mnump3", "mnuView", 214, 0, Check},
        {"mnuogg", "mnuView", 215, 0, Check},
        {"mnuwav", "mnuView", 216, 0, Check},
        {"mnuShowGridlines", "mnuView", 217, 'G', Check | Line},
        {"mnuViewLanguage", "mnuView", 248, 0, Group | Line},
        {"mnuViewLanguageGER", "mnuViewLanguage", 249, 0, Check},
        {"mnuViewLanguageENG", "mnuViewLanguage", 250, 0, Check},
        {"mnuEdit", "", 203, 0, LaterGroup},
        {"mnuEditExchange", "mnuEdit", 218, 0, Later | Grey},
        {"mnuEditFilename", "mnuEdit", 219, 0, Later | Grey},
        {"mnuEditDelete", "mnuEdit", 220, 0, Later | Grey},
        {"mnuManageCovers", "mnuEdit", 221, 'L', Later | Line},
        {"mnuEditTree2", "mnuEdit", 222, 'B', Later},
        {"mnuExtras", "", 204, 0, LaterGroup},
        {"mnuDetails", "mnuExtras", 223, 'I', Later},
        {"mnuPlaySelectedItems", "mnuExtras", 224, 'A', Later | Line},
        {"mnuPlaylist", "mnuExtras", 225, 'E', Later | Grey},
        {"mnuKonvert", "mnuExtras", 226, 'K', Later | Grey},
        {"mnuRandomPlay", "mnuExtras", 227, 'R', Later | Line},
        {"mnuOptions", "", 205, 0, Group},
        {"mnuScanOptions", "mnuOptions", 228, 0, Group},
        {"mnuQuickscan", "mnuScanOptions", 239, 0, Check},
        {"mnuRecursive", "mnuScanOptions", 240, 0, Check},
        {"mnuScanMp3", "mnuScanOptions", 214, 0, Check | Line},
        {"mnuScanWav", "mnuScanOptions", 216, 0, Check},
        {"mnuScanOgg", "mnuScanOptions", 215, 0, Check},
        {"mnuOptionsScanLog", "mnuScanOptions", 241, 0, Check | Line},
        {"mnuKonvertoptions", "mnuOptions", 229, 0, Later},
        {"mnuToplists", "mnuOptions", 230, 0, Later},
        {"mnuCoverOnlineSearch", "mnuOptions", 231, 0, Later},
        {"mnuStandardScanningPath", "mnuOptions", 251, 0, Item},
        {"mnuRandom", "mnuOptions", 232, 0, Later},
        {"mnuRemind", "mnuOptions", 233, 0, Item},
        {"mnuPlayerOptions", "mnuOptions", 234, 0, Group},
        {"mnuAddToPlaylist", "mnuPlayerOptions", 242, 0, Check},
        {"mnuExternalPlayer", "mnuPlayerOptions", 243, 0, Check},
        {"mnuOptionsLoadOverSearch", "mnuOptions", 235, 0, Check | Line},
        {"mnuUpperHelp", "", 206, 0, Group},
        {"mnuHelp", "mnuUpperHelp", 236, 'H', Item},
        {"mnuAbout", "mnuUpperHelp", 238, 0, Item | Line},

        {"mnuKontext", "popup", 0, 0, Group},
        {"mnuKontextDetails", "mnuKontext", 223, 0, Later},
        {"mnuKontextPlay", "mnuKontext", 224, 0, Later},
        {"mnuKontextKonvert", "mnuKontext", 226, 0, Later},
        {"mnuKontextExchange", "mnuKontext", 218, 0, Later | Line},
        {"mnuKontextFilename", "mnuKontext", 219, 0, Later},
        {"mnuKontextDelete", "mnuKontext", 220, 0, Later},
        {"mnuKontextPlaylist", "mnuKontext", 225, 0, Later | Line},
        {"mnuKontextRandom", "mnuKontext", 227, 0, Later},
        {"mnuKontextPrint", "mnuKontext", 209, 0, Later | Line},
        {"mnuKontextAnsicht", "mnuKontext", 202, 0, Group | Line},
        {"mnuKontextMp3", "mnuKontextAnsicht", 214, 0, Check},
        {"mnuKontextOgg", "mnuKontextAnsicht", 215, 0, Check},
        {"mnuKontextWav", "mnuKontextAnsicht", 216, 0, Check},
        {"mnuKontextShowGridlines", "mnuKontextAnsicht", 217, 0, Check | Line},

        {"mnuTree", "popup", 0, 0, LaterGroup},
        {"mnuPlay", "mnuTree", 224, 0, Later},
        {"mnuTreeRandom", "mnuTree", 227, 0, Later},
        {"mnuSep12", "mnuTree", 0, 0, LaterBar},
        {"mnuCreatePlaylist", "mnuTree", 225, 0, Later},
        {"mnuSep3", "mnuTree", 0, 0, LaterBar},
        {"mnuNewCategory", "mnuTree", 245, 0, Later},
        {"mnuEditCategory", "mnuTree", 246, 0, Later},
        {"mnuSep11", "mnuTree", 0, 0, LaterBar},
        {"mnuDelete", "mnuTree", 0, 0, Later}, // Its text is "Löschen" in every language.
        {"mnuDeleteContent", "mnuTree", 247, 0, Later},
        {"mnuSep15", "mnuTree", 0, 0, LaterBar},
        {"mnuShowInGrid", "mnuTree", 244, 0, Later},
        {"mnuSep2", "mnuTree", 0, 0, LaterBar},
        {"mnuExport", "mnuTree", 210, 0, Later},
        {"mnuImport", "mnuTree", 211, 0, Later},
        {"mnuEditTree", "mnuTree", 222, 0, Later},
    });
}();

} // namespace quavernet
