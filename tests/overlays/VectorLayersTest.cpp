// Vector layers: saving as shape file and DXF, merging shape files.

#include <gdal_priv.h>
#include <gtest/gtest.h>
#include <ogrsf_frmts.h>

#include <filesystem>

#include "app/services/DialogService.h"
#include "overlays/VectorLayers.h"
#include "support/CliRunner.h"
#include "support/TestSupport.h"

using namespace testsupport;

namespace {

// A line shape file with the field "name", one shape a name, each a
// segment from (x, 0) to (x, 10).
void writeLines(const std::string& path, const std::vector<std::pair<const char*, double>>& lines) {
    GDALAllRegister();
    GDALDataset* ds =
        GetGDALDriverManager()->GetDriverByName("ESRI Shapefile")->Create(path.c_str(), 0, 0, 0, GDT_Unknown, nullptr);
    ASSERT_NE(ds, nullptr);
    OGRLayer* layer = ds->CreateLayer(std::filesystem::path(path).stem().c_str(), nullptr, wkbLineString, nullptr);
    OGRFieldDefn name("name", OFTString);
    layer->CreateField(&name);
    for (const auto& [text, x] : lines) {
        OGRFeature f(layer->GetLayerDefn());
        f.SetField("name", text);
        OGRLineString line;
        line.addPoint(x, 0);
        line.addPoint(x, 10);
        f.SetGeometry(&line);
        layer->CreateFeature(&f);
    }
    GDALClose(ds);
}

// "name@x" of every shape, in file order.
std::vector<std::string> shapesOf(const std::string& path) {
    std::vector<std::string> out;
    GDALDataset* ds = static_cast<GDALDataset*>(GDALOpenEx(path.c_str(), GDAL_OF_VECTOR, nullptr, nullptr, nullptr));
    if (!ds) return out;
    for (auto& f : *ds->GetLayer(0)) {
        const OGRLineString* line = f->GetGeometryRef()->toLineString();
        out.push_back(std::string(f->GetFieldAsString("name")) + "@" + std::to_string(static_cast<int>(line->getX(0))));
    }
    GDALClose(ds);
    return out;
}

}  // namespace

TEST(VectorLayers, MergeAddsTheOtherFilesShapesAfterTheMastersInOrder) {
    ScratchDir dir;
    writeLines(dir.path("a.shp"), {{"a1", 1}, {"a2", 2}});
    writeLines(dir.path("b.shp"), {{"b1", 3}});
    writeLines(dir.path("c.shp"), {{"c1", 4}, {"c2", 5}});
    ASSERT_TRUE(MergeShapeFilesFromTS({QString::fromStdString(dir.path("a.shp")), QString::fromStdString(dir.path("b.shp")),
                                       QString::fromStdString(dir.path("c.shp"))},
                                      QString::fromStdString(dir.path("all.shp"))));
    EXPECT_EQ(shapesOf(dir.path("all.shp")), (std::vector<std::string>{"a1@1", "a2@2", "b1@3", "c1@4", "c2@5"}));
    EXPECT_TRUE(std::filesystem::exists(dir.path("all.dbf")));
    EXPECT_FALSE(std::filesystem::exists(dir.path("all.zvsave.shp")));
    // The master itself is left as it was.
    EXPECT_EQ(shapesOf(dir.path("a.shp")).size(), 2u);
}

TEST(VectorLayers, MergeOfOneFileShowsTheMessageAndWritesNothing) {
    ScratchDir dir;
    writeLines(dir.path("a.shp"), {{"a1", 1}});
    ScriptedDialogService dialogs;
    installDialogService(&dialogs);
    EXPECT_FALSE(MergeShapeFilesFromTS({QString::fromStdString(dir.path("a.shp"))}, QString::fromStdString(dir.path("m.shp"))));
    installDialogService(nullptr);
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].text, " At least two files needed ");
    EXPECT_FALSE(std::filesystem::exists(dir.path("m.shp")));
}

TEST(VectorLayers, SaveChoosesTheWriterByExtensionInAnyCase) {
    ScratchDir dir;
    writeLines(dir.path("a.shp"), {{"a1", 1}, {"a2", 7}});
    auto layer = ReadVectorLayer(QString::fromStdString(dir.path("a.shp")));
    ASSERT_TRUE(layer);
    EXPECT_EQ(layer->ShapeCount(), 2);
    ASSERT_TRUE(SaveLayer(layer.get(), QString::fromStdString(dir.path("copy.SHP"))));
    EXPECT_EQ(shapesOf(dir.path("copy.SHP")), (std::vector<std::string>{"a1@1", "a2@7"}));
    ASSERT_TRUE(SaveLayer(layer.get(), QString::fromStdString(dir.path("copy.dxf"))));
    EXPECT_NE(readTextFile(dir.path("copy.dxf")).find("LWPOLYLINE"), std::string::npos);
    EXPECT_FALSE(SaveLayer(layer.get(), QString::fromStdString(dir.path("copy.gpkg"))));
    EXPECT_FALSE(std::filesystem::exists(dir.path("copy.gpkg")));
}

TEST(VectorLayersCli, MergeShapesPrintsTheOutputAndItsShapeCount) {
    ScratchDir dir;
    writeLines(dir.path("a.shp"), {{"a1", 1}});
    writeLines(dir.path("b.shp"), {{"b1", 3}, {"b2", 4}});
    CliResult r = runCli("merge-shapes " + dir.path("m.shp") + " " + dir.path("a.shp") + " " + dir.path("b.shp"), dir,
                         "HOME=" + dir.root());
    ASSERT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, dir.path("m.shp") + "\nshapes 3\n");
    CliResult one = runCli("merge-shapes " + dir.path("n.shp") + " " + dir.path("a.shp"), dir, "HOME=" + dir.root());
    EXPECT_EQ(one.exitCode, 1);
    EXPECT_NE(one.err.find(" At least two files needed "), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(dir.path("n.shp")));
}

TEST(VectorLayers, NewLayerReplacesOneOfItsStrippedNameInTheView) {
    TGIS_ViewerWnd gis;
    TGIS_LayerVector* first = GenNewLayer(&gis, "/data/roofs.shp");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->Name, "roofs$shp");
    EXPECT_EQ(first->ShapeCount(), 0);
    TGIS_LayerVector* second = GenNewLayer(&gis, "/other/ROOFS.shp");
    ASSERT_EQ(gis.Items.size(), 1u);
    EXPECT_EQ(gis.Items[0].get(), second);
    QString found;
    EXPECT_TRUE(IsAlreadyInGIS("Roofs$SHP", found, &gis));
    EXPECT_EQ(found, "ROOFS$shp");
    EXPECT_FALSE(IsAlreadyInGIS("walls", found, &gis));
}

TEST(VectorLayers, CreateLayerReturnsTheViewsOwnOrReadsTheFile) {
    ScratchDir dir;
    writeLines(dir.path("a.shp"), {{"a1", 1}, {"a2", 2}});
    TGIS_ViewerWnd gis;
    TGIS_LayerVector* read = MyGisCreateLayer("a.shp", QString::fromStdString(dir.path("a.shp")), &gis);
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->Name, "a$shp");
    EXPECT_EQ(read->ShapeCount(), 2);
    EXPECT_EQ(MyGisCreateLayer("A$SHP", "/no/such.shp", &gis), read);
    EXPECT_EQ(MyGisCreateLayer("b", "/no/such.shp", &gis), nullptr);
    EXPECT_EQ(gis.Items.size(), 1u);
}

TEST(VectorLayers, LayerToLayerCopiesEveryShapeOrThoseMeetingTheGeometry) {
    ScratchDir dir;
    writeLines(dir.path("a.shp"), {{"a1", 1}, {"a2", 5}, {"a3", 9}});
    auto from = ReadVectorLayer(QString::fromStdString(dir.path("a.shp")));
    ASSERT_TRUE(from);
    from->EPSG = 2039;
    TGIS_ViewerWnd gis;
    TGIS_LayerVector* all = GenNewLayer(&gis, "all");
    ASSERT_NE(all, nullptr);
    EXPECT_EQ(LayerToLayerWKT(from.get(), all, ""), 3);
    EXPECT_EQ(all->ShapeCount(), 3);
    EXPECT_EQ(all->EPSG, 2039);
    TGIS_LayerVector* some = GenNewLayer(&gis, "some");
    // A box from x 4 to 10 meets the lines at x 5 and x 9 only.
    EXPECT_EQ(LayerToLayerWKT(from.get(), some, "POLYGON((4 0,10 0,10 10,4 10,4 0))"), 2);
}
