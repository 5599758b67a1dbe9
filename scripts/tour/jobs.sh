# The office's everyday jobs, counted: each begins in the list as it stands after the first start and ends when it
# is shown, saved or printed. Strokes and message boxes may not grow.

tour_jobs() {
    job_ends_soonest
    job_answer
    job_letters
    job_new_consent
    job_facility
    job_renewal
}

# fresh_list: the list of somebody who has chosen nothing yet.
fresh_list() {
    rm -rf "$XDG_CONFIG_HOME/douisho"
    start_program "$installation" 1
    window '同意書管理'
}

leave_list() {
    window '同意書管理'
    key F12
    leave_menu
    wait "$program_pid" || die "The program ended with an error."
}

# holds SQL RESULT: what a job is for stands in the database.
holds() {
    local found
    found=$(database "$1")
    [ "$found" = "$2" ] || die "$job: the database holds \"$found\", not \"$2\"."
}

row_of() { printf 'iKyotenCd = 1 AND iKyotenEb = 1 AND nIDNo = %s' "$1"; }

# job_patient CONDITION: number and kana of a patient with one consent (C) in the list's first range, whose kana is
# his alone and has no sign of two strokes.
job_patient() {
    database "SELECT P.nIDNo, replace(replace(P.cNameKana, ' ', ''), '　', '') FROM RIYOUSHA P
        JOIN RIYOUSHA_DOUI_REC C ON C.iKyotenCd = P.iKyotenCd AND C.iKyotenEb = P.iKyotenEb AND C.nIDNo = P.nIDNo
        AND C.iNewestFlg = 1 WHERE P.iKyotenCd = 1 AND P.iKyotenEb = 1 AND P.tExpireDay IS NULL
        AND IFNULL(P.iTenki, 0) NOT IN (1, 3, 15) AND C.tDouiKaryoE >= '$(date +%Y/%m/01)' AND $1
        GROUP BY P.nIDNo HAVING COUNT(*) = 1 AND MAX(C.iHenkeiFlg) = 0 ORDER BY P.nIDNo" |
        tr '|' ' ' | grep -E ' [アイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワン]{4,8}$' |
        head -n 1
}

job_ends_soonest() {
    local file first
    file=$(realpath "$tour_shots")/this-and-next.csv first=$(date +%Y-%m-01)
    fresh_list
    shot consent-list '同意書の一覧。起動するとこの画面になります。期限が近い行は茶色、過ぎた行は赤で表示します'
    job_begins 'what ends this month and next, soonest first' 1 0
    key ctrl+4
    job_ends
    shot states '今月と来月に終わる同意を、期限の近い順に。タブに状態ごとの件数が出ます'
    save_csv "$file"
    /usr/bin/python3 -B scripts/tour/read_list.py "$file" "$installation/DATA/douisho.db" "$(date -d "$first" +%Y%m%d)" \
        "$(date -d "$first +2 months -1 day" +%Y%m%d)" || die "$job: the list does not show it."
    leave_list
}

job_answer() {
    local number kana
    read -r number kana < <(job_patient 'IFNULL(C.iGetFlg, 0) = 0 AND C.tSaiDouiDay IS NULL')
    fresh_list
    job_begins "one doctor's answer: patient by kana, date, received, save" 18 0
    key ctrl+r
    window '返事の入力'
    write "$kana"
    key Return
    write "$(date +%m%d)"
    key Return
    job_ends
    glance answer
    key F12
    gone '返事の入力'
    holds "SELECT iGetFlg, tSaiDouiDay FROM RIYOUSHA_DOUI_REC WHERE $(row_of "$number") AND iNewestFlg = 1" \
        "1|$(date +%Y/%m/%d)"
    leave_list
}

job_letters() {
    local requested='FROM RIYOUSHA_DOUI_REC WHERE iOutputFlg = 1 OR iOutputFlgHenkei = 1' before
    before=$(database "SELECT COUNT(*) $requested")
    fresh_list
    job_begins 'letters for those not yet asked' 4 1
    key alt+4 F7 F11
    sleep 1
    message_box '依頼印刷'
    key Return
    job_ends
    keep_printed letters-not-yet-asked '未依頼の利用者の同意依頼書' 同意依頼書.pdf
    comes "SELECT COUNT(*) > $before $requested" 1
    leave_list
}

job_new_consent() {
    local number kana
    read -r number kana < <(job_patient "C.tDouiDay < '$(date +%Y/%m/01)'")
    fresh_list
    job_begins 'new consent for a patient found by kana' 18 0
    key ctrl+F1
    window '利用者検索'
    write "$kana"
    key Return
    window '同意登録'
    key alt+d
    write "$(date +%m%d)"
    key F5
    job_ends
    gone '同意登録'
    holds "SELECT COUNT(*) FROM RIYOUSHA_DOUI_REC WHERE $(row_of "$number") AND tDouiDay = '$(date +%Y/%m/%d)'" 1
    leave_list
}

job_facility() {
    fresh_list
    job_begins 'consent forms for one facility' 12 1
    key alt+l
    window '施設検索'
    write 1001
    key Return
    gone '施設検索'
    window '同意書管理'
    key F7 ctrl+p
    window 'セット印刷'
    key F11
    sleep 1
    message_box 'セット印刷'
    key Return
    job_ends
    keep_printed forms-of-a-facility '1つの入居施設の同意書' Output0001.pdf
    window 'セット印刷'
    key Escape
    gone 'セット印刷'
    leave_list
}

job_renewal() {
    local before
    before=$(database "$all_consents")
    fresh_list
    job_begins 'renew all that was received this month' 3 1
    key ctrl+5 F6
    message_box '同意更新の確認'
    key Return
    gone '同意更新の確認'
    job_ends
    renewed_since "$before"
    leave_list
}
