# One consent's road: asked for by letter, told by mail, answered, renewed, printed anew.

# A massage patient who has asked for nothing yet and whose counsellor reads mail.
road_patient() {
    database "SELECT MIN(P.nIDNo) FROM RIYOUSHA P
        JOIN RIYOUSHA_SUB S ON S.iKyotenCd = P.iKyotenCd AND S.iKyotenEb = P.iKyotenEb AND S.nIDNo = P.nIDNo
        JOIN SOUDAN M ON M.iKyotenCd = P.iKyotenCd AND M.iKyotenEb = P.iKyotenEb AND M.nIDNo = S.iSoudaninId
        JOIN RIYOUSHA_DOUI_REC C ON C.iKyotenCd = P.iKyotenCd AND C.iKyotenEb = P.iKyotenEb
        AND C.nIDNo = P.nIDNo AND C.iNewestFlg = 1 AND C.iHenkeiFlg = 0
        WHERE P.iKyotenCd = 1 AND P.iKyotenEb = 1 AND IFNULL(P.iTenki, 0) NOT IN (1, 3, 15) AND P.tExpireDay IS NULL
        AND P.cTelNo <> '' AND P.iSejutsuKubun = 0 AND C.iDouiShubetsu = 0 AND M.cMail1 LIKE '%@%' AND M.iChusiFlg = 0
        AND IFNULL(C.iOutputFlg, 0) = 0 AND IFNULL(C.iGetFlg, 0) = 0 AND IFNULL(C.iSendFlg, 0) = 0
        AND IFNULL(C.iRenrakuFlg, 0) = 0 AND C.tSaiDouiDay IS NULL
        AND C.tDouiKaryoE >= '$(date -d "$(date +%Y-%m-01)" +%Y/%m/%d)'
        AND 1 = (SELECT COUNT(*) FROM RIYOUSHA_DOUI_REC N WHERE N.iKyotenCd = P.iKyotenCd
        AND N.iKyotenEb = P.iKyotenEb AND N.nIDNo = P.nIDNo AND N.iNewestFlg = 1)"
}

# A server on loopback that writes every mail down; mail.ini names its port.
start_mail_server() {
    local port_file="$installation/port"
    mkfifo "$installation/mail-end"
    /usr/bin/python3 tests/mail/smtp_server.py --out "$(realpath "$tour_shots")/mail.json" \
        <"$installation/mail-end" >"$port_file" &
    mail_pid=$!
    exec 7>"$installation/mail-end"
    for _ in $(seq 100); do
        [ -s "$port_file" ] && break
        sleep 0.1
    done
    [ -s "$port_file" ] || die "The mail server does not start."
    # The keys are in the code page of the suite's files.
    local ini="$installation/DATA/mail.ini"
    iconv -f CP932 -t UTF-8 "$ini" |
        sed "s/^メールサーバ=.*/メールサーバ=127.0.0.1\r/; s/^ポート=.*/ポート=$(cat "$port_file")\r/" |
        iconv -f UTF-8 -t CP932 >"$ini.new"
    mv "$ini.new" "$ini"
}

stop_mail_server() {
    exec 7>&-
    wait "$mail_pid"
}

tour_road() {
    local patient
    patient=$(road_patient)
    [ -n "$patient" ] || die "No patient of the sample suits the tour."
    start_mail_server
    start_program "$installation" 1
    window '同意書管理'
    at_rest
    road_find "$patient"
    road_letter
    road_mail
    road_answer
    road_form
    road_entry
    key F12
    leave_menu
    wait "$program_pid" || die "The program ended with an error."
    # Whatever was started meanwhile held the server's input open too.
    stop_mail_server
}

# The cursor goes to the first cell, 対象.
road_first_cell() { key ctrl+Home; }

road_find() {
    list_range "$(date -d "$(date +%Y-%m-01) -2 months" +%Y%m%d)" "$(date -d '+1 year' +%Y%m%d)"
    key alt+r
    window '利用者検索'
    write "$(database "SELECT cTelNo FROM RIYOUSHA WHERE iKyotenCd = 1 AND iKyotenEb = 1 AND nIDNo = $1")"
    sleep 0.5
    shot choosing-a-patient '利用者の検索。番号・かな・電話番号のどれでも絞り込めます' window
    key Return
    gone '利用者検索'
    window '同意書管理'
    key F4
    road_first_cell
    # 対象 and 連絡
    key space Tab Tab Tab Tab Tab Tab space
    glance ticked
    save_list
    window '同意書管理'
    at_rest
}

road_letter() {
    key ctrl+i
    window '同意依頼書'
    shot request '同意依頼書の画面。種類とあて先を行ごとに確かめて印刷します' window
    key F11
    sleep 1
    glance request-asked
    key Return
    keep_printed request-letter '同意依頼書'
    page request-letter '印刷した同意依頼書'
    gone '同意依頼書'
    window '同意書管理'
    glance request-marked
}

road_mail() {
    key ctrl+m
    window '相談員へのメール送信'
    shot mail-choice '相談員へのメール。1通ずつ内容を確かめて送ります' window
    key F5
    sleep 1
    glance mail-asked
    key Return
    sleep 2
    glance mail-sent
    key Return
    sleep 0.5
    key Escape
    gone 'メール送信'
    window '同意書管理'
    glance sent
}

# 受領 and the re-consent date, then the renewal.
road_answer() {
    local consents='SELECT COUNT(*) FROM RIYOUSHA_DOUI_REC' before
    before=$(database "$consents")
    road_first_cell
    key Tab Tab
    write "$(date +%Y%m%d)"
    key Return
    road_first_cell
    key Tab space
    glance answered
    save_list
    window '同意書管理'
    at_rest
    key F6
    window '同意更新の確認'
    key Return
    gone '同意更新の確認'
    comes "$consents" $((before + 1))
    # The rows are read again, and meanwhile no key is taken.
    sleep 2
    window '同意書管理'
    at_rest
    glance renewal-done
    glance renewed-consent
}

road_form() {
    road_first_cell
    key ctrl+p
    window 'セット印刷'
    shot set-print 'セット印刷。同意書・依頼書・封筒を一度に印刷します' window
    key F11
    sleep 1
    glance set-print-asked
    key Return
    keep_printed new-consent-form '更新後の同意書' Output0001.pdf
    sleep 0.5
    glance new-form-handed-over
    key Escape
    gone 'セット印刷'
    window '同意書管理'
}

# The chain of consents, and the new one opened.
road_entry() {
    key F3
    window '同意履歴'
    glance history
    key F2
    window '同意登録'
    shot entry '同意登録。同意書の記入欄がそのまま並んでいます' window
    key Escape
    gone '同意登録'
    window '同意履歴'
    key F11
    sleep 1
    glance history-asked
    key Return
    sleep 2
    glance history-printed
    key F12
    window '同意履歴'
    key F12
    gone '同意履歴'
    window '同意書管理'
}
