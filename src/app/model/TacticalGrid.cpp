#include "TacticalGrid.h"

#include "ModelGisFiles.h"
#include "ModelSession.h"
#include "app/session/MainFormState.h"
#include "scene/FileNameCase.h"

void TryToLoadtacticalGrid() {
    ModelSession& model = modelSession();
    model.TacticalGridFile.clear();
    model.HebrewGrid = false;
    const std::string grid = FindFileNoCase(ModelFolder() + "TacticalG.shp");
    bool hebrew = false;
    if (grid.empty() || !ReadTacticalGridNames(grid, hebrew)) return;
    model.TacticalGridFile = grid;
    model.HebrewGrid = hebrew;
    SetControlVisible("CenterToGridBtn", true);
    SSetTextAt3W(QString(hebrew ? " HEBREW " : "English") + " Tactical grid loaded");
}
