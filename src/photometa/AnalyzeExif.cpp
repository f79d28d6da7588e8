#include "AnalyzeExif.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>

#include "ExifReport.h"
#include "app/model/ModelPaths.h"
#include "app/services/FileDialogs.h"
#include "app/services/FileHelpers.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/RunCommand.h"
#include "app/services/SessionPaths.h"
#include "app/services/Viewers.h"
#include "geo/GeoState.h"

namespace {

QStringList reportLines(const QString& path) {
    QStringList lines = StringFromFile(path).split('\n');
    for (QString& line : lines)
        if (line.endsWith('\r')) line.chop(1);
    return lines;
}

}  // namespace

QString ExifReportName(const QString& picture) { return WithoutExtension(picture) + "_.TXT"; }

EXIF AnalyzeExif(const QString& FN, bool display) {
    const QString report = ExifReportName(FN);
    const QString Tout = QString::fromStdString(sessionPaths().ORVO_T) + QFileInfo(report).fileName();
    QFile::remove(report);
    const QString tool = QStandardPaths::findExecutable("exiftool");
    if (tool.isEmpty()) {
        MyShowMessage("exiftool does nor exist");
        return {};
    }
    OrvoRunCommand(QString("\"%1\"  -api RequestAll=3 largefilesupport=1 -n  -stay_open  -fast -w! %2 -c %3 \"%4\"")
                       .arg(tool, "_.TXT", "%.6f", FN),
                   true);
    if (!QFileInfo::exists(report)) {
        MyShowMessage(report + "\nCould not be created by exiftool.(Orvo message)");
        return {};
    }
    const EXIF exif = GetExifFromTS(reportLines(report));
    if (display) {
        QStringList lines = reportLines(report);
        while (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
        lines << "Drone name                 ***  : " + exif.DroneName
              << QString::asprintf("Original Absolute Altitude ***  : %.2f", exif.OriginalAbs)
              << QString::asprintf("Adjusted Absolute Altitude ***  : %.2f", exif.AbsoluteAltitude)
              << QString::asprintf("Geoidal separation         ***  : %.2f", geoState().GlobalGeoidalSeparation);
        if (StringToFile(lines.join('\n') + '\n', Tout)) ShowOrvoTextFile(Tout);
    }
    QFile::remove(report);
    return exif;
}

void AnalyzeExifClick() {
    QString picture;
    if (!OrvoOpenFile(picture, "JPG", "Image file (*.JPG)|*.jpg", "Open the image file (input)", "")) return;
    AnalyzeExif(picture, true);
}
