#!/usr/bin/env bash
# Fails, naming the files, when a C++ source differs from what .clang-format makes of it.
set -euo pipefail
cd "$(dirname "$0")/.."
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run --Werror
