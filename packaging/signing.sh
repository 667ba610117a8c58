# shellcheck shell=bash
# Signs with a key that the caller names and that is never stored: in a file, or in a PKCS#11 token.

signing_certificate='' signing_key='' signing_module='' signing_password='' signing_time=''
# The same again, for another script that may run in another folder.
signing_options=()

# signing_option NAME VALUE; a file is named from the folder in which the caller is now.
signing_option() {
  local value=$2
  [[ $1 == --timestamp || $2 == pkcs11:* || ! $2 ]] || value=$(realpath --canonicalize-missing "$2")
  case $1 in
    --certificate) signing_certificate=$value ;;
    --key) signing_key=$value ;;
    --pkcs11-module) signing_module=$value ;;
    --password-file) signing_password=$value ;;
    --timestamp) signing_time=$value ;;
    *) fail "unknown option $1" ;;
  esac
  [[ $2 ]] || fail "$1 needs a value"
  signing_options+=("$1" "$value")
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
    [[ -f $file && -r $file ]] || fail "cannot read $file"
  done
  [[ $signing_key != pkcs11:* || $signing_module ]] || fail "a key in a token needs --pkcs11-module, too"
  # In a token the key has an address (pkcs11:...), no file.
  [[ $signing_module || (-f $signing_key && -r $signing_key) ]] || fail "cannot read the key file $signing_key"
}

# sign FILE VERSION: in place; does nothing when no key was given. The reason of a failure is printed as
# "error: ...".
sign() {
  [[ $signing_key ]] || return 0
  local options=(-h sha256 -n "Vilnor $2" -certs "$signing_certificate" -key "$signing_key") alone=()
  [[ ! $signing_password ]] || options+=(-readpass "$signing_password")
  # It would ask for another password than the one in the file, and wait.
  [[ ! $signing_password ]] || alone=(setsid --wait)
  [[ ! $signing_module ]] ||
    options+=(-pkcs11engine "$(pkcs11_engine)" -pkcs11module "$signing_module")
  [[ ! $signing_time ]] || options+=(-ts "$signing_time")
  if ! "${alone[@]}" osslsigncode sign "${options[@]}" -in "$1" -out "$1.signed" \
    >"$1.log" 2>"$1.errors" </dev/null; then
    cat "$1.errors" "$1.log"
    # The first line tells; what comes behind it, libraries tell of themselves.
    say "error: $(grep -m 1 -vE '^ *$|^Enter ' "$1.errors")"
    return 1
  fi
  rm "$1.log" "$1.errors"
  mv "$1.signed" "$1"
}

pkcs11_engine() { printf '%s\n' /usr/lib/*/engines-3/pkcs11.so; }
