#include "StripPoints.h"

#include <QFileInfo>

namespace {

constexpr int FOLDER_SPAN = 99;

}  // namespace

QString StripPoints(const QString& NNin) {
    if (NNin.startsWith("Drone_")) return NNin;
    QString path = NNin;
    path.replace('\\', '/');
    const QString marker = "SEPARATED-DRONE/";
    const qsizetype at = path.indexOf(marker);
    const QString name = path.mid(path.lastIndexOf('/') + 1);
    if (at >= 0 && name.compare("oblixoblix.shp", Qt::CaseInsensitive) == 0) {
        const QString after = path.mid(at + marker.size(), FOLDER_SPAN);
        return "Drone_" + after.left(after.lastIndexOf('/'));
    }
    QString stripped = name;
    stripped.replace('.', '$').replace('/', '#').replace('\\', '#').replace(':', '!');
    return stripped;
}
