// crop, mark, clean, shift, rotate and export: new model files made from a
// model as the window's model menu makes them, answers given on the line.
#include <QFile>
#include <QFileInfo>
#include <cstdio>
#include <filesystem>

#include "CliCommands.h"
#include "CliSupport.h"
#include "app/model/ModelSession.h"
#include "app/session/DispatchState.h"
#include "geo/Frames.h"
#include "measure/MeasurementFiles.h"
#include "modeltools/CleanModel.h"
#include "modeltools/CleanRegions.h"
#include "modeltools/CropModel.h"
#include "modeltools/ExportModel.h"
#include "modeltools/ShiftModel.h"
#include "scene/engine_interface.h"

namespace {

constexpr const char* kCropUsage = "zorvex64-cli crop MODEL NAME (POLYGON | --margin)";
constexpr const char* kMarkUsage = "zorvex64-cli mark MODEL close|above X Y Z [--bias B] [--range R]";
constexpr const char* kCleanUsage = "zorvex64-cli clean MODEL NAME";
constexpr const char* kShiftUsage = "zorvex64-cli shift MODEL DX DY DZ";
constexpr const char* kRotateUsage = "zorvex64-cli rotate MODEL DEG DX DY DZ";
constexpr const char* kExportUsage = "zorvex64-cli export MODEL OUT [--localized]";
constexpr int YES = 1;

// The outline as the measure list holds a digitised polygon: ".POL" records
// as they stand, or "X Y Z" map points, one a line, each a side to the next.
bool loadOutline(const QString& path) {
    At3d_MeasureList_Clear();
    if (path.endsWith(".pol", Qt::CaseInsensitive)) return ImportMeasureData(path) > 0;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    std::vector<std::array<double, 3>> points;
    for (const QByteArray& line : file.readAll().split('\n')) {
        std::array<double, 3> p{};
        if (std::sscanf(line.constData(), "%lf %lf %lf", &p[0], &p[1], &p[2]) == 3) points.push_back(p);
    }
    const float blue[3] = {0, 0, 1};
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto& a = points[i];
        const auto& b = points[(i + 1) % points.size()];
        const double v1[3] = {a[0] - OC(0), a[1] - OC(1), a[2] - OC(2)};
        const double v2[3] = {b[0] - OC(0), b[1] - OC(1), b[2] - OC(2)};
        const double none[3] = {0, 0, 0};
        const std::string id = "POL_" + std::to_string(i + 1);
        At3d_MeasureList_Add_Item(id.c_str(), 1, 0, 0, 2, blue, v1, v2, none, none);
    }
    return points.size() >= 3;
}

int CliCrop(const std::vector<std::string>& args) {
    if (args.size() != 3) return CliUsageError("crop takes a model, a name and a polygon or --margin", kCropUsage);
    PrepareCliSession();
    OpenedModel opened;
    if (!OpenModelWithFoldersForCli(args[0], opened)) return CLI_FAILED;
    StderrDialogService dialogs;
    dialogs.pushText(QString::fromStdString(args[1]));
    if (args[2] == "--margin") {
        At3d_MeasureList_Clear();
        dialogs.pushButton(YES);
    } else if (!loadOutline(QString::fromStdString(args[2]))) {
        std::fprintf(stderr, "error: no polygon of three or more points in %s\n", args[2].c_str());
        return CLI_FAILED;
    }
    CliCommandScope scope(&dialogs);
    CliModelToolProgress progress;
    const CropResult result = CropTheModelFromFile();
    if (result.output.empty()) return CLI_FAILED;
    std::printf("%s\nfaces %lld of %lld\n", result.output.c_str(), result.kept, result.faces);
    return CLI_OK;
}

int CliMark(const std::vector<std::string>& args) {
    if (args.size() < 5 || (args[1] != "close" && args[1] != "above"))
        return CliUsageError("mark takes a model, close or above, and a map point", kMarkUsage);
    double p[3];
    int error = 0;
    if (!ParseCliNumbers(args, 2, 3, p, kMarkUsage, error)) return error;
    double bias = 0, range = 2;
    for (std::size_t i = 5; i < args.size(); i += 2) {
        double* target = args[i] == "--bias" ? &bias : args[i] == "--range" ? &range : nullptr;
        if (!target || i + 1 >= args.size()) return CliUsageError("unknown option " + args[i], kMarkUsage);
        if (!ParseCliNumber(args[i + 1], *target)) return CliUsageError("not a number: " + args[i + 1], kMarkUsage);
    }
    PrepareCliSession();
    OpenedModel opened;
    if (!OpenModelWithFoldersForCli(args[0], opened)) return CLI_FAILED;
    DispatchState& click = dispatchState();
    click.GlobalX1 = p[0] - OC(0);
    click.GlobalY1 = p[1] - OC(1);
    click.GlobalZ1 = p[2] - OC(2);
    StderrDialogService dialogs;
    const bool close = args[1] == "close";
    if (!close) dialogs.pushText(QString::asprintf("%.6f %.6f", bias, range));
    dialogs.pushButton(2);  // keep the regions already marked
    CliCommandScope scope(&dialogs);
    const int regions = close ? MarkCloseVertices() : MarkAboveClickedZ();
    if (regions == 0) return CLI_FAILED;
    std::printf("%s\nregions %d\n", modelSession().TodeleteVerticesFile.c_str(), regions);
    return CLI_OK;
}

int CliClean(const std::vector<std::string>& args) {
    if (args.size() != 2) return CliUsageError("clean takes a model and a name", kCleanUsage);
    PrepareCliSession();
    OpenedModel opened;
    if (!OpenModelWithFoldersForCli(args[0], opened)) return CLI_FAILED;
    if (!QFileInfo::exists(QString::fromStdString(modelSession().TodeleteVerticesFile))) {
        std::fprintf(stderr, "error: no regions marked: %s is missing\n", modelSession().TodeleteVerticesFile.c_str());
        return CLI_FAILED;
    }
    StderrDialogService dialogs;
    dialogs.pushText(QString::fromStdString(args[1]));
    CliCommandScope scope(&dialogs);
    CliModelToolProgress progress;
    const CleanResult result = CleanTheModelFromFile();
    if (result.output.empty()) return CLI_FAILED;
    std::printf("%s\nfaces cleaned %lld of %lld\n", result.output.c_str(), result.dropped, result.faces);
    return CLI_OK;
}

int CliShift(const std::vector<std::string>& args) {
    if (args.size() != 4) return CliUsageError("shift takes a model and three numbers", kShiftUsage);
    double d[3];
    int error = 0;
    if (!ParseCliNumbers(args, 1, 3, d, kShiftUsage, error)) return error;
    PrepareCliSession();
    modelSession().GlobalModelFileName = std::filesystem::absolute(args[0]).lexically_normal().string();
    StderrDialogService dialogs;
    dialogs.pushText(QString::asprintf("%.17g %.17g %.17g", d[0], d[1], d[2]));
    CliCommandScope scope(&dialogs);
    CliModelToolProgress progress;
    const std::string output = Shiftthemodel1Click();
    if (output.empty()) return CLI_FAILED;
    std::printf("%s\n", output.c_str());
    return CLI_OK;
}

int CliRotate(const std::vector<std::string>& args) {
    if (args.size() != 5) return CliUsageError("rotate takes a model, degrees and three numbers", kRotateUsage);
    double d[4];
    int error = 0;
    if (!ParseCliNumbers(args, 1, 4, d, kRotateUsage, error)) return error;
    if (d[0] != static_cast<int>(d[0])) return CliUsageError("the turn is whole degrees", kRotateUsage);
    PrepareCliSession();
    modelSession().GlobalModelFileName = std::filesystem::absolute(args[0]).lexically_normal().string();
    StderrDialogService dialogs;
    dialogs.pushText(QString::asprintf("%.9g %.9g %.9g %d", d[1], d[2], d[3], static_cast<int>(d[0])));
    CliCommandScope scope(&dialogs);
    CliModelToolProgress progress;
    const std::string output = ShiftRotatethemodel1Click();
    if (output.empty()) return CLI_FAILED;
    std::printf("%s\n", output.c_str());
    return CLI_OK;
}

int CliExport(const std::vector<std::string>& args) {
    if (args.size() < 2 || args.size() > 3 || (args.size() == 3 && args[2] != "--localized"))
        return CliUsageError("export takes a model and an output file", kExportUsage);
    PrepareCliSession();
    OpenedModel opened;
    if (!OpenModelWithFoldersForCli(args[0], opened)) return CLI_FAILED;
    StderrDialogService dialogs;
    CliCommandScope scope(&dialogs);
    const QString output = QString::fromStdString(args[1]);
    const QString written = args.size() == 3 ? ExportModel(output, true) : SaveTheModel(output);
    if (written.isEmpty()) return CLI_FAILED;
    std::printf("%s\n", written.toUtf8().constData());
    return CLI_OK;
}

}  // namespace

ZV_CLI_COMMAND("crop", "MODEL NAME (POLYGON | --margin)", CliCrop);
ZV_CLI_COMMAND("mark", "MODEL close|above X Y Z [--bias B] [--range R]", CliMark);
ZV_CLI_COMMAND("clean", "MODEL NAME", CliClean);
ZV_CLI_COMMAND("shift", "MODEL DX DY DZ", CliShift);
ZV_CLI_COMMAND("rotate", "MODEL DEG DX DY DZ", CliRotate);
ZV_CLI_COMMAND("export", "MODEL OUT [--localized]", CliExport);
