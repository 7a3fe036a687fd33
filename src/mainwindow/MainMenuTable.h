// The menus of the main window as one table, in the order in which they stand. MainMenu builds the menus from
// it; an item comes into them with its command, which a room registers under the item's name.
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
        Separated = 8,      ///< A separator comes before it.
        Bar = 16,           ///< A separator with a name, shown and hidden like an item.
        Shifted = 32,       ///< The shortcut is with Shift too.
        OneOf = 64,         ///< Of those that have this one carries its check mark.
    };

    std::string_view Name;
    std::string_view Parent; ///< Empty for the menu bar; "popup" for a menu that a right click opens.
    std::int32_t Text;       ///< Text number; 0 for an entry with a text of its own.
    char Shortcut;           ///< Together with Ctrl; 0 for none.
    std::uint8_t Trait;

    constexpr bool Is(Traits trait) const { return (Trait & trait) != 0; }
};

namespace detail {
inline constexpr std::uint8_t Item = MenuEntry::Plain;
inline constexpr std::uint8_t Group = MenuEntry::Menu;
inline constexpr std::uint8_t Check = MenuEntry::Checkable;
inline constexpr std::uint8_t Grey = MenuEntry::StartsDisabled;
inline constexpr std::uint8_t Line = MenuEntry::Separated;
inline constexpr std::uint8_t Bar = MenuEntry::Bar;
inline constexpr std::uint8_t Shift = MenuEntry::Shifted;
inline constexpr std::uint8_t OneOf = MenuEntry::OneOf;
} // namespace detail

inline constexpr auto MainMenuTable = [] {
    using detail::Bar, detail::Check, detail::Grey, detail::Group, detail::Item, detail::Line, detail::OneOf,
        detail::Shift;
    return std::to_array<MenuEntry>({
        {"mnuFile", "", 201, 0, Group},
        {"mnuScan", "mnuFile", 207, 'S', Item},
        {"mnuPlayer", "mnuFile", 208, 'P', Item},
        {"mnuPrint", "mnuFile", 209, 'D', Item | Line},
        {"mnuFileExport", "mnuFile", 210, 0, Item | Line},
        {"mnuFileImport", "mnuFile", 211, 0, Item},
        {"mnuCleanDatabase", "mnuFile", 212, 'C', Item | Line},
        {"mnuExit", "mnuFile", 213, 'Q', Item | Line},
        {"mnuView", "", 202, 0, Group},
        {"mnump3", "mnuView", 214, 0, Check},
        {"mnuogg", "mnuView", 215, 0, Check},
        {"mnuwav", "mnuView", 216, 0, Check},
        {"mnuShowGridlines", "mnuView", 217, 'G', Check | Line},
        {"mnuViewLanguage", "mnuView", 248, 0, Group | Line},
        {"mnuViewLanguageGER", "mnuViewLanguage", 249, 0, Check | OneOf},
        {"mnuViewLanguageENG", "mnuViewLanguage", 250, 0, Check | OneOf},
        {"mnuEdit", "", 203, 0, Group},
        {"mnuEditExchange", "mnuEdit", 218, 0, Grey},
        {"mnuEditFilename", "mnuEdit", 219, 0, Grey},
        {"mnuEditDelete", "mnuEdit", 220, 0, Grey},
        {"mnuManageCovers", "mnuEdit", 221, 'L', Item | Line},
        {"mnuEditTree2", "mnuEdit", 222, 'B', Item},
        {"mnuExtras", "", 204, 0, Group},
        {"mnuDetails", "mnuExtras", 223, 'I', Item},
        {"mnuPlaySelectedItems", "mnuExtras", 224, 'A', Item | Line},
        {"mnuPlaylist", "mnuExtras", 225, 'E', Grey},
        {"mnuKonvert", "mnuExtras", 226, 'K', Grey},
        {"mnuRandomPlay", "mnuExtras", 227, 'R', Item | Line},
        {"mnuOptions", "", 205, 0, Group},
        {"mnuScanOptions", "mnuOptions", 228, 0, Group},
        {"mnuQuickscan", "mnuScanOptions", 239, 0, Check},
        {"mnuRecursive", "mnuScanOptions", 240, 0, Check},
        {"mnuScanMp3", "mnuScanOptions", 214, 0, Check | Line},
        {"mnuScanWav", "mnuScanOptions", 216, 0, Check},
        {"mnuScanOgg", "mnuScanOptions", 215, 0, Check},
        {"mnuOptionsScanLog", "mnuScanOptions", 241, 0, Check | Line},
        {"mnuKonvertoptions", "mnuOptions", 229, 0, Item},
        {"mnuToplists", "mnuOptions", 230, 0, Item},
        {"mnuCoverOnlineSearch", "mnuOptions", 231, 0, Item},
        {"mnuStandardScanningPath", "mnuOptions", 251, 0, Item},
        {"mnuRandom", "mnuOptions", 232, 0, Item},
        {"mnuRemind", "mnuOptions", 233, 0, Item},
        {"mnuPlayerOptions", "mnuOptions", 234, 0, Group},
        {"mnuAddToPlaylist", "mnuPlayerOptions", 242, 0, Check},
        {"mnuExternalPlayer", "mnuPlayerOptions", 243, 0, Check},
        {"mnuOptionsLoadOverSearch", "mnuOptions", 235, 0, Check | Line},
        {"mnuUpperHelp", "", 206, 0, Group},
        {"mnuHelp", "mnuUpperHelp", 236, 'H', Item},
        {"mnuAbout", "mnuUpperHelp", 238, 0, Item | Line},

        {"mnuKontext", "popup", 0, 0, Group},
        {"mnuKontextDetails", "mnuKontext", 223, 0, Item},
        {"mnuKontextPlay", "mnuKontext", 224, 0, Item},
        {"mnuKontextKonvert", "mnuKontext", 226, 0, Item},
        {"mnuKontextExchange", "mnuKontext", 218, 0, Item | Line},
        {"mnuKontextFilename", "mnuKontext", 219, 0, Item},
        {"mnuKontextDelete", "mnuKontext", 220, 0, Item},
        {"mnuKontextPlaylist", "mnuKontext", 225, 0, Item | Line},
        {"mnuKontextRandom", "mnuKontext", 227, 0, Item},
        {"mnuKontextPrint", "mnuKontext", 209, 0, Item | Line},
        {"mnuKontextCopyPaths", "mnuKontext", 812, 'C', Line | Shift},
        {"mnuKontextAnsicht", "mnuKontext", 202, 0, Group | Line},
        {"mnuKontextMp3", "mnuKontextAnsicht", 214, 0, Check},
        {"mnuKontextOgg", "mnuKontextAnsicht", 215, 0, Check},
        {"mnuKontextWav", "mnuKontextAnsicht", 216, 0, Check},
        {"mnuKontextShowGridlines", "mnuKontextAnsicht", 217, 0, Check | Line},

        {"mnuTree", "popup", 0, 0, Group},
        {"mnuPlay", "mnuTree", 224, 0, Item},
        {"mnuTreeRandom", "mnuTree", 227, 0, Item},
        {"mnuSep12", "mnuTree", 0, 0, Bar},
        {"mnuCreatePlaylist", "mnuTree", 225, 0, Item},
        {"mnuSep3", "mnuTree", 0, 0, Bar},
        {"mnuNewCategory", "mnuTree", 245, 0, Item},
        {"mnuEditCategory", "mnuTree", 246, 0, Item},
        {"mnuSep11", "mnuTree", 0, 0, Bar},
        {"mnuDelete", "mnuTree", 220, 0, Item},
        {"mnuDeleteContent", "mnuTree", 247, 0, Item},
        {"mnuSep15", "mnuTree", 0, 0, Bar},
        {"mnuShowInGrid", "mnuTree", 244, 0, Item},
        {"mnuSep2", "mnuTree", 0, 0, Bar},
        {"mnuExport", "mnuTree", 210, 0, Item},
        {"mnuImport", "mnuTree", 211, 0, Item},
        {"mnuEditTree", "mnuTree", 222, 0, Item},
    });
}();

} // namespace quavernet
