// A small library container of panels (PANEL_LIST). Nothing in the planner
// fills one; it stays for tools that collect panels outside the store.
#pragma once

#include <QString>

#include "PanelStruct.h"

// Exchange sort, ascending by the number at the end of Name (the group of N/G).
void SortPanelList(PANEL_LIST* list);
// Out-of-range indices are ignored; the tail moves down.
void DeletePanelFromList(PANEL_LIST* list, int index);
// Removes the first panel of that name, ignoring case.
void DeletePanelFromListByName(PANEL_LIST* list, const QString& name);
void ClearPanelList(PANEL_LIST* list);
// A copy of the entry; an all-zero record for an index out of range.
PANEL GetPanel(const PANEL_LIST* list, int index);
