// The north arrow decal's picture.
#pragma once

// Draws the north arrow (an arrow pointing up with an "N" under it, on a
// transparent ground) into NORTHARROW, through a temporary file. False when
// it can't be written.
bool PrepareNorthArrow();
