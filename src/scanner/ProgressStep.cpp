#include "scanner/ProgressStep.h"

#include "app/MainModule.h"

#include <cstdlib>

namespace quavernet {

namespace {

constexpr float FullBar = 100;

// Every file of the walk counts as one of those found before, also the hidden ones, which were not counted:
// the number left, and with it the time, can become negative.
std::int32_t SecondsLeft(std::int32_t elapsed, std::int32_t filesDone, double filesTotal) {
    if (filesDone == 0) {
        return 0; // The folder's first files vanished before they were reached.
    }
    return Narrow32(static_cast<double>(elapsed) / filesDone * (filesTotal - filesDone));
}

// At least two digits, a sign before them: made six times a file, so without the general number formats.
std::string TwoDigits(std::int32_t value) {
    const std::string digits = std::to_string(std::abs(value));
    return std::string(value < 0 ? "-" : "") + (digits.size() < 2 ? "0" : "") + digits;
}

} // namespace

std::string ClockText(std::int32_t seconds) {
    const std::int32_t rest = seconds % 60;
    return TwoDigits(seconds / 60 / 60) + ":" + TwoDigits(seconds / 60 % 60) + ":" +
           TwoDigits(rest == -1 ? 0 : rest);
}

void AdvanceProgress(ScanRun& run, double filesTotal, const std::string& remainingPrefix,
                     const std::string& elapsedPrefix) {
    const float value = run.window.Progress() + run.ProgressStep;
    run.window.SetProgress(value > FullBar ? FullBar : value);

    const std::string percent = FormatFixedSingle(run.window.Progress(), 1, 0, services.regional);
    run.window.SetTitle("Quavernet - " + percent + " %");
    run.window.SetPanel(ScanPanel::Percent, percent + run.texts.Percent);

    const std::int32_t elapsed =
        Narrow32(static_cast<double>(SecondsBetween(mainModule.ScanStartTime, services.clock->Now())));
    const std::int32_t remaining = SecondsLeft(elapsed, run.FilesDone, filesTotal);
    run.window.SetPanel(ScanPanel::Remaining, remainingPrefix + ClockText(remaining));
    run.window.SetPanel(ScanPanel::Elapsed, elapsedPrefix + ClockText(elapsed));
}

} // namespace quavernet
