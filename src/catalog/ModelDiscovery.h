// Finding analysed models on disk by their information files, the catalogue
// table "models.csv" and its coverage layer, and the models not analysed yet.
#pragma once

#include <QString>
#include <QStringList>

inline constexpr const char* MODELS_CSV_HEADER = "Project,Created,LastAccessed,Faces,Comment,Model,Lat,Lon,East,North";
inline constexpr const char* COVERAGE_LAYER_NAME = "3DmodelsCoverage";
inline constexpr const char* UNANALYZED_HEADER = "Unanalyzed model";

// The coverage colours (toolkit colours, red lowest), taken in turn by a
// file's place in the list; each differs from the next, the last from the first.
inline constexpr int COVERAGE_COLORS[8] = {0x0000FF, 0x00C000, 0xFF0000, 0x00FFFF,
                                           0xFF00FF, 0xFFFF00, 0x0080FF, 0x800080};

// The folder and all folders below it, each ending in "/", the folder first.
QStringList FolderTree(const QString& folder);

// The information files ("*inf.csv", any case) of the folder tree of
// GlobalWhereSearched3dModels, asking for the folder when the session has
// none yet. Empty on cancel.
QStringList FindModelsFromInf();

// Fills FNCSV (ORVO_T + "models.csv") and the coverage layer
// ORVO_T + "3DmodelsCoverage.shp" from the files; the count of models listed.
// Files of an older form (fewer than 16 fields) are deleted with their
// thumbnail, "icon.ico" and "desktop.ini"; a missing model is left out.
int Prepare3DModelsLocation(const QStringList& TS);

// Menu "Explore 3D models": the browser over models.csv, or why not.
enum class ExploreOutcome { NoFiles, NoRelevantData, Shown };
ExploreOutcome DoExploreModels();

// The header "Unanalyzed model", then one row per model found by its ".mtl"
// (tile folders aside) without an information file: OBJ path, time stamp,
// "Has PRJ" / "No PRJ". analyzed counts those with one. The folder is asked
// every time. Empty on cancel.
QStringList FindUnopenedModels(int& analyzed);

// Menu "Find unanalyzed models": the list saved as ORVO_T + "Unanalyzed_N.csv"
// and shown; the file written, "" when there is nothing to show.
QString Findunanalyzedmodels1Click();
