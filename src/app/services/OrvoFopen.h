// The guarded file opener: a read-only file is made writable before it is
// written, and a file that can't be written where it was asked for is
// written under the same name in ORVO_T instead.
#pragma once

#include <QString>
#include <cstdio>

// W is an fopen mode. With "r": null for a missing file, a box when it exists
// but can't be opened. With "w" or "a": the owner's write permission is given
// back first; where that or the open fails, ORVO_T + the file's name is used.
// Any other mode gives null.
std::FILE* ORVOfopen(const QString& fn, const char* W);

// ORVO_T + the name of fn: where a file goes that can't be written in place.
QString OrvoTempTwin(const QString& fn);
