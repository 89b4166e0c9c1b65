#!/usr/bin/env bash
# Builds every layer and the test suites with AddressSanitizer and UndefinedBehaviorSanitizer,
# warnings counting as errors, after checking the sources' layout; then runs all tests through
# CTest (widget tests offscreen), the install smoke test, and builds and checks the Debian
# package.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/check-format.sh

cmake -S . -B build-test -DCMAKE_BUILD_TYPE=Debug -DMORLEVANT_SANITIZE=ON -DMORLEVANT_TESTS=ON \
    -DMORLEVANT_WERROR=ON
cmake --build build-test -j"$(nproc)"
export QT_QPA_PLATFORM=offscreen
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
(cd build-test && ctest --output-on-failure -j"$(nproc)")
scripts/smoke.sh build-test
scripts/deb.sh >/dev/null
