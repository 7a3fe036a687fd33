#include "browser/ListRecord.h"

#include "app/TextHelpers.h"
#include "platform/RuntimeError.h"

#include <cstdint>
#include <cstdlib>

namespace quavernet {

namespace {

constexpr int SecondsPerMinute = 60;
constexpr double BytesPerKilobyte = 1024;
constexpr std::int64_t BytesPerMegabyte = 1048576;

double NumberOf(const ADODB::Field& field) {
    if (field.IsNull()) {
        throw RuntimeError(ErrorNumber::InvalidUseOfNull, "Invalid use of Null");
    }
    return field.Number();
}

double ReadBack(const std::string& text, const RegionalSettings& regional) {
    if (const auto number = ParseNumber(text, regional)) {
        return *number;
    }
    throw RuntimeError(ErrorNumber::TypeMismatch, "Type mismatch");
}

bool ReadsBackItsTexts(const RegionalSettings& regional) {
    constexpr double Probe = 1234567.25;
    return ParseNumber(FormatNumber(Probe, 2, regional), regional) == Probe;
}

} // namespace

std::string SizeText(const ADODB::Field& sizeInBytes, const RegionalSettings& regional) {
    return FormatNumber(NumberOf(sizeInBytes) / BytesPerKilobyte / BytesPerKilobyte, 2, regional);
}

std::string LengthText(const ADODB::Field& length, const RegionalSettings& regional) {
    const double seconds = NumberOf(length);
    const auto quotient = static_cast<float>(seconds / SecondsPerMinute);
    const std::string quotientText = FormatFixedSingle(quotient, 1, 2, regional);
    const std::string whole(DropRightCharacters(quotientText, 3)); // Decimal sign and two decimals.
    const std::string minutes = FormatFixed(ReadBack(whole, regional), 2, 0, regional);
    return minutes + ":" + FormatFixed(Narrow32(seconds) % SecondsPerMinute, 2, 0, regional) + " min";
}

void CheckLength(const ADODB::Field& length) {
    Narrow32(NumberOf(length));
}

MegabyteSum::MegabyteSum(const RegionalSettings& regional)
    : m_regional(regional), m_plainSettings(ReadsBackItsTexts(regional)) {}

void MegabyteSum::Add(const ADODB::Field& sizeInBytes) {
    // Below this many bytes the nearest hundredth in whole numbers is the one that the text shows: a size is
    // a multiple of 2^-20 megabytes, and a text's fifteen digits tell any two of these apart.
    constexpr std::int64_t ExactLimit = std::int64_t{1} << 40;
    if (m_plainSettings && sizeInBytes.GetKind() == ADODB::Field::Kind::Integer &&
        sizeInBytes.Integer() >= 0 && sizeInBytes.Integer() < ExactLimit) {
        const std::int64_t hundredths =
            (sizeInBytes.Integer() * 100 + BytesPerMegabyte / 2) / BytesPerMegabyte;
        m_total += static_cast<double>(hundredths) / 100.0;
        return;
    }
    m_total += ReadBack(SizeText(sizeInBytes, m_regional), m_regional);
}

} // namespace quavernet
