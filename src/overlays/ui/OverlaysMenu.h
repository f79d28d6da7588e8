// The map overlays' items of the main form: the tactical grid, shape files
// and the web map services.
#pragma once

class QMainWindow;

// Adds the menu "Map" to the form's menu bar with "Import tactical grid".
void AddOverlaysMenu(QMainWindow* form);
