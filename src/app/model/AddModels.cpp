#include "AddModels.h"

#include <QFileInfo>
#include <QRandomGenerator>
#include <QSet>
#include <algorithm>
#include <chrono>
#include <thread>

#include "LayerTable.h"
#include "ModelGisFiles.h"
#include "ModelPaths.h"
#include "ModelSession.h"
#include "ReadModel.h"
#include "Viewport.h"
#include "app/services/NumberHelpers.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/SessionPaths.h"
#include "geo/Frames.h"
#include "scene/EngineSession.h"
#include "scene/engine_interface.h"
#include "solar/design/PanelDaeImport.h"
#include "solar/design/PanelImport.h"
#include "solar/analysis/ShadingRayFile.h"
#include "solar/design/RoofVisibility.h"

namespace {

QSet<QString> presentLayerNames() {
    QSet<QString> names;
    const LayerTable& table = layerTable();
    for (int k = 0; k < table.NL; ++k) names.insert(QString::fromUtf8(table.layerName[k]));
    return names;
}

// Each added file's layers get a prefix of their own: "P" and a number above
// every number the present layers start with.
std::string nextPrefix() {
    const LayerTable& table = layerTable();
    int largest = 0;
    for (int k = 0; k < table.NL; ++k) largest = std::max(largest, GetFirstNumber(QString::fromUtf8(table.layerName[k])));
    return "P" + std::to_string(largest + 1 + static_cast<int>(QRandomGenerator::global()->bounded(80)));
}

// A shape or KML file becomes a ".DXF" beside it; "" when it can't.
std::string vectorAsDxf(const std::string& path, bool kml) {
    const std::string dxf = WithExtension(path, ".DXF");
    std::string error;
    if (ExportVectorToDxf(path, dxf, error)) return dxf;
    if (kml) MyShowMessage("File can't be open\n\r" + QString::fromStdString(error));
    return "";
}

// The added file's coordinates into the scene's local frame: a model file's
// lose the model's centre, the map-frame files this program writes (panel
// files, roof polygons, shading rays) lose the centre and the Offset. A layer the
// program exported is in the local frame already.
void moveIntoLocalFrame(const char* name, bool mapFrame) {
    float red[3] = {1, 0, 0};
    if (At3d_2DVertexCount(name) > 0) At3d_SetMaterial_F3(name, 3, red);
    if (QString::fromUtf8(name).contains("EXPORTED")) return;
    const double centre[3] = {mapFrame ? OC(0) : frameState().OriginalobjectCenter[0],
                              mapFrame ? OC(1) : frameState().OriginalobjectCenter[1],
                              mapFrame ? OC(2) : frameState().OriginalobjectCenter[2]};
    double v[3];
    for (int i = 0, n = At3d_VertexCount(name); i < n; ++i) {
        At3d_GetVertex(i, name, v);
        for (int a = 0; a < 3; ++a) v[a] -= centre[a];
        At3d_SetVertex(i, name, v);
    }
    for (int i = 0, n = At3d_2DVertexCount(name); i < n; ++i) {
        At3d_2DGetVertex(i, name, v);
        for (int a = 0; a < 3; ++a) v[a] -= centre[a];
        At3d_2DSetVertex(i, name, v);
    }
}

void addModels(const QStringList& files, std::chrono::milliseconds settle) {
    ModelSession& model = modelSession();
    const std::string viewFile = sessionPaths().ORVO_T + "Solar.vpt";
    const std::string saved = SaveViewport(viewFile);
    int NL = 0, NF = 0;
    GetTotalVertices(NL, NF);
    const QSet<QString> before = presentLayerNames();
    QSet<QString> mapFrameLayers;
    At3d_WriteFlag_LIBFLAG_NO_DRAW(1);

    for (const QString& file : files) {
        std::string path = file.toStdString();
        const QString suffix = QFileInfo(file).suffix().toLower();
        int type = AT3D_READ_OBJ;
        if (suffix == "dxf") type = AT3D_READ_DXF;
        if (suffix == "3ds") type = AT3D_READ_3DS;
        if (suffix == "dae") type = AT3D_READ_DAE;
        if (suffix == "shp" || suffix == "kml") {
            path = vectorAsDxf(path, suffix == "kml");
            if (path.empty()) continue;
            type = AT3D_READ_DXF;
        }
        const int xRotationFlag = type == AT3D_READ_OBJ ? 1 : 0;
        // A file still being written (as in the inbox) is passed over.
        if (settle.count() > 0) std::this_thread::sleep_for(settle);
        const QFileInfo info(QString::fromStdString(path));
        if (!info.exists() || info.size() < 200) continue;
        const double position[3] = {0, 0, 0};
        const QSet<QString> beforeFile = presentLayerNames();
        if (!At3d_Mesh_Static_Read_And_Add(type, path.c_str(), 1, xRotationFlag, position, nextPrefix().c_str()))
            continue;
        bool ownFile = false;
        if (type == AT3D_READ_DAE) {
            ownFile = ReadPanelsOfModelFile(QString::fromStdString(path)) > 0;
            AddPanelsT();
        }
        GetTotalVertices(NL, NF);
        for (const QString& layer : presentLayerNames() - beforeFile)
            if (ownFile || layer.contains(ROOF_POLYGON_LAYER) || layer.contains(SHADING_RAYS_GEOMETRY))
                mapFrameLayers.insert(layer);
        if (!model.TSImportedFiles.contains(file)) model.TSImportedFiles << file;
        model.LastPathFileName = file.toStdString();
    }

    GetTotalVertices(NL, NF);
    const LayerTable& table = layerTable();
    for (int k = 0; k < table.NL; ++k) At3d_Set_Layer_GPU_Update(table.layerName[k], 1);
    for (int k = 0; k < table.NL; ++k) {
        const QString name = QString::fromUtf8(table.layerName[k]);
        if (!before.contains(name)) moveIntoLocalFrame(table.layerName[k], mapFrameLayers.contains(name));
    }

    At3d_StatusBar_Set_Text(("Ready after adding " + std::to_string(files.size()) + " model(s)").c_str());
    // Restoring the view ends the no-draw bracket and draws.
    if (saved.empty() || !RestoreViewport(saved)) {
        At3d_WriteFlag_LIBFLAG_NO_DRAW(0);
        At3d_RenderOpenGLScene();
    }
}

}  // namespace

void AddmodelsClick(const QStringList& files) { addModels(files, std::chrono::milliseconds(333)); }

void AddCompleteModels(const QStringList& files) { addModels(files, std::chrono::milliseconds(0)); }

void AddmodelsMenuClick() {
    const QStringList files = AskForModels();
    if (!files.isEmpty()) AddmodelsClick(files);
}
