#include "ObliqueRecords.h"

#include <gdal_priv.h>

ObliqueStore& obliqueStore() {
    static ObliqueStore store;
    return store;
}

void resetObliqueStore() {
    ObliqueStore& store = obliqueStore();
    for (auto& [path, layer] : store.layers) GDALClose(layer);
    store = ObliqueStore{};
}
