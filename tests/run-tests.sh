#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the whole project with AddressSanitizer and UndefinedBehaviorSanitizer
# and runs every test executable through CTest under one Xvfb display.
# The last line sums the Qt Test functions of all executables:
#   N passed, N failed, N skipped
# A test executable that ends badly without reporting a failed function (a
# crash, a sanitizer report, a leak at exit) counts as one failed test.
set -uo pipefail
cd "$(dirname "$0")/.."

BUILD=${QORDESIGN_TEST_BUILD:-build/asan}
FILTER=""
for arg in "$@"; do
  case "$arg" in
    --filter=*) FILTER="${arg#--filter=}" ;;
  esac
done

mkdir -p "$BUILD"
# The sanitizer preset of CMakePresets.json, in BUILD.
cmake --preset asan -B "$BUILD" >"$BUILD.configure.log" 2>&1 \
  || { cat "$BUILD.configure.log"; echo "0 passed, 1 failed, 0 skipped"; exit 1; }
if ! ninja -C "$BUILD" >"$BUILD.build.log" 2>&1; then
  grep -E "error|FAILED" -A5 "$BUILD.build.log" | head -n 60
  echo "0 passed, 1 failed, 0 skipped"
  exit 1
fi

# Qt wants a private runtime directory; without one every program warns.
XDG_RUNTIME_DIR=$(mktemp -d)
export XDG_RUNTIME_DIR
trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT

LOGS="$BUILD/testlogs"
rm -f "$LOGS"/*.txt
mkdir -p "$LOGS"
ctest_args=(--test-dir "$BUILD" --output-on-failure --no-tests=error)
[ -n "$FILTER" ] && ctest_args+=(-R "$FILTER")
xvfb-run -a -s "-screen 0 1280x1024x24 -nolisten tcp" ctest "${ctest_args[@]}"
ctest_rc=$?

passed=0; failed=0; skipped=0
for log in "$LOGS"/*.txt; do
  [ -e "$log" ] || continue
  # initTestCase and cleanupTestCase are set-up, not tests.
  p=$(grep -E '^PASS   : ' "$log" | grep -vcE '::(initTestCase|cleanupTestCase)\(\)')
  f=$(grep -cE '^FAIL!  : ' "$log")
  s=$(grep -E '^SKIP   : ' "$log" | grep -vcE '::(initTestCase|cleanupTestCase)\(\)')
  passed=$((passed + p)); failed=$((failed + f)); skipped=$((skipped + s))
done

# Executables CTest saw fail with no failed function of their own.
failed_list="$BUILD/Testing/Temporary/LastTestsFailed.log"
if [ $ctest_rc -ne 0 ] && [ -f "$failed_list" ]; then
  while IFS=: read -r _ name; do
    log="$LOGS/$name.txt"
    if [ ! -f "$log" ] || ! grep -qE '^FAIL!  : ' "$log"; then
      echo "run-tests: $name ended badly (crash, sanitizer report or leak; see its output above)"
      failed=$((failed + 1))
    fi
  done <"$failed_list"
fi
if [ $ctest_rc -ne 0 ] && [ $failed -eq 0 ]; then
  failed=1
fi

echo "$passed passed, $failed failed, $skipped skipped"
[ $failed -eq 0 ]
