# The masters: a doctor entered by postal code and with consent forms of her own, the list of doctors saved,
# an institution where it is picked.

tour_doctors() {
    local file
    file=$(realpath "$tour_shots")/doctors.csv
    key ctrl+shift+m
    window '医師一覧'
    shot doctors '医師の一覧' window
    key F1
    window '医師登録'
    write 'Midorikawa Hotaru'
    key Return Return Return Return Return Return Return
    write 9921110
    glance postal-code-typed
    key F7
    shot address-found '医師の登録。郵便番号から住所が入ります' window
    write '3-4'
    key F9
    window '同意書式設定'
    sleep 1
    glance doctor-consent-forms
    key F5
    window '確認'
    key Return
    gone '同意書式設定'
    window '医師登録'
    key F5
    window '登録確認'
    glance doctor-to-be-saved
    key Return
    gone '登録確認'
    window '医師一覧'
    key alt+n
    write midori
    glance doctors-narrowed
    key ctrl+shift+s
    window 'CSV出力'
    key ctrl+a
    write doctors
    key alt+d ctrl+a
    write "$(dirname "$file")"
    key F5
    window '出力完了'
    glance doctors-saved
    key Return
    iconv -f CP932 -t UTF-8 "$file" | grep -q 'Midorikawa Hotaru.*992-1110.*緑川県若葉市桜台3-4' ||
        die "The saved doctors lack the new one."
    document doctors.csv '医師の一覧を保存したCSVファイル'
    key Escape
    gone '医師一覧'
    window '同意書管理'
    tour_institution
}

# From the filter's pick list.
tour_institution() {
    key alt+d
    window '医師検索'
    glance picking-a-doctor-to-edit
    key F2
    window '医師登録'
    key alt+i
    window '施設検索'
    key F2
    window '医療機関・施設登録'
    glance institution
    key F12
    gone '医療機関・施設登録'
    window '施設検索'
    key Escape
    gone '施設検索'
    window '医師登録'
    key F12
    gone '医師登録'
    window '医師検索'
    key Escape
    gone '医師検索'
    window '同意書管理'
}
