#!/usr/bin/env bash
# prepare-home-test.sh PREPARE: lays out a program folder with PREPARE, changes it as a user
# would, lays it out again (the changes stay, a removed file comes back) and restores it.
set -euo pipefail
prepare=$1
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
examples=$(dirname "$prepare")

fail() {
    echo "FAIL: $*" >&2
    exit 1
}

"$prepare" "$home"
echo "the user's settings" >"$home/task/Raise Prices.ttp"
echo "the user's prices" >"$home/files/prices.txt"
echo "the user's workspace" >"$home/Example.tsk"
rm "$home/task/Split Report.edt"

"$prepare" "$home"
[ "$(cat "$home/task/Raise Prices.ttp")" = "the user's settings" ] || fail "task settings reset"
[ "$(cat "$home/files/prices.txt")" = "the user's prices" ] || fail "example file reset"
[ "$(cat "$home/Example.tsk")" = "the user's workspace" ] || fail "workspace reset"
[ -s "$home/task/Split Report.edt" ] || fail "a missing file list was not laid out"

"$prepare" --restore "$home"
cmp -s "$examples/task/Raise Prices.ttp" "$home/task/Raise Prices.ttp" || fail "settings kept"
cmp -s "$examples/files/prices.txt" "$home/files/prices.txt" || fail "file kept"
cmp -s "$examples/Example.tsk" "$home/Example.tsk" || fail "workspace kept"
echo "ok"
