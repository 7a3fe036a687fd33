#include "scanner/SavedLog.h"

#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "scanner/ClockText.h"
#include "scanner/ScanView.h"

#include <charconv>

namespace quavernet {

namespace {

constexpr double BytesPerMegabyte = 1024.0 * 1024.0;
constexpr double SecondsPerMinute = 60.0;

// The value as text and read back: what a user sees is what is counted on from.
float Rounded(double value, int decimals) {
    const RegionalSettings& regional = services.regional;
    return static_cast<float>(ParseNumber(FormatFixed(value, 1, decimals, regional), regional).value_or(0));
}

// The number as it stands, without decimals that say nothing.
std::string NumberText(float value) {
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed).ptr;
    return ReplaceAll(std::string(buffer, end), ".", services.regional.decimalSeparator);
}

std::string TimeText(const DateTime& time) {
    return ClockText((time.hour * 60 + time.minute) * 60 + time.second);
}

} // namespace

void SavedLog::Add(const std::string& path, const std::string& size, const std::string& length) {
    if (!mainModule.ScanLogEnabled) {
        return;
    }
    IgnoreFailure([&] { m_log.AddLine(TimeText(services.clock->Now()) + " - Saved... " + path); });
    IgnoreFailure([&] { m_logFilesCount += 1; });
    IgnoreFailure([&] { m_log.SetFileCount(NumberText(m_logFilesCount)); });
    IgnoreFailure(
        [&] { m_logMegabytes = Rounded(double{m_logMegabytes} + Val(size) / BytesPerMegabyte, 2); });
    IgnoreFailure([&] { m_log.SetMegabytes(NumberText(m_logMegabytes)); });
    IgnoreFailure([&] { m_logMinutes = Rounded(double{m_logMinutes} + Val(length) / SecondsPerMinute, 0); });
    IgnoreFailure([&] { m_log.SetPlaytime(NumberText(m_logMinutes)); });
    IgnoreFailure([&] { m_log.SelectLastLine(); });
}

} // namespace quavernet
