#include "scanner/ProgressStep.h"

#include "app/MainModule.h"
#include "scanner/ClockText.h"

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

} // namespace

void AdvanceProgress(ScanRun& run, double filesTotal, const std::string& remainingPrefix,
                     const std::string& elapsedPrefix) {
    const float value = run.work.Progress() + run.ProgressStep;
    run.work.SetProgress(value > FullBar ? FullBar : value);

    const std::string percent = FormatFixedSingle(run.work.Progress(), 1, 0, services.regional);
    run.work.SetTitle("Quavernet - " + percent + " %");
    run.work.SetPanel(ScanPanel::Percent, percent + run.texts.Percent);

    const std::int32_t elapsed =
        Narrow32(static_cast<double>(SecondsBetween(mainModule.ScanStartTime, services.clock->Now())));
    const std::int32_t remaining = SecondsLeft(elapsed, run.FilesDone, filesTotal);
    run.work.SetPanel(ScanPanel::Remaining, remainingPrefix + ClockText(remaining));
    run.work.SetPanel(ScanPanel::Elapsed, elapsedPrefix + ClockText(elapsed));
}

} // namespace quavernet
