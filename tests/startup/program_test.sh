#!/usr/bin/env bash
# The real program on a virtual screen, refused a mode: two boxes, then the menu program, then it ends.
#   program_test.sh TOP PROGRAM
set -euo pipefail
program=$2
cd "$1"
. scripts/common.sh
. scripts/display.sh
. scripts/keys.sh
begin_bare FONTCONFIG_FILE ASAN_OPTIONS LSAN_OPTIONS UBSAN_OPTIONS

folder=$(mktemp -d)
trap 'stop_display; rm -rf "$folder"' EXIT
printf '#!/bin/sh\necho "started in $PWD with $# arguments" >menu.txt\n' >"$folder/Main.exe"
chmod +x "$folder/Main.exe"

start_display 1024x768
DOUISHO_FOLDER="$folder" timeout 60 "$program" 3 &
program_pid=$!
window 'エラー！！'
key Return
gone 'エラー！！'
window '同意書管理'
key Return
status=0
wait "$program_pid" || status=$?
[ "$status" -eq 1 ] || die "The program ended with $status."
for _ in $(seq 50); do
    [ -s "$folder/menu.txt" ] && break
    sleep 0.1
done
[ "$(cat "$folder/menu.txt")" = "started in $folder with 0 arguments" ] || die "The menu program was not started."
