# Works windows on $DISPLAY as a person does.

# window TITLE [SECONDS]: waits until a window whose title holds the text is shown, and gives it the keys.
window() {
    local id='' tries=$((${2:-20} * 10))
    for _ in $(seq "$tries"); do
        id=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -n 1) || true
        [ -n "$id" ] && break
        sleep 0.1
    done
    [ -n "$id" ] || die "No window \"$1\" after ${2:-20} seconds."
    xdotool windowactivate --sync "$id" 2>/dev/null || true
}

# gone TITLE: waits until no window of that title is left.
gone() {
    for _ in $(seq 100); do
        xdotool search --onlyvisible --name "$1" >/dev/null 2>&1 || return 0
        sleep 0.1
    done
    die "The window \"$1\" does not close."
}

# windows TITLE COUNT: waits until as many windows of that title are shown.
windows() {
    for _ in $(seq 200); do
        [ "$(xdotool search --onlyvisible --name "$1" 2>/dev/null | wc -l)" -eq "$2" ] && return
        sleep 0.1
    done
    die "There are not $2 windows \"$1\"."
}

# key KEY…: presses keys one after the other (names as xdotool has them: F4, Return, alt+y).
key() { xdotool key --clearmodifiers --delay 80 "$@"; }

# write TEXT: types a text.
write() { xdotool type --clearmodifiers --delay 40 "$1"; }
