#include "OverlayStrokes.h"

#include <cstring>

namespace render {

namespace {

Stroke makeLine(const double a[3], const double b[3], const float rgb[3], float width) {
    Stroke s;
    s.line = true;
    std::memcpy(s.rgb, rgb, sizeof s.rgb);
    s.size = width;
    std::memcpy(s.a, a, sizeof s.a);
    std::memcpy(s.b, b, sizeof s.b);
    return s;
}

Stroke makePoint(const double a[3], const float rgb[3], float size) {
    Stroke s;
    std::memcpy(s.rgb, rgb, sizeof s.rgb);
    s.size = size;
    std::memcpy(s.a, a, sizeof s.a);
    std::memcpy(s.b, a, sizeof s.b);
    return s;
}

}  // namespace

void addMeasureStrokes(const engine::EngineState& state, StrokeSet& out) {
    if (state.flags[LIBFLAG_SHOW_MEASURES] == 0) return;
    const engine::MeasureListLook& look = state.measureLook;
    const engine::RubberbandLook& observerLook = state.rubberbandLook;
    const bool depth = state.flags[LIBFLAG_MEASURE_DEPTH] != 0 || look.depthTest != 0;
    std::vector<Stroke>& target = depth ? out.depthTested : out.onTop;
    for (std::size_t i = 0; i < state.measures.size(); ++i) {
        const MEASURE_DATA& item = state.measures[i];
        if (!item.visible_Flag) continue;
        const bool selected = int(i) == state.selectedMeasure;
        const float width = item.lineWidth > 0 ? item.lineWidth : look.lineWidth;
        target.push_back(makeLine(item.vertex1, item.vertex2, selected ? look.rgbSelected : item.rgb_Line_Array, width));
        if (look.points) {
            target.push_back(makePoint(item.vertex1, look.rgbPoint1, look.pointSize));
            target.push_back(makePoint(item.vertex2, look.rgbPoint2, look.pointSize));
        }
        if (item.observer_Flag) {
            target.push_back(makeLine(item.vertex1, item.observer, observerLook.rgbObserverLine, observerLook.observerWidth));
            target.push_back(makePoint(item.observer, observerLook.rgbObserverPoint, observerLook.observerSize));
        }
        if (item.obstruction_Flag && look.obstructionDisplay)
            target.push_back(makePoint(item.obstruction, look.rgbObstruction, look.obstructionPointSize));
    }
}

void addRubberbandStrokes(const engine::EngineState& state, StrokeSet& out) {
    if (state.flags[LIBFLAG_MESH_LOCATION] == MESH_LOCATION_OFF) return;
    const engine::RubberbandLook& look = state.rubberbandLook;
    std::vector<Stroke>& target = look.depthTest ? out.depthTested : out.onTop;
    const engine::RubberbandPoint& first = state.rubberband[1];
    const engine::RubberbandPoint& second = state.rubberband[2];
    const engine::RubberbandPoint& obstruction = state.rubberband[3];
    const engine::RubberbandPoint& observer = state.rubberband[4];
    const bool haveFirst = first.hitFlag == AT3D_HIT, haveSecond = second.hitFlag == AT3D_HIT;
    const bool haveObserver = state.observerActive && observer.hitFlag == AT3D_HIT;
    if (haveFirst && haveSecond) target.push_back(makeLine(first.xyz, second.xyz, look.rgbLine, look.lineWidth));
    if (haveObserver && look.observerLineFlag) {
        target.push_back(makeLine(first.xyz, observer.xyz, look.rgbObserverLine, look.observerWidth));
        if (haveSecond) target.push_back(makeLine(observer.xyz, second.xyz, look.rgbObserverLine, look.observerWidth));
    }
    if (look.points) {
        if (haveFirst) target.push_back(makePoint(first.xyz, look.rgbPoint1, look.pointSize));
        if (haveSecond) target.push_back(makePoint(second.xyz, look.rgbPoint2, look.pointSize));
    }
    if (haveObserver && look.observerPointFlag)
        target.push_back(makePoint(observer.xyz, look.rgbObserverPoint, look.observerSize));
    if (obstruction.hitFlag == AT3D_HIT && look.obstructionDisplay)
        target.push_back(makePoint(obstruction.xyz, look.rgbObstruction, look.obstructionPointSize));
}

void addBillboardStemStrokes(const engine::EngineState& state, StrokeSet& out) {
    if (state.flags[LIBFLAG_SHOW_BILLBOARDS] == 0) return;
    for (const engine::BillboardItem& item : state.billboards) {
        const BILLBOARD_DATA& data = item.data;
        if (!data.visibleFlag || !(data.lineWidth > 0)) continue;
        out.depthTested.push_back(makeLine(data.position, data.pivot, data.rgb_Line_Array, data.lineWidth));
    }
}

StrokeSet overlayStrokes(const engine::EngineState& state) {
    StrokeSet set;
    addBillboardStemStrokes(state, set);
    addMeasureStrokes(state, set);
    addRubberbandStrokes(state, set);
    return set;
}

}  // namespace render
