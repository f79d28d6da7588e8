// inf, discover and unanalyzed: the model catalogue at a command line. The
// folder comes as an argument where the menus ask for it; the rest is the
// menus' own logic.
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "CliCommands.h"
#include "CliSupport.h"
#include "app/model/ModelComment.h"
#include "app/model/ModelSession.h"
#include "app/model/Viewport.h"
#include "catalog/CatalogHooks.h"
#include "catalog/CatalogState.h"
#include "catalog/ModelDiscovery.h"
#include "catalog/ModelInf.h"
#include "scene/engine_interface.h"
#include "scene/render/ViewCapture.h"

namespace {

constexpr const char* kInfUsage = "zorvex64-cli inf MODEL";
constexpr const char* kDiscoverUsage = "zorvex64-cli discover FOLDER";
constexpr const char* kUnanalyzedUsage = "zorvex64-cli unanalyzed FOLDER";

// The folder question of the menus, answered by the argument.
void answerFolderWith(const QString& folder) {
    catalogHooks().chooseFolder = [folder](const QString&, const QString&, QString& chosen) {
        chosen = folder;
        return true;
    };
}

bool folderArgument(const std::vector<std::string>& args, const char* usage, QString& folder, int& error) {
    if (args.size() != 1) {
        error = CliUsageError("one folder expected", usage);
        return false;
    }
    const QFileInfo info(QString::fromStdString(args[0]));
    if (!info.isDir()) {
        std::fprintf(stderr, "error: no such folder %s\n", args[0].c_str());
        error = CLI_FAILED;
        return false;
    }
    folder = info.absoluteFilePath();
    return true;
}

int CliInf(const std::vector<std::string>& args) {
    if (args.size() != 1) return CliUsageError("inf takes a model", kInfUsage);
    PrepareCliSession();
    // The thumbnail is the engine's picture where a display gives a GL
    // context, else a picture from above drawn without one.
    static int qtArgc = 1;
    static char qtName[] = "zorvex64-cli";
    static char* qtArgv[] = {qtName, nullptr};
    const char* display = std::getenv("DISPLAY");
    const bool haveDisplay = display && *display;
    if (!haveDisplay && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    std::unique_ptr<QGuiApplication> gui;
    if (!QCoreApplication::instance()) gui = std::make_unique<QGuiApplication>(qtArgc, qtArgv);

    OpenedModel opened;
    if (!OpenModelWithFoldersForCli(args[0], opened)) return CLI_FAILED;
    if (haveDisplay) {
        render::attachOffscreenRenderer();
        At3d_WriteFlag(LIBFLAG_USE_TEXTURES, 1);
        FullViewBtnClick();  // the first view of the window's open
    }
    const QString model = QString::fromStdString(modelSession().GlobalModelFileName);
    modelSession().ModelComment = ReadModelComment(model.toStdString());
    const CliCommandScope scope;
    if (!WriteModelInf(model)) {
        std::fprintf(stderr, "error: cannot write %s\n", ModelInfFile(model).toUtf8().constData());
        return CLI_FAILED;
    }
    std::printf("%s\n%s\n", ModelInfFile(model).toUtf8().constData(), ModelInfImage(model).toUtf8().constData());
    return CLI_OK;
}

int CliDiscover(const std::vector<std::string>& args) {
    QString folder;
    int error = 0;
    if (!folderArgument(args, kDiscoverUsage, folder, error)) return error;
    PrepareCliSession();
    answerFolderWith(folder);
    const ExploreOutcome outcome = DoExploreModels();
    if (outcome == ExploreOutcome::NoFiles) return CLI_FAILED;
    const CatalogState& state = catalogState();
    const QString layer = QFileInfo(state.FNCSV).path() + "/" + COVERAGE_LAYER_NAME + ".shp";
    std::printf("%s\n%s\nmodels %d\n", state.FNCSV.toUtf8().constData(), layer.toUtf8().constData(), state.KamaModels);
    return outcome == ExploreOutcome::Shown ? CLI_OK : CLI_FAILED;
}

int CliUnanalyzed(const std::vector<std::string>& args) {
    QString folder;
    int error = 0;
    if (!folderArgument(args, kUnanalyzedUsage, folder, error)) return error;
    PrepareCliSession();
    answerFolderWith(folder);
    const QString list = Findunanalyzedmodels1Click();
    const CatalogState& state = catalogState();
    if (!list.isEmpty()) std::printf("%s\n", list.toUtf8().constData());
    std::printf("analyzed %d\nunanalyzed %d\n", state.KamaAnalyzed, state.KamaUnanalyzed);
    return CLI_OK;
}

}  // namespace

ZV_CLI_COMMAND("inf", "MODEL", CliInf);
ZV_CLI_COMMAND("discover", "FOLDER", CliDiscover);
ZV_CLI_COMMAND("unanalyzed", "FOLDER", CliUnanalyzed);
