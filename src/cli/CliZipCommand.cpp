// zip: packs a model with its side files, as "Zip the model" does.
#include <cstdio>
#include <filesystem>

#include "CliCommands.h"
#include "CliSupport.h"
#include "app/model/ModelSession.h"
#include "modeltools/ModelToolProgress.h"
#include "modeltools/PackageModel.h"

namespace {

int CliZip(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli zip MODEL [--form normal|small|obliques|every-second]";
    std::string model;
    int form = PACK_NORMAL;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--form") {
            const std::string value = i + 1 < args.size() ? args[++i] : "";
            if (value == "normal")
                form = PACK_NORMAL;
            else if (value == "small")
                form = PACK_SMALL_JPG;
            else if (value == "obliques")
                form = PACK_WITH_OBLIQUES;
            else if (value == "every-second")
                form = PACK_EVERY_SECOND_JPG;
            else
                return CliUsageError("--form takes normal, small, obliques or every-second", usage);
        } else if (model.empty() && args[i].rfind("--", 0) != 0) {
            model = args[i];
        } else {
            return CliUsageError("unexpected argument: " + args[i], usage);
        }
    }
    if (model.empty()) return CliUsageError("zip takes one model file", usage);

    PrepareCliSession();
    CliCommandScope scope;
    // The model need not be opened: packing works on its files alone.
    std::error_code ec;
    const std::filesystem::path absolute = std::filesystem::absolute(model, ec);
    resetModelSession();
    modelSession().GlobalModelFileName = (ec ? std::filesystem::path(model) : absolute).lexically_normal().string();
    modelToolHooks().progress = [](const QString& text, long long, long long) {
        static QString last;
        if (text != last) std::fprintf(stderr, "%s\n", text.toUtf8().constData());
        last = text;
    };
    const QString archive = CompressOBJ(form);
    resetModelToolHooks();
    if (archive.isEmpty()) return CLI_FAILED;
    std::printf("%s\n", archive.toUtf8().constData());
    return CLI_OK;
}

}  // namespace

ZV_CLI_COMMAND("zip", "MODEL [--form normal|small|obliques|every-second]", CliZip);
