# A virtual screen, for machines without one. Everything started here is stopped by stop_display.

display_pids=()
display_folder=

# start_display SIZE: an X server on a free display that no network reaches, with a window manager.
start_display() {
    local number_file
    display_folder=$(mktemp -d)
    number_file=$display_folder/number
    export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$display_folder}"
    Xvfb -displayfd 5 -screen 0 "${1}x24" -nolisten tcp -noreset 5>"$number_file" >/dev/null 2>&1 </dev/null &
    display_pids+=($!)
    for _ in $(seq 100); do
        [ -s "$number_file" ] && break
        sleep 0.1
    done
    DISPLAY=":$(cat "$number_file")"
    [ "$DISPLAY" != ":" ] || die "The virtual screen (Xvfb) does not start."
    export DISPLAY
    unset WAYLAND_DISPLAY
    openbox >/dev/null 2>&1 </dev/null &
    display_pids+=($!)
    # Windows that come before the window manager would keep no frame and get no focus.
    for _ in $(seq 50); do
        xdotool get_num_desktops >/dev/null 2>&1 && break
        sleep 0.1
    done
}

# The screen shows patients: it is served to this machine only.
serve_vnc() {
    local port=5900
    while [ -n "$(ss -Hltn "sport = :$port")" ]; do
        port=$((port + 1))
    done
    x11vnc -display "$DISPLAY" -localhost -no6 -rfbport "$port" -nopw -forever -shared -quiet \
        >/dev/null 2>&1 </dev/null &
    display_pids+=($!)
    for _ in $(seq 100); do
        [ -n "$(ss -Hltn "sport = :$port")" ] && break
        sleep 0.1
    done
    local others
    others=$(foreign_listeners)
    [ -z "$others" ] || die "The screen would be reachable from outside: $others"
    [ -n "$(ss -Hltn "sport = :$port")" ] || die "The VNC server (x11vnc) does not start."
    say "No display here: connect a VNC viewer to 127.0.0.1:$port"
    say "(from another machine first: ssh -L $port:127.0.0.1:$port $(hostname)). Ctrl+C ends it."
}

# Listening sockets of our display programs on anything but 127.0.0.1.
foreign_listeners() {
    local pid
    for pid in "${display_pids[@]}"; do
        ss -Hltnp | grep "pid=$pid," | awk '$4 !~ /^127\.0\.0\.1:/ {print $4}'
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
