// zv-obliquegen SITE_FOLDER: photographs of the demo site taken by the
// viewer's renderer, with the oblique catalogue and drone metadata a real
// flight would bring:
//   OBLIQUE/Flight_0611/  five obliques (N, E, S, W, straight down) and oblixoblix.shp
//   FACADES/              facade photographs of the tall block, GPS and gimbal tagged
// The altitudes in the tags are above the ellipsoid, by the geoid raster of
// the build's data folder.
// Needs an X server (xvfb-run) and exiftool on the PATH. The same site gives
// the same cameras and catalogue; the pictures differ only as the renderer does.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QSaveFile>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "CatalogueFile.h"
#include "DemoFlight.h"
#include "PhotoRenderer.h"
#include "app/model/ModelOpening.h"
#include "app/services/SessionPaths.h"
#include "geo/Frames.h"
#include "geo/GeoConversions.h"
#include "geo/Geoid.h"
#include "scene/engine_interface.h"

namespace {

constexpr const char* kUsage = "usage: zv-obliquegen SITE_FOLDER\n";
constexpr const char* kModel = "DemoSite.obj";
constexpr const char* kObliqueFolder = "OBLIQUE/Flight_0611";
constexpr const char* kFacadeFolder = "FACADES";
constexpr int kJpegQuality = 80;
const FlightDate kDate{2024, 6, 11};

bool savePicture(const QImage& image, const QString& path) {
    QSaveFile file(path);
    return !image.isNull() && file.open(QIODevice::WriteOnly) && image.save(&file, "JPG", kJpegQuality) &&
           file.commit();
}

// What the drone writes: maker, model, lens, time, position and the
// gimbal's angles, the altitude above the ellipsoid as DJI records it.
bool tagPicture(const QString& path, const PhotoCamera& c, int second) {
    double lat = 0, lon = 0;
    GPSEastNorth2LatLon(c.eye[0], c.eye[1], lat, lon);
    const double absolute = c.eye[2] + GetGMGeoidalSeparation(lat, lon);
    const double relative = c.eye[2] - frameState().Offset[2] - kDemoTakeOffZ;
    double yaw = c.azimuth();
    if (yaw > 180) yaw -= 360;
    const double pitch = -c.inclination();
    const QString time = QString::asprintf("%04d:%02d:%02d 09:%02d:%02d", kDate.year, kDate.month, kDate.day,
                                           12 + second / 60, second % 60);
    const QStringList args{"-q", "-overwrite_original", "-Make=DJI", "-Model=M3E",
                           "-FocalLength=12.29", "-FocalLengthIn35mmFormat=24", "-FNumber=2.8",
                           "-ExposureTime=1/1000", "-ISO=100", "-DateTimeOriginal=" + time, "-CreateDate=" + time,
                           QString::asprintf("-GPSLatitude=%.10f", std::fabs(lat)), lat < 0 ? "-GPSLatitudeRef=S" : "-GPSLatitudeRef=N",
                           QString::asprintf("-GPSLongitude=%.10f", std::fabs(lon)), lon < 0 ? "-GPSLongitudeRef=W" : "-GPSLongitudeRef=E",
                           QString::asprintf("-GPSAltitude=%.3f", absolute), "-GPSAltitudeRef=0",
                           QString::asprintf("-XMP-drone-dji:AbsoluteAltitude=%+.3f", absolute),
                           QString::asprintf("-XMP-drone-dji:RelativeAltitude=%+.3f", relative),
                           QString::asprintf("-XMP-drone-dji:GimbalYawDegree=%+.2f", yaw),
                           QString::asprintf("-XMP-drone-dji:GimbalPitchDegree=%+.2f", pitch),
                           "-XMP-drone-dji:GimbalRollDegree=+0.00",
                           QString::asprintf("-XMP-drone-dji:FlightYawDegree=%+.2f", yaw),
                           "-XMP-drone-dji:FlightPitchDegree=+0.00", "-XMP-drone-dji:FlightRollDegree=+0.00", path};
    return QProcess::execute("exiftool", args) == 0;
}

// Writes the pictures of cameras into folder, tagged; false on the first failure.
bool takePictures(PhotoRenderer& renderer, const std::vector<PhotoCamera>& cameras, const QString& folder,
                  int& second) {
    double origin[3];
    for (int i = 0; i < 3; ++i) origin[i] = OC(i);
    for (const PhotoCamera& c : cameras) {
        const QString path = folder + "/" + QString::fromStdString(c.name);
        if (!savePicture(renderer.take(c, origin), path)) {
            std::fprintf(stderr, "error: can not write %s\n", path.toUtf8().constData());
            return false;
        }
        if (!tagPicture(path, c, second)) {
            std::fprintf(stderr, "error: exiftool failed on %s\n", path.toUtf8().constData());
            return false;
        }
        second += 7;
        std::fprintf(stderr, "%s\n", path.toUtf8().constData());
    }
    return true;
}

// A folder is built beside its place and moved in whole, so a failed run
// leaves the previous set as it was.
bool replaceFolder(const QString& built, const QString& target) {
    QDir old(target);
    if (old.exists() && !old.removeRecursively()) return false;
    QDir().mkpath(QFileInfo(target).absolutePath());
    return QDir().rename(built, target);
}

QString freshFolder(const QString& target) {
    const QString built = target + ".tmp";
    QDir(built).removeRecursively();
    QDir().mkpath(built);
    return built;
}

}  // namespace

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    const QString site = QDir(QString::fromLocal8Bit(argv[1])).absolutePath();
    const std::string model = (site + "/" + kModel).toStdString();

    // The viewer takes the geoid out of a drone's altitude with the raster of
    // its data folder; the tags put in what it will take out.
    sessionPaths().CTQ_Path = ZV_DATA_DIR "/";
    At3d_Start();
    OpenedModel opened;
    if (!OpenModelHeadless(model, opened)) {
        std::fprintf(stderr, "error: can not open %s\n", model.c_str());
        return 1;
    }
    At3d_WriteFlag(LIBFLAG_USE_TEXTURES, 1);
    PhotoRenderer renderer;
    if (!renderer.open()) {
        std::fprintf(stderr, "error: no OpenGL context (run under xvfb-run)\n");
        return 1;
    }
    const double* offset = frameState().Offset;
    int second = 0;

    const QString obliques = site + "/" + kObliqueFolder;
    const QString obliquesBuilt = freshFolder(obliques);
    const std::vector<PhotoCamera> cameras = demoObliqueCameras(offset);
    if (!takePictures(renderer, cameras, obliquesBuilt, second)) return 1;
    QString wkt;
    if (!opened.prjPath.empty()) {
        QFile prj(QString::fromStdString(opened.prjPath));
        if (prj.open(QIODevice::ReadOnly)) wkt = QString::fromUtf8(prj.readAll()).trimmed();
    }
    if (!writeObliqueCatalogue((obliquesBuilt + "/oblixoblix.shp").toStdString(), cameras,
                               kDemoGroundZ + offset[2], kDate, wkt.toStdString()))
        return 1;

    const QString facades = site + "/" + kFacadeFolder;
    const QString facadesBuilt = freshFolder(facades);
    if (!takePictures(renderer, demoFacadeCameras(offset), facadesBuilt, second)) return 1;

    if (!replaceFolder(obliquesBuilt, obliques) || !replaceFolder(facadesBuilt, facades)) {
        std::fprintf(stderr, "error: can not move the new pictures into %s\n", site.toUtf8().constData());
        return 1;
    }
    std::printf("%zu obliques in %s, facades in %s\n", cameras.size(), obliques.toUtf8().constData(),
                facades.toUtf8().constData());
    return 0;
}
