// The map overlays' items of the main form: the tactical grid, shape files
// and the web map services.
#pragma once

class QMainWindow;

// Adds the menu "Map" to the form's menu bar: "Import shape file", "Read
// shape file" (its report) and "Import tactical grid".
void AddOverlaysMenu(QMainWindow* form);
