// The drone camera table TScam: one comma-separated line per camera after
// a header, searched by the photo metadata checks.
#pragma once

#include <QStringList>

// The table's lines in order, verbatim (the blanks in "Mavic 3T" and the
// last row's "O" included).
QStringList DroneCameraTable();
