# Programs for Windows, run here. start_wine gives them a Windows of their own in FOLDER, whose code page is 932.

wine_is_ours=

start_wine() {
    local folder=$1
    mkdir -p "$folder/locale"
    export WINEPREFIX=$folder/wine WINEDEBUG=-all WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="
    wine_is_ours=1
    # Of the shell itself the variables hold for what it starts.
    wine_locale=(env "LOCPATH=$folder/locale" LC_ALL=ja_JP.UTF-8)
    # Many start at once, and a first start may have been cut off.
    (
        flock 9
        if [ ! -f "$folder/started" ]; then
            localedef -i ja_JP -f UTF-8 "$folder/locale/ja_JP.UTF-8"
            # What stays behind of it would hold the lock.
            in_wine wineboot -i >/dev/null 2>&1 9>&-
            # Nobody is there to close a box about a crash, and its text belongs to the output.
            in_wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null 2>&1 9>&-
            touch "$folder/started"
        fi
    ) 9>"$folder/lock"
}

in_wine() { "${wine_locale[@]}" wine "$@"; }

# Without a Windows of ours the user's own programs would end.
stop_wine() {
    [ -n "$wine_is_ours" ] || return 0
    "${wine_locale[@]}" wineserver -k 2>/dev/null || true
    # It writes until it has gone.
    "${wine_locale[@]}" wineserver -w 2>/dev/null || true
}

# wine_path PATH: as Windows names it.
wine_path() {
    local path
    path=$(realpath -m "$1")
    printf 'Z:%s' "${path//\//\\}"
}
