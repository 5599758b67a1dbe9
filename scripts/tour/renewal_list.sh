# The renewal list of all rows that are shown: both layouts, with and without sheets of their own.

tour_renewal_list() {
    key ctrl+k
    window '同意書更新リスト印刷'
    shot renewal-list '同意書更新リストの印刷' window
    # The sample has names that the paper cannot hold.
    key alt+y Home alt+j Home alt+k Home
    renewal_print renewal-check-list '更新チェックリスト'
    # Sheets for practitioners, those that run out this month and next.
    key alt+j Home Down Down alt+k Home Down alt+s End
    renewal_print renewal-check-list-sheets '更新チェックリスト（主担当施術者ごと）'
    key alt+y End alt+j Home alt+k End alt+s Home
    renewal_print renewal-table '更新管理表'
    page renewal-table '印刷した更新管理表'
    # A month as people write it: December of this year.
    key alt+m
    write "R$(($(date +%Y) - 2018)).12"
    key Return
    glance renewal-month
    key F9
    windows '同意書書更新リスト印刷' 1
    sleep 1
    glance renewal-preview
    key F12
    window '同意書更新リスト印刷'
    key alt+m
    write 'R8.13'
    key F11
    sleep 0.5
    glance renewal-wrong-month
    key Return
    sleep 0.5
    key F12
    gone '同意書更新リスト印刷'
    window '同意書管理'
}

renewal_print() {
    glance "$1-chosen"
    key F11
    keep_printed "$1" "$2"
    window '同意書更新リスト印刷'
}
