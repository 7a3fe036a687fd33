// The scan reminder as frmRemind shows and stores it.
#pragma once

#include <string>

namespace quavernet {

/// The check box and the four options of frmRemind.
struct ReminderChoice {
    bool chkRemind = false;
    bool optDaily = false;
    bool optWeekly = false;
    bool optMonthly = false;
    bool optYearly = false;
};

/// What frmRemind shows when it loads. No option is set if none is stored; the form then keeps its own.
struct ReminderSettings {
    ReminderChoice choice;
    std::string lblDate; ///< Next date, or why there is none, in the current language.
};

ReminderSettings LoadReminderSettings();

/// Stores the check box, the period of the first option that is set (daily, weekly, monthly, yearly) and the
/// date one period from today, in the one row of the table.
void SaveReminderSettings(const ReminderChoice& choice);

} // namespace quavernet
