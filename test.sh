#!/usr/bin/env bash
# Builds the tests and runs them all; the last lines are CTest's summary. Arguments go to CTest, for example
# ./test.sh -R StoreFileRecord.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
# shellcheck source=tools/packages.sh
. tools/packages.sh

install_missing "${PACKAGES_BUILD[@]}" "${PACKAGES_RUN[@]}" "${PACKAGES_SCREEN[@]}" "${PACKAGES_TEST[@]}"
make_locales de_DE en_US

# Under the sanitizers everything is a build of its own. The test build below runs its programs among its tests.
cmake --preset asan-gui
cmake --build --preset asan-gui --parallel "$(build_jobs)"

cmake --preset test
cmake --build --preset test --parallel "$(build_jobs)"

# Wherever the caller sits, tests find no settings, library or screen of theirs: each makes its own.
exec ctest --preset test --parallel "$(nproc)" "$@"
