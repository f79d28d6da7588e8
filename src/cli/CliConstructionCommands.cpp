// construction and svg: the construction tables and frame drawings of a
// model's panels, and any drawing CSV as an SVG page.
#include <QDir>
#include <QFileInfo>
#include <cstdio>
#include <filesystem>

#include "CliCommands.h"
#include "CliSupport.h"
#include "app/model/ModelSession.h"
#include "app/services/RunLog.h"
#include "solar/design/ConstructionChain.h"
#include "solar/design/Csv2Svg.h"
#include "solar/design/PanelDaeImport.h"
#include "solar/design/PanelImport.h"
#include "solar/design/PanelStore.h"

namespace {

// The run log's lines are the CLI's messages while a command runs.
class LogToStderr {
public:
    LogToStderr() { runLog().fp_prt = stderr; }
    ~LogToStderr() { runLog().fp_prt = nullptr; }
};

void printPaths(const char* kind, const QStringList& paths) {
    for (const QString& p : paths) std::printf("%s %s\n", kind, p.toUtf8().constData());
}

int CliConstruction(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli construction MODEL";
    if (args.size() != 1) return CliUsageError("construction takes one model file", usage);
    OpenedModel opened;
    if (!OpenModelWithFoldersForCli(args[0], opened)) return CLI_FAILED;
    LogToStderr log;
    const QFileInfo model(QString::fromStdString(args[0]));
    for (const QString& file : PanelFilesOfModel()) ReadPanelsOfModelFile(file);
    AddPanelsT();
    if (panelStore().NumPanelsCreated == 0) {
        std::fprintf(stderr, "error: no panels in %s\n", panelStore().PANELSFOLDER.toUtf8().constData());
        return CLI_FAILED;
    }
    const ConstructionChainResult result = RunConstructionChain(model.absoluteFilePath(), modelSession().Customer);
    if (result.groupCsvs.isEmpty()) {
        std::fprintf(stderr, "error: no construction group could be written\n");
        return CLI_FAILED;
    }
    printPaths("group", result.groupCsvs);
    printPaths("frame", result.frameCsvs);
    printPaths("svg", result.svgs);
    return CLI_OK;
}

int CliSvg(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli svg FILE.csv [--header TEXT] [--footer TEXT]";
    std::string csv, header, footer;
    for (size_t k = 0; k < args.size(); ++k) {
        if ((args[k] == "--header" || args[k] == "--footer") && k + 1 < args.size()) {
            (args[k] == "--header" ? header : footer) = args[k + 1];
            ++k;
        } else if (args[k].rfind("--", 0) == 0 || !csv.empty()) {
            return CliUsageError("unexpected argument: " + args[k], usage);
        } else {
            csv = args[k];
        }
    }
    if (csv.empty()) return CliUsageError("svg takes one CSV file", usage);
    std::error_code ec;
    if (!std::filesystem::is_regular_file(csv, ec)) {
        std::fprintf(stderr, "error: no such file %s\n", csv.c_str());
        return CLI_FAILED;
    }
    LogToStderr log;
    const QString svg =
        CSV2SVG(QString::fromStdString(csv), QString::fromStdString(header), QString::fromStdString(footer));
    if (svg.isEmpty()) {
        std::fprintf(stderr, "error: nothing to draw in %s\n", csv.c_str());
        return CLI_FAILED;
    }
    std::printf("%s\n", svg.toUtf8().constData());
    return CLI_OK;
}

}  // namespace

ZV_CLI_COMMAND("construction", "MODEL", CliConstruction);
ZV_CLI_COMMAND("svg", "FILE.csv [--header TEXT] [--footer TEXT]", CliSvg);
