#include "RoofVisibility.h"

#include <cstring>
#include <string>
#include <vector>

#include "scene/engine_interface.h"

void ShowHideroofplanes(int flag) {
    std::vector<std::string> roofs;
    char name[AT3D_NAME_SIZE] = {};
    for (void* layer = At3d_GetNextLayer(nullptr, name); layer; layer = At3d_GetNextLayer(layer, name))
        if (std::strstr(name, ROOF_POLYGON_LAYER)) roofs.emplace_back(name);
    for (const std::string& roof : roofs) At3d_SetLayerOutputFlag(roof.c_str(), flag ? 1 : 0);
    At3d_RenderOpenGLScene();
}
