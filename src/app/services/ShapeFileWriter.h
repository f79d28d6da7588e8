// Writing a shape file whole or not at all: its layer is made in a folder
// beside the target and its files are moved into place only when complete.
#pragma once

#include <QString>
#include <functional>

class GDALDataset;

// Makes an "ESRI Shapefile" data source for file, lets fill add its layer,
// then replaces the files of the same name (side files of an earlier shape
// that this one lacks are removed). False, with nothing replaced, when the
// source can't be made or fill fails.
bool WriteShapeFileStaged(const QString& file, const std::function<bool(GDALDataset*)>& fill);
