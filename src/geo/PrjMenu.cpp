#include "PrjMenu.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTimer>

#include "app/services/FileDialogs.h"
#include "app/services/FileHelpers.h"
#include "app/services/OrvoDialogs.h"
#include "app/services/SessionPaths.h"
#include "app/services/Viewers.h"
#include "scene/FileNameCase.h"

namespace {

// The model's own ".PRJ", or the name it gets: a file of the same name in
// another case is the same file to a model that came from Windows.
QString modelPrjPath(const std::string& modelPath) {
    const QFileInfo model(QString::fromStdString(modelPath));
    const QString wanted = model.path() + "/" + model.completeBaseName() + ".PRJ";
    const std::string existing = FindFileNoCase(wanted.toStdString());
    return existing.empty() ? wanted : QString::fromStdString(existing);
}

}  // namespace

bool AddPRJ1Click(const std::string& modelPath) {
    const QString folder = QFileInfo(QString::fromStdString(modelPath)).path() + "/";
    const QStringList candidates = Find_Files(folder + "*.prj", false);
    QString chosen = candidates.isEmpty() ? QString() : candidates.first();
    if (!OrvoOpenFile(chosen, "", "PRJ file (*.PRJ)|*.prj", "Open a similar (in same coordinate system) PRJ file (input)",
                      folder))
        return false;
    const QString target = modelPrjPath(modelPath);
    if (QFileInfo(chosen).canonicalFilePath() == QFileInfo(target).canonicalFilePath()) return true;
    return OrvoCopyFile(chosen, target);
}

bool ShowPRJ1Click(const std::string& modelPath, std::string& textCopy) {
    const QString prj = modelPrjPath(modelPath);
    if (!QFileInfo(prj).isFile()) {
        MyShowMessage("No PRJ exists for this model");
        AddPRJ1Click(modelPath);
        return false;
    }
    const QString copy = QString::fromStdString(sessionPaths().ORVO_T) +
                         QFileInfo(QString::fromStdString(modelPath)).completeBaseName() + ".txt";
    if (!OrvoCopyFile(prj, copy)) return false;
    textCopy = copy.toStdString();
    // The copy is opened a moment later, once the menu has closed; without
    // an event loop (the CLI, tests) at once.
    if (QCoreApplication::instance())
        QTimer::singleShot(222, [copy] { ShowOrvoTextFile(copy); });
    else
        ShowOrvoTextFile(copy);
    return true;
}
