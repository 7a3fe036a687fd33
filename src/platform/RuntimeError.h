// The one failure type of the program, and the error modes that procedures run in. Everything that can
// fail throws RuntimeError; the event boundary (the application's notify) shows it and ends the process.
#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace quavernet {

/// A failed statement, conversion or file access.
/// `number` follows the run-time's own list where it has one (6 overflow, 53 file not found, 75 path or
/// file access, 76 path not found); adapters use their library's code otherwise. `description` is UTF-8.
class RuntimeError : public std::exception {
public:
    RuntimeError(int number, std::string description);

    /// One of ErrorNumber, or a code of the library that failed.
    int Number() const { return m_number; }
    /// A sentence or less, mostly with the path that it is about; never empty.
    const std::string& Description() const { return m_description; }
    const char* what() const noexcept override { return m_description.c_str(); }

private:
    int m_number;
    std::string m_description;
};

/// The run-time's own numbers, each named after its message.
namespace ErrorNumber {
inline constexpr int InvalidProcedureCall = 5;
inline constexpr int Overflow = 6;
inline constexpr int OutOfMemory = 7;
inline constexpr int SubscriptOutOfRange = 9;
inline constexpr int TypeMismatch = 13;
inline constexpr int FileNotFound = 53;
inline constexpr int DeviceInputOutput = 57;
inline constexpr int FileAlreadyExists = 58;
inline constexpr int DiskFull = 61;
inline constexpr int BadRecordNumber = 63;
inline constexpr int PermissionDenied = 70;
inline constexpr int PathFileAccess = 75;
inline constexpr int PathNotFound = 76;
inline constexpr int InvalidUseOfNull = 94;
inline constexpr int PrinterError = 482;
} // namespace ErrorNumber

/// Runs one statement in the mode in which a failing statement is passed over. Wrap single statements
/// only: a block would lose the statements after the failing one.
template <typename Statement> void IgnoreFailure(Statement&& statement) {
    try {
        statement();
    } catch (const RuntimeError&) {
        // Passed over by the rule of the mode; the next statement runs.
    }
}

/// Narrowing with the program's own limits: values that do not fit raise error 6 "Overflow".
/// Floating-point values are rounded half to even first.
std::int16_t Narrow16(double value);
std::int32_t Narrow32(double value);

} // namespace quavernet
