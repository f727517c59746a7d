#!/usr/bin/env bash
# Runs a command beside a throwaway PostgreSQL server.
#
#   scripts/with-postgres.sh COMMAND [ARG...]
#
# A fresh cluster is made in a temporary folder. It listens on 127.0.0.1 at
# the first free port from 55432 upward, keeps its Unix socket in that folder,
# and lets the user "postgres" in without a password. The command sees
# STAFF_TEST_PG=127.0.0.1:<port>, and STAFF_TEST_PGBIN, the folder of the
# server's programs (initdb, pg_ctl, postgres), for tests that make a cluster
# of their own. Whatever happens, the server is stopped and the folder deleted
# afterwards; the exit code is the command's.
#
# When no server can be started: under CI=true that is a failure; otherwise a
# warning is printed and the command runs without STAFF_TEST_PG, so the tests
# skip their PostgreSQL half.
set -euo pipefail

if [ $# -eq 0 ]; then
    echo "usage: $0 COMMAND [ARG...]" >&2
    exit 2
fi

say() { echo "with-postgres: $*" >&2; }

first_port=55432
last_port=55531

pg_bin=""   # folder of initdb, pg_ctl and postgres
pg_dir=""   # temporary folder: data/, the socket, the logs
as_pg=()    # prefix that runs a command as the owner of the cluster
reason=""   # why the server could not be started

# Runs a server program as the cluster's owner from inside the temporary
# folder (the caller's working folder may be closed to that user).
pg_run() {
    (cd "$pg_dir" && "${as_pg[@]}" "$@")
}

cleanup() {
    if [ -n "$pg_dir" ] && [ -f "$pg_dir/data/postmaster.pid" ]; then
        if ! pg_run "$pg_bin/pg_ctl" stop -D "$pg_dir/data" -m fast -w -t 30 >/dev/null 2>&1; then
            # The server did not stop in time: end it by its own process id.
            local pid
            pid="$(head -n1 "$pg_dir/data/postmaster.pid" 2>/dev/null || true)"
            if [ -n "$pid" ]; then
                kill -QUIT "$pid" 2>/dev/null || true
                sleep 1
                kill -KILL "$pid" 2>/dev/null || true
            fi
        fi
    fi
    if [ -n "$pg_dir" ]; then
        rm -rf "$pg_dir"
    fi
}
trap cleanup EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# True when something already accepts connections on 127.0.0.1:$1.
port_in_use() {
    (exec 3<>"/dev/tcp/127.0.0.1/$1") 2>/dev/null
}

# The newest server version installed.
find_pg_bin() {
    local d
    while IFS= read -r d; do
        if [ -x "$d/initdb" ] && [ -x "$d/pg_ctl" ] && [ -x "$d/postgres" ]; then
            pg_bin="$d"
            return 0
        fi
    done < <(printf '%s\n' /usr/lib/postgresql/*/bin | sort -rV)
    return 1
}

# Makes and starts the cluster; sets STAFF_TEST_PG, or reason on failure.
start_postgres() {
    if ! find_pg_bin; then
        reason="no PostgreSQL server programs under /usr/lib/postgresql/*/bin (Debian package postgresql)"
        return 1
    fi

    # As root the folder must be reachable by "postgres": root's own
    # TMPDIR may not be, /tmp always is.
    local base="${TMPDIR:-/tmp}"
    if [ "$(id -u)" -eq 0 ]; then
        base=/tmp
    fi
    if ! pg_dir="$(mktemp -d "$base/staff-pg.XXXXXX")"; then
        pg_dir=""
        reason="could not make a temporary folder"
        return 1
    fi
    if [ "$(id -u)" -eq 0 ]; then
        # initdb refuses to run as root: the cluster belongs to "postgres".
        if ! id -u postgres >/dev/null 2>&1; then
            reason="running as root, and there is no user \"postgres\" to own the cluster"
            return 1
        fi
        chown postgres: "$pg_dir"
        as_pg=(runuser -u postgres --)
    fi

    if ! pg_run "$pg_bin/initdb" -D "$pg_dir/data" -A trust -U postgres -E UTF8 --locale=C \
        >"$pg_dir/initdb.log" 2>&1; then
        reason="initdb failed:
$(tail -n 20 "$pg_dir/initdb.log")"
        return 1
    fi

    local port
    for ((port = first_port; port <= last_port; port++)); do
        if port_in_use "$port"; then
            continue
        fi
        # The server writes its own log; a new one for every try.
        rm -f "$pg_dir/server.log"
        # fsync and friends are off: the data is thrown away after the run.
        if pg_run "$pg_bin/pg_ctl" start -D "$pg_dir/data" -l "$pg_dir/server.log" -w -t 60 \
            -o "-c listen_addresses=127.0.0.1 -p $port -k '$pg_dir' -c fsync=off -c synchronous_commit=off -c full_page_writes=off" \
            >/dev/null 2>&1; then
            STAFF_TEST_PG="127.0.0.1:$port"
            return 0
        fi
        # Someone else took the port between the check and the start: next one.
        if grep -qE 'could not bind|Address already in use|could not create any TCP/IP sockets' \
            "$pg_dir/server.log" 2>/dev/null; then
            continue
        fi
        reason="the server did not start:
$(tail -n 20 "$pg_dir/server.log" 2>/dev/null || echo '(no server log)')"
        return 1
    done
    reason="no free port between $first_port and $last_port on 127.0.0.1"
    return 1
}

if start_postgres; then
    export STAFF_TEST_PG
    export STAFF_TEST_PGBIN="$pg_bin"
    say "PostgreSQL $("$pg_bin/postgres" --version | awk '{print $3}') is running at $STAFF_TEST_PG (STAFF_TEST_PG)"
else
    unset STAFF_TEST_PG STAFF_TEST_PGBIN
    if [ "${CI:-}" = "true" ]; then
        say "ERROR: could not start PostgreSQL: $reason"
        say "ERROR: under CI=true the PostgreSQL tests are required; stopping"
        exit 1
    fi
    say "WARNING: could not start PostgreSQL: $reason"
    say "WARNING: running without STAFF_TEST_PG: the tests skip their PostgreSQL half"
fi

set +e
"$@"
rc=$?
set -e
exit "$rc"
