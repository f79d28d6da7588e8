// zorvex64: the process entry. The user's folders come first, then the
// toolkit, the command line and the main form.
#include <QApplication>
#include <clocale>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "app/services/DialogService.h"
#include "app/services/ui/QtDialogService.h"
#include "app/session/CommandLine.h"
#include "app/session/UserFolders.h"
#include "app/ui/FirstFrameShot.h"
#include "app/ui/TFormAt3.h"

namespace {
// The viewer gives up on its first frame after this long.
constexpr int FIRST_FRAME_TIMEOUT_MS = 120000;
}  // namespace

int main(int argc, char** argv) {
    std::error_code ec;
    const std::string executable = std::filesystem::read_symlink("/proc/self/exe", ec).string();
    DeriveUserFoldersOfProcess(ec ? std::string(argv[0]) : executable);

    QApplication application(argc, argv);
    // Qt takes the user's locale; every file we read and write uses "." for decimals.
    setlocale(LC_NUMERIC, "C");
    const std::vector<std::string> arguments(argv, argv + argc);
    CaptureCommandLine(arguments, RawCommandLine(arguments));
    // Lives inside the application's lifetime: its forms must go before QApplication.
    QtDialogService dialogs;
    // Nobody is there to answer while the first frame is taken: every
    // question is cancelled and every message goes to stderr.
    ScriptedDialogService unattended;
    const bool firstFrameShot = FirstFrameShotAsked();
    installDialogService(firstFrameShot ? static_cast<DialogService*>(&unattended) : &dialogs);

    int result = 1;
    {
        TFormAt3 form;
        if (form.FormCreate(ec ? std::string(argv[0]) : executable)) {
            if (firstFrameShot) SaveFirstFrameAndQuit(form, FIRST_FRAME_TIMEOUT_MS);
            result = application.exec();
        }
    }
    for (const ScriptedDialogService::Question& question : unattended.questions())
        std::fprintf(stderr, "%s: %s\n", question.title.toLocal8Bit().constData(), question.text.toLocal8Bit().constData());
    installDialogService(nullptr);
    return result;
}
