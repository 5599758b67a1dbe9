# A virtual screen, for machines without one. Everything started here is stopped by stop_display.

display_pids=()
display_folder=

# What a program needs to know of the desktop that it is shown on: the screen, the session, the input method.
desktop_variables=(DISPLAY XAUTHORITY WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS AT_SPI_BUS_ADDRESS DESKTOP_SESSION
    XDG_CONFIG_DIRS XDG_CONFIG_HOME XDG_CURRENT_DESKTOP XDG_DATA_DIRS XDG_RUNTIME_DIR XDG_SESSION_DESKTOP
    XDG_SESSION_TYPE KDE_FULL_SESSION KDE_SESSION_VERSION XCURSOR_SIZE XCURSOR_THEME XMODIFIERS QT_IM_MODULE
    QT_IM_MODULES QT_AUTO_SCREEN_SCALE_FACTOR QT_FONT_DPI QT_LINUX_ACCESSIBILITY_ALWAYS_ON QT_QPA_PLATFORM
    QT_QPA_PLATFORMTHEME QT_SCREEN_SCALE_FACTORS)

# give_cookie FILE DISPLAY COOKIE: in a file, since arguments can be read by everyone.
give_cookie() {
    touch "$1"
    xauth -q -f "$1" source - <<<"add $2 . $3"
}

# start_display SIZE: an X server on a free display, with a window manager. No network reaches it, and nobody else
# on this machine: it asks for a cookie that lies in a folder of our own.
start_display() {
    local number_file cookie
    display_folder=$(mktemp -d)
    number_file=$display_folder/number
    cookie=$(mcookie)
    export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$display_folder}"
    # The server takes a cookie for whichever display it turns out to be; its clients want the number.
    give_cookie "$display_folder/server" :0 "$cookie"
    Xvfb -displayfd 5 -auth "$display_folder/server" -screen 0 "${1}x24" -nolisten tcp -noreset \
        5>"$number_file" >/dev/null 2>&1 </dev/null &
    display_pids+=($!)
    for _ in $(seq 100); do
        [ -s "$number_file" ] && break
        sleep 0.1
    done
    DISPLAY=":$(cat "$number_file")"
    [ "$DISPLAY" != ":" ] || die "The virtual screen (Xvfb) does not start."
    give_cookie "$display_folder/clients" "$DISPLAY" "$cookie"
    export DISPLAY XAUTHORITY="$display_folder/clients" QT_QPA_PLATFORM=xcb
    unset WAYLAND_DISPLAY
    openbox >/dev/null 2>&1 </dev/null &
    display_pids+=($!)
    # Windows that come before the window manager would keep no frame and get no focus.
    for _ in $(seq 50); do
        xdotool get_num_desktops >/dev/null 2>&1 && break
        sleep 0.1
    done
}

# listens PORT [PID]: whether anybody, or that process, listens on the port.
listens() { ss -Hltnp "sport = :$1" | grep -q "${2:+pid=$2,}"; }

# start_vnc PORT PASSWORD: fails where another program took the port at the same moment.
start_vnc() {
    local pid
    printf '%s\n' "$2" >"$display_folder/password"
    # Without a word about its port it listens on ::1 as well for a moment, before it heeds -no6.
    x11vnc -norc -display "$DISPLAY" -localhost -no6 -rfbportv6 -1 -rfbport "$1" \
        -passwdfile "rm:$display_folder/password" -forever -shared -quiet >/dev/null 2>&1 </dev/null &
    pid=$!
    display_pids+=("$pid")
    for _ in $(seq 100); do
        ! listens "$1" "$pid" || return 0
        kill -0 "$pid" 2>/dev/null || return 1
        sleep 0.1
    done
    return 1
}

# The screen shows patients: it is served to this machine only, and to nobody there without the password, which is
# new for each run.
serve_vnc() {
    local port=0 next password others
    # Eight characters are all that the protocol looks at; none that could be taken for another.
    password=$(head -c 99 /dev/urandom | base64 -w 0 | tr -dc 'a-km-zA-HJ-NP-Z2-9' | head -c 8)
    for next in $(seq 5900 5919); do
        if ! listens "$next" && start_vnc "$next" "$password"; then
            port=$next
            break
        fi
    done
    [ "$port" -ne 0 ] || die "The VNC server (x11vnc) does not start."
    others=$(foreign_listeners)
    [ -z "$others" ] || die "The screen would be reachable from outside: $others"
    say "No display here: connect a VNC viewer to 127.0.0.1:$port, password $password"
    say "(from another machine first: ssh -L $port:127.0.0.1:$port $(hostname)). Ctrl+C ends it."
}

# Listening sockets of our display programs on anything but 127.0.0.1.
foreign_listeners() {
    local pid
    for pid in "${display_pids[@]}"; do
        ss -Hltnp | awk -v process="pid=$pid," 'index($0, process) && $4 !~ /^127\.0\.0\.1:/ {print $4}'
    done
}

stop_display() {
    local i
    for ((i = ${#display_pids[@]} - 1; i >= 0; --i)); do
        kill "${display_pids[i]}" 2>/dev/null || true
        wait "${display_pids[i]}" 2>/dev/null || true
    done
    display_pids=()
    [ -z "$display_folder" ] || rm -rf "$display_folder"
}
