#include "SceneLayers.h"

#include <QSaveFile>
#include <cstring>

#include "LayerTable.h"
#include "ModelSession.h"
#include "app/services/GridFiles.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/SessionPaths.h"
#include "app/services/ToolkitColor.h"
#include "geo/Frames.h"
#include "scene/EngineSession.h"
#include "scene/engine_interface.h"

namespace {

void toLocal(const TGIS_Point3D& p, double local[3]) {
    local[0] = p.X - OC(0);
    local[1] = p.Y - OC(1);
    local[2] = p.Z - OC(2);
}

}  // namespace

int ParseFaces() {
    int faces = 0;
    char name[AT3D_NAME_SIZE] = {};
    for (void* layer = At3d_GetNextLayer(nullptr, name); layer; layer = At3d_GetNextLayer(layer, name))
        if (At3d_GetLayerOutputFlag(name)) faces += At3d_FaceCount(name);
    return faces;
}

QString LayerListText() {
    const LayerTable& table = layerTable();
    QString text;
    for (int k = 0; k < table.NL; ++k)
        text += QString::asprintf("%s  %d  %d  [%d] \n ", table.layerName[k], table.LayerFirstVertex[k],
                                  table.LayerLastVertex[k], k);
    return text;
}

void ListlayersClick() {
    int NL = 0, NF = 0;
    GetTotalVertices(NL, NF);
    MyShowMessage(LayerListText());
}

std::string WriteLayersList(QString& caption) {
    int NL = 0, NF = 0;
    GetTotalVertices(NL, NF);
    const LayerTable& table = layerTable();
    QByteArray text = "Layer,Vertices3D,Vertices2D,Active,Faces\n";
    int faces = 0, vertices3D = 0, vertices2D = 0;
    // Listing repaints every layer blue, as the layer form always has.
    float blue[3];
    ToolkitColorToRgb(0xFF0000, blue);
    for (int k = 0; k < table.NL; ++k) {
        const char* name = table.layerName[k];
        const int active = At3d_GetLayerOutputFlag(name);
        const int v3 = At3d_VertexCount(name), v2 = At3d_2DVertexCount(name), f = At3d_FaceCount(name);
        // A name holding a comma or a quote is quoted, so the list reads back with the name whole.
        text += (CsvLine({QString::fromUtf8(name)}) + QString::asprintf(",%d,%d,%d,%d  \n", v3, v2, active, f)).toUtf8();
        faces += f;
        vertices3D += v3;
        vertices2D += v2;
        At3d_SetMaterial_F3(name, 3, blue);
    }
    caption = QString::asprintf(" %d Faces %d 3Dvertices %d 2Dvertices", faces, vertices3D, vertices2D) +
              QString::number(table.NL) + " Layers";
    const std::string path = sessionPaths().ORVO_T + "Layers.csv";
    QSaveFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) return "";
    return path;
}

GridRows ReadLayersList(const std::string& path) {
    GridRows rows;
    if (!LoadCsvGrid(QString::fromStdString(path), rows) || rows.isEmpty()) return {};
    rows.removeFirst();
    return rows;
}

int RefreshSceneLayers(const std::vector<LayerRow>& rows) {
    for (const LayerRow& row : rows) At3d_SetLayerOutputFlag(row.name.c_str(), row.active ? 1 : 0);
    At3d_RenderOpenGLScene();
    return ParseFaces();
}

void AddLineToScene(const QString& Name, const TGIS_Point3D& P1, const TGIS_Point3D& P2, int TC, float width) {
    MEASURE_DATA item{};
    std::strncpy(item.id, Name.toUtf8().constData(), AT3D_NAME_SIZE - 1);
    item.visible_Flag = 1;
    item.lineWidth = width;
    ToolkitColorToRgb(TC, item.rgb_Line_Array);
    toLocal(P1, item.vertex1);
    toLocal(P2, item.vertex2);
    At3d_MeasureList_Add_Item(item.id, item.visible_Flag, item.observer_Flag, item.obstruction_Flag, item.lineWidth,
                              item.rgb_Line_Array, item.vertex1, item.vertex2, item.observer, item.obstruction);
}

void AddSphere(double East, double North, double Z, double Diameter, int TC) {
    ModelSession& model = modelSession();
    const std::string name = "S" + std::to_string(++model.SphereNumber);
    double position[3];
    toLocal(TGIS_Point3D{East, North, Z, 0}, position);
    float rgb[3];
    ToolkitColorToRgb(TC, rgb);
    At3d_Sphere_Marker_Add(name.c_str(), Diameter, position, rgb, rgb, 0, 0, 0, 1);
    model.CENTERSPHEREVISIBLE = true;
}

void SetLineColor(int I, int TC) {
    MEASURE_DATA item{};
    if (!Get_MeasureList_Item(I, &item)) return;
    ToolkitColorToRgb(TC, item.rgb_Line_Array);
    item.lineWidth = TC == 255 ? 12 : 2;
    At3d_MeasureList_Replace_Item(I, item.id, item.visible_Flag, item.observer_Flag, item.obstruction_Flag,
                                  item.lineWidth, item.rgb_Line_Array, item.vertex1, item.vertex2, item.observer,
                                  item.obstruction);
}
