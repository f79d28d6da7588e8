// The engine's lists as lines and points to draw: the measure list, the
// rubberband with its observer and obstruction, the stems of billboards.
// Engine frame throughout; the renderer moves them next to the eye.
#pragma once

#include <vector>

#include "scene/engine/EngineState.h"

namespace render {

// A line a..b, or a point at a. size is the width of a line or the
// diameter of a point, in pixels.
struct Stroke {
    bool line = false;
    float rgb[3] = {0, 0, 0};
    float size = 1;
    double a[3] = {0, 0, 0};
    double b[3] = {0, 0, 0};
};

struct StrokeSet {
    std::vector<Stroke> depthTested;  // hidden behind the mesh
    std::vector<Stroke> onTop;        // drawn over everything
};

// Measure list (LIBFLAG_SHOW_MEASURES): each visible item's line in its
// colour, or the selected colour; end points when the list's look asks for
// points; the observer point with its stem from vertex 1; the obstruction
// point when the item has one and the look displays them. Depth-tested when
// LIBFLAG_MEASURE_DEPTH or the list's own depth setting is on.
void addMeasureStrokes(const engine::EngineState& state, StrokeSet& out);

// Rubberband, while LIBFLAG_MESH_LOCATION is on: the ends that are set, the
// line between them, the observer above the first end with its stem and its
// line of sight to the second end, and the obstruction point.
void addRubberbandStrokes(const engine::EngineState& state, StrokeSet& out);

// Stems of the visible billboards (LIBFLAG_SHOW_BILLBOARDS): foot to pivot.
void addBillboardStemStrokes(const engine::EngineState& state, StrokeSet& out);

StrokeSet overlayStrokes(const engine::EngineState& state);

}  // namespace render
