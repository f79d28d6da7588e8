#include "LayerTable.h"

#include <cstring>
#include <memory>

#include "ModelPaths.h"
#include "ModelSession.h"

LayerTable& layerTable() {
    static std::unique_ptr<LayerTable> table = std::make_unique<LayerTable>();
    return *table;
}

void resetLayerTable() { layerTable() = LayerTable{}; }

int GetTotalVertices(int& NL, int& NF) {
    LayerTable& table = layerTable();
    table.NL = table.NF = table.NV = 0;
    char name[AT3D_NAME_SIZE] = {};
    for (void* layer = At3d_GetNextLayer(nullptr, name); layer; layer = At3d_GetNextLayer(layer, name)) {
        const int vertices = At3d_VertexCount(name);
        if (table.NL < LAYER_TABLE_MAX) {
            std::memcpy(table.layerName[table.NL], name, AT3D_NAME_SIZE);
            table.LayerFirstVertex[table.NL] = table.NV;
            table.LayerLastVertex[table.NL] = table.NV + vertices;
            ++table.NL;
        }
        table.NV += vertices;
        table.NF += At3d_FaceCount(name);
    }
    if (table.NL > 0) {
        char texture[AT3D_PATH_SIZE] = {};
        if (At3d_GetTextureName(table.layerName[0], texture) && texture[0]) {
            ModelSession& model = modelSession();
            model.JPG = texture;
            model.GRAY = WithoutExtension(model.JPG) + "_GRAY.JPG";
            model.SEPIA = WithoutExtension(model.JPG) + "_SEPIA.JPG";
        }
    }
    NL = table.NL;
    NF = table.NF;
    return table.NV;
}
