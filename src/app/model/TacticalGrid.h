// The tactical grid beside a model: "TacticalG.shp" in the model's folder.
#pragma once

// Loads the grid when the model's folder holds one: its names decide
// HebrewGrid, the grid button shows and the status strip says which.
void TryToLoadtacticalGrid();
