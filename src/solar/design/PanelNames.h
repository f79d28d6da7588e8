// Panel names "N/G" (N the running panel number, G the group number), the
// group numbers of a placement, and finding a panel by name.
#pragma once

#include <QString>

#include "PanelStruct.h"

// First live panel whose Name equals Name, ignoring case; -1 if none.
int GetPanelIndexFromName(const QString& Name);
// The highest N of the names "N/G" in the store; 0 when none.
int HighestPanelNumber();
// One above the highest N alive, with GlobalPanelGroup kept within 1..990.
QString GetNewPanelname();
// The text behind "/" in Name (at most 12 characters); "" without "/".
QString GetGroup(const PANEL& panel);
// The number behind "/" in Name; -1 if Name has no "/".
int GetPanelGroup(const PANEL& panel);
// The digits at the end of name as a number; 0 when there are none.
int ExtractNumericSuffix(const QString& name);

// The panel's own file: PANELSFOLDER + "Panel-" + name with "/" as "_" + ".dae".
QString PanelFileNameFromName(const QString& name);
// Reseeds and draws the base group of a new placement into GlobalPanelGroup: 1 to 995.
int NewPlacementGroup();
// Group of row rowIndex (from 0) of a placement: base + 10 per row, wrapped below 1000.
int RowGroupNumber(int baseGroup, int rowIndex);
// The construction letter a new panel gets from its group: 'A' + group modulo 26.
char GroupLetterOfGroup(int group);
