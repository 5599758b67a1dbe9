# Works windows on $DISPLAY as a person does.

# window TITLE [SECONDS [NOT]]: waits until a window whose title holds the text is shown, other than NOT, and gives
# it the keys. It is left in window_id.
window_id=
window() {
    local tries=$((${2:-20} * 10))
    for _ in $(seq "$tries"); do
        window_id=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | grep -vxF "${3:-none}" | tail -n 1) || true
        [ -n "$window_id" ] && break
        sleep 0.1
    done
    [ -n "$window_id" ] || die "No window \"$1\" after ${2:-20} seconds."
    xdotool windowactivate --sync "$window_id" 2>/dev/null || true
}

# next_window TITLE: waits for the window that follows the one of that title which has the keys.
next_window() { window "$1" 20 "$window_id"; }

# gone TITLE: waits until no window of that title is left.
gone() {
    for _ in $(seq 100); do
        xdotool search --onlyvisible --name "$1" >/dev/null 2>&1 || return 0
        sleep 0.1
    done
    die "The window \"$1\" does not close."
}

# other_active WINDOW: waits until another window than that one has the keys.
other_active() {
    local now
    for _ in $(seq 200); do
        now=$(xdotool getactivewindow 2>/dev/null) || now=$1
        [ "$now" = "$1" ] || return 0
        sleep 0.1
    done
    die "No other window takes the keys."
}

# windows TITLE COUNT: waits until as many windows of that title are shown.
windows() {
    for _ in $(seq 200); do
        [ "$(xdotool search --onlyvisible --name "$1" 2>/dev/null | wc -l)" -eq "$2" ] && return
        sleep 0.1
    done
    die "There are not $2 windows \"$1\"."
}

# key KEY…: presses keys one after the other (names as xdotool has them: F4, Return, alt+y). A chord is one stroke.
strokes=0
key() {
    strokes=$((strokes + $#))
    xdotool key --clearmodifiers --delay 60 "$@"
}

# write TEXT: types a text, a stroke a character.
write() {
    strokes=$((strokes + ${#1}))
    xdotool type --clearmodifiers --delay 40 "$1"
}

# message_box TITLE: as window; what has to be answered is counted too.
boxes=0
message_box() {
    window "$@"
    boxes=$((boxes + 1))
}

# job_begins NAME STROKES [BOXES]: from here on a job of the office is counted; so many strokes and message boxes
# are allowed.
jobs_done=()
jobs_over=()
job_begins() {
    job=$1 job_strokes=$2 job_boxes=${3:-}
    strokes=0 boxes=0
}

job_ends() {
    local verdict=
    if [ "$strokes" -gt "$job_strokes" ] || [ "$boxes" -gt "${job_boxes:-$boxes}" ]; then
        verdict='  too many'
        jobs_over+=("$job")
    fi
    jobs_done+=("$(printf '%7d %8d %6d %8s  %s%s' \
        "$strokes" "$job_strokes" "$boxes" "${job_boxes:--}" "$job" "$verdict")")
}

# job_table: what the jobs took; fails when one took more than it may.
job_table() {
    printf '%7s %8s %6s %8s  %s\n' strokes allowed boxes allowed job
    printf '%s\n' "${jobs_done[@]}"
    [ ${#jobs_over[@]} -eq 0 ] || die "More strokes than allowed: ${jobs_over[*]}"
}
