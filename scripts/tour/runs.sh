# Runs: the renewal is taken back, and that again.

all_consents='SELECT COUNT(*) FROM RIYOUSHA_DOUI_REC'

# renewed_since BEFORE: waits until the installation's only renewal is done; so many consents there were before it.
renewed_since() {
    comes "SELECT COUNT(*) FROM DOUISHO_LOG_BATCH WHERE cKind = '同意更新' AND nRows > 0" 1
    [ "$(database "$all_consents")" -gt "$1" ] || die "Nothing is renewed."
    window '同意書管理'
}

# take_back PICTURE CAPTION: answers the question with yes.
take_back() {
    window '処理の取消'
    shot "$1" "$2"
    key alt+y
    gone '処理の取消'
}

# tour_take_back BEFORE: so many consents there were before the renewal.
tour_take_back() {
    local after
    renewed_since "$1"
    after=$(database "$all_consents")
    glance renewed
    key ctrl+z
    take_back asking-to-take-back '最後の処理（同意更新）を Ctrl+Z で取り消す前の確認'
    comes "$all_consents" "$1"
    window '同意書管理'
    glance taken-back
    key ctrl+j
    window '処理の一覧'
    shot runs '処理の一覧。いつ・どのＰＣで・何件したか、取り消したかどうか'
    key F3
    take_back asking-to-renew-again '取り消しを取り消して、更新した状態に戻す前の確認'
    comes "$all_consents" "$after"
    window '処理の一覧'
    glance runs-taken-back
    key F12
    gone '処理の一覧'
    window '同意書管理'
}
