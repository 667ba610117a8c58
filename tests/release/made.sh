# shellcheck shell=bash disable=SC2154  # $checkout is of scripts/lib.sh
# The releases that the tests examine, made once from the checkout as it is, committed or not: $first is
# unsigned; $second has the next version and is signed with a key made for it.

release_commit=0123456789abcdef0123456789abcdef01234567
release_time=1767225600
made=$checkout/out/release-test
first=$made/first second=$made/second signer=$made/signer
# shellcheck disable=SC2034  # for the tests
readonly release_commit release_time made first second signer

# Everything that goes into a release.
release_state() {
  (cd "$checkout" && find src tools docs/edge-cases typelib packaging sdk cmake CMakeLists.txt \
    CMakePresets.json VERSION CHANGELOG.md scripts tests/release/made.sh tests/contract tests/databases \
    tests/fakes tests/schema tests/system -type f ! -path '*/__pycache__/*' -print0 |
    LC_ALL=C sort -z | xargs -0 sha256sum | sha256sum)
}

make_releases() {
  local lock
  mkdir -p "$checkout/out"
  exec {lock}>"$checkout/out/release-test.lock"
  flock "$lock"
  make_missing_releases
  # Otherwise processes that the test starts would keep it locked.
  exec {lock}>&-
}

make_missing_releases() {
  local state version
  state=$(release_state)
  [[ $state != "$(cat "$made/state" 2>/dev/null)" ]] || return 0
  rm -rf "$made"
  mkdir -p "$first" "$second"
  version=$(sed -n 's/^version=1\.5\.//p' "$checkout/VERSION")
  sed "s/^version=.*/version=1.5.$((version + 1))/" "$checkout/VERSION" >"$made/VERSION"
  make_signer "$signer"
  "$checkout/packaging/make" "$second" --version-file "$made/VERSION" --commit "$release_commit" \
    --time "$release_time" --certificate "$signer/certificate.pem" --key "$signer/key.pem"
  "$checkout/packaging/make" "$first" --commit "$release_commit" --time "$release_time"
  printf '%s\n' "$state" >"$made/state"
}

# make_signer FOLDER: makes a key and a self-signed certificate.
make_signer() {
  mkdir -p "$1"
  openssl req -x509 -newkey rsa:2048 -nodes -keyout "$1/key.pem" -out "$1/certificate.pem" -days 30 \
    -subj '/CN=Vilnor test' -addext extendedKeyUsage=codeSigning >"$1/log" 2>&1 ||
    fail "no certificate can be made: $(tail -n 1 "$1/log")"
}
