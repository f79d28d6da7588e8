// report: the detailed report of a model's panels, as the menu "Detailed
// report" makes it, with the files it wrote listed on stdout.
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <unistd.h>

#include "CliCommands.h"
#include "CliSupport.h"
#include "app/model/ModelSession.h"
#include "app/model/AddModels.h"
#include "app/model/ReadModel.h"
#include "app/model/Viewport.h"
#include "app/services/DialogService.h"
#include "app/services/FileHelpers.h"
#include "app/services/OrvoIni.h"
#include "app/services/RunLog.h"
#include "app/services/SunGlobalLog.h"
#include "geo/GeoState.h"
#include "scene/FileNameCase.h"
#include "scene/engine_interface.h"
#include "scene/render/ViewCapture.h"
#include "solar/analysis/ReportRun.h"
#include "solar/analysis/ReportRunState.h"
#include "solar/analysis/ShadowAnalysis.h"
#include "solar/design/PanelDaeImport.h"
#include "solar/design/PanelImport.h"
#include "solar/design/PanelNames.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PanelText.h"

namespace {

constexpr const char* kUsage =
    "zorvex64-cli report MODEL [--center] [--string-inverter] [--loss PCT] [--panels FILE] [--climate FILE]";

struct ReportOptions {
    std::string model;
    bool center = false;
    int optimizerType = 1;
    bool hasLoss = false;
    int loss = 0;
    std::string panelsFile;
    std::string climateFile;
};

int parseOptions(const std::vector<std::string>& args, ReportOptions& o) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const bool hasValue = i + 1 < args.size();
        if (a == "--center") {
            o.center = true;
        } else if (a == "--string-inverter") {
            o.optimizerType = 0;
        } else if (a == "--loss" && hasValue) {
            double loss = 0;
            if (!ParseCliNumber(args[++i], loss) || loss != std::floor(loss) || loss < -100 || loss > 100)
                return CliUsageError("--loss needs a whole percentage from -100 to 100", kUsage);
            o.hasLoss = true;
            o.loss = static_cast<int>(loss);
        } else if (a == "--panels" && hasValue) {
            o.panelsFile = args[++i];
        } else if (a == "--climate" && hasValue) {
            o.climateFile = args[++i];
        } else if (a.rfind("--", 0) == 0 || !o.model.empty()) {
            return CliUsageError("unexpected argument: " + a, kUsage);
        } else {
            o.model = a;
        }
    }
    if (o.model.empty()) return CliUsageError("report takes one model file", kUsage);
    return 0;
}

// Messages on stderr; the energy loss answered from --loss (or left as
// proposed); the finished page is not opened.
class ReportDialogService : public ScriptedDialogService {
public:
    ReportDialogService(bool hasLoss, int loss) : hasLoss_(hasLoss), loss_(loss) {}
    // The progress line, rewritten in place until a message or the end closes it.
    void progress(const QString& text) {
        // Blanks wipe what a longer line before left behind.
        const QByteArray line = text.toUtf8();
        const int wipe = std::max(0, shownLength_ - static_cast<int>(line.size()));
        std::fprintf(stderr, "\r%s%*s", line.constData(), wipe, "");
        shownLength_ = static_cast<int>(line.size());
        progressOpen_ = true;
    }
    void endProgress() {
        if (progressOpen_) std::fputc('\n', stderr);
        progressOpen_ = false;
        shownLength_ = 0;
    }
    void showMessage(const QString& text, const QString&) override {
        endProgress();
        std::fprintf(stderr, "%s\n", text.toUtf8().constData());
    }
    int ask(const QString& text, const QString& title, const QStringList& buttons, int defaultButton) override {
        endProgress();
        std::fprintf(stderr, "%s\n", text.toUtf8().constData());
        return ScriptedDialogService::ask(text, title, buttons, defaultButton);
    }
    bool inputQuery(const QString&, const QString&, QString& value) override {
        if (hasLoss_) value = QString::number(loss_);
        return true;
    }
    bool openDocument(const QString&) override { return true; }

private:
    bool hasLoss_;
    int loss_;
    bool progressOpen_ = false;
    int shownLength_ = 0;
};

void printIfExists(const char* kind, const std::string& path) {
    if (!path.empty() && QFileInfo::exists(QString::fromStdString(path))) std::printf("%s %s\n", kind, path.c_str());
}

void printOutputs(const std::string& html) {
    const std::string csv = MasterCsvName();
    printIfExists("log", sunGlobalLog().SunGlobalLogfileName);
    printIfExists("csv", csv);
    printIfExists("html", html);
    printIfExists("documentation", csv.substr(0, csv.size() - 4) + "_TechnicalDocumentation.html");
    for (const CombinedPanelResults& r : reportRun().g_combinedResults) {
        printIfExists("panel", r.panel.Filename);
        printIfExists("shading", GetShadingCSV(r.panel));
        printIfExists("rays", GetShadingDae(r.panel));
    }
}

int CliReport(const std::vector<std::string>& args) {
    ReportOptions o;
    if (const int bad = parseOptions(args, o)) return bad;
    PrepareCliSession();
    // A picture of the scene needs a display for the offscreen context.
    static int qtArgc = 1;
    static char qtName[] = "zorvex64-cli";
    static char* qtArgv[] = {qtName, nullptr};
    std::unique_ptr<QGuiApplication> gui;
    const char* display = std::getenv("DISPLAY");
    if (display && *display && !QCoreApplication::instance()) gui = std::make_unique<QGuiApplication>(qtArgc, qtArgv);

    // The prompt proposes the settings' loss, as in the viewer; a bad number takes 10.
    bool lossRead = false;
    const int settingsLoss =
        QString::fromStdString(ORVOINI().readString("Viewer3D", "EnergyLoss", "")).trimmed().toInt(&lossRead);
    reportRun().ENERGYLOSSPERCENT = lossRead ? settingsLoss : 10;

    OpenedModel opened;
    if (!OpenModelWithFoldersForCli(o.model, opened)) return CLI_FAILED;
    if (gui) {
        render::attachOffscreenRenderer();
        At3d_WriteFlag(LIBFLAG_USE_TEXTURES, 1);  // the picture as the viewer shows it
    }
    runLog().fp_prt = stderr;
    ReportDialogService dialogs(o.hasLoss, o.loss);
    const CliCommandScope scope(&dialogs);
    reportHooks().statusLine = [&dialogs](const QString& text) { dialogs.progress(text); };

    const QFileInfo model(QString::fromStdString(o.model));
    if (!OpenSolarRunLog(model.absoluteFilePath().toStdString(), static_cast<int>(getpid()))) {
        std::fprintf(stderr, "error: cannot write the run log %s\n", sunGlobalLog().SunGlobalLogfileName.c_str());
        return CLI_FAILED;
    }
    if (o.panelsFile.empty()) {
        for (const QString& file : PanelFilesOfModel()) ReadPanelsOfModelFile(file);
    } else {
        if (!QFileInfo::exists(QString::fromStdString(o.panelsFile))) {
            std::fprintf(stderr, "error: no such file %s\n", o.panelsFile.c_str());
            return CLI_FAILED;
        }
        ReadPanelsOfModelFile(QString::fromStdString(o.panelsFile));
    }
    AddPanelsT();
    // The panels stand in the scene as in the viewer: they shade each other
    // and appear in the scene picture.
    QStringList panelFiles;
    for (int i = 0; i < panelStore().NumPanelsCreated; ++i)
        panelFiles << PanelText(panelStore().panels[static_cast<std::size_t>(i)].Filename);
    if (!o.panelsFile.empty()) panelFiles = {QString::fromStdString(o.panelsFile)};
    AddCompleteModels(panelFiles);
    FullViewBtnClick();  // the viewer's first view, for the scene picture

    ReportSite site;
    site.modelFileName = model.absoluteFilePath().toStdString();
    const std::string customer = FindFileNoCase(model.absolutePath().toStdString() + "/Customer.TXT");
    if (!customer.empty()) site.customer = StringFromFile(QString::fromStdString(customer));
    site.epsg = geoState().EPSG;
    site.modelOpen = opened.fileLoaded != 0;
    site.climateFile = o.climateFile;
    const std::string html = DoReport(site, o.center, o.optimizerType);
    dialogs.endProgress();
    printOutputs(html);
    return html.empty() ? CLI_FAILED : CLI_OK;
}

}  // namespace

ZV_CLI_COMMAND("report", "MODEL [--center] [--string-inverter] [--loss PCT] [--panels FILE] [--climate FILE]",
               CliReport);
