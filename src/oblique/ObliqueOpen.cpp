#include "ObliqueOpen.h"

#include "FacadeStore.h"
#include "ObliqueCatalogue.h"
#include "ObliqueRecords.h"
#include "app/model/ModelPhotographs.h"

int SearchObliquesOfModel(const std::string& modelPath) {
    // Layers of the last model stay open otherwise, and its running numbers would map to them.
    resetObliqueStore();
    resetFacadeState();
    LoadFacades();
    return FindObliqueCatalogues(modelPath);
}

void InstallObliqueSearch() {
    modelPhotoHooks().findPhotographs = [](const std::string& modelPath) { SearchObliquesOfModel(modelPath); };
}
