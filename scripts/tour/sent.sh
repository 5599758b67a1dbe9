# What was sent: letters are printed, and shown again after their layout has changed.

tour_sent() {
    window '同意書管理'
    key ctrl+Home space Down space F11
    window '依頼印刷'
    shot asking-to-print '依頼書を印刷する前の確認。対象、通数、ページ数と、出ない人の名前' window
    key Return
    gone '依頼印刷'
    window '帳票印刷'
    key Return
    gone '帳票印刷'
    comes "SELECT COUNT(*) > 0 FROM DOUISHO_LOG_DOCUMENT D JOIN DOUISHO_LOG_BATCH USING (nBatch)
        WHERE cKind = '依頼書印刷' AND D.nPages > 0" 1
    cp -a "$installation/SYS" "$installation/SYS.before"
    sed -i 's/同意依頼書/新しい書式/g' "$installation"/SYS/同意依頼書*.wfd
    window '同意書管理'
    key ctrl+j
    window '処理の一覧'
    glance runs-with-letters
    key F9
    window '処理番号'
    shot sent-again '何を送ったか。印刷したときのままの依頼書。書式が変わっても同じです'
    key F12
    gone '処理番号'
    window '処理の一覧'
    key F12
    gone '処理の一覧'
    window '同意書管理'
    rm -r "$installation/SYS"
    mv "$installation/SYS.before" "$installation/SYS"
}
