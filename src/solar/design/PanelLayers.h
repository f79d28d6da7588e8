// The tie between a panel and its scene layer. The engine names a panel's
// layer after its file and geometry id with "/" as "_", so the name can be
// read back from the layer: Panel-12_417_12_417_geometry is panel 12/417.
#pragma once

#include <QString>
#include <QStringList>

#include "PanelStruct.h"

// The engine's layers in order, at most the thousand the scene table holds.
QStringList SceneLayerNames();
// N/G of a panel layer; "UNKNOWN" for a layer that is no panel's, and ""
// for one that starts with "P" but doesn't end in "_geometry".
QString GetPanelNameFromLayer(const QString& Layer);
// Index of the panel behind a layer; -1000 when the layer is no panel layer,
// -1 when it names a panel that isn't in the store.
int GetPanelIndexFromLayer(const QString& Layer);
// The first scene layer that belongs to the panel; "" when none.
QString GetLayerOfPanel(const PANEL& panel);
// The panel's layer name without its "_geometry" tail; "" when none.
QString GetPrefixOfPanel(const PANEL& panel);
