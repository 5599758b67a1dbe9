# What was changed: the history of a patient's consents, then that of everything. The list is shown and rows were
# renewed.

tour_changes() {
    local patient
    patient=$(database "SELECT MIN(nIDNo) FROM DOUISHO_LOG WHERE cOperation = '同意更新' AND iKind = 1 AND iKyotenCd = 1
        AND iKyotenEb = 1")
    [ -n "$patient" ] || die "The history does not tell of the renewal."
    list_range "$(date -d "$(date +%Y-%m-01) -2 months" +%Y%m%d)" "$(date -d '+1 year' +%Y%m%d)"
    key alt+r
    window '利用者検索'
    write "$patient"
    key Return
    gone '利用者検索'
    window '同意書管理'
    at_rest
    key ctrl+h
    window '変更履歴'
    at_rest
    key F3
    at_rest
    key Down Down Down
    shot changes '変更履歴。いつ、どのPCで、何が何に変わったかを、新しい順に表示します' window
    key F7
    at_rest
    key alt+s Down
    shot changes-of-all 'すべての変更。期間・PC・操作・利用者・処理番号で絞り込みます' window
    key F12
    gone '変更履歴'
    window '同意書管理'
    key alt+c
}
