// Putting the panel data blocks into a whole-scene COLLADA export that the
// engine wrote without them, in place and line by line.
#pragma once

#include <QString>

// Each node whose id ends in "_<N>_<G>_geometry" (the engine's layer name of
// panel N/G) gets the data block of that live panel in front of its </node>;
// blocks an earlier run left there are replaced, so a second run changes
// nothing. Roof polygon nodes are left alone. True when at least one panel was
// embedded and the file saved; embeddedCount (when given) takes the number of
// panels embedded. The outcome and every node without a panel go to the run log.
bool EmbedPanelsToDaeFile(const QString& DaeFile, int* embeddedCount = nullptr);
