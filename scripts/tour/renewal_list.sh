# The renewal list of all rows that are shown: both layouts, with and without sheets of their own.

tour_renewal_list() {
    key ctrl+k
    window '同意書更新リスト印刷'
    shot renewal-list
    # The sample has names that the paper cannot hold.
    key alt+y Home alt+j Home alt+k Home
    renewal_print renewal-check-list
    # Sheets for practitioners, those that run out this month and next.
    key alt+j Home Down Down alt+k Home Down alt+s End
    renewal_print renewal-check-list-sheets
    key alt+y End alt+j Home alt+k End alt+s Home
    renewal_print renewal-table
    # A month as people write it: December of this year.
    key alt+m
    write "R$(($(date +%Y) - 2018)).12"
    key Return
    shot renewal-month
    key F9
    sleep 1
    key Return
    windows '同意書書更新リスト印刷' 1
    sleep 1
    shot renewal-preview
    key F12
    window '同意書更新リスト印刷'
    key alt+m
    write 'R8.13'
    key F11
    sleep 0.5
    shot renewal-wrong-month
    key Return
    sleep 0.5
    key F12
    gone '同意書更新リスト印刷'
    window '同意書管理'
}

renewal_print() {
    shot "$1-chosen"
    key F11
    sleep 1
    shot "$1-asked"
    key Return
    keep_printed "$1"
    window '同意書更新リスト印刷'
}
