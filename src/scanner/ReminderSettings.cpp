#include "scanner/ReminderSettings.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "scanner/ScanPeriod.h"

namespace quavernet {

namespace {

constexpr double RemindValue = 1;

std::string DateLabel(bool on, const std::string& date) {
    if (!on) {
        return LoadResString(409);
    }
    return date.empty() ? LoadResString(411) : LoadResString(410) + date;
}

std::string PeriodOf(const ReminderChoice& choice) {
    if (choice.optDaily) {
        return std::string(ScanPeriod::Daily);
    }
    if (choice.optWeekly) {
        return std::string(ScanPeriod::Weekly);
    }
    if (choice.optMonthly) {
        return std::string(ScanPeriod::Monthly);
    }
    return choice.optYearly ? std::string(ScanPeriod::Yearly) : std::string();
}

bool HasReminder() {
    ADODB::Recordset reminder;
    reminder.Open("Select RemindFlag from Reminder", *mainModule.Connection);
    const bool found = reminder.RecordCount() > 0;
    reminder.Close();
    return found;
}

} // namespace

ReminderSettings LoadReminderSettings() {
    ReminderSettings settings;
    ADODB::Recordset reminder;
    reminder.Open("Select RemindFlag, ScanPeriode, RemindDate from Reminder", *mainModule.Connection);
    if (reminder.RecordCount() == 0) {
        settings.lblDate = LoadResString(408);
    } else {
        const std::string period = reminder.Fields(1).Text();
        settings.choice.chkRemind = reminder.Fields(0).Number() == RemindValue;
        settings.choice.optDaily = period == ScanPeriod::Daily;
        settings.choice.optWeekly = period == ScanPeriod::Weekly;
        settings.choice.optMonthly = period == ScanPeriod::Monthly;
        settings.choice.optYearly = period == ScanPeriod::Yearly;
        settings.lblDate = DateLabel(settings.choice.chkRemind, reminder.Fields(2).Text());
    }
    reminder.Close();
    return settings;
}

void SaveReminderSettings(const ReminderChoice& choice) {
    const std::string period = PeriodOf(choice);
    const std::string date = NextReminderDate(period, services.clock->Now());
    const std::string flag = choice.chkRemind ? "1" : "0";
    const ADODB::WriteLock writeLock(*mainModule.Connection); // One row, whoever else saves one.
    if (HasReminder()) {
        mainModule.Connection->Execute("Update Reminder Set RemindFlag = " + flag + ", RemindDate = '" +
                                       date + "'" + ", ScanPeriode = '" + period + "'");
    } else {
        mainModule.Connection->Execute("Insert Into Reminder (RemindFlag, RemindDate, Scanperiode) values (" +
                                       flag + ", '" + date + "', '" + period + "')");
    }
}

} // namespace quavernet
