# Programs for Windows, run here. start_wine gives them a Windows of their own in FOLDER, whose code page is 932.

start_wine() {
    local folder=$1
    mkdir -p "$folder/locale"
    [ -d "$folder/locale/ja_JP.UTF-8" ] || localedef -i ja_JP -f UTF-8 "$folder/locale/ja_JP.UTF-8"
    export WINEPREFIX=$folder/wine WINEDEBUG=-all WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="
    # Of the shell itself the variables hold for what it starts.
    wine_locale=(env "LOCPATH=$folder/locale" LC_ALL=ja_JP.UTF-8)
    [ -d "$WINEPREFIX/drive_c" ] || in_wine wineboot -i >/dev/null 2>&1
}

in_wine() { "${wine_locale[@]}" wine "$@"; }

stop_wine() { "${wine_locale[@]}" wineserver -k 2>/dev/null || true; }

# wine_path PATH: as Windows names it.
wine_path() {
    local path
    path=$(realpath -m "$1")
    printf 'Z:%s' "${path//\//\\}"
}
