#!/usr/bin/env bash
# Runs every reader fuzz target of a fuzz build for SECONDS each, one core,
# and prints executions and findings per target. Exit status 1 when any
# target found a crash, a leak, a timeout or ran out of memory.
# usage: fuzz/run-fuzzers.sh BUILD_DIR SECONDS [TARGET...]
set -uo pipefail
# Absolute paths: the targets work inside a scratch folder of their own.
build=$(cd "${1:?build folder}" && pwd)
seconds=${2:-30}
shift 2 || true
here=$(cd "$(dirname "$0")" && pwd)

targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  for exe in "$build"/fuzz/zv_fuzz_*; do
    name=${exe##*/zv_fuzz_}
    [ "$name" = seed_writer ] || targets+=("$name")
  done
fi
[ ${#targets[@]} -gt 0 ] || { echo "no fuzz targets in $build/fuzz" >&2; exit 2; }

# UBSan stops at the first finding and prints where; leaks count as findings.
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export ASAN_OPTIONS=detect_leaks=1:allocator_may_return_null=1
export QT_QPA_PLATFORM=offscreen

failed=0
summary=()
for name in "${targets[@]}"; do
  exe="$build/fuzz/zv_fuzz_$name"
  [ -x "$exe" ] || { echo "missing $exe" >&2; failed=1; continue; }
  # The working corpus grows over runs; the seeds are read, never written.
  corpus="$build/fuzz-corpus/$name"
  artifacts="$build/fuzz-findings/$name"
  mkdir -p "$corpus" "$artifacts"
  seeds=()
  [ -d "$here/corpus/$name" ] && seeds+=("$here/corpus/$name")
  [ -d "$build/fuzz/seeds/$name" ] && seeds+=("$build/fuzz/seeds/$name")
  log="$artifacts/last-run.log"
  stamp="$artifacts/.started"
  touch "$stamp"
  "$exe" "$corpus" "${seeds[@]}" -max_total_time="$seconds" -timeout=30 -rss_limit_mb=2048 \
    -max_len=65536 -print_final_stats=1 -artifact_prefix="$artifacts/" >"$log" 2>&1
  rc=$?
  execs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  found=$(find "$artifacts" -maxdepth 1 -type f \( -name 'crash-*' -o -name 'leak-*' -o -name 'timeout-*' \
    -o -name 'oom-*' \) -newer "$stamp" 2>/dev/null | wc -l)
  if [ $rc -ne 0 ]; then
    failed=1
    [ "$found" -gt 0 ] || found=1
    echo "=== $name: finding (exit $rc), log $log" >&2
    grep -m1 -E 'ERROR: |runtime error:|SUMMARY:' "$log" >&2
  fi
  summary+=("$(printf '%-18s %12s executions  %d findings' "$name" "${execs:-?}" "$found")")
done

echo "fuzzing, ${seconds}s a target:"
printf '  %s\n' "${summary[@]}"
exit $failed
