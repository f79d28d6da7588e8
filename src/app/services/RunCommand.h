// Outside programs run as processes. A Linux desktop gives a child no console
// window of its own: a shown command writes into ours, a hidden one is muted.
#pragma once

#include <QString>

// Runs the command line (words split at blanks, double quotes keeping an
// argument with blanks together; no shell) and waits
// without limit. True when it ended with an exit code below 256, which on
// Linux is every normal end; a failure to start or a death by a signal is
// reported with DisplayErrorText behind "In OrvoRunCommand: [" + the command + "]".
bool OrvoRunCommand(const QString& commandLine, bool hide);
// The same, with Title naming the process in the run log.
bool OrvoRunCommand(const QString& commandLine, bool hide, const QString& Title);
// Runs strFunct + " " + strstrParams through /bin/sh -c, muted, and waits;
// the exit code, or -1 when it could not start or was killed.
int RunSilent(const QString& strFunct, const QString& strstrParams);
// Starts path with its parameters in directory and does not wait; true when
// it started.
bool Run_Elevated(const QString& path, const QString& parameters, const QString& directory);
