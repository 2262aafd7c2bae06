#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the fuzz targets with clang's libFuzzer, AddressSanitizer and
# UndefinedBehaviorSanitizer (build/fuzz) and runs each for FUZZ_SECONDS
# (default 60) on a copy of its seed corpus and its fixed regressions.
# Every input that crashed, leaked, ran out of memory or timed out is
# named by what it hits; one per distinct bug not kept yet is copied into
# tests/fuzz/regressions/<target>/, and the script exits non-zero when any
# input failed.
#   FUZZ_SECONDS=N   seconds per target
#   FUZZ_TARGETS="stream dictionary"   only these targets
#   FUZZ_TIMEOUT=N   seconds one input may take (default 10)
set -uo pipefail
cd "$(dirname "$0")/../.."

BUILD=${QORDESIGN_FUZZ_BUILD:-build/fuzz}
SECONDS_EACH=${FUZZ_SECONDS:-60}
TARGETS=${FUZZ_TARGETS:-stream streamtext clipboard designertext dictionary dictcsv dictxml}
INPUT_TIMEOUT=${FUZZ_TIMEOUT:-10}
FUZZ_DIR=tests/fuzz
KNOWN=$FUZZ_DIR/regressions/known-crashes.txt

mkdir -p "$BUILD"
CC=clang CXX=clang++ cmake -S . -B "$BUILD" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS=-O1 \
  -DQORDESIGN_FUZZ=ON -DQORDESIGN_BUILD_TESTS=OFF -DQORDESIGN_BUILD_DEMO=OFF -DQORDESIGN_BUILD_BENCH=OFF \
  >"$BUILD.configure.log" 2>&1 || { cat "$BUILD.configure.log"; exit 1; }
# Two jobs: the build machines are small and shared.
if ! ninja -C "$BUILD" -j2 >"$BUILD.build.log" 2>&1; then
  grep -E "error|FAILED" -A5 "$BUILD.build.log" | head -n 60
  exit 1
fi

XDG_RUNTIME_DIR=$(mktemp -d)
export XDG_RUNTIME_DIR
trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS=detect_leaks=1:strict_init_order=1:detect_stack_use_after_return=0
# The suite's suppressions and the fuzz runs' own, in one file.
cat tests/sanitizer-suppressions.txt "$FUZZ_DIR/lsan-suppressions.txt" >"$BUILD/lsan-suppressions.txt"
export LSAN_OPTIONS=suppressions=$PWD/$BUILD/lsan-suppressions.txt:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

# What an input that fails hits, one line: the kind of error, the top
# frame past the allocator and the sanitizers, and the first frame in the
# library. Inputs with the same kind and library function are one finding.
describe() {
  local program=$1 input=$2 log kind top at
  # The slow unwinder follows Qt's frames, which keep no frame pointers.
  log=$(ASAN_OPTIONS=$ASAN_OPTIONS:fast_unwind_on_malloc=0:fast_unwind_on_fatal=0 \
    timeout $((INPUT_TIMEOUT * 3)) "$program" -timeout="$INPUT_TIMEOUT" -runs=1 "$input" 2>&1)
  kind=$(grep -oE "ERROR: [A-Za-z]+Sanitizer: [^0-9(]*|ERROR: libFuzzer: [a-z-]+|runtime error: [^0-9(]*|qorfuzz: .{0,160}" <<<"$log" \
    | head -n 1 | sed -E 's/^ERROR: //; s/ +(on|at|trying to allocate)? *$//; s/[ :-]+$//')
  local frames
  frames=$(grep -E "^ +#[0-9]+ 0x[0-9a-f]+ in " <<<"$log" \
    | grep -vE " in (__interceptor_|__asan|__sanitizer|__ubsan|malloc|calloc|realloc|operator new|abort|raise|fuzzer::|__cxa|std::__terminate|QArrayData::)")
  top=$(head -n 1 <<<"$frames" | sed -E 's/\(anonymous namespace\):://g; s/^ +#[0-9]+ 0x[0-9a-f]+ in ([^(]*).*/\1/')
  at=$(grep -E " /[^ ]*/(foundation|translation|designer|inspector|console)/[^ ]+$" <<<"$frames" | head -n 1 \
    | sed -E 's/\(anonymous namespace\):://g; s/^ +#[0-9]+ 0x[0-9a-f]+ in ([^(]*)\(.* \/[^ ]*\/((foundation|translation|designer|inspector|console)\/[^ ]+)$/\1 \2/')
  echo "${kind:-passes when run alone} | top: ${top:-?} | in the library: ${at:-none}"
}

# The same error in the same library function, whatever the line (and,
# for a target's own check, whatever objects its message names).
bug_key() {
  sed -E 's/^(qorfuzz: [^:]*): [^|]*/\1 /; s/ \| top: [^|]*//; s/:[0-9]+(:[0-9]+)?$//' <<<"$1"
}

failed=0
summary=()
for target in $TARGETS; do
  program="$BUILD/tests/fuzz/qorfuzz_$target"
  work="$BUILD/run/$target"
  rm -rf "$work"
  mkdir -p "$work/corpus" "$work/artifacts"
  cp "$FUZZ_DIR/corpus/$target"/* "$work/corpus/"
  # Fixed regressions join the corpus; the ones that still crash would end
  # every run at once.
  if [ -d "$FUZZ_DIR/regressions/$target" ]; then
    for f in "$FUZZ_DIR/regressions/$target"/*; do
      [ -f "$f" ] || continue
      grep -qF "$target/$(basename "$f") " "$KNOWN" 2>/dev/null || cp "$f" "$work/corpus/"
    done
  fi
  # Tokens of the target's format, where it has a list of them.
  dict=()
  [ -f "$FUZZ_DIR/dict/$target.dict" ] && dict=(-dict="$FUZZ_DIR/dict/$target.dict")
  echo "fuzz: $target for ${SECONDS_EACH}s"
  # libFuzzer stops at its first finding: it starts again on the grown
  # corpus until the target's time is spent, so that one bug does not end
  # the search for others. Executions are summed from each run's final
  # statistics.
  : >"$work/fuzz.log"
  execs=0
  started=$SECONDS
  while [ $((SECONDS - started)) -lt "$SECONDS_EACH" ]; do
    "$program" "${dict[@]}" -max_total_time=$((SECONDS_EACH - (SECONDS - started))) -timeout="$INPUT_TIMEOUT" \
      -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$work/artifacts/" "$work/corpus" >"$work/last.log" 2>&1
    cat "$work/last.log" >>"$work/fuzz.log"
    n=$(grep -oE "stat::number_of_executed_units: [0-9]+" "$work/last.log" | tail -n 1 | grep -oE "[0-9]+$")
    execs=$((execs + ${n:-0}))
  done
  elapsed=$((SECONDS - started))
  rate=$((execs / (elapsed > 0 ? elapsed : 1)))
  found=0
  declare -A seen=()
  # Bugs already kept (and listed as still crashing) are no new finding.
  if [ -f "$KNOWN" ]; then
    while read -r known _; do
      case "$known" in "$target"/*) ;; *) continue ;; esac
      [ -f "$FUZZ_DIR/regressions/$known" ] || continue
      what=$(describe "$program" "$FUZZ_DIR/regressions/$known")
      seen[$(bug_key "$what")]=1
    done < <(grep -vE '^(#|$)' "$KNOWN")
  fi
  for artifact in "$work/artifacts"/*; do
    [ -f "$artifact" ] || continue
    what=$(describe "$program" "$artifact")
    key=$(bug_key "$what")
    [ -n "${seen[$key]:-}" ] && continue
    seen[$key]=1
    found=$((found + 1))
    mkdir -p "$FUZZ_DIR/regressions/$target"
    name=$(basename "$artifact")
    cp "$artifact" "$FUZZ_DIR/regressions/$target/$name"
    echo "fuzz: FINDING $target/$name: $what"
  done
  unset seen
  failing=$(ls "$work/artifacts" | wc -l)
  summary+=("$target: $execs executions in ${elapsed}s ($rate exec/s), $failing failing input(s), $found new distinct finding(s)")
  # Any failing input fails the run, also one of a bug already kept.
  [ "$failing" -gt 0 ] && failed=1
done

printf 'fuzz: %s\n' "${summary[@]}"
exit $failed
