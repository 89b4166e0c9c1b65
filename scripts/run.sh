#!/usr/bin/env bash
# Installs what is missing, builds Morlevant (Release) in build/, lays out what is missing of
# the example program folder build/home (a user's changes to it stay) and starts the window on
# the example workspace. --restore-examples puts the example workspace, tasks and files back as
# they come. Without a display, runs two example tasks with morlevant-run and shows what they
# wrote.
set -euo pipefail
cd "$(dirname "$0")/.."
restore=()
case "${1:-}" in
"") ;;
--restore-examples) restore=(--restore) ;;
*)
    echo "usage: $0 [--restore-examples]" >&2
    exit 2
    ;;
esac
scripts/install-deps.sh

cmake -S . -B build -DCMAKE_BUILD_TYPE=Release -DMORLEVANT_TESTS=OFF
cmake --build build -j"$(nproc)"
home="$PWD/build/home"
examples/prepare-home.sh "${restore[@]}" "$home"

if { [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; } && [ -x build/app/morlevant ]; then
    MORLEVANT_HOME="$home" build/app/morlevant "$home/Example.tsk"
    exit
fi

# show FILE...: each result's name and its first lines.
show() {
    for file in "$@"; do
        echo "--- ${file#"$home"/}"
        head -n 4 "$file"
    done
}

echo
echo '$ morlevant-run --home build/home "Raise Prices"'
build/app/morlevant-run --home "$home" "Raise Prices"
show "$home/files/prices.txt.modify"

echo
echo '$ morlevant-run --home build/home "Split Report"'
build/app/morlevant-run --home "$home" "Split Report"
show "$home/files/report/"*
