// Moving the panels of a COLLADA file by a vector, text left as it stands.
#pragma once

#include <QString>

// Adds (dx, dy, dz) to every position triple of a float_array whose id holds
// "positions_array", and to the x, y, z attributes of center_point, the
// corner_ elements and the pp_ elements; rewrites the file. False, with
// "ERROR in ShiftDAE: ..." in the run log, when it can't be read or written.
bool ShiftDAE(const QString& file, double dx, double dy, double dz);
