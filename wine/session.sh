# shellcheck shell=bash disable=SC2154  # $checkout and the like are of scripts/lib.sh
# One Wine session: a fresh prefix, a display, Wine's server, in a folder of its own. Whatever it
# starts ends with the script that began it.

source "$checkout/wine/enter.sh"

# begin_session [LOCALE]: afterwards $session is the session's folder ($session/desk is for the
# caller's files) and DISPLAY its screen. sv_SE.UTF-8 is a Swedish Windows, C.UTF-8 a US one.
begin_session() {
  session_locale=${1:-sv_SE.UTF-8}
  hold_root
  session=$(mktemp -d "${TMPDIR:-/tmp}/vilnor.XXXXXX")
  at_exit rm -rf "$session"
  # Servers of other users reach what the callers put in here.
  chmod 711 "$session"
  mkdir "$session/"{tmp,home,desk,log}
  copy_prefix
  start_display
  start_wine
}

# Keeps the root from being removed by a checkout with another recipe; one that was removed before it
# was held is made again.
hold_root() {
  local try
  for try in 1 2 3; do
    place=$("$checkout/wine/make-root")
    if { exec {session_lock}<"$place"; } 2>/dev/null && flock --shared "$session_lock" &&
      [[ -d $place/prefix ]]; then
      return
    fi
  done
  fail "the Wine root $place was removed $try times by another checkout"
}

# All of the template but its system32, which enter_root shows.
copy_prefix() {
  mkdir "$session/prefix"
  tar --create --directory "$place/prefix" --exclude ./wineserver \
    --exclude ./drive_c/windows/system32 . |
    tar --extract --directory "$session/prefix"
  mkdir "$session/prefix/drive_c/windows/system32"
}

# $session_display, when the caller has set it, is used instead of a display of the session's own.
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
  in_wine wineserver --foreground --persistent >"$session/log/wineserver" 2>&1 &
  local server=$!
  at_exit stop_process "$server"
  at_exit stop_wine "$server"
  wait_until 20 wine_listens || fail "wineserver did not start: $(tail -n 1 "$session/log/wineserver")"
}

wine_listens() { compgen -G "$session/tmp/*/server-*/socket" >/dev/null; }

stop_wine() {
  (in_wine wineserver --kill)
  wait_until 10 is_gone "$1"
}

# in_wine COMMAND ARG...: runs the command in the session's root, in place of the calling subshell.
in_wine() { enter_root "$place" "$session" env LC_ALL="$session_locale" "$@"; }

# wine PROGRAM ARG...: runs a Windows program to its end and gives its exit code.
wine() { (in_wine wine "$@"); }

# windows_path FILE: the file's name as Windows programs see it.
windows_path() {
  local path
  path=$(realpath --canonicalize-missing "$1")
  printf 'Z:%s\n' "${path//\//\\}"
}

# register_components: Vilnor.dll, and AdoOdbc.dll in the part of ADO, which Wine lacks.
register_components() {
  local library
  for library in AdoOdbc.dll Vilnor.dll; do
    [[ -f $bin/$library ]] || fail "$bin/$library has not been built"
    wine regsvr32 /s "$(windows_path "$bin/$library")" ||
      fail "$library cannot be registered in Wine"
  done
}
