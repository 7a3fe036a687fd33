// Part of the program in builds under the address sanitizer alone. The program ends at once, without the leak
// check that a usual end brings with it: here it is done first.
#include <sanitizer/lsan_interface.h>

extern "C" {

// The linker puts the first in the place of _Exit and gives the real one the other name.
[[noreturn]] void __real__Exit(int exitCode); // NOLINT(bugprone-reserved-identifier)
[[noreturn]] void __wrap__Exit(int exitCode); // NOLINT(bugprone-reserved-identifier)

void __wrap__Exit(int exitCode) {
    __lsan_do_leak_check(); // Ends the process with a code of its own when there are leaks.
    __real__Exit(exitCode);
}
}
