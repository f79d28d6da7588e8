// How the scene is drawn for the values of LIBFLAG_RENDER_MODE (79), and the
// colours that change with time (sphere markers that strobe).
//
//   0  textured: the layer's texture where it has one and LIBFLAG_USE_TEXTURES
//      is on, otherwise its plain colour lit from the viewer and the sun;
//      0 is also the value before the first switch, so it is the normal view.
//   3  false colour by height: every surface lit as above, coloured from
//      colour map entry 271 at the scene's lowest point to 268 at its highest.
//   8  wireframe: the triangle edges only, coloured as in mode 0.
// Any other value draws as 0.
#pragma once

#include "scene/engine/EngineState.h"

namespace render {

enum class RenderMode { Textured, HeightColour, Wireframe };

RenderMode renderModeFromFlag(int value);

// Colour of a sphere marker at a time in milliseconds. Steady: rgb1, or
// rgb2 with color2Flag. Strobing (strobeFlag, interval > 0 ms): rgb1 and rgb2
// take turns, each for interval ms, starting with rgb1 at time 0.
void sphereColourAt(const engine::SphereMarker& marker, long long milliseconds, float rgb[3]);

// Milliseconds of a steady clock, the time base of the strobe.
long long renderClockMilliseconds();

// True when some visible marker strobes, so the view must keep redrawing.
bool anyStrobingSphere(const engine::EngineState& state);

}  // namespace render
