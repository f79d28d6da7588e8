// Vector layers held in memory for the operator's GIS work: read from a
// file, merged, and saved as a shape file or DXF.
#pragma once

#include <QString>
#include <QStringList>
#include <memory>

class GDALDataset;
class OGRLayer;

// One vector layer in memory; its file, when it came from one, is Path.
class TGIS_LayerVector {
public:
    TGIS_LayerVector(const QString& name, const QString& path);
    ~TGIS_LayerVector();
    TGIS_LayerVector(const TGIS_LayerVector&) = delete;
    TGIS_LayerVector& operator=(const TGIS_LayerVector&) = delete;

    QString Name;
    QString Path;
    OGRLayer* layer() const { return layer_; }
    int ShapeCount() const;

private:
    friend std::unique_ptr<TGIS_LayerVector> ReadVectorLayer(const QString& path);
    GDALDataset* memory_ = nullptr;
    OGRLayer* layer_ = nullptr;
};

// A copy in memory of the first layer of a vector file; null when it cannot be read.
std::unique_ptr<TGIS_LayerVector> ReadVectorLayer(const QString& path);

// Writes the layer to OutPath, chosen by its extension in any case: ".shp" a
// shape file, ".dxf" a DXF. The output takes the model's system (GlobalCS).
// Written under a temporary name and renamed, so a failed save leaves any
// earlier file whole. False on another extension or a failed write.
bool SaveLayer(const TGIS_LayerVector* ll, const QString& OutPath);

// Adds the shapes of every file of TS after the first to the first one's
// and saves the whole as MM. Fewer than two files: " At least two files
// needed " and nothing written.
bool MergeShapeFilesFromTS(const QStringList& TS, const QString& MM);
