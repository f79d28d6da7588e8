#include "FacadeContainer.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <cmath>

#include "FacadeStore.h"
#include "app/model/ModelPaths.h"
#include "app/model/ModelSession.h"
#include "app/services/FileHelpers.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/RunCommand.h"
#include "app/session/MainFormState.h"
#include "geo/GeoConversions.h"
#include "geo/GeoState.h"
#include "geo/PrjMenu.h"
#include "geo/Units.h"
#include "measure/Measuring.h"
#include "photometa/ExifReport.h"

namespace {

constexpr double AIM_LENGTH = 30;
constexpr double SKIP_DISTANCE = 0.3;
constexpr double PI = 3.141592654;
constexpr int STATUS_EVERY = 5;
constexpr const char* HEADER = "0000,Image,X,Y,Z,OX,OY,OZ,Azim,Dis to object,Pitch\n";

QStringList reportLines(const QString& path) {
    QStringList lines = StringFromFile(path).split('\n');
    for (QString& line : lines)
        if (line.endsWith('\r')) line.chop(1);
    return lines;
}

// The container's folder: "FACADES" below the model, or one the operator names.
QString containerFolder() {
    QString folder = FacadesFolder(modelSession().GlobalModelFileName);
    if (!folder.isEmpty()) return folder;
    if (!MyInputQuery("Select the folder", "It must be under the model directory", folder) || folder.trimmed().isEmpty())
        return {};
    folder = QDir::cleanPath(folder.trimmed());
    return folder + "/";
}

}  // namespace

QString CreateFacadesContainer() {
    const QString tool = QStandardPaths::findExecutable("exiftool");
    if (tool.isEmpty()) {
        MyShowMessage("exiftool does not exist");
        return {};
    }
    if (!geoState().GlobalCS) {
        MyShowMessage("Missing PRJ file");
        AddPRJ1Click(modelSession().GlobalModelFileName);
        return {};
    }
    const QString folder = containerFolder();
    if (folder.isEmpty()) return {};
    QStringList pictures;
    QDirIterator walk(folder, {"*.jpg"}, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) pictures << walk.next();
    pictures.sort();
    if (pictures.isEmpty()) {
        MyShowMessage("No JPG files found");
        return {};
    }
    SSetTextAt3(0, QString("Analyzing %1 images. It may take a while....").arg(pictures.size()));
    QString bare = folder;
    bare.chop(1);
    OrvoRunCommand(QString("\"%1\" -fast   -stay_open  -n -w!  %2  -c %.9lf \"%3\"").arg(tool, ".!!!", bare), true);
    SSetTextAt3(0, "Done");

    QString rows;
    int saved = 0, skipped = 0;
    for (int i = 0; i < pictures.size(); ++i) {
        const QString& picture = pictures[i];
        if ((i + 1) % STATUS_EVERY == 0) {
            SSetTextAt3(0, QString::asprintf("Processing image %d out of %d ", i + 1, int(pictures.size())));
            QCoreApplication::processEvents();
        }
        const QString report = WithoutExtension(picture) + ".!!!";
        if (!QFileInfo::exists(report)) continue;
        const EXIF e = GetExifFromTS(reportLines(report));
        QFile::remove(report);
        const double azimuth = e.GimbalYaw < 0 ? e.GimbalYaw + 360 : e.GimbalYaw;
        const double pitch = e.GimbalPitch;
        double camera[3] = {0, 0, e.AbsoluteAltitude};
        GPSLatLon2EastNorth(e.GPSLat, e.GPSLon, camera[0], camera[1]);
        double far[3] = {0, 0, camera[2] + AIM_LENGTH * std::tan(pitch * PI / 180)};
        DAzim(camera[0], camera[1], AIM_LENGTH, azimuth, far[0], far[1]);
        double hit[3] = {0, 0, 0};
        const double distance = GetObstructionInMap(camera, far, hit, SKIP_DISTANCE);
        // Nearer the drone is in the wall; farther it sees nothing of interest.
        if (distance < FACADE_NEAREST || distance > FACADE_FARTHEST) {
            QFile::rename(picture, WithoutExtension(picture) + ".jpeg");
            ++skipped;
            continue;
        }
        rows += QString::asprintf("%s,%s,%.2lf,%.2lf,%.2lf,%.2lf,%.2lf,%.2lf,%.1f,%.1f,%.1f\n", " ",
                                  picture.toUtf8().constData(), camera[0], camera[1], camera[2], hit[0], hit[1], hit[2],
                                  azimuth, distance, pitch);
        ++saved;
    }
    const QString name = QFileInfo(folder.chopped(1)).fileName();
    const QString container = folder + name + ".FAC";
    if (!StringToFile(HEADER + rows, container)) {
        MyShowMessage("Cannot write " + container);
        return {};
    }
    MyShowMessage(QString::asprintf("%d Images saved %d skept to %s", saved, skipped, container.toUtf8().constData()));
    return name;
}

void CreateContainer1Click() {
    if (!CreateFacadesContainer().isEmpty()) LoadFacades();
}
