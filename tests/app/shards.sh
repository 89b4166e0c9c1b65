#!/usr/bin/env bash
# The README's sharding example, run locally: GNU parallel cuts a list of files into shards and
# runs one morlevant-run --files-from per shard, side by side, with the settings of one task.
# Every file gets its result, and only the listed files do.
# Usage: shards.sh MORLEVANT_RUN EXAMPLES_FOLDER
set -euo pipefail
program=$1
examples=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

mkdir -p "$work/home/task" "$work/files"
cp "$examples/task/Fix Spelling.ttp" "$work/home/task/"
for i in $(seq 1 60); do
    printf 'teh letter %s\nwe recieve it\n' "$i" >"$work/files/letter$i.txt"
done
printf 'teh\n' >"$work/files/unlisted.txt"
find "$work/files" -name 'letter*.txt' | sort >"$work/list"

parallel --pipe -N 7 "$program" --home "$work/home" --files-from - "'Fix Spelling'" \
    <"$work/list" >"$work/out"

[ "$(grep -c 'Vell down!' "$work/out")" -eq 9 ] || { echo "not every shard ran"; exit 1; }
for i in $(seq 1 60); do
    expected=$(printf 'the letter %s\r\nwe receive it\r\n' "$i")
    [ "$(cat "$work/files/letter$i.txt.modify")" = "$expected" ] ||
        { echo "letter$i.txt.modify is wrong or missing"; exit 1; }
done
[ ! -e "$work/files/unlisted.txt.modify" ] || { echo "an unlisted file was worked"; exit 1; }
echo "shards: 60 files in 9 shards, each worked once"
