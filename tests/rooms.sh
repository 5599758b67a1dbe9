#!/usr/bin/env bash
# Checks that includes go one way only and that every file keeps to its trade:
#   rooms.sh TOP LIST     checks the sources under TOP; LIST names those of the core, one a line
#   rooms.sh --self-test  checks that offences are found
set -euo pipefail

# The rooms of ours that a file may include, by its place; the first line that fits counts.
allowed_rooms() {
    local base='app/base' db='app/base db' forms='widgets app/forms'
    case "$1" in
    app/base/*) echo "$base" ;;
    app/forms/*) echo "$base db $forms" ;;
    app/*) echo "$db consent masters print $forms app" ;;
    db/*) echo "$db" ;;
    widgets/*) echo "$db widgets" ;;
    viewer/*) echo "$base viewer" ;;
    sample/*) echo "$db widgets sample" ;;
    print/*_form.* | print/*_panel.*) echo "$db print $forms" ;;
    print/*) echo "$db print" ;;
    *) is_core "$1" && echo "$db consent masters print" || echo "$db consent masters print $forms" ;;
    esac
}

# Whether the build puts a file into the library without widgets.
is_core() { grep -qxF "$1" "$core_files"; }

room_of() {
    case "$1" in
    app/base/* | app/forms/*) echo "${1%%/*}/$(cut -d/ -f2 <<<"$1")" ;;
    *) echo "${1%%/*}" ;;
    esac
}

offence() {
    printf '%s: %s\n' "$1" "$2"
    offences=$((offences + 1))
}

check_includes() {
    local file=$1 included room allowed
    allowed=" $(allowed_rooms "$file") "
    while read -r included; do
        room=$(room_of "$included")
        [[ $allowed == *" $room "* ]] || offence "$file" "may not include $included"
    done < <(sed -n 's/^ *# *include *"\([^"]*\/[^"]*\)".*/\1/p' "$file")
}

check_trade() {
    local file=$1
    if is_core "$file" && grep -nE '# *include *(<Qt(Widgets|Gui|PrintSupport)/|"ui_|"[^"]*_form\.h")' "$file"; then
        offence "$file" 'is in the core and may not name a widget'
    fi
    case "$file" in
    *_form.* | *_panel.* | widgets/*)
        if grep -nE 'u"[^"]*\b(SELECT|INSERT INTO|UPDATE [A-Z]|DELETE FROM)\b' "$file"; then
            offence "$file" 'is a form and may hold no SQL'
        fi
        ;;
    *_query.*)
        if grep -n '"app/base/messages.h"' "$file"; then
            offence "$file" 'reads rows and may not talk to the user'
        fi
        ;;
    esac
}

check() {
    core_files=$(realpath -e "$2")
    cd "$1"
    offences=0
    local file count=0
    while read -r file; do
        count=$((count + 1))
        check_includes "$file"
        check_trade "$file"
    done < <(find app db consent masters print widgets viewer sample \
        \( -name '*.h' -o -name '*.cpp' \) -print 2>/dev/null | sort)
    [ "$count" -gt 0 ] || offence "$1" 'holds no sources'
    echo "$count files, $offences offences"
    [ "$offences" -eq 0 ]
}

# plant FILE LINE: one source file in the self-test's tree.
plant() {
    mkdir -p "$top/$(dirname "$1")"
    printf '%s\n' "$2" >"$top/$1"
    echo "$1" >>"$top/core"
}

# Each line is a file and what may not stand in it.
self_test() {
    top=$(mktemp -d)
    trap 'rm -rf "$top"' EXIT
    local file line
    while read -r file line; do
        rm -rf "${top:?}"/*
        plant db/sound.cpp '#include "app/base/text.h"'
        (check "$top" "$top/core") >/dev/null || { echo "a sound file is refused"; exit 1; }
        plant "$file" "$line"
        if (check "$top" "$top/core") >/dev/null; then
            echo "not found: $file with $line"
            exit 1
        fi
    done <<'LINES'
app/base/a.h #include "db/adodb.h"
db/a.cpp #include "consent/list/list.h"
print/a.cpp #include "consent/list/list.h"
viewer/a.cpp #include "db/adodb.h"
widgets/a.cpp #include "masters/search_form.h"
consent/a.cpp #include "widgets/grid.h"
consent/a.cpp #include <QtWidgets/QLabel>
consent/a_form.cpp const QString sql = u"SELECT 1"_s;
masters/a_query.cpp #include "app/base/messages.h"
LINES
    echo "every offence is found"
}

if [ "$1" = --self-test ]; then
    self_test
else
    check "$1" "$2"
fi
