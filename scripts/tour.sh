# Works the program with keys on a virtual screen and photographs what it shows.

. scripts/keys.sh
. scripts/tour/consent_screens.sh
. scripts/tour/fees.sh
. scripts/tour/forms.sh
. scripts/tour/list.sh
. scripts/tour/management.sh
. scripts/tour/masters.sh
. scripts/tour/renewal_list.sh
. scripts/tour/road.sh
. scripts/tour/settings.sh
. scripts/tour/table.sh

tour_shots=tour
tour_count=0
installation=

# database SQL: a statement past the program, on the tour's own installation.
database() { sqlite3 "$installation/DATA/douisho.db" "$1"; }

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

# keep_document NAME FILE: takes a finished PDF out of the work folder.
keep_document() {
    local made="$installation/TMP/$2"
    for _ in $(seq 100); do
        [ -s "$made" ] && break
        sleep 0.1
    done
    [ -s "$made" ] || die "There is no document $2."
    mv "$made" "$(printf '%s/%02d-%s.pdf' "$tour_shots" "$tour_count" "$1")"
}

# make_tour FOLDER: the whole tour. Printing many forms has a sample of its own in which treatments end.
make_tour() {
    mkdir -p "$tour_shots"
    rm -f "$tour_shots"/*.png "$tour_shots"/*.pdf "$tour_shots"/*.json "$tour_shots"/*.csv
    installation=$1
    make_installation "$installation"
    start_display "${TOUR_SIZE:-1280x800}"
    tour_refused_mode
    tour_start
    tour_list
    tour_table
    tour_doctors
    tour_consent_screens
    tour_settings
    tour_fees
    tour_end
    tour_road
    tour_management
    installation=$1-forms
    make_installation "$installation"
    tour_consent_forms
    say "$tour_count screenshots and the printed documents in $tour_shots/"
}

# The program goes back to the menu program, which is closed.
leave_menu() {
    window '業務メニュー'
    [ $# -eq 0 ] || shot "$1"
    key F12
    gone '業務メニュー'
}

tour_refused_mode() {
    start_program "$installation" 3
    window '　エラー！！'
    shot mode-not-set
    key Return
    gone '　エラー！！'
    window '同意書管理'
    shot cannot-start
    key Return
    leave_menu
}

# A start without a mode asks for one.
tour_start() {
    start_program "$installation" ''
    window '起動エラー'
    shot ask-for-the-mode
    key Return
}

tour_end() {
    key F12
    leave_menu menu-program
    wait "$program_pid" || die "The program ended with an error."
}
