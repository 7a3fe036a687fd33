#include "scanner/CheckReminder.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "scanner/ScanPeriod.h"

namespace quavernet {

namespace {

constexpr double ReminderOn = 1;

// "dd.mm.yyyy", with points in every country.
std::string PointedDate(const DateTime& date) {
    RegionalSettings pointed;
    pointed.dateSeparator = ".";
    return DayMonthYearText(date, pointed);
}

// The date of a reminder that is on; empty if there is none.
std::string DueDate() {
    std::string due;
    ADODB::Recordset reminder;
    reminder.Open("Select RemindFlag, RemindDate from Reminder", *mainModule.Connection);
    if (reminder.RecordCount() > 0 && reminder.Fields(0).Number() == ReminderOn) {
        const auto date = ParseDate(reminder.Fields(1).Text(), services.regional);
        due = date ? PointedDate(*date) : std::string();
    }
    reminder.Close();
    return due;
}

bool AskForScan() {
    return services.msgBox->Show(LoadResString(385) + "\n" + LoadResString(386), LoadResString(387),
                                 MsgBox::Icon::Question, MsgBox::Buttons::YesNo) == MsgBox::Answer::Yes;
}

void MoveDateOn() {
    ADODB::Recordset reminder;
    reminder.Open("Select ScanPeriode from Reminder", *mainModule.Connection);
    const std::string date = NextReminderDate(reminder.Fields(0).Text(), services.clock->Now());
    reminder.Close();
    mainModule.Connection->Execute("Update Reminder Set RemindDate = '" + date + "'");
}

} // namespace

void CheckReminder(bool& result, const std::function<void()>& unloadSplash) {
    // Days compare as texts: only the day itself is a match, never one that has passed.
    if (DueDate() != PointedDate(services.clock->Now())) {
        return;
    }
    unloadSplash();
    if (AskForScan()) {
        result = true;
    }
    MoveDateOn();
}

} // namespace quavernet
