#include "EngineSession.h"

#include <cstring>
#include <initializer_list>

EngineSession& engineSession() {
    static EngineSession session;
    return session;
}

void resetEngineSession() { engineSession() = EngineSession{}; }

int Start_DLL(void* viewPanel, int width, int height, int useTexturesFlag, int alwaysShowCameraCursorFlag,
              int touchScreenInputFlag) {
    EngineSession& session = engineSession();
    if (session.dllOpen) return session.dllOpen;
    session.dllOpen = At3d_Start();
    if (!session.dllOpen) return 0;
    At3d_SetParent(viewPanel);
    At3d_Size(width, height);
    for (int flag : {LIBFLAG_START_78, LIBFLAG_VIEW_291, LIBFLAG_INTEGRATED_GPU, LIBFLAG_START_283,
                     LIBFLAG_VIEW_289, LIBFLAG_START_294, LIBFLAG_START_255, LIBFLAG_START_88,
                     LIBFLAG_BACKFACE_CULL, LIBFLAG_START_84, LIBFLAG_START_85})
        At3d_WriteFlag(flag, 1);
    At3d_WriteFlag(LIBFLAG_USE_TEXTURES, useTexturesFlag);
    At3d_WriteFlag(LIBFLAG_START_121, 0);
    At3d_WriteFlag(LIBFLAG_CAMERA_CURSOR, alwaysShowCameraCursorFlag);
    At3d_WriteFlag(LIBFLAG_TOUCH_INPUT, touchScreenInputFlag);
    At3d_Show();
    return session.dllOpen;
}

void Stop_DLL() {
    EngineSession& session = engineSession();
    if (!session.dllOpen) return;
    At3d_Stop();
    session.dllOpen = 0;
}

void At3d_WriteFlag_LIBFLAG_NO_DRAW(int flag) {
    EngineSession& session = engineSession();
    ++session.MYLIBFLAG_NO_DRAW_COUNT;
    At3d_WriteFlag(LIBFLAG_NO_DRAW, flag);
    session.MYLIBFLAG_NO_DRAW = flag;
}

void OGL2DLL(double ogl_X, double ogl_Y, double ogl_Z, double* dll) {
    dll[0] = ogl_X;
    dll[1] = -ogl_Z;
    dll[2] = ogl_Y;
}

void DLL2OGL(double dll_X, double dll_Y, double dll_Z, double* ogl) {
    ogl[0] = dll_X;
    ogl[1] = dll_Z;
    ogl[2] = -dll_Y;
}

int Get_MeasureList_Item(int index, MEASURE_DATA* ptr) {
    if (!ptr) return 0;
    const int result = At3d_MeasureList_Get_Item(index, ptr->id, &ptr->visible_Flag, &ptr->observer_Flag,
                                                 &ptr->obstruction_Flag, &ptr->lineWidth, ptr->rgb_Line_Array,
                                                 ptr->vertex1, ptr->vertex2, ptr->observer, ptr->obstruction);
    if (!result) return 0;
    return At3d_MeasureList_Get_Distances(index, &ptr->distance, &ptr->obstruction_Distance);
}

int Get_Billboard_Data(int index, BILLBOARD_DATA* data) {
    if (!data) return 0;
    delete[] data->imagePtr;
    std::memset(data, 0, sizeof *data);
    int width = 0, height = 0, alpha = 0;
    if (!At3d_Measure_Billboard_Get_Image_Size(index, data->id, &width, &height, &alpha)) return 0;
    const int rowBytes = int(BillboardRowBytes(width, alpha));
    data->imageWidth = width;
    data->imageHeight = height;
    data->alphaFlag = alpha;
    data->imageSize = rowBytes * height;
    data->imagePtr = new UInt8[static_cast<std::size_t>(data->imageSize > 0 ? data->imageSize : 1)];
    return At3d_Measure_Billboard_Get_Item(index, data->id, data->imagePtr, data->imageSize, &data->alphaFlag,
                                           &data->pivotTypeFlag, &data->staticFlag, &data->visibleFlag,
                                           &data->oglReplaceFlag, &data->typeFlag, data->rgb_Line_Array,
                                           &data->lineWidth, &data->height, data->position, data->pivot,
                                           data->rotationStatic);
}

int Replace_Billboard_Data(int index, const BILLBOARD_DATA* data) {
    if (!data) return 0;
    return At3d_Measure_Billboard_Replace_Item(index, data->id, data->imagePtr, data->imageWidth, data->imageHeight,
                                               data->alphaFlag, data->pivotTypeFlag, data->staticFlag,
                                               data->visibleFlag, data->oglReplaceFlag, data->typeFlag,
                                               data->rgb_Line_Array, data->lineWidth, data->height, data->position,
                                               data->pivot, data->rotationStatic);
}

void Togglerendermode1Click() {
    static const float low[3] = {0, 0, 1};
    static const float high[3] = {1, 0, 0};
    At3d_SetColorMap(271, low);
    At3d_SetColorMap(268, high);
    static const int modes[3] = {8, 3, 0};
    EngineSession& session = engineSession();
    ++session.renderModeCounter;
    At3d_WriteFlag(LIBFLAG_RENDER_MODE, modes[session.renderModeCounter % 3]);
}
