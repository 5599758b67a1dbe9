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
    shot saving-the-list
    key F5
    window '文字コードの確認'
    shot characters-beyond-the-code-page
    key alt+y
    window '出力完了'
    shot list-saved
    key Return
    /usr/bin/python3 -B scripts/tour/read_list.py "$file" "$installation/DATA/douisho.db" "$from" ||
        die "The saved list does not say what the database holds."
    table_on_paper
}

# The questions and the viewer bear the document's title.
table_on_paper() {
    local pdf
    tour_count=$((tour_count + 1))
    pdf=$(realpath "$tour_shots")/$(printf '%02d-list.pdf' "$tour_count")
    key ctrl+shift+l
    window '同意書一覧'
    shot columns-side-by-side
    key alt+y
    sleep 1
    key alt+y
    gone '同意書一覧'
    window '同意書一覧'
    sleep 1
    shot printed-list
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
    window '同意書一覧'
    key F12
    gone '同意書一覧'
    window '同意書管理'
}
