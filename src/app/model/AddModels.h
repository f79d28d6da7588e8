// "Add model(s)": further files into the open scene, each under a prefix of
// its own, moved into the scene's local frame.
#pragma once

#include <QStringList>

// Adds each file (OBJ, DXF, 3DS, DAE; ".shp" and ".kml" first become a
// ".DXF" beside them). Files missing or under 200 bytes are passed over,
// as they may still be being written. The view is kept.
void AddmodelsClick(const QStringList& files);
// The same for files known to be complete (just read or written by this
// program): no pause to let a writer finish.
void AddCompleteModels(const QStringList& files);

// The menu item: asks for the files, then adds them.
void AddmodelsMenuClick();
