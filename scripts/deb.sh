#!/usr/bin/env bash
# Builds the Debian package as a release would (Release, installed under /usr, stripped,
# hardened) in build-deb, and checks it with lintian: no errors, no warnings. Prints the
# package's path last.
# Usage: scripts/deb.sh [BUILD_DIR]   (default build-deb)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build-deb}

cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DMORLEVANT_TESTS=OFF \
    -DCMAKE_INSTALL_PREFIX=/usr >/dev/null
cmake --build "$build" -j"$(nproc)" --target morlevant morlevant-run morlevant_icons \
    morlevant_man_pages morlevant_changelog >/dev/null
rm -f "$build"/*.deb
(cd "$build" && cpack -G DEB >/dev/null)
package=$(ls "$build"/morlevant_*.deb)

# What lintian lets pass: a search path of the build's (even an $ORIGIN one) and desktop
# caches that belong to the machine, not to the package.
contents=$(mktemp -d)
trap 'rm -rf "$contents"' EXIT
dpkg-deb -x "$package" "$contents"
for program in "$contents"/usr/bin/*; do
    if readelf -d "$program" | grep -Eq 'RPATH|RUNPATH'; then
        echo "deb: $program has a library search path" >&2
        exit 1
    fi
done
if [ -n "$(find "$contents/usr/share/mime" -mindepth 1 -maxdepth 1 ! -name packages)" ]; then
    echo "deb: the package holds a MIME cache" >&2
    exit 1
fi

# lintian refuses to run as root without --allow-root.
allow_root=()
[ "$(id -u)" -eq 0 ] && allow_root=(--allow-root)
lintian "${allow_root[@]}" --fail-on error,warning --display-info "$package" >&2
echo "$package"
