// rectify and convert: the two geocoding passes of the "Geocode model"
// menu, on the same functions, without opening the model in the engine.
#include <QString>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>

#include "CliCommands.h"
#include "CliSupport.h"
#include "app/services/DialogService.h"
#include "modeltools/ModelToolProgress.h"
#include "modeltools/RectifyByOnc.h"
#include "modeltools/RectifyConvert.h"
#include "modeltools/RectifyText.h"

namespace {

constexpr const char* kRectifyUsage = "zorvex64-cli rectify OBJIN ONC OBJOUT [--radius R]";
constexpr const char* kConvertUsage = "zorvex64-cli convert OBJ ONC OUT";

std::string absolute(const std::string& path) { return std::filesystem::absolute(path).lexically_normal().string(); }

// Status lines of the pass on stderr, at most one a second.
void printProgressOnStderr() {
    using Clock = std::chrono::steady_clock;
    static Clock::time_point last{};
    modelToolHooks().progress = [](const QString& text, long long, long long) {
        const Clock::time_point now = Clock::now();
        if (now - last < std::chrono::seconds(1)) return;
        last = now;
        std::fprintf(stderr, "%s\n", text.toUtf8().constData());
    };
}

// The first line of the log that tells a failure, "" when none does.
std::string errorLineOf(const std::string& logPath) {
    std::string log;
    if (!ReadWholeFile(logPath, log)) return {};
    TextLines lines(log);
    std::string_view line;
    while (lines.next(line))
        if (line.substr(0, 6) == "ERROR:") return std::string(line);
    return {};
}

int CliRectify(const std::vector<std::string>& args) {
    std::vector<std::string> words;
    double radius = 35;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--radius") {
            if (i + 1 >= args.size() || !ParseCliNumber(args[i + 1], radius))
                return CliUsageError("--radius needs a number", kRectifyUsage);
            ++i;
        } else {
            words.push_back(args[i]);
        }
    }
    if (words.size() != 3) return CliUsageError("rectify takes an input OBJ, an ONC file and an output OBJ", kRectifyUsage);
    PrepareCliSession();
    CliCommandScope scope;
    printProgressOnStderr();
    const std::string output = absolute(words[2]);
    const RectifyResult result = RectifyOBJByONC(absolute(words[0]), output, absolute(words[1]), radius);
    resetModelToolHooks();
    const std::string log = RectifyLogPath(output);
    const std::string error = errorLineOf(log);
    if (!error.empty() || !result.written) {
        std::fprintf(stderr, "%s\n", error.empty() ? "error: no output was written" : error.c_str());
        return CLI_FAILED;
    }
    std::printf("%s\n%s\n", output.c_str(), log.c_str());
    return CLI_OK;
}

// Messages on stderr; the one question, whether to go on after the scale
// analysis, is answered Yes.
class ConvertDialogService : public ScriptedDialogService {
public:
    void showMessage(const QString& text, const QString&) override {
        std::fprintf(stderr, "%s\n", text.toUtf8().constData());
    }
    int ask(const QString& text, const QString&, const QStringList& buttons, int) override {
        std::fprintf(stderr, "%s\n", text.toUtf8().constData());
        return buttons.indexOf("Yes") + 1;
    }
};

int CliConvert(const std::vector<std::string>& args) {
    if (args.size() != 3) return CliUsageError("convert takes an OBJ, an ONC file and an output OBJ", kConvertUsage);
    PrepareCliSession();
    ConvertDialogService dialogs;
    CliCommandScope scope(&dialogs);
    printProgressOnStderr();
    const std::string output = absolute(args[2]);
    const bool ok = ConvertOBJ(absolute(args[0]), output, absolute(args[1]));
    resetModelToolHooks();
    if (!ok) return CLI_FAILED;
    std::printf("%s\n", output.c_str());
    return CLI_OK;
}

}  // namespace

ZV_CLI_COMMAND("rectify", "OBJIN ONC OBJOUT [--radius R]", CliRectify);
ZV_CLI_COMMAND("convert", "OBJ ONC OUT", CliConvert);
