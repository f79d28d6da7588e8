// The layer table and the helpers that put lines, spheres and colours into
// the scene in map coordinates.
#include "ModelOpenFixture.h"
#include "app/model/LayerTable.h"
#include "app/model/SceneLayers.h"
#include "scene/engine/EngineState.h"
#include "scene/engine_interface.h"
#include "support/SceneBuilders.h"

using testsupport::readTextFile;

namespace {

class SceneLayers : public ModelOpenFixture {
protected:
    void SetUp() override {
        ModelOpenFixture::SetUp();
        resetLayerTable();
    }
    // Three layers: a roof, a wall and an outline of lines only.
    void addThreeLayers() {
        testsupport::addLayer(testsupport::makeRectangle("roof", 0, 0, 10, 10, 5));
        testsupport::addLayer(testsupport::makeWallX("wall", 0, 0, 10, 0, 5));
        engine::Layer outline;
        outline.name = "outline";
        outline.lineVertices = {0, 0, 0, 10, 0, 0, 10, 10, 0};
        outline.lineSegments = {0, 1, 1, 2};
        testsupport::addLayer(outline);
    }
};

}  // namespace

TEST_F(SceneLayers, ASwitchedOffLayerStaysListedAndItsFacesStopCounting) {
    addThreeLayers();
    EXPECT_EQ(RefreshSceneLayers({{"wall", false}}), 2);
    QString caption;
    const std::string path = WriteLayersList(caption);
    EXPECT_EQ(path, sessionPaths().ORVO_T + "Layers.csv");
    EXPECT_EQ(readTextFile(path),
              "Layer,Vertices3D,Vertices2D,Active,Faces\n"
              "roof,4,0,1,2  \n"
              "wall,4,0,0,2  \n"
              "outline,0,3,1,0  \n");
    EXPECT_EQ(caption, " 4 Faces 8 3Dvertices 3 2Dvertices3 Layers");
    EXPECT_EQ(LayerListText(), "roof  0  4  [0] \n wall  4  8  [1] \n outline  8  8  [2] \n ");
    // Switched on again, its faces count again.
    EXPECT_EQ(RefreshSceneLayers({{"wall", true}}), 4);
}

TEST_F(SceneLayers, NamesWithCommasAndQuotesComeBackWholeFromTheList) {
    testsupport::addLayer(testsupport::makeRectangle("Roof, north", 0, 0, 10, 10, 5));
    testsupport::addLayer(testsupport::makeWallX("Wall \"A\"", 0, 0, 10, 0, 5));
    ASSERT_EQ(At3d_SetLayerOutputFlag("Wall \"A\"", 0), 1);
    QString caption;
    const std::string path = WriteLayersList(caption);
    EXPECT_EQ(readTextFile(path),
              "Layer,Vertices3D,Vertices2D,Active,Faces\n"
              "\"Roof, north\",4,0,1,2  \n"
              "\"Wall \"\"A\"\"\",4,0,0,2  \n");
    const GridRows rows = ReadLayersList(path);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0], QStringList({"Roof, north", "4", "0", "1", "2  "}));
    EXPECT_EQ(rows[1], QStringList({"Wall \"A\"", "4", "0", "0", "2  "}));
    // The names read back reach their layers: the roof goes off, the wall on.
    EXPECT_EQ(RefreshSceneLayers({{rows[0][0].toStdString(), false}, {rows[1][0].toStdString(), true}}), 2);
    EXPECT_EQ(At3d_GetLayerOutputFlag("Roof, north"), 0);
    EXPECT_EQ(At3d_GetLayerOutputFlag("Wall \"A\""), 1);
}

TEST_F(SceneLayers, AnEmptySceneListsTheHeaderOnly) {
    QString caption;
    EXPECT_EQ(readTextFile(WriteLayersList(caption)), "Layer,Vertices3D,Vertices2D,Active,Faces\n");
    EXPECT_EQ(caption, " 0 Faces 0 3Dvertices 0 2Dvertices0 Layers");
    EXPECT_EQ(ParseFaces(), 0);
}

TEST_F(SceneLayers, TheTableStopsAtAThousandLayersButCountsThemAll) {
    for (int k = 0; k < 1002; ++k)
        testsupport::addLayer(testsupport::makeSquare("L" + std::to_string(k), k, 0, 0, 1));
    int NL = 0, NF = 0;
    EXPECT_EQ(GetTotalVertices(NL, NF), 4 * 1002);
    EXPECT_EQ(NL, 1000);
    EXPECT_EQ(NF, 2 * 1002);
    EXPECT_STREQ(layerTable().layerName[999], "L999");
}

TEST_F(SceneLayers, LinesAndSpheresComeInFromTheMapFrame) {
    frameState().OriginalobjectCenter[0] = 100;
    frameState().Offset[0] = 178000;
    frameState().Offset[1] = 663000;
    AddLineToScene("edge", TGIS_Point3D{178110, 663005, 12, 0}, TGIS_Point3D{178100, 663000, 2, 0}, 255, 3);
    MEASURE_DATA item{};
    ASSERT_EQ(Get_MeasureList_Item(0, &item), 1);
    EXPECT_STREQ(item.id, "edge");
    testsupport::expectVec(item.vertex1, 10, 5, 12);
    testsupport::expectVec(item.vertex2, 0, 0, 2);
    testsupport::expectRgb(item.rgb_Line_Array, 1, 0, 0);
    EXPECT_FLOAT_EQ(item.lineWidth, 3);
    // The distance the engine works out: sqrt(10² + 5² + 10²) = 15.
    EXPECT_NEAR(item.distance, 15, 1e-12);

    // Blue (the toolkit's 0xFF0000) is a thin line, pure red a thick one.
    SetLineColor(0, 0xFF0000);
    ASSERT_EQ(Get_MeasureList_Item(0, &item), 1);
    testsupport::expectRgb(item.rgb_Line_Array, 0, 0, 1);
    EXPECT_FLOAT_EQ(item.lineWidth, 2);
    SetLineColor(0, 255);
    ASSERT_EQ(Get_MeasureList_Item(0, &item), 1);
    EXPECT_FLOAT_EQ(item.lineWidth, 12);

    AddSphere(178150, 663020, 7, 2, 0x00FF00);
    AddSphere(178150, 663020, 7, 2, 0x00FF00);
    char name[AT3D_NAME_SIZE];
    ASSERT_EQ(At3d_Sphere_Marker_Get_Name(1, name), 1);
    EXPECT_STREQ(name, "S2");
    double diameter = 0, location[3];
    float rgb1[3], rgb2[3];
    int color2 = -1, interval = -1, strobe = -1, visible = -1;
    ASSERT_EQ(At3d_Sphere_Marker_Get_Data("S1", &diameter, location, rgb1, rgb2, &color2, &interval, &strobe, &visible), 1);
    testsupport::expectVec(location, 50, 20, 7);
    testsupport::expectRgb(rgb1, 0, 1, 0);
    EXPECT_EQ(strobe, 0);
    EXPECT_EQ(visible, 1);
    EXPECT_TRUE(modelSession().CENTERSPHEREVISIBLE);
}
