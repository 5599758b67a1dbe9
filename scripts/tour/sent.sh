# What was sent: letters are printed, and shown again after their layout has changed.

tour_sent() {
    window '同意書管理'
    key ctrl+Home space Down space F11
    window '依頼印刷'
    shot asking-to-print '依頼書を印刷する前の確認。対象、通数、ページ数' window
    key Return
    gone '依頼印刷'
    window '帳票印刷'
    # Whichever name this run gave its paper.
    keep_printed sent-letters '依頼書' "$(ls -t "$installation/TMP" | grep -m 1 '\.pdf$')"
    comes "SELECT COUNT(*) > 0 FROM DOUISHO_LOG_DOCUMENT D JOIN DOUISHO_LOG_BATCH USING (nBatch)
        WHERE cKind = '依頼書印刷' AND D.nPages > 0" 1
    cp -a "$installation/SYS" "$installation/SYS.before"
    sed -i 's/ご交付のお願い/新しい書式/' "$installation"/SYS/同意依頼書*.wfd
    window '同意書管理'
    key ctrl+j
    window '処理の一覧'
    glance runs-with-letters
    key F9
    window '何を送ったか'
    shot sent-again '何を送ったか。印刷したときのままの依頼書。書式が変わっても同じです'
    window_id=
    save_from_viewer '何を送ったか' sent-letters-again '書式が変わってから、もう一度表示した依頼書'
    cmp <(pdftotext "$tour_shots/sent-letters.pdf" -) <(pdftotext "$tour_shots/sent-letters-again.pdf" -) ||
        die "What was sent is shown otherwise than it went out."
    window '処理の一覧'
    key F12
    gone '処理の一覧'
    window '同意書管理'
    rm -r "$installation/SYS"
    mv "$installation/SYS.before" "$installation/SYS"
}
