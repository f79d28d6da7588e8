// Measurement files written from and read into the engine's lists: the map
// frame on the way out, the Offset that stays on the way back, which records
// each kind of file keeps, the shape beside a polygon, billboards with their
// pictures, and damaged or missing files.
#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <gdal_priv.h>
#include <ogrsf_frmts.h>
#include <vector>

#include "MeasureFixture.h"
#include "measure/MeasureRecords.h"
#include "measure/MeasurementFiles.h"
#include "measure/MeasurementMenus.h"
#include "scene/EngineSession.h"

namespace {

const float BLUE[3] = {0, 0, 1};

void addLine(const char* id, double x1, double y1, double z1, double x2, double y2, double z2) {
    const double a[3] = {x1, y1, z1}, b[3] = {x2, y2, z2};
    ASSERT_TRUE(At3d_MeasureList_Add_Item(id, 1, 0, 0, 4, BLUE, a, b, a, a));
}

QByteArray fileBytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::vector<MEASURE_DATA> records(const QString& path) {
    std::vector<MEASURE_DATA> list;
    EXPECT_TRUE(ReadMeasureFile(path, list));
    return list;
}

// A picture of w x h pixels with alpha whose bytes count up from seed.
std::vector<UInt8> picture(int w, int h, int seed) {
    std::vector<UInt8> bytes(std::size_t(w * h * 4));
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = UInt8(seed + i);
    return bytes;
}

void addBillboard(const char* id, int alpha, const std::vector<UInt8>& image, int w, int h, double x) {
    const double position[3] = {x, 1, 2}, pivot[3] = {x, 0, 2}, rotation[3] = {0, 90, 0};
    ASSERT_TRUE(At3d_Measure_Billboard_Add_Item(id, image.data(), w, h, alpha, 2, 0, 1, 1, 0, BLUE, 4, 2, position,
                                                pivot, rotation));
}

class MeasurementFiles : public MeasureFixture {
protected:
    void SetUp() override {
        MeasureFixture::SetUp();
        frameState().Offset[0] = 1000;
        frameState().Offset[1] = 2000;
        frameState().Offset[2] = 5;
    }
};

}  // namespace

TEST_F(MeasurementFiles, AMeasureFileHoldsTheMeasuresInTheMapFrameAndNoPolygon) {
    addLine("M1", 1, 2, 3, 4, 6, 3);
    addLine("POL_10-1", 0, 0, 0, 1, 0, 0);
    const QString mes = measurements("T.MES");
    ASSERT_EQ(ExportMeasureData(mes, false), 1);
    const QByteArray bytes = fileBytes(mes);
    ASSERT_EQ(bytes.size(), 224);
    const MEASURE_DATA m = DecodeMeasureRecord(reinterpret_cast<const unsigned char*>(bytes.constData()));
    EXPECT_STREQ(m.id, "M1");
    // Local + OriginalobjectCenter + Offset, on all four points.
    EXPECT_DOUBLE_EQ(m.vertex1[0], 1 + CENTER_X + 1000);
    EXPECT_DOUBLE_EQ(m.vertex2[1], 6 + CENTER_Y + 2000);
    EXPECT_DOUBLE_EQ(m.vertex2[2], 3 + CENTER_Z + 5);
    EXPECT_DOUBLE_EQ(m.observer[0], 1 + CENTER_X + 1000);
    EXPECT_DOUBLE_EQ(m.distance, 5);
}

TEST_F(MeasurementFiles, APolygonFileKeepsOnlyTheNewestOutlineWhenAskedAndHasItsShape) {
    addLine("POL_10-1", 0, 0, 0, 4, 0, 0);
    addLine("POL_10-2", 4, 0, 0, 4, 3, 0);
    addLine("M1", 9, 9, 9, 8, 8, 8);
    addLine("POL_20-1", 10, 10, 1, 14, 10, 1);
    addLine("POL_20-2", 14, 10, 1, 14, 13, 1);
    addLine("POL_20-3", 14, 13, 1, 10, 10, 1);
    const QString pol = measurements("roof.POL");
    ASSERT_EQ(ExportMeasureData(pol, true), 3);
    for (const MEASURE_DATA& m : records(pol)) EXPECT_EQ(QString(m.id).left(7), "POL_20-");
    ASSERT_EQ(ExportMeasureData(measurements("all.pol"), false), 5);

    // The outline's three corners, once each, closed by the shape.
    GDALAllRegister();
    GDALDataset* shape = static_cast<GDALDataset*>(
        GDALOpenEx(QFile::encodeName(measurements("roof.SHP")).constData(), GDAL_OF_VECTOR, nullptr, nullptr, nullptr));
    ASSERT_NE(shape, nullptr);
    OGRLayer* layer = shape->GetLayer(0);
    ASSERT_EQ(layer->GetFeatureCount(), 1);
    OGRFeature* feature = layer->GetNextFeature();
    const OGRPolygon* polygon = feature->GetGeometryRef()->toPolygon();
    EXPECT_EQ(polygon->getExteriorRing()->getNumPoints(), 4);
    EXPECT_NEAR(polygon->getExteriorRing()->get_Area(), 6, 1e-6);
    EXPECT_NEAR(polygon->getExteriorRing()->getZ(0), 1 + CENTER_Z + 5, 1e-9);
    EXPECT_EQ(feature->GetFieldAsDouble("Color"), 16711680);
    EXPECT_EQ(feature->GetFieldAsDouble("MaxAllowed"), 99999);
    OGRFeature::DestroyFeature(feature);
    GDALClose(shape);
}

TEST_F(MeasurementFiles, NothingToSaveWritesNoFileAndLeavesAnEarlierOneAlone) {
    const QString mes = measurements("T.MES");
    EXPECT_EQ(ExportMeasureData(mes, false), 0);
    EXPECT_FALSE(QFileInfo::exists(mes));
    testsupport::writeTextFile(mes.toStdString(), "earlier");
    addLine("POL_10-1", 0, 0, 0, 4, 0, 0);
    EXPECT_EQ(ExportMeasureData(mes, false), 0);
    EXPECT_EQ(fileBytes(mes), "earlier");
}

TEST_F(MeasurementFiles, ReadingBackKeepsTheOffsetInThePoints) {
    addLine("M1", 1, 2, 3, 4, 6, 3);
    const QString mes = measurements("T.MES");
    ASSERT_EQ(ExportMeasureData(mes, false), 1);
    At3d_MeasureList_Clear();
    addLine("M0", 0, 0, 0, 1, 1, 1);
    ASSERT_EQ(ImportMeasureData(mes), 1);
    ASSERT_EQ(At3d_MeasureList_Get_Count(), 2);
    MEASURE_DATA back{};
    ASSERT_TRUE(Get_MeasureList_Item(1, &back));
    EXPECT_STREQ(back.id, "M1");
    // Only the centre came off: the line lands shifted by the Offset.
    EXPECT_DOUBLE_EQ(back.vertex1[0], 1 + 1000);
    EXPECT_DOUBLE_EQ(back.vertex1[1], 2 + 2000);
    EXPECT_DOUBLE_EQ(back.vertex2[2], 3 + 5);
}

TEST_F(MeasurementFiles, APolygonReadBackFillsTheWayPointsOneMoreThanItsRecords) {
    addLine("POL_10-1", 0, 0, 0, 4, 0, 0);
    addLine("POL_10-2", 4, 0, 0, 4, 3, 0);
    addLine("POL_10-3", 4, 3, 0, 0, 0, 0);
    const QString pol = measurements("T.POL");
    ASSERT_EQ(ExportMeasureData(pol, false), 3);
    At3d_MeasureList_Clear();
    frameState().Offset[0] = frameState().Offset[1] = frameState().Offset[2] = 0;
    ASSERT_EQ(ImportMeasureData(pol), 3);
    const DigitiseState& g = digitiseState();
    ASSERT_EQ(g.NWPW, 4);
    EXPECT_NEAR(g.WaypointW[1].X, 4 + 1000, 1e-9);
    EXPECT_NEAR(g.WaypointW[3].X, 0 + 1000, 1e-9);
    EXPECT_NEAR(g.WaypointW[3].Y, 0 + 2000, 1e-9);
}

TEST_F(MeasurementFiles, ARecordCutShortAtTheEndIsDropped) {
    addLine("M1", 1, 2, 3, 4, 6, 3);
    addLine("M2", 1, 2, 3, 4, 6, 9);
    const QString mes = measurements("T.MES");
    ASSERT_EQ(ExportMeasureData(mes, false), 2);
    QByteArray bytes = fileBytes(mes);
    bytes.append(bytes.left(100));
    testsupport::writeTextFile(mes.toStdString(), bytes.toStdString());
    At3d_MeasureList_Clear();
    EXPECT_EQ(ImportMeasureData(mes), 2);
    EXPECT_EQ(At3d_MeasureList_Get_Count(), 2);
}

TEST_F(MeasurementFiles, AFileThatCannotBeOpenedChangesNothing) {
    addBillboard("B", 1, picture(2, 2, 0), 2, 2, 5);
    EXPECT_EQ(ImportMeasureData(measurements("missing.MES")), 0);
    EXPECT_EQ(ImportBillboardData(measurements("missing.BLB")), 0);
    EXPECT_EQ(At3d_Measure_Billboard_Get_Count(), 1);
}

TEST_F(MeasurementFiles, ABillboardContainerLeavesLabelsOutAndReplacesEveryBillboardWhenRead) {
    const std::vector<UInt8> image = picture(3, 2, 7);
    addBillboard("Gate|FLAG17", 1, image, 3, 2, 5);
    addBillboard("12.30", 2, picture(4, 4, 0), 4, 4, 6);
    const QString blb = measurements("T.BLB");
    ASSERT_EQ(ExportBillboardData(blb), 1);
    const QByteArray bytes = fileBytes(blb);
    ASSERT_EQ(bytes.size(), 224 + 24);
    EXPECT_EQ(QByteArray(bytes.constData() + 224, 24),
              QByteArray(reinterpret_cast<const char*>(image.data()), 24));
    const BILLBOARD_DATA written = DecodeBillboardRecord(reinterpret_cast<const unsigned char*>(bytes.constData()));
    EXPECT_DOUBLE_EQ(written.position[0], 5 + CENTER_X + 1000);
    EXPECT_DOUBLE_EQ(written.pivot[1], 0 + CENTER_Y + 2000);

    addBillboard("Other", 1, picture(2, 2, 1), 2, 2, 9);
    ASSERT_EQ(ImportBillboardData(blb), 1);
    ASSERT_EQ(At3d_Measure_Billboard_Get_Count(), 1);
    BILLBOARD_DATA back{};
    ASSERT_TRUE(Get_Billboard_Data(0, &back));
    EXPECT_STREQ(back.id, "Gate|FLAG17");
    EXPECT_DOUBLE_EQ(back.position[0], 5);
    EXPECT_EQ(std::vector<UInt8>(back.imagePtr, back.imagePtr + back.imageSize), image);
    delete[] back.imagePtr;
}

TEST_F(MeasurementFiles, ABadEntryOfAContainerIsLeftOutAndACutOneEndsIt) {
    addBillboard("A", 1, picture(2, 2, 0), 2, 2, 5);
    addBillboard("B", 1, picture(2, 2, 9), 2, 2, 6);
    const QString blb = measurements("T.BLB");
    ASSERT_EQ(ExportBillboardData(blb), 2);
    QByteArray bytes = fileBytes(blb);
    ASSERT_EQ(bytes.size(), 2 * (224 + 16));
    // The first entry claims a width its 16 bytes can't hold; the second is whole.
    bytes[84] = 3;
    bytes.append(bytes.mid(240, 230));
    testsupport::writeTextFile(blb.toStdString(), bytes.toStdString());
    std::vector<BILLBOARD_DATA> entries;
    ASSERT_TRUE(ReadBillboardFile(blb, entries));
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_STREQ(entries[0].id, "B");
}

TEST_F(MeasurementFiles, SaveAllWritesBillboardsMeasuresAndPolygonsUnderTheNamesChosen) {
    addLine("M1", 1, 2, 3, 4, 6, 3);
    addLine("POL_10-1", 0, 0, 0, 4, 0, 0);
    addLine("POL_10-2", 4, 0, 0, 4, 3, 0);
    addBillboard("B", 1, picture(2, 2, 0), 2, 2, 5);
    dialogs.pushFile(measurements("a.BLB"));
    dialogs.pushFile(measurements("a.MES"));
    dialogs.pushFile(measurements("a.POL"));
    SaveAllClick();
    EXPECT_EQ(dialogs.questions()[0].value, "T.BLB");
    EXPECT_EQ(fileBytes(measurements("a.BLB")).size(), 224 + 16);
    EXPECT_EQ(fileBytes(measurements("a.MES")).size(), 224);
    EXPECT_EQ(fileBytes(measurements("a.POL")).size(), 2 * 224);

    // Reading them back by extension: measures add, billboards replace.
    At3d_MeasureList_Clear();
    dialogs.pushFile(measurements("a.MES") + "\n" + measurements("a.POL") + "\n" + measurements("a.BLB"));
    EXPECT_EQ(DoImportMeasurements({}), 3);
    EXPECT_EQ(At3d_MeasureList_Get_Count(), 3);
    EXPECT_EQ(At3d_Measure_Billboard_Get_Count(), 1);
}
