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
if [ ! -f "$WORK/cityt.obj" ]; then
  "$BUILD/bench/zv-citygen" "$WORK/cityt.obj" --triangles 1000000 --texture 8192 >&2
fi
echo "== the renderer: a 1M-triangle OBJ with an 8192² texture to its first frame, then frames while turning"
export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$(mktemp -d)}
ZV_BENCH_RENDER_OBJ="$WORK/cityt.obj" xvfb-run -a -s "-screen 0 1280x1024x24" "$BUILD/bench/render_bench"
echo "== climate: folding six years, indexing, a panel's year of look-ups"
"$BUILD/bench/climate_bench"
echo "== the report run: 500 panels on a 2.1M-triangle city, a synthetic climate year, 5 points a panel, every file;"
echo "   fresh for each inverter type, then over its own cache, then each stage of the chain alone"
"$BUILD/bench/report_bench"
echo "== model files: crop, clean, shift and rotate of a 5M-triangle OBJ, each in a process of its own for its peak memory"
for pass in BM_Crop BM_Clean BM_Shift BM_Rotate; do
  "$BUILD/bench/modeltools_bench" --benchmark_filter="^$pass/"
done
