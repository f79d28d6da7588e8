// flythrough: a digitised line, or a list of map points, to the way point
// file the window makes of a "Fly trrough" line.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QTextStream>
#include <cstdio>

#include "CliCommands.h"
#include "CliSupport.h"
#include "app/model/ModelSession.h"
#include "app/session/CameraState.h"
#include "geo/Frames.h"
#include "measure/MeasurementFiles.h"
#include "motion/Flythrough.h"

namespace {

constexpr const char* usage = "zorvex64-cli flythrough MODEL LINE OUT.shp [--alt M]";
constexpr double DEFAULT_ALT = 100;
constexpr double NO_GROUND = -9990;

// The outline's vertices of a ".LIN" or ".POL", each once, in the order drawn.
bool readMeasureLine(const QString& path, std::vector<TGIS_Point3D>& points) {
    std::vector<MEASURE_DATA> records;
    if (!ReadMeasureFile(path, records)) return false;
    QSet<QString> seen;
    for (const MEASURE_DATA& item : records) {
        if (!QString::fromUtf8(item.id).contains("POL_")) continue;
        for (const double* v : {item.vertex1, item.vertex2}) {
            const QString key = QString::asprintf("%10.2lf %13.2lf %12.2lf", v[0], v[1], v[2]);
            if (seen.contains(key)) continue;
            seen.insert(key);
            points.push_back({v[0], v[1], v[2], 0});
        }
    }
    return true;
}

// "X Y" or "X Y Z" a line, blanks or commas between; a point without Z
// lies on the model.
bool readPointList(const QString& path, std::vector<TGIS_Point3D>& points) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        std::fprintf(stderr, "Missing\n%s\n", QFile::encodeName(path).constData());
        return false;
    }
    static const QRegularExpression separators("[\\s,;]+");
    int lineNumber = 0;
    while (!file.atEnd()) {
        ++lineNumber;
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.isEmpty() || line.startsWith('#')) continue;
        const QStringList words = line.split(separators, Qt::SkipEmptyParts);
        double xyz[3] = {0, 0, 0};
        bool ok = words.size() == 2 || words.size() == 3;
        for (int i = 0; ok && i < words.size(); ++i) ok = ParseCliNumber(words[i].toStdString(), xyz[i]);
        if (!ok) {
            std::fprintf(stderr, "error: line %d of %s is not X Y [Z]\n", lineNumber,
                         QFile::encodeName(path).constData());
            return false;
        }
        if (words.size() == 2) {
            xyz[2] = GetZFromXY(xyz[0], xyz[1]);
            if (xyz[2] < NO_GROUND) {
                std::fprintf(stderr, "error: no model under %.3f %.3f (line %d)\n", xyz[0], xyz[1], lineNumber);
                return false;
            }
        }
        points.push_back({xyz[0], xyz[1], xyz[2], 0});
    }
    return true;
}

int CliFlythrough(const std::vector<std::string>& args) {
    std::vector<std::string> words;
    double alt = DEFAULT_ALT;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--alt") {
            if (i + 1 >= args.size() || !ParseCliNumber(args[i + 1], alt))
                return CliUsageError("--alt takes a height in metres", usage);
            ++i;
        } else {
            words.push_back(args[i]);
        }
    }
    if (words.size() != 3) return CliUsageError("flythrough takes a model, a line and an output file", usage);

    PrepareCliSession();
    CliCommandScope scope;
    OpenedModel opened;
    if (!OpenModelForCli(words[0], opened)) return CLI_FAILED;
    modelSession().PRJ = opened.prjPath;
    const QString line = QString::fromStdString(words[1]);
    if (!QFileInfo::exists(line)) {
        std::fprintf(stderr, "Missing\n%s\n", words[1].c_str());
        return CLI_FAILED;
    }
    const QString ext = QFileInfo(line).suffix().toLower();
    std::vector<TGIS_Point3D> points;
    const bool read = ext == "lin" || ext == "pol" ? readMeasureLine(line, points) : readPointList(line, points);
    if (!read) return CLI_FAILED;
    if (points.size() < 2) {
        std::fprintf(stderr, "error: a path needs 2 points or more; %s holds %d\n", words[1].c_str(),
                     int(points.size()));
        return CLI_FAILED;
    }
    const QString out = QString::fromStdString(words[2]);
    QDir().mkpath(QFileInfo(out).absolutePath());
    WaypointFileSummary summary;
    if (!CreateFlytroughWaypointFile(points.data(), int(points.size()), alt, cameraState().roaming_FieldOfView, out,
                                     &summary)) {
        std::fprintf(stderr, "error: can not write %s\n", words[2].c_str());
        return CLI_FAILED;
    }
    std::printf("waypoints %d length %.2f\n", summary.waypoints, summary.length);
    return CLI_OK;
}

}  // namespace

ZV_CLI_COMMAND("flythrough", "MODEL LINE OUT.shp [--alt M]", CliFlythrough);
