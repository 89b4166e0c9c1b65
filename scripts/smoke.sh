#!/usr/bin/env bash
# Installs a built Morlevant into a temporary prefix and tries it as a desktop would: the
# installed files are where a desktop looks, the menu entry's command line starts the window
# on a workspace (under Xvfb) and the window shows it, and the installed morlevant-run answers.
# Usage: scripts/smoke.sh [BUILD_DIR]   (default build-test)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build-test}

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
prefix="$scratch/prefix"
# Nothing of the user's own folders is read or written.
export HOME="$scratch/user"
export XDG_DATA_HOME="$HOME/.local/share" XDG_CONFIG_HOME="$HOME/.config"
unset MORLEVANT_HOME
# A sanitizer build reports Qt's leftovers at exit; they are not what this checks.
export ASAN_OPTIONS=detect_leaks=0

fail() {
    echo "smoke: $*" >&2
    exit 1
}

cmake --install "$build" --prefix "$prefix" >/dev/null
share="$prefix/share"
for file in bin/morlevant bin/morlevant-run share/morlevant/help/index.html \
    share/applications/morlevant.desktop share/mime/packages/morlevant.xml \
    share/icons/hicolor/scalable/apps/morlevant.svg share/icons/hicolor/48x48/apps/morlevant.png; do
    [ -e "$prefix/$file" ] || fail "the install lacks $file"
done
if command -v desktop-file-validate >/dev/null; then
    desktop-file-validate "$share/applications/morlevant.desktop"
fi

"$prefix/bin/morlevant-run" --help | grep -q '^Usage: morlevant-run' ||
    fail "morlevant-run --help printed no usage"

examples/prepare-home.sh "$scratch/work folder" >/dev/null
workspace="$scratch/work folder/Example.tsk"

# The menu entry's command line, with the workspace for its file argument.
read -r -a command <<<"$(sed -n 's/^Exec=//p' "$share/applications/morlevant.desktop")"
for i in "${!command[@]}"; do
    [ "${command[$i]}" = "%f" ] && command[i]=$workspace
done

export PATH="$prefix/bin:$PATH" QT_QPA_PLATFORM=xcb
# The title carries the version the build took from project().
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
MORLEVANT_SMOKE_VERSION=$version MORLEVANT_SMOKE_WORKSPACE=$workspace xvfb-run -a -s "-screen 0 1280x800x24" bash -c '
    "$@" &
    window=$!
    title="Morlevant v$MORLEVANT_SMOKE_VERSION - $MORLEVANT_SMOKE_WORKSPACE"
    for _ in $(seq 1 100); do
        if xwininfo -root -tree | grep -qF "\"$title\""; then
            kill "$window"
            wait "$window" || true
            exit 0
        fi
        kill -0 "$window" 2>/dev/null || { echo "smoke: the window program ended" >&2; exit 1; }
        sleep 0.2
    done
    kill "$window"
    echo "smoke: no window titled \"$title\" appeared" >&2
    exit 1
' smoke "${command[@]}" || fail "the installed window did not show $workspace"

# An installed program keeps its tasks in the user's data folder, not beside itself.
[ ! -e "$prefix/bin/task" ] && [ ! -e "$prefix/bin/outcome" ] ||
    fail "the installed program wrote into its own folder"
[ -n "$(find "$XDG_DATA_HOME" -path '*/outcome/merge' -type d)" ] ||
    fail "the installed program made no program folder in the user's data folder"
echo "smoke: installed, started on a workspace and closed; morlevant-run answers"
