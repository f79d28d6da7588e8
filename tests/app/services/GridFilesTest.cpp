// The grid's files: CSV, grid XML, spreadsheets and polygon shapes, and the
// grid form's logic.
#include <QFile>
#include <QFileInfo>
#include <gdal_priv.h>
#include <ogrsf_frmts.h>
#include <set>

#include "ServicesFixture.h"
#include "app/services/GridFiles.h"
#include "app/services/ShapeFromCsv.h"
#include "app/services/Viewers.h"

using Question = ScriptedDialogService::Question;

TEST(GridCsv, QuotedFieldsKeepCommasQuotesAndLineBreaks) {
    const GridRows rows = ParseCsvText("a,\"b,1\",\"say \"\"hi\"\"\"\r\n\"two\nlines\",,x\n\nlast");
    ASSERT_EQ(rows.size(), 4);
    EXPECT_EQ(rows[0], (QStringList{"a", "b,1", "say \"hi\""}));
    EXPECT_EQ(rows[1], (QStringList{"two\nlines", "", "x"}));
    EXPECT_TRUE(rows[2].isEmpty());
    EXPECT_EQ(rows[3], QStringList{"last"});
    EXPECT_EQ(CsvLine(rows[0]), "a,\"b,1\",\"say \"\"hi\"\"\"");
    EXPECT_EQ(CsvLine(rows[1]), "\"two\nlines\",,x");
}

TEST_F(ServicesTest, CsvToXmlToCsvKeepsEveryByte) {
    const std::string csv = "Name,Color,Note\nRoof 1,255,\"a, b\"\nR&D <2>,65280,\n";
    testsupport::writeTextFile(dir.path("in.csv"), csv);
    GridRows rows;
    ASSERT_TRUE(LoadCsvGrid(path("in.csv"), rows));
    ASSERT_TRUE(SaveXmlGrid(rows, path("grid.xml")));
    EXPECT_EQ(testsupport::readTextFile(dir.path("grid.xml")),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<AA>\n"
              "  <BB>\n"
              "    <C1>Name</C1>\n"
              "    <C2>Color</C2>\n"
              "    <C3>Note</C3>\n"
              "  </BB>\n"
              "  <BB>\n"
              "    <C1>Roof 1</C1>\n"
              "    <C2>255</C2>\n"
              "    <C3>a, b</C3>\n"
              "  </BB>\n"
              "  <BB>\n"
              "    <C1>R&amp;D &lt;2&gt;</C1>\n"
              "    <C2>65280</C2>\n"
              "    <C3></C3>\n"
              "  </BB>\n"
              "</AA>\n");
    GridRows back;
    ASSERT_TRUE(LoadXmlGrid(path("grid.xml"), back));
    EXPECT_EQ(back, rows);
    ASSERT_TRUE(SaveCsvGrid(back, path("out.csv")));
    EXPECT_EQ(testsupport::readTextFile(dir.path("out.csv")), csv);
}

TEST_F(ServicesTest, XlsxRoundTripKeepsTheTitleRowAndTheCells) {
    const GridRows rows{{"Name", "Color"}, {"Roof 1", "255"}, {"Roof 2", ""}, {"Wall", "12.5"}};
    ASSERT_TRUE(SaveXlsxGrid(rows, path("grid.xlsx")));
    GridRows back;
    ASSERT_TRUE(LoadSpreadsheetGrid(path("grid.xlsx"), back));
    EXPECT_EQ(back, (GridRows{{"Name", "Color"}, {"Roof 1", "255"}, {"Roof 2"}, {"Wall", "12.5"}}));
    EXPECT_FALSE(LoadSpreadsheetGrid(path("none.xlsx"), back));
}

TEST_F(ServicesTest, CsvPolygonsBecomeAPolygonShapeWithNameAndColour) {
    testsupport::writeTextFile(dir.path("polygons.csv"),
                               "Polygon,Color,X1,Y1\n"
                               "Roof 1,255,178000.5,663000.25,178010.5,663000.25,178010.5,663008.25,\n"
                               "Two corners,1,0,0,1,1\n"
                               "Bad,x,0,0,1,0,1,1\n"
                               "\xd7\x92\xd7\x92 north,16711680,1,1,2,1,2,2,1,1\n");
    EXPECT_FALSE(CreateSHPfileFromCsv(path("polygons.csv"), path("out/Roofs.shp")));
    QDir().mkpath(path("out"));
    testsupport::writeTextFile(dir.path("out/Roofs.prj"), "stale");
    ASSERT_TRUE(CreateSHPfileFromCsv(path("polygons.csv"), path("out/Roofs.shp")));
    EXPECT_FALSE(QFileInfo::exists(path("out/Roofs.prj")));
    EXPECT_EQ(testsupport::readTextFile(dir.path("out/Roofs.cpg")), "UTF-8");
    EXPECT_EQ(QDir(path("out")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              (QStringList{"Roofs.cpg", "Roofs.dbf", "Roofs.shp", "Roofs.shx"}));

    GDALDataset* shape = GDALDataset::Open(dir.path("out/Roofs.shp").c_str(), GDAL_OF_VECTOR);
    ASSERT_NE(shape, nullptr);
    OGRLayer* layer = shape->GetLayer(0);
    EXPECT_EQ(layer->GetGeomType(), wkbPolygon);
    OGRFeatureDefn* defn = layer->GetLayerDefn();
    ASSERT_EQ(defn->GetFieldCount(), 2);
    EXPECT_STREQ(defn->GetFieldDefn(0)->GetNameRef(), "Polygon");
    EXPECT_EQ(defn->GetFieldDefn(0)->GetType(), OFTString);
    EXPECT_EQ(defn->GetFieldDefn(0)->GetWidth(), 40);
    EXPECT_STREQ(defn->GetFieldDefn(1)->GetNameRef(), "Color");
    EXPECT_EQ(defn->GetFieldDefn(1)->GetWidth(), 20);
    ASSERT_EQ(layer->GetFeatureCount(), 2);

    OGRFeature* first = layer->GetNextFeature();
    EXPECT_STREQ(first->GetFieldAsString("Polygon"), "Roof 1");
    EXPECT_EQ(first->GetFieldAsDouble("Color"), 255.0);
    // The ring comes back closed and clockwise, as shape files keep outer
    // rings, with the corners exact in double: half of 10 m by 8 m.
    const OGRLinearRing* ring = first->GetGeometryRef()->toPolygon()->getExteriorRing();
    ASSERT_EQ(ring->getNumPoints(), 4);
    EXPECT_TRUE(ring->isClockwise());
    EXPECT_EQ(ring->getX(0), ring->getX(3));
    EXPECT_EQ(ring->getY(0), ring->getY(3));
    std::set<std::pair<double, double>> corners;
    for (int i = 0; i < 3; ++i) corners.insert({ring->getX(i), ring->getY(i)});
    EXPECT_EQ(corners, (std::set<std::pair<double, double>>{
                           {178000.5, 663000.25}, {178010.5, 663000.25}, {178010.5, 663008.25}}));
    EXPECT_NEAR(first->GetGeometryRef()->toPolygon()->get_Area(), 40.0, 1e-9);
    OGRFeature::DestroyFeature(first);

    OGRFeature* second = layer->GetNextFeature();
    EXPECT_STREQ(second->GetFieldAsString("Polygon"), "\xd7\x92\xd7\x92 north");
    EXPECT_EQ(second->GetFieldAsDouble("Color"), 16711680.0);
    EXPECT_EQ(second->GetGeometryRef()->toPolygon()->getExteriorRing()->getNumPoints(), 4);
    OGRFeature::DestroyFeature(second);
    GDALClose(shape);
}

TEST_F(ServicesTest, AShapeWithACoordinateSystemGetsItsPrj) {
    const GridRows rows{{"A", "1", "0", "0", "1", "0", "1", "1"}};
    ASSERT_TRUE(CreateSHPfileFromRows(rows, path("a.shp"), "EPSG:2039"));
    EXPECT_TRUE(QFileInfo::exists(path("a.prj")));
    EXPECT_NE(testsupport::readTextFile(dir.path("a.prj")).find("Israel"), std::string::npos);
}

TEST_F(ServicesTest, ShowOrvoCsvFileNumbersTheRowsBelowTheTitleAndShowsTheForm) {
    testsupport::writeTextFile(dir.path("t.csv"), "Name,kWh\nA,10\nB,20\n");
    ASSERT_TRUE(ShowOrvoCSVFile("Energy", path("t.csv"), true, true, false));
    const XlsFormState& state = xlsFormState();
    EXPECT_EQ(state.fixedRows, 1);
    EXPECT_EQ(state.rows, (GridRows{{"", "Name", "kWh"}, {"1", "A", "10"}, {"2", "B", "20"}}));
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].kind, Question::Grid);
    EXPECT_EQ(dialogs.questions()[0].title, "Energy (2)");
    EXPECT_FALSE(ShowOrvoCSVFile("Energy", path("none.csv"), true, true, false));
}

TEST_F(ServicesTest, TheFormsExportFollowsTheExtensionAndClearsEdited) {
    testsupport::writeTextFile(dir.path("t.csv"), "a,b\n");
    ASSERT_TRUE(ShowOrvoCSVFile("T", path("t.csv"), false, false, false));
    WorkBookGrid1EditCellDone(1, 2, "new");
    EXPECT_TRUE(xlsFormState().edited);
    EXPECT_EQ(xlsFormState().rows, (GridRows{{"a", "b"}, {"", "", "new"}}));

    dialogs.pushFile(path("saved"), 2);
    EXPECT_TRUE(ExportbtnClick());
    EXPECT_FALSE(xlsFormState().edited);
    GridRows back;
    ASSERT_TRUE(LoadXmlGrid(path("saved.xml"), back));
    EXPECT_EQ(back, xlsFormState().rows);

    dialogs.pushFile(path("saved.xml"));
    EXPECT_TRUE(ImportBtnClick());
    EXPECT_EQ(xlsFormState().XLSCurrentFileName, path("saved.xml"));

    EXPECT_FALSE(XlsImportFile(path("gone.csv")));
    EXPECT_EQ(messages(), QStringList{"Could not open for input\n[" + path("gone.csv") + "]"});
}
