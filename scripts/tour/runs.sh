# Runs: the renewal is taken back, and that again.

# Newest rows of the current branch that came of an answer.
renewed_rows() {
    database "SELECT COUNT(*) FROM RIYOUSHA_DOUI_REC N JOIN RIYOUSHA_DOUI_REC O USING (iKyotenCd, iKyotenEb, nIDNo, iHenkeiFlg)
        WHERE N.iNewestFlg = 1 AND O.nDate < N.nDate AND O.iGetFlg = 1 AND O.tSaiDouiDay = N.tDouiDay"
}

# take_back PICTURE CAPTION: answers the question with yes.
take_back() {
    window '処理の取消'
    shot "$1" "$2"
    key alt+y
    gone '処理の取消'
}

tour_take_back() {
    local renewed
    renewed=$(renewed_rows)
    [ "$renewed" -gt 0 ] || die "Nothing was renewed that could be taken back."
    key ctrl+z
    take_back asking-to-take-back '最後の処理（同意更新）を Ctrl+Z で取り消す前の確認'
    sleep 1
    [ "$(renewed_rows)" -lt "$renewed" ] || die "The renewal was not taken back."
    glance taken-back
    key ctrl+j
    window '処理の一覧'
    shot runs '処理の一覧。いつ・どのＰＣで・何件したか、取り消したかどうか'
    key F3
    take_back asking-to-renew-again '取り消しを取り消して、更新した状態に戻す前の確認'
    window '処理の一覧'
    sleep 1
    [ "$(renewed_rows)" -eq "$renewed" ] || die "The renewal did not come again."
    glance runs-taken-back
    key F12
    gone '処理の一覧'
    window '同意書管理'
}
