# A list of patients from another program: what an import would do of it, and what is left in a file.

tour_import() {
    local file
    file=$(realpath "$tour_shots")/meibo.csv
    rm -f "${file%.csv}"*.csv
    {
        printf '利用者ID,利用者氏名,ふりがな,生年月日,性別,TEL,住所,担当者,血液型\n'
        printf '2001,取込　花子,トリコミ　ハナコ,昭和20年1月2日,女,0999-00-2001,緑川県若葉市中央1-2-3,,A\n'
        printf '2002,取込　太郎,トリコミ　タロウ,S13.11.3,男,0999-00-2002,緑川県若葉市本町4-5,,B\n'
        printf '2003,取込　次郎,トリコミ　ジロウ,13/11/3,男,0999-00-2003,緑川県若葉市本町4-5,,O\n'
        printf '2004,,トリコミ　サブロウ,1940/05/06,男,,緑川県若葉市港町6,,A\n'
        printf '2005,取込　さくら（トリコミ　サクラ）,,1938-07-08,女,,緑川県若葉市港町7,誰か,AB\n'
        printf '2006,とりこみ　まつ,,19330910,女,,緑川県若葉市港町8,,\n'
    } >"$file"
    key ctrl+o
    window 'データの取込'
    write "$file"
    key Return
    sleep 1
    key F7
    shot import '名簿の取込。登録する前に、行ごとの結果と理由が分かります' window
    key alt+2
    glance import-columns
    key F6
    comes "SELECT COUNT(*) FROM RIYOUSHA WHERE nIDNo BETWEEN 2001 AND 2006" 3
    glance import-done
    key F12
    gone 'データの取込'
    window '同意書管理'
}
