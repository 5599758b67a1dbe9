# The consent list: its range and filters, an answer, a renewal.

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
