#include "GdalDrivers.h"

#include <gdal.h>
#include <mutex>

void EnsureGdalDrivers() {
    static std::once_flag once;
    std::call_once(once, [] { GDALAllRegister(); });
}
