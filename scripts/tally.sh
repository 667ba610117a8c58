# shellcheck shell=bash disable=SC2154  # $checkout and the like are of scripts/lib.sh
# shellcheck disable=SC2030,SC2031  # side_by_side counts in shells of their own
# Runs checks and counts their results. The output of each goes to out/check/NAME.log and is shown if it
# fails.

passed=0
failed=0
differences=''
logs=$checkout/out/check
rm -rf "$logs"
mkdir -p "$logs"

# check NAME COMMAND ARG...: one check, which passes if the command exits with 0.
check() {
  local name=$1 status=0
  shift
  "$@" >"$logs/$name.log" 2>&1 || status=$?
  if ((status == 0)); then
    add "$name" 1 0
  else
    add "$name" 0 1
    tail -n 40 "$logs/$name.log"
  fi
}

# googletest NAME SECONDS DRIVE COMMAND ARG...: a GoogleTest program; each case is one check. DRIVE is where
# the program finds this machine's root folder: "Z:" in Wine, "" natively.
googletest() {
  local report=$logs/$1.json
  counted "$1" "$2" "$report" "${@:4}" "--gtest_output=json:$3$report"
}

# script NAME SECONDS COMMAND ARG...: a program that says "ok CASE" and "not ok CASE".
script() { counted "$1" "$2" "" "${@:3}"; }

# counted NAME SECONDS REPORT COMMAND ARG...: ends with the shell that runs it. $differences, if set, is a
# table of expected failures; the part of NAME after the first "-" selects its cases. The message boxes that
# its tests provoke are noted in NAME.boxes (tests/fakes/noted_boxes.h).
counted() {
  local name=$1 report=$3 log=$logs/$1.log status=0 result good bad
  VILNOR_BOXES=$logs/$name.boxes setpriv --pdeathsig TERM timeout --kill-after=30 "$2" "${@:4}" \
    >"$log" 2>&1 </dev/null || status=$?
  result=$(python3 "$checkout/scripts/count_cases.py" "$status" "$log" ${report:+--json "$report"} \
    ${differences:+--differences "$differences" "${name#*-}"})
  read -r good bad <<<"$result"
  add "$name" "$good" "$bad"
  if ((bad)); then
    tail -n +2 <<<"$result" | sed 's/^/       /'
    show_failures "$log"
  fi
}

# Prints the first failures with their context, or the end of a log that has none.
show_failures() {
  grep -m 5 -A 12 -E 'Failure$|ERROR:|runtime error:|^not ok' "$1" || tail -n 40 "$1"
}

# add NAME PASSED FAILED
add() {
  local word=${green}ok$plain
  (($3 == 0)) || word=${red}FAILED$plain
  printf '%-6s %s: %s passed, %s failed (%s s)\n' "$word" "$1" "$2" "$3" "$SECONDS"
  passed=$((passed + $2))
  failed=$((failed + $3))
}

# side_by_side FUNCTION...: runs each in its own shell, in parallel; prints their output one after another.
side_by_side() {
  local lane lanes=() counts
  for lane in "$@"; do
    (
      passed=0 failed=0
      "$lane"
      say "$passed $failed" >"$logs/$lane.counts"
    ) >"$logs/$lane.lane" 2>&1 &
    lanes+=($!)
    at_exit stop_process $!
  done
  for lane in "$@"; do
    wait "${lanes[0]}" || true
    lanes=("${lanes[@]:1}")
    cat "$logs/$lane.lane"
    if read -r -a counts <"$logs/$lane.counts"; then
      passed=$((passed + counts[0]))
      failed=$((failed + counts[1]))
    else
      add "$lane" 0 1
    fi
  done
}

# Prints the last line and sets the exit code.
finish() {
  printf '%s passed, %s failed\n' "$passed" "$failed"
  ((failed == 0))
}
