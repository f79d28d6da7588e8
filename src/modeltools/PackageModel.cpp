#include "PackageModel.h"

#include <QFileInfo>
#include <QSet>
#include <cstdio>
#include <cstring>

#include "app/model/ModelPaths.h"
#include "app/model/ModelSession.h"
#include "app/services/FileHelpers.h"
#include "app/services/FileDialogs.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/RunLog.h"
#include "app/session/MainFormState.h"
#include "modeltools/PackagingCatalogue.h"
#include "modeltools/TextureReduction.h"
#include "modeltools/ZipFiles.h"
#include "scene/FileNameCase.h"

namespace {

constexpr int HEADER_LINES = 100;
constexpr int LINE_BUFFER = 80;
constexpr int NAME_OFFSET = 7;  // the keyword and one blank
constexpr int NAME_LENGTH = 66;

// The name after a keyword in one piece of a line: trimmed, quotes dropped.
bool nameAfter(const char* piece, const char* keyword, QString& name) {
    const char* hit = std::strstr(piece, keyword);
    if (!hit) return false;
    const std::size_t rest = std::strlen(hit);
    name = rest > NAME_OFFSET ? QString::fromUtf8(hit + NAME_OFFSET, int(std::min<std::size_t>(rest - NAME_OFFSET, NAME_LENGTH)))
                                    .trimmed()
                                    .remove('"')
                              : QString();
    return true;
}

std::FILE* openForReading(const QString& path) { return std::fopen(path.toLocal8Bit().constData(), "rb"); }

QString existing(const std::string& path) { return QString::fromStdString(FindFileNoCase(path)); }

struct BusyCursor {
    BusyCursor() { SetBusyCursor(true); }
    ~BusyCursor() { SetBusyCursor(false); }
};

// The files in the order they are listed, with the file actually packed for
// each (a reduced picture stands in for its original under the original's name).
struct PackList {
    QStringList listed;
    QStringList sources;
    QSet<QString> seen;
    bool has(const QString& file) const { return seen.contains(file); }
    void add(const QString& file, const QString& source) {
        if (file.isEmpty() || has(file)) return;
        seen.insert(file);
        listed.append(file);
        sources.append(source);
    }
    void add(const QString& file) { add(file, file); }
};

void addModel(const QString& obj, int ma, PackList& list) {
    list.add(obj);
    const std::string folder = FolderOf(obj.toStdString());

    const QString mtlName = MaterialLibraryName(obj);
    const QString mtl =
        mtlName.isEmpty() ? QString() : QString::fromStdString(ResolveReferencedFile(folder, mtlName.toStdString()));
    if (mtl.isEmpty()) {
        MyShowMessage("Missing\n" + QString::fromStdString(folder) + mtlName);
    } else {
        list.add(mtl);
        for (const QString& name : MaterialPictureNames(mtl)) {
            const QString picture = QString::fromStdString(ResolveReferencedFile(folder, name.toStdString()));
            if (picture.isEmpty()) {
                MyShowMessage("Missing\n" + QString::fromStdString(folder) + name);
                continue;
            }
            if (list.has(picture)) continue;
            list.add(picture, ma == PACK_SMALL_JPG ? ReducePictureForPacking(picture) : picture);
        }
    }
    list.add(existing(WithoutExtension(obj).toStdString() + ".prj"));
}

}  // namespace

QString MaterialLibraryName(const QString& obj) {
    std::FILE* file = openForReading(obj);
    if (!file) return {};
    QString found;
    char piece[LINE_BUFFER];
    for (int i = 0; i < HEADER_LINES && std::fgets(piece, sizeof piece, file); ++i) {
        QString name;
        if (nameAfter(piece, "mtllib", name)) found = name;
    }
    std::fclose(file);
    return found;
}

QStringList MaterialPictureNames(const QString& mtl) {
    std::FILE* file = openForReading(mtl);
    if (!file) return {};
    QStringList names;
    char piece[LINE_BUFFER];
    while (std::fgets(piece, sizeof piece, file)) {
        QString name;
        if (nameAfter(piece, "map_Kd", name) && !name.isEmpty()) names.append(name);
    }
    std::fclose(file);
    return names;
}

QString CompressOBJ(int ma) {
    ModelSession& session = modelSession();
    QString model = QString::fromStdString(session.GlobalModelFileName);
    if (model.isEmpty()) {
        if (OrvoOpenFile(model, "OBJ", "OBJ  file(*.OBJ)|*.OBJ", "Please select the OBJ  file (input)", "") != 1)
            return {};
    }
    // The session's list is left as it was: a second pack must not find the model in it twice.
    QStringList inputs = session.INPUTFILES;
    if (!inputs.contains(model)) inputs.append(model);

    BusyCursor busy;
    QString zip = OrvoExtractLocalFilePath(QString(inputs.first()).remove('"').replace('\\', '/'));
    PackList list;
    for (QString input : inputs) {
        input = input.remove('"').replace('\\', '/').trimmed();
        if (!QFileInfo(input).isFile()) {
            MyShowMessage("Missing\n" + input);
            continue;
        }
        zip += WithoutExtension(WithoutExtension(QFileInfo(input).fileName()));
        addModel(input, ma, list);
    }
    if (list.listed.isEmpty()) return {};

    const QString archive = zip + (ma == PACK_SMALL_JPG ? "_small.OBJ.ZIP" : ".OBJ.ZIP");
    const std::string modelFolder = FolderOf(QString(model).remove('"').replace('\\', '/').toStdString());
    if (ma == PACK_WITH_OBLIQUES || ma == PACK_EVERY_SECOND_JPG) {
        const QString catalogues = existing(modelFolder + "OblixOblix.txt");
        if (catalogues.isEmpty())
            PrintRunLog("CompressOBJ: no OblixOblix.txt in %s\n", modelFolder.c_str());
        else
            for (const QString& file : CatalogueFilesToPack(catalogues, ma == PACK_EVERY_SECOND_JPG)) list.add(file);
    }

    QString grid = existing(session.TacticalGridFile);
    if (grid.isEmpty()) grid = existing(modelFolder + "TacticalG.shp");
    if (!grid.isEmpty()) {
        list.add(grid);
        const std::string base = WithoutExtension(grid).toStdString();
        for (const char* companion : {".shx", ".dbf", ".prj"}) list.add(existing(base + companion));
    }

    if (!ZipNamedFiles(list.sources, ZipEntryNames(list.listed, false), archive, true)) return {};
    return archive;
}
