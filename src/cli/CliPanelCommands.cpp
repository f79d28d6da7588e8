// panels-info and panel-write: the panel COLLADA files, for scripts and checks.
#include <QFileInfo>
#include <QRegularExpression>
#include <cmath>
#include <cstdio>
#include <filesystem>

#include "CliCommands.h"
#include "CliSupport.h"
#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"
#include "solar/design/PanelCatalog.h"
#include "solar/design/PanelColladaWriter.h"
#include "solar/design/PanelDaeListing.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelText.h"

namespace {

// The planner's look of every panel it lays out.
constexpr TColor kPanelColour = 0x800000;

// The run log's lines are the CLI's messages while a command runs.
class LogToStderr {
public:
    LogToStderr() { runLog().fp_prt = stderr; }
    ~LogToStderr() { runLog().fp_prt = nullptr; }
};

int CliPanelsInfo(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli panels-info FILE.dae";
    if (args.size() != 1) return CliUsageError("panels-info takes one COLLADA file", usage);
    std::error_code ec;
    if (!std::filesystem::is_regular_file(args[0], ec)) {
        std::fprintf(stderr, "Missing\n%s\n", args[0].c_str());
        return CLI_FAILED;
    }
    LogToStderr log;
    const QString csv = ListPanelsInfo(QString::fromStdString(args[0]));
    if (csv.isEmpty()) {
        std::fprintf(stderr, "error: no panels listed from %s\n", args[0].c_str());
        return CLI_FAILED;
    }
    std::printf("%s\n", csv.toUtf8().constData());
    return CLI_OK;
}

bool parseCorners(const std::string& text, TGIS_Point3D corners[4]) {
    const QStringList points = QString::fromStdString(text).split(QLatin1Char(';'));
    if (points.size() != 4) return false;
    for (int i = 0; i < 4; ++i) {
        const QStringList xyz = points[i].split(QLatin1Char(','));
        if (xyz.size() != 3) return false;
        double v[3];
        for (int k = 0; k < 3; ++k)
            if (!ParseCliNumber(xyz[k].trimmed().toStdString(), v[k])) return false;
        corners[i] = {v[0], v[1], v[2], 0};
    }
    return true;
}

double distance(const TGIS_Point3D& a, const TGIS_Point3D& b) {
    return std::sqrt((b.X - a.X) * (b.X - a.X) + (b.Y - a.Y) * (b.Y - a.Y) + (b.Z - a.Z) * (b.Z - a.Z));
}

// Tilt and compass azimuth of the panel's upward normal, from its corners.
void orientation(PANEL& p) {
    const TGIS_Point3D &ll = p.Corners[0], &ul = p.Corners[1], &lr = p.Corners[3];
    const double ax = lr.X - ll.X, ay = lr.Y - ll.Y, az = lr.Z - ll.Z;
    const double bx = ul.X - ll.X, by = ul.Y - ll.Y, bz = ul.Z - ll.Z;
    double nx = ay * bz - az * by, ny = az * bx - ax * bz, nz = ax * by - ay * bx;
    const double length = std::sqrt(nx * nx + ny * ny + nz * nz);
    if (length < 1e-7) return;
    const double sign = nz < 0 ? -1.0 : 1.0;
    nx *= sign / length;
    ny *= sign / length;
    nz *= sign / length;
    p.DTilt = std::acos(std::min(1.0, nz)) * 180.0 / M_PI;
    p.DAzimuth = std::fmod(std::atan2(nx, ny) * 180.0 / M_PI + 360.0, 360.0);
}

// The catalogue from the installation's data folder; its texture goes beside the output.
bool applyModule(PANEL& p, const std::string& module, const QString& outputFolder) {
    PrepareCliSession();
    if (!InitializePanels()) return false;
    AddPanelSpecsFromCSV(p, QString::fromStdString(module));
    if (PanelText(p.ModuleType).isEmpty()) return false;
    panelStore().ModuleType = PanelText(p.ModuleType);
    PanelCatalog& catalog = panelCatalog();
    catalog.GlobalPanelJPGName = outputFolder + catalog.PanelImageTexture;
    return true;
}

int CliPanelWrite(const std::vector<std::string>& args) {
    constexpr const char* usage =
        "zorvex64-cli panel-write OUT.dae --name N/G --corners x,y,z;x,y,z;x,y,z;x,y,z [--module NAME] "
        "[--thickness MM]";
    std::string output, name, corners, module;
    double thickness = -1;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const bool hasValue = i + 1 < args.size();
        if (a == "--name" && hasValue) {
            name = args[++i];
        } else if (a == "--corners" && hasValue) {
            corners = args[++i];
        } else if (a == "--module" && hasValue) {
            module = args[++i];
        } else if (a == "--thickness" && hasValue) {
            if (!ParseCliNumber(args[++i], thickness) || thickness < 0 || thickness > 1000)
                return CliUsageError("--thickness needs millimetres from 0 to 1000", usage);
        } else if (a.rfind("--", 0) == 0 || !output.empty()) {
            return CliUsageError("unexpected argument: " + a, usage);
        } else {
            output = a;
        }
    }
    if (output.empty()) return CliUsageError("panel-write needs an output file", usage);
    if (!QRegularExpression(QStringLiteral("^\\d{1,4}/\\d{1,4}$")).match(QString::fromStdString(name)).hasMatch())
        return CliUsageError("--name needs a panel name N/G, such as 12/417", usage);
    PANEL p{};
    if (!parseCorners(corners, p.Corners))
        return CliUsageError("--corners needs four points x,y,z separated by ';' (LL;UL;UR;LR)", usage);

    LogToStderr log;
    const QFileInfo out(QString::fromStdString(output));
    if (!module.empty() && !applyModule(p, module, out.absolutePath() + QLatin1Char('/'))) {
        std::fprintf(stderr, "error: module not found in the catalogue: %s\n", module.c_str());
        return CLI_FAILED;
    }
    SetPanelText(p.Name, QString::fromStdString(name));
    SetPanelText(p.Filename, out.absoluteFilePath());
    for (const TGIS_Point3D& c : p.Corners) {
        p.CenterPoint.X += c.X / 4;
        p.CenterPoint.Y += c.Y / 4;
        p.CenterPoint.Z += c.Z / 4;
    }
    const double along = distance(p.Corners[0], p.Corners[3]), up = distance(p.Corners[0], p.Corners[1]);
    p.Landscape = along > up;
    if (module.empty()) {
        p.Length = static_cast<int>(std::lround(std::max(along, up) * 1000));
        p.Width = static_cast<int>(std::lround(std::min(along, up) * 1000));
    }
    if (thickness >= 0) p.Thickness = static_cast<int>(std::lround(thickness));
    orientation(p);
    p.RoofType = p.DTilt < 10 ? 1 : 0;
    p.Opacity = 100;
    p.Color1 = p.Color2 = kPanelColour;
    p.Active = true;
    p.Repeat = 1;
    p.Gapmm = 20;

    PanelStore& store = panelStore();
    store.panels[0] = p;
    store.NumPanelsCreated = 1;
    if (!WritePanelColladaFile(out.absoluteFilePath(), p.Corners, 4, 1, 4, p.Thickness > 0, p.Color1, p.Color2,
                               p.Opacity, 0, stderr))
        return CLI_FAILED;
    std::printf("%s\n", out.absoluteFilePath().toUtf8().constData());
    return CLI_OK;
}

}  // namespace

ZV_CLI_COMMAND("panels-info", "FILE.dae", CliPanelsInfo);
ZV_CLI_COMMAND("panel-write", "OUT.dae --name N/G --corners x,y,z;x,y,z;x,y,z;x,y,z [--module NAME] [--thickness MM]",
               CliPanelWrite);
