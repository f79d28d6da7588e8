#include "DroneTable.h"

#include <QStringList>

#include "app/session/StartupState.h"

namespace {

// Columns of a table row.
enum { DRONE_COL, FOCAL35_COL, W_COL, H_COL, WIDTHMM_COL, MODEL_COL, FOCAL_COL, GLOBAL_SHUTTER_COL };

}  // namespace

PhotoMetaState& photoMetaState() {
    static PhotoMetaState state;
    return state;
}

void resetPhotoMetaState() { photoMetaState() = PhotoMetaState{}; }

DRONE GetDroneFromModel(const QString& Model_in) {
    DRONE drone;
    drone.Camera = Model_in;
    drone.Name = "UNKNOWN";
    drone.RollingShutter = 1;
    if (Model_in.contains("PSDK102S") || Model_in.contains("102S")) {
        drone.RollingShutter = 0;
        drone.Name = "PSDK102S";
        return drone;
    }
    if (Model_in.contains("SHARE202SPRO") || Model_in.contains("202S")) {
        drone.Name = "SHARE202SPRO";
        return drone;
    }
    if (Model_in.contains("SHARE") || Model_in.contains("302S")) {
        drone.Name = "PSDK302S";
        return drone;
    }
    QString model = Model_in;
    const qsizetype cut = model.indexOf(" Camera");
    if (cut >= 0) model.truncate(cut);
    model = model.trimmed();
    const QStringList& table = startupState().TScam;
    for (qsizetype i = 1; i < table.size(); ++i) {
        const QStringList columns = table[i].split(',');
        if (columns.size() <= FOCAL_COL) continue;
        if (columns[MODEL_COL].compare(model, Qt::CaseInsensitive) != 0 &&
            columns[DRONE_COL].compare(model, Qt::CaseInsensitive) != 0)
            continue;
        if (columns.size() > 7) drone.RollingShutter = 1 - columns[GLOBAL_SHUTTER_COL].trimmed().toInt();
        drone.Camera = columns[MODEL_COL];
        drone.Name = columns[DRONE_COL];
        drone.Focal = columns[FOCAL_COL].toFloat();
        drone.Focal35Length = columns[FOCAL35_COL].toFloat();
        drone.Widthmm = columns[WIDTHMM_COL].toFloat();
        drone.Width = columns[W_COL].toInt();
        drone.Height = columns[H_COL].toInt();
        return drone;
    }
    return drone;
}
