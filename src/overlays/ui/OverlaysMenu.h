// The map overlays' items of the main form: the tactical grid, shape files
// and the web map services.
#pragma once

class QMainWindow;

// Adds the menu "Map" to the form's menu bar: "Import shape file", "Read
// shape file" (its report), "Import tactical grid", "View Google map",
// "Terrain elevation from the web" and "Download orthophoto".
void AddOverlaysMenu(QMainWindow* form);
