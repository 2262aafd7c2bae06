#!/usr/bin/env bash
# Runs the whole FPCUnit suite under Xvfb with heap tracing and prints, as its
# last line, "N passed, N failed, N skipped". The heap check counts as one
# more test: heaptrc writes its report only after the runner has ended, so
# the runner cannot judge it itself. Exits non-zero on any failure or leak.
set -uo pipefail
cd "$(dirname "$0")/.."

RUNNER=build/qortests
HEAPLOG=build/heap.log
KNOWN=tests/known-leaks.txt
OUT=build/test-output.log
rm -f "$HEAPLOG"

# A screen large enough for every test form; real input goes through xdotool.
HEAPTRC="log=$HEAPLOG" xvfb-run -a -s "-screen 0 1280x1024x24" "$RUNNER" "$@" 2>&1 | tee "$OUT"
status=${PIPESTATUS[0]}

summary=$(grep -E '^[0-9]+ passed, [0-9]+ failed' "$OUT" | tail -n 1)
if [ -z "$summary" ]; then
  echo "the test runner ended without a summary (exit $status)"
  echo "0 passed, 1 failed"
  exit 1
fi
passed=$(echo "$summary" | sed -E 's/^([0-9]+) passed.*/\1/')
failed=$(echo "$summary" | sed -E 's/^[0-9]+ passed, ([0-9]+) failed.*/\1/')
skipped=$(echo "$summary" | sed -nE 's/.*, ([0-9]+) skipped.*/\1/p')
skipped=${skipped:-0}
if [ "$status" -ne 0 ] && [ "$failed" -eq 0 ]; then
  echo "the test runner exited with $status"
  failed=$((failed + 1))
fi

# Heap check: every unfreed block must carry a marker of tests/known-leaks.txt.
leak_report=$(awk -v known="$KNOWN" '
  BEGIN {
    while ((getline line < known) > 0) {
      if (line ~ /^#/ || line ~ /^[ \t]*$/) continue
      markers[++nm] = line
    }
  }
  /unfreed memory blocks/ { unfreed += $1 }
  /^Call trace for block/ { flush(); inblock = 1; trace = $0 "\n"; next }
  inblock && /^  \$/ { trace = trace $0 "\n"; next }
  inblock { flush() }
  function flush(   i, ok) {
    if (!inblock) return
    ok = 0
    for (i = 1; i <= nm; i++) if (index(trace, markers[i]) > 0) ok = 1
    if (ok) known_blocks++; else { unknown++; report = report trace }
    inblock = 0; trace = ""
  }
  END {
    flush()
    if (!seen_dump && NR == 0) { print "NOREPORT"; exit }
    printf "unfreed=%d known=%d unknown=%d\n", unfreed, known_blocks, unknown
    printf "%s", report
  }' "$HEAPLOG" 2>/dev/null)

if [ ! -s "$HEAPLOG" ] || [ "$leak_report" = "NOREPORT" ]; then
  echo "  FAIL heap: no heaptrc report in $HEAPLOG (was the runner built with -gh?)"
  failed=$((failed + 1))
else
  head_line=$(echo "$leak_report" | head -n 1)
  unfreed=$(echo "$head_line" | sed -E 's/unfreed=([0-9]+).*/\1/')
  unknown=$(echo "$head_line" | sed -E 's/.*unknown=([0-9]+).*/\1/')
  known_blocks=$(echo "$head_line" | sed -E 's/.*known=([0-9]+) .*/\1/')
  if [ "$unknown" -eq 0 ] && [ "$unfreed" -eq "$known_blocks" ]; then
    echo "  ok   heap: no leaks ($known_blocks known LCL block(s) left by the widgetset)"
    passed=$((passed + 1))
  else
    echo "  FAIL heap: $unfreed unfreed block(s), $unknown not known; see $HEAPLOG"
    echo "$leak_report" | tail -n +2 | head -n 60
    failed=$((failed + 1))
  fi
fi

echo "$passed passed, $failed failed, $skipped skipped"
[ "$failed" -eq 0 ]
