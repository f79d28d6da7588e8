#include "ConstructionAdjust.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringList>
#include <cmath>

#include "app/services/DialogService.h"
#include "app/services/RunLog.h"

namespace {

constexpr double kMinArea = 1e-9;

QString fail(const QString& message) {
    PrintRunLog("AdjustCSV: %s\n", message.toUtf8().constData());
    dialogService().showMessage(message, QStringLiteral("AdjustCSV"));
    return QString();
}

bool toNumber(const QString& text, double& value) {
    bool ok = false;
    value = text.trimmed().toDouble(&ok);
    return ok && std::isfinite(value);
}

double shoelace(const PtRec c[4]) {
    double twice = 0;
    for (int i = 0; i < 4; ++i) twice += c[i].x * c[(i + 1) % 4].y - c[(i + 1) % 4].x * c[i].y;
    return std::fabs(twice) / 2;
}

}  // namespace

QString AdjustCSV(const QString& CSV) {
    QFile in(CSV);
    if (!in.open(QIODevice::ReadOnly)) return fail(QStringLiteral("Failed to load CSV file: ") + CSV);
    QStringList lines = QString::fromUtf8(in.readAll()).split(QLatin1Char('\n'));
    for (QString& l : lines) l = l.trimmed();
    while (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
    if (lines.size() < 7)
        return fail(QStringLiteral("CSV file must contain at least 7 lines (header + 4 corners + area + anchor)"));

    PtRec corners[4];
    QString names[4];
    for (int i = 0; i < 4; ++i) {
        const QString n = QString::number(i + 1);
        if (lines[1 + i].isEmpty()) return fail(QStringLiteral("Corner ") + n + QStringLiteral(" data is empty"));
        const QStringList f = lines[1 + i].split(QLatin1Char(','));
        if (f.size() < 6) return fail(QStringLiteral("Corner ") + n + QStringLiteral(" must have at least 6 columns"));
        double v[5];
        for (int k = 0; k < 5; ++k)
            if (!toNumber(f[1 + k], v[k])) return fail(QStringLiteral("Invalid numeric data in corner ") + n);
        names[i] = f[0].trimmed();
        corners[i] = {v[0], v[1], v[2], v[3], v[4], i};
    }
    const QStringList areaLine = lines[5].split(QLatin1Char(','));
    if (areaLine.size() < 2) return fail(QStringLiteral("Target area line is missing or invalid"));
    double target = 0;
    if (!toNumber(areaLine[1], target)) return fail(QStringLiteral("Invalid target area value"));
    if (target <= 0) return fail(QStringLiteral("Target area must be greater than zero"));
    const QStringList anchorLine = lines[6].split(QLatin1Char(','));
    if (anchorLine.size() < 3) return fail(QStringLiteral("Anchor line must contain at least X,Y coordinates"));
    double ax = 0, ay = 0, az = 0;
    if (!toNumber(anchorLine[1], ax) || !toNumber(anchorLine[2], ay))
        return fail(QStringLiteral("Invalid anchor coordinates"));
    if (anchorLine.size() > 3) toNumber(anchorLine[3], az);

    const double measured = shoelace(corners);
    if (measured < kMinArea) return fail(QStringLiteral("Degenerate quadrilateral - area is too small"));
    double cx = 0, cy = 0;
    for (const PtRec& c : corners) cx += c.x / 4, cy += c.y / 4;
    const double s = std::sqrt(target / measured);
    PtRec adjusted[4];
    for (int i = 0; i < 4; ++i) {
        adjusted[i] = corners[i];
        adjusted[i].x = ax + s * (corners[i].x - cx);
        adjusted[i].y = ay + s * (corners[i].y - cy);
    }
    const double adjustedArea = shoelace(adjusted);
    if (!std::isfinite(adjustedArea)) return fail(QStringLiteral("Error creating output data"));

    QString out = QStringLiteral("Corner,X,Y,Z,U,V,L\n");
    for (int i = 0; i < 4; ++i) {
        const PtRec& a = adjusted[i];
        const PtRec& b = adjusted[(i + 1) % 4];
        const double L = std::hypot(b.x - a.x, b.y - a.y);
        out += QString::asprintf("%s,%.6f,%.6f,%.2f,%.6f,%.6f,%.3f\n", names[i].toUtf8().constData(), a.x, a.y, a.z,
                                 a.u, a.v, L);
    }
    out += QString::asprintf("TargetArea,%.3f,AdjustedArea,%.3f\n", target, adjustedArea);
    out += QString::asprintf("Anchor,%.6f,%.6f,%.2f\n", ax, ay, az);

    const QFileInfo info(CSV);
    const QString path = info.absolutePath() + "/" + info.completeBaseName() + QStringLiteral("_adjusted.csv");
    QSaveFile file(path);
    const QByteArray bytes = out.toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return fail(QStringLiteral("Failed to save output file: ") + path);
    return path;
}
