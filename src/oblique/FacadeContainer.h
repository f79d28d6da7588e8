// Building a facade container: exiftool reads every picture of the folder,
// each camera's axis is cast at the mesh, and the pictures that look at a
// wall from 1 to 30 units away are kept.
#pragma once

#include <QString>

// The nearest and farthest accepted hits of a camera's axis, in map units.
constexpr double FACADE_NEAREST = 1;
constexpr double FACADE_FARTHEST = 30;

// The container's name ("" when nothing was made); rejected pictures are
// renamed ".jpeg" so that a later run passes them by.
QString CreateFacadesContainer();

// The menu item: the container, then its photographs loaded.
void CreateContainer1Click();
