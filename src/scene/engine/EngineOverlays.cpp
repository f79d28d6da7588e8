// Screen overlays: the status bar and the view decals.
#include <algorithm>
#include <cstring>
#include <string>

#include "EngineState.h"

using engine::engineState;

namespace {

bool knownDecalType(const char* typeName) {
    if (!typeName) return false;
    return std::strcmp(typeName, "Top_Left") == 0 || std::strcmp(typeName, "Top_Right") == 0 ||
           std::strcmp(typeName, "Anywhere") == 0;
}

std::string cutName(const char* name) {
    char buffer[AT3D_NAME_SIZE];
    engine::copyName(buffer, name ? std::string(name) : std::string());
    return std::string(buffer);
}

engine::ViewDecal* findDecal(const std::string& name) {
    for (auto& decal : engineState().decals)
        if (decal.name == name) return &decal;
    return nullptr;
}

void fillDecal(engine::ViewDecal& decal, const char* path, const char* typeName, float size, int useFrame,
               float rotateAngle, float screenX, float screenY, int visible) {
    decal.path = path ? path : "";
    decal.typeName = typeName;
    decal.size = size;
    decal.useFrame = useFrame;
    decal.rotateAngle = rotateAngle;
    decal.screenX = screenX;
    decal.screenY = screenY;
    decal.visible = visible;
}

}  // namespace

// ---- Status bar ----

int At3d_StatusBar_Show(int show, int height) {
    if (height < 0) return 0;
    auto& bar = engineState().statusBar;
    bar.shown = show ? 1 : 0;
    bar.height = height;
    return 1;
}

int At3d_StatusBar_Set_Text(const char* text) {
    engineState().statusBar.text = text ? text : "";
    return 1;
}

// Copies at most size - 1 bytes and always terminates.
int At3d_StatusBar_Get_Text(char* buffer, int size) {
    if (!buffer || size <= 0) return 0;
    const std::string& text = engineState().statusBar.text;
    const std::size_t n = std::min(text.size(), std::size_t(size) - 1);
    std::memcpy(buffer, text.data(), n);
    buffer[n] = '\0';
    return 1;
}

int At3d_StatusBar_Set_Font_Color(int color) {
    engineState().statusBar.fontColor = color;
    return 1;
}

int At3d_StatusBar_Set_Font_Size(int size) {
    if (size <= 0) return 0;
    engineState().statusBar.fontSize = size;
    return 1;
}

// ---- View decals ----

// A second Add with a name already present replaces that decal.
int At3d_View_Decal_Add(const char* name, const char* path, const char* typeName, float size, int useFrame,
                        float rotateAngle, float screenX, float screenY, int visible) {
    if (!name || !*name || !knownDecalType(typeName)) return 0;
    const std::string key = cutName(name);
    engine::ViewDecal* decal = findDecal(key);
    if (!decal) {
        engine::ViewDecal fresh;
        fresh.name = key;
        engineState().decals.push_back(fresh);
        decal = &engineState().decals.back();
    }
    fillDecal(*decal, path, typeName, size, useFrame, rotateAngle, screenX, screenY, visible);
    return 1;
}

int At3d_View_Decal_Set_Data(const char* name, const char* path, const char* typeName, float size, int useFrame,
                             float rotateAngle, float screenX, float screenY, int visible) {
    if (!name || !*name || !knownDecalType(typeName)) return 0;
    engine::ViewDecal* decal = findDecal(cutName(name));
    if (!decal) return 0;
    fillDecal(*decal, path, typeName, size, useFrame, rotateAngle, screenX, screenY, visible);
    return 1;
}
