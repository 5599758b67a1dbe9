# The consent list: its range and filters, an answer, a renewal.

# The list's first range is this month and the five after it. Renewing is allowed for ranges that begin two
# months back, whatever the day.
tour_list() {
    window '同意書管理'
    glance consent-list
    list_range "$(date -d "$(date +%Y-%m-01) -2 months" +%Y%m%d)"
    glance wider-range
    tour_states
    tour_filter
    tour_conflict
    tour_crash
    tour_edit
    tour_renew
    tour_changes
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

# States and ranges have a key each; what has lapsed outside of the range is one of them.
tour_states() {
    key alt+2
    shot lapsed '対象期間外も含めた期限切れ（Alt+2）。件数は一覧の下にも出ます'
    key alt+4
    glance not-yet-requested
    key alt+1 ctrl+4
    glance this-month-and-next
    key alt+c
    list_range "$(date -d "$(date +%Y-%m-01) -2 months" +%Y%m%d)"
}

tour_filter() {
    key alt+d
    window '医師検索'
    write 3
    glance choosing-a-doctor
    key Return
    gone '医師検索'
    window '同意書管理'
    glance consents-of-a-doctor
    key alt+c
    list_range "$(date -d "$(date +%Y-%m-01) -2 months" +%Y%m%d)"
    key alt+w
    write 'zzz'
    glance narrowed-away
    key ctrl+a BackSpace F4
}

# remarked TEXT: waits until the text stands in one remark of the database.
remarked() { comes "SELECT COUNT(*) FROM RIYOUSHA_DOUI_REC WHERE cItiranBikou = '$1' COLLATE BINARY" 1; }

# save_list: with yes to the question, which bears the list's own title.
save_list() {
    local list
    list=$(xdotool getactivewindow)
    key F5
    other_active "$list"
    glance asking-to-save
    key Return
}

# remark_first TEXT: types a remark into the list's first row.
remark_first() {
    key ctrl+Home Tab Tab Tab Tab Tab Tab Tab
    write "$1"
    key Return
}

# A second program, a colleague's, writes a row that is being edited here.
tour_conflict() {
    local ours our_program=$program_pid
    window '同意書管理'
    ours=$window_id
    remark_first 'FAX 11/20'
    start_program "$installation" 1
    window '同意書管理' 60 "$ours"
    at_rest
    # 連絡 too, which is not typed here.
    key ctrl+Home Tab Tab Tab Tab Tab Tab space
    remark_first 'TEL 11/19'
    save_list
    remarked 'TEL 11/19'
    key F12
    leave_menu
    wait "$program_pid" || die "The colleague's program ended with an error."
    program_pid=$our_program
    xdotool windowactivate --sync "$ours"
    save_list
    window '他のＰＣと重なった行'
    shot conflict '同じ行を他のＰＣが先に保存していたとき。読んだとき・他のＰＣ・入力を並べ、どちらも失いません' window
    key space
    glance conflict-decided
    key Return
    gone '他のＰＣと重なった行'
    window '同意書管理'
    glance conflict-saved
}

# What was typed survives a program that is killed.
tour_crash() {
    remark_first 'kept 11/21'
    for _ in $(seq 100); do
        [ -z "$(find "$XDG_CONFIG_HOME" -name '*.unsaved')" ] || break
        sleep 0.1
    done
    kill -9 "$program_pid"
    wait "$program_pid" 2>/dev/null || true
    start_program "$installation" 1
    window '復元'
    shot restore '保存しないうちに止まったときは、次に開いたときに入力を元に戻せます' window
    key Return
    gone '復元'
    window '同意書管理'
    glance restored
    save_list
    remarked 'kept 11/21'
    list_range "$(date -d "$(date +%Y-%m-01) -2 months" +%Y%m%d)"
}

# A patient whose consents leave months without cover.
tour_gap() {
    local patient
    patient=$(database "WITH R AS (SELECT C.nIDNo, C.tDouiKaryoE AS E, LEAD(C.tDouiKaryoS)
        OVER (PARTITION BY C.nIDNo ORDER BY C.nDate) AS N FROM RIYOUSHA P JOIN RIYOUSHA_DOUI_REC C
        ON C.iKyotenCd = P.iKyotenCd AND C.iKyotenEb = P.iKyotenEb AND C.nIDNo = P.nIDNo
        WHERE P.iKyotenCd = 1 AND P.iKyotenEb = 1 AND P.tExpireDay IS NULL AND IFNULL(P.iTenki, 0) NOT IN (1, 3, 15)
        AND C.iHenkeiFlg = 0 AND IFNULL(C.iReceptDisabledFlg, 0) = 0)
        SELECT MIN(nIDNo) FROM R WHERE julianday(replace(N, '/', '-')) - julianday(replace(E, '/', '-')) > 31")
    key alt+r
    window '利用者検索'
    write "$patient"
    key Return
    gone '利用者検索'
    window '同意書管理'
    sleep 0.5
    key F3
    window '同意履歴'
    shot history '同意の履歴。同意のない期間（空白）は赤く表示します' window
    key F12
    gone '同意履歴'
    window '同意書管理'
    key alt+c
}

# A row that waits gets its answer: the re-consent date, typed short, proposes the next period.
tour_edit() {
    key F9
    window '並び順'
    glance orders
    key Escape
    gone '並び順'
    key ctrl+Home Down Down Down Down
    key Tab Tab
    write "$(date +%m%d)"
    shot typing-a-date '再同意日を短く入力しているところ。読み取った日付がすぐ下に出ます'
    key Return Up
    key shift+Tab
    key space
    shot edited '変更した項目には色が付きます。保存するまでデータベースは変わりません'
    save_list
    glance saved
}

tour_renew() {
    local before
    before=$(database "$all_consents")
    key F6
    window '同意更新の確認'
    shot asking-to-renew '受領にチェックした行を、まとめて更新する前の確認'
    key Return
    gone '同意更新の確認'
    tour_take_back "$before"
    key alt+k Return
    write "$(date -d '+1 year' +%Y%m%d)"
    key Return F4
    glance renewed-rows
    key alt+k Return Return Right F4
    glance history
    key alt+c
    tour_gap
}
