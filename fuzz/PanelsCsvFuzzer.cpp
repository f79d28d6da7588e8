// The module catalogue "Panels.csv": loaded, listed for the form and
// matched by name to fill a panel.
#include <cstdint>

#include "FuzzSupport.h"
#include "app/services/SessionPaths.h"
#include "solar/design/PanelCatalog.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    sessionPaths().CTQ_Path = zvfuzz::scratch();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = zvfuzz::writeFile("Panels.csv", data, size);
    resetPanelCatalog();
    if (!LoadPanelSpecifications(QString::fromStdString(path))) return 0;
    const QStringList names = CatalogModelNames();
    for (const QString& name : {QString("TSM-DE21"), QString("ab"), QString()}) {
        CatalogModelIndex(names, name);
        PANEL panel{};
        AddPanelSpecsFromCSV(panel, name);
    }
    for (const QString& name : names) {
        PANEL panel{};
        AddPanelSpecsFromCSV(panel, name);
    }
    return 0;
}
