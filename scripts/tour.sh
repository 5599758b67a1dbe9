# Works the program with keys on a virtual screen and photographs what it shows.

tour_shots=tour
tour_count=0

# window TITLE [SECONDS]: waits until a window whose title holds the text is shown, and gives it the keys.
window() {
    local id='' tries=$((${2:-20} * 10))
    for _ in $(seq "$tries"); do
        id=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -n 1) || true
        [ -n "$id" ] && break
        sleep 0.1
    done
    [ -n "$id" ] || die "Tour: no window \"$1\" after ${2:-20} seconds."
    xdotool windowactivate --sync "$id" 2>/dev/null || true
}

# gone TITLE: waits until no window of that title is left.
gone() {
    for _ in $(seq 100); do
        xdotool search --onlyvisible --name "$1" >/dev/null 2>&1 || return 0
        sleep 0.1
    done
    die "Tour: the window \"$1\" does not close."
}

# key KEY…: presses keys one after the other (names as xdotool has them: F4, Return, alt+y).
key() { xdotool key --clearmodifiers --delay 80 "$@"; }

# write TEXT: types a text.
write() { xdotool type --clearmodifiers --delay 40 "$1"; }

screen_sum() { import -silent -window root ppm:- | sha1sum; }

# shot NAME: a picture of the whole screen, once it has come to rest (a blinking cursor is given up on).
shot() {
    local before='' now
    for _ in $(seq 8); do
        now=$(screen_sum)
        [ "$now" != "$before" ] || break
        before=$now
        sleep 0.2
    done
    tour_count=$((tour_count + 1))
    import -silent -window root "$(printf '%s/%02d-%s.png' "$tour_shots" "$tour_count" "$1")"
}

# make_tour FOLDER: the whole tour, on a fresh sample in that folder.
make_tour() {
    mkdir -p "$tour_shots"
    rm -f "$tour_shots"/*.png
    make_installation "$1"
    start_display "${TOUR_SIZE:-1280x800}"
    tour_start "$1"
    tour_list
    tour_end
    say "$tour_count screenshots in $tour_shots/"
}

# A start without a mode asks for one.
tour_start() {
    start_program "$1" ''
    window '起動エラー'
    shot ask-for-the-mode
    key Return
}

tour_list() {
    window '同意書管理'
    shot consent-list
    key F4
    shot searched-again
}

# The list goes back to the menu program.
tour_end() {
    key F12
    wait "$program_pid" || die "Tour: the program ended with an error."
    shot menu-program
}
