#include "CatalogState.h"

CatalogState& catalogState() {
    static CatalogState state;
    return state;
}

void resetCatalogState() { catalogState() = CatalogState{}; }
