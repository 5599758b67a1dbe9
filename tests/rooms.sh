#!/usr/bin/env bash
# Checks that includes follow the rooms, that every file keeps to its trade and every type has a name of its own:
#   rooms.sh TOP LIST     checks the sources under TOP; LIST has a line for each room of the build:
#                         name|gui or core|rooms that it uses|its files
#   rooms.sh --self-test  checks that offences are found
set -euo pipefail

declare -A owner uses gui
declare -a files

read_rooms() {
    local name toolkit used sources file
    while IFS='|' read -r name toolkit used sources; do
        [ -n "$name" ] || continue
        # A room sees what the rooms below it see; those stand before it.
        uses[$name]=" $name "
        gui[$name]=''
        [ "$toolkit" = core ] || gui[$name]=yes
        for room in $used; do
            [ -n "${uses[$room]:-}" ] || { echo "$name uses $room, which is not below it"; exit 1; }
            uses[$name]+="${uses[$room]}"
            gui[$name]+=${gui[$room]}
        done
        for file in $sources; do
            owner[$file]=$name
            files+=("$file")
        done
    done <"$1"
}

offence() {
    printf '%s: %s\n' "$1" "$2"
    offences=$((offences + 1))
}

# A file includes its own room and those that the room uses; what belongs to no room stands above all.
check_includes() {
    local file included room
    while IFS=: read -r file included; do
        included=${included#*\"}
        included=${included%\"*}
        room=${owner[$included]:-}
        [[ -n $room && ${uses[${owner[$file]}]} == *" $room "* ]] || offence "$file" "may not include $included"
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
    local -a cores=() forms=() queries=() rest=() everywhere=() logged=()
    for file in "${files[@]}"; do
        case "$file" in *.ui) continue ;; esac
        [[ $file == app/base/platform/* || $file == */.rcc/* ]] || everywhere+=("$file")
        [ -n "${gui[${owner[$file]}]}" ] || cores+=("$file")
        case "$file" in
        *_form.* | *_panel.* | widgets/*) forms+=("$file") ;;
        *_query.*) queries+=("$file") ;;
        esac
        case "$file" in
        consent/record/* | db/*) ;;
        *) rest+=("$file") ;;
        esac
        # Who writes what the history follows: not those who make a database, nor tables that it leaves out.
        case "$file" in
        db/* | history/* | setup/* | sample/* | fees/*) ;;
        *) logged+=("$file") ;;
        esac
    done
    refuse '# *include *(<Qt(Widgets|Gui|PrintSupport)/|"ui_|"[^"]*_form\.h")' \
        'the core may not name a widget' "${cores[@]}"
    refuse 'u"[^"]*\b(SELECT|INSERT INTO|UPDATE [A-Z]|DELETE FROM)\b' 'a form may hold no SQL' "${forms[@]}"
    refuse '^ *# *(if|elif)|<(unistd|fcntl|windows|sys/.*)\.h>' \
        'what systems do differently stands in app/base/platform alone' "${everywhere[@]}"
    refuse '"app/base/messages\.h"' 'a reader of rows may not talk to the user' "${queries[@]}"
    refuse 'u"[^"]*(INSERT INTO|UPDATE|DELETE FROM) RIYOUSHA_DOUI_REC\b' \
        'consent rows are written in consent/record alone' "${rest[@]}"
    refuse '\bTransaction [a-z]|\biBeginTrans\b|\biData(Insert|Update|削除)\(.*true\)' \
        'what is written here goes through a LoggedTransaction' "${logged[@]}"
    for file in "${logged[@]}"; do
        if grep -qE '\biExecSQLs?\(' "$file" && ! grep -qs LoggedTransaction "$file" "${file%.cpp}.h"; then
            offence "$file" 'writes past the history'
        fi
    done
    refuse '\bcT_RIYOUSHA_DOUI_REC\b' 'consent rows are read and written whole in consent/record alone' "${rest[@]}"
}

# Two types of one name are one to the linker, which takes either's functions for both without a word.
check_names() {
    local file name
    while read -r file name; do
        offence "$file" "another header has a $name too"
    done < <(awk 'FNR == 1 { inside = 0 }
        /^namespace / { ++inside }
        /^} \/\/ namespace/ { --inside }
        !inside && /^(struct|class) [^;]*\{/ { if ($2 in seen) print FILENAME, $2; seen[$2] }' \
        $(printf '%s\n' "${files[@]}" | grep '\.h$'))
}

# check TOP LIST
check() {
    read_rooms "$(realpath -e "$2")"
    cd "$1"
    offences=0
    [ ${#files[@]} -gt 0 ] || { echo "$2 names no sources"; return 1; }
    check_includes
    check_trades
    check_names
    echo "${#files[@]} files, $offences offences"
    [ "$offences" -eq 0 ]
}

# plant FILE LINE: one source file in the self-test's tree.
plant() {
    mkdir -p "$top/$(dirname "$1")"
    printf '%s\n' "$2" >"$top/$1"
}

# Each line is a file and what may not stand in it.
self_test() {
    top=$(mktemp -d)
    trap 'rm -rf "$top"' EXIT
    local file line
    cat >"$top/rooms" <<'ROOMS'
base|core||app/base/a.cpp app/base/text.h
db|core|base|db/a.cpp db/adodb.h db/sound.cpp
widgets|gui|base|widgets/grid.h
print|core|db|print/a.cpp
rows|core|db|consent/rows/a.cpp consent/rows/row.h consent/rows/a_query.cpp
entry|core|db|consent/entry/a.cpp consent/entry/entry.h
entry_forms|core|entry widgets|consent/entry/a_form.cpp
ROOMS
    while IFS= read -r file; do plant "$file" ''; done < <(sed 's/.*|//' "$top/rooms" | tr ' ' '\n')
    plant db/sound.cpp '#include "app/base/text.h"'
    plant app/base/text.h 'struct Text {'
    (check "$top" "$top/rooms") >/dev/null || { echo "a sound file is refused"; exit 1; }
    while read -r file line; do
        plant "$file" "$line"
        if (check "$top" "$top/rooms") >/dev/null; then
            echo "not found: $file with $line"
            exit 1
        fi
        plant "$file" ''
    done <<'LINES'
app/base/a.cpp #include "db/adodb.h"
db/a.cpp #include "consent/rows/row.h"
print/a.cpp #include "consent/rows/row.h"
consent/entry/a.cpp #include "consent/rows/row.h"
consent/rows/a.cpp #include "consent/entry/entry.h"
consent/rows/a.cpp #include "widgets/grid.h"
consent/rows/a.cpp #include "nowhere/at_all.h"
consent/rows/a.cpp #include <QtWidgets/QLabel>
consent/rows/a.cpp const QString sql = u"UPDATE RIYOUSHA_DOUI_REC SET iGetFlg = 1"_s;
consent/entry/a.cpp cT_RIYOUSHA_DOUI_REC table;
consent/rows/a.cpp Transaction transaction(db);
consent/rows/a.cpp if (table.iDataUpdate(&row, -1, true) != 0)
consent/rows/a.cpp db.iExecSQL(sql);
consent/entry/a_form.cpp const QString sql = u"SELECT 1"_s;
db/a.cpp #ifdef Q_OS_WIN
db/adodb.h struct Text : Base {
db/a.cpp #include <sys/file.h>
consent/rows/a_query.cpp #include "app/base/messages.h"
LINES
    echo "every offence is found"
}

if [ "$1" = --self-test ]; then
    self_test
else
    check "$1" "$2"
fi
