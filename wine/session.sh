# shellcheck shell=bash disable=SC2154  # $checkout and the like are of scripts/lib.sh
# One Wine session: a fresh prefix, a display and Wine's server, in a separate folder. Everything that it
# starts ends with the script that began it.

source "$checkout/wine/enter.sh"

# begin_session [LOCALE [ROOT_OPTION]]: sets $session to the session's folder ($session/desk is for the
# caller's files) and DISPLAY to its screen. sv_SE.UTF-8 is a Swedish Windows, C.UTF-8 a US one. ROOT_OPTION is
# make-root's. The clocks do not show UTC, so that confusing it with local time is noticed; the caller's own
# programs compare with them.
begin_session() {
  session_locale=${1:-sv_SE.UTF-8}
  export TZ=Europe/Stockholm
  hold_root "${@:2}"
  session=$(mktemp -d "${TMPDIR:-/tmp}/vilnor.XXXXXX")
  at_exit rm -rf "$session"
  # Servers that run as other users can read what the callers put here.
  chmod 711 "$session"
  mkdir "$session/"{tmp,home,desk,log}
  copy_prefix
  start_display
  start_wine
}

# Keeps a checkout with another recipe from removing the root. If it was removed before it was held, it is made
# again.
# hold_root [ROOT_OPTION]
hold_root() {
  local try
  for try in 1 2 3; do
    place=$("$checkout/wine/make-root" "$@")
    if { exec {session_lock}<"$place"; } 2>/dev/null && flock --shared "$session_lock" &&
      [[ -d $place/prefix ]]; then
      return
    fi
  done
  fail "the Wine root $place was removed $try times by another checkout"
}

# The whole template except its system32, which enter_root mounts.
copy_prefix() {
  mkdir "$session/prefix"
  tar --create --directory "$place/prefix" --exclude ./wineserver \
    --exclude ./drive_c/windows/system32 . |
    tar --extract --directory "$session/prefix"
  mkdir "$session/prefix/drive_c/windows/system32"
}

# If the caller has set $session_display, it is used instead of a new display.
start_display() {
  local number=$session/display
  if [[ ${session_display:-} ]]; then
    [[ ! ${XAUTHORITY:-} ]] || cp "$XAUTHORITY" "$session/home/.Xauthority"
    return
  fi
  setpriv --pdeathsig KILL Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp -noreset \
    3>"$number" >"$session/log/xvfb" 2>&1 &
  at_exit stop_process $!
  wait_until 20 test -s "$number" || fail "Xvfb did not start: $(tail -n 1 "$session/log/xvfb")"
  DISPLAY=:$(<"$number")
  export DISPLAY
}

start_wine() {
  local server
  enter_root "$place" "$session" wineserver --foreground --persistent \
    3>"$session/log/root" >"$session/log/wineserver" 2>&1 &
  server=$!
  at_exit stop_process "$server"
  at_exit stop_wine "$server"
  wait_until 20 wine_listens || fail "wineserver did not start: $(tail -n 1 "$session/log/wineserver")"
  # For programs that receive the session's folder and source this file.
  printf '%s=%q\n' session_locale "$session_locale" session_process \
    "$(sed -n 's/.*"child-pid": *\([0-9]*\).*/\1/p' "$session/log/root")" >"$session/state"
}

wine_listens() { compgen -G "$session/tmp/*/server-*/socket" >/dev/null; }

# The program that ends the server ends with it, like all others in the root; the shell would report that.
stop_wine() {
  { (in_wine wineserver --kill) || true; } 2>/dev/null
  wait_until 10 is_gone "$1"
}

# in_wine COMMAND ARG...: runs the command in the root of $session, replacing the calling subshell. With
# $session_folder it starts in that folder, on drive C or elsewhere.
in_wine() {
  local session_locale session_process
  # shellcheck source=/dev/null
  source "$session/state"
  join_root "$session_process" "$session" "$@"
}

# wine PROGRAM ARG...: runs a Windows program to its end and returns its exit code.
wine() { (in_wine wine "$@"); }

# windows_path FILE: the file's name as Windows programs see it.
windows_path() {
  local path
  path=$(realpath --canonicalize-missing "$1")
  printf 'Z:%s\n' "${path//\//\\}"
}

# register_component FILE
register_component() {
  [[ -f $1 ]] || fail "$1 has not been built"
  wine regsvr32 /s "$(windows_path "$1")" >"$session/log/regsvr32" 2>&1 ||
    fail "${1##*/} cannot be registered in Wine: $(tail -n 1 "$session/log/regsvr32")"
}

# register_ado: registers AdoOdbc.dll in place of the ADO that Wine lacks.
register_ado() { register_component "${bin%/*}/ado-odbc/AdoOdbc.dll"; }

# register_components: registers Vilnor.dll, and the ADO that it needs.
register_components() {
  register_ado
  register_component "$bin/Vilnor.dll"
}
