# compare_ini FOLDER: the same cases through Windows' own reader and writer of initialisation files and through ours.
# Fails where they differ and docs/ini-files.md does not say so, and where they agree and it does.
compare_ini() {
    local cases=tests/windows/ini_cases.txt
    mkdir -p "$1/files"
    x86_64-w64-mingw32-g++-posix -std=c++20 -static -I. tests/windows/ini_native.cpp -o "$1/ini_native.exe"
    in_wine "$1/ini_native.exe" "$(wine_path $cases)" "$(wine_path "$1/files")" | tr -d '\r' >"$1/native"
    build/dev/bin/ini_ours $cases "$1/files" >"$1/ours"
    [ "$(wc -l <"$1/native")" -gt 100 ] || die "The comparison of initialisation files did not run."
    paste "$1/native" "$1/ours" | awk -F'\t' '
        $1 != $4 || ($3 == $6) != ($2 == "") { print "case " $1 ": " $3 " and " $6; wrong = 1 }
        $2 != "" { differ++ }
        END { print NR " cases of initialisation files, " differ " differ as docs/ini-files.md says"; exit wrong }'
}
