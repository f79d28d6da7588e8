// The oblique catalogue of a model: one or more "oblixoblix.shp" in folders
// below it, each polygon one photograph's footprint with its full camera in
// the attributes. Photographs are numbered across all folders in the order
// of "OblixOblix.txt".
#pragma once

#include <QString>
#include <memory>
#include <string>

#include "ObliqueRecords.h"
#include "geo/GisTypes.h"

class OGRFeature;

// One shape of a catalogue and the shape file it belongs to.
struct ObliqueShape {
    std::shared_ptr<OGRFeature> feature;
    QString shapeFile;
    // 1 for the first shape of its file.
    int number = 0;
};

// The open layer of a catalogue's shape file, opened on first use and kept
// for the model's life; null when it can't be opened.
GDALDataset* ObliqueLayer(const QString& shapeFile);

// After a model is opened: lists the catalogues found below its folder in
// "OblixOblix.txt" and analyses them, or, with none, sets INDOOR and loads
// the OPK list. The number of photographs of either kind.
int FindObliqueCatalogues(const std::string& modelPath);

// Reads OBLIXOBLIXTXT into OblixExtents: the running numbers and picture
// counts of each folder. KamaOblique, or 0 without effect when the list is
// missing.
int AnalyzeExtentOfoblixOblix();

// One photograph's camera: by running number (kk >= 0), or from shp_in when
// kk is -1.
OBLIQUE OGetFromShp(int kk, const ObliqueShape* shp_in);
OBLIQUE O8Get(int I);
// The shape of a running number; null outside every folder.
std::unique_ptr<ObliqueShape> GetObliqueShape(int kk);

// The photographs whose footprint lies within 10 map units of the point,
// each once, into GotO8. The count; a full store gives 299.
int GetO8s(const TGIS_Point& point);
