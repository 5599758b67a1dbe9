#!/usr/bin/env bash
# What a user who has just installed the package does: is offered the set-up, makes a sample, opens the list on it.
set -euo pipefail
cd "$HOME"
export XDG_RUNTIME_DIR="$HOME/run"
mkdir -m 700 -p "$XDG_RUNTIME_DIR"
trap 'kill $(jobs -p) 2>/dev/null || true' EXIT

fail() {
    echo "** $*" >&2
    exit 1
}

# shows TITLE: waits for a window.
shows() {
    for _ in $(seq 300); do
        xdotool search --onlyvisible --name "$1" >/dev/null 2>&1 && return
        sleep 0.1
    done
    fail "No window $1."
}

Xvfb -displayfd 5 -screen 0 1280x800x24 -nolisten tcp 5>display >/dev/null 2>&1 &
for _ in $(seq 100); do
    [ ! -s display ] || break
    sleep 0.1
done
export DISPLAY=":$(cat display)"
openbox >/dev/null 2>&1 &
for _ in $(seq 100); do
    ! xdotool get_num_desktops >/dev/null 2>&1 || break
    sleep 0.1
done

douisho --version
[ ! -e .local/share/douisho ] || fail "There is a program folder before anybody has set it up."
for page in douisho douisho-sample douisho-menu wfrfv10 wfrimg10; do
    [ -s "/usr/share/man/man1/$page.1.gz" ] && [ -s "/usr/share/man/ja/man1/$page.1.gz" ] || fail "No page for $page."
done

douisho 1 &
shows '^初期設定$'
kill $!

douisho-sample --folder .local/share/douisho --patients 30
douisho 1 &
shows '^同意書管理$'
kill $!
echo "Set-up offered, sample made, list opened."
