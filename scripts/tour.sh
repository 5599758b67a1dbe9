# Works the program with keys on a virtual screen and photographs what it shows.

. scripts/keys.sh

tour_shots=tour
tour_count=0

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
    tour_refused_mode "$1"
    tour_printing "$1"
    tour_start "$1"
    tour_list
    tour_end
    say "$tour_count screenshots in $tour_shots/"
}

# The program goes back to the menu program, which is closed.
leave_menu() {
    window '業務メニュー'
    [ $# -eq 0 ] || shot "$1"
    key F12
    gone '業務メニュー'
}

tour_refused_mode() {
    start_program "$1" 3
    window '　エラー！！'
    shot mode-not-set
    key Return
    gone '　エラー！！'
    window '同意書管理'
    shot cannot-start
    key Return
    leave_menu
}

tour_printing() {
    start_program "$1" 0
    window '同意書印刷'
    shot consent-printing
    key F12
    wait "$program_pid" || die "The program ended with an error."
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

tour_end() {
    key F12
    leave_menu menu-program
    wait "$program_pid" || die "The program ended with an error."
}
