#include "CliSupport.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <chrono>
#include <filesystem>
#include <memory>

#include "CliCommands.h"
#include "app/model/ModelSession.h"
#include "app/services/DialogService.h"
#include "app/services/OrvoIni.h"
#include "app/services/RunLog.h"
#include "app/services/SessionPaths.h"
#include "app/session/StartupState.h"
#include "app/session/UserFolders.h"
#include "measure/PanelLabels.h"
#include "scene/engine_interface.h"
#include "solar/analysis/ReportRunState.h"
#include "solar/design/PanelStore.h"
#include "solar/design/PlacementDae.h"
#include "modeltools/ModelToolProgress.h"

namespace {

void logToStderr(const char* line) { std::fprintf(stderr, "%s\n", line); }

}  // namespace

void StderrDialogService::showMessage(const QString& text, const QString&) {
    std::fprintf(stderr, "%s\n", text.toUtf8().constData());
}

int StderrDialogService::ask(const QString& text, const QString& title, const QStringList& buttons, int defaultButton) {
    std::fprintf(stderr, "%s\n", text.toUtf8().constData());
    return ScriptedDialogService::ask(text, title, buttons, defaultButton);
}

void PrepareCliSession() {
    static bool prepared = false;
    if (prepared) return;
    prepared = true;
    std::error_code ec;
    const std::string program = std::filesystem::read_symlink("/proc/self/exe", ec).string();
    DeriveUserFoldersOfProcess(program);
    SetInstallationPaths(program);
    std::filesystem::create_directories(sessionPaths().ORVO_T, ec);
    ORVOINI().load(startupState().ORVOINIFILENAME);
    runLog().fp_prt = stderr;
    static StderrDialogService messages;
    installDialogService(&messages);
    InstallPanelLabels();
}

CliCommandScope::CliCommandScope(DialogService* dialogs) {
    if (dialogs) installDialogService(dialogs);
}

CliCommandScope::~CliCommandScope() {
    installDialogService(nullptr);
    resetPlacementHooks();
    resetReportHooks();
}

bool ParseCliNumber(const std::string& word, double& value) {
    const char* begin = word.data();
    const char* end = begin + word.size();
    if (begin != end && *begin == '+') ++begin;
    auto [next, ec] = std::from_chars(begin, end, value);
    return ec == std::errc() && next == end && std::isfinite(value);
}

int CliUsageError(const std::string& message, const char* usage) {
    std::fprintf(stderr, "error: %s\nusage: %s\n", message.c_str(), usage);
    return CLI_BAD_ARGUMENTS;
}

bool OpenModelForCli(const std::string& path, OpenedModel& opened) {
    At3d_Set_Log_Function(logToStderr);
    At3d_Start();
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec)) {
        std::fprintf(stderr, "Missing\n%s\n", path.c_str());
        return false;
    }
    if (ModelTypeOfExtension(path) < 0) {
        std::fprintf(stderr, "error: not a model file: %s\n", path.c_str());
        return false;
    }
    const bool read = OpenModelHeadless(path, opened);
    if (!opened.offsetProblem.empty()) std::fprintf(stderr, "%s\n", opened.offsetProblem.c_str());
    if (!read) {
        std::fprintf(stderr, "error: the model could not be read: %s\n", path.c_str());
        return false;
    }
    return true;
}

bool OpenModelWithFoldersForCli(const std::string& path, OpenedModel& opened) {
    if (!OpenModelForCli(path, opened)) return false;
    const std::string model = std::filesystem::absolute(path).lexically_normal().string();
    modelSession().GlobalModelFileName = modelSession().LastPathFileName = model;
    modelSession().PRJ = opened.prjPath;
    if (SetModelFolders(model)) return true;
    std::fprintf(stderr, "error: cannot make %s\n", panelStore().PANELSFOLDER.toUtf8().constData());
    return false;
}

CliModelToolProgress::CliModelToolProgress() {
    auto last = std::make_shared<std::chrono::steady_clock::time_point>();
    modelToolHooks().progress = [last](const QString& text, long long, long long) {
        const auto now = std::chrono::steady_clock::now();
        if (now - *last < std::chrono::seconds(1)) return;
        *last = now;
        std::fprintf(stderr, "%s\n", text.trimmed().toUtf8().constData());
    };
}

CliModelToolProgress::~CliModelToolProgress() { resetModelToolHooks(); }

bool ParseCliNumbers(const std::vector<std::string>& words, std::size_t from, std::size_t count, double* values,
                     const char* usage, int& error) {
    for (std::size_t i = 0; i < count; ++i)
        if (!ParseCliNumber(words[from + i], values[i])) {
            error = CliUsageError("not a number: " + words[from + i], usage);
            return false;
        }
    return true;
}

bool ParseCliLatLon(const std::vector<std::string>& words, std::size_t from, double& lat, double& lon,
                    const char* usage, int& error) {
    if (!ParseCliNumber(words[from], lat) || lat < -90 || lat > 90) {
        error = CliUsageError("not a latitude: " + words[from], usage);
        return false;
    }
    if (!ParseCliNumber(words[from + 1], lon) || lon < -180 || lon > 180) {
        error = CliUsageError("not a longitude: " + words[from + 1], usage);
        return false;
    }
    return true;
}
