#include "CatalogHooks.h"

CatalogHooks& catalogHooks() {
    static CatalogHooks hooks;
    return hooks;
}

void resetCatalogHooks() { catalogHooks() = CatalogHooks{}; }
