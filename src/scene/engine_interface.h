// The only door to the 3D engine: meshes, layers, hit tests, lists, camera.
// Flat functions with C types so every caller passes points as double[3],
// names as 80-byte buffers and gets int results (0 = failure).
// Points are in the engine's local frame (east, north, up, metres, relative
// to the model centre) unless a comment says otherwise.
#pragma once

#include <cstdint>

using Int32 = std::int32_t;
using UInt8 = std::uint8_t;

constexpr int AT3D_NAME_SIZE = 80;
// Path buffers handed to the engine (texture names) hold this many bytes.
constexpr int AT3D_PATH_SIZE = 260;

// Model file types for the read calls.
constexpr int AT3D_READ_DXF = 0;
constexpr int AT3D_READ_3DS = 6;
constexpr int AT3D_READ_COB = 7;
constexpr int AT3D_READ_OBJ = 8;
constexpr int AT3D_READ_STL = 9;
constexpr int AT3D_READ_DAE = 42;
constexpr int AT3D_READ_ATM = 52;
// Model file types for At3d_Write (a code table of its own).
constexpr int AT3D_WRITE_DXF = 0;
constexpr int AT3D_WRITE_3DS = 8;
constexpr int AT3D_WRITE_COB = 10;
constexpr int AT3D_WRITE_OBJ = 12;
constexpr int AT3D_WRITE_STL = 13;
constexpr int AT3D_WRITE_DAE = 39;
constexpr int AT3D_WRITE_ATM = 47;

// Engine switches addressed by number.
constexpr int LIBFLAG_SCENE_77 = 77;
constexpr int LIBFLAG_START_78 = 78;
constexpr int LIBFLAG_RENDER_MODE = 79;
constexpr int LIBFLAG_USE_TEXTURES = 82;
constexpr int LIBFLAG_START_84 = 84;
constexpr int LIBFLAG_START_85 = 85;
constexpr int LIBFLAG_START_88 = 88;
constexpr int LIBFLAG_BACKFACE_CULL = 89;
constexpr int LIBFLAG_READ_91 = 91;
constexpr int LIBFLAG_READ_109 = 109;
constexpr int LIBFLAG_EXPORT_115 = 115;
constexpr int LIBFLAG_NO_DRAW = 120;
constexpr int LIBFLAG_START_121 = 121;
constexpr int LIBFLAG_READ_123 = 123;
constexpr int LIBFLAG_READ_134 = 134;
constexpr int LIBFLAG_ROTATE_181 = 181;
constexpr int LIBFLAG_REVERSE_ZOOM = 252;
constexpr int LIBFLAG_START_255 = 255;
constexpr int LIBFLAG_CAMERA_CURSOR = 257;
constexpr int LIBFLAG_READ_263 = 263;
constexpr int LIBFLAG_TOUCH_INPUT = 281;
constexpr int LIBFLAG_MESH_LOCATION = 282;
constexpr int LIBFLAG_START_283 = 283;
constexpr int LIBFLAG_MEASURE_287 = 287;
constexpr int LIBFLAG_SHOW_MEASURES = 288;
constexpr int LIBFLAG_VIEW_289 = 289;
constexpr int LIBFLAG_SELECT_MEASURE = 290;
constexpr int LIBFLAG_VIEW_291 = 291;
constexpr int LIBFLAG_OPEN_292 = 292;
constexpr int LIBFLAG_SHOW_BILLBOARDS = 293;
constexpr int LIBFLAG_START_294 = 294;
constexpr int LIBFLAG_HOLD_INPUT = 295;
constexpr int LIBFLAG_READ_296 = 296;
constexpr int LIBFLAG_MEASURE_DEPTH = 299;
constexpr int LIBFLAG_INTEGRATED_GPU = 300;
constexpr int LIBFLAG_SHOW_SPHERES = 303;
constexpr int LIBFLAG_OPEN_305 = 305;
constexpr int LIBFLAG_DECALS = 308;
constexpr int AT3D_FLAG_COUNT = 512;

// Rubberband picking modes (values of LIBFLAG_MESH_LOCATION).
constexpr int MESH_LOCATION_OFF = 0;
constexpr int MESH_LOCATION_MEASURE = 1;
constexpr int MESH_LOCATION_PAUSE = 2;
constexpr int MESH_LOCATION_CONTINUE = 3;

// hitFlag value of a valid mesh location.
constexpr int AT3D_HIT = 2;

// Notification wParam values posted to the target of At3d_Init_Mesh_Location.
constexpr int AT3D_NOTIFY_RUBBERBAND = 3;
constexpr int AT3D_NOTIFY_MEASURE_BASE = 1000;
constexpr int AT3D_NOTIFY_BILLBOARD_BASE = 2000;
constexpr int AT3D_NOTIFY_SPHERE_BASE = 3000;

struct MEASURE_DATA {
    char id[AT3D_NAME_SIZE];
    Int32 visible_Flag;
    Int32 observer_Flag;
    Int32 obstruction_Flag;
    Int32 spareFlag;
    float lineWidth;
    float rgb_Line_Array[3];
    double vertex1[3];
    double vertex2[3];
    double observer[3];
    double obstruction[3];
    double distance;
    double obstruction_Distance;
};

struct BILLBOARD_DATA {
    char id[AT3D_NAME_SIZE];
    Int32 imageSize;
    Int32 imageWidth;
    Int32 imageHeight;
    Int32 alphaFlag;
    Int32 pivotTypeFlag;
    Int32 staticFlag;
    Int32 visibleFlag;
    Int32 oglReplaceFlag;
    Int32 typeFlag;
    Int32 spareFlag;
    float rgb_Line_Array[3];
    float lineWidth;
    double height;
    double position[3];
    double pivot[3];
    double rotationStatic[3];
    UInt8* imagePtr;
};

// Bytes in one row of a billboard picture: 4 a pixel with alpha, otherwise
// 3 a pixel padded to whole 32-bit words.
inline long long BillboardRowBytes(int width, int alphaFlag) {
    return alphaFlag ? 4LL * width : (3LL * width + 3) / 4 * 4;
}

// ---- Bindings of the host (what a window message or a DLL log did before) ----

// Receives the engine's notifications: message is the number given to
// At3d_Init_Mesh_Location, wParam as in the AT3D_NOTIFY_ values, lParam 1.
using At3d_NotifyFunction = void (*)(void* window, int message, int wParam, int lParam);
void At3d_Set_Notify_Function(At3d_NotifyFunction fn);

// Receives one diagnostic line (no trailing newline). Null silences the engine.
using At3d_LogFunction = void (*)(const char* line);
void At3d_Set_Log_Function(At3d_LogFunction fn);

// A renderer attaches itself here; without one the drawing calls do nothing
// and At3d_Save_Thumbnail_Image answers 0.
struct At3d_RendererHooks {
    void* context;
    void (*render)(void* context);
    int (*saveThumbnail)(void* context, const char* path, int width, int height);
};
void At3d_Set_Renderer(const At3d_RendererHooks* hooks);

// Mouse input on the drawing surface (y from its top). button 1 left, 2 right.
// Drives the rubberband picking of LIBFLAG_MESH_LOCATION and the right-click
// selection of LIBFLAG_SELECT_MEASURE. Returns non-zero when the click was used.
int At3d_Mouse_Down(int x, int y, int button);

// ---- Life cycle ----
int At3d_Start();
int At3d_Stop();
int At3d_SetParent(void* window);
int At3d_Size(int width, int height);
int At3d_Show();
int At3d_Clear();
int At3d_RenderOpenGLScene();
int At3d_WriteFlag(int flag, int value);
int At3d_ReadFlag(int flag);
int At3d_SetProducedByName(const char* name);
int At3d_Get_Max_Texture_Size();
int At3d_Set_Max_Texture_Size(int powerOf2);
int At3d_SetColorMap(int entry, const float* rgb);
int At3d_Set_OGL_Directional_Light(int light, int enabled, const float* ambient, const float* diffuse,
                                   const float* specular, const float* position);

// ---- Model and layers ----
int At3d_Read(int type, const char* path, double scale);
int At3d_Mesh_Static_Read_And_Add(int type, const char* path, double scale, int xRotationFlag,
                                  const double* position, const char* namePrefix);
int At3d_Write(int type, const char* path, double scale);
int At3d_RotateObjectX_90Minus();
int At3d_RotateObjectX_90Plus();
int At3d_GetObjectCenter(double* center);
int At3d_SetObject_XYZCenter();
int At3d_SetObjectCenter(const double* center);
int At3d_GetObjectMinMax(double* minMax);
int At3d_ScaleObject(const double* factors);
int At3d_VertNormAllCalculate();
int At3d_LayerCount();
// Walks the layers: pass null for the first; returns null after the last.
void* At3d_GetNextLayer(void* layer, char* name);
int At3d_VertexCount(const char* layerName);
int At3d_FaceCount(const char* layerName);
int At3d_2DVertexCount(const char* layerName);
int At3d_GetVertex(int index, const char* layerName, double* xyz);
int At3d_SetVertex(int index, const char* layerName, const double* xyz);
int At3d_2DGetVertex(int index, const char* layerName, double* xyz);
int At3d_2DSetVertex(int index, const char* layerName, const double* xyz);
int At3d_DeleteLayer(const char* layerName);
int At3d_GetLayerOutputFlag(const char* layerName);
int At3d_SetLayerOutputFlag(const char* layerName, int flag);
// path must hold AT3D_PATH_SIZE bytes; a longer name is cut.
int At3d_GetTextureName(const char* layerName, char* path);
int At3d_SetTextureName(const char* layerName, const char* path);
int At3d_SetMaterial_F3(const char* layerName, int flagType, const float* rgb);
int At3d_Set_Layer_GPU_Update(const char* layerName, int flag);
int At3d_Mesh_Static_Translate(const char* layerName, int flag, const double* delta);

// ---- Hit tests ----
// Segment v1..v2 against every triangle of the layers whose output flag is on.
// Hits closer to v1 than skipDistance are ignored. exitFirstHitFlag 1 ends at
// the first qualifying triangle found, 0 returns the hit nearest to v1.
// Result above 0 on a hit. Safe to call from several threads at once while
// the scene does not change.
int At3d_Get_Line_Mesh_Intersection_Point(const double* v1, const double* v2, double skipDistance,
                                          double* intersection, int exitFirstHitFlag);
// Many segments in one call: v1s, v2s and intersections hold count points
// (3 doubles each); results[i] is what the single call would have returned.
// Returns the number of hits.
int At3d_Get_Line_Mesh_Intersection_Points(int count, const double* v1s, const double* v2s,
                                           double skipDistance, double* intersections, int* results,
                                           int exitFirstHitFlag);
int At3d_Get_Mesh_Location_At_Point(int screenX, int screenY, int* hitFlag, double* xyz, char* layerName,
                                    char* cloneItemName, float* rgb);
int At3d_Get_Mesh_Location(int which, int* hitFlag, double* xyz, int* screenX, int* screenY, float* rgb);
int At3d_Get_Mesh_Obstruction_Point(double* xyz, int* screenX, int* screenY, float* rgb);
int At3d_Clip_At_Mesh_Obstruction_Point();
int At3d_Init_Mesh_Location(void* window, int message);
int At3d_Set_Mesh_Location_Parameters(const float* rgbLine, const float* rgbPoint1, const float* rgbPoint2,
                                      float lineWidth, float pointSize, int depthTest, int points);
int At3d_Set_Mesh_Obstruction_Parameters(const float* rgb, float pointSize, int display, double skipDistance);
int At3d_Set_Mesh_Location_Observer_Parameters(const float* rgbLine, const float* rgbPoint, float width,
                                               float size, int lineFlag, int pointFlag);
int At3d_Add_Mesh_Location_Observer(const double* delta, int flag);
int At3d_Cancel_Mesh_Location_Observer();

// ---- Measure list ----
int At3d_MeasureList_Add_Item(const char* id, int visible, int observer, int obstruction, float lineWidth,
                              const float* rgb, const double* vertex1, const double* vertex2,
                              const double* observerPoint, const double* obstructionPoint);
int At3d_MeasureList_Add_Current(const char* id, float lineWidth, const float* rgb);
int At3d_MeasureList_Get_Item(int index, char* id, int* visible, int* observer, int* obstruction,
                              float* lineWidth, float* rgb, double* vertex1, double* vertex2,
                              double* observerPoint, double* obstructionPoint);
// The distances the engine worked out for an item.
int At3d_MeasureList_Get_Distances(int index, double* distance, double* obstructionDistance);
int At3d_MeasureList_Replace_Item(int index, const char* id, int visible, int observer, int obstruction,
                                  float lineWidth, const float* rgb, const double* vertex1,
                                  const double* vertex2, const double* observerPoint,
                                  const double* obstructionPoint);
int At3d_MeasureList_Delete_Item(int index, int flag);
int At3d_MeasureList_Get_Count();
int At3d_MeasureList_Clear();
int At3d_MeasureList_Set_Visible_All(int show);
int At3d_MeasureList_Set_Parameters(const float* rgbLine, const float* rgbPoint1, const float* rgbPoint2,
                                    float lineWidth, float pointSize, int depthTest, int points);
int At3d_MeasureList_Set_Selected_Color(const float* rgb);
int At3d_MeasureList_Set_Obstruction_Parameters(const float* rgb, float pointSize, int display);
int At3d_MeasureList_Cancel_Selected_Line();
// Index of the selected item, or -1 (used by the renderer for its colour).
int At3d_MeasureList_Get_Selected();

// ---- Billboards ----
int At3d_Measure_Billboard_Add_Item(const char* name, const UInt8* imagePtr, int imageWidth, int imageHeight,
                                    int alphaFlag, int pivotPosition, int staticFlag, int visible,
                                    int oglReplace, int typeFlag, const float* rgb, float lineWidth,
                                    double height, const double* position, const double* pivot,
                                    const double* rotation);
int At3d_Measure_Billboard_Get_Image_Size(int index, char* name, int* width, int* height, int* alpha);
// imageSize is the capacity of imagePtr; the copy never writes past it.
int At3d_Measure_Billboard_Get_Item(int index, char* name, UInt8* imagePtr, int imageSize, int* alphaFlag,
                                    int* pivotTypeFlag, int* staticFlag, int* visibleFlag,
                                    int* oglReplaceFlag, int* typeFlag, float* rgb, float* lineWidth,
                                    double* height, double* position, double* pivot, double* rotation);
int At3d_Measure_Billboard_Replace_Item(int index, const char* name, const UInt8* imagePtr, int imageWidth,
                                        int imageHeight, int alphaFlag, int pivotPosition, int staticFlag,
                                        int visible, int oglReplace, int typeFlag, const float* rgb,
                                        float lineWidth, double height, const double* position,
                                        const double* pivot, const double* rotation);
int At3d_Measure_Billboard_Get_ID(int index, char* name);
int At3d_Measure_Billboard_Get_Count();
int At3d_Measure_Billboard_Delete_All();
int At3d_Measure_Billboard_Delete_Item(int index, int flag);
int At3d_Measure_Billboard_Set_Visible_One(int index, int flag, int visible);
int At3d_Measure_Billboard_Set_Visible_All(int visible);
int At3d_Measure_Billboard_Cancel_Selected();
int At3d_Measure_Billboard_Get_Selected();

// ---- Sphere markers ----
int At3d_Sphere_Marker_Add(const char* name, double diameter, const double* position, const float* rgb1,
                           const float* rgb2, int color2Flag, int interval, int strobeFlag, int visibleFlag);
int At3d_Sphere_Marker_Get_Data(const char* name, double* diameter, double* location, float* rgb1, float* rgb2,
                                int* color2Flag, int* interval, int* strobeFlag, int* visibleFlag);
int At3d_Sphere_Marker_Get_Count();
int At3d_Sphere_Marker_Delete_All();
int At3d_Sphere_Marker_Cancel_Selected();
int At3d_Sphere_Marker_Get_Selected();
int At3d_Sphere_Marker_Get_Name(int index, char* name);
int At3d_Sphere_Marker_Delete_One(const char* name);

// ---- Camera (angles in degrees; X tilts down from the horizon, Z is the azimuth of the view) ----
int At3d_GetCameraAngles(double* x, double* y, double* z);
int At3d_RotateCamera(int mode, double x, double y, double z);
int At3d_GetCameraViewPoint(double* x, double* y, double* z);
int At3d_SetCameraViewPoint(double x, double y, double z);
int At3d_GetCameraFieldOfView(double* fov);
int At3d_SetCameraFieldOfView(int mode, double fov);
int At3d_PanCamera(int mode, int x, int z);
int At3d_GetCameraDistance(double* distance);
int At3d_SetCameraDistance(double distance);
int At3d_GetCameraInitialDistance(double* distance);
int At3d_SetCameraInitialDistance(double distance);
int At3d_ZoomIn(float step);
int At3d_ZoomOut(float step);
int At3d_ZoomReset();
int At3d_GetCameraRotateSpeed(int* speed);
int At3d_SetCameraRotateSpeed(int speed);
int At3d_Camera_Rotate_Set_Speed(double speed);
int At3d_GetCameraZoomSpeed(int* speed);
int At3d_SetCameraZoomSpeed(int speed);
int At3d_ViewFront();
int At3d_ViewBack();
int At3d_ViewLeft();
int At3d_ViewRight();
int At3d_ViewTop();
int At3d_ViewBottom();
int At3d_CenterX();
int At3d_CenterZ();
int At3d_Roaming_Camera_Count();
int At3d_Roaming_Camera_Get_Name(int index, char* name);
int At3d_Add_Roaming_Camera(const char* name);
int At3d_Get_Roaming_Data(const char* name, double* eye, double* center, double* upRotation,
                          double* fieldOfView, int asDisplayed_Flag);
int At3d_Set_Roaming_Data(const char* name, const double* eye, const double* center, const double* upRotation,
                          const double* fieldOfView);
int At3d_Switch_OGL_Camera(const char* name);
int At3d_Move_Roaming_RightLeft(double step);
int At3d_Move_Roaming_Turn(double step);

// ---- Overlays and images ----
int At3d_StatusBar_Show(int show, int height);
int At3d_StatusBar_Set_Text(const char* text);
int At3d_StatusBar_Get_Text(char* buffer, int size);
int At3d_StatusBar_Set_Font_Color(int color);
int At3d_StatusBar_Set_Font_Size(int size);
int At3d_View_Decal_Add(const char* name, const char* path, const char* typeName, float size, int useFrame,
                        float rotateAngle, float screenX, float screenY, int visible);
int At3d_View_Decal_Set_Data(const char* name, const char* path, const char* typeName, float size, int useFrame,
                             float rotateAngle, float screenX, float screenY, int visible);
int At3d_Save_Thumbnail_Image(const char* path, int width, int height);
