// Reading photographs' metadata: the tag rules of the report, the order in
// which makers' tags override each other, the altitude corrections, the drone
// table, and a real exiftool run over a tagged picture.
#include <gtest/gtest.h>

#include <QFile>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStringList>
#include <limits>

#include "app/services/DialogService.h"
#include "app/services/SessionPaths.h"
#include "app/session/DroneCameras.h"
#include "app/session/StartupState.h"
#include "geo/GeoState.h"
#include "photometa/AnalyzeExif.h"
#include "photometa/DroneTable.h"
#include "photometa/ExifReport.h"
#include "support/TestSupport.h"

namespace {

constexpr double GEOID = 20;  // metres of geoid above the ellipsoid, fixed for the tests

class Exif : public ::testing::Test {
protected:
    void SetUp() override {
        resetPhotoMetaState();
        resetGeoState();
        geoState().GlobalGeoidalSeparation = GEOID;
        geoState().GlobalGeoidalSeparationSet = true;
        startupState().TScam = DroneCameraTable();
        installDialogService(&dialogs);
    }
    void TearDown() override { installDialogService(nullptr); }
    ScriptedDialogService dialogs;
};

QStringList report(std::initializer_list<const char*> lines) {
    QStringList list;
    for (const char* line : lines) list << line;
    return list;
}

}  // namespace

TEST_F(Exif, TagsMatchWholeNamesTheLongestValueWinsAndDotsMatchAPrefix) {
    const QStringList ts = report({"Roll                : 1.5", "Gimbal Roll Degree  : 2", "ROLL : 12.25",
                                   "GPS Coordinates Approx : 32.1 34.8", "Note: a: b"});
    EXPECT_EQ(GetExifTag(ts, "roll"), "12.25");
    EXPECT_EQ(GetExifTag(ts, "Gimbal Roll"), "");
    EXPECT_EQ(GetExifTag(ts, "GPS Coordinates..."), "32.1 34.8");
    EXPECT_EQ(GetExifTag(ts, "Note"), "a: b");
}

TEST_F(Exif, AbsoluteAltitudeBecomesAHeightAboveTheGeoidAndYawKeepsItsSign) {
    const EXIF e = GetExifFromTS(report({"Make : DJI", "Camera Model Name : M3E", "Absolute Altitude : +123.4",
                                         "Flight Yaw Degree : -20.5", "Gimbal Yaw Degree : -35.5",
                                         "Date/Time Original : 2025:06:21 10:30:15", "GPS Latitude : 32.1 S",
                                         "GPS Longitude : 34.8", "GPSZ Accuracy : 0.4", "File Name : p.jpg"}));
    EXPECT_FLOAT_EQ(e.OriginalAbs, 123.4f);
    EXPECT_FLOAT_EQ(e.AbsoluteAltitude, 123.4f - GEOID);
    EXPECT_FLOAT_EQ(e.RelativeAltitude, EXIF_NO_VALUE);
    EXPECT_EQ(e.Heading, 340);
    EXPECT_FLOAT_EQ(e.FlightYaw, -20.5f);
    EXPECT_FLOAT_EQ(e.GimbalYaw, -35.5f);
    EXPECT_FLOAT_EQ(e.GimbalPitch, EXIF_NO_VALUE);
    EXPECT_EQ(e.Date, "2025:06:21");
    EXPECT_FLOAT_EQ(e.exiftime, 10 * 3600 + 30 * 60 + 15);
    EXPECT_DOUBLE_EQ(e.GPSLat, -32.1);
    EXPECT_EQ(e.RtkFlag, 50);
    EXPECT_EQ(e.DroneName, "Mavic 3E");
    EXPECT_EQ(photoMetaState().GlobalDRONE.Width, 5280);
    // This maker's altitudes are above the geoid already; no RTK tags give -999.
    const EXIF nv = GetExifFromTS(report({"Make : NV", "GPS Altitude : 80"}));
    EXPECT_FLOAT_EQ(nv.AbsoluteAltitude, 80);
    EXPECT_EQ(nv.RtkFlag, -999);
}

TEST_F(Exif, ALowXt2RelativeAltitudeIsTenTimesTooSmall) {
    const EXIF low = GetExifFromTS(report({"Camera Model Name : XT2", "Absolute Altitude : 100", "Relative Altitude : 5",
                                           "Focal Length : 19"}));
    EXPECT_FLOAT_EQ(low.RelativeAltitude, 50);
    EXPECT_FLOAT_EQ(low.AbsoluteAltitude, 100 + 45 - GEOID);
    EXPECT_NEAR(low.FocalLengthIn35mm, 19 * 36 / 7.6, 1e-4);
    const EXIF high = GetExifFromTS(report({"Camera Model Name : XT2", "Absolute Altitude : 100",
                                            "Relative Altitude : 13", "Above Ground Altitude : 14"}));
    EXPECT_FLOAT_EQ(high.RelativeAltitude, 14);
    EXPECT_FLOAT_EQ(high.AbsoluteAltitude, 100 - GEOID);
}

TEST_F(Exif, LaterMakersTagsOverrideEarlierOnes) {
    const EXIF evo = GetExifFromTS(report({"Camera Model Name : XT705", "Sensor Roll : 3", "Roll : 7", "Pitch : -4",
                                           "Sensor Azimuth : 1.5707963268", "Camera Pitch : -60"}));
    EXPECT_FLOAT_EQ(evo.GimbalRoll, 7);
    EXPECT_FLOAT_EQ(evo.FlightRoll, 7);
    EXPECT_FLOAT_EQ(evo.FlightPitch, -4);
    EXPECT_NEAR(evo.GimbalYaw, 90, 1e-4);
    EXPECT_FLOAT_EQ(evo.GimbalPitch, -60);
    const EXIF other = GetExifFromTS(report({"Camera Model Name : FC6310", "Sensor Roll : 3", "Roll : 7",
                                             "Gimbal Yaw : 12", "Camera Yaw : 15", "Focal Length : 8.8",
                                             "Sensor Foc Len : 99", "Pixel Scale : 0.05 0.06",
                                             "Model Tie Point : 0 0 0 612000.5 3612000.25 0"}));
    EXPECT_FLOAT_EQ(other.GimbalRoll, 3);
    EXPECT_FLOAT_EQ(other.FlightRoll, 7);
    EXPECT_FLOAT_EQ(other.GimbalYaw, 15);
    EXPECT_FLOAT_EQ(other.FocalLength, 8.8f);
    EXPECT_FLOAT_EQ(other.FocalLengthIn35mm, 8.8f);
    EXPECT_FLOAT_EQ(other.Xres, 0.05f);
    EXPECT_FLOAT_EQ(other.Yres, 0.06f);
    EXPECT_FLOAT_EQ(other.TiePointX, 612000.5f);
    EXPECT_EQ(other.DroneName, "UNKNOWN");
}

TEST_F(Exif, NumbersBeyondAFieldsRangeStopAtItsEnds) {
    const EXIF e = GetExifFromTS(report({"Image Width : 1e30", "Image Height : -1e30", "Flight Yaw Degree : nan",
                                         "Gimbal Pitch Degree : 1e300"}));
    EXPECT_EQ(e.Width, std::numeric_limits<int>::max());
    EXPECT_EQ(e.Height, std::numeric_limits<int>::lowest());
    EXPECT_EQ(e.Heading, 0);
    EXPECT_EQ(e.GimbalPitch, std::numeric_limits<float>::max());
}

TEST_F(Exif, DronesAreFoundByModelOrNameFirstRowWinning) {
    EXPECT_EQ(GetDroneFromModel("Mavic 3 pro Camera").Name, "Mavic 3 pro");
    EXPECT_EQ(GetDroneFromModel("l2d-20c").Name, "Mavic 3 pro");
    const DRONE m4e = GetDroneFromModel("M4E");
    EXPECT_EQ(m4e.Name, "Matrice 4E");
    EXPECT_FLOAT_EQ(m4e.Focal35Length, 24);
    EXPECT_EQ(m4e.RollingShutter, 0);
    const DRONE tele = GetDroneFromModel("Matrice 4E TELE");
    EXPECT_FLOAT_EQ(tele.Focal35Length, 70);
    EXPECT_FLOAT_EQ(tele.Widthmm, 9.95f);
    EXPECT_EQ(GetDroneFromModel("Mavic 3T").RollingShutter, 1);
    const DRONE psdk = GetDroneFromModel("ZH20 102S");
    EXPECT_EQ(psdk.Name, "PSDK102S");
    EXPECT_EQ(psdk.RollingShutter, 0);
    EXPECT_EQ(GetDroneFromModel("SHARE 61").Name, "PSDK302S");
    EXPECT_EQ(GetDroneFromModel("Phantom 9").Name, "UNKNOWN");
}

TEST_F(Exif, ExiftoolReportsATaggedPictureAndItsReportIsShownThenRemoved) {
    testsupport::ScratchDir dir;
    sessionPaths().ORVO_T = dir.path("T/");
    QDir().mkpath(QString::fromStdString(sessionPaths().ORVO_T));
    const QString picture = QString::fromStdString(dir.path("DJI_0001.jpg"));
    ASSERT_TRUE(QFile::copy(ZV_SOURCE_DIR "/samples/site/DemoSite.jpg", picture));
    ASSERT_EQ(QProcess::execute("exiftool", {"-q", "-overwrite_original", "-Make=DJI", "-Model=M3E",
                                             "-XMP-drone-dji:AbsoluteAltitude=+123.4",
                                             "-XMP-drone-dji:RelativeAltitude=+40.1",
                                             "-XMP-drone-dji:GimbalPitchDegree=-45", picture}),
              0);
    const EXIF e = AnalyzeExif(picture, true);
    EXPECT_EQ(e.Model, "M3E");
    EXPECT_FLOAT_EQ(e.RelativeAltitude, 40.1f);
    EXPECT_FLOAT_EQ(e.GimbalPitch, -45);
    EXPECT_FLOAT_EQ(e.AbsoluteAltitude, 123.4f - GEOID);
    EXPECT_FALSE(QFileInfo::exists(ExifReportName(picture)));
    ASSERT_FALSE(dialogs.questions().empty());
    const QString shown = dialogs.questions().back().text;
    EXPECT_EQ(shown, QString::fromStdString(sessionPaths().ORVO_T) + "DJI_0001_.TXT");
    QFile file(shown);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    EXPECT_TRUE(text.contains("Camera Model Name               : M3E\n"));
    EXPECT_TRUE(text.endsWith("Drone name                 ***  : Mavic 3E\n"
                              "Original Absolute Altitude ***  : 123.40\n"
                              "Adjusted Absolute Altitude ***  : 103.40\n"
                              "Geoidal separation         ***  : 20.00\n"));
}

TEST_F(Exif, WithoutExiftoolTheOperatorIsTold) {
    testsupport::ScratchDir dir;
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QByteArray::fromStdString(dir.root()));
    const EXIF e = AnalyzeExif(QString::fromStdString(dir.path("a.jpg")), false);
    qputenv("PATH", path);
    EXPECT_TRUE(e.Model.isEmpty());
    ASSERT_EQ(dialogs.questions().size(), 1u);
    EXPECT_EQ(dialogs.questions()[0].text, "exiftool does nor exist");
}
