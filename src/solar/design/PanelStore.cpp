#include "PanelStore.h"

#include <memory>

#include "app/services/FileHelpers.h"
#include "scene/FileNameCase.h"

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
    // A folder brought from elsewhere may be "Panels/": it is the same one.
    const auto existing = [](const QString& path) {
        const std::string found = FindFileNoCase(path.toStdString());
        return found.empty() ? path : QString::fromStdString(found);
    };
    store.ModelFolder = modelFolder;
    store.PANELSFOLDER = existing(modelFolder + "PANELS") + "/";
    store.SHADINGFOLDER = existing(store.PANELSFOLDER + "SHADING") + "/";
    return OrvoCreateDir(store.PANELSFOLDER) && OrvoCreateDir(store.SHADINGFOLDER);
}
