// The flythrough: the way point file of a digitised line, its smoothing,
// positions along an opened path, the walk's keys, the video steps and the
// completion written back.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <cmath>
#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include "app/dispatch/AppMessage.h"
#include "app/dispatch/KeyCodes.h"
#include "app/model/ModelSession.h"
#include "app/services/DialogService.h"
#include "app/services/GdalDrivers.h"
#include "app/services/SessionPaths.h"
#include "app/session/CameraState.h"
#include "app/session/DispatchState.h"
#include "app/session/MainFormState.h"
#include "app/session/RubberbandState.h"
#include "app/session/ViewerSettings.h"
#include "geo/Frames.h"
#include "motion/Flythrough.h"
#include "scene/engine_interface.h"
#include "support/TestSupport.h"

namespace {

struct Feature {
    double x, y, z;
    std::map<std::string, double> fields;
};

struct ShapeFile {
    std::vector<std::string> names;
    std::vector<int> widths, precisions;
    std::vector<Feature> features;
};

ShapeFile readShape(const std::string& path) {
    EnsureGdalDrivers();
    ShapeFile shape;
    auto* dataset = static_cast<GDALDataset*>(GDALOpenEx(path.c_str(), GDAL_OF_VECTOR, nullptr, nullptr, nullptr));
    if (!dataset) return shape;
    OGRLayer* layer = dataset->GetLayer(0);
    OGRFeatureDefn* definition = layer->GetLayerDefn();
    for (int i = 0; i < definition->GetFieldCount(); ++i) {
        shape.names.push_back(definition->GetFieldDefn(i)->GetNameRef());
        shape.widths.push_back(definition->GetFieldDefn(i)->GetWidth());
        shape.precisions.push_back(definition->GetFieldDefn(i)->GetPrecision());
    }
    while (OGRFeature* feature = layer->GetNextFeature()) {
        const auto* point = dynamic_cast<const OGRPoint*>(feature->GetGeometryRef());
        Feature f{point ? point->getX() : NAN, point ? point->getY() : NAN, point ? point->getZ() : NAN, {}};
        for (const std::string& name : shape.names) f.fields[name] = feature->GetFieldAsDouble(name.c_str());
        shape.features.push_back(f);
        OGRFeature::DestroyFeature(feature);
    }
    GDALClose(dataset);
    return shape;
}

void expectPoint(const TGIS_Point3D& p, double x, double y, double z, double tol = 1e-9) {
    EXPECT_NEAR(p.X, x, tol);
    EXPECT_NEAR(p.Y, y, tol);
    EXPECT_NEAR(p.Z, z, tol);
}

class Flythrough : public ::testing::Test {
protected:
    testsupport::EngineFixtureGuard engine;
    testsupport::ScratchDir dir;
    ScriptedDialogService dialogs;

    void SetUp() override {
        resetFlythroughState();
        resetDispatchState();
        resetCameraState();
        resetMainFormState();
        resetViewerSettings();
        resetFrameState();
        resetRubberbandState();
        resetModelSession();
        resetSessionPaths();
        sessionPaths().ORVO_T = dir.root() + "/";
        installDialogService(&dialogs);
        At3d_Add_Roaming_Camera("R1");
    }
    void TearDown() override { installDialogService(nullptr); }

    // A path north 100 m, then east 100 m, 100 m up: stations 0, 100, 200
    // in whole metres, so no smoothing is wanted: the file is written by hand.
    std::string writeCornerPath() {
        const std::vector<TGIS_Point3D> line = {{1000, 2000, 0, 0}, {1000, 2100, 0, 0}};
        const std::string path = dir.path("corner.shp");
        EXPECT_TRUE(CreateFlytroughWaypointFile(line.data(), 2, 100, 80, QString::fromStdString(path)));
        // The second leg is added as a third way point.
        auto* dataset = static_cast<GDALDataset*>(
            GDALOpenEx(path.c_str(), GDAL_OF_VECTOR | GDAL_OF_UPDATE, nullptr, nullptr, nullptr));
        OGRLayer* layer = dataset->GetLayer(0);
        OGRFeature* feature = OGRFeature::CreateFeature(layer->GetLayerDefn());
        OGRPoint point(1100, 2100, 100);
        feature->SetGeometry(&point);
        for (const auto& [name, value] : std::map<std::string, double>{
                 {"Color", 0xFF0000}, {"Sta", 200}, {"Pitch", -45}, {"FOV", 80}, {"POIZ", -9999}})
            feature->SetField(name.c_str(), value);
        EXPECT_EQ(layer->CreateFeature(feature), OGRERR_NONE);
        OGRFeature::DestroyFeature(feature);
        GDALClose(dataset);
        return path;
    }
    // Opens the corner path with a video of 8 s: one metre a frame.
    void openCornerPath() {
        const std::string path = writeCornerPath();
        dialogs.pushText("8");
        ASSERT_TRUE(OpenFlytroughFile(QString::fromStdString(path)));
    }
    static void roaming(double* eye, double* target) {
        ASSERT_TRUE(At3d_Get_Roaming_Data("R1", eye, target, nullptr, nullptr, 0));
    }
    static FLYTROUGHWAYPOINT& waypoint(int i) { return flythroughState().FTWP[std::size_t(i)]; }
};

}  // namespace

TEST_F(Flythrough, ATwoPointLineBecomesTwoWayPointsWithEveryFieldOfANewPath) {
    const std::vector<TGIS_Point3D> line = {{178500, 663500, 50, 0}, {178530, 663540, 60, 0}};
    const std::string path = dir.path("line.LIN.SHP");
    WaypointFileSummary summary;
    ASSERT_TRUE(CreateFlytroughWaypointFile(line.data(), 2, 100, 80, QString::fromStdString(path), &summary));
    EXPECT_EQ(summary.waypoints, 2);
    EXPECT_DOUBLE_EQ(summary.length, 50);

    const ShapeFile shape = readShape(path);
    const std::vector<std::string> names = {"Color", "MaxAllowed", "Sta",       "DeltaH", "Pitch", "SKEW",
                                            "FOV",   "Traversed",  "POIX",      "POIY",   "POIZ"};
    ASSERT_EQ(shape.names, names);
    for (std::size_t i = 2; i < names.size(); ++i) {
        EXPECT_EQ(shape.widths[i], 20) << names[i];
        EXPECT_EQ(shape.precisions[i], 0) << names[i];
    }
    ASSERT_EQ(shape.features.size(), 2u);
    const double stations[2] = {0, 50};
    for (std::size_t i = 0; i < 2; ++i) {
        const Feature& f = shape.features[i];
        EXPECT_DOUBLE_EQ(f.x, line[i].X);
        EXPECT_DOUBLE_EQ(f.y, line[i].Y);
        EXPECT_DOUBLE_EQ(f.z, line[i].Z + 100);
        const std::map<std::string, double> expected = {
            {"Color", 16711680}, {"MaxAllowed", 99999}, {"Sta", stations[i]}, {"DeltaH", 0}, {"Pitch", -45},
            {"SKEW", 0},         {"FOV", 80},           {"Traversed", 0},     {"POIX", 0},   {"POIY", 0},
            {"POIZ", -9999}};
        EXPECT_EQ(f.fields, expected) << "way point " << i;
    }
}

TEST_F(Flythrough, StationsAreKeptInWholeMetresOfThePlanLengthOfTheSmoothedPath) {
    // A right angle: three rounds of corner cutting make ten way points.
    const std::vector<TGIS_Point3D> line = {{0, 0, 0, 0}, {40, 0, 0, 0}, {40, 40, 20, 0}};
    const std::string path = dir.path("bend.shp");
    WaypointFileSummary summary;
    ASSERT_TRUE(CreateFlytroughWaypointFile(line.data(), 3, 10, 80, QString::fromStdString(path), &summary));
    EXPECT_EQ(summary.waypoints, 10);
    const ShapeFile shape = readShape(path);
    ASSERT_EQ(shape.features.size(), 10u);
    EXPECT_DOUBLE_EQ(shape.features.front().z, 10);
    EXPECT_DOUBLE_EQ(shape.features.back().z, 30);
    EXPECT_DOUBLE_EQ(shape.features.back().x, 40);
    EXPECT_DOUBLE_EQ(shape.features.back().y, 40);
    // The smoothed path is shorter than the 80 m of the corner.
    EXPECT_LT(summary.length, 80);
    EXPECT_GT(summary.length, 70);
    EXPECT_DOUBLE_EQ(shape.features.back().fields.at("Sta"), std::round(summary.length));
}

TEST_F(Flythrough, TheTraversedLookupNeverMatchesSoItIsAddedAndCountedEveryTime) {
    const FlytroughFields fields = FlytroughFieldsToAdd(
        {"Color", "MaxAllowed", "STA", "DeltaH", "Pitch", "SKEW", "FOV", "Traversed", "POIX", "POIY", "POIZ"});
    EXPECT_EQ(fields.added, QStringList{"Traversed"});
    EXPECT_EQ(fields.count, 1);
}

TEST_F(Flythrough, SmoothingCutsEachInnerCornerAtAQuarterAndThreeQuartersOfItsEdges) {
    const std::vector<TGIS_Point3D> line = {{0, 0, 0, 0}, {4, 0, 0, 0}, {4, 4, 4, 0}};
    const std::vector<TGIS_Point3D> once = SmoothLine(line, 1);
    ASSERT_EQ(once.size(), 4u);
    expectPoint(once[0], 0, 0, 0);
    expectPoint(once[1], 3, 0, 0);
    expectPoint(once[2], 4, 1, 1);
    expectPoint(once[3], 4, 4, 4);
    const std::vector<TGIS_Point3D> twice = SmoothLine(line, 2);
    ASSERT_EQ(twice.size(), 6u);
    expectPoint(twice[1], 2.25, 0, 0);
    expectPoint(twice[2], 3.25, 0.25, 0.25);
    expectPoint(twice[3], 3.75, 0.75, 0.75);
    expectPoint(twice[4], 4, 1.75, 1.75);
    EXPECT_EQ(SmoothLine(line, 3).size(), 10u);
    // A straight line of two points has no corner to cut.
    EXPECT_EQ(SmoothLine({line[0], line[1]}, 3).size(), 2u);
}

TEST_F(Flythrough, OpeningReadsTheWayPointsAndPutsTheCameraAtStationFifteenCentimetres) {
    openCornerPath();
    EXPECT_EQ(dialogs.questions().front().title, "The path length is 200m");
    const FlythroughState& s = flythroughState();
    EXPECT_EQ(dispatchState().KamaFTWP, 3);
    EXPECT_FLOAT_EQ(s.FlytroughLength, 200);
    EXPECT_FLOAT_EQ(s.DeltaFlytroughSta, 1);
    EXPECT_FLOAT_EQ(waypoint(0).Azim, 0);
    EXPECT_FLOAT_EQ(waypoint(1).Azim, 90);
    EXPECT_FLOAT_EQ(waypoint(2).Azim, 90);
    EXPECT_FLOAT_EQ(waypoint(2).Sta, 200);
    EXPECT_EQ(mainFormState().statusTexts[0], "0 Sta 0.2   H 100.0   FOV 80 Heading 0.1 Skew 0 DH 0.00 Pitch -45");
    // 0.15 m north of the start, heading 90 x 0.15 / 100 degrees, 45 degrees down.
    double eye[3], target[3];
    roaming(eye, target);
    testsupport::expectVec(eye, 1000, 2000.15, 100, 1e-4);
    const double az = 0.135 * M_PI / 180;
    testsupport::expectVec(target, 1000 + 10 * std::sin(az), 2000.15 + 10 * std::cos(az), 90, 1e-4);
    EXPECT_EQ(cameraState().activeCameraID, 1);
    EXPECT_TRUE(ControlChecked("LookAtBtn"));
}

TEST_F(Flythrough, PositionsFollowTheSegmentsAndTheHeadingTurnsTheShortWay) {
    openCornerPath();
    FLYTROUGHWAYPOINT p = GetPointOnFlytrough(150);
    expectPoint(p.P, 1050.05, 2100, 100, 1e-3);
    EXPECT_EQ(p.Index, 1);
    EXPECT_NEAR(p.Azim, 90, 1e-4);
    // Beyond the end: 10 cm short of it.
    p = GetPointOnFlytrough(500);
    expectPoint(p.P, 1099.9, 2100, 100, 1e-3);
    // Before the start: no segment holds it.
    EXPECT_EQ(GetPointOnFlytrough(-10).P.Z, -9999);

    // From 350 to 10 degrees the heading turns 20 degrees through north.
    waypoint(0).Azim = 350;
    waypoint(1).Azim = 10;
    flythroughState().TSCSV.clear();
    p = GetPointOnFlytrough(49.95f);
    EXPECT_NEAR(p.Azim, 360, 1e-3);
    const QStringList& trace = flythroughState().TSCSV;
    ASSERT_EQ(trace.size(), 2);
    EXPECT_EQ(trace[0], "Sta,st1,st2,Az1,Az2,DeltaAzim,Skew");
    EXPECT_EQ(trace[1], "50.00,0.00,100.00,350.00,10.00,20.00,10.00");
}

TEST_F(Flythrough, BetweenWayPointsTheStartsSkewCountsTwiceInTheHeading) {
    openCornerPath();
    waypoint(0).SKEW = 10;
    waypoint(1).SKEW = 10;
    // Headings 10 and 100 with their skews: 10 + 90 x 0.15 / 100 at station 0.15, plus the skew again.
    OrvoSetObserverFlyTrough(GetPointOnFlytrough(0.1f));
    EXPECT_NEAR(cameraState().cameraZAngle, 20.135, 1e-4);
    double eye[3], target[3];
    roaming(eye, target);
    EXPECT_NEAR(std::atan2(target[0] - eye[0], target[1] - eye[1]) * 180 / M_PI, 20.135, 1e-4);
}

TEST_F(Flythrough, KeysChangeTheWayPointAtTheSegmentStartWithinTheirLimits) {
    openCornerPath();
    FlyTroughKey(FlyKey::Up);
    EXPECT_FLOAT_EQ(waypoint(0).Pitch, -40);
    waypoint(0).Pitch = 20;
    FlyTroughKey(FlyKey::Up);
    EXPECT_FLOAT_EQ(waypoint(0).Pitch, 20);
    waypoint(0).Pitch = -90;
    FlyTroughKey(FlyKey::Down);
    EXPECT_FLOAT_EQ(waypoint(0).Pitch, -90);
    waypoint(0).Pitch = -45;

    cameraState().roaming_FieldOfView = 30;
    FlyTroughKey(FlyKey::NumPlus);
    EXPECT_DOUBLE_EQ(cameraState().roaming_FieldOfView, 28);
    EXPECT_FLOAT_EQ(waypoint(0).FOV, 28);
    FlyTroughKey(FlyKey::NumPlus);
    EXPECT_DOUBLE_EQ(cameraState().roaming_FieldOfView, 28);

    // Height and skew are the running values, stored at the way point.
    FlyTroughKey(FlyKey::PageUp);
    FlyTroughKey(FlyKey::PageUp);
    FlyTroughKey(FlyKey::PageDown);
    EXPECT_FLOAT_EQ(waypoint(0).DeltaH, 2);
    FlyTroughKey(FlyKey::Right);
    EXPECT_FLOAT_EQ(waypoint(0).SKEW, 5);
    double eye[3], target[3];
    roaming(eye, target);
    // The height between way points runs from 2 at the start to 0 at the next.
    EXPECT_NEAR(eye[2], 100 + 2 - 2 * 0.15 / 100, 1e-4);
    // The skew of the running position: heading 0.135 plus the new 5.
    EXPECT_NEAR(cameraState().cameraZAngle, 5.135, 1e-4);
}

TEST_F(Flythrough, ForwardCarriesTheSettingsToTheNextWayPointAndBackReturns) {
    openCornerPath();
    dispatchState().GlobalFlyTroughSKEW = 0;
    FlyTroughKey(FlyKey::Right);
    FlyTroughKey(FlyKey::PageUp);
    // The dispatcher's route: W walks forward.
    AppMsg key;
    key.message = WM_KEYDOWN;
    key.wParam = KEY_W;
    EXPECT_TRUE(AppMessage(key).Handled);
    EXPECT_EQ(waypoint(1).Traversed, 1);
    EXPECT_FLOAT_EQ(waypoint(1).SKEW, 5);
    EXPECT_FLOAT_EQ(waypoint(1).DeltaH, 2);
    EXPECT_FLOAT_EQ(waypoint(1).Pitch, -45);
    EXPECT_FLOAT_EQ(flythroughState().FlytroughSta, 100);
    double eye[3], target[3];
    roaming(eye, target);
    testsupport::expectVec(eye, 1000, 2100, 102, 1e-4);
    // At the way point its heading 90 and its skew 5, once.
    EXPECT_NEAR(std::atan2(target[0] - eye[0], target[1] - eye[1]) * 180 / M_PI, 95, 1e-4);

    key.wParam = KEY_F4;
    EXPECT_TRUE(AppMessage(key).Handled);
    EXPECT_FLOAT_EQ(flythroughState().FlytroughSta, 0);
    roaming(eye, target);
    testsupport::expectVec(eye, 1000, 2000, 102, 1e-4);
}

TEST_F(Flythrough, VideoStepsWalkOneStationStepAFrameAndEndAtTheDurationOrThePathsEnd) {
    openCornerPath();
    FlythroughState& s = flythroughState();
    ASSERT_TRUE(DoOneStepFlyTrough());
    EXPECT_EQ(s.FormCaption, "Frame 0 duration 0.00   Sta 0.10  out of 200.00 ");
    EXPECT_FLOAT_EQ(s.FlytroughSta, 1.1f);
    expectPoint(s.GlobalFTWP.P, 1000, 2001.15, 100, 1e-3);
    s.AVIframe = 200;
    EXPECT_FALSE(DoOneStepFlyTrough());
    s.AVIframe = 10;
    s.FlytroughSta = 199.5;
    EXPECT_FALSE(DoOneStepFlyTrough());

    // A turn on the spot in roaming turns the camera by the step, anticlockwise.
    s.AVIframe = 0;
    double before[3], eye[3], target[3];
    roaming(eye, before);
    ASSERT_TRUE(DoOneStepCircle());
    EXPECT_EQ(s.FormCaption, "Frame 0 duration 0.00 ");
    roaming(eye, target);
    const double turned = std::atan2(target[0] - eye[0], target[1] - eye[1]) -
                          std::atan2(before[0] - eye[0], before[1] - eye[1]);
    EXPECT_NEAR(turned * 180 / M_PI, -5, 1e-6);
}

TEST_F(Flythrough, CompletionFillsTheWayPointsNeverReachedAndWritesThemBeside) {
    openCornerPath();
    // A path never walked: nothing is asked, nothing written.
    EXPECT_EQ(CompleteFTWP(), 0);
    EXPECT_EQ(dialogs.questions().size(), 1u);

    FlyTroughKey(FlyKey::Up);
    FlyTroughKey(FlyKey::Forward);
    FlyTroughKey(FlyKey::Up);
    const std::string out = dir.path("V.shp");
    dialogs.pushFile(QString::fromStdString(out));
    EXPECT_EQ(CompleteFTWP(), 1);
    EXPECT_EQ(dialogs.questions().back().value, "V.shp");
    EXPECT_EQ(QDir(dialogs.questions().back().folder), QDir(QString::fromStdString(dir.root())));
    const ShapeFile shape = readShape(out);
    ASSERT_EQ(shape.features.size(), 3u);
    const double traversed[3] = {0, 1, 1}, pitch[3] = {-40, -35, -35}, sta[3] = {0, 100, 200};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(shape.features[i].fields.at("Traversed"), traversed[i]) << i;
        EXPECT_EQ(shape.features[i].fields.at("Pitch"), pitch[i]) << i;
        EXPECT_EQ(shape.features[i].fields.at("Sta"), sta[i]) << i;
        EXPECT_EQ(shape.features[i].fields.at("POIZ"), -9999) << i;
    }
}

TEST_F(Flythrough, TheWayPointListIsWrittenAndShownInTheGrid) {
    openCornerPath();
    FlyTroughKey(FlyKey::Right);
    ShowFlytroughwaypints1Click();
    EXPECT_EQ(testsupport::readTextFile(dir.path("FTWP.csv")),
              "Sta,DH,Pitch,FOV,Azim,Skew,Traversed\n"
              "0.00,0,-45,80,0.0,5.0,0\n"
              "100.00,0,-45,80,90.0,0.0,0\n"
              "200.00,0,-45,80,90.0,0.0,0\n");
    EXPECT_EQ(dialogs.questions().back().kind, ScriptedDialogService::Question::Grid);
    EXPECT_EQ(dialogs.questions().back().title, "3 Flytrough waypoints (3)");
}

TEST_F(Flythrough, AFileOfLinesIsRefusedAndNoWalkStarts) {
    EnsureGdalDrivers();
    const std::string path = dir.path("lines.shp");
    GDALDataset* dataset = GetGDALDriverManager()->GetDriverByName("ESRI Shapefile")->Create(
        path.c_str(), 0, 0, 0, GDT_Unknown, nullptr);
    OGRLayer* layer = dataset->CreateLayer("lines", nullptr, wkbLineString, nullptr);
    OGRFeature* feature = OGRFeature::CreateFeature(layer->GetLayerDefn());
    OGRLineString line;
    line.addPoint(0, 0);
    line.addPoint(10, 0);
    feature->SetGeometry(&line);
    EXPECT_EQ(layer->CreateFeature(feature), OGRERR_NONE);
    OGRFeature::DestroyFeature(feature);
    GDALClose(dataset);
    EXPECT_FALSE(OpenFlytroughFile(QString::fromStdString(path)));
    EXPECT_EQ(dialogs.questions().back().text, "The file has to be points");
    EXPECT_EQ(dispatchState().KamaFTWP, 0);
}

TEST_F(Flythrough, TheCheckedItemOpensThroughTheFileDialogAndUncheckedEndsTheWalk) {
    const std::string path = writeCornerPath();
    SetHelpCaption("before");
    SetControlChecked("FlytroughVieport", true);
    // A cancelled choice opens nothing and leaves the check mark on.
    FlytroughVieportClick();
    EXPECT_EQ(dialogs.questions().back().title, "Open the shape file(input)");
    EXPECT_EQ(dispatchState().KamaFTWP, 0);
    EXPECT_TRUE(ControlChecked("FlytroughVieport"));

    dialogs.pushFile(QString::fromStdString(path));
    dialogs.pushText("8");
    FlytroughVieportClick();
    EXPECT_EQ(dispatchState().KamaFTWP, 3);
    EXPECT_EQ(mainFormState().LabelForHelpCaption,
              "\t W forward S back,  +/- to zoom, <-/-> to skew, PgUp/PgDn for Up/Down, Up/Down arrows for pitch ");

    SetControlChecked("FlytroughVieport", false);
    FlytroughVieportClick();
    EXPECT_EQ(dispatchState().KamaFTWP, 0);
    EXPECT_TRUE(flythroughState().FTWP.empty());
    EXPECT_EQ(cameraState().activeCameraID, 0);
    EXPECT_FALSE(ControlChecked("LookAtBtn"));
    EXPECT_EQ(mainFormState().statusTexts[3], "");
    EXPECT_EQ(mainFormState().LabelForHelpCaption, "before");
}
