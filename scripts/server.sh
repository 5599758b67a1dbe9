# A PostgreSQL server of our own on the loopback address, with an empty database: for a while, and for nobody else.
# Everything started here is stopped by stop_server.

server_pid=
server_folder=

# as_server COMMAND…: the server refuses to run as root.
as_server() {
    if [ "$(id -u)" -eq 0 ]; then
        setpriv --reuid=postgres --regid=postgres --clear-groups "$@"
    else
        "$@"
    fi
}

# start_server: leaves a connection string in server_connection.
start_server() {
    local programs port=0 next password
    programs=$(find /usr/lib/postgresql -path '*/bin/initdb' -printf '%h\n' | sort -V | tail -1)
    [ -n "$programs" ] || die "PostgreSQL is not installed."
    server_folder=$(mktemp -d)
    password=$(head -c 99 /dev/urandom | base64 -w 0 | tr -dc 'A-Za-z0-9' | head -c 24)
    printf '%s\n' "$password" >"$server_folder/password"
    [ "$(id -u)" -ne 0 ] || chown -R postgres "$server_folder"
    say "Starting a PostgreSQL server of our own"
    (cd "$server_folder" && as_server "$programs/initdb" --pgdata data --username douisho --encoding UTF8 --locale C \
        --auth scram-sha-256 --pwfile password --no-sync >log 2>&1) ||
        die "initdb: $(tail -1 "$server_folder/log")"
    for next in $(seq 54320 54359); do
        ! listens "$next" || continue
        port=$next
        break
    done
    # The keys that end this script must not end the server before the programs have; whatever kills it does.
    local -a becoming=(setsid setpriv --pdeathsig INT)
    [ "$(id -u)" -ne 0 ] || becoming+=(--reuid=postgres --regid=postgres --clear-groups)
    (cd "$server_folder" && exec "${becoming[@]}" "$programs/postgres" -D "$server_folder/data" -p "$port" \
        -c listen_addresses=127.0.0.1 -c unix_socket_directories= >>"$server_folder/log" 2>&1 </dev/null) &
    server_pid=$!
    for _ in $(seq 100); do
        "$programs/pg_isready" -q -h 127.0.0.1 -p "$port" && break
        kill -0 "$server_pid" 2>/dev/null || die "The server does not start: $(tail -1 "$server_folder/log")"
        sleep 0.1
    done
    # As installed the driver leaves a log of each program in /tmp.
    sed 's/^CommLog *=.*/CommLog=0/' /etc/odbcinst.ini >"$server_folder/odbcinst.ini"
    export ODBCSYSINI=$server_folder
    PGPASSWORD=$password "$programs/createdb" -h 127.0.0.1 -p "$port" -U douisho douisho
    server_connection="Provider=PostgreSQL;Server=127.0.0.1;Port=$port;Database=douisho;User ID=douisho;Password=$password"
}

stop_server() {
    if [ -n "$server_pid" ]; then
        kill -INT "$server_pid" 2>/dev/null || true # at once, whoever is connected
        wait "$server_pid" 2>/dev/null || true
        server_pid=
    fi
    [ -z "$server_folder" ] || rm -rf "$server_folder"
}
