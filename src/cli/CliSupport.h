// Helpers the CLI commands share: strict number parsing, usage errors and
// opening a model the way the viewer does.
#pragma once

#include <string>
#include <vector>

#include "app/model/ModelOpening.h"
#include "app/services/DialogService.h"

// Parses a whole word as a number; false on anything else.
bool ParseCliNumber(const std::string& word, double& value);
// Parses count words from words[from] into values; on a bad one prints the
// usage error and leaves its exit code in error.
bool ParseCliNumbers(const std::vector<std::string>& words, std::size_t from, std::size_t count, double* values,
                     const char* usage, int& error);

// Parses words[from] and words[from + 1] as a latitude and a longitude in
// degrees; on a bad one prints the usage error and leaves its exit code in error.
bool ParseCliLatLon(const std::vector<std::string>& words, std::size_t from, double& lat, double& lon,
                    const char* usage, int& error);

// Prints "error: <message>" and the usage line to stderr; returns CLI_BAD_ARGUMENTS.
int CliUsageError(const std::string& message, const char* usage);

// The session as the viewer has it, for commands that need folders,
// settings or the installation's data: the user's folders ($HOME/Orvo_/ with
// its TMP/), "Orvo.ini", CTQ_Path beside the program, the run log on stderr,
// and a dialog service that prints every message on stderr and cancels every
// question. Once a run; later calls do nothing.
void PrepareCliSession();

// Answers from its script like ScriptedDialogService (questions beyond it
// are cancelled) and prints every message and question on stderr, since
// nobody is there to read a box.
class StderrDialogService : public ScriptedDialogService {
public:
    void showMessage(const QString& text, const QString& title) override;
    int ask(const QString& text, const QString& title, const QStringList& buttons, int defaultButton) override;
};

// For the length of one command: its own answers to the operator's
// questions; afterwards no dialog service and the planner's and report's
// hooks as a fresh process has them.
class CliCommandScope {
public:
    explicit CliCommandScope(DialogService* dialogs = nullptr);
    ~CliCommandScope();
    CliCommandScope(const CliCommandScope&) = delete;
    CliCommandScope& operator=(const CliCommandScope&) = delete;
};

// Starts the engine (log lines to stderr) and opens the model; on failure
// prints why and returns false.
bool OpenModelForCli(const std::string& path, OpenedModel& opened);

// OpenModelForCli, then the model as the window holds it once open: its
// file name, its ".prj" and its folders ("Measurements/", "Screenshots/",
// "PANELS/" with "SHADING/"). On failure prints why and returns false.
bool OpenModelWithFoldersForCli(const std::string& path, OpenedModel& opened);

// For the length of one command: the status lines of a long pass over a
// model file go to stderr, at most one a second.
class CliModelToolProgress {
public:
    CliModelToolProgress();
    ~CliModelToolProgress();
    CliModelToolProgress(const CliModelToolProgress&) = delete;
    CliModelToolProgress& operator=(const CliModelToolProgress&) = delete;
};
