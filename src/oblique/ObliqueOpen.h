// The oblique search as a model's open runs it, through the open's hook.
#pragma once

#include <string>

// Drops the last model's catalogue layers, lookups and facades, loads the
// facade containers of the open model, then looks for the catalogues (or the
// OPK list) of the model at modelPath. The number of oblique or OPK photographs.
int SearchObliquesOfModel(const std::string& modelPath);

// Puts SearchObliquesOfModel into the open's photograph hook; the window
// does this at start-up and the CLI before it opens a model.
void InstallObliqueSearch();
