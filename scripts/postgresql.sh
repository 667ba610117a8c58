# shellcheck shell=bash
# A new PostgreSQL server for this script, on a free loopback port; it ends with the script.

# begin_postgresql: sets $postgresql_port, its port on 127.0.0.1. The user "vilnor" has no password; only a
# role named "with_password" is asked for one.
begin_postgresql() {
  local try
  postgresql_programs=$(compgen -G '/usr/lib/postgresql/*/bin' | sort -V | tail -n 1)
  postgresql=$(mktemp -d "$(quick_folder)/vilnor-pg.XXXXXX")
  at_exit rm -rf "$postgresql"
  # The server refuses to run as root.
  as_server=(env --chdir=/ setpriv --pdeathsig INT)
  if ((EUID == 0)); then
    chown postgres "$postgresql"
    as_server=(env --chdir=/ setpriv --reuid postgres --regid postgres --clear-groups --pdeathsig INT)
  fi
  "${as_server[@]}" "$postgresql_programs/initdb" --pgdata "$postgresql/data" --username vilnor --auth trust \
    --encoding UTF8 --locale C.UTF-8 --no-sync >"$postgresql/log" 2>&1 ||
    fail "initdb failed: $(tail -n 1 "$postgresql/log")"
  "${as_server[@]}" sed -i '1i host all with_password 127.0.0.1/32 scram-sha-256' \
    "$postgresql/data/pg_hba.conf"
  for try in 1 2 3 4 5; do
    postgresql_port=$(free_port)
    if start_postgresql; then
      at_exit stop_postgresql
      return
    fi
  done
  fail "PostgreSQL did not start after $try tries: $(tail -n 1 "$postgresql/log")"
}

# start_postgresql, stop_postgresql: for scripts that stop and restart the server.
start_postgresql() {
  "${as_server[@]}" "$postgresql_programs/postgres" -D "$postgresql/data" -p "$postgresql_port" -h 127.0.0.1 \
    -k "$postgresql" -F >>"$postgresql/log" 2>&1 &
  postgresql_server=$!
  if wait_until 30 postgresql_settled && ! is_gone "$postgresql_server"; then
    return
  fi
  stop_process "$postgresql_server"
  return 1
}

postgresql_settled() {
  is_gone "$postgresql_server" ||
    psql --quiet -h "$postgresql" -p "$postgresql_port" -U vilnor -d postgres -c '' 2>/dev/null
}

# stop_postgresql [SIGNAL]: disconnects remaining clients; QUIT leaves the server's files as after a
# crash.
stop_postgresql() {
  is_gone "$postgresql_server" && return
  kill "-${1:-INT}" "$postgresql_server"
  wait_until 10 is_gone "$postgresql_server" || kill -QUIT "$postgresql_server"
}

# postgresql_database NAME: prints the ODBC connection string of a new, empty database.
postgresql_database() {
  createdb -h "$postgresql" -p "$postgresql_port" -U vilnor "$1"
  printf 'Driver=PostgreSQL Unicode;Server=127.0.0.1;Port=%s;Database=%s;Uid=vilnor;%s\n' \
    "$postgresql_port" "$1" "CommLog=0;ConnSettings=SET DateStyle TO 'ISO, MDY'"
}
