#include "scanner/ProgressStep.h"

#include "app/MainModule.h"

#include <charconv>
#include <cstdlib>
#include <iterator>

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
void AppendTwoDigits(std::string& text, std::int32_t value) {
    char digits[16];
    const char* const end = std::to_chars(digits, std::end(digits), std::abs(value)).ptr;
    const auto size = static_cast<std::size_t>(end - digits);
    text.append(value < 0 ? "-" : "").append(size < 2 ? "0" : "").append(digits, size);
}

} // namespace

std::string ClockText(std::int32_t seconds) {
    const std::int32_t rest = seconds % 60;
    std::string text;
    AppendTwoDigits(text, seconds / 60 / 60);
    AppendTwoDigits(text += ':', seconds / 60 % 60);
    AppendTwoDigits(text += ':', rest == -1 ? 0 : rest);
    return text;
}

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
