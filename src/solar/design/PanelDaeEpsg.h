// The coordinate system code of a COLLADA model, kept in an <extra> of its
// <asset>: COLLADA has no place of its own for it.
#pragma once

#include <QString>

// Writes the code into the file's <asset> (making one ahead of the first
// library or scene when there is none), replacing an earlier code. False when
// the file can't be read or written, or has no place for the block.
bool EmbedEPSGInDAE(const QString& DAE, int EPSG);

// The code embedded in a COLLADA file; -1 when it carries none. A file that is
// no COLLADA, or a code that is no number, gives 0 and a line on stderr.
int GetEPSGFromDAE(const QString& DAE);
