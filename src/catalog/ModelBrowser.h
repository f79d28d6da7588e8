// The logic of the model browser TFormModels: its table, what a selected row
// means, and the actions of its buttons. The form shows and calls these.
#pragma once

#include <QString>

#include "CatalogHooks.h"
#include "app/services/GridFiles.h"

// The setting of the web map's address; the query "?q=lat,lon&z=15&t=k" follows it.
inline constexpr const char* WEB_MAP_SECTION = "Orvo";
inline constexpr const char* WEB_MAP_KEY = "Web Map";
inline constexpr const char* WEB_MAP_DEFAULT = "https://maps.google.com/maps";

// The table as the browser shows it: the file's first row as titles, the
// data rows sorted on request.sortColumn (text order) when it is set.
GridRows LoadBrowserTable(const ModelBrowserRequest& request);

// What a selected row stands for.
struct ModelSelection {
    int SelectedRow = 0;
    QString MODEL;
    QString IMAGE;           // the thumbnail's path, whether it exists or not
    double ModelLat = 0;
    double ModelLon = 0;
    double ModelEast = 0;
    double ModelNorth = 0;
    QString label;           // LabelkamaModels
    bool showOnMapVisible = false;
    QString showOnMapCaption;  // "Show in Google map" or "Add PRJ"
    bool showIn2DVisible = false;
};

// A row of the grid (row 0 being the titles). Fewer than 4 columns: the
// list of unanalysed models; else the catalogue, which has positions.
ModelSelection WorkBookGrid1SelectCell(const GridRows& rows, int ARow);

// Whether a folder above the model (up to 10 levels) is a "3dmodels" folder.
// The names are compared in upper case against a lower-case name, so none
// ever is: "Show in 2D" stays hidden. Kept so on purpose.
bool ModelUnder3dModelsFolder(const QString& model);

// The web map's address for a position.
QString GoogleMapAddress(double Lat, double Lon);

// "Open the 3D model": GlobalARGVforDebug = model, then the window's open.
void OpenThe3DModel(const QString& model);

// "Show in Google map" / "Add PRJ" by the caption. True when it acted
// (then the browser is minimised): the web map was asked for, or a ".PRJ"
// was copied beside the model and the model opened.
bool ShowOnMapClick(const QString& caption, const ModelSelection& selection);

// "Delete the model": asks with the model's folder; on Yes deletes the whole
// folder. True when it was deleted (the browser then closes and explores again).
bool DeleteTheModel(const QString& model);

// "Show in 2D": the history file named by "Last History" with its ZOOM line
// around East, North (200 m each way) and the rest dropped, saved as
// ORVO_T + "t.2hs" and opened by association. The file written, "" when the
// history file is missing.
QString ShowSolvane(double East, double North);

// The history text with its ZOOM line replaced and the lines after it dropped.
QString RewriteHistoryZoom(const QString& history, double East, double North);
