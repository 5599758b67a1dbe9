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

Xvfb :9 -screen 0 1280x800x24 -nolisten tcp >/dev/null 2>&1 &
export DISPLAY=:9
for _ in $(seq 50); do
    xdotool get_num_desktops >/dev/null 2>&1 && break
    [ -e /tmp/.X11-unix/X9 ] && break
    sleep 0.1
done
openbox >/dev/null 2>&1 &

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
[ -s .local/share/douisho/DATA/プログラム版.ini ] || sleep 2
[ -s .local/share/douisho/DATA/プログラム版.ini ] || ls -R .local/share/douisho/DATA
kill $!
echo "Set-up offered, sample made, list opened."
