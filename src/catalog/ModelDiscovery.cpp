#include "ModelDiscovery.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gdal_priv.h>
#include <ogrsf_frmts.h>
#include <algorithm>
#include <string>
#include <vector>

#include "app/model/ModelPaths.h"
#include "CatalogHooks.h"
#include "CatalogState.h"
#include "app/services/DialogService.h"
#include "app/services/FileHelpers.h"
#include "app/services/GridFiles.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/OrvoIni.h"
#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"
#include "app/session/MainFormState.h"
#include "app/session/SessionSettings.h"
#include "app/services/ShapeFileWriter.h"
#include "scene/FileNameCase.h"

namespace {

QString withSlash(QString folder) {
    if (!folder.isEmpty() && !folder.endsWith('/')) folder += '/';
    return folder;
}

QString existingNoCase(const QString& path) {
    return QString::fromStdString(FindFileNoCase(path.toStdString()));
}

QString stamp(const QString& file) { return GetTimeStamp(file).toString("yyyy-MM-dd hh:mm:ss"); }

// The master folder, proposing the last one searched, else the root the
// program runs from. "" on cancel.
QString askMasterFolder() {
    QString folder = QString::fromStdString(ORVOINI().readString("Orvo", "Last Drive3D", ""));
    if (folder.isEmpty()) folder = QDir::rootPath();
    const QString title = "Browse Folders";
    const QString prompt = "Select the master drive/folder";
    bool chosen = false;
    if (catalogHooks().chooseFolder)
        chosen = catalogHooks().chooseFolder(title, prompt, folder);
    else
        chosen = MyInputQuery(title, prompt, folder);
    if (!chosen || folder.trimmed().isEmpty()) return {};
    folder = withSlash(QDir::cleanPath(folder.trimmed()));
    WriteSessionSetting("Orvo", "Last Drive3D", folder.toStdString());
    return folder;
}

struct InfRow {
    QStringList fields;
    QString Project, Model, Creation, LastAccess, Image, Comment, Vertices, Faces, Zmin, Zmax;
    double minMax[6] = {0, 0, 0, 0, 0, 0};
    double Lat = 0, Lon = 0;
};

InfRow readInfRow(const QStringList& f) {
    InfRow r;
    r.fields = f;
    const auto at = [&f](int i) { return i < f.size() ? f[i] : QString(); };
    r.Project = at(0);
    r.Model = at(1);
    r.Creation = at(2);
    r.LastAccess = at(3);
    for (int i = 0; i < 6; ++i) r.minMax[i] = at(4 + i).trimmed().toDouble();  // unreadable reads as 0
    r.Zmin = at(8);
    r.Zmax = at(9);
    r.Vertices = at(10);
    r.Faces = at(11);
    r.Image = at(12);
    r.Comment = at(13);
    r.Lat = at(14).trimmed().toDouble();
    r.Lon = at(15).trimmed().toDouble();
    return r;
}

// An information file of the older form goes, with what was made beside the
// model together with it, so that the next analysis writes them afresh.
void removeOldForm(const QString& infFile, const InfRow& r) {
    QFile::remove(infFile);
    const QStringList beside = {r.Model.isEmpty() ? QString() : QFileInfo(r.Model).path() + "/icon.ico", r.Image,
                                r.Model.isEmpty() ? QString() : QFileInfo(r.Model).path() + "/desktop.ini"};
    for (const QString& file : beside) {
        if (file.isEmpty()) continue;
        const QString found = existingNoCase(file);
        if (!found.isEmpty()) QFile::remove(found);
    }
}

bool addCoverageFields(OGRLayer* layer) {
    struct Field {
        const char* name;
        int width;
    };
    const Field fields[] = {{"Project", 40},  {"3DModel", 40}, {"Image", 40},    {"Creation", 20},
                            {"LastAccess", 20}, {"Zmin", 20},  {"Zmax", 20},     {"Vertices", 20},
                            {"Faces", 20},    {"Color", 20},   {"Comment", 40}};
    for (const Field& f : fields) {
        OGRFieldDefn definition(f.name, OFTString);
        definition.SetWidth(f.width);
        if (layer->CreateField(&definition) != OGRERR_NONE) return false;
    }
    return true;
}

bool addCoverageFeature(OGRLayer* layer, const InfRow& r, int color) {
    OGRFeature* feature = OGRFeature::CreateFeature(layer->GetLayerDefn());
    const auto set = [feature](int index, const QString& value) { feature->SetField(index, value.toUtf8().constData()); };
    set(0, r.Project);
    set(1, r.Model);
    set(2, r.Image);
    set(3, r.Creation);
    set(4, r.LastAccess);
    set(5, r.Zmin);
    set(6, r.Zmax);
    set(7, r.Vertices);
    set(8, r.Faces);
    set(9, QString::number(color));
    set(10, r.Comment);
    OGRLineString outline;
    const double* m = r.minMax;
    outline.addPoint(m[0], m[2]);
    outline.addPoint(m[0], m[3]);
    outline.addPoint(m[1], m[3]);
    outline.addPoint(m[1], m[2]);
    outline.addPoint(m[0], m[2]);
    feature->SetGeometry(&outline);
    const bool ok = layer->CreateFeature(feature) == OGRERR_NONE;
    OGRFeature::DestroyFeature(feature);
    return ok;
}

}  // namespace

QStringList FolderTree(const QString& folder) {
    const QString root = withSlash(folder);
    if (!QFileInfo(root).isDir()) return {};
    QStringList tree{root};
    tree += Find_Directories(root, true, "*");
    return tree;
}

QStringList FindModelsFromInf() {
    CatalogState& state = catalogState();
    if (state.GlobalWhereSearched3dModels.isEmpty()) {
        const QString folder = askMasterFolder();
        if (folder.isEmpty()) return {};
        state.GlobalWhereSearched3dModels = folder;
    }
    SetBusyCursor(true);
    QStringList found;
    for (const QString& dir : FolderTree(state.GlobalWhereSearched3dModels)) {
        for (const QString& file : Find_Files(dir + "*inf.csv", false)) {
            found.append(file);
            PrintRunLog("Dir %s   File %s\n", dir.toUtf8().constData(), file.toUtf8().constData());
        }
    }
    SetBusyCursor(false);
    return found;
}

int Prepare3DModelsLocation(const QStringList& TS) {
    CatalogState& state = catalogState();
    const QString folder = QString::fromStdString(sessionPaths().ORVO_T);
    state.FNCSV = folder + "models.csv";
    QDir().mkpath(folder);

    QString table = QString(MODELS_CSV_HEADER) + "\n";
    std::vector<std::pair<InfRow, int>> listed;
    for (int i = 0; i < TS.size(); ++i) {
        QFile file(TS[i]);
        if (!file.open(QIODevice::ReadOnly)) continue;
        const GridRows lines = ParseCsvText(QString::fromUtf8(file.readAll()));
        file.close();
        if (lines.size() < 2) continue;
        const InfRow r = readInfRow(lines[1]);
        if (r.fields.size() < 16) {
            removeOldForm(TS[i], r);
            continue;
        }
        if (!QFileInfo::exists(r.Model)) continue;
        const double east = (r.minMax[0] + r.minMax[1]) / 2;
        const double north = (r.minMax[2] + r.minMax[3]) / 2;
        table += r.Project + "," + r.Creation + "," + r.LastAccess + "," + QString::number(r.Faces.trimmed().toInt()) +
                 "," + r.Comment + "," + r.Model + QString::asprintf(",%lf,%lf,%.0lf,%.0lf", r.Lat, r.Lon, east, north) +
                 "\n";
        listed.emplace_back(r, COVERAGE_COLORS[i % 8]);
    }
    // The previous layer is replaced whole, even by an empty one.
    const bool layerWritten =
        WriteShapeFileStaged(folder + COVERAGE_LAYER_NAME + ".shp", [&listed](GDALDataset* dataset) {
            char** options = CSLSetNameValue(nullptr, "ENCODING", "UTF-8");
            OGRLayer* layer = dataset->CreateLayer(COVERAGE_LAYER_NAME, nullptr, wkbLineString, options);
            CSLDestroy(options);
            if (!layer || !addCoverageFields(layer)) return false;
            for (const auto& [row, color] : listed)
                if (!addCoverageFeature(layer, row, color)) return false;
            return true;
        });
    if (!layerWritten) PrintRunLog("Cannot write the layer %s\n", COVERAGE_LAYER_NAME);
    if (!StringToFile(table, state.FNCSV)) PrintRunLog("Cannot write %s\n", state.FNCSV.toUtf8().constData());
    state.KamaModels = static_cast<int>(listed.size());
    return state.KamaModels;
}

ExploreOutcome DoExploreModels() {
    const QStringList TS = FindModelsFromInf();
    if (TS.isEmpty()) {
        MyShowMessage("No 3Dmodels found");
        return ExploreOutcome::NoFiles;
    }
    const int count = Prepare3DModelsLocation(TS);
    if (count == 0) {
        MyShowMessage("No relevant data found");
        return ExploreOutcome::NoRelevantData;
    }
    ModelBrowserRequest request;
    request.caption = QString::number(count) + "  Models";
    request.csvFile = catalogState().FNCSV;
    request.columns = 9;
    request.sortColumn = 2;
    request.maximized = true;
    if (catalogHooks().showBrowser) catalogHooks().showBrowser(request);
    return ExploreOutcome::Shown;
}

QStringList FindUnopenedModels(int& analyzed) {
    analyzed = 0;
    // Asked every time: the answer is not kept in the session.
    const QString folder = askMasterFolder();
    if (folder.isEmpty()) return {};
    SetBusyCursor(true);
    QStringList list{UNANALYZED_HEADER};
    for (const QString& dir : FolderTree(folder)) {
        for (const QString& mtl : Find_Files(dir + "*.mtl", false)) {
            // Tiles of a tiled model have materials of their own but are no models.
            if (mtl.toUpper().contains("TILE")) continue;
            const QString obj = existingNoCase(WithoutExtension(mtl) + ".obj");
            if (obj.isEmpty()) continue;
            if (!existingNoCase(WithoutExtension(obj) + "_inf.csv").isEmpty()) {
                ++analyzed;
                continue;
            }
            const bool hasPrj = !existingNoCase(WithoutExtension(obj) + ".prj").isEmpty();
            list.append(obj + "," + stamp(obj) + "," + (hasPrj ? "Has PRJ" : "No PRJ"));
        }
    }
    SetBusyCursor(false);
    return list;
}

QString Findunanalyzedmodels1Click() {
    int analyzed = 0;
    const QStringList list = FindUnopenedModels(analyzed);
    catalogState().KamaAnalyzed = analyzed;
    catalogState().KamaUnanalyzed = std::max(0, static_cast<int>(list.size()) - 1);
    if (list.isEmpty()) return {};
    if (list.size() == 1) {
        MyShowMessage("No unanalyzed projects found\n");
        return {};
    }
    const int count = static_cast<int>(list.size()) - 1;
    const QString file = QString::fromStdString(sessionPaths().ORVO_T) + "Unanalyzed_" + QString::number(count) + ".csv";
    if (!StringToFile(list.join("\n") + "\n", file)) {
        PrintRunLog("Cannot write %s\n", file.toUtf8().constData());
        return {};
    }
    ModelBrowserRequest request;
    request.caption = QString::asprintf("%d models already analyzed, %d not", analyzed, count);
    request.csvFile = file;
    request.columns = 3;
    request.sortColumn = count >= 2 ? 1 : -1;
    request.maximized = true;
    request.selectFirstRow = true;
    if (catalogHooks().showBrowser) catalogHooks().showBrowser(request);
    return file;
}
