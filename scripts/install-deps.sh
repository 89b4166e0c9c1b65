#!/usr/bin/env bash
# Installs the Debian packages Morlevant needs to build, test and show itself, when missing.
set -euo pipefail

# xvfb, xauth and x11-utils start the window without a screen and find it (scripts/smoke.sh);
# desktop-file-utils and appstream check the menu entry and the catalogue's entry;
# shared-mime-info refreshes the types at install and libglib2.0-bin's gio reads them back;
# man-db and groff-base read the manual pages; dpkg-dev and lintian build and check the Debian
# package (scripts/deb.sh); xdg-utils is what the package recommends; clang-format checks the
# sources' layout; Node compares the filter with JavaScript; GNU parallel runs the README's
# sharding example.
packages=(cmake make g++ pkg-config qt6-base-dev libpcre2-dev libgtest-dev xvfb xauth x11-utils
    desktop-file-utils appstream shared-mime-info libglib2.0-bin man-db groff-base dpkg-dev
    lintian xdg-utils clang-format nodejs parallel)
missing=()
for package in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" ||
        missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
echo "Installing: ${missing[*]}"
$sudo apt-get update
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y --no-install-recommends "${missing[@]}"
