#!/usr/bin/env bash
# Builds the tests and runs them all; the last lines are CTest's summary. Arguments go to CTest, for example
# ./test.sh -R StoreFileRecord.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
# shellcheck source=tools/packages.sh
. tools/packages.sh

install_missing "${PACKAGES_BUILD[@]}" "${PACKAGES_RUN[@]}" "${PACKAGES_SCREEN[@]}" \
    "${PACKAGES_WAYLAND[@]}" "${PACKAGES_TEST[@]}"
make_locales de_DE en_US

# The program as its users get it, with the small programs that scenarios and checks run beside it.
cmake --preset release
cmake --build --preset release --target all test_programs --parallel "$(build_jobs)"

# Program and tests under the sanitizers.
cmake --preset test
cmake --build --preset test --parallel "$(build_jobs)"

# Wherever the caller sits, tests find no settings, library or screen of theirs: each makes its own. Scenarios wait for
# screens and clocks half of their time, so that twice as many run at once as there are cores.
exec ctest --preset test --parallel "$((2 * $(nproc)))" "$@"
