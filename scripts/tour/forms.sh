# Consent forms: one patient of each kind, and all who match.

# number_of KIND PROCEDURE: the first patient of branch 1-1 with such a newest consent (kind 0 massage, 1
# acupuncture; procedure 0 written, 1 oral).
number_of() {
    database "SELECT MIN(P.nIDNo) FROM RIYOUSHA P JOIN RIYOUSHA_DOUI_REC C
        ON C.iKyotenCd = P.iKyotenCd AND C.iKyotenEb = P.iKyotenEb AND C.nIDNo = P.nIDNo
        AND C.iNewestFlg = 1 AND C.iHenkeiFlg = 0
        WHERE P.iKyotenCd = 1 AND P.iKyotenEb = 1 AND IFNULL(P.iTenki, 0) NOT IN (1, 3, 15)
        AND P.tExpireDay IS NULL AND P.iSejutsuKubun = $1 AND C.iDouiShubetsu = $2"
}

# leave_forms COUNT: ends treatments until that many written consents are left to print.
leave_forms() {
    database "UPDATE RIYOUSHA SET iTenki = 1 WHERE iKyotenCd = 1 AND iKyotenEb = 1 AND nIDNo NOT IN (
        SELECT P.nIDNo FROM RIYOUSHA P JOIN RIYOUSHA_DOUI_REC C
        ON C.iKyotenCd = P.iKyotenCd AND C.iKyotenEb = P.iKyotenEb AND C.nIDNo = P.nIDNo
        AND C.iNewestFlg = 1 AND C.iHenkeiFlg = 0
        WHERE P.iKyotenCd = 1 AND P.iKyotenEb = 1 AND IFNULL(P.iTenki, 0) NOT IN (1, 3, 15)
        AND P.tExpireDay IS NULL AND C.iDouiShubetsu = 0 ORDER BY P.nIDNo LIMIT $1)"
}

# keep_printed NAME CAPTION [FILE]: without a printer the viewer leaves a PDF and says where.
keep_printed() {
    window '帳票印刷'
    glance "$1-printed"
    keep_document "$1" "${3:-WfdCom.pdf}" "$2"
    key Return
    gone '帳票印刷'
}

# print_form NAME NUMBER: the cursor stands in the box for the patient's number.
print_form() {
    key alt+1 Tab ctrl+a
    write "$2"
    key Return
    glance "$1-chosen"
    key F11
}

# Closing the screen of mode 0 ends the program; the menu program stays where it is.
tour_consent_forms() {
    local massage acupuncture oral
    massage=$(number_of 0 0) acupuncture=$(number_of 1 0) oral=$(number_of 0 1)
    leave_forms 101
    start_program "$installation" 0
    window '同意書印刷'
    glance consent-printing
    print_form massage-form "$massage"
    keep_printed massage-form '同意書（マッサージ）'
    page massage-form '印刷した同意書。医師が署名するだけの形で出ます'
    print_form acupuncture-form "$acupuncture"
    keep_printed acupuncture-form '同意書（鍼灸）'
    print_form oral-consent "$oral"
    sleep 1
    glance oral-consent-has-no-form
    key Return
    sleep 1
    key Return
    tour_preview "$massage"
    tour_batch
    window '同意書印刷'
    key F12
    wait "$program_pid" || die "The program ended with an error."
    if xdotool search --onlyvisible --name '業務メニュー' >/dev/null 2>&1; then
        die "The form printing screen started the menu program."
    fi
}

# tour_preview NUMBER: the form on the screen, searched.
tour_preview() {
    key alt+1 Tab ctrl+a
    write "$1"
    key Return F9
    # The viewer's window bears the same title.
    windows '同意書印刷' 2
    sleep 1
    shot viewer '同意書のプレビュー。ここから印刷・PDF保存・文字の検索ができます'
    key F12
    windows '同意書印刷' 1
    window '同意書印刷'
}

# 101 forms are two chunks, and two documents.
tour_batch() {
    key alt+2 alt+b
    glance batch-chosen
    key F11
    sleep 1
    glance batch-asked
    key Return
    for _ in $(seq 40); do
        xdotool search --onlyvisible --name 'お待ちください' >/dev/null 2>&1 && break
        sleep 0.05
    done
    shot batch-running '大量の同意書を100件ずつ印刷しているところ。途中で中止できます' now
    gone 'お待ちください'
    # The second chunk's paper waits for the first's.
    window '帳票印刷'
    glance batch-printed
    keep_document batch-1 Output0001.pdf '同意書100件の1冊目'
    key Return
    keep_document batch-2 Output0002.pdf '同意書の2冊目'
    window '帳票印刷'
    key Return
    gone '帳票印刷'
    window '同意書印刷'
    glance batch-done
}
