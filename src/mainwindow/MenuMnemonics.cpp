#include "mainwindow/MenuMnemonics.h"

#include "app/MarkedCaption.h"
#include "platform/Ascii.h"

#include <array>
#include <span>

namespace quavernet {

namespace {

struct Mnemonic {
    std::string_view Item;
    char Letter;
};

constexpr auto GermanMnemonics = std::to_array<Mnemonic>({
    {"mnuFile", 'D'},
    {"mnuView", 'A'},
    {"mnuEdit", 'B'},
    {"mnuExtras", 'E'},
    {"mnuOptions", 'O'},
    {"mnuUpperHelp", 'H'},
    {"mnuScan", 'S'},
    {"mnuPlayer", 'P'},
    {"mnuPrint", 'D'},
    {"mnuFileExport", 'E'},
    {"mnuFileImport", 'I'},
    {"mnuCleanDatabase", 'B'},
    {"mnuExit", 'Q'},
    {"mnump3", 'M'},
    {"mnuogg", 'O'},
    {"mnuwav", 'W'},
    {"mnuShowGridlines", 'G'},
    {"mnuViewLanguage", 'S'},
    {"mnuViewLanguageGER", 'D'},
    {"mnuViewLanguageENG", 'E'},
    {"mnuEditExchange", 'I'},
    {"mnuEditFilename", 'D'},
    {"mnuEditDelete", 'L'},
    {"mnuManageCovers", 'C'},
    {"mnuEditTree2", 'B'},
    {"mnuDetails", 'D'},
    {"mnuPlaySelectedItems", 'P'},
    {"mnuPlaylist", 'E'},
    {"mnuKonvert", 'K'},
    {"mnuRandomPlay", 'R'},
    {"mnuScanOptions", 'S'},
    {"mnuKonvertoptions", 'K'},
    {"mnuToplists", 'C'},
    {"mnuCoverOnlineSearch", 'O'},
    {"mnuStandardScanningPath", 'F'},
    {"mnuRandom", 'R'},
    {"mnuRemind", 'E'},
    {"mnuPlayerOptions", 'P'},
    {"mnuOptionsLoadOverSearch", 'D'},
    {"mnuQuickscan", 'Q'},
    {"mnuRecursive", 'R'},
    {"mnuScanMp3", 'M'},
    {"mnuScanWav", 'W'},
    {"mnuScanOgg", 'O'},
    {"mnuOptionsScanLog", 'L'},
    {"mnuAddToPlaylist", 'I'},
    {"mnuExternalPlayer", 'E'},
    {"mnuHelp", 'H'},
    {"mnuAbout", 'B'},
    {"mnuKontextDetails", 'D'},
    {"mnuKontextPlay", 'P'},
    {"mnuKontextKonvert", 'K'},
    {"mnuKontextExchange", 'I'},
    {"mnuKontextFilename", 'N'},
    {"mnuKontextDelete", 'L'},
    {"mnuKontextPlaylist", 'E'},
    {"mnuKontextRandom", 'R'},
    {"mnuKontextPrint", 'U'},
    {"mnuKontextCopyPaths", 'F'},
    {"mnuKontextAnsicht", 'A'},
    {"mnuKontextMp3", 'M'},
    {"mnuKontextOgg", 'O'},
    {"mnuKontextWav", 'W'},
    {"mnuKontextShowGridlines", 'G'},
    {"mnuPlay", 'P'},
    {"mnuTreeRandom", 'R'},
    {"mnuCreatePlaylist", 'E'},
    {"mnuNewCategory", 'N'},
    {"mnuEditCategory", 'B'},
    {"mnuDelete", 'L'},
    {"mnuDeleteContent", 'I'},
    {"mnuShowInGrid", 'A'},
    {"mnuExport", 'X'},
    {"mnuImport", 'M'},
    {"mnuEditTree", 'U'},
});

constexpr auto EnglishMnemonics = std::to_array<Mnemonic>({
    {"mnuFile", 'F'},
    {"mnuView", 'V'},
    {"mnuEdit", 'E'},
    {"mnuExtras", 'X'},
    {"mnuOptions", 'O'},
    {"mnuUpperHelp", 'H'},
    {"mnuScan", 'S'},
    {"mnuPlayer", 'O'},
    {"mnuPrint", 'P'},
    {"mnuFileExport", 'E'},
    {"mnuFileImport", 'I'},
    {"mnuCleanDatabase", 'C'},
    {"mnuExit", 'X'},
    {"mnump3", 'M'},
    {"mnuogg", 'O'},
    {"mnuwav", 'W'},
    {"mnuShowGridlines", 'G'},
    {"mnuViewLanguage", 'L'},
    {"mnuViewLanguageGER", 'G'},
    {"mnuViewLanguageENG", 'E'},
    {"mnuEditExchange", 'S'},
    {"mnuEditFilename", 'F'},
    {"mnuEditDelete", 'D'},
    {"mnuManageCovers", 'C'},
    {"mnuEditTree2", 'E'},
    {"mnuDetails", 'D'},
    {"mnuPlaySelectedItems", 'P'},
    {"mnuPlaylist", 'C'},
    {"mnuKonvert", 'V'},
    {"mnuRandomPlay", 'R'},
    {"mnuScanOptions", 'S'},
    {"mnuKonvertoptions", 'C'},
    {"mnuToplists", 'T'},
    {"mnuCoverOnlineSearch", 'O'},
    {"mnuStandardScanningPath", 'D'},
    {"mnuRandom", 'R'},
    {"mnuRemind", 'M'},
    {"mnuPlayerOptions", 'P'},
    {"mnuOptionsLoadOverSearch", 'L'},
    {"mnuQuickscan", 'Q'},
    {"mnuRecursive", 'R'},
    {"mnuScanMp3", 'M'},
    {"mnuScanWav", 'W'},
    {"mnuScanOgg", 'O'},
    {"mnuOptionsScanLog", 'L'},
    {"mnuAddToPlaylist", 'A'},
    {"mnuExternalPlayer", 'E'},
    {"mnuHelp", 'H'},
    {"mnuAbout", 'A'},
    {"mnuKontextDetails", 'D'},
    {"mnuKontextPlay", 'P'},
    {"mnuKontextKonvert", 'V'},
    {"mnuKontextExchange", 'S'},
    {"mnuKontextFilename", 'F'},
    {"mnuKontextDelete", 'L'},
    {"mnuKontextPlaylist", 'C'},
    {"mnuKontextRandom", 'R'},
    {"mnuKontextPrint", 'I'},
    {"mnuKontextCopyPaths", 'O'},
    {"mnuKontextAnsicht", 'W'},
    {"mnuKontextMp3", 'M'},
    {"mnuKontextOgg", 'O'},
    {"mnuKontextWav", 'W'},
    {"mnuKontextShowGridlines", 'G'},
    {"mnuPlay", 'P'},
    {"mnuTreeRandom", 'R'},
    {"mnuCreatePlaylist", 'C'},
    {"mnuNewCategory", 'N'},
    {"mnuEditCategory", 'E'},
    {"mnuDelete", 'D'},
    {"mnuDeleteContent", 'O'},
    {"mnuShowInGrid", 'S'},
    {"mnuExport", 'X'},
    {"mnuImport", 'I'},
    {"mnuEditTree", 'T'},
});

std::span<const Mnemonic> TableOf(std::string_view language) {
    if (language == "GER") {
        return GermanMnemonics;
    }
    return language == "ENG" ? std::span<const Mnemonic>(EnglishMnemonics) : std::span<const Mnemonic>();
}

// Where the letter is to be marked; npos if the caption has none.
std::size_t PlaceOf(std::string_view caption, char letter) {
    const std::string lower = LowerAscii(caption);
    const char wanted = LowerAscii(letter);
    for (std::size_t place = lower.find(wanted); place != std::string::npos;
         place = lower.find(wanted, place + 1)) {
        if (place == 0 || lower[place - 1] == ' ') {
            return place;
        }
    }
    return lower.find(wanted);
}

} // namespace

char MenuMnemonic(std::string_view item, std::string_view language) {
    for (const Mnemonic& entry : TableOf(language)) {
        if (entry.Item == item) {
            return entry.Letter;
        }
    }
    return '\0';
}

std::string WithMnemonic(std::string_view caption, char letter) {
    return MarkedCaption(std::string(caption), letter == '\0' ? std::string::npos : PlaceOf(caption, letter));
}

} // namespace quavernet
