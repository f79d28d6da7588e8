// Shape files: the text report and the drawing in the scene.

#include <gdal_priv.h>
#include <gtest/gtest.h>
#include <ogrsf_frmts.h>

#include <filesystem>

#include "app/model/ModelSession.h"
#include "app/services/DialogService.h"
#include "app/services/SessionPaths.h"
#include "overlays/ShapeFiles.h"
#include "scene/engine_interface.h"
#include "support/CliRunner.h"
#include "support/TestSupport.h"

using namespace testsupport;

namespace {

struct ShapeWriter {
    GDALDataset* ds = nullptr;
    OGRLayer* layer = nullptr;
    ShapeWriter(const std::string& path, OGRwkbGeometryType type) {
        GDALAllRegister();
        ds = GetGDALDriverManager()->GetDriverByName("ESRI Shapefile")->Create(path.c_str(), 0, 0, 0, GDT_Unknown, nullptr);
        layer = ds->CreateLayer(std::filesystem::path(path).stem().c_str(), nullptr, type, nullptr);
    }
    ~ShapeWriter() { GDALClose(ds); }
    void field(const char* name, OGRFieldType type) {
        OGRFieldDefn f(name, type);
        if (type == OFTReal) f.SetPrecision(6);
        layer->CreateField(&f);
    }
    OGRFeature* feature() { return new OGRFeature(layer->GetLayerDefn()); }
    void add(OGRFeature* f, OGRGeometry* g) {
        f->SetGeometryDirectly(g);
        EXPECT_EQ(layer->CreateFeature(f), OGRERR_NONE);
        delete f;
    }
};

OGRPolygon* square(double x, double y, double side) {
    auto* ring = new OGRLinearRing;
    ring->addPoint(x, y);
    ring->addPoint(x, y + side);
    ring->addPoint(x + side, y + side);
    ring->addPoint(x + side, y);
    ring->addPoint(x, y);
    auto* polygon = new OGRPolygon;
    polygon->addRingDirectly(ring);
    return polygon;
}

}  // namespace

TEST(ShapeReport, MapFrameFileListsExtremesShapesAndTypedFields) {
    ScratchDir dir;
    {
        ShapeWriter w(dir.path("roofs.shp"), wkbPolygon);
        w.field("name", OFTString);
        w.field("count", OFTInteger);
        w.field("height", OFTReal);
        w.field("CameraLat", OFTReal);
        OGRFeature* f = w.feature();
        f->SetField("name", "roof");
        f->SetField("count", 7);
        f->SetField("height", 2.5);
        f->SetField("CameraLat", 0.5);
        w.add(f, square(178500, 663500, 10));
    }
    resetSessionPaths();
    sessionPaths().ORVO_T = dir.path("T/");
    std::filesystem::create_directories(dir.path("T"));
    const QString report = ReadShapeFileTatuk(QString::fromStdString(dir.path("roofs.shp")));
    EXPECT_EQ(report.toStdString(), dir.path("T/roofs.txt"));
    EXPECT_EQ(readTextFile(report.toStdString()),
              "Comments: \n"
              "\n File " + dir.path("roofs.shp") + "           Extremes 178500.00 178510.00 663500.00 663510.00 \n"
              "Name is roofs\n"
              "\n UID       1 Polygon Length 40.00 Area=100.00 \n"
              "name STRING roof\n"
              "count NUMBER 7\n"
              "height FLOAT 2.500000\n"
              "CameraLat FLOAT 0.500000 28.647890\n");
    resetSessionPaths();
}

TEST(ShapeReport, DegreeFileShowsExtremesWithSevenDecimals) {
    ScratchDir dir;
    {
        ShapeWriter w(dir.path("pts.shp"), wkbPoint);
        w.field("id", OFTInteger);
        OGRFeature* a = w.feature();
        a->SetField("id", 1);
        w.add(a, new OGRPoint(34.5, 32.1));
        OGRFeature* b = w.feature();
        b->SetField("id", 2);
        w.add(b, new OGRPoint(34.75, 32.125));
    }
    CliResult r = runCli("shape-report " + dir.path("pts.shp"), dir, "HOME=" + dir.root());
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out,
              "Comments: \n"
              "\n File " + dir.path("pts.shp") + "  Xmin,Xmax,Ymin,YMax  Extremes 34.5000000 34.7500000 32.1000000 32.1250000 \n"
              "Name is pts\n"
              "\n UID       1 Point Length 0.00 Area=0.00 \n"
              "id NUMBER 1\n"
              "\n UID       2 Point Length 0.00 Area=0.00 \n"
              "id NUMBER 2\n");
}

TEST(ShapeReport, UnreadableFileGivesNoReport) {
    ScratchDir dir;
    writeTextFile(dir.path("bad.shp"), "not a shape file");
    EXPECT_EQ(ReadShapeFileTatuk(QString::fromStdString(dir.path("bad.shp"))), "");
    EXPECT_EQ(runCli("shape-report " + dir.path("bad.shp"), dir, "HOME=" + dir.root()).exitCode, 1);
    EXPECT_EQ(runCli("shape-report " + dir.path("none.shp"), dir, "HOME=" + dir.root()).exitCode, 1);
}

TEST(ShapeImport, FirstShapeAPolygonDrawsEveryShapeAsRedLinesAlongItsFirstPart) {
    EngineFixtureGuard engine;
    ScratchDir dir;
    {
        ShapeWriter w(dir.path("mixed.shp"), wkbPolygon);
        w.add(w.feature(), square(0, 0, 10));  // 5 ring points: 4 lines
        w.add(w.feature(), square(20, 0, 5));
    }
    const ShapeImportCount count = ImportShapeFileToScene(QString::fromStdString(dir.path("mixed.shp")));
    EXPECT_EQ(count.lines, 8);
    EXPECT_EQ(count.points, 0);
    ASSERT_EQ(At3d_MeasureList_Get_Count(), 8);
    char id[AT3D_NAME_SIZE] = {};
    int visible = 0, observer = 0, obstruction = 0;
    float width = 0, rgb[3] = {};
    double v1[3], v2[3], o[3], ob[3];
    ASSERT_TRUE(At3d_MeasureList_Get_Item(5, id, &visible, &observer, &obstruction, &width, rgb, v1, v2, o, ob));
    EXPECT_STREQ(id, "2");  // the second line of the second square
    EXPECT_FLOAT_EQ(width, 3);
    expectVec(v1, 20, 5, 0, 1e-9);
    expectVec(v2, 25, 5, 0, 1e-9);
}

TEST(ShapeImport, FirstShapeAPointJoinsThePointsInFileOrder) {
    EngineFixtureGuard engine;
    resetModelSession();
    ScratchDir dir;
    {
        ShapeWriter w(dir.path("walk.shp"), wkbPoint25D);
        w.add(w.feature(), new OGRPoint(1, 2, 3));
        w.add(w.feature(), new OGRPoint(4, 6, 3));
        w.add(w.feature(), new OGRPoint(4, 9, 5));
    }
    const ShapeImportCount count = ImportShapeFileToScene(QString::fromStdString(dir.path("walk.shp")));
    EXPECT_EQ(count.points, 3);
    EXPECT_EQ(count.lines, 2);
    EXPECT_EQ(At3d_Sphere_Marker_Get_Count(), 3);
    ASSERT_EQ(At3d_MeasureList_Get_Count(), 2);
    char id[AT3D_NAME_SIZE] = {};
    int visible = 0, observer = 0, obstruction = 0;
    float width = 0, rgb[3] = {};
    double v1[3], v2[3], o[3], ob[3];
    ASSERT_TRUE(At3d_MeasureList_Get_Item(1, id, &visible, &observer, &obstruction, &width, rgb, v1, v2, o, ob));
    EXPECT_STREQ(id, "4");  // named by the shape's number plus one
    EXPECT_FLOAT_EQ(width, 1);
    expectVec(v1, 4, 6, 3, 1e-9);
    expectVec(v2, 4, 9, 5, 1e-9);
}

TEST(ShapeImport, MenuAsksInTheMeasurementsFolder) {
    EngineFixtureGuard engine;
    resetModelSession();
    modelSession().MEASUREMENTSFOLDER = "/m/Measurements/";
    ScriptedDialogService dialogs;
    dialogs.pushCancel();
    installDialogService(&dialogs);
    Importshapefile1Click();
    installDialogService(nullptr);
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].title, "Open the shape file(input)");
    EXPECT_EQ(dialogs.questions()[0].text, "Shape file(*.SHP; *.DXF) | *.SHP;*.dxf");
    EXPECT_EQ(dialogs.questions()[0].folder, "/m/Measurements/");
    EXPECT_EQ(At3d_MeasureList_Get_Count(), 0);
    resetModelSession();
}
