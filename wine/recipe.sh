# shellcheck shell=bash
# What the private 32-bit Wine root is made of. A change here makes a new root on the next run.

# shellcheck disable=SC2034  # for wine/make-root
suite=bookworm

packages=(
  wine wine32           # Windows programs of 32 bits
  fonts-wine            # Tahoma and the other faces that Windows dialogs ask for
  fonts-liberation      # Swedish letters in every other face
  unixodbc odbcinst     # what Wine's odbc32 hands its calls to
  libsqliteodbc         # the embedded database
  odbc-postgresql       # the real server
  locales               # the source of sv_SE
)

# finish_root ROOT: the rest, once the packages are in place.
finish_root() {
  echo "127.0.0.1 localhost" >"$1/etc/hosts"
  chroot "$1" localedef -i sv_SE -f UTF-8 sv_SE.UTF-8
}

# finish_prefix: run inside the root, in the prefix that every run's own is copied from.
finish_prefix() {
  # Debian's Wine does not find its own faces where Debian puts them.
  cp /usr/share/wine/fonts/{tahoma,tahomabd,marlett}.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
  # There is no window manager, so Wine draws the windows' frames and titles itself.
  wine reg add 'HKCU\Software\Wine\X11 Driver' /v Decorated /d N /f
}
