// A mouse press on the view: the point under it, then the route its mode
// flags and the held keys choose.
#pragma once

// Routes in the order they are tried; the first that matches wins. The
// session's point is taken before digitising, obliques, billboards and the
// hand-over, which all work on it.
enum class ClickRoute {
    MoveBillboard,
    NoMesh,
    SessionPoint,
    Digitise,
    ObliqueLookup,
    ObliqueCount,
    PlaceBillboard,
    Handover,
    None,
};

struct ClickInput {
    // 1 left, 2 right.
    int Button = 1;
    bool Shift = false, Alt = false, Ctrl = false;
    // On the panel, whose y counts the engine's strip.
    int X = 0, Y_IN = 0;
};

ClickRoute ViewPanelMouseActivate(const ClickInput& click);
