#include "ExportModel.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <exception>

#include "ObjFacePass.h"
#include "app/model/LayerTable.h"
#include "app/model/ModelPaths.h"
#include "app/model/ModelSession.h"
#include "app/services/FileDialogs.h"
#include "app/services/FileHelpers.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/SunGlobalLog.h"
#include "geo/Frames.h"
#include "geo/GeoState.h"
#include "scene/FileNameCase.h"
#include "scene/engine_interface.h"
#include "solar/design/PanelDaeEmbed.h"
#include "solar/design/PanelDaeEpsg.h"
#include "solar/design/PanelStore.h"

namespace {

// The save dialog's list: the extensions the engine writes.
constexpr const char* EXPORT_FILTER =
    "DXF file (*.dxf)|*.dxf|Caligari file (*.cob)|*.cob|STL file (*.stl)|*.stl|3DS file (*.3ds)|*.3ds|"
    "OBJ file (*.obj)|*.obj|ATM file (*.atm)|*.atm|COLLADA file (*.dae)|*.dae";

int filterEntryOf(const std::string& model) {
    const QString suffix = QFileInfo(QString::fromStdString(model)).suffix().toLower();
    const QStringList order = {"dxf", "cob", "stl", "3ds", "obj", "atm", "dae"};
    const int index = static_cast<int>(order.indexOf(suffix));
    return index < 0 ? 5 : index + 1;
}

void copyPrjBeside(const QString& output) { CopyModelPrj(modelSession().GlobalModelFileName, output.toStdString()); }

// The texture picture a panel's COLLADA names between <init_from> and </init_from>.
QString panelTextureName(const QString& daeFile) {
    const QString text = StringFromFile(daeFile);
    const qsizetype from = text.indexOf("<init_from>");
    const qsizetype to = text.indexOf("</init_from>", from);
    if (from < 0 || to < 0) return {};
    return text.mid(from + 11, to - from - 11).trimmed();
}

const char* yesNo(bool value) { return value ? "YES" : "NO"; }

void copyPanelTextures(const QString& targetFolder) {
    const PanelStore& store = panelStore();
    PrintSunLog("\n=== SaveTheModel: Copying Panel Textures ===\n");
    PrintSunLog("Target directory: %s\n", targetFolder.toUtf8().constData());
    PrintSunLog("Processing %d panels...\n", store.NumPanelsCreated);
    QSet<QString> done;
    for (int i = 0; i < store.NumPanelsCreated; ++i) {
        const PANEL& panel = store.panels[static_cast<std::size_t>(i)];
        const QString file = QString::fromUtf8(panel.Filename);
        if (file.isEmpty() || !QFileInfo::exists(file)) continue;
        const QByteArray name = QByteArray(panel.Name);
        const QString texture = panelTextureName(file);
        if (texture.isEmpty()) {
            PrintSunLog("  Panel %s: No texture reference found\n", name.constData());
            continue;
        }
        if (done.contains(texture)) {
            PrintSunLog("  Panel %s: Texture '%s' already processed, skipping\n", name.constData(),
                        texture.toUtf8().constData());
            continue;
        }
        done.insert(texture);
        PrintSunLog("  Panel %s: Processing texture '%s'\n", name.constData(), texture.toUtf8().constData());
        try {
            const QString panelFolder = QFileInfo(file).absolutePath() + "/";
            const QString source = panelFolder + texture;
            const QString target = targetFolder + texture;
            const bool sourceExists = QFileInfo::exists(source), targetExists = QFileInfo::exists(target);
            PrintSunLog("    Source: %s\n", source.toUtf8().constData());
            PrintSunLog("    Target: %s\n", target.toUtf8().constData());
            PrintSunLog("    Source exists: %s\n", yesNo(sourceExists));
            PrintSunLog("    Target exists: %s\n", yesNo(targetExists));
            if (targetExists) {
                PrintSunLog("    Target already exists, skipping\n");
            } else if (sourceExists) {
                PrintSunLog("    Copy result: %s\n", OrvoCopyFile(source, target) ? "SUCCESS" : "FAILED");
            } else {
                PrintSunLog("    ERROR: Source texture not found!\n");
                const QString alt1 = QFileInfo(panelFolder + "../").absoluteFilePath() + "/" + texture;
                const bool alt1Exists = QFileInfo::exists(alt1);
                PrintSunLog("    Trying alt1: %s (%s)\n", alt1.toUtf8().constData(), alt1Exists ? "EXISTS" : "NO");
                if (alt1Exists) {
                    PrintSunLog("    Alt1 copy result: %s\n", OrvoCopyFile(alt1, target) ? "SUCCESS" : "FAILED");
                } else {
                    const QString alt2 = QString::fromStdString(ModelFolder()) + texture;
                    const bool alt2Exists = QFileInfo::exists(alt2);
                    PrintSunLog("    Trying alt2: %s (%s)\n", alt2.toUtf8().constData(), alt2Exists ? "EXISTS" : "NO");
                    if (alt2Exists)
                        PrintSunLog("    Alt2 copy result: %s\n", OrvoCopyFile(alt2, target) ? "SUCCESS" : "FAILED");
                }
            }
        } catch (const std::exception&) {
            PrintSunLog("    Copy result: EXCEPTION\n");
        }
    }
    PrintSunLog("=== SaveTheModel: Panel Texture Copy Complete ===\n\n");
}

}  // namespace

int ExportFormatCode(const QString& fileName) {
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    if (suffix == "cob") return AT3D_WRITE_COB;
    if (suffix == "stl") return AT3D_WRITE_STL;
    if (suffix == "3ds") return AT3D_WRITE_3DS;
    if (suffix == "atm") return AT3D_WRITE_ATM;
    if (suffix == "dae") return AT3D_WRITE_DAE;
    return AT3D_WRITE_OBJ;
}

QString ExportModel(QString OutFile, bool localized) {
    const std::string& model = modelSession().GlobalModelFileName;
    if (OutFile.isEmpty()) {
        OutFile = QString::fromStdString(FolderOf(model) + BaseNameOf(model) + "_exported");
        if (!OrvoSaveFile(OutFile, "", EXPORT_FILTER, "Export the model", filterEntryOf(model))) return {};
    }
    const int code = ExportFormatCode(OutFile);
    OrvoCreateDir(QFileInfo(OutFile).absolutePath());
    if (code == AT3D_WRITE_3DS) At3d_WriteFlag(LIBFLAG_EXPORT_115, 1);
    copyPrjBeside(OutFile);
    FrameState& frame = frameState();
    bool written = false;
    if (!localized && (code == AT3D_WRITE_OBJ || code == AT3D_WRITE_ATM)) {
        // The engine turns the model Y-up inside; files are Z-up: turn, move, write, and undo in reverse.
        At3d_RotateObjectX_90Plus();
        const double back[3] = {-frame.BeforeRotateCenter[0], -frame.BeforeRotateCenter[1],
                                -frame.BeforeRotateCenter[2]};
        At3d_SetObjectCenter(back);
        At3d_WriteFlag(LIBFLAG_NO_DRAW, 1);
        At3d_SetProducedByName("Orvo Systems .");
        written = At3d_Write(code, OutFile.toUtf8().constData(), 1) != 0;
        At3d_SetObjectCenter(frame.BeforeRotateCenter);
        At3d_RotateObjectX_90Minus();
        At3d_WriteFlag(LIBFLAG_NO_DRAW, 0);
        At3d_RenderOpenGLScene();
    } else if (!localized && code == AT3D_WRITE_DAE) {
        At3d_WriteFlag(LIBFLAG_NO_DRAW, 1);
        const double back[3] = {-frame.OCENTER[0], -frame.OCENTER[1], -frame.OCENTER[2]};
        At3d_SetObjectCenter(back);
        const int panels = panelStore().NumPanelsCreated;
        OutFile = QString::fromStdString(WithExtension(OutFile.toStdString(), QString::asprintf("_(%d).DAE", panels).toStdString()));
        written = At3d_Write(code, OutFile.toUtf8().constData(), 1) != 0;
        At3d_SetObjectCenter(frame.OCENTER);
        int embedded = 0;
        if (written && panels > 0) EmbedPanelsToDaeFile(OutFile, &embedded);
        At3d_WriteFlag(LIBFLAG_NO_DRAW, 0);
        At3d_RenderOpenGLScene();
        if (written) {
            QString text = QString::number(embedded) + " Panels embedded in " + QFileInfo(OutFile).fileName();
            if (embedded < panels) text += "\n" + QString::number(panels - embedded) + " panels NOT embedded";
            MyShowMessage(text);
        }
    } else {
        written = At3d_Write(code, OutFile.toUtf8().constData(), 1) != 0;
    }
    if (code == AT3D_WRITE_3DS) At3d_WriteFlag(LIBFLAG_EXPORT_115, 0);
    if (!written) {
        MyShowMessage("Cannot write " + OutFile);
        return {};
    }
    return OutFile;
}

QString SaveTheModel(const QString& Output) {
    const QString written = ExportModel(Output, false);
    if (written.isEmpty()) return {};
    if (ExportFormatCode(written) == AT3D_WRITE_DAE && GetEPSGFromDAE(written) < 0 && geoState().EPSG > 0) {
        EmbedEPSGInDAE(written, geoState().EPSG);
        GetEPSGFromDAE(written);
    }
    copyPrjBeside(written);
    const QString folder = QFileInfo(written).absolutePath() + "/";
    int NL = 0, NF = 0;
    GetTotalVertices(NL, NF);
    const LayerTable& table = layerTable();
    for (int k = 0; k < table.NL; ++k) {
        char texture[AT3D_PATH_SIZE] = {};
        if (!At3d_GetTextureName(table.layerName[k], texture) || !texture[0]) continue;
        const QString source = QString::fromUtf8(texture);
        const QString target = folder + QFileInfo(source).fileName();
        if (!QFileInfo::exists(target) && QFileInfo::exists(source)) OrvoCopyFile(source, target);
    }
    copyPanelTextures(folder);
    return written;
}

QString SaveLocalizedModelClick() {
    const std::string& model = modelSession().GlobalModelFileName;
    if (QString::fromStdString(model).contains("_Localized.obj", Qt::CaseInsensitive)) {
        MyShowMessage("The model is already localized");
        return {};
    }
    const QString output = QString::fromStdString(WithExtension(model, "_Localized.obj"));
    const QString written = ExportModel(output, true);
    if (!written.isEmpty()) MyShowMessage(written + "\nCreated");
    return written;
}
