// The rows of a facade container: the nearest photograph of a point and the browsing over them.
#include <QString>
#include <QStringList>
#include <cstdint>

#include "FuzzSupport.h"
#include "oblique/FacadeStore.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    resetFacadeState();
    FacadeState& s = facadeState();
    s.TSFACADES = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)).split('\n');
    double dxy = 0, dz = 0;
    s.THE_JPG = FindRelevantFacade(TGIS_Point3D{1, 2, 3, 0}, dxy, dz);
    FindNextFacade(1, 0);
    FindNextFacade(-1, 0);
    return 0;
}
