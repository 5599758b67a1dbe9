# Answers that came back in a pile, one of them taken back.

# The list is shown and nothing in it is unsaved.
tour_answers() {
    local -a kana
    mapfile -t kana < <(kana_of_patients 'C.iOutputFlg = 1 AND IFNULL(C.iGetFlg, 0) = 0' 3)
    key ctrl+r
    window '返事の入力'
    write "${kana[0]}"
    key Return
    write "$(date +%m%d)"
    key Return
    sleep 0.5
    write "${kana[1]}"
    glance answers-hits
    key Return Return
    sleep 0.5
    write "${kana[2]}"
    key Return
    write "$(date -d '-1 day' +%m%d)"
    key Return
    sleep 0.5
    shot answers '返事の入力。戻ってきた同意書を、番号かカナと日付だけで続けて登録します。期間は規則から決まります' window
    key ctrl+z
    sleep 0.5
    glance answer-taken-back
    write "${kana[2]}"
    key Return
    write '2226/11/20'
    key Return
    glance answer-hardly-meant
    key Escape
    sleep 0.3
    key F12
    gone '返事の入力'
    window '同意書管理'
}

# kana_of_patients CONDITION COUNT: the first four letters of patients under treatment who have one running consent
# and fit the condition.
kana_of_patients() {
    database "SELECT DISTINCT substr(P.cNameKana, 1, 4) FROM RIYOUSHA P JOIN RIYOUSHA_DOUI_REC C ON C.iKyotenCd = P.iKyotenCd
        AND C.iKyotenEb = P.iKyotenEb AND C.nIDNo = P.nIDNo AND C.iNewestFlg = 1 AND C.iHenkeiFlg = 0
        WHERE P.iKyotenCd = 1 AND P.iKyotenEb = 1 AND P.tExpireDay IS NULL AND IFNULL(P.iTenki, 0) NOT IN (1, 3, 15)
        AND $1 AND 1 = (SELECT COUNT(*) FROM RIYOUSHA_DOUI_REC D
        WHERE D.iKyotenCd = 1 AND D.iKyotenEb = 1 AND D.nIDNo = P.nIDNo AND D.iNewestFlg = 1)
        ORDER BY P.nIDNo LIMIT $2"
}
