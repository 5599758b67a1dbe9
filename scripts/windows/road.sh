# The tour's main road through the windows of the Windows programs.

# road_document NAME TEXT: a PDF that Windows programs wrote can be searched and carries its fonts.
road_document() {
    local pdf=$tour_shots/$1.pdf fonts
    pdftotext "$pdf" - | grep -q "$2" || die "There is no \"$2\" in $pdf."
    fonts=$(pdffonts "$pdf" | tail -n +3)
    [ -n "$fonts" ] && ! grep -qv ' yes yes yes ' <<<"$fonts" || die "$pdf does not carry its fonts: $fonts"
}

# windows_road FOLDER: leaves pictures and documents in tour/windows.
windows_road() {
    . scripts/installation.sh
    . scripts/tour.sh
    start_program() {
        DOUISHO_RUN="$$" DOUISHO_FOLDER="$(wine_path "$1")" in_wine "$bin/douisho.exe" "$2" &
        program_pid=$!
    }
    # Locks of the two systems do not see each other: whoever looks from outside must not tidy up when it goes.
    database() { sqlite3 -readonly "$installation/DATA/douisho.db" "$1"; }
    bin=build/windows/bin
    tour_shots=tour/windows
    tour_all=1
    mkdir -p "$tour_shots/all"
    rm -f "$tour_shots"/*.{png,pdf,json,html} "$tour_shots"/all/*.png
    installation=$1
    say "Making a sample installation with the Windows program"
    in_wine "$bin/douisho-sample.exe" --folder "$(wine_path "$installation")" --programs "$(wine_path "$bin")" |
        iconv -f CP932 -t UTF-8
    tour_road
    road_document request-letter '再同意書ご交付のお願い'
    road_document new-consent-form 'あん摩マッサージ指圧療養費用'
    write_index
    say "${#tour_pictures[@]} pictures and ${#tour_documents[@]} documents: see $tour_shots/index.html"
}
