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

# The list's first range is this month and the five after it. Renewing is allowed for ranges that begin two
# months back, whatever the day.
tour_list() {
    window '同意書管理'
    shot consent-list
    list_range "$(date -d "$(date +%Y-%m-01) -2 months" +%Y%m%d)"
    shot wider-range
    tour_filter
    tour_edit
    tour_renew
}

# list_range FROM [TO]: types the range and searches.
list_range() {
    key alt+k
    write "$1"
    key Return
    if [ $# -gt 1 ]; then
        write "$2"
        key Return
    fi
    key F4
}

tour_filter() {
    key alt+d
    window '医師検索'
    write 3
    shot choosing-a-doctor
    key Return
    gone '医師検索'
    key F4
    shot consents-of-a-doctor
    key alt+c
    list_range "$(date -d "$(date +%Y-%m-01) -2 months" +%Y%m%d)"
    key alt+w
    write 'zzz'
    shot narrowed-away
    key ctrl+a BackSpace F4
}

# The first row gets its answer: the re-consent date proposes the next period.
tour_edit() {
    key F9
    window '並び順'
    shot orders
    key Escape
    gone '並び順'
    key ctrl+Home
    for _ in $(seq 11); do key Right; done
    write "$(date +%Y%m%d)"
    shot typing-a-date
    key Return Up
    for _ in $(seq 8); do key Left; done
    key space
    shot edited
    key F5
    shot asking-to-save
    key Return
    shot saved
}

tour_renew() {
    key F6
    window '同意更新の確認'
    shot asking-to-renew
    key Return
    gone '同意更新の確認'
    sleep 3
    shot renewed
    key Return
    key alt+k Return
    write "$(date -d '+1 year' +%Y%m%d)"
    key Return F4
    shot renewed-rows
    key alt+k Return Return Right F4
    shot history
}

tour_end() {
    key F12
    leave_menu menu-program
    wait "$program_pid" || die "The program ended with an error."
}
