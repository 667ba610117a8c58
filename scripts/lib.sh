# shellcheck shell=bash
# Shared by every script: messages, bounded waiting, and cleaning up at the end, even if a step fails or
# the script is interrupted.

set -euo pipefail

checkout=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
bin=$checkout/build/windows/bin

if [[ -t 1 ]]; then
  bold=$'\e[1m' green=$'\e[32m' red=$'\e[31m' plain=$'\e[0m'
else
  bold='' green='' red='' plain=''
fi
# shellcheck disable=SC2034  # for the scripts that source this
readonly checkout bin bold green red plain

heading() { printf '\n%s== %s%s\n' "$bold" "$*" "$plain"; }
say() { printf '%s\n' "$*"; }

# Prints one line that says what is wrong and what to do, then exits.
fail() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 1
}

undo=()
# at_exit COMMAND ARG...: runs the command when the script ends, in reverse order.
at_exit() { undo+=("$(printf '%q ' "$@")"); }

undo_all() {
  local status=$? step
  trap - EXIT
  trap '' INT TERM HUP
  set +e
  for ((step = ${#undo[@]} - 1; step >= 0; --step)); do
    eval "${undo[step]}"
  done
  exit "$status"
}
trap undo_all EXIT
trap 'exit 130' INT
trap 'exit 143' TERM
trap 'exit 129' HUP

# wait_until SECONDS COMMAND ARG...: false if the command did not succeed in time.
wait_until() {
  local end=$((SECONDS + $1))
  shift
  until "$@"; do
    ((SECONDS < end)) || return 1
    sleep 0.05
  done
}

is_gone() { ! kill -0 "$1" 2>/dev/null; }

# stop_process PID: ends a process started by this script, by force after ten seconds.
stop_process() {
  kill "$1" 2>/dev/null || return 0
  wait_until 10 is_gone "$1" || kill -KILL "$1" 2>/dev/null
}

# The folder for a server's temporary files: in memory if a gigabyte is free there. On a disk, creating
# tables takes ten times as long.
quick_folder() {
  local free
  free=$(df --output=avail --block-size=1M /dev/shm 2>/dev/null | tail -n 1) || true
  if [[ -w /dev/shm ]] && ((${free:-0} >= 1024)); then
    say /dev/shm
  else
    say "${TMPDIR:-/tmp}"
  fi
}

# A port that was free a moment ago. Another program may take it, so the caller must be ready to try again.
free_port() {
  python3 -c 'import socket
with socket.socket() as s:
    s.bind(("127.0.0.1", 0))
    print(s.getsockname()[1])'
}

# The folder outside the checkout for things that are expensive to rebuild.
cache_folder() {
  local folder=${VILNOR_CACHE:-${XDG_CACHE_HOME:-${HOME:-/var/tmp}/.cache}/vilnor}
  mkdir -p "$folder" 2>/dev/null ||
    fail "cannot make the cache folder $folder; name another in VILNOR_CACHE"
  (cd "$folder" && pwd)
}

# why_it_failed LOG: prints the likely cause of a failed apt-get or mmdebstrap in one line.
why_it_failed() {
  local unreachable='could not (resolve|connect)|unable to connect|temporary failure|failed to fetch'
  unreachable+='|connection (failed|timed out|refused)'
  local line cause
  if line=$(grep -m 1 -iE 'no space left|enough free space' "$1"); then
    cause="the disk is full"
  elif line=$(grep -m 1 -iE "$unreachable" "$1"); then
    cause="Debian's archive cannot be reached"
  elif line=$(grep -m 1 NO_PUBKEY "$1"); then
    cause="this machine does not know the archive's key; update debian-archive-keyring"
  else
    line=$({ grep -E '^(E|Err|error):' "$1" || cat "$1"; } | tail -n 1)
    cause="an unexpected error"
  fi
  read -r line <<<"$line"
  say "$cause ($line; see $1)"
}
