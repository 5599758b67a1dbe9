# Settings of consent management: period types, the list's columns, the staff filter. The list is shown.

tour_settings() {
    key alt+c
    tour_period_types
    tour_columns
    tour_staff_filter
}

tour_period_types() {
    key ctrl+t
    window '同意管理設定'
    glance period-types
    key 3
    key Return
    key F5
    glance period-type-wrong
    key Return
    key 2 Return
    key alt+c
    glance period-types-that-differ
    key F7 F8
    shot period-types-set '同意管理設定。利用者ごとに期間の計算方法を決めます' window
    key F5
    glance asking-to-save-types
    key Return
    sleep 1
    glance types-saved
    key Return
    key F12
    gone '同意管理設定'
    window '同意書管理'
}

# 依頼ボタン is hidden, columns up to 要加療開始 are frozen; then the list is scrolled to its right. Columns that other
# parts of the tour count are left alone.
tour_columns() {
    key ctrl+shift+h
    window '表示項目'
    for _ in $(seq 15); do key Down; done
    key space alt+k
    write 9
    shot columns '表示項目。一覧に出す列と、左に固定する列を選びます' window
    key F5
    gone '表示項目'
    window '同意書管理'
    for _ in $(seq 24); do key Right; done
    glance columns-frozen
    key Home
}

tour_staff_filter() {
    key ctrl+shift+t
    window '施術者の絞り込み'
    write 3
    key Return
    write 1
    key Return
    key F7 alt+o
    glance staff-filter
    key F5
    gone '施術者の絞り込み'
    window '同意書管理'
    glance list-of-staff
    key alt+c
}
