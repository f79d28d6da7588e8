// What the catalogue keeps for the session: the last folder searched for
// models and the catalogue table made from it.
#pragma once

#include <QString>

struct CatalogState {
    // Asked once a session for "Explore 3D models"; the settings keep it too ("Last Drive3D").
    QString GlobalWhereSearched3dModels;
    // ORVO_T + "models.csv".
    QString FNCSV;
};

CatalogState& catalogState();
void resetCatalogState();
