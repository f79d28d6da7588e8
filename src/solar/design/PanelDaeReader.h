// Reading one panel file back into a PANEL, for the information dialog.
#pragma once

#include <QString>

#include "PanelStruct.h"

// The panel in the <panel_info> block of one panel file. A file that can't be
// opened, or has no such block, gives a record with only the defaults:
// ModuleType "UnknownType", Filename the path, Opacity 100. power_rating_stc
// is taken as watts here, unlike in GetPanelsFromDae.
PANEL ReadPanelDAE(const QString& DAE);
