// The fields of the list statement and what a row makes of them. Used by the load and by the rows' texts.
#pragma once

#include "platform/ADODB.h"
#include "platform/RegionalSettings.h"

#include <cstddef>
#include <string>

namespace quavernet {

/// Positions in the statement's select list.
namespace ListField {
inline constexpr std::size_t Path = 0;
inline constexpr std::size_t SizeInBytes = 1;
inline constexpr std::size_t Title = 2;
inline constexpr std::size_t Interpret = 3;
inline constexpr std::size_t Quality = 4;
inline constexpr std::size_t FileId = 5;
inline constexpr std::size_t Length = 6;
inline constexpr std::size_t Name = 7;
inline constexpr std::size_t Extension = 8;
} // namespace ListField

/// Bytes to megabytes as number text, without the unit. Throws RuntimeError 94 for a null.
std::string SizeText(const ADODB::Field& sizeInBytes, const RegionalSettings& regional);

/// Seconds to "mm:ss min". The minutes come from a 32-bit quotient rounded to two decimals and cut, the
/// seconds from the length rounded to a whole number: the two do not follow each other at fractions. Throws
/// RuntimeError 94 for a null, 6 if the seconds leave the range of 32 bits.
std::string LengthText(const ADODB::Field& length, const RegionalSettings& regional);

/// Fails as LengthText does, without making the text.
void CheckLength(const ADODB::Field& length);

/// Adds up sizes the way they are shown: each is formatted and the text read back.
class MegabyteSum {
public:
    explicit MegabyteSum(const RegionalSettings& regional);

    /// Throws RuntimeError 94 for a null, 13 if the settings make a text that can't be read back.
    void Add(const ADODB::Field& sizeInBytes);
    double Total() const { return m_total; }

private:
    const RegionalSettings& m_regional;
    bool m_plainSettings; ///< Texts read back as the numbers they show.
    double m_total = 0;
};

} // namespace quavernet
