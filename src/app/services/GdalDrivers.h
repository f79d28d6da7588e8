// GDAL's drivers are registered once, before the first file goes through them.
#pragma once

void EnsureGdalDrivers();
