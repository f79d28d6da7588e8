// The panel data block: every attribute of a PANEL as one element a line
// inside an <extra>, so that a line-based reader can take each alone.
#pragma once

#include <QStringList>

#include "PanelStruct.h"

// Appends the block of a panel's own file (6 blanks of indent at <extra>).
void EmbedPanelDataInCollada(QStringList& content, const PANEL& panel);

// Appends the block for a panel node in a large exported model: two blanks
// deeper, after a small "solar_panel_specs" block, with the energy data, the
// store index and a few differences of form.
void AddPanelDataToStringList(QStringList& content, const PANEL& panel, int panelIndex);
