# shellcheck shell=bash
# What the private 32-bit Wine roots are made of. A change here makes new roots on the next run.

# The Debian releases that a root is made of. Everything runs in the first one's Wine; ./check also
# runs the Windows tests in that of the next one.
# shellcheck disable=SC2034  # for wine/make-root and wine/session.sh
suite=bookworm next_suite=trixie

packages=(
  wine wine32           # Windows programs of 32 bits
  fonts-wine            # Tahoma and the other faces that Windows dialogs ask for
  fonts-liberation      # Swedish letters in every other face
  unixodbc odbcinst     # what Wine's odbc32 hands its calls to
  libsqliteodbc         # the embedded database
  odbc-postgresql       # the servers that the tests start
  odbc-mariadb          # MariaDB
  locales               # the source of sv_SE
  tzdata                # the sessions' time zone, which is not UTC
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
