#!/usr/bin/env bash
# Lays out the demo site's panels with `zorvex64-cli place`, as an operator
# would with three clicks per field, and copies the panel files into
# samples/site/PANELS/. Usage: make-demo-panels.sh [BUILD_DIR]
#
# Fields (file coordinates; map = file + 178500 663500 0):
#  - the house's south roof (30 degrees, z = 47.82 + (y - 6) tan 30): one row
#    of 8 portrait modules from x -25 to -14.8, lower edge at y 6.2;
#  - the flat roof (z 51.09, inside the parapet): two rows of 8 at 20 degrees
#    facing south from y -8.4, a metre clear of the parapet, in the east half
#    that the tall block shades in the morning.
# The group number in each panel's name is drawn at random by the placement,
# so names differ from one run to the next; the geometry does not.
set -euo pipefail
ROOT=$(cd "$(dirname "$0")/.." && pwd)
BUILD=${1:-$ROOT/build}
CLI=$BUILD/src/zorvex64-cli
MODULE="ZV-M54 410 Black"
SITE=$ROOT/samples/site
[ -x "$CLI" ] || { echo "no $CLI: build the target zorvex64-cli first" >&2; exit 1; }

SCRATCH=$(mktemp -d)
trap 'rm -rf "$SCRATCH"' EXIT
cp "$SITE"/DemoSite.obj "$SITE"/DemoSite.mtl "$SITE"/DemoSite.jpg "$SITE"/DemoSite.prj "$SITE"/offset.txt "$SCRATCH"/

# Map coordinates of a file point: X Y Z.
map() { awk -v x="$1" -v y="$2" -v z="$3" 'BEGIN { printf "%.3f %.3f %.3f", x + 178500, y + 663500, z }'; }
southRoofZ() { awk -v y="$1" 'BEGIN { t = atan2(1, 1) * 4 / 6; printf "%.3f", 47.82 + (y - 6) * sin(t) / cos(t) }'; }

# Baseline left to right along the eaves, then a point up the slope.
"$CLI" place "$SCRATCH/DemoSite.obj" \
  $(map -25.0 6.2 "$(southRoofZ 6.2)") $(map -14.8 6.2 "$(southRoofZ 6.2)") $(map -14.8 9.6 "$(southRoofZ 9.6)") \
  --module "$MODULE"

# Baseline along the south parapet, then the depth of two rows northwards.
"$CLI" place "$SCRATCH/DemoSite.obj" \
  $(map 12.0 -8.4 51.09) $(map 21.4 -8.4 51.09) $(map 21.4 -3.4 51.09) \
  --module "$MODULE" --roof flat --tilt 20 --pairing rows

mkdir -p "$SITE/PANELS"
rm -f "$SITE"/PANELS/*.dae
cp "$SCRATCH"/PANELS/*.dae "$SCRATCH"/PANELS/PDEF.JPG "$SITE/PANELS/"
echo "$(ls "$SITE"/PANELS/*.dae | wc -l) panel files in $SITE/PANELS" >&2
