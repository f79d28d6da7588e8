// zorvex64-cli flythrough, run as a user would on a flat site with an
// Offset: a list of map points and a digitised ".LIN" to way point files,
// and the input it refuses.
#include <gtest/gtest.h>

#include <cmath>
#include <QString>
#include <array>
#include <cstring>
#include <fstream>
#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include "app/services/GdalDrivers.h"
#include "measure/MeasureRecords.h"
#include "motion/Flythrough.h"
#include "support/CliRunner.h"
#include "support/TestSupport.h"

using testsupport::CliResult;
using testsupport::ScratchDir;
using testsupport::writeTextFile;

namespace {

// A 100 m square terrain at file height 40, 178000 / 663000 away from the map frame.
class FlythroughCli : public ::testing::Test {
protected:
    ScratchDir dir;
    std::string model;

    void SetUp() override {
        writeTextFile(dir.path("site/Site.obj"),
                      "v -50 -50 40\nv 50 -50 40\nv 50 50 40\nv -50 50 40\ng terrain\nf 1 2 3 4\n");
        writeTextFile(dir.path("site/offset.txt"), "178000.000 663000.000 0.000\n");
        model = dir.path("site/Site.obj");
    }
    CliResult run(const std::string& arguments) {
        return testsupport::runCli("flythrough " + arguments, dir, "HOME=" + dir.path("home"));
    }
    // X, Y, Z and "Sta" of each way point.
    static std::vector<std::array<double, 4>> waypoints(const std::string& path) {
        EnsureGdalDrivers();
        std::vector<std::array<double, 4>> points;
        auto* dataset = static_cast<GDALDataset*>(GDALOpenEx(path.c_str(), GDAL_OF_VECTOR, nullptr, nullptr, nullptr));
        if (!dataset) return points;
        OGRLayer* layer = dataset->GetLayer(0);
        while (OGRFeature* feature = layer->GetNextFeature()) {
            const auto* p = dynamic_cast<const OGRPoint*>(feature->GetGeometryRef());
            if (p) points.push_back({p->getX(), p->getY(), p->getZ(), feature->GetFieldAsDouble("Sta")});
            OGRFeature::DestroyFeature(feature);
        }
        GDALClose(dataset);
        return points;
    }
    static MEASURE_DATA segment(const char* id, std::array<double, 3> a, std::array<double, 3> b) {
        MEASURE_DATA item{};
        std::strncpy(item.id, id, sizeof item.id - 1);
        item.visible_Flag = 1;
        item.lineWidth = 4;
        std::memcpy(item.vertex1, a.data(), sizeof item.vertex1);
        std::memcpy(item.vertex2, b.data(), sizeof item.vertex2);
        return item;
    }
};

}  // namespace

TEST_F(FlythroughCli, AListOfMapPointsBecomesWayPointsAboveTheGroundOrTheGivenHeight) {
    // The first point lies on the model, the second has its own height.
    writeTextFile(dir.path("path.txt"), "178000 663000\n178030,663040,45\n");
    const CliResult result = run(model + " " + dir.path("path.txt") + " " + dir.path("out/fly.shp") + " --alt 10");
    ASSERT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, "waypoints 2 length 50.00\n");
    const auto points = waypoints(dir.path("out/fly.shp"));
    ASSERT_EQ(points.size(), 2u);
    EXPECT_EQ(points[0], (std::array<double, 4>{178000, 663000, 50, 0}));
    EXPECT_EQ(points[1], (std::array<double, 4>{178030, 663040, 55, 50}));
}

TEST_F(FlythroughCli, ADigitisedLineIsSmoothedAtAHundredMetresByDefault) {
    const MEASURE_DATA items[2] = {segment("POL_7-1", {178000, 663000, 40}, {178000, 663030, 40}),
                                   segment("POL_7-2", {178000, 663030, 40}, {178040, 663030, 40})};
    {
        std::ofstream file(dir.path("fly.LIN"), std::ios::binary);
        for (const MEASURE_DATA& item : items) {
            const MeasureRecordBytes bytes = EncodeMeasureRecord(item);
            file.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
        }
    }
    const CliResult result = run(model + " " + dir.path("fly.LIN") + " " + dir.path("fly.LIN.SHP"));
    ASSERT_EQ(result.exitCode, 0) << result.err;
    const std::vector<TGIS_Point3D> smooth =
        SmoothLine({{178000, 663000, 40, 0}, {178000, 663030, 40, 0}, {178040, 663030, 40, 0}}, 3);
    double length = 0;
    for (std::size_t i = 1; i < smooth.size(); ++i)
        length += std::hypot(smooth[i].X - smooth[i - 1].X, smooth[i].Y - smooth[i - 1].Y);
    EXPECT_EQ(result.out, QString::asprintf("waypoints 10 length %.2f\n", length).toStdString());
    const auto points = waypoints(dir.path("fly.LIN.SHP"));
    ASSERT_EQ(points.size(), 10u);
    EXPECT_EQ(points.front(), (std::array<double, 4>{178000, 663000, 140, 0}));
    EXPECT_EQ(points.back(), (std::array<double, 4>{178040, 663030, 140, std::round(length)}));
}

TEST_F(FlythroughCli, APointOffTheModelOrASinglePointFailsAndBadArgumentsShowTheUsage) {
    writeTextFile(dir.path("off.txt"), "178000 663000\n179000 663000\n");
    CliResult result = run(model + " " + dir.path("off.txt") + " " + dir.path("o.shp"));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.err.find("no model under 179000.000 663000.000 (line 2)"), std::string::npos) << result.err;

    writeTextFile(dir.path("one.txt"), "178000 663000 41\n");
    result = run(model + " " + dir.path("one.txt") + " " + dir.path("o.shp"));
    EXPECT_EQ(result.exitCode, 1);
    const std::string tooFew = "a path needs 2 points or more; " + dir.path("one.txt") + " holds 1";
    EXPECT_NE(result.err.find(tooFew), std::string::npos) << result.err;
    EXPECT_FALSE(std::ifstream(dir.path("o.shp")).good());

    result = run(model + " " + dir.path("one.txt") + " " + dir.path("o.shp") + " --alt high");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.err.find("usage: zorvex64-cli flythrough MODEL LINE OUT.shp [--alt M]"), std::string::npos);
}
