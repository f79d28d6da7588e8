// Vector layers held in memory for the operator's GIS work: read from a
// file, merged, and saved as a shape file or DXF.
#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

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
    int EPSG = -1;        // the layer's coordinate system, -1 unknown
    bool IsKml = false;   // read from a ".kml", whose coordinates are degrees
    OGRLayer* layer() const { return layer_; }
    int ShapeCount() const;

private:
    friend std::unique_ptr<TGIS_LayerVector> ReadVectorLayer(const QString& path);
    friend TGIS_LayerVector* GenNewLayer(class TGIS_ViewerWnd* GIS, const QString& Layername_in);
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

// The session's layers by name, as the operator's GIS view holds them.
class TGIS_ViewerWnd {
public:
    std::vector<std::unique_ptr<TGIS_LayerVector>> Items;
    // The layer of that name (any case), or null.
    TGIS_LayerVector* Get(const QString& name) const;
    // False when no layer has the name.
    bool Delete(const QString& name);
    TGIS_LayerVector* Add(std::unique_ptr<TGIS_LayerVector> layer);
};

// A new empty layer named after Layername_in (through StripPoints) in the
// model's system, replacing a layer of that name in GIS.
TGIS_LayerVector* GenNewLayer(TGIS_ViewerWnd* GIS, const QString& Layername_in);
// True when GIS holds a layer named name (any case); found gets its name.
bool IsAlreadyInGIS(const QString& name, QString& found, const TGIS_ViewerWnd* GIS);
// The layer of file _path named Name_In: the one GIS holds already, or read
// and added under the name through StripPoints. Null when it can't be read.
TGIS_LayerVector* MyGisCreateLayer(const QString& Name_In, const QString& _path, TGIS_ViewerWnd* GIS);

// Every shape of from added to to, fields matched by name; WKT, when given,
// limits them to the shapes meeting that geometry. The layer's parameters
// (its system) follow. Returns the shapes added.
int LayerToLayerWKT(const TGIS_LayerVector* from, TGIS_LayerVector* to, const QString& WKT);
