#include "ModelSession.h"

#include <QDir>

#include "ModelPaths.h"
#include "scene/FileNameCase.h"
#include "solar/design/PanelStore.h"

ModelSession& modelSession() {
    static ModelSession session;
    return session;
}

void resetModelSession() { modelSession() = ModelSession{}; }

std::string ModelFolder() { return FolderOf(modelSession().GlobalModelFileName); }

bool SetModelFolders(const std::string& modelPath) {
    ModelSession& model = modelSession();
    const std::string M = FolderOf(modelPath);
    model.MEASUREMENTSFOLDER = SideFile(M, "Measurements") + "/";
    model.SCREENSHOTSFOLDER = SideFile(M, "Screenshots") + "/";
    model.GlobalONCFileName = WithExtension(modelPath, ".ONC");
    model.TodeleteVerticesFile = WithoutExtension(modelPath) + "_Todelete.txt";
    model.WhereIsTheOPK = M + "WhereIsTheOPK.txt";
    QDir().mkpath(QString::fromStdString(model.SCREENSHOTSFOLDER));
    QDir().mkpath(QString::fromStdString(model.MEASUREMENTSFOLDER));
    return SetPanelFoldersForModel(QString::fromStdString(M));
}
