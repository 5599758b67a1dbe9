# changelog CHANGES: the list of changes as Debian writes it. Its headings read "## 0.2.0（2026年11月22日）".
changelog() {
    local line version='' day=''
    sign() { [ -z "$version" ] || printf '\n -- The douisho developers <douisho@example.net>  %s\n\n' "$day"; }
    while IFS= read -r line; do
        if [[ $line =~ ^'## '([0-9.]+)[^0-9]+([0-9]+)[^0-9]+([0-9]+)[^0-9]+([0-9]+) ]]; then
            sign
            version=${BASH_REMATCH[1]}
            day=$(LC_ALL=C date -R -u -d "${BASH_REMATCH[2]}-${BASH_REMATCH[3]}-${BASH_REMATCH[4]}")
            printf 'douisho (%s) bookworm; urgency=medium\n\n' "$version"
        elif [[ -n $version && $line == '- '* ]]; then
            printf '  * %s\n' "${line#- }"
        fi
    done <"$1"
    sign
}
