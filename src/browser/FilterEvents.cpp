#include "browser/FilterEvents.h"

#include "app/Keys.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/Registry.h"

namespace quavernet {

namespace {

bool IsArrowKey(int keyCode) {
    return keyCode >= Keys::Left && keyCode <= Keys::Down;
}

bool ClickBox(const std::string& setting, bool checked, bool otherChecked) {
    const bool stays = checked || !otherChecked;
    SaveSetting(setting, stays ? "1" : "0");
    return stays;
}

} // namespace

FilterAction ComboClick() {
    return mainModule.SuppressComboClick ? FilterAction::None : FilterAction::LoadDatabase;
}

void ComboKeyDown(int keyCode) {
    if (IsArrowKey(keyCode)) {
        mainModule.SuppressComboClick = true;
    }
}

void ComboKeyUp(int keyCode) {
    if (IsArrowKey(keyCode)) {
        mainModule.SuppressComboClick = false;
    }
}

FilterAction ComboKeyPress(int character) {
    return character == Keys::Enter ? FilterAction::LoadDatabase : FilterAction::None;
}

FilterAction SearchKeyPress(int character) {
    return character == Keys::Enter ? FilterAction::Search : FilterAction::None;
}

FilterAction CheckBoxKeyPress(int character) {
    return character == Keys::Enter ? FilterAction::Search : FilterAction::None;
}

bool ClickInterpret(bool checked, bool titleChecked) {
    return ClickBox("SearchInterpret", checked, titleChecked);
}

bool ClickTitle(bool checked, bool interpretChecked) {
    return ClickBox("SearchTitle", checked, interpretChecked);
}

bool mnuOptionsLoadOverSearch_Click(bool checked) {
    mainModule.LoadOverSearch = !checked;
    return mainModule.LoadOverSearch;
}

LetterLabels::LetterLabels() {
    m_labels.front() = {"lblAll", "All", true};
    for (std::size_t i = 0; i < 26; ++i) {
        const char letter = static_cast<char>('A' + i);
        m_labels[i + 1] = {std::string("lbl") + letter, std::string(1, letter)};
    }
    m_labels.back() = {"lblOther", "other"};
}

void LetterLabels::ResetLetterColors() {
    for (Label& label : m_labels) {
        label.ForeColor = RestColor;
    }
}

void LetterLabels::ResetLetterBold() {
    for (Label& label : m_labels) {
        label.Bold = false;
    }
}

void LetterLabels::MouseMove(std::size_t label) {
    ResetLetterColors();
    m_labels.at(label).ForeColor = HoverColor;
}

FilterAction LetterLabels::Click(std::size_t label) {
    ResetLetterBold();
    m_labels.at(label).Bold = true;
    mainModule.LetterFilter = m_labels.at(label).Value;
    return FilterAction::LoadDatabase;
}

std::vector<PanelToolTip> StatusBarToolTips(const std::string& titles, const std::string& interprets,
                                            const std::string& albums) {
    if (mainModule.ScanRunning) {
        return {{Panel::Filecount, LoadResString(372)},
                {Panel::Interprets, LoadResString(373)},
                {Panel::Titles, LoadResString(374)}};
    }
    const std::string stored = LoadResString(371);
    return {{Panel::Titles, titles + stored},
            {Panel::Interprets, interprets + stored},
            {Panel::Albums, albums + stored}};
}

} // namespace quavernet
