// What the catalogue keeps for the session: the last folder searched for
// models and the catalogue table made from it.
#pragma once

#include <QString>

struct CatalogState {
    // Asked once a session for "Explore 3D models"; the settings keep it too ("Last Drive3D").
    QString GlobalWhereSearched3dModels;
    // ORVO_T + "models.csv".
    QString FNCSV;
    // What the last search left: the models listed in FNCSV, and the
    // analysed and unanalysed models of the last "Find unanalyzed models".
    int KamaModels = 0;
    int KamaAnalyzed = 0;
    int KamaUnanalyzed = 0;
};

CatalogState& catalogState();
void resetCatalogState();
