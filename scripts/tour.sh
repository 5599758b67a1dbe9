# Works the program with keys on a virtual screen and photographs what it shows.

. scripts/keys.sh
. scripts/tour/answers.sh
. scripts/tour/changes.sh
. scripts/tour/consent_screens.sh
. scripts/tour/fees.sh
. scripts/tour/forms.sh
. scripts/tour/import.sh
. scripts/tour/jobs.sh
. scripts/tour/list.sh
. scripts/tour/management.sh
. scripts/tour/masters.sh
. scripts/tour/renewal_list.sh
. scripts/tour/road.sh
. scripts/tour/runs.sh
. scripts/tour/sent.sh
. scripts/tour/settings.sh
. scripts/tour/table.sh

tour_shots=tour
installation=

# database SQL: a statement past the program, on the tour's own installation.
database() { sqlite3 "$installation/DATA/douisho.db" "$1"; }

# comes SQL RESULT: waits until the database holds it.
comes() {
    for _ in $(seq 100); do
        [ "$(database "$1")" != "$2" ] || return 0
        sleep 0.2
    done
    die "The database does not come to hold \"$2\": $1"
}

screen_sum() { import -silent -window root ppm:- | sha1sum; }

# at_rest: waits until the screen has come to rest (a blinking cursor is given up on).
at_rest() {
    local before='' now
    for _ in $(seq 8); do
        now=$(screen_sum)
        [ "$now" != "$before" ] || break
        before=$now
        sleep 0.2
    done
}

# Lines of the index: file, tab, what it shows.
tour_pictures=()
tour_documents=()
tour_file=

# next_picture NAME CAPTION: its numbered name is left in tour_file.
next_picture() {
    tour_file=$(printf '%02d-%s.png' $((${#tour_pictures[@]} + 1)) "$1")
    tour_pictures+=("$tour_file"$'\t'"$2")
}

# shot NAME CAPTION [window|now]: a picture of the whole screen, or of the window in use with its frame, for whoever
# wants to know what the program looks like; once it has come to rest or at once.
shot() {
    local of=(-window root)
    [ "${3:-}" = now ] || at_rest
    next_picture "$1" "$2"
    [ "${3:-}" != window ] || of=(-frame -window "$(xdotool getactivewindow)")
    import -silent "${of[@]}" "$tour_shots/$tour_file"
}

# glance NAME: a step between, pictured only by ./run --tour --all, to see where a tour went wrong.
glance_count=0
glance() {
    at_rest
    glance_count=$((glance_count + 1))
    [ -z "${tour_all:-}" ] ||
        import -silent -window root "$(printf '%s/all/%03d-%s.png' "$tour_shots" "$glance_count" "$1")"
}

# document NAME CAPTION: enters what lies under that name in the tour's folder.
document() { tour_documents+=("$1"$'\t'"$2"); }

# keep_document NAME FILE CAPTION: takes a finished PDF out of the work folder.
keep_document() {
    local made="$installation/TMP/$2"
    for _ in $(seq 100); do
        [ -s "$made" ] && break
        sleep 0.1
    done
    [ -s "$made" ] || die "There is no document $2."
    mv "$made" "$tour_shots/$1.pdf"
    document "$1.pdf" "$3"
}

# page NAME CAPTION: the first page of a kept document as a picture.
page() {
    next_picture "$1" "$2"
    pdftoppm -png -r 80 -f 1 -singlefile "$tour_shots/$1.pdf" "$tour_shots/${tour_file%.png}"
}

# write_index: the tour's pictures and documents as one page.
write_index() {
    local line number=0
    {
        printf '<!DOCTYPE html>\n<html lang="ja"><meta charset="utf-8"><title>douisho の画面</title>\n'
        printf '<style>body{max-width:80em;margin:auto;font-family:sans-serif}img{max-width:100%%;'
        printf 'border:1px solid #999}h2{font-size:1em;margin-top:2em}</style>\n<h1>douisho の画面</h1>\n'
        for line in "${tour_pictures[@]}"; do
            number=$((number + 1))
            printf '<h2>%d　%s</h2>\n<img src="%s" alt="">\n' "$number" "${line#*$'\t'}" "${line%%$'\t'*}"
        done
        printf '<h1>印刷した書類とファイル</h1>\n<ul>\n'
        for line in "${tour_documents[@]}"; do
            printf '<li><a href="%s">%s</a></li>\n' "${line%%$'\t'*}" "${line#*$'\t'}"
        done
        printf '</ul>\n'
    } >"$tour_shots/index.html"
}

# make_tour FOLDER: the whole tour. The jobs write much and have a sample of their own, and so does the printing of
# many forms, in which treatments end.
make_tour() {
    mkdir -p "$tour_shots/all"
    rm -f "$tour_shots"/*.{png,pdf,json,csv,html} "$tour_shots"/all/*.png
    installation=$1-jobs
    make_installation "$installation"
    start_display "${TOUR_SIZE:-1280x800}"
    # Kana lie on keys of their own, as on a Japanese keyboard; else each would be a key of the moment.
    setxkbmap -layout us,jp -variant ,kana
    tour_jobs
    installation=$1
    make_installation "$installation"
    tour_refused_mode
    tour_start
    tour_list
    tour_answers
    tour_table
    tour_keys
    tour_doctors
    tour_consent_screens
    tour_settings
    tour_fees
    tour_import
    tour_end
    tour_road
    tour_management
    installation=$1-forms
    make_installation "$installation"
    tour_consent_forms
    write_index
    say "${#tour_pictures[@]} pictures and ${#tour_documents[@]} documents: see $tour_shots/index.html"
    job_table
}

# The program goes back to the menu program, which is closed.
leave_menu() {
    window '業務メニュー'
    [ $# -eq 0 ] || glance "$1"
    key F12
    gone '業務メニュー'
}

tour_refused_mode() {
    start_program "$installation" 3
    window '　エラー！！'
    glance mode-not-set
    key Return
    gone '　エラー！！'
    window '同意書管理'
    glance cannot-start
    key Return
    leave_menu
}

# A start without a mode asks for one.
tour_start() {
    start_program "$installation" ''
    window '起動エラー'
    glance ask-for-the-mode
    key Return
}

tour_end() {
    key F12
    leave_menu menu-program
    wait "$program_pid" || die "The program ended with an error."
}
