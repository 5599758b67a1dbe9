# The list leaves the program: saved as a file, which is read back, and printed as a table.

# save_csv FILE: what is shown, in UTF-8.
save_csv() {
    key ctrl+shift+s
    window 'CSV出力'
    key ctrl+a
    write "$(basename "$1")"
    key alt+c End alt+d ctrl+a
    write "$(dirname "$1")"
    key F5
    window '出力完了'
    key Return
    window '同意書管理'
}

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

# save_from_viewer TITLE NAME CAPTION: the document that the viewer shows, as a PDF.
save_from_viewer() {
    local pdf
    pdf=$(realpath "$tour_shots")/$2.pdf
    next_window "$1"
    sleep 1
    glance "$2-shown"
    key ctrl+s
    sleep 1
    key ctrl+a
    write "$pdf"
    key Return
    for _ in $(seq 100); do
        [ -s "$pdf" ] && break
        sleep 0.1
    done
    [ -s "$pdf" ] || die "$1 was not saved."
    document "$2.pdf" "$3"
    window "$1"
    key F12
    gone "$1"
    window '同意書管理'
}

# The question and the viewer bear the document's title.
table_on_paper() {
    key ctrl+shift+l
    window '同意書一覧'
    glance columns-side-by-side
    key alt+y
    save_from_viewer '同意書一覧' list '一覧を印刷した表'
}

# The keys over the list, and on one sheet of paper.
tour_keys() {
    key shift+F1
    sleep 0.5
    shot keys 'キーの説明（Shift+F1、またはF1を押したまま）。どの画面でも、その画面のキーが出ます'
    key Escape
    key shift+F11
    sleep 0.5
    shot folded '条件とボタンをたたんだ一覧（Shift+F11）'
    key shift+F11
    key alt+z
    sleep 0.5
    key Down Return
    save_from_viewer 'キー一覧' key-sheet '1枚に印刷したキー一覧'
    page key-sheet '1枚に印刷したキー一覧'
}
