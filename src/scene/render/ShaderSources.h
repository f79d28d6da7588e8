// GLSL 3.30 sources of the renderer's programs.
#pragma once

namespace render::shaders {

// Surfaces share one vertex program: layers, sphere markers, billboards.
// Each way of colouring has its own fragment program, since a software
// rasteriser would run every branch of a shared one on every pixel.
extern const char* const kSurfaceVertex;
// The texture as it is, rows from the top (OBJ's v runs up).
extern const char* const kTexturedFragment;
// Plain colour, or the colour map by height, lit from the viewer and the sun.
extern const char* const kShadedFragment;
// A picture with its alpha, tinted by `colour` unless `replaceColour`.
extern const char* const kPictureFragment;

// Lines of any width: each segment becomes a screen-aligned quad. Lines and
// points are pulled a little towards the eye so marks on a surface stay in front.
extern const char* const kLineVertex;
extern const char* const kLineGeometry;
extern const char* const kLineFragment;

// Round points of a size in pixels.
extern const char* const kPointVertex;
extern const char* const kPointFragment;

}  // namespace render::shaders
