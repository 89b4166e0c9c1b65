#!/usr/bin/env bash
# Installs a built Morlevant into a temporary prefix and tries it as a desktop would: the
# installed files are where a desktop looks and pass the desktop's checkers, the manual pages
# read, both programs answer --help and --version without a display, a .tsk file is known as a
# workspace right after the install, the menu entry's command line starts the window on a
# workspace (under Xvfb) and the window shows it, and the installed morlevant-run answers.
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

share="$prefix/share"
# The desktop looks into the prefix as into /usr.
export XDG_DATA_DIRS="$share:/usr/share"
cmake --install "$build" --prefix "$prefix" >/dev/null
for file in bin/morlevant bin/morlevant-run share/morlevant/help/index.html \
    share/applications/morlevant.desktop share/mime/packages/morlevant.xml \
    share/icons/hicolor/scalable/apps/morlevant.svg share/icons/hicolor/48x48/apps/morlevant.png \
    share/metainfo/org.example.morlevant.metainfo.xml share/doc/morlevant/copyright \
    share/man/man1/morlevant.1.gz share/man/man1/morlevant-run.1.gz; do
    [ -e "$prefix/$file" ] || fail "the install lacks $file"
done
desktop-file-validate "$share/applications/morlevant.desktop"
appstreamcli validate --no-net --pedantic "$share/metainfo/org.example.morlevant.metainfo.xml" \
    >/dev/null || fail "the installed metainfo is not valid"

# man finds both pages by name, and they render without a warning.
for program in morlevant morlevant-run; do
    page=$(MANPATH="$share/man" man -w "$program") || fail "man does not find $program"
    warnings=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 \
        >/dev/null)
    [ -z "$warnings" ] || fail "the manual page of $program: $warnings"
done

# --help and --version need no display; a wrong option is exit code 2.
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
without_display() { env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM "$@"; }
for program in morlevant morlevant-run; do
    [ "$(without_display "$prefix/bin/$program" --version)" = "$program $version" ] ||
        fail "$program --version"
    help=$(without_display "$prefix/bin/$program" --help)
    grep -q "^Usage: $program " <<<"$help" || fail "$program --help printed no usage"
    status=0
    without_display "$prefix/bin/$program" --no-such-option >/dev/null 2>&1 || status=$?
    [ "$status" -eq 2 ] || fail "$program --no-such-option exited with $status, not 2"
done

examples/prepare-home.sh "$scratch/work folder" >/dev/null
workspace="$scratch/work folder/Example.tsk"

# The install told the desktop of the type: a workspace is one at once, without a refresh.
type=$(gio info -a standard::content-type "$workspace" |
    sed -n 's/^ *standard::content-type: //p')
[ "$type" = application/x-corvellum ] || fail "a .tsk file is $type after the install"

# The menu entry's command line, with the workspace for its file argument.
read -r -a command <<<"$(sed -n 's/^Exec=//p' "$share/applications/morlevant.desktop")"
for i in "${!command[@]}"; do
    [ "${command[$i]}" = "%f" ] && command[i]=$workspace
done

export PATH="$prefix/bin:$PATH" QT_QPA_PLATFORM=xcb
# The title carries the version the build took from project().
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
echo "smoke: installed, checked, started on a workspace and closed; morlevant-run answers"
