#include "ModelBrowser.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "app/model/ModelPaths.h"
#include "app/model/ReadModel.h"
#include "app/services/DialogService.h"
#include "app/services/FileDialogs.h"
#include "app/services/FileHelpers.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/OrvoIni.h"
#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"
#include "app/session/StartupState.h"
#include "scene/FileNameCase.h"

namespace {

QString cell(const QStringList& row, int column) { return column < row.size() ? row[column] : QString(); }

bool insideLastExtent(double East, double North) {
    const std::string extent = ORVOINI().readString("Orvo", "Last Extent", "");
    double xmin = 0, xmax = 0, ymin = 0, ymax = 0;
    if (std::sscanf(extent.c_str(), "%lf%lf%lf%lf", &xmin, &xmax, &ymin, &ymax) != 4) return false;
    return East >= xmin && East <= xmax && North >= ymin && North <= ymax;
}

}  // namespace

GridRows LoadBrowserTable(const ModelBrowserRequest& request) {
    GridRows rows;
    if (!LoadCsvGrid(request.csvFile, rows) || rows.isEmpty()) return {};
    while (rows.size() > 1 && rows.last().join("").isEmpty()) rows.removeLast();
    const int column = request.sortColumn;
    if (column >= 0)
        std::stable_sort(rows.begin() + 1, rows.end(), [column](const QStringList& a, const QStringList& b) {
            return cell(a, column) < cell(b, column);
        });
    return rows;
}

bool ModelUnder3dModelsFolder(const QString& model) {
    QDir dir = QFileInfo(model).dir();
    for (int level = 0; level < 10; ++level) {
        if (dir.absolutePath().toUpper().contains("3dmodels")) return true;
        if (!dir.cdUp()) break;
    }
    return false;
}

ModelSelection WorkBookGrid1SelectCell(const GridRows& rows, int ARow) {
    ModelSelection s;
    s.SelectedRow = ARow;
    if (ARow < 0 || ARow >= rows.size()) return s;
    const QStringList& row = rows[ARow];
    int columns = 0;
    for (const QStringList& r : rows) columns = std::max(columns, static_cast<int>(r.size()));
    if (columns < 4) {
        s.MODEL = cell(row, 0);
        s.label = s.MODEL;
        s.showOnMapVisible = false;
    } else {
        s.MODEL = cell(row, 5);
        s.label = s.MODEL;
        s.ModelLat = cell(row, 6).trimmed().toDouble();
        s.ModelLon = cell(row, 7).trimmed().toDouble();
        s.ModelEast = cell(row, 8).trimmed().toDouble();
        s.ModelNorth = cell(row, 9).trimmed().toDouble();
        const bool hasPosition = std::fabs(s.ModelLat) + std::fabs(s.ModelLon) > 1;
        s.showOnMapVisible = true;
        s.showOnMapCaption = hasPosition ? "Show in Google map" : "Add PRJ";
        s.showIn2DVisible =
            hasPosition && ModelUnder3dModelsFolder(s.MODEL) && insideLastExtent(s.ModelEast, s.ModelNorth);
    }
    if (!s.MODEL.isEmpty()) s.IMAGE = WithoutExtension(s.MODEL) + "_inf.jpg";
    return s;
}

QString GoogleMapAddress(double Lat, double Lon) {
    const QString base = QString::fromStdString(ORVOINI().readString(WEB_MAP_SECTION, WEB_MAP_KEY, WEB_MAP_DEFAULT));
    return base + QString::asprintf("?q=%lf,%lf&z=%d&t=k", Lat, Lon, 15);
}

void OpenThe3DModel(const QString& model) {
    startupState().GlobalARGVforDebug = model.toStdString();
    if (catalogHooks().openModel)
        catalogHooks().openModel();
    else
        ReadModelBtnClick();
}

bool ShowOnMapClick(const QString& caption, const ModelSelection& selection) {
    if (caption.toUpper().contains("GOOGLE")) {
        const QString address = GoogleMapAddress(selection.ModelLat, selection.ModelLon);
        if (!catalogHooks().openWebAddress || !catalogHooks().openWebAddress(address))
            PrintRunLog("No browser took %s\n", address.toUtf8().constData());
        return true;
    }
    QString prj;
    if (!OrvoOpenFile(prj, "prj", "PRJ file (*.PRJ)|*.prj", "Open the PRJ file (input)",
                      QFileInfo(selection.MODEL).path()))
        return false;
    if (!OrvoCopyFile(prj, WithoutExtension(selection.MODEL) + ".PRJ")) {
        MyShowMessage("Cannot write\n" + WithoutExtension(selection.MODEL) + ".PRJ");
        return false;
    }
    OpenThe3DModel(selection.MODEL);
    return true;
}

bool DeleteTheModel(const QString& model) {
    const QString folder = QFileInfo(model).absolutePath();
    if (MyMessageBox(folder, "Delete model?", MB_YESNO | MB_ICONQUESTION) != IDYES) return false;
    return ORVODeleteDirectory(folder);
}

QString RewriteHistoryZoom(const QString& history, double East, double North) {
    const QString zoom =
        QString::asprintf("ZOOM %.0lf %.0lf %.0lf %.0lf", East - 200, North - 200, East + 200, North + 200);
    QString out;
    qsizetype at = 0;
    while (at < history.size()) {
        qsizetype end = history.indexOf('\n', at);
        end = end < 0 ? history.size() : end + 1;
        const QString line = history.mid(at, end - at);
        if (line.contains("ZOOM")) {
            // The line end of the file stays as it was.
            const QString ending = line.endsWith("\r\n") ? "\r\n" : line.endsWith('\n') ? "\n" : "";
            return out + zoom + ending;
        }
        out += line;
        at = end;
    }
    return out;
}

QString ShowSolvane(double East, double North) {
    const QString history = QString::fromStdString(ORVOINI().readString("Orvo", "Last History", ""));
    if (history.isEmpty() || !QFileInfo::exists(history)) {
        MyShowMessage("Missing\n" + history);
        return {};
    }
    QFile in(history);
    if (!in.open(QIODevice::ReadOnly)) {
        MyShowMessage("Missing\n" + history);
        return {};
    }
    const QString text = RewriteHistoryZoom(QString::fromUtf8(in.readAll()), East, North);
    const QString out = QString::fromStdString(sessionPaths().ORVO_T) + "t.2hs";
    if (!StringToFile(text, out)) {
        PrintRunLog("Cannot write %s\n", out.toUtf8().constData());
        return {};
    }
    dialogService().openDocument(out);
    return out;
}
