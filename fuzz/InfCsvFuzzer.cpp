// A model's information file "_INF.CSV" listed into the model catalogue,
// which the browser then shows and selects from.
#include <cstdint>

#include "FuzzSupport.h"
#include "app/services/SessionPaths.h"
#include "catalog/CatalogState.h"
#include "catalog/ModelBrowser.h"
#include "catalog/ModelDiscovery.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    sessionPaths().ORVO_T = zvfuzz::scratchPath("TMP/");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // A file of the older form is deleted with what lies beside its model;
    // the paths it names stay inside the scratch folder, which is the working one.
    // The model the seeds name, so that their rows are listed; made anew
    // since an older row may have had it deleted as its picture.
    zvfuzz::writeFile("model.obj", "v 0 0 0\n");
    const QString inf = QString::fromStdString(zvfuzz::writeFile("model_INF.CSV", data, size));
    if (Prepare3DModelsLocation({inf}) == 0) return 0;
    ModelBrowserRequest request;
    request.csvFile = catalogState().FNCSV;
    request.columns = 9;
    request.sortColumn = 2;
    const GridRows rows = LoadBrowserTable(request);
    for (int row = 1; row < rows.size(); ++row) WorkBookGrid1SelectCell(rows, row);
    return 0;
}
