#!/usr/bin/env bash
# Lays out a program folder HOME for the bundled example tasks: the sample files in
# HOME/files/ (so that results are written there, never into the repository), the task
# settings in HOME/task/, each task's file list with the absolute paths of its copied files,
# HOME/outcome/merge/, and the example workspace HOME/Example.tsk when there is one.
# Only what is missing is laid out, so a user's changes to the examples stay; with --restore
# every example file is put back as it comes with Morlevant.
set -euo pipefail

restore=false
if [ "${1:-}" = "--restore" ]; then
    restore=true
    shift
fi
if [ $# -ne 1 ]; then
    echo "usage: $0 [--restore] HOME" >&2
    exit 1
fi
examples=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$1/files" "$1/task" "$1/outcome/merge"
home=$(cd "$1" && pwd)

# wanted FILE: whether FILE is to be (re)written.
wanted() {
    $restore || [ ! -e "$1" ]
}

# place SOURCE DEST: copies SOURCE to DEST when wanted.
place() {
    if wanted "$2"; then
        cp "$1" "$2"
    fi
}

for file in "$examples"/files/*; do
    place "$file" "$home/files/$(basename "$file")"
done
for file in "$examples"/task/*.ttp; do
    place "$file" "$home/task/$(basename "$file")"
done
if [ -f "$examples/Example.tsk" ]; then
    place "$examples/Example.tsk" "$home/Example.tsk"
fi

# write_list TASK FILE...: the task's ".edt", one absolute path per line, CR LF after each.
write_list() {
    local task=$1
    shift
    wanted "$home/task/$task.edt" || return 0
    : >"$home/task/$task.edt"
    for file in "$@"; do
        printf '%s\r\n' "$home/files/$file" >>"$home/task/$task.edt"
    done
}

write_list "Raise Prices" prices.txt
write_list "Fix Spelling" letter.txt
write_list "Merge Regions" north.txt south.txt
write_list "Split Report" report.txt
