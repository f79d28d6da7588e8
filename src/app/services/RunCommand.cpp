#include "RunCommand.h"

#include <QFile>
#include <QProcess>
#include <QStringList>

#include "OrvoDialogs.h"
#include "RunLog.h"

bool OrvoRunCommand(const QString& commandLine, bool hide) {
    return OrvoRunCommand(commandLine, hide, QStringLiteral("Orvo process"));
}

bool OrvoRunCommand(const QString& commandLine, bool hide, const QString& Title) {
    const QString prefix = "In OrvoRunCommand: [" + commandLine + "]";
    QStringList words = QProcess::splitCommand(commandLine);
    if (words.isEmpty()) {
        DisplayErrorText(prefix, QStringLiteral("empty command"));
        return false;
    }
    PrintRunLog("%s: %s\n", QFile::encodeName(Title).constData(), QFile::encodeName(commandLine).constData());
    QProcess process;
    process.setProgram(words.takeFirst());
    process.setArguments(words);
    if (hide) {
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
    } else {
        process.setProcessChannelMode(QProcess::ForwardedChannels);
    }
    process.start();
    if (!process.waitForStarted(-1)) {
        DisplayErrorText(prefix, process.errorString());
        return false;
    }
    process.waitForFinished(-1);
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() >= 256) {
        DisplayErrorText(prefix, process.errorString());
        return false;
    }
    return true;
}

int RunSilent(const QString& strFunct, const QString& strstrParams) {
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), strFunct + " " + strstrParams});
    if (!process.waitForStarted(-1)) return -1;
    process.waitForFinished(-1);
    if (process.exitStatus() != QProcess::NormalExit) return -1;
    return process.exitCode();
}

bool Run_Elevated(const QString& path, const QString& parameters, const QString& directory) {
    return QProcess::startDetached(path, QProcess::splitCommand(parameters), directory);
}
