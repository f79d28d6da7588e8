#include "ModelPhotographs.h"

#include "ModelSession.h"
#include "app/services/RunLog.h"

ModelPhotoHooks& modelPhotoHooks() {
    static ModelPhotoHooks hooks;
    return hooks;
}

void resetModelPhotoHooks() { modelPhotoHooks() = ModelPhotoHooks{}; }

void FindModelPhotographs(const std::string& modelPath) {
    ModelSession& model = modelSession();
    if (modelPhotoHooks().findPhotographs) {
        modelPhotoHooks().findPhotographs(modelPath);
    } else {
        model.ShowObliques = ", Alt+LClick for INDOOR";
        model.INDOOR = true;
    }
    PrintRunLog("KamaOPK %d KamaFacades %d\n", model.KamaOPK, model.KamaFacades);
}
