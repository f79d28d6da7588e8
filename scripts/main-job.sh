#!/usr/bin/env bash
# The main job on the demo site: the model's facts, then one shadow ray from
# the south roof of the house towards a low winter afternoon sun, which the
# tree south-west of the house blocks. Then the solar report on a copy of the
# site (its shipped panels and synthetic climate year), so that the results
# written into the panel files leave the bundled site as it is. Then the
# viewer opens the model; on a machine without a display the report and the
# viewer run under Xvfb, the viewer saves its first frame to the model's
# "Screenshots/" folder, prints the picture's path and ends.
# Usage: main-job.sh CLI MODEL [VIEWER]
set -euo pipefail
CLI=$1
MODEL=$2
VIEWER=${3:-}

echo "== $MODEL"
"$CLI" info "$MODEL"

# A point on the south roof, in the map frame (file x -20, y 8 plus the offset).
X=178480.000
Y=663508.000
Z=$("$CLI" ground "$MODEL" "$X" "$Y")
echo "== roof height at $X $Y: $Z"

# Sun at azimuth 232.6 degrees, 15 degrees above the horizon; a ray of 1000 m
# from 0.5 m above the roof, skipping the first 0.5 m as the solar shading does.
read -r X2 Y2 Z2 Z1 < <(awk -v x="$X" -v y="$Y" -v z="$Z" 'BEGIN {
  pi = atan2(0, -1); az = 232.6 * pi / 180; el = 15 * pi / 180; z1 = z + 0.5
  printf "%.3f %.3f %.3f %.3f\n", x + 1000 * sin(az) * cos(el), y + 1000 * cos(az) * cos(el), z1 + 1000 * sin(el), z1 }')
echo "== shadow ray towards the sun at azimuth 232.6, elevation 15"
"$CLI" ray "$MODEL" "$X" "$Y" "$Z1" "$X2" "$Y2" "$Z2" --skip 0.5 --first

# Qt wants a private runtime folder; mktemp makes it readable by us alone.
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
  XDG_RUNTIME_DIR=$(mktemp -d)
  export XDG_RUNTIME_DIR
  trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
fi
# Without a display the report's scene picture and the viewer's first frame
# are drawn on Xvfb.
ON_SCREEN=()
[ -n "${DISPLAY:-}" ] || ON_SCREEN=(xvfb-run -a -s "-screen 0 1280x1024x24")

SITE_DIR=$(dirname "$MODEL")
REPORT_DIR=${REPORT_DIR:-$(dirname "$(dirname "$CLI")")/demo-report}
echo "== the solar report (5 points, optimizer) on a copy of the site in $REPORT_DIR"
rm -rf "$REPORT_DIR"
mkdir -p "$REPORT_DIR"
cp -r "$SITE_DIR"/. "$REPORT_DIR"/
rm -rf "$REPORT_DIR"/Reports "$REPORT_DIR"/PANELS/SHADING "$REPORT_DIR"/Screenshots "$REPORT_DIR"/Home.vpt
"${ON_SCREEN[@]}" "$CLI" report "$REPORT_DIR/$(basename "$MODEL")" --climate "$REPORT_DIR/PVGIST_H_SYNTHETIC.csv"

[ -n "$VIEWER" ] || exit 0
if [ -n "${DISPLAY:-}" ]; then
  echo "== the viewer on $MODEL"
  "$VIEWER" "$MODEL"
else
  echo "== the viewer's first frame (no display: under Xvfb)"
  "${ON_SCREEN[@]}" "$VIEWER" "$MODEL" --first-frame-shot
fi
