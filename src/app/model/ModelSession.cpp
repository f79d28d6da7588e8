#include "ModelSession.h"

#include "scene/FileNameCase.h"

ModelSession& modelSession() {
    static ModelSession session;
    return session;
}

void resetModelSession() { modelSession() = ModelSession{}; }

std::string ModelFolder() { return FolderOf(modelSession().GlobalModelFileName); }
