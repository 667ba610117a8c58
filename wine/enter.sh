# shellcheck shell=bash
# Entering the Wine root.

# enter_root PLACE SESSION COMMAND ARG...: runs the command in the root of PLACE (what make-root
# prints), in place of the calling (sub)shell, and ends with its caller. In there the root and the
# checkout are read-only, but for the checkout's out/; the folder SESSION holds /tmp, the home and
# the Wine prefix and is seen under its own name, as is the checkout. The prefix's system32 is the
# template's, read-only. Of the
# environment only VILNOR_*, DISPLAY, WINEDEBUG and WINEDLLOVERRIDES get in.
enter_root() {
  local root=$1/root template=$1/prefix session=$2 entry system32=drive_c/windows/system32
  local -a mounts=() environment=()
  shift 2
  # /usr in parts, so that a checkout in /usr/src or /usr/local can be shown.
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
  for entry in "${!VILNOR_@}" ${DISPLAY:+DISPLAY}; do
    environment+=(--setenv "$entry" "${!entry}")
  done
  exec bwrap --tmpfs / "${mounts[@]}" --die-with-parent --chdir "$session" \
    --clearenv "${environment[@]}" \
    --setenv HOME /home/user --setenv USER root --setenv PATH /usr/bin:/bin:/usr/sbin:/sbin \
    --setenv WINEPREFIX "$session/prefix" --setenv WINEDEBUG "${WINEDEBUG:--all}" \
    --setenv WINEDLLOVERRIDES "${WINEDLLOVERRIDES-winedbg.exe=d;mscoree=;mshtml=}" \
    "$@"
}
