# Ledgers, envelopes and letters, from the list and from the masters.

# management_print NAME CAPTION: prints what is chosen, and answers what is asked before.
management_print() {
    local form='同意書管理印刷'
    glance "$1-chosen"
    key F11
    for _ in $(seq 200); do
        ! xdotool search --onlyvisible --name '帳票印刷' >/dev/null 2>&1 || break
        # The question bears the form's title.
        if [ "$(xdotool search --onlyvisible --name "$form" | wc -l)" -eq 2 ]; then
            glance "$1-asked"
            key Return
            break
        fi
        sleep 0.1
    done
    keep_printed "$1" "$2"
    window "$form"
}

tour_management() {
    start_program "$installation" 1
    window '同意書管理'
    list_range "$(date -d "$(date +%Y-%m-01) -2 months" +%Y%m%d)" "$(date -d '+1 year' +%Y%m%d)"
    key ctrl+d
    window '同意書管理印刷'
    tour_ledgers
    tour_envelopes
    tour_letters
    key F12
    gone '同意書管理印刷'
    window '同意書管理'
    tour_renewal_list
    tour_sent
    tour_masters
    key F12
    leave_menu
    wait "$program_pid" || die "The program ended with an error."
}

tour_ledgers() {
    local pattern
    key alt+d
    shot ledger '台帳・封筒・依頼書を印刷する画面' window
    for pattern in 1 2 3 4; do
        key alt+y Home
        for _ in $(seq 2 "$pattern"); do key Down; done
        management_print "ledger-$pattern" "同意台帳（様式$pattern）"
    done
}

tour_envelopes() {
    key alt+f alt+h alt+y Home
    management_print envelopes-long '封筒（長形3号、医療機関あて）'
    key alt+i alt+y End
    management_print envelopes-square '封筒（角形2号、医師あて）'
    key alt+c
    management_print envelopes-counsellors '封筒（相談員あて）'
    key alt+r
    management_print envelopes-patients '封筒（利用者あて）'
}

# In the preview: nothing is marked.
tour_letters() {
    key alt+l F9
    sleep 1
    glance letters-asked
    key Return
    windows '同意書印刷' 1
    sleep 1
    glance letters
    xdotool search --onlyvisible --name '^同意書印刷$' windowactivate --sync
    key F12
    gone '^同意書印刷$'
    window '同意書管理印刷'
}

# pick NUMBER…: the cursor stands in the list's code box.
pick() {
    local number
    for number in "$@"; do
        write "$number"
        key Return
    done
}

tour_masters() {
    local massage acupuncture
    massage=$(number_of 0 0) acupuncture=$(number_of 1 0)
    key alt+p
    glance print-menu
    key Escape Escape
    key ctrl+shift+d
    window '同意書管理印刷（マスタ）'
    key alt+d alt+y Home
    key Tab Tab Tab
    pick "$massage" "$acupuncture"
    management_print picked-ledger '同意台帳（選んだ利用者）'
    key alt+f alt+i alt+y Home
    tour_pick_doctors
    management_print picked-doctors '封筒（選んだ医師）'
    key F12
    gone '同意書管理印刷（マスタ）'
    window '同意書管理'
    key ctrl+shift+f
    window '同意書印刷（マスタ）'
    pick "$massage" "$acupuncture"
    glance picked-forms
    key F12
    gone '同意書印刷（マスタ）'
    window '同意書管理'
}

# From the list of doctors: the first two.
tour_pick_doctors() {
    key alt+n
    window '医師検索'
    glance picking-a-doctor
    key Return
    gone '医師検索'
    window '同意書管理印刷（マスタ）'
    pick 2
}
