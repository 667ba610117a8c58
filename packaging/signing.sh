# shellcheck shell=bash
# Signs with a key that the caller names and that is never stored: in a file, or in a PKCS#11 token.

signing_certificate='' signing_key='' signing_module='' signing_password='' signing_time=''

# signing_option NAME VALUE
signing_option() {
  case $1 in
    --certificate) signing_certificate=$2 ;;
    --key) signing_key=$2 ;;
    --pkcs11-module) signing_module=$2 ;;
    --password-file) signing_password=$2 ;;
    --timestamp) signing_time=$2 ;;
    *) fail "unknown option $1" ;;
  esac
  [[ $2 ]] || fail "$1 needs a value"
}

# Prints one line for whatever is missing, before anything is made.
check_signing() {
  local file
  if [[ ! $signing_certificate$signing_key ]]; then
    [[ ! $signing_module$signing_password$signing_time ]] ||
      fail "without --certificate and --key nothing is signed"
    return 0
  fi
  [[ $signing_certificate ]] || fail "--key needs --certificate, too"
  [[ $signing_key ]] || fail "--certificate needs --key, too"
  for file in "$signing_certificate" ${signing_module:+"$signing_module"} \
    ${signing_password:+"$signing_password"}; do
    [[ -r $file ]] || fail "cannot read $file"
  done
  # A key in a token has an address (pkcs11:...) instead of a file.
  [[ $signing_module || -r $signing_key ]] || fail "cannot read the key file $signing_key"
}

# sign FILE VERSION: in place; does nothing if no key was given.
sign() {
  [[ $signing_key ]] || return 0
  local options=(-h sha256 -n "Vilnor $2" -certs "$signing_certificate" -key "$signing_key")
  [[ ! $signing_password ]] || options+=(-readpass "$signing_password")
  [[ ! $signing_module ]] ||
    options+=(-pkcs11engine "$(pkcs11_engine)" -pkcs11module "$signing_module")
  [[ ! $signing_time ]] || options+=(-ts "$signing_time")
  osslsigncode sign "${options[@]}" -in "$1" -out "$1.signed" && mv "$1.signed" "$1"
}

pkcs11_engine() { printf '%s\n' /usr/lib/*/engines-3/pkcs11.so; }
