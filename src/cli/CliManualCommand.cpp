// manual: writes the planner's manual page, as "Create SOLK manual" does.
#include <cstdio>
#include <filesystem>

#include "CliCommands.h"
#include "CliSupport.h"
#include "solar/analysis/SolkManual.h"

namespace {

int CliManual(const std::vector<std::string>& args) {
    constexpr const char* usage = "zorvex64-cli manual OUTDIR [PICTURE...]";
    if (args.empty() || args.size() > 1 + MANUAL_PICTURE_COUNT)
        return CliUsageError("manual takes a folder and at most seven pictures", usage);
    std::error_code ec;
    if (!std::filesystem::is_directory(args[0], ec)) return CliUsageError("no folder " + args[0], usage);
    PrepareCliSession();
    CliCommandScope scope;
    // The pictures in the order the menu asks for them; those not given show their placeholders.
    ManualPictures pictures;
    for (std::size_t i = 1; i < args.size(); ++i) pictures[i - 1] = QString::fromStdString(args[i]);
    const std::string output = (std::filesystem::path(args[0]) / "SOLK_Manual.html").string();
    if (!WriteSOLK_Manual(output, pictures)) {
        std::fprintf(stderr, "Failed to create HTML file\n");
        return CLI_FAILED;
    }
    std::printf("%s\n", output.c_str());
    return CLI_OK;
}

}  // namespace

ZV_CLI_COMMAND("manual", "OUTDIR [PICTURE...]", CliManual);
