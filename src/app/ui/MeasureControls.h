// The main form's controls of measuring and annotation: the "Measurements"
// menu, the tool buttons of the measure, observer, billboard and icon tools,
// and the two menus that pop up on the view (PopupMenu1 for a selected
// item, ShiftRightClickPopupmenu for a Shift+right-clicked point).
#pragma once

class QMenu;
class QMenuBar;
class QToolBar;
class QWidget;

void CreateMeasureMenu(QWidget* form, QMenuBar* bar);
void CreateMeasureToolButtons(QWidget* form, QToolBar* tools);
QMenu* CreatePopupMenu1(QWidget* form);
QMenu* CreateShiftRightClickPopupmenu(QWidget* form);
// Shows PopupMenu1's items for what is selected (PopupMenu1Popup).
void PreparePopupMenu1(QMenu* menu);
