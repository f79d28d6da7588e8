// place: a panel placement from three map-frame points, as the viewer makes
// it after the three clicks, written into the model's PANELS/ folder.
#include <QDir>
#include <QFileInfo>
#include <cstdio>

#include "CliCommands.h"
#include "CliSupport.h"
#include "app/model/ModelSession.h"
#include "app/services/DialogService.h"
#include "app/services/RunLog.h"
#include "solar/analysis/EnergyModel.h"
#include "solar/analysis/SunPosition.h"
#include "solar/design/PanelCatalog.h"
#include "solar/design/PanelDaeImport.h"
#include "solar/design/PanelFormLogic.h"
#include "solar/design/PanelImport.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelText.h"
#include "solar/design/PlacementDae.h"
#include "solar/design/RowSpacing.h"

namespace {

// The command list prints the name before the arguments; the usage line of an error names the program too.
#define ZV_PLACE_ARGUMENTS                                                                    \
    "MODEL X1 Y1 Z1 X2 Y2 Z2 X3 Y3 Z3 --module NAME [--tilt DEG] [--landscape] "              \
    "[--pairing single|rows|double] [--roof tile|flat] [--lift M] [--rows-gap M] [--fix skew|tilt|none]"
constexpr const char* kUsage = "zorvex64-cli place " ZV_PLACE_ARGUMENTS;

struct PlaceOptions {
    std::string model;
    TGIS_Point3D points[3];
    std::string module;
    bool hasTilt = false;
    double tilt = 0;
    bool landscape = false;
    int pairing = 0;
    int roofType = -1;  // -1: as the roof's tilt suggests
    bool hasLift = false;
    double lift = 0;
    double rowsGap = 0;
    int fixButton = 0;  // 0 cancels a sloping baseline on tiles
};

// Messages on stderr; the baseline question answered from --fix.
class PlaceDialogService : public ScriptedDialogService {
public:
    explicit PlaceDialogService(int fixButton) : fixButton_(fixButton) {}
    void showMessage(const QString& text, const QString&) override {
        std::fprintf(stderr, "%s\n", text.toUtf8().constData());
    }
    int ask(const QString& text, const QString& title, const QStringList&, int) override {
        std::fprintf(stderr, "%s %s\n", text.toUtf8().constData(), title.toUtf8().constData());
        return fixButton_;
    }

private:
    int fixButton_;
};

int choice(const std::string& word, std::initializer_list<const char*> names) {
    int i = 0;
    for (const char* n : names) {
        if (word == n) return i;
        ++i;
    }
    return -1;
}

// 0 on success, else the exit code of a usage error.
int parseOptions(const std::vector<std::string>& args, PlaceOptions& o) {
    std::vector<std::string> positional;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const bool hasValue = i + 1 < args.size();
        if (a == "--module" && hasValue) {
            o.module = args[++i];
        } else if (a == "--tilt" && hasValue) {
            if (!ParseCliNumber(args[++i], o.tilt) || o.tilt < 0 || o.tilt > 90)
                return CliUsageError("--tilt needs degrees from 0 to 90", kUsage);
            o.hasTilt = true;
        } else if (a == "--landscape") {
            o.landscape = true;
        } else if (a == "--pairing" && hasValue) {
            o.pairing = choice(args[++i], {"single", "rows", "double"});
            if (o.pairing < 0) return CliUsageError("--pairing is single, rows or double", kUsage);
        } else if (a == "--roof" && hasValue) {
            o.roofType = choice(args[++i], {"tile", "flat"});
            if (o.roofType < 0) return CliUsageError("--roof is tile or flat", kUsage);
        } else if (a == "--lift" && hasValue) {
            if (!ParseCliNumber(args[++i], o.lift) || o.lift < 0 || o.lift > 10)
                return CliUsageError("--lift needs metres from 0 to 10", kUsage);
            o.hasLift = true;
        } else if (a == "--rows-gap" && hasValue) {
            if (!ParseCliNumber(args[++i], o.rowsGap) || o.rowsGap < 0 || o.rowsGap > 100)
                return CliUsageError("--rows-gap needs metres from 0 to 100", kUsage);
        } else if (a == "--fix" && hasValue) {
            const int fix = choice(args[++i], {"skew", "tilt", "none"});
            if (fix < 0) return CliUsageError("--fix is skew, tilt or none", kUsage);
            o.fixButton = fix + 1;
        } else if (a.rfind("--", 0) == 0) {
            return CliUsageError("unexpected argument: " + a, kUsage);
        } else {
            positional.push_back(a);
        }
    }
    if (positional.size() != 10) return CliUsageError("place takes a model and nine coordinates", kUsage);
    o.model = positional[0];
    for (int k = 0; k < 9; ++k) {
        double v = 0;
        if (!ParseCliNumber(positional[1 + k], v)) return CliUsageError("not a number: " + positional[1 + k], kUsage);
        double* xyz[3] = {&o.points[k / 3].X, &o.points[k / 3].Y, &o.points[k / 3].Z};
        *xyz[k % 3] = v;
    }
    if (o.module.empty()) return CliUsageError("place needs --module NAME", kUsage);
    return 0;
}

// The form as the operator would fill it, then its OK.
bool fillPanelForm(const PlaceOptions& o) {
    PanelFormState& form = panelFormState();
    if (o.hasTilt) form.TiltEdit = o.tilt;
    if (o.roofType >= 0) form.RooftypeRG = o.roofType;
    if (o.hasLift) form.LiftEdit = o.lift;
    form.LandscapeCB = o.landscape;
    form.RowsPairingRG = o.pairing;
    form.RowsGap = o.rowsGap;
    panelform::OKClick();
    return panelform::FormCloseQuery();
}

void printPanel(const PANEL& p) {
    std::printf("%s %s %.2f %.2f", p.Name, p.Filename, p.DTilt, p.DAzimuth);
    for (int i = 0; i < 4; ++i)
        std::printf("%c%.3f,%.3f,%.3f", i == 0 ? ' ' : ';', p.Corners[i].X, p.Corners[i].Y, p.Corners[i].Z);
    std::printf("\n");
}

int CliPlace(const std::vector<std::string>& args) {
    PlaceOptions o;
    if (const int bad = parseOptions(args, o)) return bad;
    PrepareCliSession();
    OpenedModel opened;
    if (!OpenModelWithFoldersForCli(o.model, opened)) return CLI_FAILED;
    runLog().fp_prt = stderr;
    PlaceDialogService dialogs(o.fixButton);
    const CliCommandScope scope(&dialogs);

    // Panels already in the folder keep their numbers; the new ones follow them.
    for (const QString& file : PanelFilesOfModel()) ReadPanelsOfModelFile(file);
    AddPanelsT();

    PANEL probe{};
    if (!InitializePanels() || (AddPanelSpecsFromCSV(probe, QString::fromStdString(o.module)),
                                PanelText(probe.ModuleType).isEmpty())) {
        std::fprintf(stderr, "error: module not found in the catalogue: %s\n", o.module.c_str());
        return CLI_FAILED;
    }
    panelStore().ModuleType = PanelText(probe.ModuleType);
    panelCatalog().GlobalPanelJPGName = panelStore().PANELSFOLDER + panelCatalog().PanelImageTexture;
    rowSpacingSunModel() = RowSpacingSunModel{DoSunPosition, IncidentAngle, IAMFactor};
    placementHooks().openPanelForm = [&o] { return fillPanelForm(o); };

    const int first = panelStore().NumPanelsCreated;
    QStringList files;
    if (!CreatePanelsFromPoints(o.points, 3, files) || files.isEmpty()) {
        std::fprintf(stderr, "error: no panels placed\n");
        return CLI_FAILED;
    }
    for (int i = first; i < panelStore().NumPanelsCreated; ++i) printPanel(panelStore().panels[i]);
    return CLI_OK;
}

}  // namespace

ZV_CLI_COMMAND("place", ZV_PLACE_ARGUMENTS, CliPlace);
