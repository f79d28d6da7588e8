#include "PanelStore.h"

#include <memory>

#include "app/services/FileHelpers.h"

PanelStore& panelStore() {
    static PanelStore store;
    return store;
}

// Rebuilt in place: a fresh PanelStore is a megabyte, too much for a temporary on the stack.
void resetPanelStore() {
    PanelStore& store = panelStore();
    std::destroy_at(&store);
    std::construct_at(&store);
}

bool SetPanelFoldersForModel(const QString& modelFolder) {
    PanelStore& store = panelStore();
    store.ModelFolder = modelFolder;
    store.PANELSFOLDER = modelFolder + "PANELS/";
    store.SHADINGFOLDER = store.PANELSFOLDER + "SHADING/";
    return OrvoCreateDir(store.PANELSFOLDER) && OrvoCreateDir(store.SHADINGFOLDER);
}
