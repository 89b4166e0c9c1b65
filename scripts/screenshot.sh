#!/usr/bin/env bash
# Takes the README's picture, docs/screenshot.png: builds the window program (Release, in build/,
# as scripts/run.sh does), lays out the example program folder in a neutral home folder,
# /home/user/Morlevant, starts the window on the example workspace under a virtual X display and
# grabs the window once it shows, then the preview of the file it shows (docs/preview.png).
# A developer's tool: it needs xvfb-run (xvfb, xauth), xwininfo (x11-utils), xdotool,
# ImageMagick's import and unshare (util-linux) with user namespaces, which
# scripts/install-deps.sh does not install.
set -euo pipefail
cd "$(dirname "$0")/.."

cmake -S . -B build -DCMAKE_BUILD_TYPE=Release -DMORLEVANT_TESTS=OFF >/dev/null
cmake --build build --target morlevant -j"$(nproc)"
# The picture shows the file's path: an empty /home of its own, in a private mount namespace,
# holds the example there rather than under this machine's folders. The program and the
# examples are copied out first, since the repository itself may lie under /home.
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
cp build/app/morlevant "$stage/"
cp -r examples "$stage/"

# Run on the virtual display: waits up to 20 seconds for the window titled after the workspace,
# gives it a second to paint, and grabs the screen cut to the window.
grab=$(
    cat <<'EOF'
set -euo pipefail
"$MORLEVANT_STAGE/morlevant" "$MORLEVANT_HOME/Example.tsk" &
trap 'kill $!' EXIT
for _ in $(seq 1 100); do
    window=$(xwininfo -root -tree |
        awk -v title="$MORLEVANT_HOME/Example.tsk\"" 'index($0, title) { print $1; exit }')
    if [ -n "$window" ]; then
        sleep 1
        # Every task opened and the first file shown, as the user sees it after a few clicks.
        xdotool windowfocus --sync "$window" key Down Down Right Down Down Right Down Down Down \
            Right Home Down
        sleep 1
        geometry=$(xwininfo -id "$window" | awk '
            /Absolute upper-left X/ { x = $NF } /Absolute upper-left Y/ { y = $NF }
            /Width:/ { w = $NF } /Height:/ { h = $NF }
            END { print w "x" h "+" x "+" y }')
        import -window root -crop "$geometry" "$MORLEVANT_STAGE/screenshot.png"
        # The preview of the file shown: Control(&C), &Preview Task.
        xdotool key alt+c p
        for _ in $(seq 1 50); do
            preview=$(xwininfo -root -tree |
                awk 'index($0, "\"Preview - ") { print $1; exit }')
            [ -n "$preview" ] && break
            sleep 0.2
        done
        sleep 1
        import -window "$preview" "$MORLEVANT_STAGE/preview.png"
        exit 0
    fi
    sleep 0.2
done
echo "screenshot: no window showing the example workspace appeared" >&2
exit 1
EOF
)
MORLEVANT_STAGE=$stage MORLEVANT_GRAB=$grab unshare --mount --map-root-user bash -c '
    set -euo pipefail
    mount -t tmpfs tmpfs /home
    mkdir -p /home/user
    export HOME=/home/user MORLEVANT_HOME=/home/user/Morlevant
    "$MORLEVANT_STAGE/examples/prepare-home.sh" "$MORLEVANT_HOME" >/dev/null
    QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 1280x800x24" bash -c "$MORLEVANT_GRAB"'
cp "$stage/screenshot.png" docs/screenshot.png
cp "$stage/preview.png" docs/preview.png
echo "screenshot: wrote docs/screenshot.png and docs/preview.png"
