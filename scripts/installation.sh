# The sample installation, and the program running on it.

bin=$PWD/build/release/bin

# make_installation FOLDER [CONNECTION]: a sample, unless the folder holds an installation already. One whose making
# was broken off is made again. With a connection string its database is that server's.
make_installation() {
    [ -e "$1/adodb.ini" ] && ! grep -qs unfinished "$1/sample-installation.txt" && return
    say "Making a sample installation in $1"
    # The string holds a password, which a command line would show to everybody.
    "$bin/douisho-sample" --folder "$1" --programs "$bin" ${2:+--server -} <<<"${2:-}"
}

# start_program FOLDER MODE: in the background. The programs that it starts inherit the mark by which
# programs_running finds them.
start_program() {
    DOUISHO_RUN="$$" DOUISHO_FOLDER="$1" "$bin/douisho" "$2" &
    program_pid=$!
}

# The ids of the program, and of the menu program that it went back to.
programs_running() {
    grep -lszx "DOUISHO_RUN=$$" /proc/[0-9]*/environ | cut -d/ -f3
}

stop_programs() {
    local pid
    for pid in $(programs_running); do
        kill "$pid" 2>/dev/null || true
    done
}

# Waits until the last one has ended.
wait_for_programs() {
    wait "$program_pid" || true
    while [ -n "$(programs_running)" ]; do
        sleep 1
    done
}
