// The table of the scene's layers: names in engine order and the range of
// each layer's vertices in the engine's running count. A snapshot, right
// only after GetTotalVertices.
#pragma once

#include "scene/engine_interface.h"

// The table holds this many layers; more are counted but not listed.
constexpr int LAYER_TABLE_MAX = 1000;

struct LayerTable {
    char layerName[LAYER_TABLE_MAX][AT3D_NAME_SIZE] = {};
    int LayerFirstVertex[LAYER_TABLE_MAX] = {};
    // One past the layer's last vertex: the running count after it.
    int LayerLastVertex[LAYER_TABLE_MAX] = {};
    int NL = 0;
    int NF = 0;
    int NV = 0;
};

LayerTable& layerTable();
void resetLayerTable();

// Walks the engine's layers into the table; the vertex count is returned,
// the layers in NL and the faces in NF. The first layer's texture, when it
// has one, becomes the model's JPG, with GRAY and SEPIA beside it.
int GetTotalVertices(int& NL, int& NF);
