// Model-wide operations of the engine: centring, turning, adding, writing,
// layer and vertex access, flags and the no-draw bracket.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "scene/EngineSession.h"
#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"
#include "support/SceneBuilders.h"
#include "support/TestSupport.h"

using testsupport::EngineFixtureGuard;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

const char* MODEL =
    "mtllib m.mtl\n"
    "v 3612000.456 663000.125 10.5\nv 3612010.456 663000.125 10.5\n"
    "v 3612010.456 663010.125 20.5\nv 3612000.456 663010.125 20.5\n"
    "vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\n"
    "g roof\nusemtl tiles\nf 1/1 2/2 3/3 4/4\n";

}  // namespace

TEST(ModelOperations, CentringCreatesTheLocalFrameAndTheNegatedCentreUndoesIt) {
    EngineFixtureGuard engine;
    ScratchDir dir;
    writeTextFile(dir.path("m.obj"), MODEL);
    ASSERT_EQ(At3d_Read(AT3D_READ_OBJ, dir.path("m.obj").c_str(), 1), 1);
    double center[3];
    ASSERT_EQ(At3d_GetObjectCenter(center), 1);
    EXPECT_DOUBLE_EQ(center[0], 3612005.456);
    EXPECT_DOUBLE_EQ(center[1], 663005.125);
    EXPECT_DOUBLE_EQ(center[2], 15.5);
    ASSERT_EQ(At3d_SetObject_XYZCenter(), 1);
    double local[3], v[3];
    At3d_GetObjectCenter(local);
    EXPECT_NEAR(local[0], 0, 1e-9);
    At3d_GetVertex(0, "roof", v);
    EXPECT_NEAR(v[0], -5, 1e-9);
    EXPECT_NEAR(v[2], -5, 1e-9);
    const double back[3] = {-center[0], -center[1], -center[2]};
    At3d_SetObjectCenter(back);
    At3d_GetVertex(0, "roof", v);
    EXPECT_NEAR(v[0], 3612000.456, 1e-9);
    EXPECT_NEAR(v[1], 663000.125, 1e-9);
}

TEST(ModelOperations, QuarterTurnNeedsFlag181AndKeepsTheReportedAxes) {
    EngineFixtureGuard engine;
    testsupport::addLayer(testsupport::makeSquare("s", 10, 20, 30, 2));
    EXPECT_EQ(At3d_RotateObjectX_90Minus(), 0);
    At3d_WriteFlag(LIBFLAG_ROTATE_181, 1);
    ASSERT_EQ(At3d_RotateObjectX_90Minus(), 1);
    EXPECT_TRUE(engine::engineState().turnedForDrawing);
    double minMax[6];
    At3d_GetObjectMinMax(minMax);
    EXPECT_DOUBLE_EQ(minMax[4], 30);  // Z is still up
    EXPECT_DOUBLE_EQ(minMax[2], 19);
    const double v1[3] = {10, 20, 100}, v2[3] = {10, 20, -100};
    double hit[3];
    ASSERT_GT(At3d_Get_Line_Mesh_Intersection_Point(v1, v2, 0, hit, 0), 0);
    EXPECT_DOUBLE_EQ(hit[2], 30);
    ASSERT_EQ(At3d_RotateObjectX_90Plus(), 1);
    EXPECT_FALSE(engine::engineState().turnedForDrawing);
}

TEST(ModelOperations, AddedModelsArePrefixedMovedAndHitTested) {
    EngineFixtureGuard engine;
    ScratchDir dir;
    writeTextFile(dir.path("m.obj"), MODEL);
    ASSERT_EQ(At3d_Read(AT3D_READ_OBJ, dir.path("m.obj").c_str(), 1), 1);
    const double position[3] = {1, 2, 3};
    ASSERT_EQ(At3d_Mesh_Static_Read_And_Add(AT3D_READ_OBJ, dir.path("m.obj").c_str(), 1, 1, position, "P7"), 1);
    EXPECT_EQ(At3d_LayerCount(), 2);
    double v[3];
    ASSERT_EQ(At3d_GetVertex(0, "P7roof", v), 1);
    EXPECT_DOUBLE_EQ(v[0], 3612001.456);
    EXPECT_DOUBLE_EQ(v[2], 13.5);
    EXPECT_EQ(At3d_Mesh_Static_Read_And_Add(AT3D_READ_OBJ, dir.path("none.obj").c_str(), 1, 1, position, "P8"), 0);
    EXPECT_EQ(At3d_LayerCount(), 2);
}

TEST(ModelOperations, WrittenObjReadsBackEqual) {
    EngineFixtureGuard engine;
    ScratchDir dir;
    writeTextFile(dir.path("tiles.jpg"), "image");
    writeTextFile(dir.path("m.mtl"), "newmtl tiles\nKd 0.2 0.4 0.6\nmap_Kd tiles.jpg\n");
    writeTextFile(dir.path("m.obj"), MODEL);
    ASSERT_EQ(At3d_Read(AT3D_READ_OBJ, dir.path("m.obj").c_str(), 1), 1);
    testsupport::addLayer(testsupport::makeSquare("hidden", 0, 0, 0, 1));
    At3d_SetLayerOutputFlag("hidden", 0);
    At3d_SetProducedByName("Orvo Systems .");
    ASSERT_EQ(At3d_Write(AT3D_WRITE_OBJ, dir.path("out.obj").c_str(), 1), 1);
    const std::string written = testsupport::readTextFile(dir.path("out.obj"));
    EXPECT_EQ(written.rfind("# Produced by Orvo Systems .\nmtllib out.mtl\n", 0), 0u);
    EXPECT_NE(testsupport::readTextFile(dir.path("out.mtl")).find("map_Kd tiles.jpg"), std::string::npos);

    const engine::Layer original = engine::engineState().layers.at(0);
    ASSERT_EQ(At3d_Read(AT3D_READ_OBJ, dir.path("out.obj").c_str(), 1), 1);
    ASSERT_EQ(At3d_LayerCount(), 1);
    const engine::Layer& copy = engine::engineState().layers.at(0);
    EXPECT_EQ(copy.name, "roof");
    EXPECT_EQ(copy.positions, original.positions);
    EXPECT_EQ(copy.triangles, original.triangles);
    EXPECT_EQ(copy.texCoords, original.texCoords);
    EXPECT_EQ(copy.texturePath, original.texturePath);
    EXPECT_FLOAT_EQ(copy.diffuse[2], 0.6f);
}

TEST(ModelOperations, WriteToAMissingFolderFailsWithoutLeavingFiles) {
    EngineFixtureGuard engine;
    ScratchDir dir;
    testsupport::addLayer(testsupport::makeSquare("s", 0, 0, 0, 1));
    EXPECT_EQ(At3d_Write(AT3D_WRITE_OBJ, dir.path("no/such/folder/x.obj").c_str(), 1), 0);
    EXPECT_TRUE(EngineFixtureGuard::logContains("OBJ write failed"));
    EXPECT_EQ(At3d_Write(AT3D_WRITE_ATM, dir.path("x.atm").c_str(), 1), 0);
}

TEST(ModelOperations, AtmAndUnknownTypesAreRefusedWithALogLine) {
    EngineFixtureGuard engine;
    ScratchDir dir;
    writeTextFile(dir.path("m.atm"), "whatever");
    EXPECT_EQ(At3d_Read(AT3D_READ_ATM, dir.path("m.atm").c_str(), 1), 0);
    EXPECT_TRUE(EngineFixtureGuard::logContains("ATM models are not supported"));
    EXPECT_EQ(At3d_Read(99, dir.path("m.atm").c_str(), 1), 0);
}

TEST(ModelOperations, LayerWalkVertexAccessAndBadNames) {
    EngineFixtureGuard engine;
    testsupport::addLayer(testsupport::makeSquare("a", 0, 0, 0, 2));
    testsupport::addLayer(testsupport::makeSquare("b", 5, 5, 1, 2));
    char name[AT3D_NAME_SIZE];
    void* h = At3d_GetNextLayer(nullptr, name);
    ASSERT_NE(h, nullptr);
    EXPECT_STREQ(name, "a");
    h = At3d_GetNextLayer(h, name);
    EXPECT_STREQ(name, "b");
    EXPECT_EQ(At3d_GetNextLayer(h, name), nullptr);
    const double xyz[3] = {7, 8, 9};
    EXPECT_EQ(At3d_SetVertex(4, "a", xyz), 0);
    EXPECT_EQ(At3d_SetVertex(-1, "a", xyz), 0);
    EXPECT_EQ(At3d_SetVertex(0, "nope", xyz), 0);
    ASSERT_EQ(At3d_SetVertex(3, "b", xyz), 1);
    double back[3];
    At3d_GetVertex(3, "b", back);
    EXPECT_EQ(back[0], 7);
    EXPECT_EQ(At3d_VertexCount("nope"), 0);
    EXPECT_EQ(At3d_DeleteLayer("a"), 1);
    EXPECT_EQ(At3d_DeleteLayer("a"), 0);
    EXPECT_EQ(At3d_LayerCount(), 1);
}

TEST(ModelOperations, NormalsOfAnUpwardSquarePointUp) {
    EngineFixtureGuard engine;
    testsupport::addLayer(testsupport::makeSquare("a", 0, 0, 0, 2));
    At3d_VertNormAllCalculate();
    const engine::Layer& layer = engine::engineState().layers.at(0);
    ASSERT_EQ(layer.normals.size(), 12u);
    for (std::size_t v = 0; v < 4; ++v) EXPECT_FLOAT_EQ(layer.normals[v * 3 + 2], 1.0f);
}

TEST(EngineFlags, NoDrawSuppressesDrawingAndTheCountOnlyGrows) {
    EngineFixtureGuard engine;
    resetEngineSession();
    At3d_RenderOpenGLScene();
    EXPECT_EQ(engine::engineState().framesDrawn, 1);
    At3d_WriteFlag_LIBFLAG_NO_DRAW(1);
    At3d_RenderOpenGLScene();
    At3d_RenderOpenGLScene();
    EXPECT_EQ(engine::engineState().framesDrawn, 1);
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_NO_DRAW), 1);
    At3d_WriteFlag_LIBFLAG_NO_DRAW(0);
    At3d_WriteFlag_LIBFLAG_NO_DRAW(0);
    EXPECT_EQ(engineSession().MYLIBFLAG_NO_DRAW_COUNT, 3);
    EXPECT_EQ(engineSession().MYLIBFLAG_NO_DRAW, 0);
    At3d_RenderOpenGLScene();
    EXPECT_EQ(engine::engineState().framesDrawn, 2);
}

TEST(EngineFlags, TableBoundsTextureLimitsAndRenderModeCycle) {
    EngineFixtureGuard engine;
    resetEngineSession();
    EXPECT_EQ(At3d_WriteFlag(AT3D_FLAG_COUNT, 1), 0);
    EXPECT_EQ(At3d_WriteFlag(-1, 1), 0);
    EXPECT_EQ(At3d_ReadFlag(-1), 0);
    EXPECT_EQ(At3d_Set_Max_Texture_Size(10), 0);
    EXPECT_EQ(At3d_Set_Max_Texture_Size(16), 0);
    EXPECT_EQ(At3d_Set_Max_Texture_Size(12), 1);
    EXPECT_EQ(engine::engineState().maxTextureExponent, 12);
    Togglerendermode1Click();
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_RENDER_MODE), 3);
    Togglerendermode1Click();
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_RENDER_MODE), 0);
    Togglerendermode1Click();
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_RENDER_MODE), 8);
    EXPECT_FLOAT_EQ(engine::engineState().colorMapLow[2], 1.0f);
    EXPECT_FLOAT_EQ(engine::engineState().colorMapHigh[0], 1.0f);
}

TEST(EngineFlags, StartDllSetsTheStartFlagsOnce) {
    EngineFixtureGuard engine;
    resetEngineSession();
    ASSERT_EQ(Start_DLL(nullptr, 640, 480, 1, 0, 1), 1);
    for (int flag : {78, 291, 300, 283, 289, 294, 255, 88, 89, 84, 85}) EXPECT_EQ(At3d_ReadFlag(flag), 1) << flag;
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_USE_TEXTURES), 1);
    EXPECT_EQ(At3d_ReadFlag(LIBFLAG_TOUCH_INPUT), 1);
    EXPECT_EQ(engine::engineState().width, 640);
    At3d_WriteFlag(78, 0);
    Start_DLL(nullptr, 1, 1, 0, 0, 0);  // already open: nothing changes
    EXPECT_EQ(At3d_ReadFlag(78), 0);
    Stop_DLL();
    EXPECT_EQ(engineSession().dllOpen, 0);
}

TEST(EngineFrames, OglAndDllFramesAreInverse) {
    double dll[3], ogl[3];
    OGL2DLL(1, 2, 3, dll);
    EXPECT_EQ(dll[0], 1);
    EXPECT_EQ(dll[1], -3);
    EXPECT_EQ(dll[2], 2);
    DLL2OGL(dll[0], dll[1], dll[2], ogl);
    EXPECT_EQ(ogl[0], 1);
    EXPECT_EQ(ogl[1], 2);
    EXPECT_EQ(ogl[2], 3);
}

TEST(EngineRenderer, ThumbnailWithoutARendererAnswersZero) {
    EngineFixtureGuard engine;
    EXPECT_EQ(At3d_Save_Thumbnail_Image("/tmp/x.jpg", 100, 100), 0);
}

TEST(EngineWrappers, MeasureRecordCarriesTheEnginesDistances) {
    EngineFixtureGuard engine;
    const double a[3] = {0, 0, 0}, b[3] = {3, 4, 12}, observer[3] = {0, 0, 2}, obstruction[3] = {0, 3, 6};
    const float rgb[3] = {1, 0, 0};
    ASSERT_EQ(At3d_MeasureList_Add_Item("m", 1, 1, 1, 2, rgb, a, b, observer, obstruction), 1);
    MEASURE_DATA record{};
    ASSERT_EQ(Get_MeasureList_Item(0, &record), 1);
    EXPECT_STREQ(record.id, "m");
    EXPECT_DOUBLE_EQ(record.distance, 13);
    EXPECT_DOUBLE_EQ(record.obstruction_Distance, 5);  // from the observer: (0, 3, 4)
    EXPECT_EQ(Get_MeasureList_Item(1, &record), 0);
}

TEST(EngineWrappers, BillboardRecordRoundTripWithPaddedRows) {
    EngineFixtureGuard engine;
    // 5 x 2 pixels of 3 bytes: rows of 15 bytes padded to 16.
    std::vector<UInt8> image(32);
    for (std::size_t i = 0; i < image.size(); ++i) image[i] = static_cast<UInt8>(i + 1);
    const float rgb[3] = {0, 1, 0};
    const double position[3] = {1, 2, 3}, pivot[3] = {1, 2, 3}, rotation[3] = {0, 0, 45};
    ASSERT_EQ(At3d_Measure_Billboard_Add_Item("Tree|12", image.data(), 5, 2, 0, 1, 0, 1, 0, 2, rgb, 3, 7.5, position,
                                              pivot, rotation),
              1);
    BILLBOARD_DATA data{};
    ASSERT_EQ(Get_Billboard_Data(0, &data), 1);
    EXPECT_STREQ(data.id, "Tree|12");
    EXPECT_EQ(data.imageSize, 32);
    ASSERT_NE(data.imagePtr, nullptr);
    EXPECT_EQ(std::vector<UInt8>(data.imagePtr, data.imagePtr + 32), image);
    EXPECT_DOUBLE_EQ(data.height, 7.5);
    EXPECT_DOUBLE_EQ(data.rotationStatic[2], 45);
    data.position[2] = 9;
    data.imagePtr[0] = 200;
    ASSERT_EQ(Replace_Billboard_Data(0, &data), 1);
    BILLBOARD_DATA again{};
    ASSERT_EQ(Get_Billboard_Data(0, &again), 1);
    EXPECT_DOUBLE_EQ(again.position[2], 9);
    EXPECT_EQ(again.imagePtr[0], 200);
    delete[] data.imagePtr;
    delete[] again.imagePtr;
}
