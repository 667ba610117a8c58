# shellcheck shell=bash disable=SC2154  # $checkout is of scripts/lib.sh
# Starts every database server that the tests use, for this script only.
source "$checkout/scripts/postgresql.sh"
source "$checkout/scripts/mariadb.sh"

# begin_databases: sets $server_options, which tell a program where the servers are.
begin_databases() {
  begin_postgresql
  begin_mariadb
  # shellcheck disable=SC2034  # for the scripts that source this
  server_options=(--postgresql "$postgresql" "$postgresql_port" --mariadb "$mariadb/socket" "$mariadb_port")
}

# use_new_databases NAME: creates an empty database on each server for the tests started afterwards.
use_new_databases() {
  VILNOR_TEST_POSTGRESQL=$(postgresql_database "$1")
  VILNOR_TEST_MARIADB=$(mariadb_database "$1")
  export VILNOR_TEST_POSTGRESQL VILNOR_TEST_MARIADB
}
