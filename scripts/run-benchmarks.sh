#!/usr/bin/env bash
# Runs the speed benchmarks and prints their figures. Usage: run-benchmarks.sh BUILD_DIR
set -euo pipefail
BUILD=${1:-build}
WORK=${ZV_BENCH_DIR:-/tmp/zorvex64-bench}
mkdir -p "$WORK"
if [ ! -f "$WORK/city1m.obj" ]; then
  "$BUILD/bench/zv-citygen" "$WORK/city1m.obj" --triangles 1000000 >&2
fi
echo "== open a 1M-triangle OBJ ($(du -m "$WORK/city1m.obj" | cut -f1) MB) to a scene ready for hit tests"
ZV_BENCH_OBJ="$WORK/city1m.obj" "$BUILD/bench/open_bench"
echo "== shading segments on a 2M-triangle city"
"$BUILD/bench/shading_bench"
