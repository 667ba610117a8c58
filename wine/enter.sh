# shellcheck shell=bash disable=SC2154  # $checkout and the like are of scripts/lib.sh
# Entering a Wine root.

# enter_root PLACE SESSION COMMAND ARG...: runs the command in the root of PLACE (printed by make-root),
# replacing the calling (sub)shell, and ends with its caller. Inside, the root and the checkout are read-only,
# except for the checkout's out/. The folder SESSION contains /tmp, the home and the Wine prefix; it keeps its
# path, and so does the checkout. The prefix's system32 is the template's, read-only. The root has its own
# process ids: when the command ends or its caller is killed, the kernel ends everything started inside.
# Information for join_root goes to file descriptor 3.
enter_root() {
  local root=$1/root template=$1/prefix session=$2 entry system32=drive_c/windows/system32
  local -a mounts=() environment=()
  shift 2
  # /usr is mounted in parts, so that a checkout in /usr/src or /usr/local is visible.
  for entry in etc bin sbin lib usr/{bin,sbin,lib,libexec,share}; do
    if [[ -L $root/$entry ]]; then
      mounts+=(--symlink "$(readlink "$root/$entry")" "/$entry")
    elif [[ -d $root/$entry ]]; then
      mounts+=(--ro-bind "$root/$entry" "/$entry")
    fi
  done
  mounts+=(--dev /dev --proc /proc --bind "$session/tmp" /tmp --bind "$session/home" /home/user)
  [[ -z ${DISPLAY:-} ]] || mounts+=(--ro-bind /tmp/.X11-unix /tmp/.X11-unix)
  mounts+=(--ro-bind "$checkout" "$checkout" --bind "$session" "$session")
  [[ ! -d $checkout/out ]] || mounts+=(--bind "$checkout/out" "$checkout/out")
  [[ ! -d $template ]] || mounts+=(--ro-bind "$template/$system32" "$session/prefix/$system32")
  ((EUID == 0)) || mounts+=(--unshare-user --uid 0 --gid 0)
  set_environment "$session"
  exec bwrap --tmpfs / "${mounts[@]}" --remount-ro / --unshare-pid --die-with-parent --info-fd 3 \
    env --ignore-environment --chdir="$session" "${environment[@]}" "$@"
}

# join_root PID SESSION COMMAND ARG...: the same, in an existing root; PID is its first process, as seen from
# outside.
join_root() {
  local session=$2 process=$1
  local -a user=() environment=()
  shift 2
  ((EUID == 0)) || user=(--user --preserve-credentials)
  set_environment "$session"
  # A signal to the outer process does not reach the inner one; only its exit does.
  exec setpriv --pdeathsig KILL nsenter --target "$process" --mount --pid "${user[@]}" \
    env --ignore-environment --chdir="${session_folder:-$session}" "${environment[@]}" \
    setpriv --pdeathsig KILL "$@"
}

# set_environment SESSION: sets $environment. Of the caller's variables, only VILNOR_*, DISPLAY, TZ, WINEDEBUG
# and WINEDLLOVERRIDES are passed on.
set_environment() {
  local entry
  for entry in "${!VILNOR_@}" ${DISPLAY:+DISPLAY} ${TZ:+TZ}; do
    environment+=("$entry=${!entry}")
  done
  environment+=(HOME=/home/user USER=root PATH=/usr/bin:/bin:/usr/sbin:/sbin
    "WINEPREFIX=$1/prefix" "LC_ALL=${session_locale:-C}"
    "WINEDEBUG=${WINEDEBUG:--all}"
    "WINEDLLOVERRIDES=${WINEDLLOVERRIDES-winedbg.exe=d;mscoree=;mshtml=}")
}
