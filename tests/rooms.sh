#!/usr/bin/env bash
# Checks that includes go one way only and that every file keeps to its trade:
#   rooms.sh TOP LIST     checks the sources under TOP; LIST names those of the core, one a line
#   rooms.sh --self-test  checks that offences are found
set -euo pipefail

# Whether the build puts a file into the library without widgets.
declare -A core
is_core() { [ -n "${core[$1]:-}" ]; }

# The rooms that a file may include, by its place; the first line that fits counts.
set_allowed() {
    local base='app/base' db='app/base db' forms='widgets app/forms app/desktop'
    case "$1" in
    app/base/*) allowed=$base ;;
    app/desktop/*) allowed="$base app/desktop" ;;
    app/forms/*) allowed="$db $forms" ;;
    app/*) allowed="$db consent masters print $forms app" ;;
    db/*) allowed=$db ;;
    widgets/*) allowed="$db app/desktop widgets viewer" ;;
    viewer/*) allowed="$base app/desktop viewer" ;;
    sample/*) allowed="$db app/desktop widgets sample" ;;
    print/*) allowed="$db print" ;;
    *) allowed="$db consent masters print" ;;
    esac
    if ! is_core "$1" && [[ $1 =~ ^(print|consent|masters)/ ]]; then
        # A form may open the pick lists of the masters.
        allowed+=" $forms masters"
    fi
}

set_room() {
    room=${1%%/*}
    if [[ $1 =~ ^app/(base|desktop|forms)/ ]]; then
        room=app/${BASH_REMATCH[1]}
    fi
}

offence() {
    printf '%s: %s\n' "$1" "$2"
    offences=$((offences + 1))
}

check_includes() {
    local file included room allowed
    while IFS=: read -r file included; do
        included=${included#*\"}
        included=${included%\"*}
        set_allowed "$file"
        set_room "$included"
        [[ " $allowed " == *" $room "* ]] || offence "$file" "may not include $included"
    done < <(grep -HoE '^ *# *include *"[^"]+/[^"]+"' "${files[@]}")
}

# refuse PATTERN WHY FILE…: no line of the files may fit the pattern.
refuse() {
    local pattern=$1 why=$2 found
    shift 2
    [ $# -gt 0 ] || return 0
    while IFS= read -r found; do
        offence "$found" "$why"
    done < <(grep -HnE "$pattern" "$@")
}

check_trades() {
    local file
    local -a cores=() forms=() queries=()
    for file in "${files[@]}"; do
        if is_core "$file"; then cores+=("$file"); fi
        case "$file" in
        *_form.* | *_panel.* | widgets/*) forms+=("$file") ;;
        *_query.*) queries+=("$file") ;;
        esac
    done
    refuse '# *include *(<Qt(Widgets|Gui|PrintSupport)/|"ui_|"[^"]*_form\.h")' \
        'the core may not name a widget' "${cores[@]}"
    refuse 'u"[^"]*\b(SELECT|INSERT INTO|UPDATE [A-Z]|DELETE FROM)\b' 'a form may hold no SQL' "${forms[@]}"
    refuse '"app/base/messages\.h"' 'a reader of rows may not talk to the user' "${queries[@]}"
}

# check TOP LIST
check() {
    local name list
    list=$(realpath -e "$2")
    while IFS= read -r name; do
        [ -z "$name" ] || core[$name]=1
    done <"$list"
    cd "$1"
    offences=0
    mapfile -t files < <(find app db consent masters print widgets viewer sample \
        \( -name '*.h' -o -name '*.cpp' \) -print 2>/dev/null | sort)
    [ ${#files[@]} -gt 0 ] || { echo "$1 holds no sources"; return 1; }
    check_includes
    check_trades
    echo "${#files[@]} files, $offences offences"
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
app/desktop/a.cpp #include "widgets/grid.h"
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
