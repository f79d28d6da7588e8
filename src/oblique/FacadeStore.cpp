#include "FacadeStore.h"

#include <QDir>
#include <QFileInfo>
#include <cmath>
#include <cstring>

#include "app/model/ModelPaths.h"
#include "app/model/ModelSession.h"
#include "app/model/RenderModeMenu.h"
#include "app/model/SceneLayers.h"
#include "app/services/FileHelpers.h"
#include "app/session/MainFormState.h"
#include "app/session/ViewerSettings.h"
#include "scene/engine_interface.h"

namespace {

constexpr int BLUE = 16711680;
constexpr int RED = 255;
constexpr float LINE_WIDTH = 2;
constexpr double NO_ROW_YET = 99999;
constexpr int COLUMNS = 11;

void takeRow(const FacadeRow& row) {
    FacadeState& s = facadeState();
    s.Facade1X = row.X, s.Facade1Y = row.Y, s.Facade1Z = row.Z;
    s.Facade2X = row.OX, s.Facade2Y = row.OY, s.Facade2Z = row.OZ;
}

}  // namespace

FacadeState& facadeState() {
    static FacadeState state;
    return state;
}

void resetFacadeState() { facadeState() = FacadeState{}; }

bool ReadFacadeRow(const QString& commaText, FacadeRow& row) {
    const QStringList columns = commaText.split(',');
    if (columns.size() < COLUMNS) return false;
    row.picture = columns[1];
    double* numbers[] = {&row.X, &row.Y, &row.Z, &row.OX, &row.OY, &row.OZ, &row.azimuth, &row.distance, &row.pitch};
    for (int i = 0; i < 9; ++i) *numbers[i] = columns[2 + i].trimmed().toDouble();
    return true;
}

QString FacadesFolder(const std::string& modelPath) {
    const QDir folder(QFileInfo(QString::fromStdString(modelPath)).absolutePath());
    for (const QString& name : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        if (name.compare("FACADES", Qt::CaseInsensitive) == 0) return folder.absoluteFilePath(name) + "/";
    return {};
}

int LoadFacades() {
    ModelSession& model = modelSession();
    model.KamaFacades = 0;
    const QString folder = FacadesFolder(model.GlobalModelFileName);
    if (folder.isEmpty()) return 0;
    const QStringList containers = QDir(folder).entryList({"*.fac"}, QDir::Files);
    FacadeState& s = facadeState();
    if (!containers.isEmpty()) s.TSFACADES.clear();
    for (const QString& container : containers) {
        const QStringList lines = StringFromFile(folder + container).split('\n', Qt::SkipEmptyParts);
        for (qsizetype i = 1; i < lines.size(); ++i) {
            QStringList columns = lines[i].trimmed().isEmpty() ? QStringList() : lines[i].split(',');
            if (columns.size() < COLUMNS) continue;
            // The pictures lie beside their container, wherever it was made.
            columns[1] = folder + QFileInfo(QString(columns[1]).replace('\\', '/')).fileName();
            s.TSFACADES << columns.join(',');
        }
    }
    model.KamaFacades = static_cast<int>(s.TSFACADES.size());
    for (const QString& line : s.TSFACADES) {
        FacadeRow row;
        ReadFacadeRow(line, row);
        AddLineToScene(row.picture, TGIS_Point3D{row.X, row.Y, row.Z, 0}, TGIS_Point3D{row.OX, row.OY, row.OZ, 0}, BLUE,
                       LINE_WIDTH);
    }
    if (!viewerSettings().ConfiguredForSolar) SetControlVisible("SelectMeasuringBtn", true);
    SetControlChecked("DepthFlagBtn", true);
    DepthFlagBtnClick();
    At3d_RenderOpenGLScene();
    return model.KamaFacades;
}

QString FindRelevantFacade(const TGIS_Point3D& point, double& DistXY, double& DistZ) {
    FacadeState& s = facadeState();
    double nearest = NO_ROW_YET;
    FacadeRow best;
    bool found = false;
    for (const QString& line : s.TSFACADES) {
        FacadeRow row;
        if (!ReadFacadeRow(line, row)) continue;
        const double d = std::sqrt((point.X - row.OX) * (point.X - row.OX) + (point.Y - row.OY) * (point.Y - row.OY) +
                                   (point.Z - row.OZ) * (point.Z - row.OZ));
        // At an equal distance the later row wins.
        if (d <= nearest) {
            nearest = d;
            best = row;
            found = true;
        }
    }
    if (!found) return {};
    takeRow(best);
    DistXY = std::hypot(best.X - best.OX, best.Y - best.OY);
    // Level: the view from the camera towards the target, and "DZ" is the target's height.
    s.Facade1Z = s.Facade2Z;
    DistZ = s.Facade2Z;
    return best.picture;
}

QString FindNextFacade(int Add, int) {
    FacadeState& s = facadeState();
    const int count = static_cast<int>(s.TSFACADES.size());
    for (int row = 1; row < count; ++row) {
        FacadeRow current;
        if (!ReadFacadeRow(s.TSFACADES[row], current) || current.picture.compare(s.THE_JPG, Qt::CaseInsensitive) != 0)
            continue;
        int II = row + Add;
        if (II < 1) II = count + II;
        if (II == count) II = 1;
        FacadeRow next;
        if (II < 0 || II >= count || !ReadFacadeRow(s.TSFACADES[II], next)) return {};
        takeRow(next);
        return next.picture;
    }
    return {};
}

void SelectLine(const QString& JPG) {
    At3d_MeasureList_Cancel_Selected_Line();
    FacadeState& s = facadeState();
    const QByteArray path = JPG.toUtf8();
    for (int i = 0, n = At3d_MeasureList_Get_Count(); i < n; ++i) {
        char id[AT3D_NAME_SIZE] = {};
        int visible = 0, observer = 0, obstruction = 0;
        float width = 0, rgb[3];
        double v1[3], v2[3], o[3], b[3];
        At3d_MeasureList_Get_Item(i, id, &visible, &observer, &obstruction, &width, rgb, v1, v2, o, b);
        // Names are cut to the engine's length: a long path matches by its head.
        const bool cut = std::strlen(id) == AT3D_NAME_SIZE - 1;
        if (!std::strstr(id, path.constData()) && !(cut && path.startsWith(id))) continue;
        SetLineColor(i, RED);
        if (s.LastSelectedLine >= 0 && s.LastSelectedLine != i) SetLineColor(s.LastSelectedLine, BLUE);
        s.LastSelectedLine = i;
        return;
    }
}

QString FacadeOfClick(const TGIS_Point3D& point, double& DistXY, double& DistZ) {
    if (modelSession().KamaFacades == 0 || !ControlChecked("ShowHideFacadeImageLocation")) return {};
    const QString picture = FindRelevantFacade(point, DistXY, DistZ);
    if (picture.isEmpty() || !QFileInfo::exists(picture)) {
        At3d_MeasureList_Cancel_Selected_Line();
        return {};
    }
    SelectLine(picture);
    return picture;
}
