#include "OpkList.h"

#include <QFile>
#include <QImageReader>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "ObliqueGeometry.h"
#include "ObliqueHooks.h"
#include "ObliqueRecords.h"
#include "app/model/ModelPaths.h"
#include "app/model/ModelSession.h"
#include "app/services/FileHelpers.h"
#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"
#include "app/services/Viewers.h"
#include "scene/FileNameCase.h"

namespace {

const char* const OPK_CSV_HEADER = "Image,X1,Y1,Z1,Z2,Y2,Z2,Azimuth,Pitch,fpc,DX,DY,DZ,DIST,Rotation";

int orientationOf(const QString& picture) {
    if (obliqueHooks().exifOrientation) return obliqueHooks().exifOrientation(picture);
    QImageReader reader(picture);
    switch (reader.transformation()) {
        case QImageIOHandler::TransformationRotate90: return 6;
        case QImageIOHandler::TransformationRotate180: return 3;
        case QImageIOHandler::TransformationRotate270: return 8;
        default: return reader.canRead() ? 1 : 0;
    }
}

// The picture turn that an EXIF orientation asks for, clockwise degrees.
int rotationOfOrientation(int orientation) {
    switch (orientation) {
        case 6: return 90;
        case 3: return 180;
        case 8: return 270;
        default: return 0;
    }
}

QStringList linesOf(const QString& file) {
    QStringList lines = StringFromFile(file).split('\n');
    for (QString& line : lines)
        if (line.endsWith('\r')) line.chop(1);
    while (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
    return lines;
}

}  // namespace

QString OpkListLine(const QString& name, double x, double y, double z, double omega, double phi, double kappa,
                    int rotation, QString& csvLine) {
    constexpr double fpc = 1;
    double xx, yy, zz;
    XYZFromOPK(x, y, z, omega, phi, kappa, fpc, xx, yy, zz);
    const double DX = xx - x, DY = yy - y, DZ = zz - z;
    const double DIST = std::sqrt(DX * DX + DY * DY);
    csvLine.clear();
    if (DIST == 0) return {};
    double azimuth, pitch;
    AzimuthFromXYZ(x, y, z, xx, yy, zz, azimuth, pitch);
    const QByteArray n = name.toUtf8();
    csvLine = QString::asprintf("%s ,%lf, %lf, %lf, %lf, %lf, %lf, %.0lf, %.0lf, %.2lf ,  %.2lf ,%.2lf ,%.2lf ,%.2lf,%d",
                                n.constData(), x, y, z, xx, yy, zz, azimuth, pitch, fpc, DX, DY, DZ, DIST, rotation);
    return QString::asprintf("%s %lf %lf %lf %lf %lf %lf %.0lf %.0lf %.2lf   %.2lf %.2lf %.2lf %.2lf %d",
                             n.constData(), x, y, z, xx, yy, zz, azimuth, pitch, fpc, DX, DY, DZ, DIST, rotation);
}

int LoadOpkList(const std::string& modelPath) {
    ObliqueStore& store = obliqueStore();
    ModelSession& model = modelSession();
    store.TSOPK.clear();
    model.KamaOPK = 0;
    const std::string source = FindFileNoCase(FolderOf(modelPath) + "OBLIXS/OPK.TXT");
    if (source.empty()) return 0;
    const std::string folder = FolderOf(source);
    store.DIR_OPK = QString::fromStdString(folder);
    const std::string found = FindFileNoCase(folder + BaseNameOf(modelPath) + ".OPK");
    model.OPKfile = found.empty() ? folder + BaseNameOf(modelPath) + ".OPK" : found;
    const QString opkFile = QString::fromStdString(model.OPKfile);
    if (!found.empty()) {
        store.TSOPK = linesOf(opkFile);
        model.KamaOPK = store.TSOPK.size();
        return model.KamaOPK;
    }

    QStringList csv{OPK_CSV_HEADER};
    int RotCW = 0;
    bool orientationKnown = false;
    const QStringList lines = linesOf(QString::fromStdString(source));
    for (qsizetype i = 2; i < lines.size(); ++i) {
        char name[1024];
        double x, y, z, omega, phi, kappa;
        if (std::sscanf(lines[i].toUtf8().constData(), "%1023s%lf%lf%lf%lf%lf%lf", name, &x, &y, &z, &omega, &phi,
                        &kappa) != 7) {
            PrintRunLog("OPK list: line %d skipped: %s\n", static_cast<int>(i + 1), lines[i].toUtf8().constData());
            continue;
        }
        // One photograph's orientation stands for the whole set.
        if (!orientationKnown) {
            const std::string picture = FindFileNoCase(folder + name + ".jpg");
            if (!picture.empty()) {
                RotCW = rotationOfOrientation(orientationOf(QString::fromStdString(picture)));
                orientationKnown = true;
            }
        }
        QString csvLine;
        const QString line = OpkListLine(QString::fromUtf8(name), x, y, z, omega, phi, kappa, RotCW, csvLine);
        if (line.isEmpty()) continue;
        store.TSOPK << line;
        csv << csvLine;
    }
    std::sort(store.TSOPK.begin(), store.TSOPK.end(),
              [](const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
    const QString text = store.TSOPK.isEmpty() ? QString() : store.TSOPK.join('\n') + '\n';
    if (!StringToFile(text, opkFile) ||
        !StringToFile(csv.join('\n') + '\n', QString::fromStdString(folder + BaseNameOf(modelPath) + ".CSV")))
        PrintRunLog("OPK list: can not write %s\n", model.OPKfile.c_str());
    model.KamaOPK = store.TSOPK.size();
    const QString copy = QString::fromStdString(sessionPaths().ORVO_T) + "t.txt";
    if (StringToFile(text, copy)) ShowOrvoTextFile(copy);
    return model.KamaOPK;
}
