// measure, digitise, billboard and measurements: measuring and annotation on
// a model as the viewer's tools do it, and the measurement files read back.
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSet>
#include <cstdio>
#include <memory>

#include "CliCommands.h"
#include "CliSupport.h"
#include "app/dispatch/DigitiseMenu.h"
#include "app/model/ModelSession.h"
#include "app/services/DialogService.h"
#include "app/services/SessionPaths.h"
#include "app/services/ToolkitColor.h"
#include "app/session/DispatchState.h"
#include "app/session/RubberbandState.h"
#include "app/session/SessionStart.h"
#include "app/session/StartupState.h"
#include "geo/Frames.h"
#include "measure/BillboardState.h"
#include "measure/Billboards.h"
#include "measure/Digitising.h"
#include "measure/IconCatalog.h"
#include "measure/MeasureDisplay.h"
#include "measure/MeasureState.h"
#include "measure/MeasurementFiles.h"
#include "measure/Measuring.h"
#include "scene/engine_interface.h"
#include "solar/design/RoofCapture.h"
#include "solar/design/PanelStore.h"

namespace {

constexpr const char* kMeasureUsage = "zorvex64-cli measure MODEL X1 Y1 Z1 X2 Y2 Z2";
constexpr const char* kDigitiseUsage =
    "zorvex64-cli digitise MODEL line|polygon|roof|area|block|circle X1 Y1 X2 Y2 ... [--out FILE]";
constexpr const char* kRoofUsage = "zorvex64-cli roof MODEL X1 Y1 X2 Y2 X3 Y3 X4 Y4 ... [--flat] [--slope DEG]";
constexpr const char* kBillboardUsage =
    "zorvex64-cli billboard MODEL X Y Z TEXT --out FILE.BLB [--icon NAME] [--static] [--colour 0xBBGGRR]";
constexpr const char* kMeasurementsUsage = "zorvex64-cli measurements FILE";

int CliMeasure(const std::vector<std::string>& args) {
    if (args.size() != 7) return CliUsageError("measure takes a model and two map points", kMeasureUsage);
    double p[6];
    int error = 0;
    if (!ParseCliNumbers(args, 1, 6, p, kMeasureUsage, error)) return error;
    PrepareCliSession();
    OpenedModel opened;
    if (!OpenModelForCli(args[0], opened)) return CLI_FAILED;

    // The rubberband's ends as two clicks would leave them.
    RubberbandState& r = rubberbandState();
    for (int i = 0; i < 3; ++i) {
        r.xyzArray1[i] = p[i] - OC(i);
        r.xyzArray2[i] = p[3 + i] - OC(i);
    }
    r.hitFlag1 = r.hitFlag2 = AT3D_HIT;
    r.hitFlagObstruction = 0;
    Calculate_Distances();
    const MeasureState& m = measureState();
    std::printf("dist2d %.2f\ndist3d %.2f\ndz %.2f\nazimuth %.2f\n", m.Dist2D, m.Dist3D, m.DDZ, m.AzimuthToTarget);
    double slope = 0;
    if (SlopeDegrees(m.DDZ, m.Dist2D, slope))
        std::printf("slope %.2f\n", slope);
    else
        std::printf("slope none\n");

    // The line of sight takes points without the Offset.
    const double* offset = frameState().Offset;
    const double v1[3] = {p[0] - offset[0], p[1] - offset[1], p[2] - offset[2]};
    const double v2[3] = {p[3] - offset[0], p[4] - offset[1], p[5] - offset[2]};
    double hit[3] = {0, 0, 0};
    const double distance = GetObstruction(v1, v2, hit, 0);
    if (distance > 0)
        std::printf("obstruction %.2f %.2f %.2f %.2f\n", distance, hit[0] + offset[0], hit[1] + offset[1],
                    hit[2] + offset[2]);
    else
        std::printf("obstruction none\n");
    return CLI_OK;
}

// The digitising's questions at a command line: the save dialog takes --out
// (or the name it proposes), every other question is cancelled.
class DigitiseDialogService : public ScriptedDialogService {
public:
    explicit DigitiseDialogService(QString out) : out_(std::move(out)) {}
    void showMessage(const QString& text, const QString&) override {
        std::fprintf(stderr, "%s\n", text.toUtf8().constData());
    }
    bool chooseFile(const FileDialogRequest& request, QString& chosen, int& chosenFilter) override {
        chosen = out_.isEmpty() ? QDir(request.folder).filePath(request.proposedName) : out_;
        chosenFilter = request.filterIndex;
        return true;
    }

private:
    QString out_;
};

struct DigitiseKind {
    const char* name;
    void (*arm)();
};

constexpr DigitiseKind kKinds[] = {{"line", Line1Click},  {"polygon", PolygonMnuClick}, {"roof", Roofs1Click},
                                   {"area", AreaMnuClick}, {"block", BlockMenuClick},    {"circle", PolygonMnuClick}};

// The menu item, then a click on the mesh under each map point, the last
// one a right click, as the operator digitises. False (and why) when a point
// has no mesh under it.
bool clickOutline(void (*arm)(), const std::vector<double>& xy, DigitiseResult& result) {
    DigitizeBtnClick();
    arm();
    for (std::size_t i = 0; i < xy.size(); i += 2) {
        const double z = GetZFromXY(xy[i], xy[i + 1]);
        if (z < -9990) {
            std::fprintf(stderr, "error: no mesh under %.3f %.3f\n", xy[i], xy[i + 1]);
            return false;
        }
        const bool last = i + 2 == xy.size();
        result = DigitiseClick(last ? 2 : 1, xy[i] - OC(0), xy[i + 1] - OC(1), z - OC(2));
    }
    return true;
}

QSet<QString> filesIn(const QString& folder) {
    const QStringList names = QDir(folder).entryList(QDir::Files);
    return QSet<QString>(names.begin(), names.end());
}

int CliDigitise(const std::vector<std::string>& args) {
    std::vector<std::string> words;
    QString out;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--out") {
            if (i + 1 >= args.size()) return CliUsageError("--out needs a file", kDigitiseUsage);
            out = QFileInfo(QString::fromStdString(args[++i])).absoluteFilePath();
        } else {
            words.push_back(args[i]);
        }
    }
    if (words.size() < 2) return CliUsageError("digitise takes a model, a kind and points", kDigitiseUsage);
    const DigitiseKind* kind = nullptr;
    for (const DigitiseKind& k : kKinds)
        if (words[1] == k.name) kind = &k;
    if (!kind) return CliUsageError("unknown kind: " + words[1], kDigitiseUsage);
    const std::size_t numbers = words.size() - 2;
    if (numbers < 4 || numbers % 2 != 0) return CliUsageError("points come as X Y pairs, two at least", kDigitiseUsage);
    const bool circle = words[1] == "circle";
    if (circle && numbers != 4) return CliUsageError("a circle is its centre and one point of its rim", kDigitiseUsage);
    std::vector<double> xy(numbers);
    int error = 0;
    if (!ParseCliNumbers(words, 2, numbers, xy.data(), kDigitiseUsage, error)) return error;

    PrepareCliSession();
    OpenedModel opened;
    if (!OpenModelWithFoldersForCli(words[0], opened)) return CLI_FAILED;
    DigitiseDialogService dialogs(out);
    installDialogService(&dialogs);
    const QSet<QString> panelsBefore = filesIn(panelStore().PANELSFOLDER);

    DigitiseResult result;
    if (!clickOutline(kind->arm, xy, result)) return CLI_FAILED;
    switch (result.outcome) {
    case DigitiseOutcome::AreaMeasured: std::printf("area %.1f\n", result.area); return CLI_OK;
    case DigitiseOutcome::Saved: {
        std::printf("%s\n", result.file.toUtf8().constData());
        const QFileInfo file(result.file);
        const QString shape = dispatchState().DIGITIZELINEORPOLYGON == 1
                                  ? result.file + ".SHP"
                                  : file.dir().filePath(file.completeBaseName() + ".SHP");
        if (QFileInfo::exists(shape)) std::printf("%s\n", shape.toUtf8().constData());
        const QSet<QString> made = filesIn(panelStore().PANELSFOLDER) - panelsBefore;
        for (const QString& name : made) std::printf("%s%s\n", panelStore().PANELSFOLDER.toUtf8().constData(),
                                                     name.toUtf8().constData());
        return CLI_OK;
    }
    case DigitiseOutcome::TooFewPoints: std::fprintf(stderr, "At least 3 point needed\n"); return CLI_FAILED;
    default: std::fprintf(stderr, "error: the outline was not saved\n"); return CLI_FAILED;
    }
}

// The roof's two questions at a command line: an uneven outline is forced
// flat with --flat (else the capture ends), a tiled roof's slope comes from
// --slope (else the fitted plane stands).
class RoofDialogService : public DigitiseDialogService {
public:
    RoofDialogService(bool flat, QString slope) : DigitiseDialogService({}), flat_(flat), slope_(std::move(slope)) {}
    int ask(const QString& text, const QString& title, const QStringList&, int) override {
        std::fprintf(stderr, "%s %s\n", title.toUtf8().constData(), text.toUtf8().constData());
        return flat_ ? 1 : 3;  // Yes, or Cancel
    }
    bool inputQuery(const QString& caption, const QString& prompt, QString& value) override {
        std::fprintf(stderr, "%s: %s\n", caption.toUtf8().constData(), prompt.toUtf8().constData());
        if (slope_.isEmpty()) return false;
        value = slope_;
        return true;
    }

private:
    bool flat_;
    QString slope_;
};

int CliRoof(const std::vector<std::string>& args) {
    std::vector<std::string> words;
    bool flat = false;
    QString slope;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--flat") {
            flat = true;
        } else if (args[i] == "--slope" && i + 1 < args.size()) {
            double degrees = 0;
            if (!ParseCliNumber(args[++i], degrees) || degrees <= 0 || degrees >= 90)
                return CliUsageError("--slope needs degrees between 0 and 90", kRoofUsage);
            slope = QString::fromStdString(args[i]);
        } else if (args[i].rfind("--", 0) == 0) {
            return CliUsageError("unknown or incomplete option: " + args[i], kRoofUsage);
        } else {
            words.push_back(args[i]);
        }
    }
    const std::size_t numbers = words.empty() ? 0 : words.size() - 1;
    if (numbers < 8 || numbers % 2 != 0)
        return CliUsageError("a roof takes a model and four X Y points at least", kRoofUsage);
    if (numbers > 2 * MAX_PLANE_POINTS)
        return CliUsageError("a roof takes at most " + std::to_string(MAX_PLANE_POINTS) + " points", kRoofUsage);
    std::vector<double> xy(numbers);
    int error = 0;
    if (!ParseCliNumbers(words, 1, numbers, xy.data(), kRoofUsage, error)) return error;

    PrepareCliSession();
    OpenedModel opened;
    if (!OpenModelWithFoldersForCli(words[0], opened)) return CLI_FAILED;
    RoofDialogService dialogs(flat, slope);
    installDialogService(&dialogs);
    resetLastRoofCapture();
    DigitiseResult result;
    if (!clickOutline(Roofs1Click, xy, result)) return CLI_FAILED;
    const RoofPlaneCapture& capture = LastRoofCapture();
    if (capture.fileName.isEmpty() || !QFileInfo::exists(capture.fileName)) {
        std::fprintf(stderr, "error: no roof plane was made\n");
        return CLI_FAILED;
    }
    const RoofPlaneFigures figures = RoofCaptureFigures(capture);
    std::printf("normal %.4f %.4f %.4f\ntilt %.2f\nazimuth %.2f\narea %.2f\nplan-area %.2f\ncoplanarity %.3f\n",
                figures.normal[0], figures.normal[1], figures.normal[2], figures.tilt, figures.azimuth, figures.area,
                figures.planArea, capture.plane.coplanarity);
    if (result.outcome == DigitiseOutcome::Saved) {
        const QFileInfo file(result.file);
        const QString shape = file.dir().filePath(file.completeBaseName() + ".SHP");
        std::printf("outline %s\n", result.file.toUtf8().constData());
        if (QFileInfo::exists(shape)) std::printf("shape %s\n", shape.toUtf8().constData());
    }
    std::printf("roof %s\n", capture.fileName.toUtf8().constData());
    return CLI_OK;
}

// Fonts need a GUI application; without a display it draws offscreen.
std::unique_ptr<QGuiApplication> guiForPictures() {
    if (QCoreApplication::instance()) return nullptr;
    if (!qEnvironmentVariableIsSet("DISPLAY") && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "zorvex64-cli";
    static char* argv[] = {name, nullptr};
    return std::make_unique<QGuiApplication>(argc, argv);
}

int CliBillboard(const std::vector<std::string>& args) {
    std::vector<std::string> words;
    QString out, icon;
    bool isStatic = false;
    int colour = 0x0000FF;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const bool hasValue = i + 1 < args.size();
        if (args[i] == "--out" && hasValue) {
            out = QString::fromStdString(args[++i]);
        } else if (args[i] == "--icon" && hasValue) {
            icon = QString::fromStdString(args[++i]).toUpper();
        } else if (args[i] == "--static") {
            isStatic = true;
        } else if (args[i] == "--colour" && hasValue) {
            bool ok = false;
            colour = QString::fromStdString(args[++i]).toInt(&ok, 0);
            if (!ok || colour < 0 || colour > 0xFFFFFF) return CliUsageError("not a colour: " + args[i], kBillboardUsage);
        } else if (args[i].rfind("--", 0) == 0) {
            return CliUsageError("unknown or incomplete option: " + args[i], kBillboardUsage);
        } else {
            words.push_back(args[i]);
        }
    }
    if (words.size() != 5) return CliUsageError("billboard takes a model, a map point and a text", kBillboardUsage);
    if (out.isEmpty()) return CliUsageError("--out names the container", kBillboardUsage);
    double p[3];
    int error = 0;
    if (!ParseCliNumbers(words, 1, 3, p, kBillboardUsage, error)) return error;

    const auto gui = guiForPictures();
    PrepareCliSession();
    OpenedModel opened;
    if (!OpenModelForCli(words[0], opened)) return CLI_FAILED;
    BillboardState& b = billboardState();
    const QString text = QString::fromStdString(words[4]);
    b.ColorPanel = colour;
    b.IsBillboardStatic = isStatic;
    b.IsBillboardIcon = !icon.isEmpty();
    if (b.IsBillboardIcon) {
        LoadCustomIcons();
        const int index = SetSatamim().indexOf(icon);
        if (index < 0 || !IM01Click(index)) {
            std::fprintf(stderr, "error: no icon %s in %sCustomIcons/\n", icon.toUtf8().constData(),
                         sessionPaths().CTQ_Path.c_str());
            return CLI_FAILED;
        }
        b.ICONNAME = b.icons.name;
        b.icons.text = text;
    }
    float rgb[3];
    ToolkitColorToRgb(colour, rgb);
    const double position[3] = {p[0] - OC(0), p[1] - OC(1), p[2] - OC(2)};
    double pivot[3];
    BillboardPivot(position, b.IsBillboardIcon ? 0.25 : b.dialog.pivotHeight, pivot);
    if (!MakeBillboard(position, pivot, text, rgb, false, b.IsBillboardIcon)) {
        std::fprintf(stderr, "error: no billboard could be made\n");
        return CLI_FAILED;
    }
    const int count = At3d_Measure_Billboard_Get_Count();
    if (count == 0) {
        std::fprintf(stderr, "error: %s makes a sphere marker, not a billboard\n", icon.toUtf8().constData());
        return CLI_FAILED;
    }
    if (ExportBillboardData(out) == 0) return CLI_FAILED;
    int width = 0, height = 0, alpha = 0;
    char id[AT3D_NAME_SIZE] = {};
    At3d_Measure_Billboard_Get_Image_Size(count - 1, id, &width, &height, &alpha);
    std::printf("width %d height %d\n", width, height);
    return CLI_OK;
}

int CliMeasurements(const std::vector<std::string>& args) {
    if (args.size() != 1) return CliUsageError("measurements takes one file", kMeasurementsUsage);
    PrepareCliSession();
    const QString path = QString::fromStdString(args[0]);
    if (!QFileInfo(path).isFile()) {
        std::fprintf(stderr, "Missing\n%s\n", args[0].c_str());
        return CLI_FAILED;
    }
    if (QFileInfo(path).suffix().compare("blb", Qt::CaseInsensitive) == 0) {
        std::vector<BILLBOARD_DATA> records;
        if (!ReadBillboardFile(path, records)) return CLI_FAILED;
        for (const BILLBOARD_DATA& r : records)
            std::printf("%s,%d,%d,%d,%d,%d,%.3f,%.3f,%.3f,%.3f,%.3f,%.3f,%.3f\n", r.id, r.imageWidth, r.imageHeight,
                        r.alphaFlag, r.staticFlag, r.visibleFlag, r.position[0], r.position[1], r.position[2],
                        r.pivot[0], r.pivot[1], r.pivot[2], r.height);
        return CLI_OK;
    }
    std::vector<MEASURE_DATA> records;
    if (!ReadMeasureFile(path, records)) return CLI_FAILED;
    for (const MEASURE_DATA& r : records)
        std::printf("%s,%d,%.3f,%.3f,%.3f,%.3f,%.3f,%.3f,%.3f,%.3f,%.3f,%.3f,%.3f\n", r.id, r.visible_Flag,
                    r.lineWidth, r.rgb_Line_Array[0], r.rgb_Line_Array[1], r.rgb_Line_Array[2], r.vertex1[0],
                    r.vertex1[1], r.vertex1[2], r.vertex2[0], r.vertex2[1], r.vertex2[2], r.distance);
    return CLI_OK;
}

}  // namespace

ZV_CLI_COMMAND("measure", "MODEL X1 Y1 Z1 X2 Y2 Z2", CliMeasure);
ZV_CLI_COMMAND("digitise", "MODEL line|polygon|roof|area|block|circle X1 Y1 X2 Y2 ... [--out FILE]", CliDigitise);
ZV_CLI_COMMAND("roof", "MODEL X1 Y1 X2 Y2 X3 Y3 X4 Y4 ... [--flat] [--slope DEG]", CliRoof);
ZV_CLI_COMMAND("billboard", "MODEL X Y Z TEXT --out FILE.BLB [--icon NAME] [--static] [--colour 0xBBGGRR]",
               CliBillboard);
ZV_CLI_COMMAND("measurements", "FILE", CliMeasurements);
