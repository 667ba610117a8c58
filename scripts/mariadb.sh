# shellcheck shell=bash
# A new MariaDB server for this script, on a free loopback port; it ends with the script.

# begin_mariadb: sets $mariadb_port, its port on 127.0.0.1. The user "vilnor" has no password and may create
# databases and users.
begin_mariadb() {
  local try
  mariadb=$(mktemp -d "$(quick_folder)/vilnor-mariadb.XXXXXX")
  at_exit rm -rf "$mariadb"
  # Its files are deleted with it, so it needs no clean shutdown and no flush to disk.
  mariadb_server=(env --chdir=/ setpriv --pdeathsig KILL)
  if ((EUID == 0)); then
    chown nobody "$mariadb"
    mariadb_server+=(--reuid nobody --regid nogroup --clear-groups)
  fi
  # Table names are compared as on Windows, where clinics' servers run.
  mariadb_settings=(--no-defaults --datadir="$mariadb/data" --lower-case-table-names=1
    --innodb-log-file-size=16M --innodb-flush-method=nosync)
  "${mariadb_server[@]}" mariadb-install-db "${mariadb_settings[@]}" --skip-test-db \
    --auth-root-authentication-method=normal >"$mariadb/log" 2>&1 ||
    fail "mariadb-install-db failed: $(tail -n 1 "$mariadb/log")"
  mariadb_client=(mariadb --no-defaults --socket="$mariadb/socket" --user=root
    --default-character-set=utf8mb4)
  for try in 1 2 3 4 5; do
    mariadb_port=$(free_port)
    if start_mariadb; then
      "${mariadb_client[@]}" --execute "CREATE USER vilnor@'127.0.0.1';
        GRANT ALL ON *.* TO vilnor@'127.0.0.1' WITH GRANT OPTION"
      return
    fi
  done
  fail "MariaDB did not start after $try tries: $(tail -n 1 "$mariadb/log")"
}

start_mariadb() {
  "${mariadb_server[@]}" mariadbd "${mariadb_settings[@]}" --port="$mariadb_port" \
    --bind-address=127.0.0.1 --socket="$mariadb/socket" --skip-name-resolve --skip-log-bin \
    --character-set-server=utf8mb4 --collation-server=utf8mb4_swedish_ci \
    --innodb-flush-log-at-trx-commit=0 --innodb-doublewrite=0 --sync-frm=0 \
    --innodb-file-per-table=0 --innodb-stats-persistent=0 \
    >>"$mariadb/log" 2>&1 &
  mariadb_process=$!
  at_exit stop_mariadb "$mariadb_process"
  wait_until 30 mariadb_settled && ! is_gone "$mariadb_process"
}

stop_mariadb() { { kill -KILL "$1" && wait "$1"; } 2>/dev/null || true; }

mariadb_settled() {
  is_gone "$mariadb_process" || "${mariadb_client[@]}" --execute '' 2>/dev/null
}

# mariadb_database NAME: prints the ODBC connection string of a new, empty database.
mariadb_database() {
  "${mariadb_client[@]}" --execute "CREATE DATABASE $1"
  printf 'Driver=MariaDB Unicode;Server=127.0.0.1;Port=%s;Database=%s;Uid=vilnor\n' \
    "$mariadb_port" "$1"
}
