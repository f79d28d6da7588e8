#include "PanelsModelFile.h"

#include <QDateTime>
#include <QFileInfo>
#include <QStringList>
#include <vector>

#include "PanelColladaWriter.h"
#include "PanelDaeEmbed.h"
#include "PanelDaeImport.h"
#include "PanelEditing.h"
#include "PanelLayers.h"
#include "PanelStore.h"
#include "PanelStoreOps.h"
#include "PanelText.h"
#include "PlacementDae.h"
#include "app/services/FileDialogs.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/RunLog.h"
#include "geo/Frames.h"
#include "scene/engine_interface.h"

namespace {

struct LayerFlag {
    QByteArray name;
    int outputFlag = 0;
    bool panel = false;
};

std::vector<LayerFlag> layerFlags() {
    std::vector<LayerFlag> layers;
    char name[AT3D_NAME_SIZE] = {};
    for (void* layer = At3d_GetNextLayer(nullptr, name); layer; layer = At3d_GetNextLayer(layer, name))
        layers.push_back({name, At3d_GetLayerOutputFlag(name), GetPanelIndexFromLayer(QString::fromUtf8(name)) >= 0});
    return layers;
}

void shiftPanels(const std::vector<LayerFlag>& layers, double sign) {
    const double delta[3] = {sign * OC(0), sign * OC(1), sign * OC(2)};
    for (const LayerFlag& layer : layers)
        if (layer.panel) At3d_Mesh_Static_Translate(layer.name.constData(), 1, delta);
}

}  // namespace

QString Save3Click(const QString& modelFolder) {
    if (panelStore().NumPanelsCreated == 0) {
        MyShowMessage("No panels to save");
        return {};
    }
    const QString file = modelFolder + "Panels_" + QDateTime::currentDateTime().toString("yyyyMMdd_hhmmss") + ".dae";
    const std::vector<LayerFlag> layers = layerFlags();
    for (const LayerFlag& layer : layers) At3d_SetLayerOutputFlag(layer.name.constData(), layer.panel ? 1 : 0);
    // The panels go out in the map frame, as their own files are.
    shiftPanels(layers, +1);
    const bool written = At3d_Write(AT3D_WRITE_DAE, file.toUtf8().constData(), 1) != 0;
    shiftPanels(layers, -1);
    for (const LayerFlag& layer : layers) At3d_SetLayerOutputFlag(layer.name.constData(), layer.outputFlag);
    int embedded = 0;
    if (!written || !EmbedPanelsToDaeFile(file, &embedded)) {
        PrintRunLog("Save3Click: could not write %s\n", file.toUtf8().constData());
        return {};
    }
    PrintRunLog("Save3Click: %d panels in %s\n", embedded, file.toUtf8().constData());
    return file;
}

bool RestorePanelsModel(const QString& file) {
    if (!QFileInfo::exists(file)) return false;
    DeleteAllPanels();
    panelStore().NumPanelsCreated = 0;
    if (placementHooks().addModels) placementHooks().addModels(QStringList{file});
    return true;
}

QString Restore1Click(const QString& modelFolder) {
    QString file = modelFolder;
    if (!OrvoOpenFile(file, "DAE", "Panels model file | Panels_*.DAE", "Open the panels model file(input)",
                      modelFolder))
        return {};
    return RestorePanelsModel(file) ? file : QString();
}

PanelFolderChanges MatchPanelFolderToStore() {
    PanelFolderChanges changes;
    const PanelStore& store = panelStore();
    QStringList kept;
    for (int i = 0; i < store.NumPanelsCreated; ++i) {
        const PANEL& panel = store.panels[static_cast<std::size_t>(i)];
        const QString file = QFileInfo(PanelText(panel.Filename)).absoluteFilePath();
        kept << file;
        if (SaveThePanel(panel)) changes.written << file;
    }
    for (const QString& file : PanelFilesOfModel()) {
        if (kept.contains(file)) continue;
        SoftDeleteFile(file);
        changes.setAside << file;
    }
    return changes;
}
