// The flythrough's items of the main form's view menu.
#pragma once

class QMenu;
class QMainWindow;

// Adds "Flytrough" (checked while a path is walked) and "Show Flytrough
// waypints" to menu, then "Create video" and "Create panorama", and lets
// the stepping set form's caption.
void AddFlythroughMenuItems(QMainWindow* form, QMenu* menu);
