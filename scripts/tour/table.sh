# The list leaves the program: saved as a file, which is read back, and printed as a table.

# By a code page the file could not hold all names.
tour_table() {
    local from file
    from=$(date -d "$(date +%Y-%m-01) -2 months" +%Y%m%d)
    file=$(realpath "$tour_shots")/list.csv
    key alt+c
    list_range "$from"
    key ctrl+shift+s
    window 'CSV出力'
    write list
    key alt+d ctrl+a
    write "$(dirname "$file")"
    glance saving-the-list
    key F5
    window '文字コードの確認'
    glance characters-beyond-the-code-page
    key alt+y
    window '出力完了'
    glance list-saved
    key Return
    /usr/bin/python3 -B scripts/tour/read_list.py "$file" "$installation/DATA/douisho.db" "$from" ||
        die "The saved list does not say what the database holds."
    document list.csv '一覧を保存したCSVファイル'
    table_on_paper
}

# The questions and the viewer bear the document's title.
table_on_paper() {
    local pdf
    pdf=$(realpath "$tour_shots")/list.pdf
    key ctrl+shift+l
    window '同意書一覧'
    glance columns-side-by-side
    key alt+y
    sleep 1
    key alt+y
    gone '同意書一覧'
    window '同意書一覧'
    sleep 1
    glance printed-list
    key ctrl+s
    sleep 1
    key ctrl+a
    write "$pdf"
    key Return
    for _ in $(seq 100); do
        [ -s "$pdf" ] && break
        sleep 0.1
    done
    [ -s "$pdf" ] || die "The printed list was not saved."
    document list.pdf '一覧を印刷した表'
    window '同意書一覧'
    key F12
    gone '同意書一覧'
    window '同意書管理'
}
