// The selection tool and the menu of a selected item (PopupMenu1): move,
// hide or delete one billboard or its whole group, delete a measure or a
// whole outline, show all, unselect; and the lists of billboards and icons.
#pragma once

#include <QString>

// Follows the checked state of "SelectMeasuringBtn": a right click then
// selects a measure, billboard or sphere. The picking tools are released while it is on.
void SelectMeasuringBtnClick();

// The next Shift+click places the selected billboard (1), or its whole group (2).
void MovethisoneClick();
void MoveAllgroup1Click();
void HideThisoneClick();
void HidegroupClick();
// A sphere, a billboard, a measure, or every segment of a selected outline.
void DeleteThisOneClick();
// Every billboard of the selected one's group, from the last down; a group
// of spheres takes all sphere markers with it.
void DeleteGroupClick();
void Showwall1Click();
void Unselect1Click();

// The three lists (measures, billboards, spheres) shown or hidden together,
// by the checked state of "ShowMeasurementsAndBillboards".
void ShowMeasurementsAndBillboardsClick();
// Shows (flag 1) or hides (0) the labels of measures.
void ShowHideMeasuringBilboard(int flag);
// Writes the billboards, map frame, to ORVO_T + "Billboards.csv" and shows
// them in the grid form. Returns the file written, "" when it can't be.
QString ListIconsMnuClick();
