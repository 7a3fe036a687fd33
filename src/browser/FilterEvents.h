// What mouse and keyboard do on the filter row and the letter row of the main window, and the tool tips of
// the status bar. The form passes its events on and applies what comes back.
#pragma once

#include "app/LongWork.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace quavernet {

/// What an event asks of the form.
enum class FilterAction {
    None,
    LoadDatabase, ///< With an empty list.
    Search        ///< Run the click of cmdSearch; in txtSearch the key is swallowed.
};

/// The three filter combos. The arrow keys walk through the entries without a reload for each of them; Enter
/// ends the walk. A key that is released elsewhere leaves SuppressComboClick set until the next arrow key
/// comes up.
FilterAction ComboClick();
void ComboKeyDown(int keyCode);
void ComboKeyUp(int keyCode);
FilterAction ComboKeyPress(int character);

/// The search box.
FilterAction SearchKeyPress(int character);

/// chkInterpret and chkTitle.
FilterAction CheckBoxKeyPress(int character);

/// A click on the box; `checked` is its new state. Stores the setting and gives back the state that the box
/// has to take: the last checked one can't be cleared.
bool ClickInterpret(bool checked, bool titleChecked);
bool ClickTitle(bool checked, bool interpretChecked);

/// Turns the check of mnuOptionsLoadOverSearch round; gives the new one back.
bool mnuOptionsLoadOverSearch_Click(bool checked);

/// The labels lblAll, lblA to lblZ and lblOther, in the order of the row.
class LetterLabels {
public:
    static constexpr std::size_t Count = 28;
    static constexpr std::uint32_t RestColor = 0xC00000;  ///< Blue, green, red: a dark blue.
    static constexpr std::uint32_t HoverColor = 0xFFFFFF; ///< White.

    struct Label {
        std::string Name;  ///< "lblA"
        std::string Value; ///< What LetterFilter becomes: "All", "other" or the capital letter.
        bool Bold = false;
        std::uint32_t ForeColor = RestColor;
    };

    /// lblAll is bold.
    LetterLabels();

    void ResetLetterColors();
    void ResetLetterBold();
    void MouseMove(std::size_t label);
    /// Makes the label's letter the filter; the list has to be loaded.
    FilterAction Click(std::size_t label);

    const std::array<Label, Count>& Labels() const { return m_labels; }

private:
    std::array<Label, Count> m_labels;
};

/// Tool tip of one panel of the status bar.
struct PanelToolTip {
    quavernet::Panel Panel;
    std::string Text;

    bool operator==(const PanelToolTip&) const = default;
};

/// The tips to set when the mouse moves over the status bar: during a scan its panels hold other values. The
/// arguments are the panels' current texts.
std::vector<PanelToolTip> StatusBarToolTips(const std::string& titles, const std::string& interprets,
                                            const std::string& albums);

} // namespace quavernet
